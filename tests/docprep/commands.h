// Running docprep, and what holds of every run.
#ifndef DOCPREP_COMMANDS_H
#define DOCPREP_COMMANDS_H

#include <string>
#include <vector>

#include "cli/exit_codes.h"
#include "formats/photo.h"
#include "test_files.h"

using Names = std::vector<std::string>;

/// Runs docprep.
Outcome docprep_with(Names arguments);

/// Runs docprep from a shell that first executes `setting`, and may redirect.
Outcome docprep_after(const std::string& setting, const Names& arguments,
                      const std::string& redirection = "");

/// Expects an exit code, exactly the line "docprep: FILE: reason", and nothing else.
void expect_failure(const Outcome& outcome, const std::string& file, const std::string& reason,
                    int exit_code = docprep::kFailed);

/// Expects exit code 64, one line "docprep: ..." with `words` in it, and nothing else.
void expect_wrong_usage(const Names& arguments, const std::string& words = "");

void expect_one_line(const std::string& text);

/// Expects two pictures of the same shape and content.
void expect_same_pixels(const docprep::Image& expected, const docprep::Image& found);

/// A page of 4 rows of 13 dark squares, 15 x 12 pixels, at rows 40, 80, 120 and 160. It has more
/// than two grey levels.
constexpr int kPageRows = 200;
constexpr int kPageCols = 300;
int page_of_squares(int row, int col);

/// The page as a grey JPEG; returns its path.
std::string write_page(const TemporaryFolder& folder, const std::string& name);

/// White paper with a red disc of radius 30 in a ring of radii 40 to 50, round column 180 and row 120.
constexpr int kSealX = 180;
constexpr int kSealY = 120;
int sealed_page(int row, int col, int k);

/// That paper, 200 rows by 300 columns, as a PNG in colour; returns its path.
std::string write_sealed_page(const TemporaryFolder& folder, const std::string& name);

#endif  // DOCPREP_COMMANDS_H
