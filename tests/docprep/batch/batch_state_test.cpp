#include "batch/batch_state.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "base/failure.h"
#include "test_files.h"

using docprep::BatchRow;
using docprep::BatchState;
using docprep::BatchStatus;

namespace {

BatchRow row(const std::string& input, BatchStatus status = BatchStatus::kWaiting) {
    BatchRow result;
    result.input = input;
    result.folder = "of " + input;
    result.options = "--page=binary";
    result.version = "1.2.3";
    result.status = status;
    return result;
}

BatchRow done(const std::string& input) {
    BatchRow result = row(input, BatchStatus::kDone);
    result.hash = "0123456789abcdef0123456789abcdef";
    result.bytes = int64_t{5} << 32;
    result.files = {"page.png", "result.json"};
    result.text_rows = 17;
    result.milliseconds = 12.5;
    result.finished_at = "2026-01-31T23:59:59Z";
    return result;
}

void expect_same(const BatchRow& expected, const BatchRow& found) {
    EXPECT_EQ(expected.input, found.input);
    EXPECT_EQ(expected.folder, found.folder);
    EXPECT_EQ(expected.options, found.options);
    EXPECT_EQ(expected.version, found.version);
    EXPECT_EQ(expected.status, found.status);
    EXPECT_EQ(expected.hash, found.hash);
    EXPECT_EQ(expected.bytes, found.bytes);
    EXPECT_EQ(expected.error, found.error);
    EXPECT_EQ(expected.files, found.files);
    EXPECT_EQ(expected.text_rows, found.text_rows);
    EXPECT_EQ(expected.milliseconds, found.milliseconds);
    EXPECT_EQ(expected.finished_at, found.finished_at);
}

std::string refusal(const std::string& path) {
    try {
        const BatchState state(path);
        return "";
    } catch (const docprep::Failure& failure) {
        EXPECT_EQ(path, failure.file());
        return failure.what();
    }
}

void execute(const std::string& path, const char* sql) {
    sqlite3* database = nullptr;
    ASSERT_EQ(SQLITE_OK, sqlite3_open(path.c_str(), &database));
    EXPECT_EQ(SQLITE_OK, sqlite3_exec(database, sql, nullptr, nullptr, nullptr)) << sqlite3_errmsg(database);
    sqlite3_close(database);
}

}  // namespace

TEST(batch_state, rows_come_back_as_they_were_put) {
    const TemporaryFolder folder;
    BatchRow failed = row("/p/b\n\xe9.jpg", BatchStatus::kFailed);
    failed.error = "is \xff empty";
    failed.finished_at = "2026-01-31T23:59:59Z";
    {
        BatchState state(folder.path("s"));
        EXPECT_EQ(0u, state.rows().size());
        state.put({done("/p/a.jpg"), failed});
        state.put({row("/p/c.jpg", BatchStatus::kRunning), row("/p/d.jpg", BatchStatus::kRefused)});
    }
    const auto rows = BatchState(folder.path("s")).rows();
    ASSERT_EQ(4u, rows.size());
    expect_same(done("/p/a.jpg"), rows.at("/p/a.jpg"));
    expect_same(failed, rows.at("/p/b\n\xe9.jpg"));
    expect_same(row("/p/c.jpg", BatchStatus::kRunning), rows.at("/p/c.jpg"));
    expect_same(row("/p/d.jpg", BatchStatus::kRefused), rows.at("/p/d.jpg"));
    EXPECT_EQ(std::vector<std::string>{"s"}, folder.content())
        << "nothing lies beside a state that is closed";
}

TEST(batch_state, a_row_replaces_that_of_the_same_input) {
    const TemporaryFolder folder;
    BatchState state(folder.path("s"));
    state.put({done("/p/a.jpg"), done("/p/b.jpg")});
    state.put({row("/p/a.jpg", BatchStatus::kRunning)});
    expect_same(row("/p/a.jpg", BatchStatus::kRunning), state.rows().at("/p/a.jpg"));
    expect_same(done("/p/b.jpg"), state.rows().at("/p/b.jpg"));
}

