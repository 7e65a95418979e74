// Runs a driver on kept inputs, with any compiler. usage: fuzz_replay DRIVER FILE-OR-FOLDER...
//
// A folder that does not exist holds no inputs; no input at all is an error.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "driver.h"

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> inputs_of(const fs::path& path) {
    std::vector<fs::path> files;
    if (fs::is_directory(path)) {
        for (const auto& entry : fs::directory_iterator(path))
            if (entry.path().filename().string().front() != '.') files.push_back(entry.path());
    } else if (fs::exists(path)) {
        files.push_back(path);
    }
    std::sort(files.begin(), files.end());
    return files;
}

void replay(const fuzzing::Driver& driver, const fs::path& file) {
    std::fprintf(stderr, "%s %s\n", driver.name, file.c_str());
    std::ifstream in(file, std::ios::binary);
    std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
    bytes.shrink_to_fit();  // so that the address sanitizer sees a look beyond them
    fuzzing::Reader reader(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    driver.run(reader);
}

}  // namespace

int main(int argc, char** argv) {
    const auto& all = fuzzing::drivers();
    const auto driver = std::find_if(all.begin(), all.end(), [&](const fuzzing::Driver& candidate) {
        return argc > 1 && std::strcmp(argv[1], candidate.name) == 0;
    });
    if (driver == all.end()) {
        std::fprintf(stderr, "usage: fuzz_replay DRIVER FILE-OR-FOLDER...\n");
        return 2;
    }
    size_t count = 0;
    for (int i = 2; i < argc; ++i)
        for (const fs::path& file : inputs_of(argv[i])) {
            replay(*driver, file);
            ++count;
        }
    std::fprintf(stderr, "%zu inputs\n", count);
    return count > 0 ? 0 : 1;
}
