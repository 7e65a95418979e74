#include "batch/batch_folders.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <set>

#include "batch/batch_index.h"
#include "batch/batch_state.h"

namespace docprep {

namespace fs = std::filesystem;

namespace {

bool is_of_the_batch(const std::string& name) {
    for (const char* ending : {"", "-journal", "-shm", "-wal"})
        if (name == kBatchState + std::string(ending)) return true;
    return name == kBatchIndex || name == kBatchDesk;
}

/// The names of the folders on the way to a file, and the file's own.
std::vector<std::string> names_of(const fs::path& absolute) {
    const fs::path relative = absolute.relative_path();
    if (relative.empty()) return {""};  // of a file that cannot be
    return {relative.begin(), relative.end()};
}

/// Without its ending; ".nv21.gz" is one.
std::string stem(const std::string& name) {
    const std::string frame = ".nv21.gz";
    if (name.size() > frame.size() && name.substr(name.size() - frame.size()) == frame)
        return name.substr(0, name.size() - frame.size());
    return fs::path(name).stem().string();
}

/// The names that a photograph's folder may have, from the shortest on.
class Choice {
 public:
    explicit Choice(const BatchInput& input)
        : names_(names_of(input.absolute)), depth_(std::min(input.depth, names_.size() - 1)) {
        step();
    }

    const std::string& name() const { return name_; }

    /// Goes on to the next name; false when there is none.
    bool longer() {
        if (depth_ + level_ >= names_.size()) return false;
        ++level_;
        step();
        return true;
    }

 private:
    void step() {
        const size_t folders = depth_ + (level_ > 0 ? level_ - 1 : 0);
        const size_t first = names_.size() - 1 - folders;
        name_.clear();
        for (size_t k = first; k + 1 < names_.size(); ++k) name_ += names_[k] + '/';
        name_ += level_ == 0 ? stem(names_.back()) : names_.back();
    }

    std::vector<std::string> names_;
    size_t depth_;
    size_t level_ = 0;  // 0: without the ending; k: with it, in k - 1 more folders
    std::string name_;
};

/// "a/b/c": "a", "a/b".
std::vector<std::string> folders_above(const std::string& folder) {
    std::vector<std::string> above;
    for (size_t slash = folder.find('/'); slash != std::string::npos; slash = folder.find('/', slash + 1))
        above.push_back(folder.substr(0, slash));
    return above;
}

/// Folders that are spoken for.
class Taken {
 public:
    void add(const std::string& folder) {
        ++folders_[folder];
        for (const std::string& above : folders_above(folder)) above_.insert(above);
    }

    /// Whether a folder that is not among them would meet one.
    bool meets(const std::string& folder) const {
        return folders_.count(folder) > 0 || encloses(folder) || lies_in(folder);
    }
    /// Whether one of them has to give way: it is there twice, or another lies in it.
    bool disputed(const std::string& folder) const { return folders_.at(folder) > 1 || encloses(folder); }

 private:
    bool encloses(const std::string& folder) const { return above_.count(folder) > 0; }
    bool lies_in(const std::string& folder) const {
        const std::vector<std::string> above = folders_above(folder);
        return std::any_of(above.begin(), above.end(),
                           [this](const std::string& name) { return folders_.count(name) > 0; });
    }

    std::map<std::string, int> folders_;
    std::set<std::string> above_;
};

/// Lets those that are disputed, or no folders, grow until none is, or cannot any more.
void settle(std::vector<Choice>& choices) {
    for (bool changed = true; changed;) {
        changed = false;
        Taken all;
        for (const Choice& choice : choices) all.add(choice.name());
        for (Choice& choice : choices)
            if (all.disputed(choice.name()) || !is_batch_folder(choice.name())) changed |= choice.longer();
    }
}

std::string free_folder(Choice choice, const Taken& taken) {
    const auto fits = [&taken](const std::string& name) {
        return is_batch_folder(name) && !taken.meets(name);
    };
    do {
        if (fits(choice.name())) return choice.name();
    } while (choice.longer());
    for (int number = 2;; ++number) {
        std::string name = choice.name() + '-' + std::to_string(number);
        if (fits(name)) return name;
    }
}

}  // namespace

bool is_batch_folder(const std::string& folder) {
    if (folder.empty() || folder.back() == '/' || folder.find('\0') != std::string::npos) return false;
    const fs::path path(folder);
    if (path.is_absolute() || path.lexically_normal().string() != folder || *path.begin() == "..")
        return false;
    return folder != "." && !is_of_the_batch(path.begin()->string());
}

std::vector<std::string> batch_folders(const std::vector<FolderWish>& wishes,
                                       const std::vector<std::string>& taken) {
    std::vector<Choice> choices;
    choices.reserve(wishes.size());
    for (const FolderWish& wish : wishes) choices.emplace_back(wish.input);
    settle(choices);

    Taken all;
    for (const std::string& folder : taken) all.add(folder);
    for (const FolderWish& wish : wishes)
        if (!wish.before.empty()) all.add(wish.before);

    std::vector<size_t> by_path(wishes.size());
    std::iota(by_path.begin(), by_path.end(), size_t{0});
    std::sort(by_path.begin(), by_path.end(),
              [&](size_t a, size_t b) { return wishes[a].input.absolute < wishes[b].input.absolute; });
    std::vector<std::string> folders(wishes.size());
    for (const size_t k : by_path) {
        folders[k] = wishes[k].before;
        if (!folders[k].empty()) continue;
        folders[k] = free_folder(choices[k], all);
        all.add(folders[k]);
    }
    return folders;
}

}  // namespace docprep
