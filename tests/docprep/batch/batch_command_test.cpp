// docprep batch as a user meets it: results, lines, exit codes, the state and what survives a kill.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <spawn.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <random>
#include <thread>

#include "commands.h"
#include "encoders.h"

using docprep::Bytes;
using nlohmann::json;
namespace fs = std::filesystem;

namespace {

const std::string kSample = std::string(DOCPREP_SAMPLES) + "/page.jpg";

/// A page whose bytes depend on its number.
Bytes page_bytes(int number) {
    PngRequest request;
    request.rows = kPageRows;
    request.cols = kPageCols;
    return make_png(request,
                    [number](int row, int col, int) { return page_of_squares(row, col) - number % 30; });
}

std::string blank_bytes() {
    const Bytes png = make_png({}, [](int, int, int) { return 230; });
    return {png.begin(), png.end()};
}

/// A row of the state.
struct Row {
    std::string status, error, options, hash;
    std::string folder;
    json files;
    int64_t bytes = 0;
    int64_t text_rows = -1;
    double milliseconds = -1;
};

/// A folder of photographs and one for results.
class Photos {
 public:
    Photos() { fs::create_directory(folder_.path("photos")); }

    std::string path(const std::string& name) const { return folder_.path(name); }
    std::string photo(const std::string& name) const { return folder_.path("photos/" + name); }
    template <class Content>
    void write(const std::string& name, const Content& content) const {
        fs::create_directories(fs::path(photo(name)).parent_path());
        folder_.write("photos/" + name, content);
    }

    /// 40 files: the sample, small pages, a page with a seal, and broken ones.
    void fill() const {
        fs::copy_file(kSample, photo("sample.jpg"));
        for (int k = 0; k < 32; ++k) write("page" + std::to_string(k) + ".png", page_bytes(k));
        write_sealed_page(folder_, "photos/sealed.png");
        const std::string page = text_of(photo("page1.png"));
        write("broken-cut.png", page.substr(0, page.size() / 2));
        write("broken-empty.jpg", std::string());
        write("broken-text.jpg", std::string("Dear friends"));
        Bytes huge = make_jpeg({}, [](int, int, int) { return 0; });
        patch_jpeg_size(huge, 65000, 65000);
        write("broken-huge.jpg", huge);
        write("blank.png", blank_bytes());
        write("page one.png", page_bytes(50));
    }
    static constexpr int kBroken = 4;
    static constexpr int kAll = 40;

    Names arguments(const Names& more = {}) const {
        Names all = {"batch", path("photos"), "-o", path("out")};
        all.insert(all.end(), more.begin(), more.end());
        return all;
    }
    Outcome run(const Names& more = {}) const { return docprep_with(arguments(more)); }

    /// Paths below the results, but for the state.
    Names content() const {
        Names names;
        for (const std::string& name : folder_.content())
            if (name.rfind("out/", 0) == 0 && name.rfind("out/docprep.sqlite", 0) != 0)
                names.push_back(name.substr(4));
        return names;
    }

    /// The results with their content, but for the state.
    std::map<std::string, std::string> results() const {
        std::map<std::string, std::string> all;
        for (const std::string& name : content())
            all[name] = fs::is_directory(path("out/" + name)) ? "a folder" : text_of(path("out/" + name));
        return all;
    }

    std::map<std::string, Row> state() const {
        std::map<std::string, Row> rows;
        sqlite3* database = nullptr;
        sqlite3_stmt* statement = nullptr;
        EXPECT_EQ(SQLITE_OK, sqlite3_open_v2(path("out/docprep.sqlite").c_str(), &database,
                                             SQLITE_OPEN_READONLY, nullptr));
        EXPECT_EQ(SQLITE_OK,
                  sqlite3_prepare_v2(database,
                                     "SELECT input, status, error, options, hash, folder, files, bytes, "
                                     "text_rows, milliseconds FROM photographs",
                                     -1, &statement, nullptr));
        const auto text = [&](int column) {
            const auto* const bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
            return std::string(bytes ? bytes : "",
                               static_cast<size_t>(sqlite3_column_bytes(statement, column)));
        };
        while (sqlite3_step(statement) == SQLITE_ROW) {
            Row row = {text(1), text(2), text(3), text(4), text(5), json::parse(text(6)), 0, -1, -1};
            row.bytes = sqlite3_column_int64(statement, 7);
            if (sqlite3_column_type(statement, 8) != SQLITE_NULL)
                row.text_rows = sqlite3_column_int64(statement, 8);
            if (sqlite3_column_type(statement, 9) != SQLITE_NULL)
                row.milliseconds = sqlite3_column_double(statement, 9);
            rows[fs::path(text(0)).lexically_relative(fs::canonical(path("photos"))).string()] = row;
        }
        sqlite3_finalize(statement);
        sqlite3_close(database);
        return rows;
    }

