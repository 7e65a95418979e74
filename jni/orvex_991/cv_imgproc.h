#ifndef ORVEX_991_CV_IMGPROC_H
#define ORVEX_991_CV_IMGPROC_H

/// @file
/// The operations on images, and everything else through one include.
///
/// Words used throughout:
/// - Axes: x is the column, growing to the right; y is the row, growing downward. A Rect covers columns
///   x .. x + width - 1 and rows y .. y + height - 1, both ends inclusive.
/// - A grey or binary image has 1 channel, a colour image 3: bytes 0, 1, 2 of a pixel are B, G, R.
///   Binary images hold 255 on 0; which bytes count as foreground is stated by each operation.
/// - Empty means 0 rows or 0 columns. Truncate is toward zero, floor is downward.
/// - In place: the destination may be the source; the result is that of a separate destination.
///
/// Errors are thrown as orvex_991::CException. A failed check prints two lines on standard output, a prefix
/// "D file:line] " with the text of the condition that had to hold, and throws code 1; the checks of an
/// operation are listed in their order under @checks. Code 3 means that memory for pixels or for the work on
/// them could not be had, or that a matrix does not hold as many pixels as its shape says. Outputs keep
/// whatever they held at that moment: most operations replace an output only once the result is complete,
/// others say so. Where a list grows for the caller, std::bad_alloc may pass: such operations name it.
///
/// Operations are static and keep no state: threads may call them at the same time on different outputs.
/// Lines on standard output of threads that run at the same time may interleave.

#include "cv_forest_join.h"
#include "cv_geometry.h"
#include "cv_mat.h"
#include "cv_rotating_calipers.h"
#include "orvex_991_version.h"
#include "util_clock.h"
#include "util_exception.h"
#include "util_math.h"
#include "util_string.h"
#include "util_vector.h"

namespace orvex_cv_991 {

/// Orders component indices by the areas of their rectangles, larger first.
class RectAreaComp_ConnComp {
 public:
    /// @param rects  must live as long as this
    explicit RectAreaComp_ConnComp(orvex_991::vector<Rect>* rects) : rects_(rects) {}
    /// Whether rectangle a has a larger width * height than rectangle b; products wrap in 32 bits.
    /// @throws CException code 4 for an index outside the rectangles
    bool operator()(int a, int b) { return Rect::cmpArea((*rects_)[b], (*rects_)[a]); }

 private:
    orvex_991::vector<Rect>* rects_;
};

/// (c.y - a.y) * (b.x - a.x) - (c.x - a.x) * (b.y - a.y) in wrapping 32-bit arithmetic.
int cross(const Point& a, const Point& b, const Point& c);
/// Ascending x, then y.
bool pointCmp(const Point& a, const Point& b);
/// Descending x, then y.
bool pointCmp2(const Point& a, const Point& b);
/// As pointCmp.
bool PosComp(const Point& a, const Point& b);

/// The image operations.
class CImgproc {
 public:
    using U8 = Mat<unsigned char>;  ///< images and masks

    // ---- Colour conversion ----

    /// Grey image from BGR: (107 B + 601 G + 306 R + 512) >> 10 per pixel, integers only.
    ///
    /// Deliberate: the weights sum to 1014, so white gives 253 and no pixel reaches 255
    /// (test: white_maps_to_253).
    /// @param[in]  src  rows x cols x 3; 1 channel is copied; other channel counts give an all-zero image
    /// @param[out] dst  rows x cols x 1; may be src
    /// @throws CException code 3 (dst unchanged)
    /// @checks none; an empty src is reported on standard output and gives an empty dst
    /// @prints one line for an empty or a 1-channel src, then "bgr2gray cost time: %fms"
    /// @cost   one pass
    /// @example_pixels (B, G, R) = (255, 255, 255) -> 253, (0, 0, 255) -> 76, (255, 0, 0) -> 27
    static void bgr2gray(const U8& src, U8& dst);

