#include "detectors.h"

#include <string>

#include "images.h"
#include "same.h"
#include "seals.h"

namespace testing_support {
namespace {

using orvex_cv_991::CImgproc;
using reference::Byte;
using reference::Image;
using reference::List;

void compare_saliency(const U8& src, const U8& mask, const U8& previous, bool in_place) {
    U8 dst = in_place ? src : previous;
    Image<Byte> expected = to_reference(dst);
    orvex_991::vector<unsigned char> levels(7, 1);
    List<Byte> expected_levels;
    expected_levels.resize(7);
    for (Byte& level : expected_levels.items) level = 1;
    auto got = of_library([&] { CImgproc::saliencyDetect(in_place ? dst : src, dst, mask, levels); });
    auto want = of_reference(
        [&] { reference::saliencyDetect(to_reference(src), expected, to_reference(mask), expected_levels); });
    got.with("dst", dst).with("levels", levels);
    want.with("dst", expected).with("levels", expected_levels);
    ASSERT_TRUE(same(got, want)) << shape_of(src) << " mask " << shape_of(mask);
}

TEST(Differential, saliencyDetect_equals_the_reference) {
    Random random(91);
    for (int round = 0; round < 600; ++round) {
        const U8 src = any_image(random, random.chance(4) ? 3 : 1);
        U8 mask = any_image(random, random.chance(4) ? 3 : 1, src.rows, src.cols);
        if (random.chance(20)) mask = filled(src.rows, src.cols, 1, random.pick({0, 255}));
        if (random.chance(6)) mask = any_previous(random);
        compare_saliency(src, mask, any_previous(random), random.chance(25));
        if (HasFatalFailure()) FAIL() << "round " << round;
    }
}

TEST(Differential, saliencyDetect_of_odd_matrices_equals_the_reference) {
    for (const U8& src : odd_matrices())
        for (const bool in_place : {false, true}) compare_saliency(src, src, filled(2, 2, 1, 3), in_place);
}

std::string compare_seals(const U8& src, bool relaxed, bool in_place) {
    U8 dst = in_place ? src : filled(2, 3, 1, 9);
    Image<Byte> expected = to_reference(dst);
    auto got = of_library([&] { CImgproc::redColorDetect(in_place ? dst : src, dst, relaxed); });
    auto want = of_reference([&] { reference::redColorDetect(to_reference(src), expected, relaxed); });
    EXPECT_TRUE(same(got.with("dst", dst), want.with("dst", expected))) << shape_of(src);
    return want.thrown + want.printed;
}

TEST(Differential, redColorDetect_equals_the_reference) {
    Random random(92);
    int found = 0, none = 0, rescued = 0;
    for (int round = 0; round < 700; ++round) {
        const std::string did = compare_seals(any_seal_photo(random), random.chance(50), random.chance(20));
        found += did.find("detection done") != std::string::npos;
        none += did.find("could not find") != std::string::npos;
        rescued += did.find("to be true") != std::string::npos;
        if (HasFailure()) FAIL() << "round " << round;
    }
    // The inputs reach every outcome.
    EXPECT_GT(found, 100);
    EXPECT_GT(none, 30);
    EXPECT_GT(rescued, 20);
}

TEST(Differential, redColorDetect_of_odd_matrices_equals_the_reference) {
    for (const U8& src : odd_matrices()) compare_seals(src, false, false);
    compare_seals(filled(-2, -3, 3, 200), false, true);
    compare_seals(colour_image(1, 5000, 10, 10, 250), true, false);  // the reduced copy has no rows
    compare_seals(colour_image(2, 100, 10, 10, 250), true, false);
    compare_seals(filled(20, 20, 1, 200), true, false);
}

void compare_sharpness(const U8& src, const U8* mask) {
    float score = -1, expected = -1;
    auto got =
        of_library([&] { score = mask ? CImgproc::getSharpness(src, *mask) : CImgproc::getSharpness(src); });
    auto want = of_reference([&] {
        expected = mask ? reference::getSharpness(to_reference(src), to_reference(*mask))
                        : reference::getSharpness(to_reference(src));
    });
    ASSERT_TRUE(same(got.with("score", score), want.with("score", expected))) << shape_of(src);
}

TEST(Differential, getSharpness_equals_the_reference) {
    Random random(105);
    for (int round = 0; round < 1500; ++round) {
        const U8 src = any_image(random, random.pick({1, 1, 3, 3, 2}));
        compare_sharpness(src, nullptr);
        U8 mask = any_image(random, random.chance(4) ? 3 : 1, src.rows, src.cols);
        if (random.chance(30)) mask = filled(src.rows, src.cols, 1, random.pick({0, 1, 255}));
        if (random.chance(6)) mask = any_previous(random);
        compare_sharpness(src, &mask);
        if (HasFatalFailure()) FAIL() << "round " << round;
    }
    compare_sharpness(text_page(120, 300, 8), nullptr);
}

TEST(Differential, getSharpness_of_odd_matrices_equals_the_reference) {
    for (const U8& src : odd_matrices()) {
        compare_sharpness(src, nullptr);
        compare_sharpness(src, &src);
    }
}

}  // namespace
}  // namespace testing_support