    const TemporaryFolder& folder() const { return folder_; }

 private:
    TemporaryFolder folder_;
};

/// Lines in the order of their text: threads print as they come.
Names sorted_lines(const std::string& text) {
    Names lines;
    for (size_t begin = 0, end; (end = text.find('\n', begin)) != std::string::npos; begin = end + 1)
        lines.push_back(text.substr(begin, end - begin));
    std::sort(lines.begin(), lines.end());
    return lines;
}

/// The number that the summary has for a name; -1 without one.
int64_t summary_of(const Outcome& outcome, std::string name) {
    name.resize(14, ' ');
    const size_t at = ("\n" + outcome.out).find("\n" + name);
    return at == std::string::npos ? -1 : std::stoll(outcome.out.substr(at + name.size()));
}

/// A batch under way.
class RunningBatch {
 public:
    explicit RunningBatch(Names arguments) {
        arguments.insert(arguments.begin(), DOCPREP_PROGRAM);
        std::vector<char*> argv;
        for (std::string& argument : arguments) argv.push_back(argument.data());
        argv.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        for (const int stream : {STDOUT_FILENO, STDERR_FILENO})
            posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_WRONLY, 0);
        EXPECT_EQ(0, posix_spawnp(&pid_, argv[0], &actions, nullptr, argv.data(), environ));
        posix_spawn_file_actions_destroy(&actions);
    }
    ~RunningBatch() {
        if (pid_ > 0) end_by(SIGKILL);
    }
    RunningBatch(const RunningBatch&) = delete;
    RunningBatch& operator=(const RunningBatch&) = delete;

    bool ended() {
        if (pid_ > 0 && waitpid(pid_, &status_, WNOHANG) == pid_) pid_ = 0;
        return pid_ == 0;
    }

    int end_by(int signal) {
        if (ended()) return status_;
        kill(pid_, signal);
        waitpid(pid_, &status_, 0);
        pid_ = 0;
        return status_;
    }

 private:
    pid_t pid_ = 0;
    int status_ = 0;
};

/// Folders of results that are complete, or nearly.
ptrdiff_t finished_in(const Photos& photos) {
    std::error_code ignored;
    ptrdiff_t count = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(photos.path("out"), ignored))
        count += fs::exists(entry.path() / "result.json") ? 1 : 0;
    return count;
}

/// Kills a batch when it has finished `count` more photographs than when it began, or is done.
void kill_after(const Photos& photos, const Names& more, ptrdiff_t count, std::chrono::microseconds later) {
    const ptrdiff_t before = finished_in(photos);
    RunningBatch batch(photos.arguments(more));
    while (!batch.ended() && finished_in(photos) < before + count)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    std::this_thread::sleep_for(later);
    batch.end_by(SIGKILL);
}

}  // namespace

// ---- Success ----

TEST(batch, every_photograph_gets_what_it_gets_alone) {
    const Photos photos;
    fs::copy_file(kSample, photos.photo("sample.jpg"));
    photos.write("page.png", page_bytes(1));
    const Outcome outcome = photos.run({"-q"});
    EXPECT_EQ(0, outcome.exit_code);
    EXPECT_EQ("", outcome.out);
    EXPECT_EQ("", outcome.err);
    for (const std::string& name : {std::string("sample.jpg"), std::string("page.png")}) {
        const std::string stem = fs::path(name).stem().string();
        ASSERT_EQ(0, docprep_with({photos.photo(name), "-q", "-o", photos.path("alone")}).exit_code);
        for (const fs::directory_entry& entry : fs::directory_iterator(photos.path("alone"))) {
            const std::string file = entry.path().filename().string();
            if (file == "result.json") continue;  // which names the files beside it
            EXPECT_EQ(text_of(entry.path().string()), text_of(photos.path("out/" + stem + "/" + file)))
                << file;
        }
        json alone = json::parse(text_of(photos.path("alone/result.json")));
        json result = json::parse(text_of(photos.path("out/" + stem + "/result.json")));
        EXPECT_EQ(alone["files"].size() + 1, result["files"].size()) << result["files"];
        alone.erase("files");
        result.erase("files");
        EXPECT_EQ(alone, result);
        fs::remove_all(photos.path("alone"));
    }
}

