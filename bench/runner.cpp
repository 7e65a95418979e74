#include "runner.h"

#include <benchmark/benchmark.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace bench {

namespace {

/// Keeps the time of every repetition by candidate.
class Collector : public benchmark::BenchmarkReporter {
 public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration)
                times_[run.run_name.function_name].push_back(run.real_accumulated_time * 1e3 /
                                                             static_cast<double>(run.iterations));
    }

    Times medians() {
        Times medians;
        for (auto& [name, times] : times_) {
            std::nth_element(times.begin(), times.begin() + static_cast<ptrdiff_t>(times.size() / 2),
                             times.end());
            medians[name] = times[times.size() / 2];
        }
        return medians;
    }

 private:
    std::map<std::string, std::vector<double>> times_;
};

void add(const std::string& name, const std::function<void()>& run) {
    benchmark::RegisterBenchmark(name.c_str(), [run](benchmark::State& state) {
        for (auto _ : state) run();
    })->UseRealTime();
}

}  // namespace

void set_up_runner(int repetitions, double seconds) {
    std::vector<std::string> words = {"orvex_bench", "--benchmark_enable_random_interleaving=true",
                                      "--benchmark_repetitions=" + std::to_string(repetitions),
                                      "--benchmark_min_time=" + std::to_string(seconds)};
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
}

Times time_case(const Case& row) {
    const size_t half = static_cast<size_t>(row.bytes / 2);
    std::vector<char> from(half, 1), to(half, 2);
    benchmark::ClearRegisteredBenchmarks();
    for (const Candidate& candidate : row.candidates) add(candidate.name, candidate.run);
    add("memcpy", [&] {
        std::memcpy(to.data(), from.data(), half);
        benchmark::ClobberMemory();
    });
    add("memcpy fresh", [&] {
        void* const pages = mmap(nullptr, half, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        std::memcpy(pages, from.data(), half);
        munmap(pages, half);
    });
    Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector, "all");
    return collector.medians();
}

}  // namespace bench