    /// BGR image from an NV21 camera frame: a luma plane of rows x cols bytes, then (V, U) pairs, one for
    /// each 2 x 2 block. Video range: luma 16 is black; integers with 10 fraction bits, clamped to 0 .. 255.
    ///
    /// @param[in]  yuv   the frame; of a frame with odd extents no byte beyond the pairs that
    ///                   pixels use is read
    /// @param[in]  rows  image rows; nothing is read when 0 or less
    /// @param[in]  cols  image columns
    /// @param[out] dst   rows x cols x 3, initialised before anything else
    /// @throws CException code 3 (dst has the new shape)
    /// @checks none: the pointer and the frame's length are the caller's
    /// @prints "yuv to bgr done (%fms)"
    /// @cost   one pass
    /// @example_pixels (Y, U, V) = (16, 128, 128) -> (0, 0, 0), (235, 128, 128) -> (254, 254, 254)
    static void yuv2bgr(const unsigned char* yuv, int rows, int cols, U8& dst);

    /// Hue 0 .. 180, saturation and value 0 .. 255 from BGR, in integers with 12 fraction bits.
    ///
    /// @param[in]  src  rows x cols x 3. Other channel counts are not refused: pixels start 3 bytes apart
    ///                  when there are fewer, `channels` bytes apart when there are more, and are read as 3
    ///                  consecutive bytes, those beyond the end of the image as 0
    /// @param[out] dst  rows x cols x 3, initialised before anything else; may be src
    /// @throws CException code 3 (dst has the new shape)
    /// @checks none
    /// @prints nothing
    /// @cost   one pass
    /// @example_pixels (B, G, R) = (0, 0, 255) -> (0, 255, 255), (255, 0, 0) -> (120, 255, 255)
    static void bgr2hsv(const U8& src, U8& dst);

    // ---- Statistics ----
    //
    // All look at the first rows * cols bytes, whatever the channels; some refuse more than one channel. The
    // product is taken in wrapping 32 bits. Below 1, as for what a failed mat_create(-2, 3, 1, 0) leaves,
    // nothing is read and the result is that of no pixels.

    /// Spreads the grey levels by their cumulative share c: level k becomes the integer part of
    /// c[k] * 255 + 0.5.
    ///
    /// @param[in]  src  rows x cols x 1
    /// @param[out] dst  rows x cols x 1, initialised after the checks; may be src
    /// @throws CException code 3 (dst has the new shape)
    /// @checks "!src.empty()", "1 == src.channels", code 1 (dst unchanged)
    /// @prints nothing
    /// @cost   two passes
    static void equalizeHist(const U8& src, U8& dst);

    /// Shares of the 256 grey levels.
    ///
    /// Deliberate: counts are divided by rows * cols + 2^-23, so a share can be just below its exact value
    /// (test: of_one_pixel_is_1_divided_by_the_guarded_count).
    /// @param[in]  src  rows x cols x 1
    /// @param[out] h    256 entries; emptied before anything else, the checks included
    /// @throws CException code 3; std::bad_alloc without memory for h
    /// @checks "!src.empty()", "1 == src.channels", code 1
    /// @prints nothing
    /// @cost   one pass
    static void hist(const U8& src, orvex_991::vector<float>& h);

    /// Mean and standard deviation, both 0 for an empty image.
    ///
    /// Deliberate: the variance is the mean square less the square of the mean rounded to single precision,
    /// which can come out just below 0; the deviation of near-constant images is then not a number
    /// (test: a_deviation_that_is_not_a_number_leaves_nothing_above).
    /// @throws CException code 3
    /// @checks none
    /// @prints nothing
    /// @cost   one pass
    static void meanStdDev(const U8& src, float& mean, float& stddev);

    /// The first pixel; 255 of no pixels. Deliberate: not the minimum
    /// (test: minVal_looks_at_the_first_pixel_only).
    ///
    /// @throws CException code 3
    /// @checks "!src.empty()", "1 == src.channels", code 1
    static unsigned char minVal(const U8& src);

    /// 255. Deliberate: not the maximum (test: maxVal_is_255).
    ///
    /// @throws CException code 3
    /// @checks "!src.empty()", "1 == src.channels", code 1
    static unsigned char maxVal(const U8& src);

    /// Number of bytes that are not 0.
    ///
    /// @throws CException code 3
    /// @cost   one pass
    static int countNonZero(const U8& src);

