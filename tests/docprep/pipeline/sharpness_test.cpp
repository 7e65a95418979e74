#include "pipeline/sharpness.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>

#include "base/failure.h"
#include "pipeline/binarise.h"
#include "pipeline/print.h"
#include "run/library_log.h"

using docprep::Image;
using docprep::Rects;
using docprep::Sharpness;
using docprep::TextComponents;
using orvex_cv_991::Rect;

namespace {

constexpr int kExtent = 400;
constexpr int kLetter = 30;

/// Where the letters stand.
TextComponents letters() {
    TextComponents text;
    text.text_height = kLetter;
    for (int y = 40; y < 350; y += 60)
        for (int x = 40; x < 350; x += 60) text.kept.push_back(Rect(x, y, kLetter, kLetter));
    return text;
}

/// Black rings on white at each letter, their edges spread over `blur` pixels to each side.
Image page(int blur) {
    Image gray;
    gray.mat_create(kExtent, kExtent, 1, 0);
    const auto dark = [](int row, int col) {
        const int x = (col + 20) % 60 - 15;
        const int y = (row + 20) % 60 - 15;
        const bool on_letter = x >= 0 && y >= 0 && x < kLetter && y < kLetter;
        return on_letter && (x < 8 || y < 8 || x >= kLetter - 8 || y >= kLetter - 8);
    };
    for (int row = 0; row < kExtent; ++row)
        for (int col = 0; col < kExtent; ++col) {
            int sum = 0;
            for (int dy = -blur; dy <= blur; ++dy)
                for (int dx = -blur; dx <= blur; ++dx) sum += dark(row + dy, col + dx) ? 0 : 240;
            gray.data[row * kExtent + col] =
                static_cast<unsigned char>(sum / ((2 * blur + 1) * (2 * blur + 1)));
        }
    return gray;
}

/// Numbers from 0 to 255 that look random and are the same in each run.
class Random {
 public:
    int level() {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        return static_cast<int>(state_ >> 56);
    }

 private:
    uint64_t state_ = 1;
};

/// What is said of a picture whose print is found as in a photograph's.
std::string verdict_of(int rows, int cols, const std::function<int()>& level) {
    docprep::LibraryLog log(docprep::LibraryLines::kDropped);
    const docprep::LibraryLog::Redirection redirection(log);
    Image gray, binary;
    gray.mat_create(rows, cols, 1, 0);
    for (int k = 0; k < rows * cols; ++k) gray.data[k] = static_cast<unsigned char>(level());
    docprep::binarise(gray, docprep::measure_for(docprep::BinariseMethod::kAdaptive, gray), binary);
    const TextComponents text = docprep::find_print("noise", binary).text;
    EXPECT_GT(text.kept.size(), 30) << "it has marks that could be letters";
    return docprep::verdict(docprep::measure_sharpness(gray, text));
}

}  // namespace

TEST(sharpness, noise_has_no_text) {
    Random random;
    EXPECT_EQ("no text", verdict_of(240, 320, [&] { return random.level(); })) << "uniform";
    EXPECT_EQ("no text", verdict_of(240, 320,
                                    [&] {
                                        const int level = random.level();
                                        return level < 3 ? 0 : level > 252 ? 255 : 235;
                                    }))
        << "salt and pepper";
    EXPECT_EQ("no text", verdict_of(240, 320, [&] { return 215 + (random.level() + random.level()) / 13; }))
        << "grain";
}

TEST(sharpness, marks_that_do_not_stand_on_lines_are_no_text) {
    TextComponents text = letters();
    for (int k = 0; k < text.kept.size; ++k) {
        text.kept[k].x += k * k * 5 % 19;
        text.kept[k].y += k * k * 7 % 23;
    }
    EXPECT_EQ("no text", docprep::verdict(docprep::measure_sharpness(page(0), text)));
}

TEST(sharpness, of_lines_that_run_downward_the_letters_are_measured) {
    TextComponents text = letters();
    Rects columns;  // their left edges alone agree
    for (int k = 0; k < text.kept.size; ++k) {
        Rect rect = text.kept[k];
        const int column = rect.x / 60, row = rect.y / 60;
        rect.y += (column * 11 + row * 5) % 17;
        columns.push_back(rect);
    }
    text.kept = columns;
    EXPECT_EQ("sharp", docprep::verdict(docprep::measure_sharpness(page(0), text)));
}

TEST(sharpness, letters_with_hard_edges_are_sharp_and_smeared_ones_blurred) {
    const Sharpness sharp = docprep::measure_sharpness(page(0), letters());
    const Sharpness blurred = docprep::measure_sharpness(page(8), letters());
    EXPECT_GT(sharp.value, blurred.value);
    EXPECT_EQ("sharp", docprep::verdict(sharp));
    EXPECT_EQ("blurred", docprep::verdict(blurred));
}

TEST(sharpness, a_page_without_text_has_none) {
    const Sharpness none = docprep::measure_sharpness(page(0), TextComponents());
    EXPECT_EQ(0, none.value);
    EXPECT_EQ("no text", docprep::verdict(none));
}

TEST(sharpness, strokes_too_narrow_to_measure_are_left_out) {
    TextComponents text;
    text.text_height = 60;
    for (int x = 20; x < 380; x += 40) text.kept.push_back(Rect(x, 40, 1, 60));
    EXPECT_EQ("no text", docprep::verdict(docprep::measure_sharpness(page(0), text)));
}

TEST(sharpness, components_at_the_border_are_measured_as_far_as_they_reach) {
    TextComponents text;
    text.text_height = 60;
    for (int x = 0; x < kExtent; x += 80)
        for (const int y : {0, kExtent - 60}) text.kept.push_back(Rect(x, y, std::min(60, kExtent - x), 60));
    EXPECT_EQ("sharp", docprep::verdict(docprep::measure_sharpness(page(0), text)));
}

TEST(sharpness, the_limit_itself_is_sharp) {
    EXPECT_EQ("sharp", docprep::verdict({docprep::kSharp, true}));
    EXPECT_EQ("blurred", docprep::verdict({docprep::kSharp - 1, true}));
}

TEST(sharpness, what_is_below_the_wanted_one_is_refused_with_both_numbers) {
    EXPECT_NO_THROW(docprep::require_sharpness("a.jpg", {80.5f, true}, 80.5f));
    try {
        docprep::require_sharpness("a.jpg", {80.5f, true}, 100);
        FAIL() << "80.5 is below 100";
    } catch (const docprep::Failure& failure) {
        EXPECT_EQ("a.jpg", failure.file());
        EXPECT_STREQ("is blurred: sharpness 80.5 is below 100", failure.what());
    }
}
