#include "batch/batch_index.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string>

#include "base/failure.h"
#include "base/utf8.h"
#include "run/prepare.h"

namespace docprep {

namespace {

constexpr const char* kHead = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>docprep batch</title>
<style>
:root { --back: #f4f4f1; --card: #fff; --text: #1d1d1b; --soft: #62625c; --line: #d9d9d3; --bad: #a8201a; }
@media (prefers-color-scheme: dark) {
  :root { --back: #191a1c; --card: #242629; --text: #ececea; --soft: #a3a5a8; --line: #3a3d41; --bad: #ff8a80; }
}
* { box-sizing: border-box; }
body { margin: 0; padding: 1rem; background: var(--back); color: var(--text); font: 1rem/1.4 system-ui, sans-serif; }
h1 { margin: 0 0 .5rem; font-size: 1.3rem; }
a { color: inherit; }
label { display: inline-block; margin: 0 .8rem .8rem 0; padding: .3rem 0; color: var(--soft); }
ul { display: grid; grid-template-columns: repeat(auto-fill, minmax(9.5rem, 1fr)); gap: .8rem; margin: 0;
  padding: 0; list-style: none; }
li { padding: .5rem; background: var(--card); border: 1px solid var(--line); border-radius: .4rem;
  content-visibility: auto; contain-intrinsic-size: auto 16rem; overflow-wrap: anywhere; }
img, .none { display: block; width: 100%; height: 11rem; margin-bottom: .4rem; object-fit: contain; }
.none { border: 1px dashed var(--line); }
p { margin: 0; font-size: .85rem; color: var(--soft); }
.failed p, .refused p { color: var(--bad); }
#done:checked ~ ul li:not(.done), #refused:checked ~ ul li:not(.refused),
#failed:checked ~ ul li:not(.failed), #rest:checked ~ ul li:not(.waiting):not(.running) { display: none; }
</style>
</head>
<body>
)";

/// Text between tags or in quotes.
std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : as_utf8(one_line(text))) {
        if (c == '&')
            result += "&amp;";
        else if (c == '<')
            result += "&lt;";
        else if (c == '"')
            result += "&quot;";
        else
            result += c;
    }
    return result;
}

/// A path as a relative address: whatever is not a letter, a digit or harmless, as its byte. "./" keeps a colon
/// in the first name from being a scheme.
std::string address(const std::string& path) {
    constexpr const char* kHexadecimal = "0123456789ABCDEF";
    const std::string harmless = "-_.~/";
    std::string result = "./";
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (plain || harmless.find(c) != std::string::npos) {
            result += c;
        } else {
            result += '%';
            result += kHexadecimal[byte >> 4];
            result += kHexadecimal[byte & 15];
        }
    }
    return result;
}

bool has_file(const BatchRow& row, const char* name) {
    return std::find(row.files.begin(), row.files.end(), name) != row.files.end();
}

std::string link(const BatchRow& row, const std::string& file, const std::string& content) {
    return "<a href=\"" + address(row.folder + '/' + file) + "\">" + content + "</a>";
}

std::string card(const BatchRow& row) {
    const std::string status = status_name(row.status);
    const std::string name = escaped(row.folder);
    std::string text = "<li class=\"" + status + "\" title=\"" +
                       escaped(std::filesystem::path(row.input).filename().string()) + "\">";
    if (row.status != BatchStatus::kDone)
        return text + "<span class=\"none\"></span><b>" + name + "</b><p>" + status +
               (row.error.empty() ? "" : ": " + escaped(row.error)) + "</p></li>\n";
    const std::string picture = "<img loading=\"lazy\" decoding=\"async\" alt=\"\" src=\"" +
                                address(row.folder + '/' + kThumbnailFile) + "\">";
    const int64_t rows = row.text_rows.value_or(0);
    text += has_file(row, kThumbnailFile) ? link(row, kPageFile, picture) : "<span class=\"none\"></span>";
    text += link(row, "", "<b>" + name + "</b>");
    text += "<p>" + status + ", " + std::to_string(rows) + (rows == 1 ? " row" : " rows") + ", " +
            link(row, kResultFile, "report") + "</p></li>\n";
    return text;
}

struct Filter {
    const char* id;
    const char* name;
    std::vector<BatchStatus> statuses;
};

/// A button that leaves nothing but photographs of some statuses; none where there are none.
std::string filter(const Filter& filter, const std::vector<BatchRow>& rows) {
    const auto count = std::count_if(rows.begin(), rows.end(), [&](const BatchRow& row) {
        return filter.statuses.empty() ||
               std::count(filter.statuses.begin(), filter.statuses.end(), row.status) > 0;
    });
    if (count == 0 && !filter.statuses.empty()) return "";
    return "<input type=\"radio\" name=\"show\" id=\"" + std::string(filter.id) + "\"" +
           (filter.statuses.empty() ? " checked" : "") + "><label for=\"" + filter.id + "\">" + filter.name +
           ' ' + std::to_string(count) + "</label>\n";
}

}  // namespace

Bytes batch_index(std::vector<BatchRow> rows) {
    std::sort(rows.begin(), rows.end(),
              [](const BatchRow& a, const BatchRow& b) { return a.folder < b.folder; });
    std::string text = kHead;
    text += "<h1>Photographs</h1>\n";
    for (const Filter& one : {Filter{"all", "all", {}}, Filter{"done", "done", {BatchStatus::kDone}},
                              Filter{"refused", "refused", {BatchStatus::kRefused}},
                              Filter{"failed", "failed", {BatchStatus::kFailed}},
                              Filter{"rest", "waiting", {BatchStatus::kWaiting, BatchStatus::kRunning}}})
        text += filter(one, rows);
    text += "<ul>\n";
    for (const BatchRow& row : rows) text += card(row);
    text += "</ul>\n</body>\n</html>\n";
    return Bytes(text.begin(), text.end());
}

}  // namespace docprep
