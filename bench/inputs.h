// What the operations are measured on.
#ifndef ORVEX_BENCH_INPUTS_H
#define ORVEX_BENCH_INPUTS_H

#include <cstdint>
#include <string>
#include <vector>

#include "cv_imgproc.h"

namespace bench {

using U8 = orvex_cv_991::Mat<unsigned char>;

/// Images of one size. Binary ones hold 255 on 0.
struct Inputs {
    int rows = 0, cols = 0;
    U8 photo;       ///< B, G, R: a photograph of a page
    U8 gray;        ///< the photograph
    U8 text;        ///< binary page of small print, about one pixel in eight set
    U8 half_noise;  ///< every second pixel set, at random
    U8 noise;       ///< every tenth pixel set, at random
    U8 blob;        ///< one turned filled rectangle, such as a page in a mask
    std::vector<unsigned char> nv21;
};

/// Reads WxH. False unless both are 64 or more.
bool parse_size(const std::string& text, int& cols, int& rows);

/// @param photo_file JPEG or PNG, scaled to the size
Inputs make_inputs(int rows, int cols, const std::string& photo_file);

/// Points at random in a disc.
orvex_991::vector<orvex_cv_991::Point> disc_of_points(int n);

/// Rectangles of letters in `rows` lines of text.
orvex_991::vector<orvex_cv_991::Rect> letters(int n, int rows);

}  // namespace bench

#endif  // ORVEX_BENCH_INPUTS_H
