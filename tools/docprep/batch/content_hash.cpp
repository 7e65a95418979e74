#include "batch/content_hash.h"

#include <xxhash.h>

#include <cstdio>

namespace docprep {

std::string content_hash(const Bytes& content) {
    const XXH128_hash_t hash = XXH3_128bits(content.data(), content.size());
    char text[33];
    std::snprintf(text, sizeof text, "%016llx%016llx", static_cast<unsigned long long>(hash.high64),
                  static_cast<unsigned long long>(hash.low64));
    return text;
}

}  // namespace docprep
