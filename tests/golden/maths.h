// Results that pass through the C maths library (cosf, sinf, atan, atan2f), whose last bits are its own.
#ifndef ORVEX_TESTS_GOLDEN_MATHS_H
#define ORVEX_TESTS_GOLDEN_MATHS_H

namespace golden {

/// Prints the table of the reference's values.
void print_maths_table();

/// Compares the library's values with those of a file: prints, for each operation, the largest distance
/// in units in the last place.
/// @return whether all are within the bound that the table states, and what follows from them by plain
///         arithmetic follows to the bit
bool compare_maths(const char* table_path);

}  // namespace golden

#endif  // ORVEX_TESTS_GOLDEN_MATHS_H
