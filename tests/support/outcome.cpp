#include "outcome.h"

namespace testing_support {

std::string Outcome::difference(const Outcome& library, const Outcome& reference) {
    if (library.thrown != reference.thrown)
        return "thrown: [" + library.thrown + "], expected [" + reference.thrown + "]";
    if (library.printed != reference.printed)
        return "printed:\n" + library.printed + "expected:\n" + reference.printed;
    if (library.outputs_.size() != reference.outputs_.size()) return "the test compares different outputs";
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
        return name + " differs at byte " + std::to_string(at) + " of its description (" +
               std::to_string(got.size()) + " bytes, expected " + std::to_string(want.size()) +
               "): " + byte(got) + ", expected " + byte(want);
    }
    return {};
}

uint64_t Outcome::digest() const {
    uint64_t hash = 0xcbf29ce484222325;  // FNV-1a, 64 bits
    const auto add = [&hash](const std::string& text) {
        // The length first, so that no text can pass for the end of one and the beginning of the next.
        std::string length;
        scalar(static_cast<uint32_t>(text.size()), length);
        for (const std::string* const part : {&static_cast<const std::string&>(length), &text})
            for (const char c : *part) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
    };
    add(thrown);
    add(printed);
    for (const auto& [name, bytes] : outputs_) {
        add(name);
        add(bytes);
    }
    return hash;
}

}  // namespace testing_support
