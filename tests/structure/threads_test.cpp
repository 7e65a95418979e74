// Operations keep no state: threads call them at the same time, and each gets what it would get alone.
// Under the thread sanitizer no access races.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "operations.h"
#include "same.h"
#include "seals.h"

namespace testing_support {
namespace {

/// Standard output goes nowhere meanwhile; the lines of threads would only mix.
class Silence {
 public:
    Silence() : saved_(dup(STDOUT_FILENO)), nowhere_(open("/dev/null", O_WRONLY)) {
        std::fflush(stdout);
        dup2(nowhere_, STDOUT_FILENO);
    }
    ~Silence() {
        std::fflush(stdout);
        dup2(saved_, STDOUT_FILENO);
        close(saved_);
        close(nowhere_);
    }

 private:
    const int saved_, nowhere_;
};

Outcome outcome_of_run(const Operation& operation, const U8& src) {
    Outputs out;
    Outcome call;
    try {
        operation.run(src, out);
    } catch (const orvex_991::CException& e) {
        call.thrown = std::to_string(e.code) + e.message.c_str();
    }
    return outcome_of(std::move(call), out);
}

std::vector<U8> inputs() {
    Random random(3);
    std::vector<U8> images;
    images.push_back(text_page(60, 97, 2));
    images.push_back(content(random, 41, 67, 3, Content::kNoise));
    images.push_back(any_seal_photo(random));
    images.push_back(content(random, 31, 33, 1, Content::kHalf));
    return images;
}

TEST(Structure, threads_that_run_every_operation_at_once_do_not_disturb_each_other) {
    const std::vector<Operation>& operations = image_operations();
    const std::vector<U8> images = inputs();
    std::vector<Outcome> alone;
    std::vector<std::string> different;
    {
        const Silence silence;
        for (const U8& image : images)
            for (const Operation& operation : operations) alone.push_back(outcome_of_run(operation, image));
        // They begin at different operations, so that each meets every other.
        std::vector<std::vector<std::string>> found(3);
        std::vector<std::thread> threads;
        for (size_t t = 0; t < found.size(); ++t) {
            threads.emplace_back([&, t] {
                for (size_t k = 0; k < alone.size(); ++k) {
                    const size_t at = (k + t * alone.size() / found.size()) % alone.size();
                    const Operation& operation = operations[at % operations.size()];
                    const Outcome together = outcome_of_run(operation, images[at / operations.size()]);
                    if (!same(together, alone[at])) found[t].push_back(operation.name);
                }
            });
        }
        for (std::thread& thread : threads) thread.join();
        for (const auto& names : found) different.insert(different.end(), names.begin(), names.end());
    }
    EXPECT_EQ(alone.size(), images.size() * operations.size());
    EXPECT_EQ(different, std::vector<std::string>());
}

}  // namespace
}  // namespace testing_support
