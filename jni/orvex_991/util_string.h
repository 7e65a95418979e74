#ifndef ORVEX_991_UTIL_STRING_H
#define ORVEX_991_UTIL_STRING_H

namespace orvex_991 {

/// Immutable-length, zero-terminated text that owns its bytes; carries the messages of CException.
///
/// An empty String allocates nothing, so making, moving and destroying one never fails.
class String {
 public:
    String() = default;
    /// Copies `text` up to its terminating zero; a null pointer counts as the empty text.
    String(const char* text);
    String(const String& other);
    String(String&& other) noexcept;
    ~String();
    String& operator=(const String& other);
    String& operator=(String&& other) noexcept;

    /// Never null; valid until the String changes or ends.
    const char* c_str() const { return text_ ? text_ : ""; }
    /// Bytes before the terminating zero.
    int length() const;
    bool empty() const { return text_ == nullptr; }

 private:
    char* text_ = nullptr;  // owned; null for the empty text
};

bool operator==(const String& a, const String& b);
bool operator!=(const String& a, const String& b);

}  // namespace orvex_991

#endif  // ORVEX_991_UTIL_STRING_H