    /// countNonZero as a share of rows * cols; not a number for an empty image.
    static float countNonZeroRate(const U8& src);

    // ---- Thresholds ----

    /// Otsu's threshold of a grey image: the level that best parts its histogram into 0 .. t and t + 1 ..
    /// 255.
    ///
    /// @param[in] src  rows x cols x 1; may be empty
    /// @return t in 0 .. 255; of several equally good levels the lowest; 0 for an empty or
    ///         a constant black image
    /// @throws CException code 3
    /// @checks "1 == src.channels", code 1 (function "otsu")
    /// @prints nothing
    /// @cost   one pass
    static int otsu(const U8& src);

    /// Otsu's threshold over the pixels whose mask byte is not 0.
    ///
    /// @param[in] src   rows x cols x 1
    /// @param[in] mask  rows x cols; its channels are not examined, bytes are taken by flat index
    /// @return as the form without mask; 0 when no pixel is selected
    /// @throws CException code 3
    /// @checks "1 == src.channels", "src.rows == mask.rows", "src.cols == mask.cols", code 1
    /// @prints nothing
    /// @cost   one pass
    static int otsu(const U8& src, const U8& mask);

    /// Binary image: 0 where a pixel is below the threshold, else 255.
    ///
    /// Deliberate: a pixel equal to Otsu's level turns bright, although Otsu counted it as dark
    /// (test: two_levels_give_the_lower_one_and_both_turn_white).
    /// @param[in]     src        rows x cols x 1
    /// @param[in,out] dst        when it has src's rows and cols already it is written in place, whatever its
    ///                           channels, and only the first rows * cols bytes change; otherwise it becomes
    ///                           rows x cols x 1. May be src
    /// @param[in]     threshold  0 .. 255
    /// @throws CException code 3
    /// @checks "!src.empty()", "1 == src.channels", "threshold >= 0 && threshold < 256",
    ///         code 1 (dst unchanged)
    /// @prints "thresholdSeg cost time: %fms"
    /// @cost   one pass
    static void thresholdSeg(const U8& src, U8& dst, int threshold);

    /// Otsu's threshold and its application in one call.
    ///
    /// @param[in]     src      rows x cols x 1
    /// @param[in,out] dst      without mask as in thresholdSeg. Deliberate: with a mask it is not
    ///                         initialised and must already hold rows * cols bytes (test:
    ///                         masked_form_prints_nothing_and_needs_an_output_with_room). May be src
    /// @param[in]     low_th   must be 0
    /// @param[in]     high_th  must be 255
    /// @param[in]     type     bit 8 selects Otsu and must be set, bit 1 inverts the output;
    ///                         others are ignored
    /// @param[in]     mask     empty, or of src's rows and cols; pixels outside it become 0, inverted or not
    /// @return the threshold
    /// @throws CException code 1 "only support otsu binary mode" or
    ///         "currently low_th must be 0  and high_th must be 255" (nothing printed); code 3, also for
    ///         a dst that is too small in the masked form
    /// @checks those of otsu and thresholdSeg; inverting a dst of several channels:
    ///         "1 == channels" (operator~)
    /// @prints without mask the line of thresholdSeg
    /// @cost   two passes
    static int threshold(const U8& src, U8& dst, int low_th, int high_th, int type, const U8& mask);

    /// Binary image by local thresholds: 255 where a pixel is above the mean of the square window around it
    /// plus std_ratio times the standard deviation of the whole image, else 0.
    ///
    /// Windows are cut at the image's edges. Where the deviation is not a number (see
    /// meanStdDev) nothing is above.
    /// @param[in]  src         rows x cols x 1
    /// @param[out] dst         rows x cols x 1; may be src
    /// @param[in]  block_size  the window reaches block_size / 2 (truncated) to every side; -2 and below
    ///                         give windows of no pixels, over which nothing is above
    /// @param[in]  std_ratio   any; negative lowers the thresholds
    /// @param[in]  inverse     swaps 0 and 255
    /// @throws CException code 3 (dst unchanged)
    /// @checks "!src.empty()", "1 == src.channels", code 1
    /// @prints nothing
    /// @cost   O(log block_size) operations on whole rows a row
    static void adaptiveThreshold(const U8& src, U8& dst, int block_size, double std_ratio, bool inverse);

