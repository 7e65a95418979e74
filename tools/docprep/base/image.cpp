#include "base/image.h"

#include "base/failure.h"

namespace docprep {

void require_size(const std::string& path, int64_t rows, int64_t cols) {
    if (rows < 1 || cols < 1) throw Failure(path, "has no pixels");
    if (rows > kMostPixels / cols)
        throw Failure(path, std::to_string(cols) + " x " + std::to_string(rows) +
                                " pixels are too many (limit " + std::to_string(kMostPixels >> 20) + " Mi)");
}

}  // namespace docprep
