#include "run/input.h"

#include <CLI/CLI.hpp>
#include <utility>

#include "base/failure.h"
#include "cli/options.h"
#include "cv_imgproc.h"
#include "formats/file_bytes.h"
#include "formats/nv21_file.h"
#include "formats/photo.h"

namespace docprep {

using orvex_cv_991::CImgproc;

namespace {

Photo decode_frame(Bytes content, const std::string& path, const Extents& size, LibraryLog& log,
                   Steps& steps) {
    Photo photo;
    Bytes frame;
    steps.run("read", [&] { frame = decode_nv21(std::move(content), path, size); });
    const LibraryLog::Redirection redirection(log);
    steps.run("colour", [&] { CImgproc::yuv2bgr(frame.data(), size.rows, size.cols, photo.pixels); });
    photo.format = "NV21";
    if (looks_transposed(frame, size))
        photo.warnings.push_back("looks as if it had the extents " + as_text({size.rows, size.cols}) +
                                 " instead of " + as_text(size));
    return photo;
}

}  // namespace

void add_input(CLI::App& app, InputOptions& options) {
    app.add_option(
           "photo", options.file,
           "JPEG, PNG, TIFF, WebP or PNM file, or with --nv21 a raw camera frame; - is standard input")
        ->required();
    add_extents(app, "--nv21", options.frame_size, "The input is an NV21 frame of W columns and H rows");
}

Image read_input(const InputOptions& options, LibraryLog& log, Steps& steps, Source& source) {
    Bytes content;
    steps.run("read", [&] { content = read_file(options.opened()); });
    if (options.seen) options.seen(content);
    Photo photo;
    if (options.frame_size)
        photo = decode_frame(std::move(content), options.file, *options.frame_size, log, steps);
    else
        steps.run("read", [&] { photo = decode_photo(content, options.file); });
    content = {};
    source.file = options.file;
    source.format = photo.format;
    for (const std::string& warning : photo.warnings)
        if (options.warn)
            options.warn(warning);
        else
            complain(options.file.c_str(), ("warning: " + warning).c_str());
    bring_upright(photo.pixels, photo.orientation, source, steps);
    return std::move(photo.pixels);
}

}  // namespace docprep
