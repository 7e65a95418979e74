#include "output/picture_output.h"

#include <filesystem>
#include <utility>

#include "output/output_files.h"
#include "output/standard_output.h"

namespace docprep {

namespace fs = std::filesystem;

std::optional<PictureFormat> format_for(const std::string& output) {
    const auto by_name = format_of_name(output);
    if (by_name) return by_name;
    std::error_code ignored;
    const fs::file_type type = fs::status(output, ignored).type();
    if (output == kStandardOutput || type == fs::file_type::fifo || type == fs::file_type::character)
        return PictureFormat::kPng;
    return std::nullopt;
}

std::vector<std::string> write_picture(const std::string& output, Bytes content, const std::string& input) {
    if (output == kStandardOutput) {
        print(content);
        return {};
    }
    const fs::path path(output);
    OutputFiles files(path.parent_path().string());
    files.add(path.filename().string(), std::move(content));
    files.publish(input);
    return files.paths();
}

}  // namespace docprep
