#include "operations.h"

#include "color.h"
#include "components.h"
#include "detectors.h"
#include "geometry.h"
#include "morphology.h"
#include "statistics.h"
#include "thresholds.h"
#include "turns.h"

namespace testing_support {

using orvex_cv_991::CImgproc;
using orvex_cv_991::INTERP_LINEAR;
using orvex_cv_991::INTERP_TYPE;
using orvex_cv_991::Mat;
using orvex_cv_991::MORPH_TYPE;
using orvex_cv_991::Point;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;
using reference::Byte;
using reference::Image;
using reference::List;

Outputs::Outputs() {
    labels.mat_create(2, 3, 1, 7);
    rects.push_back(Rect(1, 2, 3, 4));
    points.push_back(orvex_991::vector<Point>(2));
}

namespace {

template <class T>
List<T> to_reference_list(const orvex_991::vector<T>& v) {
    List<T> list;
    list.resize(v.size);
    list.capacity = v.capacity;
    for (int k = 0; k < v.size; ++k) list[k] = v[k];
    return list;
}

template <class AnyOutputs>
Outcome& describe(Outcome& outcome, const AnyOutputs& out) {
    outcome.with("dst", out.dst).with("mask", out.mask).with("labels", out.labels).with("number", out.number);
    outcome.with("first", out.first).with("second", out.second);
    outcome.with("shares", out.shares).with("levels", out.levels);
    outcome.with("rects", out.rects).with("points", out.points);
    const int corners = out.rotated.pts.size();
    for (int k = 0; k < corners; ++k)
        outcome.with("corner x", out.rotated.pts[k].x).with("corner y", out.rotated.pts[k].y);
    outcome.with("corners", corners).with("x", out.rotated.center.x).with("y", out.rotated.center.y);
    outcome.with("width", out.rotated.width).with("height", out.rotated.height);
    return outcome.with("angle", out.rotated.angle);
}

using OnImage = std::function<void(const U8&, U8&)>;
using PlainOnImage = std::function<void(const Image<Byte>&, Image<Byte>&)>;

Operation from_image(const std::string& name, OutOfMemory out_of_memory, OnImage run, PlainOnImage plain) {
    return {name, out_of_memory, [run](const U8& src, Outputs& out) { run(src, out.dst); },
            [plain](const Image<Byte>& src, PlainOutputs& out) { plain(src, out.dst); }};
}

using Filter = void (*)(const U8&, U8&, const Size&);
using PlainFilter = void (*)(Image<Byte>, Image<Byte>&, reference::Size);

Operation window(const std::string& name, OutOfMemory out_of_memory, Filter run, PlainFilter plain, int width,
                 int height) {
    return from_image(
        name + " " + std::to_string(width) + " x " + std::to_string(height), out_of_memory,
        [=](const U8& src, U8& dst) { run(src, dst, Size(width, height)); },
        [=](const Image<Byte>& src, Image<Byte>& dst) {
            plain(src, dst, {width, height});
        });
}

Operation turn(int n, int f) {
    return {"rot90ClockWise_FlipLR " + std::to_string(n) + " " + std::to_string(f), OutOfMemory::kCode3,
            [=](const U8& src, Outputs& out) { CImgproc::rot90ClockWise_FlipLR(src, out.dst, n, f); },
            [=](const Image<Byte>& src, PlainOutputs& out) {
                reference::rot90ClockWise_FlipLR(src, out.dst, n, f, out.in_place);
            }};
}

Operation resize_to(int width, int height, int interp) {
    return from_image(
        "resize to " + std::to_string(width) + " x " + std::to_string(height) + ", " + std::to_string(interp),
        OutOfMemory::kCode3,
        [=](const U8& src, U8& dst) {
            CImgproc::resize(src, dst, Size(width, height), static_cast<INTERP_TYPE>(interp));
        },
        [=](const Image<Byte>& src, Image<Byte>& dst) {
            reference::resize(src, dst, {width, height}, interp);
        });
}

// By half, so that the grid of samples is not that of the pixels.
Operation warp(float m00, float m01, bool masked) {
    const auto matrix = [=] {
        Mat<float> m;
        m.mat_create(2, 3, 1, 0);
        m.data[0] = m.data[4] = m00;
        m.data[1] = m01;
        m.data[3] = -m01;
        m.data[2] = m.data[5] = 0.5f;
        return m;
    };
    return {std::string("warpAffine") + (m01 == 0 ? " scaling" : " turning") + (masked ? " with mask" : ""),
            OutOfMemory::kCode3,
            [=](const U8& src, Outputs& out) {
                CImgproc::warpAffine(src, out.dst, matrix(), Size(8, 7), INTERP_LINEAR,
                                     masked ? &out.mask : nullptr);
            },
            [=](const Image<Byte>& src, PlainOutputs& out) {
                reference::warpAffine(src, out.dst, to_reference(matrix()), {8, 7}, 0,
                                      masked ? &out.mask : nullptr);
            }};
}

std::vector<Operation> conversions() {
    return {
        from_image("bgr2gray", OutOfMemory::kCode3, CImgproc::bgr2gray, reference::bgr2gray),
        from_image("bgr2hsv", OutOfMemory::kCode3Initialised, CImgproc::bgr2hsv, reference::bgr2hsv),
    };
}

std::vector<Operation> statistics() {
    return {
        from_image("equalizeHist", OutOfMemory::kCode3Initialised, CImgproc::equalizeHist,
                   reference::equalizeHist),
        {"hist", OutOfMemory::kBadAlloc, [](const U8& src, Outputs& out) { CImgproc::hist(src, out.shares); },
         [](const Image<Byte>& src, PlainOutputs& out) { reference::hist(src, out.shares); }},
        {"meanStdDev", OutOfMemory::kNothing,
         [](const U8& src, Outputs& out) { CImgproc::meanStdDev(src, out.first, out.second); },
         [](const Image<Byte>& src, PlainOutputs& out) {
             reference::meanStdDev(src, out.first, out.second);
         }},
        {"minVal", OutOfMemory::kNothing,
         [](const U8& src, Outputs& out) { out.number = CImgproc::minVal(src); },
         [](const Image<Byte>& src, PlainOutputs& out) { out.number = reference::minVal(src); }},
        {"maxVal", OutOfMemory::kNothing,
         [](const U8& src, Outputs& out) { out.number = CImgproc::maxVal(src); },
         [](const Image<Byte>& src, PlainOutputs& out) { out.number = reference::maxVal(src); }},
        {"countNonZero", OutOfMemory::kNothing,
         [](const U8& src, Outputs& out) { out.number = CImgproc::countNonZero(src); },
         [](const Image<Byte>& src, PlainOutputs& out) { out.number = reference::countNonZero(src); }},
        {"countNonZeroRate", OutOfMemory::kNothing,
         [](const U8& src, Outputs& out) { out.first = CImgproc::countNonZeroRate(src); },
         [](const Image<Byte>& src, PlainOutputs& out) { out.first = reference::countNonZeroRate(src); }},
    };
}

Operation adaptive(int block, double ratio, bool inverse) {
    return from_image(
        "adaptiveThreshold " + std::to_string(block), OutOfMemory::kCode3,
        [=](const U8& src, U8& dst) { CImgproc::adaptiveThreshold(src, dst, block, ratio, inverse); },
        [=](const Image<Byte>& src, Image<Byte>& dst) {
            reference::adaptiveThreshold(src, dst, block, ratio, inverse);
        });
}

std::vector<Operation> thresholds() {
    return {
        {"otsu", OutOfMemory::kNothing, [](const U8& src, Outputs& out) { out.number = CImgproc::otsu(src); },
         [](const Image<Byte>& src, PlainOutputs& out) { out.number = reference::otsu(src); }},
        {"otsu masked", OutOfMemory::kNothing,
         [](const U8& src, Outputs& out) { out.number = CImgproc::otsu(src, src); },
         [](const Image<Byte>& src, PlainOutputs& out) { out.number = reference::otsu(src, src); }},
        from_image(
            "thresholdSeg", OutOfMemory::kCode3Initialised,
            [](const U8& src, U8& dst) { CImgproc::thresholdSeg(src, dst, 100); },
            [](const Image<Byte>& src, Image<Byte>& dst) { reference::thresholdSeg(src, dst, 100); }),
        {"threshold", OutOfMemory::kCode3Initialised,
         [](const U8& src, Outputs& out) { out.number = CImgproc::threshold(src, out.dst, 0, 255, 9, U8()); },
         [](const Image<Byte>& src, PlainOutputs& out) {
             out.number = reference::threshold(src, out.dst, 0, 255, 9, {});
         }},
        {"threshold masked", OutOfMemory::kNothing,
         [](const U8& src, Outputs& out) { out.number = CImgproc::threshold(src, out.dst, 0, 255, 8, src); },
         [](const Image<Byte>& src, PlainOutputs& out) {
             out.number = reference::threshold(src, out.dst, 0, 255, 8, src);
         }},
        {"threshold of another mode", OutOfMemory::kNothing,
         [](const U8& src, Outputs& out) { out.number = CImgproc::threshold(src, out.dst, 0, 255, 1, U8()); },
         [](const Image<Byte>& src, PlainOutputs& out) {
             out.number = reference::threshold(src, out.dst, 0, 255, 1, {});
         }},
        {"threshold of another range", OutOfMemory::kNothing,
         [](const U8& src, Outputs& out) { out.number = CImgproc::threshold(src, out.dst, 1, 255, 8, U8()); },
         [](const Image<Byte>& src, PlainOutputs& out) {
             out.number = reference::threshold(src, out.dst, 1, 255, 8, {});
         }},
        adaptive(5, 0.1, false),
        adaptive(1001, -0.1, true),
        adaptive(-7, 0.1, false),
    };
}

std::vector<Operation> transforms() {
    std::vector<Operation> list;
    for (int n = -1; n < 4; ++n)
        for (const int f : {0, 1}) list.push_back(turn(n, f));
    for (const int interp : {0, 1}) {
        list.push_back(resize_to(5, 4, interp));
        list.push_back(resize_to(1, 1, interp));
    }
    list.push_back(from_image(
        "resize by 0.5", OutOfMemory::kCode3,
        [](const U8& src, U8& dst) { CImgproc::resize(src, dst, 0.5f, INTERP_LINEAR); },
        [](const Image<Byte>& src, Image<Byte>& dst) { reference::resize(src, dst, 0.5f, 0); }));
    for (const float m01 : {0.0f, 0.4f})
        for (const bool masked : {false, true}) list.push_back(warp(0.5f, m01, masked));
    return list;
}

std::vector<Operation> morphology() {
    std::vector<Operation> list;
    for (const auto& [width, height] : {std::pair(1, 1), std::pair(3, 2)}) {
        const auto add = [&, w = width, h = height](const char* name, OutOfMemory out_of_memory, Filter run,
                                                    PlainFilter plain) {
            list.push_back(window(name, out_of_memory, run, plain, w, h));
        };
        add("dilateBinary", OutOfMemory::kCode3, CImgproc::dilateBinary, reference::dilateBinary);
        add("erodeBinary", OutOfMemory::kCode3, CImgproc::erodeBinary, reference::erodeBinary);
        add("openBinary", OutOfMemory::kCode3, CImgproc::openBinary, reference::openBinary);
        add("closeBinary", OutOfMemory::kCode3, CImgproc::closeBinary, reference::closeBinary);
        add("dilateGray", OutOfMemory::kCode3, CImgproc::dilateGray, reference::dilateGray);
        add("erodeGray", OutOfMemory::kCode3, CImgproc::erodeGray, reference::erodeGray);
        add("morphGradient", OutOfMemory::kCode2, CImgproc::morphGradient, reference::morphGradient);
    }
    for (const int type : {0, 1, 2, 3, 9})
        list.push_back(from_image(
            "morphologyBinary " + std::to_string(type), OutOfMemory::kCode3,
            [=](const U8& src, U8& dst) {
                CImgproc::morphologyBinary(src, dst, Size(1, 1), static_cast<MORPH_TYPE>(type));
            },
            [=](const Image<Byte>& src, Image<Byte>& dst) {
                reference::morphologyBinary(src, dst, {1, 1}, type);
            }));
    return list;
}

std::vector<Operation> components_and_shapes() {
    return {
        {"bwlabel", OutOfMemory::kBadAlloc,
         [](const U8& src, Outputs& out) { CImgproc::bwlabel(src, out.labels, out.number); },
         [](const Image<Byte>& src, PlainOutputs& out) { reference::bwlabel(src, out.labels, out.number); }},
        {"connectdComponent", OutOfMemory::kCode2,
         [](const U8& src, Outputs& out) { CImgproc::connectdComponent(src, out.rects, nullptr); },
         [](const Image<Byte>& src, PlainOutputs& out) {
             reference::connectdComponent(src, out.rects, nullptr);
         }},
        {"connectdComponent with points", OutOfMemory::kCode2,
         [](const U8& src, Outputs& out) { CImgproc::connectdComponent(src, out.rects, &out.points); },
         [](const Image<Byte>& src, PlainOutputs& out) {
             reference::connectdComponent(src, out.rects, &out.points);
         }},
        {"minAreaRect", OutOfMemory::kBadAlloc,
         [](const U8& src, Outputs& out) { out.rotated = CImgproc::minAreaRect(src); },
         [](const Image<Byte>& src, PlainOutputs& out) {
             out.rotated = reference::minAreaRect(src, reference::calipers);
         }},
    };
}

std::vector<Operation> detectors() {
    std::vector<Operation> list = {
        {"getSharpness", OutOfMemory::kCode2Or3,
         [](const U8& src, Outputs& out) { out.first = CImgproc::getSharpness(src); },
         [](const Image<Byte>& src, PlainOutputs& out) { out.first = reference::getSharpness(src); }},
        {"getSharpness masked", OutOfMemory::kCode2Or3,
         [](const U8& src, Outputs& out) { out.first = CImgproc::getSharpness(src, src); },
         [](const Image<Byte>& src, PlainOutputs& out) { out.first = reference::getSharpness(src, src); }},
        {"saliencyDetect", OutOfMemory::kCode2Or3,
         [](const U8& src, Outputs& out) { CImgproc::saliencyDetect(src, out.dst, src, out.levels); },
         [](const Image<Byte>& src, PlainOutputs& out) {
             reference::saliencyDetect(src, out.dst, src, out.levels);
         }},
    };
    for (const bool relaxed : {false, true})
        list.push_back(from_image(
            relaxed ? "redColorDetect relaxed" : "redColorDetect", OutOfMemory::kCode2Or3,
            [=](const U8& src, U8& dst) { CImgproc::redColorDetect(src, dst, relaxed); },
            [=](const Image<Byte>& src, Image<Byte>& dst) { reference::redColorDetect(src, dst, relaxed); }));
    return list;
}

}  // namespace

PlainOutputs::PlainOutputs(const Outputs& outputs, bool is_in_place)
    : dst(to_reference(outputs.dst)),
      mask(to_reference(outputs.mask)),
      labels(to_reference(outputs.labels)),
      number(outputs.number),
      first(outputs.first),
      second(outputs.second),
      shares(to_reference_list(outputs.shares)),
      levels(to_reference_list(outputs.levels)),
      in_place(is_in_place) {
    for (int k = 0; k < outputs.rects.size; ++k) {
        const Rect& rect = outputs.rects[k];
        rects.push_back({rect.x, rect.y, rect.width, rect.height});
    }
    for (int k = 0; k < outputs.points.size; ++k) {
        List<reference::Point> list;
        list.resize(outputs.points[k].size);
        for (int i = 0; i < list.size(); ++i) list[i] = {outputs.points[k][i].x, outputs.points[k][i].y};
        points.push_back(list);
    }
}

const std::vector<Operation>& image_operations() {
    static const std::vector<Operation> all = [] {
        std::vector<Operation> list;
        for (const auto& family : {conversions(), statistics(), thresholds(), transforms(), morphology(),
                                   components_and_shapes(), detectors()})
            list.insert(list.end(), family.begin(), family.end());
        return list;
    }();
    return all;
}

Outcome outcome_of(Outcome call, const Outputs& out) {
    describe(call, out);
    return call;
}

Outcome outcome_of(Outcome call, const PlainOutputs& out) {
    describe(call, out);
    return call;
}

}  // namespace testing_support