    // ---- Quarter turns and mirroring ----
    //
    // n counts clockwise quarter turns and is reduced by n % 4, which keeps the sign of n.

    /// Mirrors an image left-right when f is odd, then turns it.
    ///
    /// Deliberate: a negative remainder of n gives an all-zero image of the source's extents (test:
    /// a_negative_clockwise_count_gives_zeros_and_a_negative_anticlockwise_one_turns).
    /// @param[in]  src  rows x cols x any channels. When empty, dst keeps src's extent that is not 0
    ///                  (turned with the rest) and its channels; as src and dst at once it becomes
    ///                  0 x 0 x 0
    /// @param[out] dst  may be src
    /// @param[in]  n    clockwise quarter turns
    /// @param[in]  f    odd mirrors
    /// @throws CException code 3 (dst unchanged, but for an empty src)
    /// @checks none
    /// @prints "image rotation (including flip) cost time: %fms"
    /// @cost   one pass
    static void rot90ClockWise_FlipLR(const U8& src, U8& dst, int n, int f);
    /// Left-right mirror image.
    static void flipLR(const U8& src, U8& dst);
    /// n clockwise quarter turns; n below 0 as in rot90ClockWise_FlipLR.
    static void rot90ClockWise(const U8& src, U8& dst, int n);
    /// n anticlockwise quarter turns; any n.
    static void rot90AntiClockWise(const U8& src, U8& dst, int n);

    /// Where a pixel of an image that was turned clockwise n times lay before.
    ///
    /// Deliberate: for n = 1 and 3 the mapping is that from the turned image back (test:
    /// points_map_back_from_the_turned_image); the anticlockwise form is the same. Negative
    /// remainders count as 3.
    /// @param pt    clamped into the image first
    /// @param size  of the image that pt lies in
    /// @param n     clockwise quarter turns that it was turned by
    static Point rot90ClockWise(const Point& pt, const Size& size, int n);
    /// The same as rot90ClockWise. Deliberate
    /// (test: anticlockwise_forms_of_points_and_rectangles_are_the_clockwise_ones).
    static Point rot90AntiClockWise(const Point& pt, const Size& size, int n);

    /// As for points. Deliberate: one pixel further towards the origin than an exact turn (test:
    /// a_half_turn_of_the_whole_image_starts_at_minus_1).
    ///
    /// @checks "img_size.width >= src.x + src.width", "img_size.height >= src.y + src.height", code 1
    static Rect rot90ClockWise(const Rect& src, const Size& img_size, int n);
    /// The same as rot90ClockWise, under its name. Deliberate
    /// (test: anticlockwise_forms_of_points_and_rectangles_are_the_clockwise_ones).
    static Rect rot90AntiClockWise(const Rect& src, const Size& img_size, int n);

    // ---- Resize and affine transforms ----

    /// Scales an image to a size; the sampling is that of warpAffine through the matrix that scales about the
    /// pixel centres, output = f * (source + 0.5) - 0.5.
    ///
    /// @param[in]  src       rows x cols x any channels
    /// @param[out] dst       out_size.height x out_size.width, channels as src; may be src
    /// @param[in]  out_size  in pixels
    /// @param[in]  interp    INTERP_LINEAR; deliberate: any other value gives an all-zero image of that size
    ///                       (test: other_interpolation_gives_zeros_of_the_size)
    /// @throws CException code 3 (dst unchanged)
    /// @checks "!src.empty()", "out_size.width > 0", "out_size.height > 0", code 1
    /// @prints the lines of warpAffine, then "image resize cost time: %fms"
    /// @cost   one pass over the output
    static void resize(const U8& src, U8& dst, const Size& out_size, INTERP_TYPE interp);

    /// Scales both axes by one factor; the extents are truncated, 5 x 3 times 0.5 is 2 x 1.
    ///
    /// @param[in]  src     rows x cols x any channels
    /// @param[out] dst     may be src
    /// @param[in]  scale   above 0
    /// @param[in]  interp  as above
    /// @throws CException code 3 (dst unchanged), also when the output would be too large
    /// @checks "!src.empty()", "scale > 0.f", "src.rows * scale >= 1", "src.cols * scale >= 1", code 1
    /// @prints as above
    /// @cost   as above
    static void resize(const U8& src, U8& dst, float scale, INTERP_TYPE interp);

