#include "batch/batch_inputs.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "test_files.h"

using docprep::BatchInputs;
using docprep::InputSearch;
using Names = std::vector<std::string>;
namespace fs = std::filesystem;

namespace {

/// A folder "photos" with pictures in it and below it, and other files.
class Photos {
 public:
    Photos() {
        for (const char* folder :
             {"photos", "photos/deep", "photos/deep/deeper", "photos/.trash", "photos/out"})
            fs::create_directory(folder_.path(folder));
        for (const char* name :
             {"b.JPG", "a.png", "notes.txt", ".hidden.jpg", "frame.nv21", "f.nv21.gz", "c[1].jpg",
              "deep/d.jpeg", "deep/deeper/e.jpg", ".trash/t.jpg", "out/page.png"})
            folder_.write(std::string("photos/") + name, "x");
    }

    std::string path(const std::string& name) const { return folder_.path(name); }
    const TemporaryFolder& folder() const { return folder_; }

    /// What is found, relative to the folder that "photos" is in.
    Names found(InputSearch search, const std::string& list = "") const {
        for (std::string& argument : search.arguments)
            if (argument != "-") argument = path(argument);
        search.beside = path("photos/out");
        const docprep::BatchInputs inputs = find(search, list);
        Names names;
        for (const docprep::BatchInput& input : inputs.photographs)
            names.push_back(fs::path(input.file).lexically_relative(path("")).string());
        return names;
    }

    BatchInputs find(const InputSearch& search, const std::string& list) const {
        const std::string name = folder_.write("list", list);
        std::FILE* const file = std::fopen(name.c_str(), "rb");
        BatchInputs inputs = find_inputs(search, file);
        std::fclose(file);
        return inputs;
    }

 private:
    TemporaryFolder folder_;
};

InputSearch search_for(const Names& arguments) {
    InputSearch search;
    search.arguments = arguments;
    return search;
}

}  // namespace

TEST(batch_inputs, a_folder_stands_for_its_pictures_by_name) {
    const Photos photos;
    EXPECT_EQ((Names{"photos/a.png", "photos/b.JPG", "photos/c[1].jpg"}),
              photos.found(search_for({"photos"})));
}

TEST(batch_inputs, folders_below_count_if_wanted_but_not_the_one_with_the_results) {
    const Photos photos;
    InputSearch search = search_for({"photos"});
    search.recursive = true;
    EXPECT_EQ((Names{"photos/a.png", "photos/b.JPG", "photos/c[1].jpg", "photos/deep/d.jpeg",
                     "photos/deep/deeper/e.jpg"}),
              photos.found(search));
}

TEST(batch_inputs, links_to_folders_are_followed_where_the_user_names_them) {
    const Photos photos;
    fs::create_directory_symlink(photos.path("photos"), photos.path("photos/deep/up"));
    InputSearch search = search_for({"photos/deep"});
    search.recursive = true;
    EXPECT_EQ((Names{"photos/deep/d.jpeg", "photos/deep/deeper/e.jpg"}), photos.found(search));
    EXPECT_EQ((Names{"photos/deep/up/a.png", "photos/deep/up/b.JPG", "photos/deep/up/c[1].jpg"}),
              photos.found(search_for({"photos/deep/up"})));
}

TEST(batch_inputs, frames_are_found_by_their_endings) {
    const Photos photos;
    InputSearch search = search_for({"photos"});
    search.frames = true;
    EXPECT_EQ((Names{"photos/f.nv21.gz", "photos/frame.nv21"}), photos.found(search));
}

TEST(batch_inputs, a_file_is_taken_whatever_its_name) {
    const Photos photos;
    EXPECT_EQ((Names{"photos/notes.txt", "photos/.hidden.jpg"}),
              photos.found(search_for({"photos/notes.txt", "photos/.hidden.jpg"})));
}

TEST(batch_inputs, what_is_not_there_is_a_pattern) {
    const Photos photos;
    EXPECT_EQ((Names{"photos/c[1].jpg"}), photos.found(search_for({"photos/*.jpg"})));
    EXPECT_EQ((Names{"photos/a.png", "photos/b.JPG"}), photos.found(search_for({"photos/[ab].*"})));
    EXPECT_EQ((Names{"photos/deep/d.jpeg"}), photos.found(search_for({"photos/d*"}))) << "a folder matched";
}

