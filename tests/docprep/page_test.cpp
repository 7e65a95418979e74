#include "page.h"

#include <gtest/gtest.h>

#include <algorithm>

using docprep::Binarisation;
using docprep::Deskew;
using docprep::Image;
using docprep::Page;

namespace {

/// White paper with one black square at rows and columns 40 to 59 of 100.
Image photo() {
    Image gray;
    gray.mat_create(100, 100, 1, 240);
    for (int row = 40; row < 60; ++row)
        std::fill_n(gray.data + row * 100 + 40, 20, static_cast<unsigned char>(10));
    return gray;
}

Binarisation by_level(int threshold) {
    Binarisation how;
    how.threshold = threshold;
    return how;
}

}  // namespace

TEST(page, beyond_the_photograph_it_is_foreground_for_the_search_and_paper_for_the_eye) {
    const Image gray = photo();
    const Deskew deskew = docprep::plan_deskew(gray, 10);
    const Page page = docprep::level_page(gray, by_level(100), deskew);
    const ptrdiff_t n = static_cast<ptrdiff_t>(deskew.rows) * deskew.cols;
    EXPECT_EQ(255, page.binary.data[0]);
    EXPECT_EQ(255, page.binary.data[n - 1]);
    const Image picture = docprep::black_on_white(page);
    EXPECT_EQ(255, picture.data[0]);
    EXPECT_EQ(255, picture.data[n - 1]);
    EXPECT_EQ(0, picture.data[deskew.rows / 2 * deskew.cols + deskew.cols / 2]);
    EXPECT_NEAR(400, static_cast<double>(std::count(picture.data, picture.data + n, 0)), 25);
}

TEST(page, a_page_that_was_not_turned_is_inverted_only) {
    Page page;
    docprep::binarise(photo(), by_level(100), page.binary);
    const Image picture = docprep::black_on_white(page);
    for (int i = 0; i < 100 * 100; ++i) ASSERT_EQ(255 - page.binary.data[i], picture.data[i]);
}
