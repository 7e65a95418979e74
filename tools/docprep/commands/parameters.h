// The parameters of the library's operations, as docprep op takes them.
#ifndef DOCPREP_PARAMETERS_H
#define DOCPREP_PARAMETERS_H

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/image.h"
#include "cv_geometry.h"

namespace docprep {

enum class ParameterKind {
    kWhole,    ///< a whole number
    kNumber,   ///< any finite number
    kExtents,  ///< WxH, above 0
    kPoint,    ///< x,y; whole numbers
    kPlace,    ///< x,y; any numbers
    kRect,     ///< x,y,width,height; whole numbers
    kMatrix,   ///< the six numbers of a 2 x 3 matrix
    kChoice,   ///< one of some names
    kFlag,     ///< given or not, without a value
    kPicture   ///< a JPEG or PNG file
};

/// Both ends belong to it.
struct Range {
    double least;
    double most;
};

struct Parameter {
    std::string name;  ///< without the dashes
    ParameterKind kind;
    std::string meaning;
    Range range{};                          ///< of each of its numbers
    std::vector<std::string> choices = {};  ///< of kChoice: the names, by their values
    bool required = false;
    std::string unless_given = {};  ///< the value, as it would be given; empty: none
};

/// What stands for a value in a usage line: "NUMBER", "WxH" ... Empty for a flag.
std::string type_name(const Parameter& parameter);

/// The range in words: "0 .. 255", "above 0"; empty where everything of the type belongs to it.
std::string range_text(const Parameter& parameter);

/// The meaning, the range and the default, for people.
std::string described(const Parameter& parameter);

/// The numbers of a value: 1, 2, 4 or 6 of them. Not for choices, flags and pictures.
/// Nothing when the text is not a value of the parameter.
std::optional<std::vector<double>> parse(const Parameter& parameter, const std::string& text);

/// What parse() takes, to stand after "is not".
std::string expected(const Parameter& parameter);

/// The values of an operation's parameters; of a choice its position. What accessors ask for must have been given.
class Arguments {
 public:
    void set(const std::string& name, std::vector<double> numbers) { numbers_[name] = std::move(numbers); }
    void set_picture(const std::string& name, Image picture) { pictures_[name] = std::move(picture); }

    bool given(const std::string& name) const { return numbers_.count(name) + pictures_.count(name) != 0; }
    int whole(const std::string& name) const { return whole(name, 0); }
    double number(const std::string& name) const { return numbers_.at(name).at(0); }
    float single(const std::string& name) const { return static_cast<float>(number(name)); }
    orvex_cv_991::Size size(const std::string& name) const;
    orvex_cv_991::Point point(const std::string& name) const;
    orvex_cv_991::Point32f place(const std::string& name) const;
    orvex_cv_991::Rect rect(const std::string& name) const;
    orvex_cv_991::Mat<float> matrix(const std::string& name) const;
    /// No pixels unless it is given.
    Image picture(const std::string& name) const;

 private:
    int whole(const std::string& name, size_t k) const { return static_cast<int>(numbers_.at(name).at(k)); }

    std::map<std::string, std::vector<double>> numbers_;
    std::map<std::string, Image> pictures_;
};

}  // namespace docprep

#endif  // DOCPREP_PARAMETERS_H
