#include "pipeline/component_picture.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "drawn.h"
#include "run/library_log.h"

using docprep::Fate;
using docprep::Image;
using orvex_cv_991::Rect;

namespace {

bool has_colour(const Image& picture, int x, int y, const docprep::Colour& colour) {
    const unsigned char* const pixel = picture.data + 3 * (static_cast<ptrdiff_t>(y) * picture.cols + x);
    return pixel[0] == colour.bgr[0] && pixel[1] == colour.bgr[1] && pixel[2] == colour.bgr[2];
}

}  // namespace

TEST(component_picture, each_component_has_the_colour_of_its_fate) {
    docprep::LibraryLog log(docprep::LibraryLines::kDropped);
    const docprep::LibraryLog::Redirection redirection(log);
    Image binary = gray_picture(200, 600, 0);
    for (int x = 40; x < 400; x += 20) fill(binary, Rect(x, 60, 10, 12), 255);  // letters
    fill(binary, Rect(0, 20, 8, 9), 255);
    fill(binary, Rect(500, 40, 6, 100), 255);
    fill(binary, Rect(40, 150, 400, 4), 255);
    fill(binary, Rect(300, 100, 2, 2), 255);
    const docprep::Print print = docprep::find_print("page", binary);
    const Image picture = docprep::draw_components(binary, print);
    ASSERT_EQ(3, picture.channels);
    EXPECT_TRUE(has_colour(picture, 10, 100, {{255, 255, 255}}));
    EXPECT_TRUE(has_colour(picture, 40, 60, docprep::colour_of(Fate::kText)));
    EXPECT_TRUE(has_colour(picture, 39, 60, {{255, 255, 255}})) << "text has no margin";
    EXPECT_TRUE(has_colour(picture, 299, 99, docprep::colour_of(Fate::kSpeck)));
    EXPECT_TRUE(has_colour(picture, 298, 99, {{255, 255, 255}}));
    EXPECT_TRUE(has_colour(picture, 0, 20, docprep::colour_of(Fate::kBorder)));
    EXPECT_TRUE(has_colour(picture, 505, 139, docprep::colour_of(Fate::kTall)));
    EXPECT_TRUE(has_colour(picture, 40, 153, docprep::colour_of(Fate::kWide)));
    EXPECT_TRUE(has_colour(picture, 301, 101, docprep::colour_of(Fate::kSpeck)));
}

TEST(component_picture, no_two_fates_have_one_colour) {
    const Fate fates[] = {Fate::kText, Fate::kBorder, Fate::kTall, Fate::kWide, Fate::kSpeck};
    for (const Fate& a : fates)
        for (const Fate& b : fates) {
            const docprep::Colour first = docprep::colour_of(a), second = docprep::colour_of(b);
            const bool alike = std::equal(first.bgr, first.bgr + 3, second.bgr);
            EXPECT_EQ(a == b, alike);
        }
}

TEST(component_picture, a_page_without_print_is_white) {
    docprep::LibraryLog log(docprep::LibraryLines::kDropped);
    const docprep::LibraryLog::Redirection redirection(log);
    const Image binary = gray_picture(3, 4, 0);
    const Image picture = docprep::draw_components(binary, docprep::find_print("page", binary));
    EXPECT_TRUE(has_colour(picture, 3, 2, {{255, 255, 255}}));
}
