// Statistics: equalizeHist, hist, meanStdDev, minVal, maxVal, countNonZero, countNonZeroRate.
#include "statistics.h"

#include "driver.h"

namespace fuzzing {
namespace {

using orvex_cv_991::CImgproc;

void shares(const U8& src) {
    orvex_991::vector<float> h(3, 1.0f);
    List<float> expected;
    expected.resize(3);
    for (float& share : expected.items) share = 1.0f;
    const Image<Byte> image = to_reference(src);
    auto got = of_library([&] { CImgproc::hist(src, h); });
    auto want = of_reference([&] { reference::hist(image, expected); });
    require_same(got.with("h", h), want.with("h", expected), "hist of " + testing_support::shape_of(src));
}

void deviation(const U8& src) {
    float mean = 1, stddev = 2, expected_mean = 1, expected_stddev = 2;
    const Image<Byte> image = to_reference(src);
    auto got = of_library([&] { CImgproc::meanStdDev(src, mean, stddev); });
    auto want = of_reference([&] { reference::meanStdDev(image, expected_mean, expected_stddev); });
    got.with("mean", canonical(mean)).with("stddev", canonical(stddev));
    want.with("mean", canonical(expected_mean)).with("stddev", canonical(expected_stddev));
    require_same(got, want, "meanStdDev of " + testing_support::shape_of(src));
}

void run(Reader& reader) {
    const int operation = reader.range(0, 6);
    const bool in_place = reader.flag();
    U8 src = reader.image(1, 4096);
    switch (operation) {
        case 0: {
            U8 previous = reader.previous(src);
            return compare("equalizeHist", std::move(src), std::move(previous), in_place,
                           CImgproc::equalizeHist, reference::equalizeHist);
        }
        case 1:
            return shares(src);
        case 2:
            return deviation(src);
        case 3:
            return compare_number("minVal", src, CImgproc::minVal, reference::minVal);
        case 4:
            return compare_number("maxVal", src, CImgproc::maxVal, reference::maxVal);
        case 5:
            return compare_number("countNonZero", src, CImgproc::countNonZero, reference::countNonZero);
        default:
            return compare_number("countNonZeroRate", src, CImgproc::countNonZeroRate,
                                  reference::countNonZeroRate);
    }
}

const Registration registration("statistics", run);

}  // namespace
}  // namespace fuzzing
