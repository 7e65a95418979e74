#include "formats/pnm_file.h"

#include "base/failure.h"
#include "formats/samples.h"

namespace docprep {

namespace {

bool is_space(int c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool is_digit(int c) {
    return c >= '0' && c <= '9';
}

/// Walks through the file.
class Cursor {
 public:
    Cursor(const Bytes& bytes, const std::string& path) : bytes_(bytes), path_(path) {}

    int64_t left() const { return static_cast<int64_t>(bytes_.size() - at_); }
    const unsigned char* rest() const { return bytes_.data() + at_; }
    /// The next byte; -1 at the end.
    int peek() const { return at_ < bytes_.size() ? bytes_[at_] : -1; }
    int take() {
        if (at_ == bytes_.size()) truncated();
        return bytes_[at_++];
    }

    /// @param n  at most left()
    void skip(int64_t n) { at_ += static_cast<size_t>(n); }

    /// White space, and comments up to the end of their line.
    void skip_space() {
        while (is_space(peek()) || peek() == '#') {
            if (take() == '#') skip_line();
        }
    }

    void skip_line() {
        while (peek() != '\n' && peek() >= 0) ++at_;
    }

    int64_t number() {
        skip_space();
        if (peek() < 0) truncated();
        if (!is_digit(peek())) unreadable("a number is missing");
        int64_t value = 0;
        while (is_digit(peek())) {
            value = 10 * value + (take() - '0');
            if (value > INT32_MAX) unreadable("a number is too large");
        }
        return value;
    }

    /// Up to the next white space, which stays.
    std::string word() {
        skip_space();
        std::string text;
        while (peek() >= 0 && !is_space(peek())) text.push_back(static_cast<char>(take()));
        return text;
    }

    [[noreturn]] void truncated() const { throw Failure(path_, "truncated PNM"); }
    [[noreturn]] void unreadable(const std::string& reason) const {
        throw Failure(path_, "not a readable PNM (" + reason + ")");
    }

 private:
    const Bytes& bytes_;
    const std::string& path_;
    size_t at_ = 0;
};

/// How the samples lie.
enum class Raster { kBitDigits, kNumbers, kBits, kBytes };

struct Header {
    Raster raster = Raster::kBytes;
    bool one_is_black = false;
    int64_t cols = 0;
    int64_t rows = 0;
    int64_t channels = 1;
    int64_t most = 1;  ///< the value of white

    int64_t samples_a_row() const { return cols * channels; }
    int sample_bytes() const { return most > 255 ? 2 : 1; }
    /// The fewest bytes that the rows can be stored in.
    int64_t least_bytes() const {
        switch (raster) {
            case Raster::kBitDigits:
                return rows * samples_a_row();
            case Raster::kNumbers:
                return 2 * rows * samples_a_row() - 1;  // with a space between each two
            case Raster::kBits:
                return rows * ((samples_a_row() + 7) / 8);
            case Raster::kBytes:
                break;
        }
        return rows * samples_a_row() * sample_bytes();
    }
};

/// The lines of a PAM's header.
void read_named_numbers(Cursor& cursor, Header& header) {
    header.channels = header.most = 0;
    for (std::string name = cursor.word(); name != "ENDHDR"; name = cursor.word()) {
        if (name == "WIDTH")
            header.cols = cursor.number();
        else if (name == "HEIGHT")
            header.rows = cursor.number();
        else if (name == "DEPTH")
            header.channels = cursor.number();
        else if (name == "MAXVAL")
            header.most = cursor.number();
        else if (name == "TUPLTYPE")
            cursor.skip_line();  // DEPTH says as much
        else if (name.empty())
            cursor.truncated();
        else
            cursor.unreadable("an unknown line in its header");
    }
}

Header read_header(Cursor& cursor, const std::string& path) {
    Header header;
    cursor.take();
    const int kind = cursor.take() - '0';
    if (kind == 7) {
        read_named_numbers(cursor, header);
    } else {
        header.channels = kind == 3 || kind == 6 ? 3 : 1;
        header.one_is_black = kind == 1 || kind == 4;
        header.raster = kind == 1   ? Raster::kBitDigits
                        : kind <= 3 ? Raster::kNumbers
                        : kind == 4 ? Raster::kBits
                                    : Raster::kBytes;
        header.cols = cursor.number();
        header.rows = cursor.number();
        if (!header.one_is_black) header.most = cursor.number();
    }
    require_size(path, header.rows, header.cols);
    if (header.most < 1 || header.most > 65535) cursor.unreadable("its greatest value is not 1 to 65535");
    if (header.channels < 1 || header.channels > 4) cursor.unreadable("it has not 1 to 4 samples a pixel");
    if (!is_space(cursor.take())) cursor.unreadable("no white space after its header");
    return header;
}

class RowReader {
 public:
    RowReader(Cursor& cursor, const Header& header) : cursor_(cursor), header_(header) {
        const auto most = static_cast<unsigned>(header.most);
        for (unsigned value = 0; value <= most; ++value)
            levels_.push_back(to_8_bits(header.one_is_black ? most - value : value, most));
    }

    void read(unsigned char* to) {
        const int64_t n = header_.samples_a_row();
        const unsigned char* const row = cursor_.rest();
        switch (header_.raster) {
            case Raster::kBitDigits:
                for (int64_t i = 0; i < n; ++i) to[i] = level(bit_digit());
                return;
            case Raster::kNumbers:
                for (int64_t i = 0; i < n; ++i) to[i] = level(cursor_.number());
                return;
            case Raster::kBits:
                for (int64_t i = 0; i < n; ++i) to[i] = level(row[i / 8] >> (7 - i % 8) & 1);
                cursor_.skip((n + 7) / 8);
                return;
            case Raster::kBytes:
                break;
        }
        if (header_.sample_bytes() == 1)
            for (int64_t i = 0; i < n; ++i) to[i] = level(row[i]);
        else
            for (int64_t i = 0; i < n; ++i) to[i] = level(row[2 * i] << 8 | row[2 * i + 1]);
        cursor_.skip(n * header_.sample_bytes());
    }

 private:
    unsigned char level(int64_t value) const {
        if (value > header_.most) cursor_.unreadable("a sample is above its greatest value");
        return levels_[static_cast<size_t>(value)];
    }

    /// Digits of a plain PBM need no space between them.
    int64_t bit_digit() {
        cursor_.skip_space();
        const int c = cursor_.take();
        if (c != '0' && c != '1') cursor_.unreadable("a pixel is neither 0 nor 1");
        return c - '0';
    }

    Cursor& cursor_;
    const Header& header_;
    Bytes levels_;
};

}  // namespace

Photo decode_pnm(const Bytes& bytes, const std::string& path) {
    Cursor cursor(bytes, path);
    const Header header = read_header(cursor, path);
    if (cursor.left() < header.least_bytes()) cursor.truncated();

    Photo photo;
    photo.format = "PNM";
    Image& pixels = photo.pixels;
    pixels.mat_create(static_cast<int>(header.rows), static_cast<int>(header.cols),
                      static_cast<int>(header.channels), 0);
    RowReader reader(cursor, header);
    for (int64_t row = 0; row < header.rows; ++row) {
        unsigned char* const to = pixels.data + row * header.samples_a_row();
        reader.read(to);
        if (pixels.channels >= 3) swap_red_and_blue(to, static_cast<size_t>(header.cols), pixels.channels);
    }
    if (pixels.channels % 2 == 0) pixels = on_white(pixels);
    return photo;
}

Bytes encode_pnm(const Image& image) {
    const std::string header = (image.channels == 1 ? "P5\n" : "P6\n") + std::to_string(image.cols) + " " +
                               std::to_string(image.rows) + "\n255\n";
    const size_t pixels = static_cast<size_t>(image.rows) * static_cast<size_t>(image.cols);
    const size_t n = pixels * static_cast<size_t>(image.channels);
    Bytes out;
    out.reserve(header.size() + n);
    out.assign(header.begin(), header.end());
    out.insert(out.end(), image.data, image.data + n);
    if (image.channels == 3) swap_red_and_blue(out.data() + header.size(), pixels, 3);
    return out;
}

}  // namespace docprep
