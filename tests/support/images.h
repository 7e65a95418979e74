// Inputs for the tests: shapes, contents, and one image in both worlds.
#ifndef ORVEX_TESTS_SUPPORT_IMAGES_H
#define ORVEX_TESTS_SUPPORT_IMAGES_H

#include <cstdint>
#include <initializer_list>
#include <random>
#include <string>
#include <vector>

#include "cv_imgproc.h"
#include "types.h"

namespace testing_support {

using U8 = orvex_cv_991::Mat<unsigned char>;

/// Repeatable on every standard library: only the engine's raw output is used.
class Random {
 public:
    explicit Random(uint64_t seed) : engine_(seed) {}
    uint64_t bits() { return engine_(); }
    /// Uniform in low .. high, both inclusive.
    int range(int low, int high) {
        const uint64_t span = static_cast<uint64_t>(int64_t{high} - low + 1);
        return static_cast<int>(low + static_cast<int64_t>(engine_() % span));
    }
    bool chance(int percent) { return range(0, 99) < percent; }
    template <class T>
    T pick(std::initializer_list<T> of) {
        return of.begin()[range(0, static_cast<int>(of.size()) - 1)];
    }

 private:
    std::mt19937_64 engine_;
};

/// 1-channel image from its rows.
U8 image(std::initializer_list<std::initializer_list<int>> rows);
/// Image of one value.
U8 filled(int rows, int cols, int channels, int value);

enum class Content {
    kNoise,
    kConstant,
    kSparse,
    kDense,
    kHalf,
    kCheckerboard,
    kStripes,
    kSpiral,
    kText,
    kGradient,
    kFewLevels,
    kCount
};

/// Bytes of any value in the given pattern; binary patterns use 0 and a mixture of non-zero values.
U8 content(Random& random, int rows, int cols, int channels, Content kind);
/// A pattern, a shape of up to 67 a side and now and then a larger prime, drawn at random.
U8 any_image(Random& random, int channels);
U8 any_image(Random& random, int channels, int rows, int cols);
/// As any_image, every byte 0 or 255.
U8 any_binary(Random& random);
/// A matrix that an output may have held before: another shape, other channels, or nothing.
U8 any_previous(Random& random);
/// Sides from 1 to 67 and the primes 101 and 127.
int any_side(Random& random);

/// A dark-on-light page with lines of blocky words, as camera frames of documents look after conversion.
U8 text_page(int rows, int cols, uint64_t seed);

template <class T>
reference::Image<T> to_reference(const orvex_cv_991::Mat<T>& m) {
    reference::Image<T> image;
    image.rows = m.rows;
    image.cols = m.cols;
    image.channels = m.channels;
    image.dims_rows = m.dims_rows;
    image.dims_cols = m.dims_cols;
    image.step = m.step;
    image.elem_size = m.elem_size;
    image.allocated = m.data != nullptr;
    const int n = reference::wrapping_product(reference::wrapping_product(m.cols, m.rows), m.channels);
    if (m.data) image.data.assign(m.data, m.data + n);
    return image;
}

/// How many of the first rows * cols bytes are `value`.
int count(const U8& m, int value);

/// "rows x cols x channels", for messages.
std::string shape_of(const U8& m);

/// Matrices that mat_create can make but that no loop over rows and columns fits: counts that wrap, extents
/// that are negative in pairs, blocks without elements.
std::vector<U8> odd_matrices();

}  // namespace testing_support

#endif  // ORVEX_TESTS_SUPPORT_IMAGES_H
