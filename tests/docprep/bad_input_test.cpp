// One table of bad and odd inputs: what docprep answers to each, and that nothing is left behind.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <functional>

#include "commands.h"
#include "encoders.h"

using docprep::Bytes;

namespace {

namespace fs = std::filesystem;

/// An input and what becomes of it.
struct Row {
    const char* what;
    /// Makes the input and returns its path, or further arguments with the path last.
    std::function<Names(const TemporaryFolder&)> make;
    std::string reason;  ///< of the refusal, behind "FILE: "; empty: it is read
};

int squares(int row, int col, int) {
    return page_of_squares(row, col);
}

Bytes jpeg_of(JpegRequest request) {
    request.rows = kPageRows;
    request.cols = kPageCols;
    return make_jpeg(request, squares);
}

/// @param colour_type  of libpng: 0 grey, 2 RGB, 3 palette, 4 grey and alpha, 6 RGB and alpha
PngRequest png(int colour_type, int depth = 8) {
    PngRequest request;
    request.colour_type = colour_type;
    request.depth = depth;
    request.rows = kPageRows;
    request.cols = kPageCols;
    return request;
}

Bytes png_of(const PngRequest& request) {
    return make_png(request, [&](int row, int col, int k) {
        const bool is_alpha = (request.colour_type == 4 && k == 1) || k == 3;
        if (is_alpha) return 255;
        return request.depth == 16 ? page_of_squares(row, col) * 257 : page_of_squares(row, col);
    });
}

Bytes tiff_of(TiffRequest request) {
    request.rows = kPageRows;
    request.cols = kPageCols;
    request.strip_rows = 16;
    return make_tiff(request, [&](int row, int col, int) {
        const int level = page_of_squares(row, col);
        return request.bits == 1 ? level > 128 : request.bits == 16 ? level * 257 : level;
    });
}

Bytes webp_of(WebpRequest request) {
    request.rows = kPageRows;
    request.cols = kPageCols;
    return make_webp(request, squares);
}

/// A frame of the page.
Bytes frame() {
    Bytes bytes;
    for (int row = 0; row < kPageRows; ++row)
        for (int col = 0; col < kPageCols; ++col)
            bytes.push_back(static_cast<unsigned char>(page_of_squares(row, col)));
    bytes.resize(bytes.size() * 3 / 2, 128);
    return bytes;
}

Bytes first_of(Bytes bytes, size_t n) {
    bytes.resize(n);
    return bytes;
}

Bytes without_last(Bytes bytes, size_t n) {
    bytes.resize(bytes.size() - n);
    return bytes;
}

Bytes with_flipped(Bytes bytes, size_t at, unsigned char bits = 1) {
    bytes[at] ^= bits;
    return bytes;
}

using Maker = std::function<Names(const TemporaryFolder&)>;

/// A file of this content; made only when its row's turn comes.
Maker file(const std::string& name, const std::function<Bytes()>& content) {
    return [=](const TemporaryFolder& folder) { return Names{folder.write(name, content())}; };
}

Maker text(const std::string& content) {
    return file("photo", [=] { return bytes_of(content); });
}

/// The same as an NV21 frame.
Maker frame_file(const std::string& extents, const std::function<Bytes()>& content) {
    return [=](const TemporaryFolder& folder) {
        return Names{"--nv21", extents, folder.write("frame.nv21", content())};
    };
}

/// The page under a name of its own.
Maker named(const std::string& name) {
    return file(name, [] { return jpeg_of({}); });
}

JpegRequest jpeg(JpegKind kind) {
    JpegRequest request;
    request.kind = kind;
    return request;
}

TiffRequest tiff(int compression) {
    TiffRequest request;
    request.compression = compression;
    return request;
}

std::string not_read(const std::string& kind) {
    return "is " + kind + ", which is not read; convert it to JPEG or PNG first";
}

/// Every row is refused with this reason, or read.
void expect_rows(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const TemporaryFolder folder;
        Names arguments = row.make(folder);
        const std::string path = arguments.back();
        const Names before = folder.content();
        arguments.insert(arguments.end(), {"-o", folder.path("out"), "--stages", "rows"});
        const Outcome outcome = docprep_with(arguments);
        if (row.reason.empty()) {
            EXPECT_EQ(0, outcome.exit_code) << outcome.err;
            EXPECT_TRUE(fs::exists(folder.path("out/result.json")));
            continue;
        }
        std::string shown = path;
        for (char& c : shown)
            if (c == '\n') c = '?';
        expect_failure(outcome, shown, row.reason);
        EXPECT_EQ(before, folder.content());
    }
}

