#include <algorithm>
#include <functional>
#include <vector>

#include "filters.h"
#include "images.h"
#include "same.h"

namespace testing_support {
namespace {

using orvex_cv_991::CImgproc;
using orvex_cv_991::MORPH_TYPE;
using orvex_cv_991::Size;
using reference::Byte;
using reference::Image;

struct Operation {
    const char* name;
    std::function<void(const U8&, U8&, const Size&, int type)> library;
    std::function<void(const Image<Byte>&, Image<Byte>&, const reference::Size&, int type)> plain;
};

std::vector<Operation> operations() {
    std::vector<Operation> all;
    for (const Filter& filter : kFilters)
        all.push_back({filter.name,
                       [&](const U8& src, U8& dst, const Size& size, int) { filter.library(src, dst, size); },
                       [&](const Image<Byte>& src, Image<Byte>& dst, const reference::Size& size, int) {
                           filter.plain(src, dst, size);
                       }});
    all.push_back({"morphologyBinary",
                   [](const U8& src, U8& dst, const Size& size, int type) {
                       CImgproc::morphologyBinary(src, dst, size, static_cast<MORPH_TYPE>(type));
                   },
                   reference::morphologyBinary});
    return all;
}

const std::vector<Operation> kOperations = operations();
const int kLast = static_cast<int>(kOperations.size()) - 1;  // the one that looks at the type

void compare(const Operation& operation, const U8& src, const U8& previous, bool in_place, const Size& size,
             int type) {
    U8 dst = in_place ? src : previous;
    Image<Byte> expected = to_reference(dst);
    auto got = of_library([&] { operation.library(in_place ? dst : src, dst, size, type); });
    auto want = of_reference([&] {
        operation.plain(to_reference(src), expected, {size.width, size.height}, type);
    });
    ASSERT_TRUE(same(got.with("dst", dst), want.with("dst", expected)))
        << operation.name << " type " << type << " on " << shape_of(src) << " window " << size.height << " x "
        << size.width;
}

TEST(Differential, morphology_equals_the_reference) {
    Random random(81);
    for (int round = 0; round < 8000; ++round) {
        const U8 src = any_image(random, random.chance(4) ? 3 : 1);
        Size size(random.range(1, random.chance(70) ? 7 : src.cols),
                  random.range(1, random.chance(70) ? 7 : src.rows));
        if (random.chance(3)) size = Size(random.range(-1, 1), random.range(-1, 1));
        if (random.chance(4)) size = Size(src.cols, src.rows);
        compare(kOperations[random.range(0, kLast)], src, any_previous(random), random.chance(25), size,
                random.range(-1, 4));
        if (HasFatalFailure()) FAIL() << "round " << round;
    }
}

// Rows of more than one and two words, windows around the word's width.
TEST(Differential, morphology_across_words_equals_the_reference) {
    Random random(82);
    for (int round = 0; round < 400; ++round) {
        const U8 src = content(random, random.range(1, 9), random.range(60, 300), 1, Content::kSparse);
        const int width = random.chance(50) ? random.pick({31, 32, 33, 62, 63, 64, 65, 66, 127, 128, 129})
                                            : random.range(1, src.cols);
        compare(kOperations[random.range(0, kLast - 1)], src, U8(), false,
                Size(std::min(width, src.cols), random.range(1, src.rows)), 0);
        if (HasFatalFailure()) FAIL() << "round " << round;
    }
}

TEST(Differential, morphology_of_odd_matrices_equals_the_reference) {
    for (const U8& src : odd_matrices())
        for (const Operation& operation : kOperations)
            for (const int type : {0, 1, 2, 3, 9})
                for (const bool in_place : {false, true})
                    compare(operation, src, filled(2, 2, 2, 3), in_place, Size(1, 1), type);
}

TEST(Differential, dilateRect_equals_the_reference) {
    Random random(83);
    const auto any = [&] {
        return random.chance(20) ? random.pick({INT32_MAX, INT32_MIN}) : random.range(-50, 50);
    };
    for (int round = 0; round < 3000; ++round) {
        const orvex_cv_991::Rect src(any(), any(), any(), any());
        const Size size(any(), any());
        const reference::Rect expected =
            reference::dilateRect({src.x, src.y, src.width, src.height}, {size.width, size.height});
        orvex_cv_991::Rect grown, in_place = src;
        CImgproc::dilateRect(src, grown, size);
        CImgproc::dilateRect(in_place, in_place, size);
        for (const orvex_cv_991::Rect& got : {grown, in_place})
            ASSERT_TRUE(got.x == expected.x && got.y == expected.y && got.width == expected.width &&
                        got.height == expected.height);
    }
}

}  // namespace
}  // namespace testing_support
