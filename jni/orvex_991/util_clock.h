#ifndef ORVEX_991_UTIL_CLOCK_H
#define ORVEX_991_UTIL_CLOCK_H

#include <chrono>

namespace orvex_991 {

/// Stopwatch on the monotonic clock, for the timing lines of the operations.
class Clock {
 public:
    /// Begins a measurement.
    void start() { start_ = stop_ = Monotonic::now(); }
    /// Ends it; may be called again.
    void stop() { stop_ = Monotonic::now(); }
    /// Milliseconds between the last start() and the last stop(); 0 before a stop().
    float getTimeMS() const { return std::chrono::duration<float, std::milli>(stop_ - start_).count(); }

 private:
    using Monotonic = std::chrono::steady_clock;
    Monotonic::time_point start_{};
    Monotonic::time_point stop_{};
};

}  // namespace orvex_991

#endif  // ORVEX_991_UTIL_CLOCK_H
