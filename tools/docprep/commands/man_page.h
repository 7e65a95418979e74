// docprep man: the manual page.
#ifndef DOCPREP_MAN_PAGE_H
#define DOCPREP_MAN_PAGE_H

#include <string>

#include "commands/command_text.h"

namespace docprep {

/// docprep.1 in the man macros of roff.
/// @param program  the command without a name, with the others below it
std::string man_page(const CommandText& program);

}  // namespace docprep

#endif  // DOCPREP_MAN_PAGE_H
