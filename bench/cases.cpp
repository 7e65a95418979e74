#include "cases.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <utility>

#include "color.h"
#include "components.h"
#include "detectors.h"
#include "geometry.h"
#include "morphology.h"
#include "shapes.h"
#include "statistics.h"
#include "thresholds.h"
#include "turns.h"

namespace bench {

using orvex_991::vector;
using orvex_cv_991::CImgproc;
using orvex_cv_991::INTERP_LINEAR;
using orvex_cv_991::Mat;
using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::Rect;
using orvex_cv_991::RotatedRect;
using orvex_cv_991::Size;
using reference::Byte;
using reference::Image;

namespace {

std::shared_ptr<Image<Byte>> as_reference(const U8& m) {
    auto image = std::make_shared<Image<Byte>>();
    image->create(m.rows, m.cols, m.channels, 0);
    std::copy_n(m.data, image->data.size(), image->data.begin());
    return image;
}

class Builder {
 public:
    Builder(const Inputs& in, bool with_reference) : in_(in), with_reference_(with_reference) {}

    /// @param run  makes its own outputs, as callers do
    template <class Run>
    Case& ours(const std::string& name, int64_t bytes, Run run) {
        cases_.push_back({name, bytes, {}});
        cases_.back().candidates.push_back({"ours", run});
        return cases_.back();
    }

    /// The row's operation by the plain reference.
    template <class Run>
    void plain(Run run) {
        if (!with_reference_) return;
        cases_.back().candidates.push_back({"reference", [run] {
                                                run();
                                                reference::take_printed();
                                            }});
    }

    /// A row for an operation from one image to another.
    template <class Operation, class Plain>
    void image_row(const std::string& name, const U8& src, int out_channels, Operation operation,
                   Plain plain_operation) {
        const int64_t pixels = static_cast<int64_t>(src.rows) * src.cols;
        const U8* const from = &src;
        ours(name, pixels * (src.channels + out_channels), [from, operation] {
            U8 dst;
            operation(*from, dst);
        });
        if (!with_reference_) return;
        const auto image = as_reference(src);
        plain([image, plain_operation] {
            Image<Byte> dst;
            plain_operation(*image, dst);
        });
    }

    std::vector<Case> take() { return std::move(cases_); }

    void colour() {
        image_row("bgr2gray", in_.photo, 1, CImgproc::bgr2gray, reference::bgr2gray);
        const Inputs& in = in_;
        const int64_t pixels = static_cast<int64_t>(in.rows) * in.cols;
        ours("yuv2bgr", pixels * 9 / 2, [&in] {
            U8 dst;
            CImgproc::yuv2bgr(in.nv21.data(), in.rows, in.cols, dst);
        });
        plain([&in] {
            Image<Byte> dst;
            reference::yuv2bgr(in.nv21, in.rows, in.cols, dst);
        });
        image_row("bgr2hsv", in_.photo, 3, CImgproc::bgr2hsv, reference::bgr2hsv);
    }

    void statistics() {
        const U8& gray = in_.gray;
        const int64_t pixels = static_cast<int64_t>(gray.rows) * gray.cols;
        const auto image = as_reference(gray);
        ours("hist", pixels, [&gray] {
            vector<float> h;
            CImgproc::hist(gray, h);
        });
        plain([image] {
            reference::List<float> h;
            reference::hist(*image, h);
        });
        image_row("equalizeHist", gray, 1, CImgproc::equalizeHist, reference::equalizeHist);
        ours("otsu", pixels, [&gray] { CImgproc::otsu(gray); });
        plain([image] { reference::otsu(*image); });
        ours("meanStdDev", pixels, [&gray] {
            float mean, stddev;
            CImgproc::meanStdDev(gray, mean, stddev);
        });
        plain([image] {
            float mean, stddev;
            reference::meanStdDev(*image, mean, stddev);
        });
        cases_.back().candidates.push_back({"scalar loop", [&gray, pixels] {
                                                double sum = 0, squares = 0;
                                                for (int64_t i = 0; i < pixels; ++i) {
                                                    const double value = gray.data[i];
                                                    sum += value;
                                                    squares += value * value;
                                                }
                                                volatile double result = squares - sum * sum;
                                                (void)result;
                                            }});
        ours("countNonZero", pixels, [&gray] { CImgproc::countNonZero(gray); });
        plain([image] { reference::countNonZero(*image); });
    }

