// Actions on three matrices, beside the reference's images.
#include <algorithm>

#include "containers.h"
#include "driver.h"

namespace fuzzing {
namespace {

using orvex_cv_991::Mat;

constexpr int kMostElements = 600;

template <class T>
void act(int action, Mat<T>& a, Mat<T>& b, const Shape& shape, int value) {
    switch (action) {
        case 0:
            return a.mat_create(shape.rows, shape.cols, shape.channels, value);
        case 1:
            return a.init(shape.rows, shape.cols, shape.channels, value);
        case 2:
            return void(a = b);
        case 3:
            return void(a = b.clone());
        case 4:
            return void(a = static_cast<T>(value));
        case 5:
            return void(~a);
        case 6:
            return void(a.at(value % 16, value / 16) = static_cast<T>(value));
        case 7:
            return a.swap(b);
        default: {
            Mat<T> taken(std::move(a));
            if (a.rows != 0 || a.channels != 0 || a.data || a.step != 0) fail("Mat is moved wrongly");
            a = std::move(taken);
        }
    }
}

// A copy of what has a shape but no pixels fails, and leaves the shape.
template <class T>
void copy(const Image<T>& from, Image<T>& to) {
    const Image<T> kept = from;
    to.create(kept.rows, kept.cols, kept.channels, 0);
    if (to.data.empty()) return;
    to.allocated = kept.allocated;
    to.data = kept.data;
    if (!kept.allocated) throw reference::Failure{3, ""};
}

template <class T>
void act_plainly(int action, Image<T>& a, Image<T>& b, const Shape& shape, int value) {
    switch (action) {
        case 0:
        case 1:
            return a.create(shape.rows, shape.cols, shape.channels, value);
        case 2:
            if (&a != &b) copy(b, a);
            return;
        case 3: {
            Image<T> clone;
            copy(b, clone);
            return void(a = clone);
        }
        case 4:
            return a.fill(static_cast<T>(value));
        case 5:
            // Bit by bit, whatever the elements are.
            reference::check(a.channels == 1, "1 == channels", "operator~", "cv_mat.cpp");
            for (T& element : a.data) {
                unsigned char* const bytes = reinterpret_cast<unsigned char*>(&element);
                std::transform(bytes, bytes + sizeof element, bytes,
                               [](unsigned char byte) { return static_cast<unsigned char>(~byte); });
            }
            return;
        case 6:
            return void(a.at(value % 16, value / 16) = static_cast<T>(value));
        case 7:
            return std::swap(a, b);
        default:
            return;
    }
}

template <class T>
void run(Reader& reader) {
    Mat<T> held[3];
    Image<T> expected[3];
    while (reader.left() > 0) {
        const int action = reader.range(0, 8), value = reader.byte();
        const size_t to = static_cast<size_t>(reader.range(0, 2)),
                     from = static_cast<size_t>(reader.range(0, 2));
        const Shape shape = action < 2 ? reader.shape(1, kMostElements) : Shape{0, 0, 0};
        // at() is the caller's to use where there are pixels.
        if (action == 6 && !expected[to].sound()) continue;
        auto got = of_library([&] { act(action, held[to], held[from], shape, value); });
        auto want = of_reference([&] { act_plainly(action, expected[to], expected[from], shape, value); });
        for (size_t k = 0; k < 3; ++k) {
            got.with("matrix", held[k]);
            want.with("matrix", expected[k]);
        }
        require_same(got, want,
                     call("action on matrices", action, to, from, shape.rows, shape.cols, shape.channels));
    }
}

}  // namespace

void matrices(Reader& reader, int element) {
    if (element == 0) return run<unsigned char>(reader);
    if (element == 1) return run<float>(reader);
    run<int>(reader);
}

}  // namespace fuzzing
