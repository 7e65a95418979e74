// Dark print on light paper as a binary picture.
#ifndef DOCPREP_BINARISE_H
#define DOCPREP_BINARISE_H

#include <string>
#include <vector>

#include "base/image.h"

namespace docprep {

enum class BinariseMethod {
    kOtsu,     ///< one threshold for the whole picture
    kAdaptive  ///< dark is what is darker than its surroundings
};

/// The names of the methods, by their values.
std::vector<std::string> binarise_method_names();

/// How a picture is binarised: the method and what it measured.
struct Binarisation {
    BinariseMethod method = BinariseMethod::kOtsu;
    int threshold = 0;    ///< by Otsu: the brightest level that counts as dark
    int block = 0;        ///< adaptive: extent of the square of surroundings, odd
    double contrast = 0;  ///< adaptive: how many levels below the mean of its surroundings print is at least
};

/// Measures a grey picture.
Binarisation measure_for(BinariseMethod method, const Image& gray);

/// Dark pixels of a grey picture become 255, the others 0. What was measured on one picture may be applied to
/// another one of the same scene. Prints as the library does.
void binarise(const Image& gray, const Binarisation& how, Image& binary);

}  // namespace docprep

#endif  // DOCPREP_BINARISE_H