    void thresholds() {
        image_row(
            "thresholdSeg", in_.gray, 1,
            [](const U8& src, U8& dst) { CImgproc::thresholdSeg(src, dst, 120); },
            [](const Image<Byte>& src, Image<Byte>& dst) { reference::thresholdSeg(src, dst, 120); });
        image_row(
            "threshold otsu", in_.gray, 1,
            [](const U8& src, U8& dst) { CImgproc::threshold(src, dst, 0, 255, 9, U8()); },
            [](const Image<Byte>& src, Image<Byte>& dst) {
                reference::threshold(src, dst, 0, 255, 9, Image<Byte>());
            });
        for (const int block : {15, 31, 51})
            image_row(
                "adaptiveThreshold " + std::to_string(block), in_.gray, 1,
                [block](const U8& src, U8& dst) {
                    CImgproc::adaptiveThreshold(src, dst, block, -0.3, false);
                },
                [block](const Image<Byte>& src, Image<Byte>& dst) {
                    reference::adaptiveThreshold(src, dst, block, -0.3, false);
                });
    }

    void geometry() {
        for (const U8* src : {&in_.gray, &in_.photo}) {
            const std::string channels = src->channels == 1 ? " 1ch" : " 3ch";
            const int rows = src->rows, cols = src->cols, c = src->channels;
            image_row(
                "rot90ClockWise" + channels, *src, c,
                [](const U8& from, U8& dst) { CImgproc::rot90ClockWise(from, dst, 1); },
                [](const Image<Byte>& from, Image<Byte>& dst) {
                    reference::rot90ClockWise_FlipLR(from, dst, 1, 0, false);
                });
            image_row("flipLR" + channels, *src, c, CImgproc::flipLR,
                      [](const Image<Byte>& from, Image<Byte>& dst) {
                          reference::rot90ClockWise_FlipLR(from, dst, 0, 1, false);
                      });
            const auto image = as_reference(*src);
            for (const auto& [label, factor] : kResizeFactors) {
                const Size size(static_cast<int>(cols * factor), static_cast<int>(rows * factor));
                const int64_t out = static_cast<int64_t>(size.width) * size.height * c;
                ours("resize " + std::string(label) + channels, static_cast<int64_t>(rows) * cols * c + out,
                     [src, size = size] {
                         U8 dst;
                         CImgproc::resize(*src, dst, size, INTERP_LINEAR);
                     });
                plain([image, size = size] {
                    Image<Byte> dst;
                    reference::resize(*image, dst, {size.width, size.height}, 0);
                });
            }
            const auto turn = std::make_shared<Mat<float>>(CImgproc::getRotationMatrix2D(
                Point32f(static_cast<float>(cols) / 2, static_cast<float>(rows) / 2), 7, 1));
            ours("warpAffine 7 degrees" + channels, int64_t{2} * rows * cols * c, [src, turn, rows, cols] {
                U8 dst;
                CImgproc::warpAffine(*src, dst, *turn, Size(cols, rows), INTERP_LINEAR, nullptr);
            });
            plain([image, turn, rows, cols] {
                Image<float> matrix;
                matrix.create(2, 3, 1, 0);
                std::copy_n(turn->data, 6, matrix.data.begin());
                Image<Byte> dst;
                reference::warpAffine(*image, dst, matrix, {cols, rows}, 0, nullptr);
            });
        }
    }

    void morphology() {
        using Operation = void (*)(const U8&, U8&, const Size&);
        using Plain = void (*)(Image<Byte>, Image<Byte>&, reference::Size);
        struct Row {
            const char* name;
            Operation operation;
            Plain plain;
            const U8* src;
        };
        const Row rows[] = {{"dilateBinary", CImgproc::dilateBinary, reference::dilateBinary, &in_.text},
                            {"erodeBinary", CImgproc::erodeBinary, reference::erodeBinary, &in_.text},
                            {"dilateGray", CImgproc::dilateGray, reference::dilateGray, &in_.gray},
                            {"erodeGray", CImgproc::erodeGray, reference::erodeGray, &in_.gray}};
        for (const Row& row : rows)
            for (const int side : {3, 9, 31}) window_row(row.name, side, *row.src, row.operation, row.plain);
        window_row("openBinary", 3, in_.text, CImgproc::openBinary, reference::openBinary);
        window_row("closeBinary", 3, in_.text, CImgproc::closeBinary, reference::closeBinary);
        window_row("morphGradient", 3, in_.gray, CImgproc::morphGradient, reference::morphGradient);
    }

