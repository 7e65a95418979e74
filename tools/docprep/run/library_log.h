// The library's diagnostic lines, which it prints on standard output, kept apart from ours.
#ifndef DOCPREP_LIBRARY_LOG_H
#define DOCPREP_LIBRARY_LOG_H

#include <cstdio>
#include <memory>

#include "formats/file_bytes.h"

namespace docprep {

/// Where the library's lines go.
enum class LibraryLines {
    kKept,     ///< to a nameless temporary file, to become a log
    kDropped,  ///< nowhere
    kShown,    ///< to standard error as they come
    kLeft      ///< where they go already: somebody else takes care of them
};

/// Receives the lines while it is told to.
class LibraryLog {
 public:
    /// While one lives, file descriptor 1 leads to the log, unless lines are left. stdio is flushed on both sides, so that no line
    /// of either kind takes the other's way. Not to be nested, nor used by several threads.
    class Redirection {
     public:
        /// @throws Failure when descriptors run out
        explicit Redirection(LibraryLog& log);
        ~Redirection();
        Redirection(const Redirection&) = delete;
        Redirection& operator=(const Redirection&) = delete;

     private:
        LibraryLog& log_;
        Descriptor saved_;
    };

    /// @throws Failure when there can be no temporary file
    explicit LibraryLog(LibraryLines lines);

    /// What the library has printed so far; empty unless it is kept.
    /// @throws Failure when part of it could not be stored
    Bytes content() const;

 private:
    LibraryLines lines_;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;  // null: standard error
    int error_ = 0;                                         // errno of the first lost line
};

}  // namespace docprep

#endif  // DOCPREP_LIBRARY_LOG_H
