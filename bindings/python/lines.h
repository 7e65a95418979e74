// What the library prints, thread by thread.
#ifndef ORVEX_BINDINGS_PYTHON_LINES_H
#define ORVEX_BINDINGS_PYTHON_LINES_H

#include <string>

namespace orvex_python {

/// Collects what the library prints on this thread while it lives; of several, the youngest does. Without one,
/// what is printed is dropped.
class Lines {
 public:
    Lines();
    ~Lines();
    Lines(const Lines&) = delete;
    Lines& operator=(const Lines&) = delete;

    /// Byte for byte what a C++ program would have seen on standard output.
    const std::string& text() const { return text_; }

    /// Adds to the youngest of this thread.
    /// @return false without memory for it; nothing is added then
    static bool print(const char* text, std::size_t length) noexcept;

 private:
    std::string text_;
    Lines* outer_;
};

}  // namespace orvex_python

#endif  // ORVEX_BINDINGS_PYTHON_LINES_H
