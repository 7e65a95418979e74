#include "outcome.h"

namespace testing_support {

testing::AssertionResult same(const Outcome& library, const Outcome& reference) {
    if (library.thrown != reference.thrown)
        return testing::AssertionFailure()
               << "thrown: [" << library.thrown << "], expected [" << reference.thrown << "]";
    if (library.printed != reference.printed)
        return testing::AssertionFailure() << "printed:\n"
                                           << library.printed << "expected:\n"
                                           << reference.printed;
    if (library.outputs_.size() != reference.outputs_.size())
        return testing::AssertionFailure() << "the test compares different outputs";
    for (size_t k = 0; k < library.outputs_.size(); ++k) {
        const auto& [name, got] = library.outputs_[k];
        const std::string& want = reference.outputs_[k].second;
        if (got == want) continue;
        size_t at = 0;
        while (at < got.size() && at < want.size() && got[at] == want[at]) ++at;
        const auto byte = [at](const std::string& text) {
            return at < text.size() ? std::to_string(static_cast<unsigned char>(text[at]))
                                    : std::string("nothing");
        };
        return testing::AssertionFailure()
               << name << " differs at byte " << at << " of its description (" << got.size()
               << " bytes, expected " << want.size() << "): " << byte(got) << ", expected " << byte(want);
    }
    return testing::AssertionSuccess();
}

}  // namespace testing_support
