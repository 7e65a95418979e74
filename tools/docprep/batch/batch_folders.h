// Where the results of each photograph of a batch go.
#ifndef DOCPREP_BATCH_FOLDERS_H
#define DOCPREP_BATCH_FOLDERS_H

#include <string>
#include <vector>

#include "batch/batch_inputs.h"

namespace docprep {

/// A photograph and the folder that it was given before: relative, empty when there is none.
struct FolderWish {
    BatchInput input;
    std::string before;
};

/// A folder for each photograph, relative to that of the batch, in their order. None is another's, lies in another's,
/// or has the name of a file of the batch's own.
///
/// A photograph that had one keeps it. Any other's is named for its file without the ending, below the folders that were
/// searched. Of photographs that would share one, or of which one's would lie in the other's, each gets more of its
/// path as its name: the ending, then the folder that it lies in, then the next one. So the names do not depend on
/// the order of the photographs. (Where even whole paths are taken by older ones, a number is added.)
/// @param taken  folders of earlier batches that are not among the wishes
std::vector<std::string> batch_folders(const std::vector<FolderWish>& wishes,
                                       const std::vector<std::string>& taken);

/// Whether a path is one that batch_folders() may give: relative, nothing but names, no file of the batch's own.
bool is_batch_folder(const std::string& folder);

}  // namespace docprep

#endif  // DOCPREP_BATCH_FOLDERS_H
