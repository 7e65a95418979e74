#include "formats/photo.h"

#include <algorithm>
#include <string_view>

#include "base/failure.h"
#include "formats/file_bytes.h"
#include "formats/jpeg_file.h"
#include "formats/png_file.h"
#include "formats/pnm_file.h"
#include "formats/tiff_file.h"
#include "formats/webp_file.h"

namespace docprep {

using namespace std::string_view_literals;

namespace {

/// Files that are told by what they begin with.
class Beginning {
 public:
    explicit Beginning(const Bytes& bytes)
        : text_(reinterpret_cast<const char*>(bytes.data()), std::min<size_t>(bytes.size(), 64)) {}

    bool has(std::string_view magic, size_t offset = 0) const {
        return text_.size() >= offset && text_.substr(offset, magic.size()) == magic;
    }
    bool is_pnm() const {
        return text_.size() > 2 && text_[0] == 'P' && text_[1] >= '1' && text_[1] <= '7' &&
               "# \t\r\n"sv.find(text_[2]) != text_.npos;
    }
    bool is_tiff() const {
        return has("II*\0"sv) || has("MM\0*"sv) || has("II+\0"sv) || has("MM\0+"sv);  // the latter "big"
    }
    bool is_webp() const { return has("RIFF") && has("WEBP", 8); }
    /// Two letters are too few to tell a BMP from a text; its second header is shorter than 256 bytes.
    bool is_bmp() const { return has("BM") && has("\0\0\0"sv, 15); }

 private:
    std::string_view text_;
};

struct Foreign {
    std::string_view magic;
    size_t offset;
    const char* kind;
};

constexpr Foreign kForeign[] = {
    {"ftypavif", 4, "an AVIF picture"},
    {"ftypavis", 4, "an AVIF picture"},
    {"ftyphe", 4, "a HEIC picture"},  // heic, heix, hevc, heim ...
    {"ftypmif1", 4, "a HEIF picture"},
    {"ftypmsf1", 4, "a HEIF picture"},
    {"ftypcrx ", 4, "a raw camera picture"},
    {"CR\2", 8, "a raw camera picture"},
    {"IIRO", 0, "a raw camera picture"},
    {"IIRS", 0, "a raw camera picture"},
    {"IIU\0"sv, 0, "a raw camera picture"},
    {"FUJIFILMCCD-RAW", 0, "a raw camera picture"},
    {"GIF8", 0, "a GIF"},
    {"%PDF-", 0, "a PDF"},
    {"\0\0\0\fjP  "sv, 0, "a JPEG 2000"},
    {"\xff\x4f\xff\x51", 0, "a JPEG 2000"},
    {"\0\0\0\fJXL "sv, 0, "a JPEG XL"},
    {"\xff\x0a", 0, "a JPEG XL"},
    {"8BPS", 0, "a PSD"},
};

}  // namespace

void refuse_foreign(const std::string& path, const std::string& kind) {
    throw Failure(path, "is " + kind + ", which is not read; convert it to JPEG or PNG first");
}

Photo read_photo(const std::string& path) {
    return decode_photo(read_file(path), path);
}

Photo decode_photo(const Bytes& bytes, const std::string& path) {
    if (bytes.empty()) throw Failure(path, "is empty");
    const Beginning beginning(bytes);
    for (const Foreign& foreign : kForeign)
        if (beginning.has(foreign.magic, foreign.offset)) refuse_foreign(path, foreign.kind);
    if (beginning.is_bmp()) refuse_foreign(path, "a BMP");
    if (beginning.has("\xff\xd8\xff")) return decode_jpeg(bytes, path);
    if (beginning.has("\x89PNG\r\n\x1a\n")) return decode_png(bytes, path);
    if (beginning.is_pnm()) return decode_pnm(bytes, path);
    if (beginning.is_tiff()) return decode_tiff(bytes, path);
    if (beginning.is_webp()) return decode_webp(bytes, path);
    throw Failure(path, "is none of JPEG, PNG, PNM, TIFF and WebP");
}

}  // namespace docprep
