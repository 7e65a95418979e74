// What a signal finds unfinished: temporary files, and folders made for results that are not there yet.
#ifndef DOCPREP_UNFINISHED_H
#define DOCPREP_UNFINISHED_H

#include <mutex>
#include <string>

namespace docprep {

/// From now on SIGHUP, SIGINT and SIGTERM remove what is noted here and then end the program as they always do; those
/// that the caller has ignored stay ignored. To be called once, before threads are started.
///
/// A thread waits for the signals, so that no handler runs between two steps of the work. Where there can be no thread,
/// signals end the program at once.
void remove_unfinished_on_signals();

/// While it lives, no signal ends the program. To be kept short.
using SignalsHeld = std::unique_lock<std::recursive_mutex>;
SignalsHeld hold_signals();

/// A file or an empty folder that is removed when a signal ends the program. expect(), making it and note() belong
/// under one SignalsHeld: before it is made, the name may be somebody else's.
class Unfinished {
 public:
    Unfinished() = default;
    ~Unfinished() { forget(); }
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;

    /// Makes room, so that note() cannot fail.
    /// @throws std::bad_alloc
    void expect(const std::string& path);
    void note() noexcept;
    /// It is finished, or gone.
    void forget() noexcept;

    const std::string& path() const { return path_; }

 private:
    std::string path_;
    bool noted_ = false;
};

}  // namespace docprep

#endif  // DOCPREP_UNFINISHED_H