    void components() {
        for (const auto& [label, src] : {std::pair<const char*, const U8*>{"text", &in_.text},
                                         {"noise 0.1", &in_.noise},
                                         {"noise 0.5", &in_.half_noise}}) {
            const int64_t pixels = static_cast<int64_t>(src->rows) * src->cols;
            const std::string suffix = " " + std::string(label);
            const auto image = as_reference(*src);
            ours("bwlabel" + suffix, pixels * 5, [src = src] {
                Mat<int> labels;
                int num;
                CImgproc::bwlabel(*src, labels, num);
            });
            plain([image] {
                Image<int> labels;
                int num;
                reference::bwlabel(*image, labels, num);
            });
            ours("connectdComponent" + suffix, pixels, [src = src] {
                vector<Rect> rects;
                CImgproc::connectdComponent(*src, rects, nullptr);
            });
            const bool is_text = src == &in_.text;  // the reference is quadratic in the components
            if (is_text)
                plain([image] {
                    reference::List<reference::Rect> rects;
                    reference::connectdComponent(*image, rects, nullptr);
                });
            ours("connectdComponent points" + suffix, pixels, [src = src] {
                vector<Rect> rects;
                vector<vector<Point>> points;
                CImgproc::connectdComponent(*src, rects, &points);
            });
            if (is_text)
                plain([image] {
                    reference::List<reference::Rect> rects;
                    reference::List<reference::List<reference::Point>> points;
                    reference::connectdComponent(*image, rects, &points);
                });
        }
        for (const int bands : {50, 1}) {
            const auto rects = std::make_shared<vector<Rect>>(letters(5000, bands));
            ours("divideComponentsToRows " + std::to_string(bands) + (bands == 1 ? " row" : " rows"),
                 5000 * 32, [rects] {
                     vector<vector<Rect>> rows;
                     CImgproc::divideComponentsToRows(*rects, rows);
                 });
            const auto list = std::make_shared<reference::List<reference::Rect>>();
            for (int k = 0; k < rects->size; ++k)
                list->push_back({(*rects)[k].x, (*rects)[k].y, (*rects)[k].width, (*rects)[k].height});
            plain([list] {
                reference::List<reference::List<reference::Rect>> rows;
                reference::divideComponentsToRows(*list, rows);
            });
            // The work of one call in the library that everyone has: order by row, then by column.
            cases_.back().candidates.push_back({"std::stable_sort", [rects] {
                                                    vector<Rect> sorted(*rects);
                                                    std::stable_sort(sorted.data, sorted.data + sorted.size(),
                                                                     [](const Rect& a, const Rect& b) {
                                                                         return a.y / 40 != b.y / 40
                                                                                    ? a.y / 40 < b.y / 40
                                                                                    : a.x < b.x;
                                                                     });
                                                }});
        }
    }

    void shapes() {
        for (const int n : {100, 10000, 200000}) {
            const auto points = std::make_shared<vector<Point>>(disc_of_points(n));
            ours("convexHull " + std::to_string(n), int64_t{8} * n, [points] {
                vector<Point> hull;
                CImgproc::convexHull(*points, hull);
            });
            if (n > 10000) continue;  // the reference is quadratic
            const auto list = std::make_shared<reference::List<reference::Point>>();
            for (int k = 0; k < n; ++k) list->push_back({(*points)[k].x, (*points)[k].y});
            plain([list] {
                reference::List<reference::Point> hull;
                reference::convexHull(*list, hull);
            });
        }
        const U8& blob = in_.blob;
        ours("minAreaRect mask", static_cast<int64_t>(blob.rows) * blob.cols,
             [&blob] { CImgproc::minAreaRect(blob); });
        const auto image = as_reference(blob);
        plain([image] {
            reference::minAreaRect(*image, [](const reference::List<reference::Point>&) {
                return reference::List<reference::Point32f>();
            });
        });
    }