    /// The 2 x 3 matrix that turns by `angle` degrees, anticlockwise on screen when positive, and scales
    /// about `center`, which maps to itself.
    ///
    /// @param[in] center  (x, y) in pixels
    /// @param[in] angle   degrees
    /// @param[in] scale   above 0
    /// @return [a b (1-a)x-by; -b a (1-a)y+bx] with a = cos * scale and b = sin * scale, in single precision
    /// @checks "scale > 0", code 1
    /// @prints nothing
    static Mat<float> getRotationMatrix2D(Point32f center, float angle, float scale);

    /// Resamples an image through an affine matrix: bilinear with 11-bit weights, truncated.
    ///
    /// An output pixel whose 2 x 2 source neighbourhood lies inside the source is interpolated; any
    /// other copies the source pixel that holds its point, clamped into the image (so do points on the
    /// last row or column).
    /// @param[in]  src           rows x cols x any channels
    /// @param[out] dst           out_size.height x out_size.width, channels as src; may be src
    /// @param[in]  trans_matrix  2 x 3, maps source (x, y) to output; a singular one samples the
    ///                           source at (0, 0)
    /// @param[in]  out_size      in pixels
    /// @param[in]  interp        INTERP_LINEAR; deliberate: with any other value the image is zero and mask
    ///                           stays as it is
    ///                           (test: other_interpolation_gives_zeros_without_the_linear_line)
    /// @param[in,out] mask       null, or a matrix that already holds out_size.width * out_size.height bytes;
    ///                           gets 1 where interpolated and 0 where copied, its shape stays. May be src or dst
    /// @throws CException code 3 (dst unchanged, mask written in part), also when out_size has more pixels than
    ///         can be allocated; an output of which no pixel is written is made whatever its shape
    /// @checks "!src.empty()", "!trans_matrix.empty()", "2 == trans_matrix.rows",
    ///         "3 == trans_matrix.cols", code 1
    /// @prints "linear" when it samples, then "warpaffine cost time: %fms"
    /// @cost   one pass over the output, a few nanoseconds a pixel; less when m01 = m10 = 0
    static void warpAffine(const U8& src, U8& dst, const Mat<float>& trans_matrix, const Size& out_size,
                           INTERP_TYPE interp, U8* mask);

    /// origin + scale * (matrix applied to pt), truncated; the matrix carries source points to output points.
    ///
    /// @checks "trans_mat.rows == 2 && trans_mat.cols == 3", code 1; then those of Mat::at
    /// @prints nothing
    static Point pointAffine(const Point& pt, const Mat<float>& trans_mat, float scale, const Point& origin);

    /// The rectangle between the mapped corners: left edge from the left corners, right edge from the right
    /// ones, and so on. Deliberate: a bounding box for turns of less than a quarter only
    /// (test: a_half_turn_gives_2_minus_the_extents).
    ///
    /// @checks those of pointAffine
    /// @prints nothing
    static Rect rectAffine(const Rect& src, const Mat<float>& trans_mat);

    /// `rect` clipped into an image; one entirely outside collapses onto the nearest edge, 1 pixel thick.
    ///
    /// @checks none
    /// @prints nothing
    static Rect checkRectInMat(const Size& size, const Rect& rect);

    // ---- Binary morphology ----
    //
    // The window of pixel (r, c) is a full rectangle: columns c - width / 2 .. c + width - 1 - width / 2,
    // rows likewise. Deliberate: an even size reaches one pixel further to the left and up
    // (test: an_even_window_spreads_a_pixel_right_and_down).

    /// Dilation: 255 where a pixel of the window is not 0. Outside the image counts as 0.
    ///
    /// @param[in]  src   the first rows * cols bytes are taken as one channel, whatever the channels
    /// @param[out] dst   rows x cols x 1; may be src
    /// @param[in]  size  window, 1 .. cols by 1 .. rows
    /// @throws CException code 3 (dst unchanged)
    /// @checks "!src.empty()", "size.width > 0", "size.height > 0", "src.rows >= size.height",
    ///         "src.cols >= size.width", code 1
    /// @prints "binary image dilate cost time: %fms"
    /// @cost   two passes and O(log width + log height) operations on 64 pixels at a time
    static void dilateBinary(const U8& src, U8& dst, const Size& size);

