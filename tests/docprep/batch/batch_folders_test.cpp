#include "batch/batch_folders.h"

#include <gtest/gtest.h>

#include <algorithm>

using docprep::batch_folders;
using docprep::FolderWish;
using docprep::is_batch_folder;
using Names = std::vector<std::string>;

namespace {

FolderWish wish(const std::string& absolute, size_t depth = 0, const std::string& before = "") {
    return {{absolute, absolute, depth}, before};
}

Names folders_of(const Names& files, const Names& taken = {}) {
    std::vector<FolderWish> wishes;
    for (const std::string& file : files) wishes.push_back(wish(file));
    return batch_folders(wishes, taken);
}

}  // namespace

TEST(batch_folders, are_named_for_the_file_without_its_ending) {
    EXPECT_EQ((Names{"a", "b.c", "none", ".hidden", "frame"}),
              folders_of({"/p/a.jpg", "/p/b.c.png", "/q/none", "/q/.hidden", "/q/frame.nv21.gz"}));
}

TEST(batch_folders, of_names_that_differ_in_their_endings_keep_them) {
    EXPECT_EQ((Names{"a.jpg", "a.png", "b"}), folders_of({"/p/a.jpg", "/p/a.png", "/p/b.jpg"}));
}

TEST(batch_folders, of_equal_names_are_named_for_the_folders_that_they_lie_in) {
    EXPECT_EQ((Names{"x/a.jpg", "y/a.jpg", "b"}), folders_of({"/p/x/a.jpg", "/p/y/a.jpg", "/p/y/b.jpg"}));
    EXPECT_EQ((Names{"p/x/a.jpg", "q/x/a.jpg"}), folders_of({"/p/x/a.jpg", "/q/x/a.jpg"}));
    EXPECT_EQ((Names{"x/a.jpg", "a.png", "y/a.jpg"}), folders_of({"/p/x/a.jpg", "/p/x/a.png", "/p/y/a.jpg"}));
}

TEST(batch_folders, do_not_depend_on_the_order) {
    Names files = {"/p/x/a.jpg", "/p/y/a.jpg", "/p/a.png", "/p/a.jpg", "/x/a.jpg", "/x.jpg"};
    std::vector<std::pair<std::string, std::string>> first;
    do {
        const Names folders = folders_of(files);
        std::vector<std::pair<std::string, std::string>> pairs;
        for (size_t k = 0; k < files.size(); ++k) pairs.emplace_back(files[k], folders[k]);
        std::sort(pairs.begin(), pairs.end());
        if (first.empty()) first = pairs;
        ASSERT_EQ(first, pairs);
    } while (std::next_permutation(files.begin(), files.end()));
}

TEST(batch_folders, keep_the_folders_that_were_searched) {
    EXPECT_EQ((Names{"x/a", "y/a", "y/z/b"}),
              batch_folders({wish("/p/x/a.jpg", 1), wish("/p/y/a.jpg", 1), wish("/p/y/z/b.jpg", 2)}, {}));
}

TEST(batch_folders, do_not_lie_in_each_other) {
    EXPECT_EQ((Names{"x.jpg", "x/page.png"}),
              batch_folders({wish("/p/x.jpg"), wish("/p/x/page.png.jpg", 1)}, {}));
}

TEST(batch_folders, never_lead_out_nor_meet_the_files_of_the_batch) {
    EXPECT_EQ((Names{"..jpg", "...jpg", "index.html.jpg", "docprep.sqlite.png", "docprep.sqlite-wal.png"}),
              folders_of({"/p/..jpg", "/p/...jpg", "/p/index.html.jpg", "/p/docprep.sqlite.png",
                          "/p/docprep.sqlite-wal.png"}));
    EXPECT_EQ((Names{"p/index.html", "index.jpg"}), folders_of({"/p/index.html", "/p/index.jpg"}));
    EXPECT_EQ((Names{"index.html-2", "index.jpg"}), folders_of({"/index.html", "/index.jpg"}));
}

TEST(batch_folders, stay_with_photographs_that_had_one) {
    EXPECT_EQ((Names{"a", "y/a.jpg"}), batch_folders({wish("/p/x/a.jpg", 0, "a"), wish("/p/y/a.jpg")}, {}));
    EXPECT_EQ((Names{"a.jpg", "older"}),
              batch_folders({wish("/p/a.jpg"), wish("/p/b.jpg", 0, "older")}, {"a"}));
}

TEST(batch_folders, are_numbered_where_older_ones_have_every_name) {
    EXPECT_EQ(Names{"p/a.jpg-2"}, folders_of({"/p/a.jpg"}, {"a", "a.jpg", "p/a.jpg"}));
    EXPECT_EQ(Names{"p/a.jpg-3"}, folders_of({"/p/a.jpg"}, {"a/b", "a.jpg", "p/a.jpg", "p/a.jpg-2"}));
}

TEST(batch_folders, of_files_that_cannot_be_are_folders_all_the_same) {
    for (const char* file : {"/", "/missing/", "/missing/.."})
        for (const std::string& folder : folders_of({file})) EXPECT_TRUE(is_batch_folder(folder)) << file;
}

TEST(batch_folders, that_a_state_may_hold_lead_nowhere_else) {
    for (const char* folder : {"a", "a/b", ".hidden", "..a", "a/index.html"})
        EXPECT_TRUE(is_batch_folder(folder)) << folder;
    for (const char* folder : {"", ".", "..", "/a", "a/", "a//b", "a/./b", "a/../b", "../a", "a/..",
                               "index.html", "index.html/a", "docprep.sqlite-journal", ".docprep-batch"})
        EXPECT_FALSE(is_batch_folder(folder)) << folder;
    EXPECT_FALSE(is_batch_folder(std::string("a\0b", 3)));
}
