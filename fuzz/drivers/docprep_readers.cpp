// What docprep reads: pictures of all formats, the orientation in EXIF blocks, NV21 frames as they are
// and compressed. The first byte says which; of frames the next two their extents; the file's own bytes
// follow. Small pictures are also written and read again.
#include <algorithm>

#include "base/failure.h"
#include "base/orientation.h"
#include "driver.h"
#include "formats/exif.h"
#include "formats/nv21_file.h"
#include "formats/photo.h"
#include "formats/picture_format.h"

namespace fuzzing {
namespace {

using docprep::Bytes;
using docprep::Failure;

void frame(Reader& reader) {
    docprep::Extents size{reader.byte() % 40, reader.byte() % 40};
    if (reader.seldom()) size = {reader.integer() & 1023, reader.integer() & 1023};
    const Bytes bytes = docprep::decode_nv21(reader.rest(), "frame", size);
    if (static_cast<int64_t>(bytes.size()) != docprep::nv21_bytes(size))
        fail("decode_nv21 gives another length");
    docprep::looks_transposed(bytes, size);
}

/// What is written must be read as it was, by formats that lose nothing.
void write_and_read(const docprep::Image& image) {
    using docprep::PictureFormat;
    for (const PictureFormat format : {PictureFormat::kPng, PictureFormat::kPnm, PictureFormat::kTiff}) {
        const Bytes bytes = docprep::encode_picture(image, format, "photo", 300);
        const docprep::Image again = docprep::decode_photo(bytes, "photo").pixels;
        if (again.rows != image.rows || again.cols != image.cols || again.channels != image.channels)
            fail(call("another shape from format", static_cast<int>(format)));
        const int n = image.rows * image.cols * image.channels;
        if (!std::equal(image.data, image.data + n, again.data))
            fail(call("other pixels from format", static_cast<int>(format)));
    }
    docprep::encode_picture(image, PictureFormat::kJpeg, "photo");
}

void photo(const Bytes& bytes) {
    docprep::Photo photo = docprep::decode_photo(bytes, "photo");
    const int rows = photo.pixels.rows, cols = photo.pixels.cols, channels = photo.pixels.channels;
    if (rows < 1 || cols < 1 || (channels != 1 && channels != 3) || !photo.pixels.data)
        fail("a photograph of no pixels");
    if (photo.orientation < 1 || photo.orientation > 8) fail(call("orientation", photo.orientation));
    if (int64_t{rows} * cols > 1 << 16) return;  // only the reading is of interest
    if (rows * cols <= 1 << 10) write_and_read(photo.pixels);
    docprep::apply_orientation(photo.pixels, photo.orientation);
    const bool turned = photo.orientation > 4;
    if (photo.pixels.rows != (turned ? cols : rows) || photo.pixels.channels != channels)
        fail("turned to other extents");
}

void run(Reader& reader) {
    const int kind = reader.byte() % 4;
    try {
        if (kind == 0) photo(reader.rest());
        if (kind == 1 || kind == 2) frame(reader);
        if (kind == 3) {
            const Bytes block = reader.rest();
            const int orientation = docprep::exif_orientation(block.data(), block.size());
            if (orientation < 0 || orientation > 8) fail(call("exif_orientation gives", orientation));
        }
    } catch (const Failure& failure) {
        if (*failure.what() == '\0' || failure.file().empty()) fail("a failure without file or reason");
    }
}

const Registration registration("docprep_readers", run);

}  // namespace
}  // namespace fuzzing
