// What the binding's C++ side reads from a raw frame, as BindingTest writes it: the two must agree.
// usage: page_results FRAME.nv21 COLUMNS ROWS RESULTS
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <vector>

#include "page_reader.h"

using namespace orvex_android;

namespace {

void write_box(std::FILE* out, const char* before, const orvex_cv_991::Rect& box) {
    std::fprintf(out, "%s%d %d %d %d\n", before, box.x, box.y, box.width, box.height);
}

void write(std::FILE* out, const Page& page) {
    uint32_t sum = 0;
    const int pixels = page.pixels.rows * page.pixels.cols;
    for (int k = 0; k < pixels; ++k) sum = sum * 31 + page.pixels.data[k];
    std::fprintf(out, "pixels %d x %d sum %u\n", page.pixels.cols, page.pixels.rows, sum);
    uint32_t bits = 0;
    std::memcpy(&bits, &page.sharpness, sizeof bits);
    std::fprintf(out, "sharpness %08x\n", bits);
    for (int k = 0; k < page.components.size; ++k) write_box(out, "component ", page.components[k]);
    for (int k = 0; k < page.rows.size; ++k) {
        const Rects& row = page.rows[k];
        std::fprintf(out, "row of %d\n", row.size());
        for (int i = 0; i < row.size; ++i) write_box(out, "", row[i]);
    }
}

}  // namespace

int main(int, char** arguments) {
    std::ifstream file(arguments[1], std::ios::binary);
    const std::vector<char> frame((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const auto* const data = reinterpret_cast<const uint8_t*>(frame.data());
    const int columns = std::atoi(arguments[2]), rows = std::atoi(arguments[3]);
    std::FILE* const out = std::fopen(arguments[4], "w");
    if (out == nullptr) return 1;
    write(out, read_page(data, PixelFormat::kNv21, rows, columns, PageKind::kGray, {8, 40}));
    write(out, read_page(data, PixelFormat::kNv21, rows, columns, PageKind::kBinary, {0, 1000}));
    return std::fclose(out);
}
