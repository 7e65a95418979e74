#include "run/library_log.h"

#include <gtest/gtest.h>

#include "base/failure.h"
#include "test_files.h"

using docprep::LibraryLines;
using docprep::LibraryLog;

namespace {

/// Prints before, while and after the log is used; `out` and `err` get what arrived on the standard streams.
void print_round(LibraryLog& log, std::string& out, std::string& err) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    std::printf("before ");
    {
        const LibraryLog::Redirection redirection(log);
        std::printf("D file.cpp:1] inside\n");
    }
    std::printf("after");
    std::fflush(stdout);
    out = testing::internal::GetCapturedStdout();
    err = testing::internal::GetCapturedStderr();
}

}  // namespace

TEST(library_log, lines_go_to_the_log_and_nowhere_else) {
    LibraryLog log(LibraryLines::kKept);
    std::string out, err;
    print_round(log, out, err);
    EXPECT_EQ("before after", out);
    EXPECT_EQ("", err);
    EXPECT_EQ(bytes_of("D file.cpp:1] inside\n"), log.content());
}

TEST(library_log, rounds_add_up) {
    LibraryLog log(LibraryLines::kKept);
    std::string out, err;
    print_round(log, out, err);
    EXPECT_EQ(bytes_of("D file.cpp:1] inside\n"), log.content());
    print_round(log, out, err);
    EXPECT_EQ("before after", out);
    EXPECT_EQ(bytes_of("D file.cpp:1] inside\nD file.cpp:1] inside\n"), log.content());
}

TEST(library_log, shown_lines_go_to_standard_error) {
    LibraryLog log(LibraryLines::kShown);
    std::string out, err;
    print_round(log, out, err);
    EXPECT_EQ("before after", out);
    EXPECT_EQ("D file.cpp:1] inside\n", err);
    EXPECT_TRUE(log.content().empty());
}

TEST(library_log, dropped_lines_go_nowhere) {
    LibraryLog log(LibraryLines::kDropped);
    std::string out, err;
    print_round(log, out, err);
    EXPECT_EQ("before after", out);
    EXPECT_EQ("", err);
    EXPECT_TRUE(log.content().empty());
}

TEST(library_log, an_exception_gives_standard_output_back) {
    LibraryLog log(LibraryLines::kKept);
    testing::internal::CaptureStdout();
    try {
        const LibraryLog::Redirection redirection(log);
        std::printf("inside");
        throw 1;
    } catch (int) {
        std::printf("outside");
    }
    std::fflush(stdout);
    EXPECT_EQ("outside", testing::internal::GetCapturedStdout());
    EXPECT_EQ(bytes_of("inside"), log.content());
}

TEST(library_log, lines_that_cannot_be_stored_are_reported_and_do_not_come_out_later) {
    LibraryLog log(LibraryLines::kKept);
    testing::internal::CaptureStdout();
    {
        const FileSizeLimit limit(2000);
        const LibraryLog::Redirection redirection(log);
        std::printf("%s", std::string(3000, 'x').c_str());
    }
    std::printf("outside");
    std::fflush(stdout);
    EXPECT_EQ("outside", testing::internal::GetCapturedStdout());
    EXPECT_THROW(log.content(), docprep::Failure);
}
