// Digests of what every operation does on fixed inputs, the same ones on every processor and compiler.
//
//   golden_digests                    by the library, one case a line
//   golden_digests --reference        the same lines by the plain reference: digests.txt
//   golden_digests --maths TABLE      how far results of the maths library are from a table's
//   golden_digests --maths-table      that table, by the plain reference: maths.txt
#include <cstdio>
#include <cstring>

#include "cases.h"
#include "maths.h"

int main(int argc, char** argv) {
    const char* const mode = argc > 1 ? argv[1] : "";
    if (std::strcmp(mode, "--maths") == 0 && argc == 3) return golden::compare_maths(argv[2]) ? 0 : 1;
    if (std::strcmp(mode, "--maths-table") == 0) {
        golden::print_maths_table();
        return 0;
    }
    const bool by_reference = std::strcmp(mode, "--reference") == 0;
    if (argc > 2 || (argc > 1 && !by_reference)) {
        std::fprintf(stderr, "usage: golden_digests [--reference | --maths TABLE | --maths-table]\n");
        return 64;
    }
    const golden::Recorder recorder(by_reference);
    golden::record_operations(recorder);
    golden::record_parameters(recorder);
    golden::record_geometry(recorder);
    golden::record_values(recorder);
    return 0;
}
