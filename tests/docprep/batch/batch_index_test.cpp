#include "batch/batch_index.h"

#include <gtest/gtest.h>

#include <algorithm>

using docprep::BatchRow;
using docprep::BatchStatus;

namespace {

BatchRow row(const std::string& folder, BatchStatus status) {
    BatchRow result;
    result.input = "/p/" + folder + ".jpg";
    result.folder = folder;
    result.status = status;
    if (status == BatchStatus::kDone) {
        result.files = {"thumbnail.jpg", "page.png", "result.json"};
        result.text_rows = 12;
    }
    return result;
}

std::string index_of(const std::vector<BatchRow>& rows) {
    const docprep::Bytes bytes = docprep::batch_index(rows);
    return {bytes.begin(), bytes.end()};
}

bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

}  // namespace

TEST(batch_index, links_what_was_made_and_says_what_was_not) {
    BatchRow failed = row("b", BatchStatus::kFailed);
    failed.error = "is empty";
    const std::string page = index_of({row("a", BatchStatus::kDone), failed});
    EXPECT_TRUE(has(page, "<img loading=\"lazy\" decoding=\"async\" alt=\"\" src=\"./a/thumbnail.jpg\">"))
        << page;
    EXPECT_TRUE(has(page, "href=\"./a/page.png\"")) << page;
    EXPECT_TRUE(has(page, "href=\"./a/\"")) << page;
    EXPECT_TRUE(has(page, "href=\"./a/result.json\"")) << page;
    EXPECT_TRUE(has(page, "done, 12 rows")) << page;
    EXPECT_TRUE(has(page, "failed: is empty")) << page;
    EXPECT_FALSE(has(page, "./b")) << page;
}

TEST(batch_index, needs_no_network_and_no_script) {
    const std::string page = index_of({row("a", BatchStatus::kDone)});
    EXPECT_FALSE(has(page, "//")) << page;
    EXPECT_FALSE(has(page, "<script")) << page;
    EXPECT_FALSE(has(page, "@import")) << page;
}

TEST(batch_index, is_in_the_order_of_folders_whatever_came_first) {
    const BatchRow a = row("a", BatchStatus::kDone), b = row("b", BatchStatus::kRefused),
                   c = row("c", BatchStatus::kDone);
    EXPECT_EQ(index_of({a, b, c}), index_of({c, a, b}));
    const std::string page = index_of({c, b, a});
    EXPECT_LT(page.find("<b>a</b>"), page.find("<b>b</b>"));
    EXPECT_LT(page.find("<b>b</b>"), page.find("<b>c</b>"));
}

TEST(batch_index, says_nothing_that_changes_from_run_to_run) {
    BatchRow later = row("a", BatchStatus::kDone);
    later.milliseconds = 987.5;
    later.finished_at = "2026-01-31T23:59:59Z";
    EXPECT_EQ(index_of({row("a", BatchStatus::kDone)}), index_of({later}));
}

TEST(batch_index, names_are_text_and_addresses_whatever_their_bytes) {
    const std::string page = index_of({row("a\"<b>&\n\xe9%:#?", BatchStatus::kDone)});
    EXPECT_TRUE(has(page, "<b>a&quot;&lt;b>&amp;?\xef\xbf\xbd%:#?</b>")) << page;
    EXPECT_TRUE(has(page, "href=\"./a%22%3Cb%3E%26%0A%E9%25%3A%23%3F/page.png\"")) << page;
}

TEST(batch_index, counts_by_status_and_offers_those_that_there_are) {
    const std::string page = index_of({row("a", BatchStatus::kDone), row("b", BatchStatus::kDone),
                                       row("c", BatchStatus::kFailed), row("d", BatchStatus::kWaiting)});
    EXPECT_TRUE(has(page, ">all 4</label>")) << page;
    EXPECT_TRUE(has(page, ">done 2</label>")) << page;
    EXPECT_TRUE(has(page, ">failed 1</label>")) << page;
    EXPECT_TRUE(has(page, ">waiting 1</label>")) << page;
    EXPECT_FALSE(has(page, ">refused")) << page;
}

TEST(batch_index, of_nothing_is_a_page_without_photographs) {
    const std::string page = index_of({});
    EXPECT_TRUE(has(page, ">all 0</label>")) << page;
    EXPECT_FALSE(has(page, "<li")) << page;
}
