#include "formats/exif.h"

#include <libexif/exif-data.h>

#include <memory>
#include <new>

#include "base/bytes.h"

namespace docprep {

int exif_orientation(const unsigned char* block, size_t n) {
    const std::unique_ptr<ExifData, void (*)(ExifData*)> data(exif_data_new(), exif_data_unref);
    if (!data) throw std::bad_alloc();
    // Otherwise libexif adds and rewrites entries while it reads.
    exif_data_unset_option(data.get(), EXIF_DATA_OPTION_FOLLOW_SPECIFICATION);
    exif_data_load_data(data.get(), block, static_cast<unsigned>(n));
    // Directory 0 describes the picture, the others its thumbnail and the camera.
    const ExifEntry* entry = exif_content_get_entry(data->ifd[EXIF_IFD_0], EXIF_TAG_ORIENTATION);
    if (!entry || entry->format != EXIF_FORMAT_SHORT || entry->components != 1 || entry->size < 2) return 0;
    const int orientation = exif_get_short(entry->data, exif_data_get_byte_order(data.get()));
    return orientation >= 1 && orientation <= 8 ? orientation : 0;
}

int tiff_orientation(const unsigned char* block, size_t n) {
    Bytes signed_block = {'E', 'x', 'i', 'f', 0, 0};
    signed_block.insert(signed_block.end(), block, block + n);
    return exif_orientation(signed_block.data(), signed_block.size());
}

}  // namespace docprep