TEST(batch, a_thumbnail_is_the_page_made_small) {
    const Photos photos;
    fs::copy_file(kSample, photos.photo("sample.jpg"));
    photos.run({"-q"});
    const docprep::Image thumbnail = docprep::read_photo(photos.path("out/sample/thumbnail.jpg")).pixels;
    EXPECT_EQ(320, std::max(thumbnail.rows, thumbnail.cols));
    EXPECT_EQ(1, thumbnail.channels);
    EXPECT_LT(fs::file_size(photos.path("out/sample/thumbnail.jpg")), 40000u);
}

TEST(batch, the_broken_are_told_and_the_rest_is_done) {
    const Photos photos;
    photos.fill();
    const Outcome outcome = photos.run({"-j", "3"});
    EXPECT_EQ(2, outcome.exit_code);
    const Names lines = sorted_lines(outcome.err);
    ASSERT_EQ(size_t{Photos::kBroken}, lines.size()) << outcome.err;
    EXPECT_EQ(0u, lines[0].find("docprep: " + photos.photo("broken-cut.png") + ": ")) << lines[0];
    EXPECT_EQ("docprep: " + photos.photo("broken-empty.jpg") + ": is empty", lines[1]);
    EXPECT_EQ(
        "docprep: " + photos.photo("broken-huge.jpg") + ": 65000 x 65000 pixels are too many (limit 256 Mi)",
        lines[2]);
    EXPECT_EQ(0u, lines[3].find("docprep: " + photos.photo("broken-text.jpg") + ": is ")) << lines[3];
    EXPECT_EQ(Photos::kAll, summary_of(outcome, "photographs"));
    EXPECT_EQ(Photos::kAll - Photos::kBroken, summary_of(outcome, "done"));
    EXPECT_EQ(0, summary_of(outcome, "refused"));
    EXPECT_EQ(Photos::kBroken, summary_of(outcome, "failed"));
    EXPECT_EQ(0, summary_of(outcome, "skipped"));
    EXPECT_NE(std::string::npos, outcome.out.find(photos.path("out/index.html"))) << outcome.out;
    EXPECT_EQ(std::string::npos, outcome.out.find("cost time")) << outcome.out;
    for (const std::string& name : photos.content())
        EXPECT_EQ(std::string::npos, name.find("broken")) << name;
}

TEST(batch, the_state_has_a_row_for_each_photograph) {
    const Photos photos;
    photos.fill();
    photos.run({"-q", "--page", "binary", "--crop"});
    for (const std::string& name : photos.folder().content())
        EXPECT_EQ(std::string::npos, name.find("sqlite-")) << "no journal lies beside the state";
    const auto rows = photos.state();
    EXPECT_EQ(size_t{Photos::kAll}, rows.size());
    for (const auto& [name, row] : rows) {
        SCOPED_TRACE(name);
        const bool broken = name.rfind("broken", 0) == 0;
        EXPECT_EQ(broken ? "failed" : "done", row.status);
        EXPECT_EQ(broken, !row.error.empty()) << row.error;
        EXPECT_EQ("--page=binary --crop=true", row.options);
        EXPECT_EQ(fs::path(name).stem(), row.folder);
        EXPECT_EQ(fs::file_size(photos.photo(name)), static_cast<uintmax_t>(row.bytes));
        EXPECT_EQ(32u, row.hash.size());
        EXPECT_GE(row.milliseconds, 0);
        if (broken) {
            EXPECT_EQ(json::array(), row.files);
            continue;
        }
        EXPECT_EQ("result.json", row.files.back());
        for (const json& file : row.files)
            EXPECT_TRUE(fs::exists(photos.path("out/" + row.folder + "/" + file.get<std::string>()))) << file;
    }
    EXPECT_EQ("is empty", rows.at("broken-empty.jpg").error);
    EXPECT_EQ(4, rows.at("page3.png").text_rows);
    EXPECT_EQ(0, rows.at("blank.png").text_rows);
}

