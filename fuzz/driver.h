// What drivers have in common: a driver makes one call from the bytes that it is given, on the library and
// on the plain reference, and stops the program where they differ.
#ifndef ORVEX_FUZZ_DRIVER_H
#define ORVEX_FUZZ_DRIVER_H

#include <string>
#include <utility>
#include <vector>

#include "outcome.h"
#include "reader.h"

namespace fuzzing {

using reference::Byte;
using reference::Image;
using reference::List;
using testing_support::of_library;
using testing_support::of_reference;
using testing_support::Outcome;
using testing_support::to_reference;

struct Driver {
    const char* name;
    void (*run)(Reader&);
};

/// Every driver of the program.
std::vector<Driver>& drivers();

/// Puts a driver into the list, as a namespace-scope object of its file.
struct Registration {
    Registration(const char* name, void (*run)(Reader&)) { drivers().push_back({name, run}); }
};

/// Says what is wrong and aborts.
[[noreturn]] void fail(const std::string& what);

/// Fails unless both did the same; `what` names the operation, its shapes and its arguments.
void require_same(const Outcome& library, const Outcome& plain, const std::string& what);

/// Not-a-number as such: its sign and payload are the processor's.
float canonical(float value);

/// "name(1, 2)"
template <class... Numbers>
std::string call(const std::string& name, Numbers... numbers) {
    std::string text;
    ((text += (text.empty() ? "" : ", ") + std::to_string(numbers)), ...);
    return name + "(" + text + ")";
}

/// Calls both forms of an operation from image to image. What it must leave alone, the source and what `dst`
/// held at a failure, is compared too.
template <class Library, class Plain>
void compare(const std::string& what, U8 src, U8 previous, bool in_place, Library library, Plain plain) {
    const std::string shapes = what + " of " + testing_support::shape_of(src) + (in_place ? " in place" : "");
    const Image<Byte> image = to_reference(src);
    Image<Byte> expected = in_place ? image : to_reference(previous);
    U8& dst = in_place ? src : previous;
    Outcome got = of_library([&] { library(std::as_const(src), dst); });
    Outcome want = of_reference([&] { plain(image, expected); });
    got.with("dst", dst).with("src", src);
    want.with("dst", expected).with("src", in_place ? expected : image);
    require_same(got, want, shapes);
}

/// Calls both forms of an operation from an image to a number.
template <class Library, class Plain>
void compare_number(const std::string& what, const U8& src, Library library, Plain plain) {
    using Number = decltype(library(src));
    const Image<Byte> image = to_reference(src);
    Number number{1}, expected{1};
    Outcome got = of_library([&] { number = library(src); });
    Outcome want = of_reference([&] { expected = plain(image); });
    if constexpr (std::is_same_v<Number, float>) {
        number = canonical(number);
        expected = canonical(expected);
    }
    got.with("number", number).with("src", src);
    want.with("number", expected).with("src", image);
    require_same(got, want, what + " of " + testing_support::shape_of(src));
}

}  // namespace fuzzing

#endif  // ORVEX_FUZZ_DRIVER_H
