#include "commands.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "encoders.h"

Outcome docprep_with(Names arguments) {
    arguments.insert(arguments.begin(), DOCPREP_PROGRAM);
    return run_program(arguments);
}

Outcome docprep_after(const std::string& setting, const Names& arguments, const std::string& redirection) {
    Names all = {"sh", "-c", setting + " exec \"$@\" " + redirection, "sh", DOCPREP_PROGRAM};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return run_program(all);
}

void expect_one_line(const std::string& text) {
    EXPECT_EQ(1, std::count(text.begin(), text.end(), '\n')) << text;
    EXPECT_EQ('\n', text.empty() ? ' ' : text.back()) << text;
}

void expect_same_pixels(const docprep::Image& expected, const docprep::Image& found) {
    ASSERT_EQ(expected.rows, found.rows);
    ASSERT_EQ(expected.cols, found.cols);
    ASSERT_EQ(expected.channels, found.channels);
    const ptrdiff_t n = static_cast<ptrdiff_t>(expected.rows) * expected.cols * expected.channels;
    const auto [differs, other] = std::mismatch(expected.data, expected.data + n, found.data);
    if (differs != expected.data + n)
        ADD_FAILURE() << "byte " << (differs - expected.data) << " is " << int{*other} << ", not "
                      << int{*differs};
}

void expect_failure(const Outcome& outcome, const std::string& file, const std::string& reason,
                    int exit_code) {
    EXPECT_EQ(exit_code, outcome.exit_code);
    EXPECT_EQ("", outcome.out);
    EXPECT_EQ("docprep: " + file + ": " + reason + "\n", outcome.err);
}

void expect_wrong_usage(const Names& arguments, const std::string& words) {
    const Outcome outcome = docprep_with(arguments);
    EXPECT_EQ(64, outcome.exit_code);
    EXPECT_EQ("", outcome.out);
    EXPECT_EQ(0u, outcome.err.find("docprep: ")) << outcome.err;
    EXPECT_NE(std::string::npos, outcome.err.find(words)) << outcome.err;
    expect_one_line(outcome.err);
}

int page_of_squares(int row, int col) {
    const bool margin = row < 20 || col < 20 || row >= 180 || col >= 280;
    if (!margin && row % 40 < 15 && col % 20 < 12) return 40 + row % 3;
    return 220 + col % 7;
}

std::string write_page(const TemporaryFolder& folder, const std::string& name) {
    JpegRequest request;
    request.kind = JpegKind::kGray;
    request.rows = kPageRows;
    request.cols = kPageCols;
    request.quality = 95;
    return folder.write(name,
                        make_jpeg(request, [](int row, int col, int) { return page_of_squares(row, col); }));
}

int sealed_page(int row, int col, int k) {
    const int x = col - kSealX;
    const int y = row - kSealY;
    const int distance_2 = x * x + y * y;
    const bool red = distance_2 < 30 * 30 || (distance_2 >= 40 * 40 && distance_2 < 50 * 50);
    constexpr int kPaper[] = {245, 240, 235};
    constexpr int kInk[] = {200, 30, 40};
    return red ? kInk[k] : kPaper[k];
}

std::string write_sealed_page(const TemporaryFolder& folder, const std::string& name) {
    constexpr int kRgb = 2;
    PngRequest request;
    request.colour_type = kRgb;
    request.rows = kPageRows;
    request.cols = kPageCols;
    return folder.write(name, make_png(request, sealed_page));
}