TEST(batch, several_threads_give_the_same_bytes_as_one) {
    const Photos photos;
    photos.fill();
    photos.run({"-q", "-j", "1"});
    const auto one = photos.results();
    fs::remove_all(photos.path("out"));
    photos.run({"-q", "-j", "4"});
    EXPECT_EQ(one, photos.results());
    EXPECT_GT(one.size(), size_t{36 * 6});
}

TEST(batch, refused_photographs_are_told_apart_from_failed_ones) {
    const Photos photos;
    photos.write("page.png", page_bytes(1));
    photos.write("blank.png", blank_bytes());
    const Outcome outcome = photos.run({"--require-text"});
    EXPECT_EQ(1, outcome.exit_code);
    EXPECT_EQ("docprep: " + photos.photo("blank.png") + ": no text was found\n", outcome.err);
    EXPECT_EQ(1, summary_of(outcome, "refused"));
    EXPECT_EQ("refused", photos.state().at("blank.png").status);
    EXPECT_FALSE(fs::exists(photos.path("out/blank")));
    photos.write("broken.png", std::string());
    EXPECT_EQ(2, photos.run({"--require-text"}).exit_code) << "refused and failed";
}

TEST(batch, camera_frames_are_read_with_their_size) {
    const Photos photos;
    Bytes frame;
    for (int row = 0; row < kPageRows; ++row)
        for (int col = 0; col < kPageCols; ++col)
            frame.push_back(static_cast<unsigned char>(page_of_squares(row, col)));
    frame.resize(frame.size() * 3 / 2, 128);
    photos.write("a.nv21", frame);
    photos.write("b.nv21.gz", gzip(frame));
    photos.write("page.png", page_bytes(1));
    EXPECT_EQ(0, photos.run({"-q", "--nv21", "300x200"}).exit_code);
    const auto rows = photos.state();
    ASSERT_EQ(2u, rows.size());
    EXPECT_EQ(4, rows.at("a.nv21").text_rows);
    EXPECT_EQ("b", rows.at("b.nv21.gz").folder);
    EXPECT_EQ("--nv21=300x200", rows.at("a.nv21").options);
}

// ---- Names ----

TEST(batch, equal_names_get_folders_of_their_own) {
    const Photos photos;
    for (const char* name : {"x/page.png", "y/page.png", "y/page.PNG", "z/other.png"})
        photos.write(name, page_bytes(1));
    const Outcome outcome = docprep_with({"batch", photos.photo("z/other.png"), photos.photo("x/page.png"),
                                          photos.photo("y"), "-q", "-o", photos.path("out")});
    EXPECT_EQ(0, outcome.exit_code) << outcome.err;
    const auto rows = photos.state();
    EXPECT_EQ("x/page.png", rows.at("x/page.png").folder);
    EXPECT_EQ("y/page.png", rows.at("y/page.png").folder);
    EXPECT_EQ("page.PNG", rows.at("y/page.PNG").folder);
    EXPECT_EQ("other", rows.at("z/other.png").folder);
    for (const auto& [name, row] : rows)
        EXPECT_TRUE(fs::exists(photos.path("out/" + row.folder + "/page.png"))) << name;
}

TEST(batch, folders_below_folders_are_kept) {
    const Photos photos;
    for (const char* name : {"page.png", "x/page.png", "x/y/page.png", "x/broken.png"})
        photos.write(name, page_bytes(1));
    photos.write("z/broken.png", std::string());
    photos.run({"-q", "--recursive"});
    const auto rows = photos.state();
    EXPECT_EQ(5u, rows.size());
    EXPECT_EQ("page", rows.at("page.png").folder);
    EXPECT_EQ("x/page", rows.at("x/page.png").folder);
    EXPECT_EQ("x/y/page", rows.at("x/y/page.png").folder);
    EXPECT_FALSE(fs::exists(photos.path("out/z"))) << "nothing came of what is in there";
}

