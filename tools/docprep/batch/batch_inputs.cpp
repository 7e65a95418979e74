#include "batch/batch_inputs.h"

#include <glob.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>
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

class Search {
 public:
    explicit Search(const InputSearch& search) : search_(search) {}

    void argument(const std::string& text) {
        std::error_code ignored;
        if (fs::exists(fs::symlink_status(text, ignored)))
            name(text);
        else
            pattern(text);
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
            if (!text.empty()) name(text);
        }
        std::free(line);
        if (std::ferror(file)) throw Failure("standard input", system_reason(errno));
    }

    BatchInputs take() { return std::move(inputs_); }

 private:
    void name(const std::string& text) {
        std::error_code ignored;
        if (fs::is_directory(text, ignored))
            folder(text, 0);
        else
            photograph(text, 0);
    }

    void pattern(const std::string& text) {
        glob_t matches{};
        const auto free_matches = [](glob_t* found) { globfree(found); };
        const std::unique_ptr<glob_t, decltype(free_matches)> freed(&matches, free_matches);
        const int result = glob(text.c_str(), 0, nullptr, &matches);
        if (result == GLOB_NOSPACE) throw std::bad_alloc();
        if (result != 0) return name(text);
        for (size_t k = 0; k < matches.gl_pathc; ++k) name(matches.gl_pathv[k]);
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

    /// @param depth  folders between the one that the user named and the pictures of this one
    void folder(const fs::path& path, size_t depth) {
        std::error_code error;
        std::vector<fs::directory_entry> entries;
        fs::directory_iterator entry(path, error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error)) entries.push_back(*entry);
        if (error) inputs_.problems.emplace_back(path.string(), error.message());
        std::sort(entries.begin(), entries.end());
        std::error_code ignored;
        for (const fs::directory_entry& found : entries) {
            const std::string file_name = found.path().filename().string();
            if (file_name[0] == '.') continue;
            if (!found.is_directory(ignored)) {
                if (is_picture(file_name)) photograph(found.path().string(), depth);
            } else if (search_.recursive && !found.is_symlink(ignored) &&
                       !fs::equivalent(found.path(), search_.beside, ignored)) {
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
