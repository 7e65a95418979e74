// tools/ocr_check with stand-ins for the recogniser and docprep: what it runs, counts and says.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "commands.h"

namespace {

Outcome ocr_check(const Names& arguments) {
    Names all = {OCR_CHECK_PYTHON, OCR_CHECK};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return run_program(all);
}

std::string write_script(const TemporaryFolder& folder, const std::string& name, const std::string& text) {
    std::string path = folder.write(name, "#!/bin/sh\n" + text);
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    return path;
}

/// A recogniser that reads what a prepared page holds, and "ab xx" from everything else; returns its path.
/// Each time it reads, it adds a line to the file "reads" beside it.
std::string write_recogniser(const TemporaryFolder& folder) {
    return write_script(folder, "reader",
                        "[ $1 != --version ] || exec echo 'reader 1'\n"
                        "echo $1 >>${0%/*}/reads\n"
                        "case $1 in */page.png | */OUT.*) cat $1 ;; *) echo 'ab xx' ;; esac\n");
}

/// A docprep whose page.png holds another text for each choice; it writes its arguments to "arguments" beside it.
std::string write_docprep(const TemporaryFolder& folder) {
    return write_script(folder, "docprep",
                        "echo $* >${0%/*}/arguments\n"
                        "case $7 in soft) text='ab  cd' ;; binary) text='ab cx' ;; *) text='xx xx' ;; esac\n"
                        "echo $text >$3/page.png\n");
}

size_t lines_of(const std::string& path) {
    const std::string text = text_of(path);
    return static_cast<size_t>(std::count(text.begin(), text.end(), '\n'));
}

}  // namespace

TEST(ocr_check, error_rates_of_photo_and_pages_are_listed_with_their_means) {
    const TemporaryFolder folder;
    const std::string photo = write_page(folder, "squares.jpg");
    const std::string silent = write_page(folder, "without_text.jpg");
    folder.write("squares.gt.txt", "ab\ncd\n");
    const Outcome outcome =
        ocr_check({"--tesseract", write_recogniser(folder), write_docprep(folder), photo, silent});
    EXPECT_EQ(0, outcome.exit_code) << outcome.err;
    EXPECT_EQ(
        "photograph      raw    soft  binary\n"
        "squares.jpg   0.400   0.000   0.200\n"
        "mean          0.400   0.000   0.200\n"
        "\n"
        "soft: worse than raw by more than 0.02 on 0 of 1\n"
        "binary: worse than raw by more than 0.02 on 0 of 1\n",
        outcome.out);
}

TEST(ocr_check, a_folder_stands_for_its_pictures_and_pages_made_worse_are_named) {
    const TemporaryFolder folder;
    const std::string pictures = folder.path("pictures");
    std::filesystem::create_directory(pictures);
    for (const char* name : {"pictures/b.jpg", "pictures/a.jpg", "pictures/without_text.jpg"}) {
        write_page(folder, name);
    }
    folder.write("pictures/a.gt.txt", "ab cd");
    folder.write("pictures/b.gt.txt", "ab xx");
    const Outcome outcome = ocr_check(
        {"--tesseract", write_recogniser(folder), "--choices", "gray,soft", write_docprep(folder), pictures});
    EXPECT_EQ(0, outcome.exit_code) << outcome.err;
    EXPECT_EQ(
        "photograph     raw    gray    soft\n"
        "a.jpg        0.400   0.800   0.000\n"
        "b.jpg        0.000   0.400   0.400\n"
        "mean         0.200   0.600   0.200\n"
        "\n"
        "gray: worse than raw by more than 0.02 on 2 of 2: a.jpg, b.jpg\n"
        "soft: worse than raw by more than 0.02 on 1 of 2: b.jpg\n",
        outcome.out);
}