TEST(batch, names_may_hold_any_bytes) {
    const Photos photos;
    const Names names = {"two\nlines.png", "caf\xe9.png", " .png", "-o.png",
                         "%41&<b>\".png",  "*.png",       "..png"};
    for (const std::string& name : names) photos.write(name, page_bytes(1));
    photos.write("bad\n\xe9.png", std::string());
    const Outcome outcome = photos.run({"-q"});
    EXPECT_EQ(2, outcome.exit_code);
    EXPECT_EQ("docprep: " + photos.photo("bad?\xe9.png") + ": is empty\n", outcome.err);
    const auto rows = photos.state();
    EXPECT_EQ(names.size(), rows.size()) << "..png begins with a dot";
    for (const std::string& name : names) {
        if (name == "..png") continue;
        ASSERT_EQ(1u, rows.count(name)) << name;
        EXPECT_EQ("done", rows.at(name).status) << name;
        EXPECT_TRUE(fs::exists(photos.path("out/" + fs::path(name).stem().string() + "/result.json")))
            << name;
    }
    EXPECT_EQ(0, docprep_with({"batch", photos.photo("..png"), "-q", "-o", photos.path("out")}).exit_code);
    EXPECT_TRUE(fs::exists(photos.path("out/..png/result.json")));
    EXPECT_NE(std::string::npos, text_of(photos.path("out/index.html")).find("./caf%E9/thumbnail.jpg"));
}

TEST(batch, names_come_from_standard_input_or_a_pattern) {
    const Photos photos;
    photos.write("a.png", page_bytes(1));
    photos.write("b.png", page_bytes(2));
    photos.write("two\nlines.png", page_bytes(3));
    photos.folder().write("list", photos.photo("a.png") + "\n" + photos.photo("b.png"));
    photos.folder().write("list0", photos.photo("two\nlines.png") + '\0');
    const Outcome lines =
        docprep_after("", {"batch", "-", "-o", photos.path("out")}, "<" + photos.path("list"));
    EXPECT_EQ(0, lines.exit_code) << lines.err;
    EXPECT_EQ(2, summary_of(lines, "done"));
    const Outcome nul =
        docprep_after("", {"batch", "-", "--null", "-o", photos.path("out")}, "<" + photos.path("list0"));
    EXPECT_EQ(0, nul.exit_code) << nul.err;
    EXPECT_TRUE(fs::exists(photos.path("out/two\nlines/result.json")));
    const Outcome pattern = docprep_with({"batch", photos.photo("[ab].png"), "-o", photos.path("out2")});
    EXPECT_EQ(2, summary_of(pattern, "done"));
}

TEST(batch, no_photographs_are_done_at_once) {
    const Photos photos;
    const Outcome outcome = photos.run();
    EXPECT_EQ(0, outcome.exit_code) << outcome.err;
    EXPECT_EQ(0, summary_of(outcome, "photographs"));
    EXPECT_EQ(Names{"index.html"}, photos.content());
    EXPECT_EQ(0, docprep_with({"batch", "-", "-q", "-o", photos.path("out")}).exit_code);
}

TEST(batch, a_missing_photograph_and_a_pipe_are_failures_of_their_own) {
    const Photos photos;
    photos.write("page.png", page_bytes(1));
    const Outcome outcome =
        docprep_with({"batch", photos.photo("no*.png"), "/dev/null", photos.photo("page.png"), "-q", "-j",
                      "1", "-o", photos.path("out")});
    EXPECT_EQ(2, outcome.exit_code);
    EXPECT_EQ("docprep: " + photos.photo("no*.png") + ": No such file or directory\n" +
                  "docprep: /dev/null: is not a regular file\n",
              outcome.err);
    EXPECT_TRUE(fs::exists(photos.path("out/page/result.json")));
}

// ---- Doing it again ----

TEST(batch, resume_skips_what_is_done) {
    const Photos photos;
    photos.fill();
    photos.run({"-q"});
    const auto before = photos.results();
    const auto written = fs::last_write_time(photos.path("out/page3/result.json"));
    const Outcome outcome = photos.run({"--resume"});
    EXPECT_EQ(2, outcome.exit_code) << "the broken are tried again";
    EXPECT_EQ(Photos::kAll - Photos::kBroken, summary_of(outcome, "skipped"));
    EXPECT_EQ(Photos::kBroken, summary_of(outcome, "failed"));
    EXPECT_EQ(0, summary_of(outcome, "done"));
    EXPECT_EQ(before, photos.results());
    EXPECT_EQ(written, fs::last_write_time(photos.path("out/page3/result.json")));
}

