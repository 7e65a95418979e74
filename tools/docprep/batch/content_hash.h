// Whether a file is still the one that it was.
#ifndef DOCPREP_CONTENT_HASH_H
#define DOCPREP_CONTENT_HASH_H

#include <string>

#include "base/bytes.h"

namespace docprep {

/// XXH3 of 128 bits as 32 hexadecimal digits, as `xxhsum -H2` prints it. It tells changed files, however they were
/// changed; it is no seal against somebody who wants two files to look alike.
std::string content_hash(const Bytes& content);

}  // namespace docprep

#endif  // DOCPREP_CONTENT_HASH_H
