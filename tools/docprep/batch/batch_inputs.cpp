#include "batch/batch_inputs.h"

#include <glob.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <optional>
#include <set>
#include <system_error>
#include <utility>

#include "formats/picture_format.h"

namespace docprep {

namespace fs = std::filesystem;

namespace {

bool ends_with(const std::string& text, const std::string& end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

bool is_frame_name(const std::string& name) {
    return ends_with(name, ".nv21") || ends_with(name, ".nv21.gz");
}

fs::path absolute_path(const fs::path& file) {
    std::error_code error;
    const fs::path folder = fs::absolute(file).parent_path();
    const fs::path resolved = fs::weakly_canonical(folder, error);
    return ((error ? folder : resolved) / file.filename()).lexically_normal();
}

/// The place of a "**/" that stands for folders; npos without one.
size_t any_folders(const std::string& pattern) {
    for (size_t at = pattern.find("**/"); at != std::string::npos; at = pattern.find("**/", at + 1))
        if (at == 0 || pattern[at - 1] == '/') return at;
    return std::string::npos;
}

/// A pattern that is this text and nothing else.
std::string escaped(const std::string& text) {
    std::string pattern;
    for (const char c : text) {
        if (std::string("*?[\\").find(c) != std::string::npos) pattern += '\\';
        pattern += c;
    }
    return pattern;
}

/// How many folders a path has behind its first `length` characters.
size_t folders_behind(const std::string& path, size_t length) {
    return static_cast<size_t>(
        std::count(path.begin() + static_cast<std::ptrdiff_t>(length), path.end(), '/'));
}

class Search {
 public:
    explicit Search(const InputSearch& search) : search_(search) {}

    void argument(const std::string& text) {
        std::error_code ignored;
        const bool is_there = fs::exists(fs::symlink_status(text, ignored));
        if (is_there || !pattern(text, std::nullopt)) name(text, 0);
    }

    void list(std::FILE* file) {
        const char end = search_.null ? '\0' : '\n';
        char* line = nullptr;
        size_t room = 0;
        for (ssize_t length; (length = getdelim(&line, &room, static_cast<unsigned char>(end), file)) > 0;) {
            const std::unique_ptr<char, decltype(&std::free)> freed(std::exchange(line, nullptr), std::free);
            const size_t n = static_cast<size_t>(length);
            room = 0;
            const std::string text(freed.get(), n - (freed.get()[n - 1] == end ? 1 : 0));
            if (!text.empty()) name(text, 0);
        }
        std::free(line);
        if (std::ferror(file)) throw Failure("standard input", system_reason(errno));
    }

    BatchInputs take() { return std::move(inputs_); }

 private:
    /// @param depth  folders of the path that are kept
    void name(const std::string& text, size_t depth) {
        std::error_code ignored;
        if (fs::is_directory(text, ignored))
            folder(text, depth);
        else
            photograph(text, depth);
    }

    /// @param searched  the length of the path of the folder below which any folders are searched, with its slash
    /// @return whether anything matches
    bool pattern(const std::string& text, std::optional<size_t> searched) {
        const size_t at = any_folders(text);
        if (at == std::string::npos) {
            const std::vector<std::string> matches = glob_matches(text);
            for (const std::string& match : matches)
                name(match, searched ? folders_behind(match, *searched) : 0);
            return !matches.empty();
        }
        const std::string rest = text.substr(at + std::string("**/").size());
        if (at == 0) return below("", rest, searched.value_or(0));
        bool found = false;
        for (const std::string& match : glob_matches(text.substr(0, at)))
            found |= below(match, rest, searched.value_or(match.size()));
        return found;
    }

    /// Those of a pattern in a folder and in all folders below it.
    /// @param path  ends with a slash, or is empty
    bool below(const std::string& path, const std::string& rest, size_t searched) {
        bool found = pattern(escaped(path) + rest, searched);
        for (const fs::directory_entry& entry : entries_of(path.empty() ? "." : path))
            if (is_searched(entry))
                found |= below(path + entry.path().filename().string() + '/', rest, searched);
        return found;
    }

    static std::vector<std::string> glob_matches(const std::string& pattern) {
        glob_t matches{};
        const auto free_matches = [](glob_t* found) { globfree(found); };
        const std::unique_ptr<glob_t, decltype(free_matches)> freed(&matches, free_matches);
        const int result = glob(pattern.c_str(), 0, nullptr, &matches);
        if (result == GLOB_NOSPACE) throw std::bad_alloc();
        if (result != 0) return {};
        return {matches.gl_pathv, matches.gl_pathv + matches.gl_pathc};
    }

    void photograph(const std::string& file, size_t depth) {
        if (file.empty()) {
            inputs_.problems.emplace_back(file, "a photograph without a name");
            return;
        }
        // "-" would be standard input to whoever reads it.
        BatchInput input = {file == "-" ? "./-" : file, absolute_path(file), depth};
        if (seen_.insert(input.absolute).second) inputs_.photographs.push_back(std::move(input));
    }

    bool is_picture(const std::string& file_name) const {
        if (search_.frames) return is_frame_name(file_name);
        return format_of_name(file_name) || ends_with(file_name, ".pbm") || ends_with(file_name, ".pam");
    }

    /// What is in a folder, by name, but for what begins with a dot.
    std::vector<fs::directory_entry> entries_of(const fs::path& path) {
        std::error_code error;
        std::vector<fs::directory_entry> entries;
        fs::directory_iterator entry(path, error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error))
            if (entry->path().filename().string()[0] != '.') entries.push_back(*entry);
        if (error) inputs_.problems.emplace_back(path.string(), error.message());
        std::sort(entries.begin(), entries.end());
        return entries;
    }

    /// Whether it is a folder whose own folders and pictures count.
    bool is_searched(const fs::directory_entry& entry) const {
        std::error_code ignored;
        return entry.is_directory(ignored) && !entry.is_symlink(ignored) &&
               !fs::equivalent(entry.path(), search_.beside, ignored);
    }

    /// @param depth  folders between the one that the user named and the pictures of this one
    void folder(const fs::path& path, size_t depth) {
        std::error_code ignored;
        for (const fs::directory_entry& found : entries_of(path)) {
            if (!found.is_directory(ignored)) {
                if (is_picture(found.path().filename().string())) photograph(found.path().string(), depth);
            } else if (search_.recursive && is_searched(found)) {
                folder(found.path(), depth + 1);
            }
        }
    }

    const InputSearch& search_;
    BatchInputs inputs_;
    std::set<fs::path> seen_;
};

}  // namespace

BatchInputs find_inputs(const InputSearch& search, std::FILE* list) {
    Search found(search);
    for (const std::string& argument : search.arguments)
        if (argument == "-")
            found.list(list);
        else
            found.argument(argument);
    return found.take();
}

}  // namespace docprep