    /// Erosion: 0 where a pixel of the window is below 128, else 255. Outside the image counts as 255.
    ///
    /// @param[in]  src   rows x cols x 1
    /// @param[out] dst   rows x cols x 1; may be src
    /// @param[in]  size  window, 1 .. cols by 1 .. rows
    /// @throws CException code 3 (dst unchanged)
    /// @checks "!src.empty()", "1 == src.channels", "size.width > 0", "size.height > 0", "src.rows >=
    ///         size.height", "src.cols >= size.width", code 1
    /// @prints nothing
    /// @cost   as dilateBinary
    static void erodeBinary(const U8& src, U8& dst, const Size& size);

    /// Erosion, then dilation; checks, errors and lines of both.
    static void openBinary(const U8& src, U8& dst, const Size& size);

    /// Dilation, then erosion; checks, errors and lines of both.
    static void closeBinary(const U8& src, U8& dst, const Size& size);

    /// One of the four by its MORPH_TYPE.
    ///
    /// @throws CException code 1, nothing printed, for any other type
    /// @checks "!src.empty()", "1 == src.channels", code 1; then those of the operation
    /// @prints the lines of the operation
    static void morphologyBinary(const U8& src, U8& dst, const Size& size, MORPH_TYPE type);

    /// `src` grown by size.width to the left and right and by size.height up and down; dst may be src.
    ///
    /// Deliberate: x and y stop at 0, but width and height grow by the full amount; nothing is clipped to
    /// an image (test: dilateRect_grows_by_the_full_amount_although_it_stops_at_0).
    static void dilateRect(const Rect& src, Rect& dst, const Size& size);

    // ---- Grey morphology ----
    //
    // Windows as in binary morphology.

    /// The largest value of the window; outside the image counts as 0.
    ///
    /// @param[in]  src   rows x cols x 1
    /// @param[out] dst   rows x cols x 1; may be src
    /// @param[in]  size  window, 1 .. cols by 1 .. rows
    /// @throws CException code 3 (dst unchanged)
    /// @checks "!src.empty()", "1 == src.channels", "size.width > 0", "size.height > 0", "src.rows >=
    ///         size.height", "src.cols >= size.width", code 1
    /// @prints nothing
    /// @cost   O(log width + log height) operations on whole rows a row
    static void dilateGray(const U8& src, U8& dst, const Size& size);

    /// The smallest value of the window; outside the image counts as 255. Otherwise as dilateGray.
    static void erodeGray(const U8& src, U8& dst, const Size& size);

    /// The difference of dilateGray and erodeGray, binarised by Otsu's threshold.
    ///
    /// @param[in]  src   rows x cols x 1
    /// @param[out] dst   rows x cols x 1, initialised after the checks; may be src
    /// @param[in]  size  window
    /// @throws CException code 2 for every failure after its own checks, those of dilateGray included
    ///         (their warning is printed); dst is zero then
    /// @checks "!src.empty()", "1 == src.channels", code 1 (dst unchanged)
    /// @prints the line of thresholdSeg, then "morph gradient cost time: %fms"
    /// @cost   both filters, two passes
    static void morphGradient(const U8& src, U8& dst, const Size& size);

    // ---- Components ----

    /// Labels the 4-connected components of a binary image 1 .. num in the raster order
    /// of their first pixels.
    ///
    /// Foreground is every non-zero pixel; deliberate: the first pixel (0, 0) only when it is exactly 255
    /// (test: the_first_pixel_counts_only_when_it_is_255).
    /// @param[in]  src  rows x cols x 1
    /// @param[out] dst  rows x cols x 1: 0 for background, else the component's number
    /// @param[out] num  number of components
    /// @throws CException code 3 (dst has the new shape); std::bad_alloc without memory for the labels (dst is
    ///         zero); code 4 when two labels meet that a scan pixel by pixel would not yet have joined, one of
    ///         them at rows * cols / 2 or above (smallest case: the 2 x 2 image 0, 255, 255, 255; dst holds
    ///         the labels given so far). num is unchanged then
    /// @checks "!src.empty()", "1 == src.channels", code 1 (dst and num unchanged)
    /// @prints "bwlabel cost time: %fms"
    /// @cost   two passes over the runs of the rows
    static void bwlabel(const U8& src, Mat<int>& dst, int& num);

