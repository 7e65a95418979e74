// Text and data in a page of HTML that is well-formed XML, too.
#ifndef DOCPREP_HTML_TEXT_H
#define DOCPREP_HTML_TEXT_H

#include <string>

#include "base/bytes.h"

namespace docprep {

/// Any bytes as text between tags or in a quoted attribute. U+FFFD stands for what is not UTF-8, and for what
/// XML does not allow.
std::string escaped(const std::string& text);

/// Bytes as base64, as a data: URL has them.
std::string base64(const Bytes& bytes);

}  // namespace docprep

#endif  // DOCPREP_HTML_TEXT_H
