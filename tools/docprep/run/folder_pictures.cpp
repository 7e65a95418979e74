#include "run/folder_pictures.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <utility>

#include "pipeline/reduced.h"

namespace docprep {

namespace fs = std::filesystem;

namespace {

/// Every name that a file beside result.json may have.
std::vector<std::string> file_names() {
    std::vector<std::string> names = {kLogFile, kTimingsFile, kReportFile, kThumbnailFile};
    for (const Picture kind :
         {Picture::kPage, Picture::kBinary, Picture::kRows, Picture::kSeal, Picture::kSaliency})
        for (const char* ending : {".png", ".jpg"}) names.push_back(picture_name(kind) + std::string(ending));
    return names;
}

/// Which of these the last run into the folder has left, as its result.json says: others are not ours.
std::vector<std::string> files_of_last_run(const fs::path& folder) {
    constexpr size_t kLongEnough = 4096;  // to the end of the second line
    std::vector<std::string> files;
    std::error_code ignored;
    if (!fs::is_regular_file(folder / kResultFile, ignored)) return files;
    std::ifstream result(folder / kResultFile, std::ios::binary);
    std::string start(kLongEnough, '\0');
    result.read(start.data(), static_cast<std::streamsize>(start.size()));
    const size_t begin = start.find("\n  \"files\": [");
    if (begin == std::string::npos) return files;
    const std::string line = start.substr(begin, start.find('\n', begin + 1) - begin);
    for (const std::string& name : file_names())
        if (line.find('"' + name + '"') != std::string::npos) files.push_back(name);
    return files;
}

Image thumbnail(const Image& page) {
    constexpr double kSide = 320;  // of the longer one: sharp on a phone with two columns of them
    return reduced(page, kSide / std::max(page.cols, page.rows));
}

}  // namespace

std::vector<std::string> picture_files_names() {
    return {"png", "jpeg", "none"};
}

bool FolderPictures::wants(Picture kind) const {
    return kind == Picture::kPage || (files_ != PictureFiles::kNone && !for_report_alone(kind));
}

void FolderPictures::take(Picture kind, Image picture, int dots_per_inch) {
    if (kind == Picture::kPage && thumbnail_)
        begin(kThumbnailFile, thumbnail(picture), PictureFormat::kJpeg, 0);
    const bool lossless = files_ == PictureFiles::kPng || kind == Picture::kPage || kind == Picture::kBinary;
    const std::string name = picture_name(kind) + std::string(lossless ? ".png" : ".jpg");
    begin(name, std::move(picture), lossless ? PictureFormat::kPng : PictureFormat::kJpeg, dots_per_inch);
}

void FolderPictures::begin(const std::string& name, Image picture, PictureFormat format, int dots_per_inch) {
    names_.push_back(name);
    encoders_.begin(name, std::move(picture), format, dots_per_inch);
}

void remove_others_of_last_run(const std::string& folder, const std::vector<std::string>& names,
                               OutputFiles& files) {
    for (const std::string& name : files_of_last_run(folder))
        if (std::find(names.begin(), names.end(), name) == names.end()) files.remove(name);
}

}  // namespace docprep