constexpr const char* kUnknown = "is none of JPEG, PNG, PNM, TIFF and WebP";

}  // namespace

TEST(bad_input, jpegs) {
    expect_rows({
        {"whole", file("p.jpg", [] { return jpeg_of({}); }), ""},
        {"signature only", file("p.jpg", [] { return first_of(jpeg_of({}), 3); }),
         "truncated JPEG (Premature end of JPEG file)"},
        {"cut in its headers", file("p.jpg", [] { return first_of(jpeg_of({}), 200); }),
         "truncated JPEG (Premature end of JPEG file)"},
        {"half", file("p.jpg", [] { return first_of(jpeg_of({}), jpeg_of({}).size() / 2); }),
         "truncated JPEG (Premature end of JPEG file)"},
        {"100 bytes short", file("p.jpg", [] { return without_last(jpeg_of({}), 100); }),
         "truncated JPEG (Premature end of JPEG file)"},
        {"end marker cut off", file("p.jpg", [] { return without_last(jpeg_of({}), 2); }), ""},
        {"junk behind its end",
         file("p.jpg",
              [] {
                  Bytes bytes = jpeg_of({});
                  bytes.insert(bytes.end(), 1000, 0xff);
                  return bytes;
              }),
         ""},
        {"progressive",
         file("p.jpg",
              [] {
                  JpegRequest request;
                  request.progressive = true;
                  return jpeg_of(request);
              }),
         ""},
        {"CMYK", file("p.jpg", [] { return jpeg_of(jpeg(JpegKind::kCmyk)); }), ""},
        {"two unnamed components", file("p.jpg", [] { return jpeg_of(jpeg(JpegKind::kUnnamed2)); }),
         "JPEGs with 2 unnamed colour components are not supported"},
        {"arithmetic-coded",
         file("p.jpg",
              [] {
                  JpegRequest request;
                  request.arithmetic = true;
                  return jpeg_of(request);
              }),
         "arithmetic-coded JPEGs are not supported"},
        {"30000 x 30000",
         file("p.jpg",
              [] {
                  Bytes bytes = jpeg_of({});
                  patch_jpeg_size(bytes, 30000, 30000);
                  return bytes;
              }),
         "30000 x 30000 pixels are too many (limit 256 Mi)"},
        {"0 columns",
         file("p.jpg",
              [] {
                  Bytes bytes = jpeg_of({});
                  patch_jpeg_size(bytes, 10, 0);
                  return bytes;
              }),
         "not a readable JPEG (Empty JPEG image (DNL not supported))"},
        {"1 x 1",
         file("p.jpg",
              [] {
                  JpegRequest request;
                  request.rows = request.cols = 1;
                  return make_jpeg(request, squares);
              }),
         ""},
    });
}

