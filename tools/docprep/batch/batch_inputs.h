// The photographs of a batch: files, folders, patterns, and lists on standard input.
#ifndef DOCPREP_BATCH_INPUTS_H
#define DOCPREP_BATCH_INPUTS_H

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "base/failure.h"

namespace docprep {

struct BatchInput {
    std::string file;  ///< as the user wrote it, or below a folder or a pattern that the user wrote
    std::filesystem::path
        absolute;  ///< tells photographs apart: its folder has no links, "." or ".." in its path
    /// How many folders of the path are kept in the name of its results: those below a folder that was searched, be it
    /// by --recursive or by a pattern with "**/".
    size_t depth = 0;
};

struct BatchInputs {
    std::vector<BatchInput>
        photographs;                ///< each once, in the order in which they were named; folders by name
    std::vector<Failure> problems;  ///< folders that cannot be read
};

struct InputSearch {
    std::vector<std::string> arguments;
    bool recursive = false;        ///< folders below folders count
    bool null = false;             ///< names on standard input end with NUL, not with a line feed
    bool frames = false;           ///< a folder's pictures are camera frames
    std::filesystem::path beside;  ///< a folder that is not searched: the one with the results
};

/// Finds them.
///
/// An argument that is there is a file, or a folder that stands for its pictures: by the endings of their names, and
/// none that begins with a dot. One that is not is a pattern for glob(3), in which "**/" stands for any number of folders,
/// none included; and where nothing matches a file that is missing, which whoever reads it will say. "-" stands for the names in `list`, which are files and folders, but no
/// patterns. What stands behind a symbolic link to a folder is not searched, unless the user has named the link.
/// @throws Failure when the list cannot be read; std::bad_alloc
BatchInputs find_inputs(const InputSearch& search, std::FILE* list);

}  // namespace docprep

#endif  // DOCPREP_BATCH_INPUTS_H