    /// Bounding rectangles of the 4-connected components, larger areas first, and on request their pixels.
    ///
    /// Foreground as in bwlabel. Deliberate: the order among equal areas differs between the two forms.
    /// With pixels it is the one that quick_partition leaves with RectAreaComp_ConnComp, without it is that
    /// of an exchange sort that also exchanges equal neighbours
    /// (test: both_forms_may_order_equal_areas_differently).
    /// @param[in]  src     rows x cols x 1
    /// @param[out] rects   one rectangle a component
    /// @param[out] points  null, or one list a component, parallel to rects, pixels (x, y) in raster order
    /// @throws CException code 2 for every failure after the first check, that of other than one channel and
    ///         that of bwlabel's range included; rects is empty then
    /// @checks "!src.empty()", code 1 (nothing changed)
    /// @prints the lines of bwlabel; with points also "connect component got cost time: %fms"
    /// @cost   one pass over the runs (with points two) and O(n log n) for n components
    static void connectdComponent(const U8& src, orvex_991::vector<Rect>& rects,
                                  orvex_991::vector<orvex_991::vector<Point>>* points);

    /// Groups rectangles into rows of text: bands of image rows that the rectangles cover without a gap, each
    /// rectangle in the band that holds its top edge.
    ///
    /// @param[in]  rects       any order; a height of 0 or less covers nothing but still joins a band
    /// @param[out] row_groups  bands from top to bottom, each sorted by x, equal x in input order
    /// @throws CException code 4 when a rectangle of positive height begins above row 0 (row_groups
    ///         is empty), or when one lies above every band (row_groups is partly filled); code 2
    ///         for any other failure
    /// @checks none
    /// @prints nothing
    /// @cost   O(n log n)
    static void divideComponentsToRows(orvex_991::vector<Rect> rects,
                                       orvex_991::vector<orvex_991::vector<Rect>>& row_groups);

    // ---- Shapes ----

    /// Corners of the convex hull, from the point with the smallest x, then y; the chain of
    /// smaller y comes first.
    ///
    /// Points on edges are left out. Deliberate: products wrap in 32 bits, so hulls are right while
    /// coordinates differ by no more than some 32,000 (test: products_wrap_in_32_bits).
    /// @param[in]  points  any order, repetitions allowed
    /// @param[out] hull    emptied first; may be points
    /// @throws std::bad_alloc without memory for the lists
    /// @checks none
    /// @prints "convexhull done (%fms)"
    /// @cost   O(n log n)
    static void convexHull(const orvex_991::vector<Point>& points, orvex_991::vector<Point>& hull);

    /// Rotated rectangle of least area around the foreground (not 0) of a mask.
    ///
    /// @param[in] mat  the first rows * cols bytes are taken as one channel, whatever the channels
    /// @return without corners when the foreground has no area
    /// @throws CException code 3; std::bad_alloc without memory for the lists
    /// @checks "!mat.empty()", code 1
    /// @prints the line of convexHull, then "min area done (%fms)"
    /// @cost   one pass
    static RotatedRect minAreaRect(const U8& mat);

    /// Rotated rectangle of least area around points, from RotatingCalipers; without corners
    /// when it finds none.
    ///
    /// The center is the mean of the corners; width is the length of the side from corner 0 to 1 and
    /// height that of the next side, both truncated; angle is the direction of the first side in
    /// radians, y pointing up.
    /// @throws std::bad_alloc without memory for the lists
    /// @checks none
    /// @prints nothing
    static RotatedRect minAreaRect(const orvex_991::vector<Point>& points);

    /// Angle of the longer side in radians, in (0, pi], measured from the vertical.
    ///
    /// Deliberate: pi is 3.14159, and a side at exactly 90 degrees gives the angle of one at 0 (test:
    /// exactly_90_degrees_is_kept).
    /// @checks "4 == rotate_rect.pts.size()", code 1
    static float getRotatedRectAngle(const RotatedRect& rotate_rect);

