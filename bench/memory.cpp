// Prints the most memory that each operation holds at a time, its outputs included: every block comes from
// operator new, which is replaced here.
#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

#include "cases.h"

namespace {

int64_t held = 0;
int64_t most = 0;

void* take(std::size_t bytes) {
    void* const block = std::malloc(bytes);
    if (block) {
        held += static_cast<int64_t>(bytes < 16 ? 16 : malloc_usable_size(block));
        most = std::max(most, held);
    }
    return block;
}

void give_back(void* block) {
    if (block) held -= static_cast<int64_t>(std::max<std::size_t>(16, malloc_usable_size(block)));
    std::free(block);
}

void* take_or_throw(std::size_t bytes) {
    void* const block = take(bytes);
    if (!block) throw std::bad_alloc();
    return block;
}

}  // namespace

void* operator new(std::size_t bytes) {
    return take_or_throw(bytes);
}
void* operator new[](std::size_t bytes) {
    return take_or_throw(bytes);
}
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
    return take(bytes);
}
void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept {
    return take(bytes);
}
void operator delete(void* block) noexcept {
    give_back(block);
}
void operator delete[](void* block) noexcept {
    give_back(block);
}
void operator delete(void* block, std::size_t) noexcept {
    give_back(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    give_back(block);
}

int main(int argc, char** argv) {
    std::string size = "1920x1080", photo = BENCH_SAMPLE;
    CLI::App app("Prints the most memory that each operation holds, in Markdown", "orvex_memory");
    app.add_option("--size", size, "Size WxH");
    app.add_option("--photo", photo, "JPEG or PNG to work on");
    CLI11_PARSE(app, argc, argv);
    int cols = 0, rows = 0;
    if (!bench::parse_size(size, cols, rows)) {
        std::fprintf(stderr, "orvex_memory: %s is not WxH of 64 pixels or more\n", size.c_str());
        return 64;
    }

    // Operations print lines on standard output, which here belongs to the table.
    std::FILE* const out = fdopen(dup(STDOUT_FILENO), "w");
    const int nowhere = open("/dev/null", O_WRONLY);
    if (!out || nowhere < 0 || dup2(nowhere, STDOUT_FILENO) < 0) return 2;
    const bench::Inputs in = bench::make_inputs(rows, cols, photo);
    std::fprintf(out, "| operation, %d x %d | KiB | bytes a pixel |\n|---|---|---|\n", cols, rows);
    for (const bench::Case& row : bench::make_cases(in, false)) {
        const int64_t before = held;
        most = held;
        row.candidates.front().run();
        std::fprintf(out, "| %s | %.0f | %.2f |\n", row.name.c_str(),
                     static_cast<double>(most - before) / 1024,
                     static_cast<double>(most - before) / (static_cast<double>(rows) * cols));
    }
    return 0;
}
