#include <cstdint>
#include <string>

#include "core.h"

namespace orvex_python {

using orvex_991::vector;

namespace {

py::array bgr2gray(const py::object& src) {
    return image_from(src, CImgproc::bgr2gray);
}

/// Bytes of a frame up to the last chroma pair that a pixel uses.
int64_t frame_bytes(int rows, int cols) {
    if (rows <= 0 || cols <= 0) return 0;
    const int64_t last_chroma = (int64_t{(rows - 1) / 2} + rows) * cols;
    return last_chroma + (int64_t{cols} + 1) / 2 * 2;
}

py::array yuv2bgr(const py::object& yuv_given, const py::object& rows_given, const py::object& cols_given) {
    const auto yuv = bytes_of(yuv_given, "yuv");
    const int rows = int_of(rows_given, "rows"), cols = int_of(cols_given, "cols");
    if (rows < 0) throw py::value_error("rows: 0 or more wanted, " + std::to_string(rows) + " given");
    if (cols < 0) throw py::value_error("cols: 0 or more wanted, " + std::to_string(cols) + " given");
    if (yuv.ndim() == 2 && yuv.shape(1) != cols)
        throw py::value_error("yuv: rows of cols = " + std::to_string(cols) + " bytes wanted, of " +
                              std::to_string(yuv.shape(1)) + " given");
    if (yuv.size() < frame_bytes(rows, cols))
        throw py::value_error("yuv: at least " + std::to_string(frame_bytes(rows, cols)) +
                              " bytes wanted for " + std::to_string(rows) + " rows and " +
                              std::to_string(cols) + " columns, " + std::to_string(yuv.size()) + " given");
    const unsigned char* const frame = yuv.data();
    U8 dst;
    call([&] { CImgproc::yuv2bgr(frame, rows, cols, dst); });
    return to_python(std::move(dst));
}

py::array bgr2hsv(const py::object& src) {
    return image_from(src, CImgproc::bgr2hsv);
}

py::array equalizeHist(const py::object& src) {
    return image_from(src, CImgproc::equalizeHist);
}

py::array hist(const py::object& src_given) {
    const Image src(src_given, "src");
    vector<float> shares;
    call([&] { CImgproc::hist(*src, shares); });
    return to_python(std::move(shares));
}

py::tuple meanStdDev(const py::object& src_given) {
    const Image src(src_given, "src");
    float mean = 0, stddev = 0;
    call([&] { CImgproc::meanStdDev(*src, mean, stddev); });
    return py::make_tuple(mean, stddev);
}

int minVal(const py::object& src) {
    return value_from(src, CImgproc::minVal);
}

int maxVal(const py::object& src) {
    return value_from(src, CImgproc::maxVal);
}

int countNonZero(const py::object& src) {
    return value_from(src, CImgproc::countNonZero);
}

float countNonZeroRate(const py::object& src) {
    return value_from(src, CImgproc::countNonZeroRate);
}

int otsu(const py::object& src, const py::object& mask_given) {
    const Image mask = Image::or_empty(mask_given, "mask");
    const bool masked = !mask_given.is_none();
    return value_from(
        src, [&](const U8& image) { return masked ? CImgproc::otsu(image, *mask) : CImgproc::otsu(image); });
}

py::array thresholdSeg(const py::object& src, const py::object& threshold_given,
                       const py::object& dst_given) {
    const int threshold = int_of(threshold_given, "threshold");
    const Image previous = Image::or_empty(dst_given, "dst");
    return image_from(src, [&](const U8& image, U8& dst) {
        if (previous->rows == image.rows && previous->cols == image.cols) dst = *previous;
        CImgproc::thresholdSeg(image, dst, threshold);
    });
}

py::tuple threshold(const py::object& src, const py::object& low_th_given, const py::object& high_th_given,
                    const py::object& type_given, const py::object& mask_given, const py::object& dst_given) {
    const int low_th = int_of(low_th_given, "low_th"), high_th = int_of(high_th_given, "high_th");
    const int type = int_of(type_given, "type");
    const Image mask = Image::or_empty(mask_given, "mask");
    const Image previous = Image::or_empty(dst_given, "dst");
    const bool fresh = dst_given.is_none();
    int level = 0;
    py::array made = image_from(src, [&](const U8& image, U8& dst) {
        if (!fresh)
            dst = *previous;
        else if (!mask->empty())  // this form wants a destination with room
            dst.mat_create(image.rows, image.cols, 1, 0);
        level = CImgproc::threshold(image, dst, low_th, high_th, type, *mask);
    });
    return py::make_tuple(level, std::move(made));
}

py::array adaptiveThreshold(const py::object& src, const py::object& block_size_given,
                            const py::object& std_ratio_given, bool inverse) {
    const int block_size = int_of(block_size_given, "block_size");
    const double std_ratio = double_of(std_ratio_given, "std_ratio");
    return image_from(src, [&](const U8& image, U8& dst) {
        CImgproc::adaptiveThreshold(image, dst, block_size, std_ratio, inverse);
    });
}

void add_colour(py::module_& module) {
    module.def("bgr2gray", bgr2gray, "src"_a, R"(bgr2gray(src)
--

Grey image from BGR: (107 B + 601 G + 306 R + 512) >> 10 per pixel, integers only.

White gives 253, since the weights sum to 1014.

src: uint8, H x W x 3; an image of 1 channel is copied, other channel counts give zeros.
Returns uint8, H x W; an image without pixels for one without pixels.
Raises Error of code 3.)");
    module.def("yuv2bgr", yuv2bgr, "yuv"_a, "rows"_a, "cols"_a, R"(yuv2bgr(yuv, rows, cols)
--

BGR image from an NV21 camera frame: rows x cols bytes of luma, then (V, U) pairs, one for each 2 x 2 block.

Video range: luma 16 is black. Results are clamped to 0 .. 255.

yuv: uint8, one-dimensional, or two-dimensional with rows of cols bytes, such as (rows * 3 / 2) x cols. May be
    longer than the frame.
rows, cols: extents of the image in pixels, 0 or more.
Returns uint8, rows x cols x 3.
Raises ValueError for a frame that is too short, Error of code 3.)");
    module.def("bgr2hsv", bgr2hsv, "src"_a, R"(bgr2hsv(src)
--

Hue 0 .. 180, saturation and value 0 .. 255 from BGR, in integers.

src: uint8, H x W x 3. Other channel counts are not refused: pixels start 3 bytes apart when there are fewer,
    C bytes apart when there are more, and are read as 3 consecutive bytes, those beyond the end as 0.
Returns uint8, H x W x 3.
Raises Error of code 3.)");
}

void add_statistics(py::module_& module) {
    module.def("equalizeHist", equalizeHist, "src"_a, R"(equalizeHist(src)
--

Spreads the grey levels by their cumulative share c: level k becomes the integer part of c[k] * 255 + 0.5.

src: uint8, H x W, not empty.
Returns uint8, H x W.
Raises Error of code 1 for an empty image or other than 1 channel, and of code 3.)");
    module.def("hist", hist, "src"_a, R"(hist(src)
--

Shares of the 256 grey levels.

Counts are divided by H * W + 2**-23, so a share can be just below its exact value.

src: uint8, H x W, not empty.
Returns float32, 256 entries.
Raises Error of code 1 for an empty image or other than 1 channel, and of code 3.)");
    module.def("meanStdDev", meanStdDev, "src"_a, R"(meanStdDev(src)
--

Mean and standard deviation of the first H * W bytes, both 0 for an empty image.

The variance is the mean square less the square of the mean rounded to single precision: of near-constant images
it can come out just below 0, and the deviation is not a number.

src: uint8, H x W; of more channels, the first H * W bytes count.
Returns (mean, stddev).
Raises Error of code 3.)");
    module.def("minVal", minVal, "src"_a, R"(minVal(src)
--

The first pixel; not the minimum.

src: uint8, H x W, not empty.
Returns 0 .. 255.
Raises Error of code 1 for an empty image or other than 1 channel, and of code 3.)");
    module.def("maxVal", maxVal, "src"_a, R"(maxVal(src)
--

255; not the maximum.

src: uint8, H x W, not empty.
Returns 255.
Raises Error of code 1 for an empty image or other than 1 channel, and of code 3.)");
    module.def("countNonZero", countNonZero, "src"_a, R"(countNonZero(src)
--

Number of bytes that are not 0.

src: uint8, H x W; of more channels, the first H * W bytes count.
Raises Error of code 3.)");
    module.def("countNonZeroRate", countNonZeroRate, "src"_a, R"(countNonZeroRate(src)
--

countNonZero as a share of H * W; not a number for an empty image.

src: uint8, H x W; of more channels, the first H * W bytes count.
Raises Error of code 3.)");
}

void add_thresholds(py::module_& module) {
    module.def("otsu", otsu, "src"_a, "mask"_a = py::none(), R"(otsu(src, mask=None)
--

Otsu's threshold of a grey image: the level t that best parts its histogram into 0 .. t and t + 1 .. 255.

src: uint8, H x W; may be empty.
mask: uint8, H x W; only pixels where it is not 0 count. Its channels are not examined.
Returns t, 0 .. 255; of several equally good levels the lowest; 0 for an empty or a constant black image, and
when the mask selects no pixel.
Raises Error of code 1 for other than 1 channel or a mask of other extents, and of code 3.)");
    module.def("thresholdSeg", thresholdSeg, "src"_a, "threshold"_a, py::kw_only(), "dst"_a = py::none(),
               R"(thresholdSeg(src, threshold, *, dst=None)
--

Binary image: 0 where a pixel is below the threshold, else 255.

src: uint8, H x W, not empty.
threshold: 0 .. 255.
dst: uint8 image whose shape and content the result starts from, if it has H rows and W columns: the first
    H * W bytes of the result are the binary image, the rest is dst's. It is not written.
Returns uint8, H x W; in the shape of such a dst.
Raises Error of code 1 for an empty image, other than 1 channel or another threshold, and of code 3.)");
    module.def("threshold", threshold, "src"_a, "low_th"_a = 0, "high_th"_a = 255, "type"_a = 8,
               "mask"_a = py::none(), py::kw_only(), "dst"_a = py::none(),
               R"(threshold(src, low_th=0, high_th=255, type=8, mask=None, *, dst=None)
--

Otsu's threshold and its application in one call.

src: uint8, H x W; without a mask not empty.
low_th, high_th: 0 and 255, nothing else.
type: bit 8 selects Otsu and must be set, bit 1 inverts the result, others are ignored.
mask: uint8, H x W, or empty, which counts as none. Pixels where it is 0 do not count and become 0, inverted or not.
dst: uint8 image whose shape and content the result starts from, as in thresholdSeg. With a mask it may have any
    shape that holds H * W bytes, the first of which are replaced. It is not written.
Returns (threshold, image): 0 .. 255, and uint8, H x W or in the shape of dst.
Raises Error of code 1 for what the arguments must not be, and of code 3, also for a dst that is too small.)");
    module.def("adaptiveThreshold", adaptiveThreshold, "src"_a, "block_size"_a, "std_ratio"_a,
               "inverse"_a = false, R"(adaptiveThreshold(src, block_size, std_ratio, inverse=False)
--

Binary image by local thresholds: 255 where a pixel is above the mean of the square window around it plus
std_ratio times the standard deviation of the whole image, else 0.

Windows are cut at the image's edges.

src: uint8, H x W, not empty.
block_size: the window reaches block_size / 2 (truncated) pixels to every side; -2 and below give windows of no
    pixels, over which nothing is above.
std_ratio: any number; negative ones lower the thresholds.
inverse: swaps 0 and 255.
Returns uint8, H x W.
Raises Error of code 1 for an empty image or other than 1 channel, and of code 3.)");
}

}  // namespace

void add_images(py::module_& module) {
    add_colour(module);
    add_statistics(module);
    add_thresholds(module);
}

}  // namespace orvex_python