TEST(batch, without_resume_everything_is_done_anew) {
    const Photos photos;
    for (int k = 0; k < 3; ++k) photos.write("page" + std::to_string(k) + ".png", page_bytes(k));
    photos.run({"-q"});
    EXPECT_EQ(3, summary_of(photos.run(), "done"));
}

TEST(batch, resume_does_again_what_changed) {
    const Photos photos;
    for (int k = 0; k < 5; ++k) photos.write("page" + std::to_string(k) + ".png", page_bytes(k));
    photos.run({"-q"});
    photos.write("page1.png", page_bytes(21));
    fs::remove(photos.path("out/page2/rows.jpg"));
    const Outcome outcome = photos.run({"--resume"});
    EXPECT_EQ(0, outcome.exit_code) << outcome.err;
    EXPECT_EQ(2, summary_of(outcome, "done"));
    EXPECT_EQ(3, summary_of(outcome, "skipped"));
    EXPECT_TRUE(fs::exists(photos.path("out/page2/rows.jpg")));
    const auto resumed = photos.results();
    fs::remove_all(photos.path("out"));
    photos.run({"-q"});
    EXPECT_EQ(photos.results(), resumed);
}

TEST(batch, resume_does_everything_again_with_other_options) {
    const Photos photos;
    for (int k = 0; k < 3; ++k) photos.write("page" + std::to_string(k) + ".png", page_bytes(k));
    photos.run({"-q"});
    EXPECT_EQ(3, summary_of(photos.run({"--resume", "--page", "binary"}), "done"));
    EXPECT_EQ(3, summary_of(photos.run({"--resume", "--page", "binary", "-j", "1"}), "skipped"));
    EXPECT_EQ(3, summary_of(photos.run({"--resume"}), "done"));
}

TEST(batch, a_photograph_that_joins_later_takes_no_other_one_s_folder) {
    const Photos photos;
    photos.write("x/page.png", page_bytes(1));
    docprep_with({"batch", photos.photo("x"), "-q", "-o", photos.path("out")});
    photos.write("y/page.png", page_bytes(2));
    const Outcome outcome =
        docprep_with({"batch", photos.photo("x"), photos.photo("y"), "--resume", "-o", photos.path("out")});
    EXPECT_EQ(1, summary_of(outcome, "skipped"));
    const auto rows = photos.state();
    EXPECT_EQ("page", rows.at("x/page.png").folder);
    EXPECT_EQ("y/page.png", rows.at("y/page.png").folder);
}

TEST(batch, photographs_of_an_earlier_batch_stay_in_the_index) {
    const Photos photos;
    photos.write("x/a.png", page_bytes(1));
    photos.write("y/b.png", page_bytes(2));
    docprep_with({"batch", photos.photo("x"), "-q", "-o", photos.path("out")});
    docprep_with({"batch", photos.photo("y"), "-q", "-o", photos.path("out")});
    const std::string index = text_of(photos.path("out/index.html"));
    EXPECT_NE(std::string::npos, index.find("./a/thumbnail.jpg"));
    EXPECT_NE(std::string::npos, index.find("./b/thumbnail.jpg"));
}

// ---- Killed ----

TEST(batch, killed_at_any_moment_and_resumed_it_leaves_what_an_undisturbed_one_does) {
    const Photos photos;
    photos.fill();
    photos.write("deep/page.png", page_bytes(60));
    photos.write("deep/broken.png", std::string());
    photos.run({"-q", "--recursive"});
    const auto undisturbed = photos.results();
    constexpr unsigned kSeed = 20;
    std::mt19937 random(kSeed);
    for (int attempt = 0; attempt < 4; ++attempt) {
        fs::remove_all(photos.path("out"));
        std::string moments;
        for (int kills = 0; kills < 3; ++kills) {
            const auto count = static_cast<ptrdiff_t>(random() % 14);
            const std::chrono::microseconds later(random() % 20000);
            moments += " " + std::to_string(count) + "+" + std::to_string(later.count());
            kill_after(photos, {"-q", "--recursive", "--resume", "-j", "3"}, count, later);
        }
        SCOPED_TRACE("seed " + std::to_string(kSeed) + ", killed after" + moments);
        EXPECT_EQ(2, photos.run({"-q", "--recursive", "--resume"}).exit_code);
        const auto resumed = photos.results();
        ASSERT_EQ(undisturbed.size(), resumed.size());
        for (const auto& [name, content] : undisturbed) {
            ASSERT_EQ(1u, resumed.count(name)) << name;
            EXPECT_TRUE(content == resumed.at(name)) << name;
        }
        for (const auto& [name, row] : photos.state())
            EXPECT_TRUE(row.status == "done" || row.status == "failed") << name << " is " << row.status;
    }
}

