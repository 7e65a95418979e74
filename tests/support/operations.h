// Every operation on an image, under its name, with the plain reference beside it: for tests that
// must leave none out.
#ifndef ORVEX_TESTS_SUPPORT_OPERATIONS_H
#define ORVEX_TESTS_SUPPORT_OPERATIONS_H

#include <functional>
#include <string>
#include <vector>

#include "cv_imgproc.h"
#include "images.h"
#include "outcome.h"
#include "shapes.h"
#include "types.h"

namespace testing_support {

/// All that operations write. What an operation leaves alone keeps what stands here.
struct Outputs {
    U8 dst = filled(2, 3, 2, 7);
    U8 mask = filled(7, 8, 1, 7);
    orvex_cv_991::Mat<int> labels;
    int number = -5;
    float first = -5, second = -5;
    orvex_991::vector<float> shares = orvex_991::vector<float>(3, 1.0f);
    orvex_991::vector<unsigned char> levels = orvex_991::vector<unsigned char>(3, 1);
    orvex_991::vector<orvex_cv_991::Rect> rects;
    orvex_991::vector<orvex_991::vector<orvex_cv_991::Point>> points;
    orvex_cv_991::RotatedRect rotated;

    Outputs();
};

/// The same in the reference's world.
struct PlainOutputs {
    reference::Image<reference::Byte> dst, mask;
    reference::Image<int> labels;
    int number;
    float first, second;
    reference::List<float> shares;
    reference::List<reference::Byte> levels;
    reference::List<reference::Rect> rects;
    reference::List<reference::List<reference::Point>> points;
    reference::RotatedRect rotated;
    bool in_place;  ///< whether dst is the source

    PlainOutputs(const Outputs& outputs, bool is_in_place);
};

/// What leaves an operation when memory fails, and what its outputs then hold.
enum class OutOfMemory {
    kCode3,             ///< code 3, outputs unchanged
    kCode3Initialised,  ///< code 3, outputs may have been initialised
    kCode2,             ///< code 2, outputs may have been initialised
    kCode2Or3,  ///< either, depending on what could not be allocated; outputs may have been initialised
    kBadAlloc,  ///< std::bad_alloc from a list that the caller gets; code 3 from an image
    kNothing    ///< allocates nothing
};

struct Operation {
    std::string name;
    OutOfMemory out_of_memory;
    std::function<void(const U8& src, Outputs& out)> run;
    std::function<void(const reference::Image<reference::Byte>& src, PlainOutputs& out)> plain;
};

const std::vector<Operation>& image_operations();

/// What a call did, with the outputs that it left.
Outcome outcome_of(Outcome call, const Outputs& out);
Outcome outcome_of(Outcome call, const PlainOutputs& out);

}  // namespace testing_support

#endif  // ORVEX_TESTS_SUPPORT_OPERATIONS_H
