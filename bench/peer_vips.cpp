// libvips: colour spaces.
#include <vips/vips.h>

#include <memory>
#include <vector>

#include "cases.h"

namespace bench {

void add_vips(std::vector<Case>& cases, const Inputs& in) {
    if (VIPS_INIT("orvex_bench")) return;
    vips_concurrency_set(1);
    vips_cache_set_max(0);
    const size_t bytes = static_cast<size_t>(in.rows) * static_cast<size_t>(in.cols) * 3;
    const auto rgb = std::make_shared<std::vector<unsigned char>>(in.photo.data, in.photo.data + bytes);
    for (size_t i = 0; i < bytes; i += 3) std::swap((*rgb)[i], (*rgb)[i + 2]);
    const int rows = in.rows, cols = in.cols;
    add_peer(cases, "bgr2hsv", "libvips", [rgb, rows, cols, bytes] {
        VipsImage* image = vips_image_new_from_memory(rgb->data(), bytes, cols, rows, 3, VIPS_FORMAT_UCHAR);
        VipsImage* hsv = nullptr;
        size_t size;
        vips_sRGB2HSV(image, &hsv, nullptr);
        void* const out = vips_image_write_to_memory(hsv, &size);
        g_free(out);
        g_object_unref(hsv);
        g_object_unref(image);
    });
}

}  // namespace bench
