#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include "cases.h"
#include "color.h"
#include "detectors.h"
#include "filters.h"
#include "geometry.h"
#include "images.h"
#include "thresholds.h"
#include "turns.h"

namespace golden {

namespace {

using namespace testing_support;
using orvex_cv_991::CImgproc;
using orvex_cv_991::INTERP_LINEAR;
using orvex_cv_991::INTERP_TYPE;
using orvex_cv_991::Mat;
using orvex_cv_991::Size;
using reference::Byte;
using reference::Image;
using reference::List;

/// A source, and a destination that holds something else before or is the source.
struct Pair {
    U8 src, previous;
    bool in_place;

    Pair(Random& random, const U8& image) : src(image) {
        previous = any_previous(random);
        in_place = random.chance(25);
        if (in_place) previous = src;
    }
};

template <class Run>
Outcome library_on(const Pair& pair, Run run) {
    U8 dst = pair.previous;
    Outcome outcome = of_library([&] { run(pair.in_place ? dst : pair.src, dst); });
    return outcome.with("dst", dst);
}

template <class Run>
Outcome reference_on(const Pair& pair, Run run) {
    const U8 previous = pair.previous;  // a copy, since one of a matrix without a block has one
    Image<Byte> dst = to_reference(previous);
    Outcome outcome = of_reference([&] { run(to_reference(pair.src), dst); });
    return outcome.with("dst", dst);
}

template <class Library, class Reference>
void record_on(const Recorder& recorder, const std::string& name, int round, const Pair& pair,
               Library library, Reference plain) {
    recorder.record(
        name + " #" + std::to_string(round), [&] { return library_on(pair, library); },
        [&] { return reference_on(pair, plain); });
}

void record_frames(const Recorder& recorder) {
    Random random(2001);
    for (int round = 0; round < 300; ++round) {
        const int rows = round % 20 == 19 ? random.range(-3, 0) : any_side(random);
        const int cols = round % 25 == 24 ? random.range(-3, 0)
                         : round % 3      ? any_side(random)
                                          : 1 + round % 67;
        const int last_chroma = ((rows - 1) / 2 + rows) * cols;
        const int bytes = rows > 0 && cols > 0 ? last_chroma + (cols + 1) / 2 * 2 : 0;
        std::vector<Byte> frame(static_cast<size_t>(bytes));
        const bool extremes = random.chance(30);
        for (Byte& byte : frame)
            byte =
                static_cast<Byte>(extremes ? random.pick({0, 15, 16, 17, 254, 255}) : random.range(0, 255));
        const Pair pair(random, U8());
        record_on(
            recorder, "yuv2bgr", round, pair,
            [&](const U8&, U8& dst) { CImgproc::yuv2bgr(frame.data(), rows, cols, dst); },
            [&](const Image<Byte>&, Image<Byte>& dst) { reference::yuv2bgr(frame, rows, cols, dst); });
    }
}

/// A mask of the image's size, now and then of another, of more channels, or none.
U8 any_mask(Random& random, const U8& src) {
    if (random.chance(12)) return U8();
    const int more_rows = random.chance(8) ? 1 : 0, more_cols = random.chance(8) ? 1 : 0;
    const int channels = random.chance(6) ? 3 : 1;
    return any_image(random, channels, src.rows + more_rows, src.cols + more_cols);
}

void record_thresholds(const Recorder& recorder) {
    Random random(2002);
    for (int round = 0; round < 200; ++round) {
        const U8 src = any_image(random, random.chance(5) ? 3 : 1);
        const U8 mask = any_mask(random, src);
        Pair pair(random, src);
        if (random.chance(50) && !pair.in_place) pair.previous = filled(src.rows, src.cols, 1, 77);
        const int level = random.chance(10) ? random.pick({-1, 0, 1, 255, 256}) : random.range(0, 255);
        record_on(
            recorder, "thresholdSeg", round, pair,
            [&](const U8& from, U8& dst) { CImgproc::thresholdSeg(from, dst, level); },
            [&](const Image<Byte>& from, Image<Byte>& dst) { reference::thresholdSeg(from, dst, level); });

        const int type = random.chance(10) ? random.range(-16, 31) : random.pick({8, 9});
        recorder.record(
            "threshold with mask #" + std::to_string(round),
            [&] {
                int found = -1;
                const auto run = [&](const U8& from, U8& dst) {
                    found = CImgproc::threshold(from, dst, 0, 255, type, mask);
                };
                return library_on(pair, run).with("level", found);
            },
            [&] {
                int found = -1;
                const auto run = [&](const Image<Byte>& from, Image<Byte>& dst) {
                    found = reference::threshold(from, dst, 0, 255, type, to_reference(mask));
                };
                return reference_on(pair, run).with("level", found);
            });

        recorder.record(
            "otsu with mask #" + std::to_string(round),
            [&] {
                int found = -1;
                Outcome outcome = of_library([&] { found = CImgproc::otsu(src, mask); });
                return outcome.with("level", found);
            },
            [&] {
                int found = -1;
                Outcome outcome =
                    of_reference([&] { found = reference::otsu(to_reference(src), to_reference(mask)); });
                return outcome.with("level", found);
            });
    }
}

void record_adaptive(const Recorder& recorder) {
    Random random(2003);
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (int round = 0; round < 400; ++round) {
        U8 src = any_image(random, 1);
        if (random.chance(30))  // few levels make means that meet pixel values exactly
            for (int i = 0; i < src.rows * src.cols; ++i) src.data[i] = static_cast<Byte>(src.data[i] & 3);
        int block = random.range(-4, 45);
        if (random.chance(15)) block = random.pick({INT32_MAX, INT32_MIN, 101, 1000, -1000});
        double ratio = random.range(-64, 64) / 64.0;
        if (random.chance(10)) ratio = random.pick({0.0, kInfinity, -kInfinity, 1e300, -1e-300});
        const bool inverse = random.chance(50);
        const Pair pair(random, src);
        record_on(
            recorder, "adaptiveThreshold", round, pair,
            [&](const U8& from, U8& dst) { CImgproc::adaptiveThreshold(from, dst, block, ratio, inverse); },
            [&](const Image<Byte>& from, Image<Byte>& dst) {
                reference::adaptiveThreshold(from, dst, block, ratio, inverse);
            });
    }
}

void record_morphology(const Recorder& recorder) {
    Random random(2004);
    for (int round = 0; round < 560; ++round) {
        const bool wide = random.chance(20);  // rows of several words, windows about a word wide
        const int rows = wide ? random.range(1, 9) : any_side(random);
        const int cols = wide ? random.range(60, 300) : any_side(random);
        const U8 src = any_image(random, 1, rows, cols);
        int width = random.range(1, random.chance(60) ? 7 : cols);
        const int height = random.range(1, random.chance(60) ? 7 : rows);
        if (wide) width = random.pick({31, 32, 33, 63, 64, 65, 127, 128, 129});
        const Filter& filter = kFilters[static_cast<size_t>(round) % std::size(kFilters)];
        const Pair pair(random, src);
        record_on(
            recorder, filter.name, round, pair,
            [&](const U8& from, U8& dst) { filter.library(from, dst, Size(width, height)); },
            [&](const Image<Byte>& from, Image<Byte>& dst) {
                filter.plain(from, dst, {width, height});
            });
    }
}

void record_turns(const Recorder& recorder) {
    Random random(2005);
    for (int round = 0; round < 150; ++round) {
        const U8 src = any_image(random, random.range(1, 5));
        const int n = random.chance(90) ? random.range(-8, 8) : random.pick({INT32_MAX, INT32_MIN, 1001});
        const int f = random.range(-3, 3);
        const Pair pair(random, src);
        record_on(
            recorder, "rot90ClockWise_FlipLR", round, pair,
            [&](const U8& from, U8& dst) { CImgproc::rot90ClockWise_FlipLR(from, dst, n, f); },
            [&](const Image<Byte>& from, Image<Byte>& dst) {
                reference::rot90ClockWise_FlipLR(from, dst, n, f, pair.in_place);
            });
        record_on(
            recorder, "rot90ClockWise", round, pair,
            [&](const U8& from, U8& dst) { CImgproc::rot90ClockWise(from, dst, n); },
            [&](const Image<Byte>& from, Image<Byte>& dst) {
                reference::rot90ClockWise_FlipLR(from, dst, n, 0, pair.in_place);
            });
        record_on(
            recorder, "rot90AntiClockWise", round, pair,
            [&](const U8& from, U8& dst) { CImgproc::rot90AntiClockWise(from, dst, n); },
            [&](const Image<Byte>& from, Image<Byte>& dst) {
                reference::rot90AntiClockWise(from, dst, n, pair.in_place);
            });
        record_on(
            recorder, "flipLR", round, pair, [&](const U8& from, U8& dst) { CImgproc::flipLR(from, dst); },
            [&](const Image<Byte>& from, Image<Byte>& dst) {
                reference::rot90ClockWise_FlipLR(from, dst, 0, 1, pair.in_place);
            });
    }
}

float fraction(Random& random, int units) {
    return static_cast<float>(random.range(-units * 4096, units * 4096)) / 4096.0f;
}

// Turns and scalings in binary fractions, shears, mirrors, singular ones, and now and then an
// element that is infinite, tiny or huge.
Mat<float> any_matrix(Random& random) {
    Mat<float> m;
    m.mat_create(2, 3, 1, 0);
    for (int k = 0; k < 6; ++k) m.data[k] = fraction(random, k % 3 == 2 ? 40 : 2);
    const int kind = random.range(0, 9);
    if (kind < 3) {
        m.data[3] = -m.data[1];
        m.data[4] = m.data[0];
    } else if (kind < 6) {
        m.data[1] = 0;
        m.data[3] = random.chance(50) ? 0.0f : -0.0f;
    } else if (kind < 7) {
        m.data[3] = 2 * m.data[0];
        m.data[4] = 2 * m.data[1];
    }
    if (random.chance(8)) {
        constexpr float kInfinity = std::numeric_limits<float>::infinity();
        const int at = random.range(0, 5);
        m.data[at] = random.pick({kInfinity, -kInfinity, 1e38f, -1e38f, 1e-40f, 0.0f});
    }
    return m;
}

void record_warps(const Recorder& recorder) {
    Random random(2006);
    for (int round = 0; round < 700; ++round) {
        const U8 src = any_image(random, random.pick({1, 1, 3, 3, 2, 4}));
        const Mat<float> matrix = any_matrix(random);
        const int width = any_side(random), height = any_side(random);
        const int interp = random.chance(96) ? 0 : random.pick({1, -1, 7});
        const bool masked = random.chance(40);
        const U8 mask_before = filled(1, width * height + 5, 1, 7);
        const Pair pair(random, src);
        recorder.record(
            "warpAffine #" + std::to_string(round),
            [&] {
                U8 mask = mask_before;
                const auto run = [&](const U8& from, U8& dst) {
                    CImgproc::warpAffine(from, dst, matrix, Size(width, height),
                                         static_cast<INTERP_TYPE>(interp), masked ? &mask : nullptr);
                };
                return library_on(pair, run).with("mask", mask);
            },
            [&] {
                Image<Byte> mask = to_reference(mask_before);
                const auto run = [&](const Image<Byte>& from, Image<Byte>& dst) {
                    reference::warpAffine(from, dst, to_reference(matrix), {width, height}, interp,
                                          masked ? &mask : nullptr);
                };
                return reference_on(pair, run).with("mask", mask);
            });
    }
}

void record_resizes(const Recorder& recorder) {
    Random random(2007);
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    for (int round = 0; round < 400; ++round) {
        const U8 src = any_image(random, random.range(1, 4));
        int width = any_side(random), height = any_side(random);
        if (random.chance(10)) width = (src.cols + 1) / 2, height = (src.rows + 1) / 2;
        if (random.chance(5)) width = src.cols * 2, height = src.rows * 2;
        if (random.chance(3)) width = random.range(-1, 1);
        const Pair pair(random, src);
        record_on(
            recorder, "resize to a size", round, pair,
            [&](const U8& from, U8& dst) { CImgproc::resize(from, dst, Size(width, height), INTERP_LINEAR); },
            [&](const Image<Byte>& from, Image<Byte>& dst) {
                reference::resize(from, dst, {width, height}, 0);
            });
        if (round % 3) continue;
        float scale = static_cast<float>(random.range(41, 12288)) / 4096.0f;
        if (random.chance(10)) scale = random.pick({0.0f, -1.0f, kInfinity, 1e-30f, 1e30f});
        record_on(
            recorder, "resize by a factor", round, pair,
            [&](const U8& from, U8& dst) { CImgproc::resize(from, dst, scale, INTERP_LINEAR); },
            [&](const Image<Byte>& from, Image<Byte>& dst) { reference::resize(from, dst, scale, 0); });
    }
}

void record_masked_detectors(const Recorder& recorder) {
    Random random(2008);
    for (int round = 0; round < 200; ++round) {
        const U8 src = any_image(random, random.chance(4) ? 3 : 1);
        const U8 mask = any_mask(random, src);
        const Pair pair(random, src);
        recorder.record(
            "saliencyDetect with mask #" + std::to_string(round),
            [&] {
                orvex_991::vector<unsigned char> levels(7, 1);
                const auto run = [&](const U8& from, U8& dst) {
                    CImgproc::saliencyDetect(from, dst, mask, levels);
                };
                return library_on(pair, run).with("levels", levels);
            },
            [&] {
                List<Byte> levels;
                levels.resize(7);
                std::fill(levels.items.begin(), levels.items.end(), Byte{1});
                const auto run = [&](const Image<Byte>& from, Image<Byte>& dst) {
                    reference::saliencyDetect(from, dst, to_reference(mask), levels);
                };
                return reference_on(pair, run).with("levels", levels);
            });

        const int rows = random.range(3, 90), cols = random.range(20, 120);
        const U8 page = text_page(rows, cols, random.bits());
        const U8 where = any_mask(random, page);
        recorder.record(
            "getSharpness with mask #" + std::to_string(round),
            [&] {
                float score = -1;
                Outcome outcome = of_library([&] { score = CImgproc::getSharpness(page, where); });
                return outcome.with("score", score);
            },
            [&] {
                float score = -1;
                Outcome outcome = of_reference(
                    [&] { score = reference::getSharpness(to_reference(page), to_reference(where)); });
                return outcome.with("score", score);
            });
    }
}

}  // namespace

void record_parameters(const Recorder& recorder) {
    record_frames(recorder);
    record_thresholds(recorder);
    record_adaptive(recorder);
    record_morphology(recorder);
    record_turns(recorder);
    record_warps(recorder);
    record_resizes(recorder);
    record_masked_detectors(recorder);
}

}  // namespace golden