TEST(bad_input, pngs) {
    PngRequest interlaced = png(0);
    interlaced.interlaced = true;
    PngRequest palette = png(3);
    for (int i = 0; i < 256; ++i) palette.palette.push_back({i, i, i, 255});
    expect_rows({
        {"16 bits", file("p.png", [] { return png_of(png(2, 16)); }), ""},
        {"palette", file("p.png", [=] { return png_of(palette); }), ""},
        {"alpha", file("p.png", [] { return png_of(png(6)); }), ""},
        {"grey and alpha", file("p.png", [] { return png_of(png(4)); }), ""},
        {"interlaced", file("p.png", [=] { return png_of(interlaced); }), ""},
        {"half", file("p.png", [] { return first_of(png_of(png(0)), png_of(png(0)).size() / 2); }),
         "truncated PNG (Premature end of file)"},
        {"without IEND", file("p.png", [] { return without_last(png_of(png(0)), 12); }),
         "truncated PNG (Premature end of file)"},
        {"rotten IHDR", file("p.png", [] { return with_flipped(png_of(png(0)), 17); }),
         "not a readable PNG (IHDR: CRC error)"},
        {"rotten pixels",
         file("p.png", [] { return with_flipped(png_of(png(0)), png_of(png(0)).size() - 17); }),
         "not a readable PNG (IDAT: incorrect data check)"},
        {"wrong check sum",
         file("p.png", [] { return with_flipped(png_of(png(0)), png_of(png(0)).size() - 13); }),
         "not a readable PNG (IDAT: CRC error)"},
        {"0 x 0",
         file("p.png",
              [] {
                  Bytes bytes = png_of(png(0));
                  patch_png_size(bytes, 0, 0);
                  return bytes;
              }),
         "not a readable PNG (Invalid IHDR data)"},
        {"30000 x 30000",
         file("p.png",
              [] {
                  Bytes bytes = png_of(png(0));
                  patch_png_size(bytes, 30000, 30000);
                  return bytes;
              }),
         "30000 x 30000 pixels are too many (limit 256 Mi)"},
        {"16000 x 16000 in a tiny file",
         file("p.png",
              [] {
                  Bytes bytes = make_png({}, squares);
                  patch_png_size(bytes, 16000, 16000);
                  return bytes;
              }),
         "truncated PNG (too short for its 16000 x 16000 pixels)"},
        {"1 x 1",
         file("p.png",
              [] {
                  PngRequest request;
                  request.rows = request.cols = 1;
                  return make_png(request, squares);
              }),
         ""},
    });
}

TEST(bad_input, tiffs) {
    constexpr int kLzw = 5, kFax4 = 4;
    TiffRequest fax = tiff(kFax4);
    fax.bits = 1;
    TiffRequest pages;
    pages.pages = 2;
    TiffRequest real;
    real.bits = 16;
    real.sample_format = 3;
    expect_rows({
        {"16 bits",
         file("p.tif",
              [] {
                  TiffRequest request;
                  request.bits = 16;
                  return tiff_of(request);
              }),
         ""},
        {"fax", file("p.tif", [=] { return tiff_of(fax); }), ""},
        {"two pages", file("p.tif", [=] { return tiff_of(pages); }), ""},
        {"header only", file("p.tif", [] { return first_of(tiff_of({}), 8); }),
         "not a readable TIFF (TIFF: Can not read TIFF directory count)"},
        {"floating point", file("p.tif", [=] { return tiff_of(real); }),
         "TIFFs with samples that are not whole numbers from 0 are not supported"},
        {"rotten LZW",
         file("p.tif",
              [] {
                  Bytes bytes = tiff_of(tiff(kLzw));
                  std::fill(bytes.begin() + 8, bytes.begin() + 40, static_cast<unsigned char>(0xff));
                  return bytes;
              }),
         "not a readable TIFF (Using code not yet in table)"},
    });
}

TEST(bad_input, webps) {
    WebpRequest lossy;
    lossy.lossless = false;
    WebpRequest film;
    film.film = true;
    expect_rows({
        {"lossless", file("p.webp", [] { return webp_of({}); }), ""},
        {"lossy", file("p.webp", [=] { return webp_of(lossy); }), ""},
        {"half", file("p.webp", [=] { return first_of(webp_of(lossy), webp_of(lossy).size() / 2); }),
         "truncated WebP"},
        {"header only", file("p.webp", [] { return first_of(webp_of({}), 12); }), "truncated WebP"},
        {"rotten", file("p.webp", [] { return with_flipped(webp_of({}), 20, 0xff); }), "not a readable WebP"},
        {"film", file("p.webp", [=] { return webp_of(film); }), "WebP films are not supported"},
    });
}

