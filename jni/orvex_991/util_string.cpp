#include "util_string.h"

#include <cstring>
#include <utility>

namespace orvex_991 {

String::String(const char* text) {
    if (!text || !*text) return;
    const std::size_t bytes = std::strlen(text) + 1;
    char* const copy = new char[bytes];
    std::memcpy(copy, text, bytes);
    text_ = copy;
    owned_ = true;
}

String::String(const String& other) {
    if (other.owned_)
        *this = String(other.text_);
    else
        text_ = other.text_;
}

String::String(String&& other) noexcept
    : text_(std::exchange(other.text_, "")), owned_(std::exchange(other.owned_, false)) {}

String::~String() {
    if (owned_) delete[] text_;
}

String& String::operator=(const String& other) {
    if (this != &other) *this = String(other);
    return *this;
}

String& String::operator=(String&& other) noexcept {
    std::swap(text_, other.text_);
    std::swap(owned_, other.owned_);
    return *this;
}

int String::length() const {
    return static_cast<int>(std::strlen(text_));
}

bool operator==(const String& a, const String& b) {
    return std::strcmp(a.c_str(), b.c_str()) == 0;
}

bool operator!=(const String& a, const String& b) {
    return !(a == b);
}

}  // namespace orvex_991
