// A program of one driver under libFuzzer.
#include "driver.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t n);

int LLVMFuzzerTestOneInput(const unsigned char* data, size_t n) {
    fuzzing::Reader reader(data, n);
    fuzzing::drivers().front().run(reader);
    return 0;
}
