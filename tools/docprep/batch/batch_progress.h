// What a batch shows while it runs.
#ifndef DOCPREP_BATCH_PROGRESS_H
#define DOCPREP_BATCH_PROGRESS_H

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace docprep {

/// How far a batch is.
struct BatchCounts {
    int64_t total = 0;    ///< photographs to be looked at
    int64_t done = 0;     ///< prepared
    int64_t refused = 0;  ///< as the options want it
    int64_t failed = 0;
    int64_t skipped = 0;  ///< done by an earlier batch, and unchanged

    int64_t worked_on() const { return done + refused + failed; }
    int64_t finished() const { return worked_on() + skipped; }
};

/// "[#####     ]  120 of 500, 8.2/s, 0:46 left, 2 failed", at most so many columns.
std::string progress_bar(const BatchCounts& counts, double seconds, size_t columns);

/// The same without the bar.
std::string progress_line(const BatchCounts& counts, double seconds);

/// Whether a line is due where no terminal shows a bar: every 10 % of the photographs, but not within 5 seconds of the
/// last one, and after 30 seconds in any case.
class ProgressLines {
 public:
    bool due(const BatchCounts& counts, double seconds);

 private:
    int64_t tenths_ = 0;
    double last_ = 0;
};

/// Shows it on standard error: as a bar that moves, on a terminal, or else as lines now and then. Lines of errors come
/// out whole in between. Not for several threads at once.
class BatchProgress {
 public:
    enum class Show { kNothing, kLines, kBar };

    explicit BatchProgress(Show show) : show_(show), start_(std::chrono::steady_clock::now()) {}
    ~BatchProgress() { clear(); }
    BatchProgress(const BatchProgress&) = delete;
    BatchProgress& operator=(const BatchProgress&) = delete;

    /// Shows where things are, if it is time to.
    void update(const BatchCounts& counts);

    /// Prints the line of a photograph that failed, as complain() does.
    void complain(const std::string& file, const std::string& reason);

    /// The same for what is odd about one, unless nothing but errors is to be shown.
    void warn(const std::string& file, const std::string& warning);

    /// Takes the bar off the terminal.
    void clear();

    double seconds() const;

 private:
    Show show_;
    std::chrono::steady_clock::time_point start_;
    ProgressLines lines_;
    std::optional<double> bar_shown_;  // seconds when; none: it is not there
};

/// As standard error is: a bar on a terminal, lines otherwise.
BatchProgress::Show progress_for_standard_error();

}  // namespace docprep

#endif  // DOCPREP_BATCH_PROGRESS_H
