// One line a case: its name and the digest of all that a call did, by the library or by the reference.
#ifndef ORVEX_TESTS_GOLDEN_RECORDER_H
#define ORVEX_TESTS_GOLDEN_RECORDER_H

#include <cinttypes>
#include <cstdio>
#include <string>

#include "outcome.h"

namespace golden {

using testing_support::Outcome;

class Recorder {
 public:
    /// @param by_reference  whose outcomes to print
    explicit Recorder(bool by_reference) : by_reference_(by_reference) {}

    /// @param library    what the library did, run when it is asked for
    /// @param reference  what the reference did
    template <class Library, class Reference>
    void record(const std::string& name, Library library, Reference reference) const {
        const Outcome outcome = by_reference_ ? reference() : library();
        std::printf("%s %016" PRIx64 "\n", name.c_str(), outcome.digest());
    }

 private:
    bool by_reference_;
};

}  // namespace golden

#endif  // ORVEX_TESTS_GOLDEN_RECORDER_H
