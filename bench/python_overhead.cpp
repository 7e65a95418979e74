// What a call of an operation costs more through Python than from C++.
//
// Both run in this process and take turns, each in loops of its own language; an output is made anew in every call.
// Medians of the thread's processor time, which other programs disturb less than the clock on the wall.
// The library's lines go to /dev/null from C++, and to nobody from Python.
// usage: orvex_python_overhead [ROUNDS]
#include <fcntl.h>
#include <pybind11/embed.h>
#include <pybind11/numpy.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

#include "cv_imgproc.h"

namespace {

namespace py = pybind11;
using orvex_cv_991::CImgproc;
using orvex_cv_991::Size;
using U8 = CImgproc::U8;

/// A photograph of nothing in particular, and what its pixels give.
struct Inputs {
    U8 photo, gray, binary, dot;

    Inputs() {
        photo.mat_create(1080, 1920, 3, 0);
        unsigned state = 991;
        for (int k = 0; k < 1080 * 1920 * 3; ++k) {
            state = state * 1664525u + 1013904223u;
            photo.data[k] = static_cast<unsigned char>(state >> 24);
        }
        CImgproc::bgr2gray(photo, gray);
        CImgproc::thresholdSeg(gray, binary, 200);
        dot.mat_create(1, 1, 1, 7);
    }
};

struct Case {
    std::string name;
    std::function<void()> library;
    std::string call;  ///< the same in Python
    int calls;         ///< a turn
    std::vector<double> cpp, python;
};

py::array array_of(const U8& mat) {
    std::vector<py::ssize_t> shape = {mat.rows, mat.cols};
    if (mat.channels != 1) shape.push_back(mat.channels);
    return py::array_t<unsigned char>(shape, mat.data);
}

double processor_seconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

double cpp_turn(const Case& one) {
    const double begin = processor_seconds();
    for (int k = 0; k < one.calls; ++k) one.library();
    return (processor_seconds() - begin) / one.calls;
}

double median(std::vector<double>& values) {
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                     values.end());
    return values[values.size() / 2];
}

std::vector<Case> cases_on(const Inputs& inputs) {
    return {
        {"`bgr2gray`",
         [&] {
             U8 dst;
             CImgproc::bgr2gray(inputs.photo, dst);
         },
         "orvex.bgr2gray(photo)",
         10,
         {},
         {}},
        {"`thresholdSeg`",
         [&] {
             U8 dst;
             CImgproc::thresholdSeg(inputs.gray, dst, 128);
         },
         "orvex.thresholdSeg(gray, 128)",
         20,
         {},
         {}},
        {"`otsu`", [&] { CImgproc::otsu(inputs.gray); }, "orvex.otsu(gray)", 10, {}, {}},
        {"`dilateBinary`, 3 x 3",
         [&] {
             U8 dst;
             CImgproc::dilateBinary(inputs.binary, dst, Size(3, 3));
         },
         "orvex.dilateBinary(binary, (3, 3))",
         10,
         {},
         {}},
        {"`thresholdSeg`, one pixel",
         [&] {
             U8 dst;
             CImgproc::thresholdSeg(inputs.dot, dst, 128);
         },
         "orvex.thresholdSeg(dot, 128)",
         2000,
         {},
         {}},
    };
}

/// Where the calls of Python run: the images by their names, and a function turn_K(n) for each case.
py::dict python_side(const Inputs& inputs, const std::vector<Case>& cases) {
    py::module_::import("sys").attr("path").attr("insert")(0, BENCH_PYTHON_PATH);
    py::dict names;
    names["photo"] = array_of(inputs.photo);
    names["gray"] = array_of(inputs.gray);
    names["binary"] = array_of(inputs.binary);
    names["dot"] = array_of(inputs.dot);
    std::string program = "import time, orvex_991 as orvex\n";
    for (std::size_t k = 0; k < cases.size(); ++k)
        program += "def turn_" + std::to_string(k) +
                   "(n):\n    begin = time.thread_time()\n    for _ in range(n):\n        " + cases[k].call +
                   "\n    return (time.thread_time() - begin) / n\n";
    py::exec(program, names);
    return names;
}

void measure(std::vector<Case>& cases, const py::dict& names, int rounds) {
    for (int round = -1; round < rounds; ++round)  // the first one warms up
        for (std::size_t k = 0; k < cases.size(); ++k) {
            const double cpp = cpp_turn(cases[k]);
            const py::object turn = names[("turn_" + std::to_string(k)).c_str()];
            const double python = turn(cases[k].calls).cast<double>();
            if (round < 0) continue;
            cases[k].cpp.push_back(cpp);
            cases[k].python.push_back(python);
        }
}

void print(std::vector<Case>& cases) {
    std::printf("| operation | C++, ms | Python, ms | difference, microseconds |\n|---|--:|--:|--:|\n");
    for (Case& one : cases) {
        const double cpp = median(one.cpp), python = median(one.python);
        std::printf("| %s | %.4f | %.4f | %.1f |\n", one.name.c_str(), cpp * 1e3, python * 1e3,
                    (python - cpp) * 1e6);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 101;
    if (argc > 2 || rounds < 1) {
        std::fprintf(stderr, "usage: orvex_python_overhead [ROUNDS]\n");
        return 64;
    }
    const int console = dup(STDOUT_FILENO);
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    const Inputs inputs;
    std::vector<Case> cases = cases_on(inputs);
    {
        const py::scoped_interpreter interpreter;
        measure(cases, python_side(inputs, cases), rounds);
    }
    std::fflush(stdout);
    dup2(console, STDOUT_FILENO);
    print(cases);
}
