#include "formats/nv21_file.h"

#define ZLIB_CONST  // input pointers to const
#include <zlib.h>

#include <algorithm>
#include <cstdlib>
#include <new>

#include "base/failure.h"
#include "base/image.h"

namespace docprep {

namespace {

// Of looks_transposed.
constexpr int64_t kSamples = 10000;
constexpr int64_t kClearlyMore = 2;

bool is_gzip(const Bytes& bytes) {
    return bytes.size() >= 2 && bytes[0] == 0x1f && bytes[1] == 0x8b;
}

class Inflater {
 public:
    explicit Inflater(const Bytes& in) {
        constexpr int kGzip = 16;  // added to the window: a gzip header and nothing else
        stream_.next_in = in.data();
        stream_.avail_in = static_cast<uInt>(in.size());  // kMostFileBytes < 2^32
        if (inflateInit2(&stream_, MAX_WBITS + kGzip) != Z_OK) throw std::bad_alloc();
    }
    ~Inflater() { inflateEnd(&stream_); }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    /// Fills `out` as far as the data goes and returns zlib's code.
    int fill(Bytes& out) {
        stream_.next_out = out.data();
        stream_.avail_out = static_cast<uInt>(out.size());
        return inflate(&stream_, Z_FINISH);
    }
    size_t filled() const { return stream_.total_out; }
    size_t left() const { return stream_.avail_in; }

 private:
    z_stream stream_{};
};

Bytes decompress(const Bytes& in, size_t expected, const std::string& path) {
    Bytes out(expected + 1);  // one more, to notice a longer frame
    Inflater inflater(in);
    const int code = inflater.fill(out);
    if (code == Z_MEM_ERROR) throw std::bad_alloc();
    if (code == Z_DATA_ERROR || code == Z_NEED_DICT) throw Failure(path, "not a readable gzip file");
    // Z_BUF_ERROR: either side ran out.
    if (code != Z_STREAM_END && inflater.filled() <= expected) throw Failure(path, "truncated gzip file");
    if (inflater.left() > 0 && code == Z_STREAM_END) throw Failure(path, "has data after the gzip'ed frame");
    out.resize(inflater.filled());
    return out;
}

}  // namespace

int64_t nv21_bytes(const Extents& size) {
    const int64_t rows = size.rows;
    return size.cols * (rows + (rows + 1) / 2);
}

Bytes decode_nv21(Bytes content, const std::string& path, const Extents& size) {
    require_size(path, size.rows, size.cols);
    if (size.cols % 2 != 0)
        throw Failure(path, "NV21 frames with an odd number of columns are not supported");
    const int64_t expected = nv21_bytes(size);
    Bytes frame = std::move(content);
    if (frame.empty()) throw Failure(path, "is empty");
    const auto length = static_cast<size_t>(expected);
    // The first pixels of a frame may be as gzip's signature; its length tells.
    if (frame.size() != length && is_gzip(frame)) frame = decompress(frame, length, path);
    const int64_t have = static_cast<int64_t>(frame.size());
    if (have == expected) return frame;
    throw Failure(path, (have < expected ? "is shorter than the " : "is longer than the ") +
                            std::to_string(expected) + " bytes of an NV21 frame of " + as_text(size));
}

bool looks_transposed(const Bytes& frame, const Extents& size) {
    const int64_t pixels = int64_t{size.cols} * size.rows;
    const int64_t n = pixels - std::max(size.cols, size.rows);  // those that have both neighbours
    // Odd, so that widths of powers of two do not give the same columns all the time.
    const int64_t step = std::max<int64_t>(1, n / kSamples) | 1;
    int64_t as_given = 0, transposed = 0;  // sums of differences
    for (int64_t i = 0; i < n; i += step) {
        const unsigned char* const pixel = frame.data() + i;
        as_given += std::abs(pixel[0] - pixel[size.cols]);
        transposed += std::abs(pixel[0] - pixel[size.rows]);
    }
    return as_given > kClearlyMore * transposed;
}

}  // namespace docprep
