// What is worth explaining beside commands, options and operations.
#ifndef DOCPREP_TOPICS_H
#define DOCPREP_TOPICS_H

#include <string>
#include <utility>
#include <vector>

namespace docprep {

struct Topic {
    std::string name;
    std::string title;
    std::vector<std::string> paragraphs;
    /// Words and what they mean, to stand below each other after the paragraphs.
    std::vector<std::pair<std::string, std::string>> entries;
};

std::vector<Topic> topics();

}  // namespace docprep

#endif  // DOCPREP_TOPICS_H
