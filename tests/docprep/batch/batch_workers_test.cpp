#include "batch/batch_workers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <numeric>
#include <stdexcept>

using Workers = docprep::BatchWorkers<size_t>;

namespace {

const auto kNothing = [] {};

}  // namespace

TEST(batch_workers, every_job_runs_once_and_every_report_arrives) {
    for (const size_t threads : {1, 3, 50}) {
        std::vector<int> taken(1000, 0);
        Workers().run(
            threads, taken.size(), [](size_t k, const Workers::Send& send) { send(k); },
            [&](size_t k) { ++taken[k]; }, kNothing);
        EXPECT_EQ(std::vector<int>(1000, 1), taken);
    }
}

TEST(batch_workers, no_more_jobs_are_under_way_than_there_are_threads) {
    std::atomic<int> running{0}, most{0};
    Workers().run(
        3, 500,
        [&](size_t k, const Workers::Send& send) {
            const int now = ++running;
            for (int seen = most; now > seen && !most.compare_exchange_weak(seen, now);) {
            }
            std::this_thread::yield();
            --running;
            send(k);
        },
        [](size_t) {}, kNothing);
    EXPECT_LE(most, 3);
    EXPECT_GE(most, 1);
}

TEST(batch_workers, reports_of_one_job_keep_their_order) {
    std::vector<size_t> taken;
    Workers().run(
        1, 3,
        [](size_t k, const Workers::Send& send) {
            send(10 * k);
            send(10 * k + 1);
        },
        [&](size_t report) { taken.push_back(report); }, kNothing);
    EXPECT_EQ((std::vector<size_t>{0, 1, 10, 11, 20, 21}), taken);
}

TEST(batch_workers, a_thread_waits_while_too_many_reports_do) {
    std::atomic<size_t> sent{0};
    size_t most_ahead = 0, taken = 0;
    Workers().run(
        2, 5000,
        [&](size_t k, const Workers::Send& send) {
            ++sent;
            send(k);
        },
        [&](size_t) {
            most_ahead = std::max(most_ahead, sent - taken);
            ++taken;
        },
        kNothing);
    EXPECT_EQ(5000u, taken);
    EXPECT_LE(most_ahead, 2u * 256 + 2) << "one load being taken, the next one waiting, two being sent";
}

TEST(batch_workers, no_jobs_are_done_at_once) {
    Workers().run(
        4, 0, [](size_t, const Workers::Send&) { FAIL(); }, [](size_t) { FAIL(); }, kNothing);
}

TEST(batch_workers, what_a_job_throws_ends_the_batch) {
    std::atomic<int> begun{0};
    const auto run = [&] {
        Workers().run(
            2, 100000,
            [&](size_t k, const Workers::Send& send) {
                ++begun;
                if (k == 10) throw std::runtime_error("broken");
                send(k);
            },
            [](size_t) {}, kNothing);
    };
    EXPECT_THROW(run(), std::runtime_error);
    EXPECT_LT(begun, 100000);
}

TEST(batch_workers, what_a_taker_throws_ends_the_batch_and_releases_waiting_threads) {
    std::atomic<int> begun{0};
    const auto run = [&] {
        Workers().run(
            4, 100000,
            [&](size_t k, const Workers::Send& send) {
                ++begun;
                send(k);
            },
            [](size_t) { throw std::runtime_error("full"); }, kNothing);
    };
    EXPECT_THROW(run(), std::runtime_error);
    EXPECT_LT(begun, 100000);
}
