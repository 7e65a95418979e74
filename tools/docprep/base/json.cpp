#include "base/json.h"

#include <nlohmann/json.hpp>

namespace docprep {

namespace {

std::string text_of(const nlohmann::json& scalar) {
    return scalar.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace

Json::Json(int value) : text_(std::to_string(value)) {}
Json::Json(int64_t value) : text_(std::to_string(value)) {}
Json::Json(double value) : text_(text_of(value)) {}
Json::Json(const std::string& value) : text_(text_of(value)) {}

Json::Json(std::initializer_list<Member> members) : text_("{}") {
    for (const Member& member : members) add(member.name, member.value);
}

void Json::append(const std::string& before, const Json& value) {
    const char end = text_.back();
    text_.pop_back();
    if (text_.size() > 1) text_ += ',';
    text_ += before;
    text_ += value.text_;
    text_ += end;
}

}  // namespace docprep
