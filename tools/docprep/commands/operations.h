// The library's operations, each once: what docprep op, list, help, the man page and completion know of them.
#ifndef DOCPREP_OPERATIONS_H
#define DOCPREP_OPERATIONS_H

#include <string>
#include <vector>

#include "base/image.h"
#include "base/json.h"
#include "commands/parameters.h"

namespace docprep {

/// The picture that an operation works on.
enum class Operand {
    kNone,    ///< none: numbers alone
    kAny,     ///< as it is, 1 or 3 channels
    kGray,    ///< 1 channel; a colour picture goes through bgr2gray first
    kBinary,  ///< 1 channel; one that holds only black and white keeps its 255, any other is kGray
    kColour,  ///< 3 channels; in a gray picture all three are the gray level
    kFrame    ///< an NV21 frame, whose picture in colour is the result
};

/// What an operation leaves.
struct Result {
    Image picture;                 ///< no pixels when there is none
    Json values = Json::object();  ///< the numbers; may be none beside a picture
};

struct Operation {
    std::string name;         ///< that of the function; of its other forms with a dash and a word behind it
    std::string description;  ///< one line
    Operand operand;
    bool makes_picture;
    std::vector<Parameter> parameters;
    /// Calls the library with an operand as above. @throws Failure for a result of too many pixels;
    /// CException; std::bad_alloc
    Result (*run)(const Image& picture, const Arguments& arguments);
};

/// All of them.
const std::vector<Operation>& operations();

/// Null when none has this name.
const Operation* find_operation(const std::string& name);

std::vector<std::string> operation_names();

/// What the operand is, for people: a sentence.
std::string described(Operand operand);

/// The picture as an operation takes it. Not for kNone.
Image as_operand(Operand operand, Image picture);

}  // namespace docprep

#endif  // DOCPREP_OPERATIONS_H
