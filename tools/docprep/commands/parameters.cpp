#include "commands/parameters.h"

#include <cfloat>
#include <charconv>
#include <climits>
#include <cmath>

#include "base/extents.h"
#include "base/number_text.h"
#include "cli/options.h"
#include "pipeline/affine.h"

namespace docprep {

using orvex_cv_991::Mat;
using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::Rect;
using orvex_cv_991::Size;

namespace {

bool is_whole(ParameterKind kind) {
    return kind == ParameterKind::kWhole || kind == ParameterKind::kPoint || kind == ParameterKind::kRect;
}

/// How many numbers a value has that is a list of them.
size_t count_of(ParameterKind kind) {
    switch (kind) {
        case ParameterKind::kPoint:
        case ParameterKind::kPlace:
            return 2;
        case ParameterKind::kRect:
            return 4;
        case ParameterKind::kMatrix:
            return 6;
        default:
            return 1;
    }
}

template <class T>
std::optional<double> number_in(const std::string& text) {
    T value{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end || !std::isfinite(static_cast<double>(value)))
        return std::nullopt;
    return static_cast<double>(value);
}

std::string number_text(double value) {
    char text[32];
    const std::to_chars_result result = std::to_chars(text, text + sizeof text, value);
    return {text, result.ptr};
}

}  // namespace

std::string type_name(const Parameter& parameter) {
    switch (parameter.kind) {
        case ParameterKind::kWhole:
            return "INTEGER";
        case ParameterKind::kNumber:
            return "NUMBER";
        case ParameterKind::kExtents:
            return "WxH";
        case ParameterKind::kPoint:
        case ParameterKind::kPlace:
            return "x,y";
        case ParameterKind::kRect:
            return "x,y,w,h";
        case ParameterKind::kMatrix:
            return "a,b,c,d,e,f";
        case ParameterKind::kChoice:
            return "NAME";
        case ParameterKind::kPicture:
            return "FILE";
        case ParameterKind::kFlag:
            break;
    }
    return "";
}

std::string range_text(const Parameter& parameter) {
    if (parameter.kind == ParameterKind::kChoice) return listed(parameter.choices);
    if (parameter.kind != ParameterKind::kWhole && parameter.kind != ParameterKind::kNumber) return "";
    const auto [least, most] = parameter.range;
    const bool endless = most >= (is_whole(parameter.kind) ? double{INT_MAX} : double{FLT_MAX});
    if (!endless) return number_text(least) + " .. " + number_text(most);
    if (least < 0) return "";
    return least == double{FLT_TRUE_MIN} ? "above 0" : "from " + number_text(least) + " on";
}

std::string described(const Parameter& parameter) {
    std::string text = parameter.meaning;
    const std::string range = range_text(parameter);
    if (!range.empty()) text += ": " + range;
    if (!parameter.unless_given.empty()) text += "; " + parameter.unless_given + " by default";
    return text;
}

std::optional<std::vector<double>> parse(const Parameter& parameter, const std::string& text) {
    std::vector<double> numbers;
    if (parameter.kind == ParameterKind::kExtents) {
        Extents extents;
        if (!parse_extents(text, extents)) return std::nullopt;
        return std::vector<double>{double(extents.cols), double(extents.rows)};
    }
    for (const std::string& part : split(text, ',')) {
        const std::optional<double> number =
            is_whole(parameter.kind) ? number_in<int>(part) : number_in<double>(part);
        if (!number || *number < parameter.range.least || *number > parameter.range.most) return std::nullopt;
        numbers.push_back(*number);
    }
    if (numbers.size() != count_of(parameter.kind)) return std::nullopt;
    return numbers;
}

std::string expected(const Parameter& parameter) {
    const std::string range = range_text(parameter);
    switch (parameter.kind) {
        case ParameterKind::kWhole:
            return "a whole number" + (range.empty() ? range : ", " + range);
        case ParameterKind::kNumber:
            return "a number" + (range.empty() ? range : ", " + range);
        case ParameterKind::kPoint:
        case ParameterKind::kRect:
            return "whole numbers " + type_name(parameter);
        default:
            return type_name(parameter);
    }
}

Size Arguments::size(const std::string& name) const {
    return {whole(name, 0), whole(name, 1)};
}

Point Arguments::point(const std::string& name) const {
    return {whole(name, 0), whole(name, 1)};
}

Point32f Arguments::place(const std::string& name) const {
    const std::vector<double>& numbers = numbers_.at(name);
    return {static_cast<float>(numbers.at(0)), static_cast<float>(numbers.at(1))};
}

Rect Arguments::rect(const std::string& name) const {
    return {whole(name, 0), whole(name, 1), whole(name, 2), whole(name, 3)};
}

Mat<float> Arguments::matrix(const std::string& name) const {
    AffineMatrix matrix;
    for (size_t k = 0; k < matrix.size(); ++k) matrix[k] = static_cast<float>(numbers_.at(name).at(k));
    return as_mat(matrix);
}

Image Arguments::picture(const std::string& name) const {
    const auto found = pictures_.find(name);
    return found == pictures_.end() ? Image() : found->second;
}

}  // namespace docprep