TEST(bad_input, pnms) {
    expect_rows({
        {"comments", text("P5 # grey\n2 # columns\n1\n255\nab"), ""},
        {"missing data", text("P5 100 100 255\nabc"), "truncated PNM"},
        {"huge number", text("P5 123456789012345678901234567890 1 255\na"),
         "not a readable PNM (a number is too large)"},
        {"30000 x 30000", text("P6 30000 30000 255\nabc"),
         "30000 x 30000 pixels are too many (limit 256 Mi)"},
        {"negative", text("P5 -1 1 255\na"), "not a readable PNM (a number is missing)"},
        {"0 x 0", text("P4 0 0\n"), "has no pixels"},
        {"1 x 1", text("P1 1 1 1"), ""},
    });
}

TEST(bad_input, what_is_no_picture) {
    expect_rows({
        {"empty", text(""), "is empty"},
        {"one byte", text("x"), kUnknown},
        {"a letter", text("Dear friends"), kUnknown},
        {"zeros", file("photo", [] { return Bytes(100000); }), kUnknown},
        {"HEIC", text(std::string("\0\0\0\x18", 4) + "ftypheic"), not_read("a HEIC picture")},
        {"GIF", text("GIF89a"), not_read("a GIF")},
        {"PDF", text("%PDF-1.4"), not_read("a PDF")},
    });
}

TEST(bad_input, what_is_no_file) {
    const auto link_to = [](const std::string& target) {
        return [=](const TemporaryFolder& folder) {
            folder.write("p.jpg", jpeg_of({}));
            fs::create_symlink(target, folder.path("link"));
            return Names{folder.path("link")};
        };
    };
    expect_rows({
        {"folder", [](const TemporaryFolder& folder) { return Names{folder.path("")}; }, "is a folder"},
        {"device", [](const TemporaryFolder&) { return Names{"/dev/zero"}; }, "is a device"},
        {"standard input that is a device", [](const TemporaryFolder&) { return Names{"-"}; }, "is a device"},
        {"missing", [](const TemporaryFolder& folder) { return Names{folder.path("no.jpg")}; },
         "No such file or directory"},
        {"file as a folder",
         [](const TemporaryFolder& folder) { return Names{folder.write("p.jpg", jpeg_of({})) + "/p.jpg"}; },
         "Not a directory"},
        {"link", link_to("p.jpg"), ""},
        {"dangling link", link_to("none.jpg"), "No such file or directory"},
        {"loop of links", link_to("link"), "Too many levels of symbolic links"},
        {"link to a folder", link_to("."), "is a folder"},
        {"too long a name",
         [](const TemporaryFolder& folder) { return Names{folder.path(std::string(300, 'n'))}; },
         "File name too long"},
    });
}

TEST(bad_input, odd_names) {
    expect_rows({
        {"spaces", named(" my page .jpg"), ""},
        {"line feed", named("my\npage.jpg"), ""},
        {"not UTF-8", named("Stra\xdf\x65.jpg"), ""},
        {"no ending", named("page"), ""},
        {"another format's ending", named("page.png"), ""},
        {"a name of 255 bytes", named(std::string(251, 'n') + ".jpg"), ""},
        {"line feed, and no picture", file("my\nletter.jpg", [] { return bytes_of("Dear friends"); }),
         kUnknown},
    });
}

TEST(bad_input, a_leading_dash_needs_a_folder_or_two_dashes_before_it) {
    const TemporaryFolder folder;
    write_page(folder, "-page.jpg");
    const std::string enter = "cd '" + folder.path("") + "' &&";
    EXPECT_EQ(0, docprep_after(enter, {"-o", "one", "--", "-page.jpg"}).exit_code);
    EXPECT_EQ(0, docprep_after(enter, {"./-page.jpg", "-o", "two"}).exit_code);
    const Outcome outcome = docprep_after(enter, {"-page.jpg", "-o", "three"});
    EXPECT_EQ(64, outcome.exit_code);
    expect_one_line(outcome.err);
    EXPECT_FALSE(fs::exists(folder.path("three")));
}