TEST(batch, what_a_killed_one_did_not_note_is_not_called_done) {
    const Photos photos;
    photos.fill();
    kill_after(photos, {"-q", "-j", "2"}, 10, std::chrono::microseconds(0));
    int done = 0;
    for (const auto& [name, row] : photos.state()) {
        if (row.status != "done") continue;
        ++done;
        for (const json& file : row.files)
            EXPECT_TRUE(fs::exists(photos.path("out/" + row.folder + "/" + file.get<std::string>()))) << name;
    }
    EXPECT_LE(done, finished_in(photos));
}

TEST(batch, a_change_of_options_that_was_killed_is_not_taken_for_done) {
    const Photos photos;
    photos.fill();
    photos.run({"-q"});
    const auto before = photos.results();
    RunningBatch batch(photos.arguments({"-q", "--page", "binary", "-j", "1"}));
    // Until the first page is another one.
    while (!batch.ended() && text_of(photos.path("out/blank/result.json")) == before.at("blank/result.json"))
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    batch.end_by(SIGKILL);
    photos.run({"-q", "--resume"});
    EXPECT_EQ(before, photos.results());
}

TEST(batch, ended_by_a_signal_it_leaves_no_temporary_file) {
    const Photos photos;
    photos.fill();
    RunningBatch batch(photos.arguments({"-q"}));
    while (!batch.ended() && finished_in(photos) < 5)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    const int status = batch.end_by(SIGTERM);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM) << status;
    for (const std::string& name : photos.content())
        EXPECT_EQ(std::string::npos, name.find(".docprep-")) << name;
    EXPECT_EQ(2, photos.run({"-q", "--resume"}).exit_code);
}

// ---- What shows ----

TEST(batch, on_a_terminal_a_bar_moves_and_goes) {
    const Photos photos;
    photos.write("page.png", page_bytes(1));
    photos.write("broken.png", std::string());
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    ASSERT_GE(child, 0);
    if (child == 0) {
        setenv("TERM", "xterm", 1);
        Names arguments = photos.arguments();
        arguments.insert(arguments.begin(), DOCPREP_PROGRAM);
        std::vector<char*> argv;
        for (std::string& argument : arguments) argv.push_back(argument.data());
        argv.push_back(nullptr);
        execv(argv[0], argv.data());
        _exit(127);
    }
    std::string shown;
    char buffer[4096];
    for (ssize_t n; (n = read(terminal, buffer, sizeof buffer)) > 0;)
        shown.append(buffer, static_cast<size_t>(n));
    int status = 0;
    waitpid(child, &status, 0);
    close(terminal);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 2) << shown;
    EXPECT_NE(std::string::npos, shown.find("\r\033[K[")) << shown;
    EXPECT_NE(std::string::npos, shown.find(" of 2")) << shown;
    EXPECT_NE(std::string::npos,
              shown.find("\033[Kdocprep: " + photos.photo("broken.png") + ": is empty\r\n"))
        << shown;
    EXPECT_NE(std::string::npos, shown.find("\033[Kphotographs          2\r\n")) << shown;
}

TEST(batch, a_summary_that_cannot_be_written_is_a_failure) {
    const Photos photos;
    photos.write("page.png", page_bytes(1));
    const Outcome outcome = docprep_after("", photos.arguments(), ">/dev/full");
    expect_failure(outcome, "standard output", "No space left on device");
    EXPECT_EQ("done", photos.state().at("page.png").status);
}

// ---- Failures of the whole ----

