// Bytes of file names, which may be anything.
#ifndef DOCPREP_UTF8_H
#define DOCPREP_UTF8_H

#include <string>

namespace docprep {

/// Whether the text is well-formed UTF-8 without NUL.
bool is_utf8(const std::string& text);

/// The text with U+FFFD for what is not.
std::string as_utf8(const std::string& text);

}  // namespace docprep

#endif  // DOCPREP_UTF8_H
