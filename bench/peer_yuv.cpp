// libyuv: colour conversion, scaling, rotation and mirroring of planes, 3-byte and 4-byte pixels.
#include <libyuv.h>

#include <cstdlib>
#include <memory>
#include <vector>

#include "cases.h"

namespace bench {

namespace {

using Buffer = std::unique_ptr<unsigned char, void (*)(void*)>;

Buffer fresh(size_t bytes) {
    return Buffer(static_cast<unsigned char*>(std::malloc(bytes)), std::free);
}

}  // namespace

void add_yuv(std::vector<Case>& cases, const Inputs& in) {
    const int rows = in.rows, cols = in.cols;
    const size_t pixels = static_cast<size_t>(rows) * static_cast<size_t>(cols);
    const auto add = [&](const std::string& name, std::function<void()> run) {
        add_peer(cases, name, "libyuv", run);
    };

    add("bgr2gray", [&in, rows, cols, pixels] {
        const Buffer out = fresh(pixels);
        libyuv::RGB24ToJ400(in.photo.data, 3 * cols, out.get(), cols, cols, rows);
    });
    add("yuv2bgr", [&in, rows, cols, pixels] {
        const Buffer out = fresh(3 * pixels);
        libyuv::NV21ToRGB24(in.nv21.data(), cols, in.nv21.data() + pixels, cols, out.get(), 3 * cols, cols,
                            rows);
    });
    // It has no 3-byte rotation or scaling: the 4-byte form stands for it.
    const auto argb = std::make_shared<std::vector<unsigned char>>(4 * pixels);
    libyuv::RGB24ToARGB(in.photo.data, 3 * cols, argb->data(), 4 * cols, cols, rows);
    add("rot90ClockWise 1ch", [&in, rows, cols, pixels] {
        const Buffer out = fresh(pixels);
        libyuv::RotatePlane(in.gray.data, cols, out.get(), rows, cols, rows, libyuv::kRotate90);
    });
    add("rot90ClockWise 3ch", [argb, rows, cols, pixels] {
        const Buffer out = fresh(4 * pixels);
        libyuv::ARGBRotate(argb->data(), 4 * cols, out.get(), 4 * rows, cols, rows, libyuv::kRotate90);
    });
    add("flipLR 1ch", [&in, rows, cols, pixels] {
        const Buffer out = fresh(pixels);
        libyuv::MirrorPlane(in.gray.data, cols, out.get(), cols, cols, rows);
    });
    add("flipLR 3ch", [&in, rows, cols, pixels] {
        const Buffer out = fresh(3 * pixels);
        libyuv::RGB24Mirror(in.photo.data, 3 * cols, out.get(), 3 * cols, cols, rows);
    });
    for (const auto& [label, factor] : kResizeFactors) {
        const int w = static_cast<int>(cols * factor), h = static_cast<int>(rows * factor);
        const size_t size = static_cast<size_t>(w) * static_cast<size_t>(h);
        add("resize " + std::string(label) + " 1ch", [&in, rows, cols, w, h, size] {
            const Buffer out = fresh(size);
            libyuv::ScalePlane(in.gray.data, cols, cols, rows, out.get(), w, w, h, libyuv::kFilterBilinear);
        });
        add("resize " + std::string(label) + " 3ch", [argb, rows, cols, w, h, size] {
            const Buffer out = fresh(4 * size);
            libyuv::ARGBScale(argb->data(), 4 * cols, cols, rows, out.get(), 4 * w, w, h,
                              libyuv::kFilterBilinear);
        });
    }
}

}  // namespace bench
