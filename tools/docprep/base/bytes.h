// Bytes of a file, read or to be written.
#ifndef DOCPREP_BYTES_H
#define DOCPREP_BYTES_H

#include <vector>

namespace docprep {

using Bytes = std::vector<unsigned char>;

}  // namespace docprep

#endif  // DOCPREP_BYTES_H
