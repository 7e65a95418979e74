// docprep without memory: docprep_failing K ARGUMENT... passes the arguments on, and from the k-th allocation
// on all of them fail.
#include <cstdlib>

#include "allocations.h"

/// main of docprep, which is compiled under this name.
int docprep_main(int argc, char** argv);

int main(int argc, char** argv) {
    if (argc < 2) return 1;
    const testing_support::FailingAllocations failing(std::atol(argv[1]));
    return docprep_main(argc - 1, argv + 1);
}
