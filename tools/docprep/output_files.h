// The files of a run, all or none.
#ifndef DOCPREP_OUTPUT_FILES_H
#define DOCPREP_OUTPUT_FILES_H

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "file_bytes.h"

namespace docprep {

/// Collects the content of a run's files and writes them in one go.
class OutputFiles {
 public:
    /// @param folder empty: the current one
    explicit OutputFiles(std::string folder) : folder_(std::move(folder)) {}

    /// @param name without folders
    void add(const std::string& name, Bytes content) { files_.push_back({name, std::move(content)}); }

    /// The file of this name that an earlier run may have left is to go.
    void remove(const std::string& name) { files_.push_back({name, std::nullopt}); }

    /// Paths of the files added so far, in the order of add().
    std::vector<std::string> paths() const;

    /// Writes every file into the folder, which is created if missing, as are its parents; files of the
    /// same names are replaced.
    ///
    /// Each is written beside its place under a temporary name. Only when all are complete are they renamed,
    /// and those to be removed removed, in the order of add() and remove(): whoever sees a new last file sees
    /// the others new, too. After a failure nothing has changed, and temporary files and new folders are
    /// gone. (Except when the system refuses a rename or a removal after it allowed another one, which needs
    /// a hand that changes the folder meanwhile.)
    /// @param input a file that must not be replaced or removed: the one that the results come from
    /// @throws Failure
    void publish(const std::string& input) const;

 private:
    struct File {
        std::string name;
        std::optional<Bytes> content;  // none: to be removed
    };

    std::filesystem::path folder_;
    std::vector<File> files_;
};

}  // namespace docprep

#endif  // DOCPREP_OUTPUT_FILES_H
