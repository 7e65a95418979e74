// JSON that is written, as text from the start: nothing is kept that would need memory to be destroyed.
#ifndef DOCPREP_JSON_H
#define DOCPREP_JSON_H

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>

namespace docprep {

/// A value on one line. A tree of nlohmann-json allocates in its destructor, which ends the program where memory
/// has run out; its numbers and strings do not, and are written by it (test: of_a_page_leaves_no_file_and_no_folder).
class Json {
 public:
    struct Member;

    Json(std::nullptr_t) : text_("null") {}
    Json(bool value) : text_(value ? "true" : "false") {}
    Json(int value);
    Json(int64_t value);
    Json(double value);
    /// Bytes that are not UTF-8 become U+FFFD.
    Json(const std::string& value);
    Json(const char* value) : Json(std::string(value)) {}
    /// An object.
    Json(std::initializer_list<Member> members);

    static Json object() { return Json(std::initializer_list<Member>{}); }
    static Json array() { return Json(Text{"[]"}); }
    template <class List>
    static Json array(const List& values) {
        Json list = array();
        for (const auto& value : values) list.push_back(value);
        return list;
    }

    /// Of an array.
    void push_back(const Json& value) { append("", value); }
    /// Of an object that has no member of that name.
    void add(const std::string& name, const Json& value) { append(Json(name).text_ + ":", value); }

    const std::string& dump() const { return text_; }

 private:
    struct Text {
        const char* text;
    };
    explicit Json(Text text) : text_(text.text) {}

    void append(const std::string& before, const Json& value);

    std::string text_;
};

struct Json::Member {
    const char* name;
    Json value;
};

}  // namespace docprep

#endif  // DOCPREP_JSON_H
