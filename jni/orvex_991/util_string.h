#ifndef ORVEX_991_UTIL_STRING_H
#define ORVEX_991_UTIL_STRING_H

#include <cstddef>

namespace orvex_991 {

/// Immutable-length, zero-terminated text; carries the messages of CException.
///
/// A String owns a copy of its text, unless it was made by literal(). Neither an empty String nor a
/// literal ever allocates: making, copying, moving and destroying them never fails.
class String {
 public:
    String() = default;
    /// Copies `text` up to its terminating zero; a null pointer counts as the empty text.
    String(const char* text);
    /// A copy of the text; of a literal, another reference to it.
    String(const String& other);
    /// Takes the text over and leaves the other empty.
    String(String&& other) noexcept;
    ~String();
    /// As the copy constructor.
    String& operator=(const String& other);
    /// As the move constructor.
    String& operator=(String&& other) noexcept;

    /// Refers to a text that stays for good, such as a string literal, instead of copying it.
    template <std::size_t N>
    static String literal(const char (&text)[N]) noexcept {
        String string;
        string.text_ = text;
        return string;
    }

    /// Never null; valid until the String changes or ends.
    const char* c_str() const { return text_; }
    /// Bytes before the terminating zero.
    int length() const;
    /// Whether there is no byte before the terminating zero.
    bool empty() const { return *text_ == '\0'; }

 private:
    const char* text_ = "";
    bool owned_ = false;
};

/// Whether the texts are the same.
bool operator==(const String& a, const String& b);
/// Whether the texts differ.
bool operator!=(const String& a, const String& b);

}  // namespace orvex_991

#endif  // ORVEX_991_UTIL_STRING_H
