// Allocations of docprep fail, one after the other: whatever the place, a run ends in a documented way, leaves the
// files as they were or all of them new, and keeps neither memory nor a file open.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <filesystem>
#include <functional>
#include <iterator>
#include <map>
#include <new>
#include <string>
#include <vector>

#include "allocations.h"
#include "base/failure.h"
#include "commands.h"
#include "commands/morph.h"
#include "commands/resize.h"
#include "commands/warp.h"
#include "encoders.h"
#include "run/prepare.h"
#include "util_exception.h"

namespace fs = std::filesystem;
using testing_support::FailingAllocations;

namespace {

/// Lines of squares, falling to the right by 2 degrees, and beside them a red seal or nothing.
std::string write_photo(const TemporaryFolder& folder, bool sealed) {
    constexpr int kRgb = 2;
    PngRequest request;
    request.colour_type = kRgb;
    request.rows = kPageRows;
    request.cols = kPageCols + (sealed ? 110 : 0);
    return folder.write("photo.png", make_png(request, [](int row, int col, int k) {
                            const int x = col - kPageCols - 50 + kSealX, y = row - 100 + kSealY;
                            return col < kPageCols ? page_of_squares(row - col * 35 / 1000, col)
                                                   : sealed_page(y, x, k);
                        }));
}

/// Every file below a folder with its content, but for that of a report, which holds times.
std::map<std::string, std::string> files_of(const TemporaryFolder& folder) {
    std::map<std::string, std::string> files;
    for (const std::string& name : folder.content()) {
        if (fs::is_directory(folder.path(name))) continue;
        files[name] = fs::path(name).extension() == ".html" ? "has times" : text_of(folder.path(name));
    }
    return files;
}

ptrdiff_t open_files() {
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}

/// What left a run, kept without memory of its own.
struct Ending {
    const char* thrown = "nothing";
    bool is_documented = true;
    bool any_allocation_failed = false;
    long allocations = 0;
};

Ending ending_of(long k, const std::function<void()>& run) {
    Ending ending;
    const FailingAllocations failing(k);
    try {
        run();
    } catch (const docprep::Failure&) {
        ending.thrown = "Failure";
    } catch (const orvex_991::CException& exception) {
        ending.thrown = "CException";
        ending.is_documented = exception.code == 2 || exception.code == 3;
    } catch (const std::bad_alloc&) {
        ending.thrown = "std::bad_alloc";
    } catch (...) {
        ending.thrown = "something else";
        ending.is_documented = false;
    }
    ending.any_allocation_failed = FailingAllocations::any_failed();
    ending.allocations = FailingAllocations::count();
    return ending;
}

/// The first allocations and the last, with which files are written, one by one, and some of those between.
std::vector<long> places(long allocations) {
    constexpr long kFirst = 40, kLast = 140;
    std::vector<long> all;
    for (long k = 1; k < allocations - kLast; k += k < kFirst ? 1 : 1 + k / 8) all.push_back(k);
    for (long k = std::max(1L, allocations - kLast); k <= allocations; ++k) all.push_back(k);
    return all;
}

/// A folder's files as they are now, to be had again.
class Kept {
 public:
    explicit Kept(const TemporaryFolder& folder) : path_(folder.path("")) {
        fs::copy(path_, copy_.path(""), fs::copy_options::recursive);
    }
    void restore() const {
        fs::remove_all(path_);
        fs::copy(copy_.path(""), path_, fs::copy_options::recursive);
    }

 private:
    fs::path path_;
    TemporaryFolder copy_;
};

/// Lets allocations of `run`, which writes into the folder, fail one by one.
void expect_documented(const TemporaryFolder& folder, const std::function<void()>& run) {
    const auto before = files_of(folder);
    const Kept kept(folder);
    run();  // what the first run alone allocates, for good, is no leak
    const auto complete = files_of(folder);
    EXPECT_NE(before, complete);
    kept.restore();
    const long allocations = ending_of(LONG_MAX, run).allocations;
    kept.restore();
    const ptrdiff_t files = open_files();
    for (const long k : places(allocations)) {
        const long in_use = testing_support::blocks_in_use();
        const Ending ending = ending_of(k, run);
        EXPECT_EQ(in_use, testing_support::blocks_in_use());
        EXPECT_EQ(files, open_files());
        EXPECT_TRUE(ending.is_documented);
        const auto after = files_of(folder);
        EXPECT_TRUE(after == before || after == complete) << "some files are new and some are not";
        if (testing::Test::HasFailure()) {
            ADD_FAILURE() << "allocation " << k << " of " << allocations << ": " << ending.thrown;
            return;
        }
        if (after != before) kept.restore();
    }
}

docprep::PrepareOptions options_for_page(const TemporaryFolder& folder, bool sealed) {
    docprep::PrepareOptions options;
    options.input.file = write_photo(folder, sealed);
    options.output = folder.path("out");
    return options;
}

template <class Options>
Options options_for_picture(const TemporaryFolder& folder) {
    Options options;
    options.input.file = write_photo(folder, true);
    options.output = folder.path("made/result.png");
    return options;
}

}  // namespace