    void detectors() {
        const int64_t pixels = static_cast<int64_t>(in_.rows) * in_.cols;
        const U8 &gray = in_.gray, &photo = in_.photo;
        const auto everything = std::make_shared<U8>();
        everything->mat_create(gray.rows, gray.cols, 1, 255);
        ours("saliencyDetect", 3 * pixels, [&gray, everything] {
            U8 dst;
            vector<unsigned char> levels;
            CImgproc::saliencyDetect(gray, dst, *everything, levels);
        });
        const auto gray_image = as_reference(gray), mask = as_reference(*everything),
                   colour = as_reference(photo);
        plain([gray_image, mask] {
            Image<Byte> dst;
            reference::List<Byte> levels;
            reference::saliencyDetect(*gray_image, dst, *mask, levels);
        });
        ours("redColorDetect", 4 * pixels, [&photo] {
            U8 dst;
            try {
                CImgproc::redColorDetect(photo, dst, false);
            } catch (const orvex_991::CException&) {  // no seal on this photograph
            }
        });
        plain([colour] {
            Image<Byte> dst;
            try {
                reference::redColorDetect(*colour, dst, false);
            } catch (const reference::Failure&) {
            }
        });
        ours("getSharpness 3ch", 4 * pixels, [&photo] { CImgproc::getSharpness(photo); });
        plain([colour] { reference::getSharpness(*colour); });
        ours("getSharpness 1ch", 30 * int64_t{gray.cols}, [&gray] { CImgproc::getSharpness(gray); });
        plain([gray_image] { reference::getSharpness(*gray_image); });
    }

    /// What a phone does with a frame, all together; bytes are those of the steps.
    void chains() {
        const Inputs& in = in_;
        const int64_t pixels = static_cast<int64_t>(in.rows) * in.cols;
        // yuv2bgr 4.5, bgr2gray 4, threshold 3, connectdComponent 1
        ours("frame to rows", pixels * 25 / 2, [&in] { Frame().rows_by_otsu(in); });
        const auto frame = std::make_shared<Frame>();
        ours("frame to rows, outputs reused", pixels * 25 / 2, [&in, frame] { frame->rows_by_otsu(in); });
        // and warpAffine 2; adaptiveThreshold 2 in place of threshold
        ours("frame to level rows", pixels * 27 / 2, [&in] { Frame().level_rows(in); });
        ours("frame to level rows, outputs reused", pixels * 27 / 2, [&in, frame] { frame->level_rows(in); });
    }

 private:
    /// The outputs of a chain.
    struct Frame {
        U8 photo, gray, level, binary;
        vector<Rect> components;
        vector<vector<Rect>> rows;

        void to_gray(const Inputs& in) {
            CImgproc::yuv2bgr(in.nv21.data(), in.rows, in.cols, photo);
            CImgproc::bgr2gray(photo, gray);
        }
        void to_rows() {
            CImgproc::connectdComponent(binary, components, nullptr);
            CImgproc::divideComponentsToRows(components, rows);
        }
        void rows_by_otsu(const Inputs& in) {
            to_gray(in);
            CImgproc::threshold(gray, binary, 0, 255, 8 | 1, {});
            to_rows();
        }
        void level_rows(const Inputs& in) {
            to_gray(in);
            const Point32f middle(static_cast<float>(in.cols) / 2, static_cast<float>(in.rows) / 2);
            CImgproc::warpAffine(gray, level, CImgproc::getRotationMatrix2D(middle, 2, 1),
                                 Size(in.cols, in.rows), INTERP_LINEAR, nullptr);
            CImgproc::adaptiveThreshold(level, binary, 31, -0.6, true);
            to_rows();
        }
    };

    template <class Operation, class Plain>
    void window_row(const std::string& name, int side, const U8& src, Operation operation,
                    Plain plain_operation) {
        image_row(
            name + " " + std::to_string(side), src, 1,
            [operation, side](const U8& from, U8& dst) { operation(from, dst, Size(side, side)); },
            [plain_operation, side](const Image<Byte>& from, Image<Byte>& dst) {
                plain_operation(from, dst, {side, side});
            });
    }

    const Inputs& in_;
    const bool with_reference_;
    std::vector<Case> cases_;
};

}  // namespace

std::vector<Case> make_cases(const Inputs& in, bool with_reference) {
    Builder builder(in, with_reference);
    builder.colour();
    builder.statistics();
    builder.thresholds();
    builder.geometry();
    builder.morphology();
    builder.components();
    builder.shapes();
    builder.detectors();
    builder.chains();
    return builder.take();
}

void add_peer(std::vector<Case>& cases, const std::string& name, const std::string& library,
              std::function<void()> run) {
    const auto row =
        std::find_if(cases.begin(), cases.end(), [&](const Case& one) { return one.name == name; });
    if (row == cases.end()) throw std::logic_error("no row is called " + name);
    row->candidates.push_back({library, std::move(run)});
}

}  // namespace bench