    /// Angle of the line through two points in degrees, in [0, 180), y pointing up; 90 for equal points.
    ///
    /// Deliberate: pi is 3.14159 as a float, so 45 degrees come out as 45.0000381
    /// (test: rising_to_the_right_is_small_and_positive).
    static float calcLineDegree(const Point32f& p1, const Point32f& p2);

    // ---- Detectors ----

    /// Sharpness of an image, higher is sharper: the response of a second-difference filter where the image,
    /// reduced to 15 rows, has contrast.
    ///
    /// @param[in] src  rows x cols x 1 or 3
    /// @return 0 for a uniform image
    /// @throws CException code 3, and code 1 from the operations used for an image so narrow that it is
    ///         reduced to fewer than 3 columns
    /// @checks "!src.empty()", "1 == src.channels || 3 == src.channels", code 1
    /// @prints the lines of bgr2gray (twice), resize (twice) and thresholdSeg, "max diff: %d" before the
    ///         last and "sharpness: %f" at the end
    /// @cost   the conversion of a colour image; for a grey one nothing that grows with its resolution
    static float getSharpness(const U8& src);

    /// Sharpness of the part of an image that a mask selects.
    ///
    /// @param[in] src   rows x cols x 1
    /// @param[in] mask  rows x cols x 1, not 0 selects. Deliberate: once reduced it is sampled at every
    ///                  second byte (test: the_mask_is_sampled_at_every_second_byte)
    /// @return as above; 0 when nothing is selected
    /// @throws CException as above
    /// @checks "!src.empty()", "1 == src.channels", "!mask.empty()", "1 == mask.channels", "src.rows ==
    ///         mask.rows", "src.cols == mask.cols", code 1
    /// @prints as above, bgr2gray once
    /// @cost   nothing that grows with the resolution
    static float getSharpness(const U8& src, const U8& mask);

    /// Saliency of grey levels: the mean absolute distance of a level to those of the pixels
    /// that a mask selects.
    ///
    /// @param[in]  src             rows x cols x 1
    /// @param[out] dst             src with every pixel, masked or not, replaced by its level's
    ///                             saliency; may be src
    /// @param[in]  mask            rows x cols x 1, not 0 selects; may be dst
    /// @param[out] level_saliency  256 bytes, spread over 0 .. 255; 128 throughout when all levels are alike
    /// @throws CException code 1 "saliency detection input format error" (nothing printed) when the
    ///         sizes differ or one image has several channels; code 3; code 2 "saliency detection
    ///         algorithm error" for any other failure. From code 3 and 2 the outputs may have changed
    /// @checks "!src.empty()", "!mask.empty()", code 1
    /// @prints nothing
    /// @cost   two passes and 65,536 multiplications
    static void saliencyDetect(const U8& src, U8& dst, const U8& mask,
                               orvex_991::vector<unsigned char>& level_saliency);

    /// Mask of the red seals in a photograph, found on a copy of at most 320 columns.
    ///
    /// @param[in]  src      rows x cols x 3
    /// @param[out] dst      rows x cols x 1: 255 on a seal; all 0 when nothing is red at all. May be src
    /// @param[in]  relaxed  leaves out the limits of a seal's size relative to the image and of its aspect
    /// @throws CException code 2 "could not find any valid red circle", and the codes of the
    ///         operations used, such as code 1 for an image so wide that the copy has no rows. dst is
    ///         the zero mask then
    /// @checks "!src.empty()", "3 == src.channels", code 1 (dst unchanged)
    /// @prints "begin to red color detection" before anything else, the lines of the operations used,
    ///         for each rescued component "set %d near %d to be true", and "red color detection done
    ///         (%fms)"; without a seal "could not find any valid red circle" behind the prefix "E
    ///         file:line] ", with nothing red nothing
    /// @cost   resizing both ways; the analysis is on at most 320 columns
    static void redColorDetect(const U8& src, U8& dst, bool relaxed);
};

}  // namespace orvex_cv_991

#endif  // ORVEX_991_CV_IMGPROC_H