TEST(batch, an_output_that_cannot_be_written_is_one_line) {
    const Photos photos;
    photos.write("page.png", page_bytes(1));
    const std::string file = photos.folder().write("file", "mine");
    expect_failure(docprep_with({"batch", photos.path("photos"), "-o", file}), file, "is not a folder");
    expect_failure(docprep_with({"batch", photos.path("photos"), "-o", file + "/out"}), file,
                   "is not a folder");
    EXPECT_EQ("mine", text_of(file));
    fs::create_directories(photos.path("out/docprep.sqlite"));
    const Outcome outcome = photos.run();
    EXPECT_EQ(2, outcome.exit_code);
    EXPECT_EQ(0u, outcome.err.find("docprep: " + photos.path("out/docprep.sqlite") + ": ")) << outcome.err;
    expect_one_line(outcome.err);
}

TEST(batch, a_state_of_another_kind_is_one_line_and_stays) {
    const Photos photos;
    photos.write("page.png", page_bytes(1));
    fs::create_directory(photos.path("out"));
    photos.folder().write("out/docprep.sqlite", "Dear friends, " + std::string(5000, 'x'));
    expect_failure(photos.run({"--resume"}), photos.path("out/docprep.sqlite"), "file is not a database");
    EXPECT_EQ(0u, text_of(photos.path("out/docprep.sqlite")).find("Dear friends"));
    EXPECT_EQ(Names{}, photos.content());
}

TEST(batch, a_full_disk_is_a_line_for_each_photograph_that_does_not_fit) {
    const Photos photos;
    fs::copy_file(kSample, photos.photo("sample.jpg"));
    photos.write("page.png", page_bytes(1));
    // 160 blocks of 512 bytes (1024 in some shells): enough for the state and a small page.
    const Outcome outcome = docprep_after("ulimit -f 160;", photos.arguments({"-q"}));
    EXPECT_EQ(2, outcome.exit_code);
    expect_one_line(outcome.err);
    EXPECT_EQ(0u,
              outcome.err.find("docprep: " + photos.photo("sample.jpg") + ": " + photos.path("out/sample/")))
        << outcome.err;
    EXPECT_NE(std::string::npos, outcome.err.find(": File too large\n")) << outcome.err;
    EXPECT_FALSE(fs::exists(photos.path("out/sample")));
    EXPECT_EQ("done", photos.state().at("page.png").status);
    EXPECT_EQ(0, photos.run({"-q", "--resume"}).exit_code);
    EXPECT_TRUE(fs::exists(photos.path("out/sample/page.png")));
}

TEST(batch, a_state_that_does_not_fit_on_the_disk_ends_it_with_one_line) {
    const Photos photos;
    for (int k = 0; k < 5; ++k) photos.write("page" + std::to_string(k) + ".png", page_bytes(k));
    const Outcome outcome = docprep_after("ulimit -f 8;", photos.arguments());
    EXPECT_EQ(2, outcome.exit_code);
    EXPECT_EQ("", outcome.out);
    EXPECT_EQ(0u, outcome.err.find("docprep: " + photos.path("out/docprep.sqlite") + ": ")) << outcome.err;
    expect_one_line(outcome.err);
    EXPECT_EQ(0, photos.run({"-q", "--resume"}).exit_code);
}

TEST(batch, a_second_one_into_the_folder_is_refused) {
    const Photos photos;
    photos.fill();
    RunningBatch batch(photos.arguments({"-q", "-j", "1"}));
    while (!batch.ended() && finished_in(photos) < 1)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    expect_failure(photos.run({"--resume"}), photos.path("out"),
                   "another docprep is writing into this folder");
    batch.end_by(SIGKILL);
    EXPECT_EQ(2, photos.run({"-q", "--resume"}).exit_code);
}

TEST(batch, wrong_usage_is_one_line) {
    expect_wrong_usage({"batch", "-o", "out"}, "photographs");
    expect_wrong_usage({"batch", "a.jpg"}, "--output");
    expect_wrong_usage({"batch", "a.jpg", "-o", ""});
    for (const char* threads : {"0", "-1", "2000", "many", "1.5"})
        expect_wrong_usage({"batch", "a.jpg", "-o", "out", "-j", threads}, "--jobs");
    expect_wrong_usage({"batch", "a.jpg", "-o", "out", "--log"}, "--log");
    expect_wrong_usage({"batch", "a.jpg", "-o", "out", "--page", "colour"}, "colour");
}
