// Pictures on their way to files.
#ifndef DOCPREP_PICTURE_ENCODERS_H
#define DOCPREP_PICTURE_ENCODERS_H

#include <future>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/image.h"
#include "formats/picture_format.h"
#include "output/output_files.h"

namespace docprep {

/// Encodes pictures, on threads of its own beside the work that goes on.
class PictureEncoders {
 public:
    /// @param beside  false: each picture when it is asked for, by whoever waits
    explicit PictureEncoders(bool beside) : beside_(beside) {}

    /// @throws std::bad_alloc
    void begin(const std::string& name, Image picture, PictureFormat format, int dots_per_inch);

    /// Waits for all pictures and adds them in the order of begin().
    /// @throws what an encoder throws
    void finish(OutputFiles& files);

 private:
    struct Encoding {
        std::string name;
        std::future<Bytes> content;
    };

    bool beside_;
    std::vector<Encoding> encodings_;
};

}  // namespace docprep

#endif  // DOCPREP_PICTURE_ENCODERS_H
