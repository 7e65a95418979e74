// The files of a run, all or none.
#ifndef DOCPREP_OUTPUT_FILES_H
#define DOCPREP_OUTPUT_FILES_H

#include <filesystem>
#include <list>
#include <optional>
#include <string>
#include <vector>

#include "formats/file_bytes.h"
#include "output/unfinished.h"

namespace docprep {

/// Collects the content of a run's files and writes them in one go.
class OutputFiles {
 public:
    /// @param folder empty: the current one
    explicit OutputFiles(std::string folder);
    /// Folders that were made are removed again, unless files were published.
    ~OutputFiles();
    OutputFiles(const OutputFiles&) = delete;
    OutputFiles& operator=(const OutputFiles&) = delete;

    /// Makes the folder, and keeps other runs that lock it out of it as long as this lives. Where the file system knows
    /// no locks, nobody is kept out.
    /// @throws Failure, also when another run has it
    void lock();

    /// @param name without folders
    void add(const std::string& name, Bytes content) { files_.push_back({name, std::move(content)}); }

    /// The file of this name that an earlier run has left is to go.
    void remove(const std::string& name) { files_.push_back({name, std::nullopt}); }

    /// Paths of the files added so far, in the order of add().
    std::vector<std::string> paths() const;

    /// Writes every file into the folder, which is created if missing, as are its parents; files of the same names are
    /// replaced. A symbolic link stays, and the file that it leads to is replaced, or made. A pipe or a character device
    /// is written to; it never becomes a file.
    ///
    /// Each file is written beside its place under a temporary name. Only when all are complete are they renamed, and
    /// those to be removed removed, in the order of add() and remove(): whoever sees a new last file sees the others
    /// new, too. After a failure, or when a signal ends the program, nothing has changed, and temporary files and new
    /// folders are gone. (Except for what went into pipes, and when the system refuses a rename or a removal after it
    /// allowed another one, which needs a hand that changes the folder meanwhile.) Temporary files of a run that was
    /// killed are removed by the next one into the folder.
    /// @param input a file that must not be replaced or removed: the one that the results come from
    /// @throws Failure
    void publish(const std::string& input);

 private:
    struct File {
        std::string name;
        std::optional<Bytes> content;  // none: to be removed
    };

    void make_folders(const std::filesystem::path& path);

    std::filesystem::path folder_;
    std::vector<File> files_;
    std::list<Unfinished> made_;  // folders
    Descriptor lock_{-1};
};

}  // namespace docprep

#endif  // DOCPREP_OUTPUT_FILES_H
