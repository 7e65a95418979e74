// The threads of a batch.
#ifndef DOCPREP_BATCH_WORKERS_H
#define DOCPREP_BATCH_WORKERS_H

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "base/failure.h"

namespace docprep {

/// Runs jobs on threads, and hands what they report to the thread that waits for them.
///
/// Each thread takes the next job when it is done with one, so that no more are under way than there are threads. So
/// many reports wait at most; a thread with one more waits.
template <class Report>
class BatchWorkers {
 public:
    using Send = std::function<void(Report)>;
    /// Does the job of a number, and sends any number of reports about it.
    using Job = std::function<void(size_t number, const Send& send)>;

    /// Runs the jobs 0 ... count - 1. Calls `take` for each report in the order in which they came, and `tick` after
    /// some of them and whenever none came for a while. Returns when all are done.
    ///
    /// When any of the three throws, no new job begins, and that goes on to the caller once those under way are done.
    /// @throws Failure when not a single thread can be had; std::bad_alloc
    void run(size_t threads, size_t count, const Job& job, const std::function<void(Report)>& take,
             const std::function<void()>& tick) {
        const Joined joined(*this);
        next_ = 0;
        count_ = count;
        start(std::min(threads, count), job);
        while (const std::optional<std::deque<Report>> reports = wait()) {
            for (const Report& report : *reports) take(report);
            tick();
        }
        if (thrown_) std::rethrow_exception(thrown_);
    }

 private:
    static constexpr size_t kMostWaiting = 256;

    /// Lets no thread outlive the call of run().
    class Joined {
     public:
        explicit Joined(BatchWorkers& workers) : workers_(workers) {}
        ~Joined() {
            workers_.stop(nullptr);
            for (std::thread& thread : workers_.threads_) thread.join();
            workers_.threads_.clear();
        }
        Joined(const Joined&) = delete;
        Joined& operator=(const Joined&) = delete;

     private:
        BatchWorkers& workers_;
    };

    void start(size_t threads, const Job& job) {
        threads_.reserve(threads);
        for (size_t k = 0; k < threads; ++k) {
            const std::lock_guard<std::mutex> lock(mutex_);
            try {
                threads_.emplace_back([this, &job] { work(job); });
            } catch (const std::system_error& error) {
                if (k == 0) throw Failure("", std::string("no thread to work: ") + error.what());
                return;  // fewer do it, too
            }
            ++working_;
        }
    }

    void work(const Job& job) {
        try {
            while (const std::optional<size_t> number = take_number())
                job(*number, [this](Report report) { send(std::move(report)); });
        } catch (...) {
            stop(std::current_exception());
        }
        const std::lock_guard<std::mutex> lock(mutex_);
        --working_;
        changed_.notify_all();
    }

    std::optional<size_t> take_number() {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (stopped_ || next_ == count_) return std::nullopt;
        return next_++;
    }

    void send(Report report) {
        std::unique_lock<std::mutex> lock(mutex_);
        changed_.wait(lock, [this] { return reports_.size() < kMostWaiting || stopped_; });
        reports_.push_back(std::move(report));
        changed_.notify_all();
    }

    /// What has come; perhaps nothing after a while. None at the end.
    std::optional<std::deque<Report>> wait() {
        constexpr std::chrono::milliseconds kWhile(100);
        std::unique_lock<std::mutex> lock(mutex_);
        changed_.wait_for(lock, kWhile, [this] { return !reports_.empty() || working_ == 0; });
        if (reports_.empty() && working_ == 0) return std::nullopt;
        std::deque<Report> reports;
        reports.swap(reports_);
        changed_.notify_all();
        return reports;
    }

    void stop(std::exception_ptr reason) noexcept {
        const std::lock_guard<std::mutex> lock(mutex_);
        stopped_ = true;
        if (!thrown_) thrown_ = std::move(reason);
        changed_.notify_all();
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<std::thread> threads_;
    std::deque<Report> reports_;
    std::exception_ptr thrown_;
    size_t next_ = 0;
    size_t count_ = 0;
    size_t working_ = 0;
    bool stopped_ = false;
};

}  // namespace docprep

#endif  // DOCPREP_BATCH_WORKERS_H