TEST(failing_memory, of_a_page_leaves_no_file_and_no_folder) {
    const TemporaryFolder folder;
    docprep::PrepareOptions options = options_for_page(folder, true);
    options.turn = 180;
    options.report = true;
    expect_documented(folder, [&] { docprep::prepare(options); });
}

// A file is to be removed, too: the picture of seals that this page has not.
TEST(failing_memory, of_a_page_leaves_older_results_whole) {
    const TemporaryFolder folder;
    const docprep::PrepareOptions options = options_for_page(folder, false);
    docprep::prepare(options);
    folder.write("out/seal.jpg", "of an earlier run");
    std::string result = text_of(folder.path("out/result.json"));
    const std::string files = "\"files\": [";
    result.insert(result.find(files) + files.size(), "\"seal.jpg\",");
    folder.write("out/result.json", result);
    expect_documented(folder, [&] { docprep::prepare(options); });
}

TEST(failing_memory, of_a_warp_leaves_no_file_and_no_folder) {
    const TemporaryFolder folder;
    auto options = options_for_picture<docprep::WarpOptions>(folder);
    options.angle = 10.0f;
    options.fit = true;
    expect_documented(folder, [&] { docprep::warp(options); });
}

TEST(failing_memory, of_a_change_of_size_leaves_no_file_and_no_folder) {
    const TemporaryFolder folder;
    auto options = options_for_picture<docprep::ResizeOptions>(folder);
    options.factor = 0.4f;
    expect_documented(folder, [&] { docprep::resize(options); });
}

TEST(failing_memory, of_every_format_leaves_no_file_and_no_folder) {
    for (const char* name : {"made/r.jpg", "made/r.ppm", "made/r.tif", "made/r.webp"}) {
        SCOPED_TRACE(name);
        const TemporaryFolder folder;
        auto options = options_for_picture<docprep::ResizeOptions>(folder);
        options.factor = 0.4f;
        options.output = folder.path(name);
        expect_documented(folder, [&] { docprep::resize(options); });
    }
}

TEST(failing_memory, of_readers_leaves_no_file_and_no_folder) {
    const TemporaryFolder folder;
    for (const char* name : {"p.jpg", "p.ppm", "p.tif", "p.webp"}) {
        SCOPED_TRACE(name);
        auto options = options_for_picture<docprep::ResizeOptions>(folder);
        options.factor = 1.0f;
        options.output = folder.path(name);
        docprep::resize(options);  // makes the input
        options.input.file = options.output;
        options.output = folder.path(std::string("made/") + name + ".png");
        options.factor = 0.4f;
        expect_documented(folder, [&] { docprep::resize(options); });
    }
}

TEST(failing_memory, of_morphology_leaves_no_file_and_no_folder) {
    const TemporaryFolder folder;
    auto options = options_for_picture<docprep::MorphOptions>(folder);
    options.operation = orvex_cv_991::MORPH_OPEN;
    options.window = docprep::Extents{3, 5};
    expect_documented(folder, [&] { docprep::morph(options); });
}

TEST(failing_memory, ends_the_program_with_status_2_and_one_line) {
    const TemporaryFolder folder;
    const std::string photo = write_photo(folder, true);
    const auto before = files_of(folder);
    for (long k = 1;; k += 1 + k / 6) {
        SCOPED_TRACE("allocation " + std::to_string(k));
        const Outcome outcome =
            run_program({DOCPREP_FAILING, std::to_string(k), photo, "-o", folder.path("out")});
        if (outcome.exit_code == 0) break;
        ASSERT_EQ(2, outcome.exit_code) << outcome.err;
        EXPECT_EQ("", outcome.out);
        EXPECT_EQ(0u, outcome.err.find("docprep: ")) << outcome.err;
        expect_one_line(outcome.err);
        if (fs::exists(folder.path("out"))) break;  // the summary alone was not to be had
        EXPECT_EQ(before, files_of(folder));
    }
    EXPECT_NE(before, files_of(folder));
}