TEST(ocr_check, arguments_after_two_hyphens_reach_docprep) {
    const TemporaryFolder folder;
    const std::string photo = write_page(folder, "squares.jpg");
    folder.write("squares.gt.txt", "ab cd");
    const Outcome outcome = ocr_check({"--tesseract", write_recogniser(folder), "--choices", "soft",
                                       write_docprep(folder), photo, "--", "--min-sharpness", "1e6"});
    EXPECT_EQ(0, outcome.exit_code) << outcome.err;
    const std::string arguments = text_of(folder.path("arguments"));
    EXPECT_EQ(0U, arguments.find(photo + " -o ")) << arguments;
    EXPECT_NE(std::string::npos, arguments.find(" --stages page --page soft --min-sharpness 1e6\n"))
        << arguments;
}

TEST(ocr_check, what_is_kept_of_raw_pictures_is_not_read_again) {
    const TemporaryFolder folder;
    const std::string photo = write_page(folder, "squares.jpg");
    folder.write("squares.gt.txt", "ab cd");
    const Names arguments = {"--tesseract", write_recogniser(folder), "--choices",           "soft",
                             "--cache",     folder.path("cache"),     write_docprep(folder), photo};
    const Outcome first = ocr_check(arguments);
    EXPECT_EQ(0, first.exit_code) << first.err;
    EXPECT_EQ(2U, lines_of(folder.path("reads")));
    EXPECT_EQ(first.out, ocr_check(arguments).out);
    EXPECT_EQ(3U, lines_of(folder.path("reads"))) << "the page alone is read again";
}

TEST(ocr_check, peers_get_columns_and_their_commands_stand_below_the_table) {
    const TemporaryFolder folder;
    const std::string photo = write_page(folder, "squares.jpg");
    folder.write("squares.gt.txt", "ab cd");
    write_script(folder, "convert", "[ $# -gt 1 ] || exit 0\nfor last; do :; done\necho 'ab cx' >$last\n");
    write_script(folder, "unpaper", "[ $# -gt 1 ] || exit 0\nsed s/x/d/ $1 >$2\n");
    const std::string path = "PATH=" + folder.path(".") + ":" + std::getenv("PATH");
    const Outcome outcome =
        run_program({"env", path, OCR_CHECK_PYTHON, OCR_CHECK, "--tesseract", write_recogniser(folder),
                     "--choices", "", "--peers", write_docprep(folder), photo});
    EXPECT_EQ(0, outcome.exit_code) << outcome.err;
    EXPECT_EQ(0U, outcome.out.find("photograph      raw  imagemagick  unpaper\n"
                                   "squares.jpg   0.400        0.200    0.000\n"
                                   "mean          0.400        0.200    0.000\n"
                                   "\n"
                                   "imagemagick: worse than raw by more than 0.02 on 0 of 1\n"
                                   "unpaper: worse than raw by more than 0.02 on 0 of 1\n"
                                   "imagemagick: convert IN "))
        << outcome.out;
}

TEST(ocr_check, a_missing_recogniser_is_one_line) {
    const TemporaryFolder folder;
    const std::string missing = folder.path("reader");
    const Outcome outcome = ocr_check({"--tesseract", missing, DOCPREP_PROGRAM, write_page(folder, "a.jpg")});
    EXPECT_EQ(1, outcome.exit_code);
    EXPECT_EQ("ocr_check: " + missing + " is missing; Debian has it in the package tesseract-ocr\n",
              outcome.err);
}

TEST(ocr_check, photographs_without_text_beside_them_are_one_line) {
    const TemporaryFolder folder;
    const Outcome outcome =
        ocr_check({"--tesseract", write_recogniser(folder), DOCPREP_PROGRAM, write_page(folder, "a.jpg")});
    EXPECT_EQ(1, outcome.exit_code);
    EXPECT_EQ("ocr_check: none of the photographs has its text beside it (photo.gt.txt)\n", outcome.err);
}

TEST(ocr_check, a_program_that_cannot_be_run_is_one_line) {
    const TemporaryFolder folder;
    const std::string photo = write_page(folder, "squares.jpg");
    folder.write("squares.gt.txt", "ab cd");
    const Outcome outcome = ocr_check({"--tesseract", write_recogniser(folder), folder.path("no"), photo});
    EXPECT_EQ(1, outcome.exit_code);
    EXPECT_EQ("ocr_check: " + folder.path("no") + ": No such file or directory\n", outcome.err);
}
