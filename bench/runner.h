// Times the candidates of a row against each other.
#ifndef ORVEX_BENCH_RUNNER_H
#define ORVEX_BENCH_RUNNER_H

#include <map>
#include <string>

#include "cases.h"

namespace bench {

/// Median milliseconds by candidate, and of two copies of as many bytes as the row moves (reading and writing
/// half of them each): "memcpy" into memory in use, "memcpy fresh" into pages that the system has just given.
using Times = std::map<std::string, double>;

/// Candidates take turns: every repetition runs each of them once for a while, in random order.
Times time_case(const Case& row);

/// @param repetitions  of each candidate; the median of them counts
/// @param seconds      that one repetition runs at least
void set_up_runner(int repetitions, double seconds);

}  // namespace bench

#endif  // ORVEX_BENCH_RUNNER_H
