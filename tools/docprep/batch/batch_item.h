// One photograph of a batch, from its file to the row that the state has of it.
#ifndef DOCPREP_BATCH_ITEM_H
#define DOCPREP_BATCH_ITEM_H

#include <string>

#include "batch/batch_state.h"
#include "run/prepare.h"

namespace docprep {

struct BatchItem {
    InputOptions input;
    BatchRow row;  ///< as the state has it, or will have it
};

/// Prepares it into its folder below `output`. Whatever is wrong with it is said in the row that it returns. Needs nothing
/// of the batch but what it is given: several threads, programs and machines may each have items of their own.
/// @throws std::bad_alloc when there is not even memory to say so
BatchRow prepared_row(const std::string& output, const PreparationOptions& options, const BatchItem& item);

/// The row of one that never came to an end.
BatchRow failed_row(const BatchItem& item, const std::string& reason);

/// Whether a row is that of a photograph done just as the item asks for.
bool is_alike(const BatchRow& row, const BatchItem& item);

/// Whether what such a row says still holds: the photograph has the same content, and all files are there.
/// @throws std::bad_alloc
bool still_holds(const std::string& output, const BatchRow& row, const BatchItem& item);

}  // namespace docprep

#endif  // DOCPREP_BATCH_ITEM_H