TEST(batch_inputs, two_stars_stand_for_any_folders) {
    const Photos photos;
    EXPECT_EQ((Names{"photos/c[1].jpg", "photos/deep/deeper/e.jpg"}),
              photos.found(search_for({"photos/**/*.jpg"})));
    EXPECT_EQ((Names{"photos/deep/d.jpeg", "photos/deep/deeper/e.jpg"}),
              photos.found(search_for({"photos/**/d*/**/?.jp*g"})));
    EXPECT_EQ((Names{"photos/**/no.jpg"}), photos.found(search_for({"photos/**/no.jpg"})));
    fs::create_directory(photos.path("photos/a*b"));
    photos.folder().write("photos/a*b/f.jpg", "x");
    EXPECT_EQ((Names{"photos/a*b/f.jpg"}), photos.found(search_for({"photos/**/f.jpg"})));
}

TEST(batch_inputs, folders_that_two_stars_stand_for_are_kept) {
    const Photos photos;
    const BatchInputs inputs = photos.find(search_for({photos.path("photos/d*/**/?.jp*g")}), "");
    ASSERT_EQ(2u, inputs.photographs.size());
    EXPECT_EQ(0u, inputs.photographs[0].depth) << inputs.photographs[0].file;
    EXPECT_EQ(1u, inputs.photographs[1].depth) << inputs.photographs[1].file;
}

TEST(batch_inputs, a_file_with_the_letters_of_a_pattern_is_that_file) {
    const Photos photos;
    EXPECT_EQ((Names{"photos/c[1].jpg"}), photos.found(search_for({"photos/c[1].jpg"})));
}

TEST(batch_inputs, a_pattern_without_a_match_is_a_missing_file) {
    const Photos photos;
    EXPECT_EQ((Names{"photos/*.gif", "photos/no.jpg"}),
              photos.found(search_for({"photos/*.gif", "photos/no.jpg"})));
}

TEST(batch_inputs, a_photograph_that_is_named_twice_counts_once) {
    const Photos photos;
    EXPECT_EQ((Names{"photos/deep/../a.png", "photos/b.JPG", "photos/c[1].jpg"}),
              photos.found(search_for({"photos/deep/../a.png", "photos", "photos/./a.png", "photos/*.JPG"})));
}

TEST(batch_inputs, a_link_to_a_photograph_is_one_of_its_own) {
    const Photos photos;
    fs::create_symlink("a.png", photos.path("photos/z.png"));
    EXPECT_EQ((Names{"photos/a.png", "photos/z.png"}), photos.found(search_for({"photos/*.png"})));
}

TEST(batch_inputs, a_list_names_files_and_folders_one_a_line) {
    const Photos photos;
    const std::string list = photos.path("photos/a.png") + "\n\n" + photos.path("photos/deep") + "\n" +
                             photos.path("photos/*.JPG");
    EXPECT_EQ((Names{"photos/a.png", "photos/deep/d.jpeg", "photos/*.JPG"}),
              photos.found(search_for({"-"}), list))
        << "patterns are not for lists";
}

TEST(batch_inputs, a_list_with_nul_has_names_with_line_feeds) {
    const Photos photos;
    InputSearch search = search_for({"-"});
    search.null = true;
    const std::string list = photos.path("two\nlines.jpg") + '\0' + photos.path("b.jpg") + '\0';
    EXPECT_EQ((Names{"two\nlines.jpg", "b.jpg"}), photos.found(search, list));
}

TEST(batch_inputs, an_empty_list_has_no_photographs) {
    const Photos photos;
    EXPECT_EQ(Names{}, photos.found(search_for({"-"}), ""));
    EXPECT_EQ(Names{}, photos.found(search_for({"-"}), "\n\n"));
}

TEST(batch_inputs, a_name_in_a_list_is_never_standard_input_nor_an_option) {
    const Photos photos;
    const BatchInputs inputs = photos.find(search_for({"-"}), "-\n-o\n");
    ASSERT_EQ(2u, inputs.photographs.size());
    EXPECT_EQ("./-", inputs.photographs[0].file);
    EXPECT_EQ("-o", inputs.photographs[1].file);
}

TEST(batch_inputs, an_empty_name_is_a_problem) {
    const Photos photos;
    const BatchInputs inputs = photos.find(search_for({""}), "");
    EXPECT_EQ(0u, inputs.photographs.size());
    ASSERT_EQ(1u, inputs.problems.size());
    EXPECT_STREQ("a photograph without a name", inputs.problems[0].what());
}

TEST(batch_inputs, the_depth_is_that_below_the_folder_that_was_named) {
    const Photos photos;
    InputSearch search = search_for({photos.path("photos/deep/d.jpeg"), photos.path("photos")});
    search.recursive = true;
    for (const docprep::BatchInput& input : photos.find(search, "").photographs)
        EXPECT_EQ(input.absolute.filename() == "e.jpg"      ? 2u
                  : input.absolute.filename() == "page.png" ? 1u
                                                            : 0u,
                  input.depth)
            << input.file;
}
