// The benchmark's command line. Operations print lines on standard output, which here belongs to the
// table: it goes to /dev/null while they run.
#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <regex>
#include <string>

#include "cases.h"
#include "runner.h"
#include "table.h"

int main(int argc, char** argv) {
    std::vector<std::string> sizes = {"640x480", "1920x1080", "4000x3000"};
    std::string filter, photo = BENCH_SAMPLE;
    int repetitions = 9;
    double seconds = 0.02;
    bool with_reference = false, without_peers = false;
    CLI::App app("Times the operations against other libraries and prints a table in Markdown",
                 "orvex_bench");
    app.add_option("--size", sizes, "Sizes WxH")->delimiter(',');
    app.add_option("--filter", filter, "Regular expression that a row's name must match somewhere");
    app.add_option("--photo", photo, "JPEG or PNG to measure on");
    app.add_option("--repetitions", repetitions, "Turns of each candidate; the median counts")
        ->check(CLI::Range(1, 1000));
    app.add_option("--seconds", seconds, "Least time of a turn")->check(CLI::Range(0.0001, 60.0));
    app.add_flag("--reference", with_reference, "Time the plain reference, too");
    app.add_flag("--no-peers", without_peers, "Leave the other libraries out");
    CLI11_PARSE(app, argc, argv);

    std::FILE* const out = fdopen(dup(STDOUT_FILENO), "w");
    const int nowhere = open("/dev/null", O_WRONLY);
    if (!out || nowhere < 0 || dup2(nowhere, STDOUT_FILENO) < 0) return 2;
    bench::set_up_runner(repetitions, seconds);
    const std::regex wanted(filter);
    for (const std::string& size : sizes) {
        int cols = 0, rows = 0;
        if (!bench::parse_size(size, cols, rows)) {
            std::fprintf(stderr, "orvex_bench: %s is not WxH of 64 pixels or more\n", size.c_str());
            return 64;
        }
        const bench::Inputs in = bench::make_inputs(rows, cols, photo);
        std::vector<bench::Case> cases = bench::make_cases(in, with_reference);
        if (!without_peers) {
#ifdef BENCH_YUV
            bench::add_yuv(cases, in);
#endif
#ifdef BENCH_LEPTONICA
            bench::add_leptonica(cases, in);
#endif
#if defined(BENCH_YUV) && defined(BENCH_LEPTONICA)
            bench::add_seal(cases, in);
#endif
#ifdef BENCH_VIPS
            bench::add_vips(cases, in);
#endif
#ifdef BENCH_CGAL
            bench::add_cgal(cases, in);
#endif
        }
        std::fputs(bench::table_head(in, repetitions).c_str(), out);
        for (const bench::Case& row : cases) {
            if (!std::regex_search(row.name, wanted)) continue;
            std::fputs(bench::table_line({row, bench::time_case(row)}).c_str(), out);
            std::fflush(out);
        }
        std::fputs("\n", out);
    }
    return 0;
}
