#include "cli/near_miss.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace docprep {

namespace {

std::string lower(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

/// The number of changes that make one of the other.
size_t changes(const std::string& a, const std::string& b) {
    std::vector<size_t> two_back, back, now(b.size() + 1);  // of prefixes of a: to every prefix of b
    for (size_t j = 0; j <= b.size(); ++j) now[j] = j;
    for (size_t i = 1; i <= a.size(); ++i) {
        two_back.swap(back);
        back.swap(now);
        now.assign(b.size() + 1, i);
        for (size_t j = 1; j <= b.size(); ++j) {
            now[j] = std::min({back[j] + 1, now[j - 1] + 1, back[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                now[j] = std::min(now[j], two_back[j - 2] + 1);
        }
    }
    return now[b.size()];
}

}  // namespace

std::string nearest(const std::string& text, const std::vector<std::string>& names) {
    constexpr size_t kLongest = 100;  // of what is compared: a name is never longer
    std::string found;
    size_t fewest = 0;
    if (text.size() > kLongest) return found;
    const std::string sought = lower(text);
    for (const std::string& name : names) {
        const size_t distance = changes(sought, lower(name));
        const size_t most = std::max<size_t>(1, std::max(text.size(), name.size()) / 3);
        if (distance > most || (!found.empty() && distance >= fewest)) continue;
        found = name;
        fewest = distance;
    }
    return found;
}

std::string suggestion(const std::string& text, const std::vector<std::string>& names) {
    const std::string meant = nearest(text, names);
    return meant.empty() ? "" : "; did you mean '" + meant + "'?";
}

}  // namespace docprep
