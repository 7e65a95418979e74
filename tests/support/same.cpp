#include "same.h"

namespace testing_support {

testing::AssertionResult same(const Outcome& library, const Outcome& reference) {
    const std::string difference = Outcome::difference(library, reference);
    if (difference.empty()) return testing::AssertionSuccess();
    return testing::AssertionFailure() << difference;
}

testing::AssertionResult equals_reference(const Operation& operation, const U8& src, bool in_place) {
    Outputs out;
    if (in_place) out.dst = src;
    PlainOutputs expected(out, in_place);
    const reference::Image<reference::Byte> image = to_reference(src);
    const Outcome got = of_library([&] { operation.run(in_place ? out.dst : src, out); });
    const Outcome want = of_reference([&] { operation.plain(image, expected); });
    const testing::AssertionResult result = same(outcome_of(got, out), outcome_of(want, expected));
    if (result) return result;
    return testing::AssertionFailure() << operation.name << " of " << shape_of(src)
                                       << (in_place ? " in place" : "") << ": " << result.message();
}

}  // namespace testing_support
