// Colour conversion: bgr2gray, bgr2hsv, yuv2bgr.
#include "color.h"

#include <algorithm>
#include <memory>

#include "driver.h"

namespace fuzzing {
namespace {

using orvex_cv_991::CImgproc;

constexpr int kMostPixels = 2500;

// Exactly the bytes that pixels address; none for shapes of which no pixel exists or fits.
int frame_bytes(int rows, int cols) {
    if (rows <= 0 || cols <= 0 || int64_t{rows} * cols > kMostPixels) return 0;
    return ((rows - 1) / 2 + rows) * cols + (cols + 1) / 2 * 2;
}

void frame(Reader& reader) {
    const Shape shape = reader.shape(3, kMostPixels);
    const int n = frame_bytes(shape.rows, shape.cols);
    const U8 content = reader.image(Shape{1, n, 1});
    const std::unique_ptr<Byte[]> bytes(new Byte[static_cast<size_t>(n)]);
    std::copy_n(content.data, n, bytes.get());
    const std::vector<Byte> plain(content.data, content.data + n);
    U8 dst = reader.previous(U8());
    Image<Byte> expected = to_reference(dst);
    auto got = of_library([&] { CImgproc::yuv2bgr(bytes.get(), shape.rows, shape.cols, dst); });
    auto want = of_reference([&] { reference::yuv2bgr(plain, shape.rows, shape.cols, expected); });
    require_same(got.with("dst", dst), want.with("dst", expected), call("yuv2bgr", shape.rows, shape.cols));
    if (!std::equal(plain.begin(), plain.end(), bytes.get())) fail("yuv2bgr wrote to its frame");
}

void run(Reader& reader) {
    const int operation = reader.range(0, 2);
    if (operation == 2) return frame(reader);
    const bool in_place = reader.flag();
    U8 src = reader.image(3, kMostPixels);
    U8 previous = reader.previous(src);
    if (operation == 0)
        compare("bgr2gray", std::move(src), std::move(previous), in_place, CImgproc::bgr2gray,
                reference::bgr2gray);
    else
        compare("bgr2hsv", std::move(src), std::move(previous), in_place, CImgproc::bgr2hsv,
                reference::bgr2hsv);
}

const Registration registration("conversion", run);

}  // namespace
}  // namespace fuzzing
