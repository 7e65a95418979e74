#include "output/picture_encoders.h"

#include <memory>
#include <utility>

namespace docprep {

void PictureEncoders::begin(const std::string& name, Image picture, PictureFormat format, int dots_per_inch) {
    // Shared, so that pixels outlive an attempt at a thread that is not to be had.
    auto pixels = std::make_shared<Image>(std::move(picture));
    const auto encode = [pixels, format, dots_per_inch, name] {
        return encode_picture(*pixels, format, name, dots_per_inch);
    };
    // With both policies, work that gets no thread is done by whoever waits for it.
    const auto policy = beside_ ? std::launch::async | std::launch::deferred : std::launch::deferred;
    encodings_.push_back({name, std::async(policy, encode)});
}

void PictureEncoders::finish(OutputFiles& files) {
    for (Encoding& encoding : encodings_) files.add(encoding.name, encoding.content.get());
    encodings_.clear();
}

}  // namespace docprep