TEST(bad_input, frames) {
    const std::string extents = std::to_string(kPageCols) + "x" + std::to_string(kPageRows);
    const std::string wanted = "the 90000 bytes of an NV21 frame of " + extents;
    expect_rows({
        {"whole", frame_file(extents, frame), ""},
        {"capital X", frame_file("300 X 200", frame), ""},
        {"width and height swapped", frame_file("200x300", frame), ""},
        {"odd width", frame_file("301x200", frame),
         "NV21 frames with an odd number of columns are not supported"},
        {"empty", frame_file(extents, [] { return Bytes(); }), "is empty"},
        {"too short", frame_file(extents, [] { return without_last(frame(), 1); }),
         "is shorter than " + wanted},
        {"too long", frame_file(extents, [] { return Bytes(90001); }), "is longer than " + wanted},
        {"too many pixels", frame_file("30000x30000", frame),
         "30000 x 30000 pixels are too many (limit 256 Mi)"},
        {"gzip by its content", frame_file(extents, [] { return gzip(frame()); }), ""},
        {"rotten gzip",
         frame_file(extents, [] { return with_flipped(gzip(frame()), gzip(frame()).size() - 6); }),
         "not a readable gzip file"},
        {"cut gzip", frame_file(extents, [] { return without_last(gzip(frame()), 20); }),
         "truncated gzip file"},
        {"bomb", frame_file(extents, [] { return gzip(Bytes(50000000)); }), "is longer than " + wanted},
        {"a JPEG", frame_file(extents, [] { return jpeg_of({}); }), "is shorter than " + wanted},
    });
}

TEST(bad_input, pipes_are_read) {
    const TemporaryFolder folder;
    const std::string page = write_page(folder, "page.jpg");
    const std::string pipe = folder.path("pipe");
    ASSERT_EQ(0, mkfifo(pipe.c_str(), 0600));
    const Names into_out = {"-o", folder.path("out"), "--stages", "rows"};
    const auto arguments = [&](const std::string& input) {
        Names all = {input};
        all.insert(all.end(), into_out.begin(), into_out.end());
        return all;
    };
    const Outcome from_pipe = docprep_after("cat '" + page + "' >'" + pipe + "' &", arguments(pipe));
    EXPECT_EQ(0, from_pipe.exit_code) << from_pipe.err;
    const Outcome from_input = docprep_after("", arguments("-"), "<'" + page + "'");
    EXPECT_EQ(0, from_input.exit_code) << from_input.err;
    const Outcome empty = docprep_after(": >'" + pipe + "' &", arguments(pipe));
    expect_failure(empty, pipe, "is empty");
    const Outcome closed = docprep_after("", arguments("-"), "<&-");
    expect_failure(closed, "-", "is a device");  // in its place there is /dev/null
}

TEST(bad_input, what_may_not_be_read_is_the_systems_reason) {
    const TemporaryFolder folder;
    const std::string page = write_page(folder, "page.jpg");
    ASSERT_EQ(0, chmod(page.c_str(), 0));
    ASSERT_EQ(0, chmod(folder.path("").c_str(), 0755));
    Names command = {DOCPREP_PROGRAM, page, "-o", folder.path("out")};
    if (geteuid() == 0)  // may read everything
        command.insert(command.begin(), {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"});
    const Outcome outcome = run_program(command);
    if (outcome.exit_code == 126 || outcome.exit_code == 127) GTEST_SKIP() << outcome.err;
    expect_failure(outcome, page, "Permission denied");
    EXPECT_EQ(Names{"page.jpg"}, folder.content());
}