TEST(batch_state, others_read_what_is_committed_meanwhile) {
    const TemporaryFolder folder;
    BatchState state(folder.path("s"));
    state.put({done("/p/a.jpg")});
    const BatchState other(folder.path("s"));
    EXPECT_EQ(1u, other.rows().size());
    state.put({done("/p/b.jpg")});
    EXPECT_EQ(2u, other.rows().size());
}

TEST(batch_state, what_was_put_outlives_a_killed_program) {
    const TemporaryFolder folder;
    const pid_t child = fork();
    if (child == 0) {
        BatchState state(folder.path("s"));
        state.put({done("/p/a.jpg")});
        raise(SIGKILL);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    expect_same(done("/p/a.jpg"), BatchState(folder.path("s")).rows().at("/p/a.jpg"));
}

TEST(batch_state, bytes_that_are_no_text_are_blobs_for_others) {
    const TemporaryFolder folder;
    BatchState(folder.path("s")).put({row("/p/\xe9.jpg"), row("/p/\xc3\xa9.jpg")});
    sqlite3* database = nullptr;
    ASSERT_EQ(SQLITE_OK, sqlite3_open(folder.path("s").c_str(), &database));
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(database, "SELECT group_concat(typeof(input)) FROM photographs ORDER BY input", -1,
                       &statement, nullptr);
    ASSERT_EQ(SQLITE_ROW, sqlite3_step(statement));
    EXPECT_STREQ("text,blob", reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
    sqlite3_finalize(statement);
    sqlite3_close(database);
}

TEST(batch_state, other_files_are_refused_and_stay) {
    const TemporaryFolder folder;
    const std::string text = folder.write("text", "Dear friends, " + std::string(200, 'x'));
    EXPECT_EQ("file is not a database", refusal(text));
    EXPECT_EQ(0u, text_of(text).find("Dear friends"));

    const std::string others = folder.path("others");
    execute(others, "CREATE TABLE t (a)");
    const std::string before = text_of(others);
    EXPECT_EQ("is not the state of a batch", refusal(others));
    EXPECT_EQ(before, text_of(others));

    { const BatchState newer(folder.path("newer")); }
    execute(folder.path("newer"), "PRAGMA user_version = 2");
    EXPECT_EQ("is of version 2, and this docprep knows version 1", refusal(folder.path("newer")));

    EXPECT_EQ("No such file or directory", refusal(folder.path("no/folder")));
}

TEST(batch_state, an_empty_file_becomes_a_state) {
    const TemporaryFolder folder;
    EXPECT_EQ("", refusal(folder.write("s", "")));
    EXPECT_EQ(0u, BatchState(folder.path("s")).rows().size());
}

TEST(batch_state, values_that_a_stranger_put_there_do_no_harm) {
    const TemporaryFolder folder;
    BatchState(folder.path("s")).put({done("/p/a.jpg"), done("/p/b.jpg")});
    execute(folder.path("s"), "UPDATE photographs SET files = 'no list' WHERE input = '/p/a.jpg'");
    execute(folder.path("s"),
            "UPDATE photographs SET files = '[1, \"x\", null]', folder = 5, bytes = 'many', "
            "hash = NULL WHERE input = '/p/b.jpg'");
    const auto rows = BatchState(folder.path("s")).rows();
    EXPECT_EQ(std::vector<std::string>{}, rows.at("/p/a.jpg").files);
    EXPECT_EQ(std::vector<std::string>{"x"}, rows.at("/p/b.jpg").files);
    EXPECT_EQ("5", rows.at("/p/b.jpg").folder);
    EXPECT_EQ("", rows.at("/p/b.jpg").hash);
}

TEST(batch_state, a_full_disk_is_a_failure_and_what_was_there_stays) {
    const TemporaryFolder folder;
    BatchState state(folder.path("s"));
    state.put({done("/p/a.jpg")});
    std::vector<BatchRow> many;
    for (int k = 0; k < 1000; ++k) many.push_back(done("/p/" + std::to_string(k)));
    {
        const FileSizeLimit limit(64 << 10);
        EXPECT_THROW(state.put(many), docprep::Failure);
    }
    EXPECT_EQ(1u, state.rows().size());
    state.put(many);
    EXPECT_EQ(1001u, state.rows().size());
}
