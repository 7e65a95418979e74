// tools/ocr_check with a stand-in for the recogniser: what it runs, counts and says.
#include <gtest/gtest.h>

#include "commands.h"

namespace {

Outcome ocr_check(const Names& arguments) {
    Names all = {OCR_CHECK_PYTHON, OCR_CHECK};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return run_program(all);
}

/// A recogniser that reads "ab cd" from prepared pages and "ab xx" from everything else; returns its path.
std::string write_recogniser(const TemporaryFolder& folder) {
    const std::string path =
        folder.write("reader",
                     "#!/bin/sh\n"
                     "case $1 in */page.png) echo 'ab  cd' ;; *) echo 'ab xx' ;; esac\n");
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    return path;
}

}  // namespace

TEST(ocr_check, error_rates_of_photo_and_page_are_listed_with_their_means) {
    const TemporaryFolder folder;
    const std::string photo = write_page(folder, "squares.jpg");
    const std::string silent = write_page(folder, "without_text.jpg");
    folder.write("squares.gt.txt", "ab\ncd\n");
    const Outcome outcome =
        ocr_check({"--tesseract", write_recogniser(folder), DOCPREP_PROGRAM, photo, silent});
    EXPECT_EQ(0, outcome.exit_code) << outcome.err;
    EXPECT_EQ(
        "photograph      raw  prepared\n"
        "squares.jpg   0.400     0.000\n"
        "mean          0.400     0.000\n",
        outcome.out);
}

TEST(ocr_check, arguments_after_two_hyphens_reach_docprep) {
    const TemporaryFolder folder;
    const std::string photo = write_page(folder, "squares.jpg");
    folder.write("squares.gt.txt", "ab cd");
    const Outcome outcome = ocr_check(
        {"--tesseract", write_recogniser(folder), DOCPREP_PROGRAM, photo, "--", "--min-sharpness", "1e6"});
    EXPECT_EQ(1, outcome.exit_code);
    EXPECT_NE(std::string::npos, outcome.err.find(" is blurred: sharpness ")) << outcome.err;
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
