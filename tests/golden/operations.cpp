#include <string>
#include <vector>

#include "cases.h"
#include "images.h"
#include "operations.h"
#include "seals.h"

namespace golden {

namespace {

using namespace testing_support;

constexpr const char* kContents[] = {"noise",   "constant", "sparse", "dense",    "half",      "checkerboard",
                                     "stripes", "spiral",   "text",   "gradient", "few levels"};
constexpr int kContentCount = static_cast<int>(Content::kCount);
static_assert(sizeof kContents / sizeof *kContents == kContentCount);

struct Input {
    std::string name;
    U8 image;
};

void record(const Recorder& recorder, const Operation& operation, const Input& input, bool in_place) {
    const std::string name = operation.name + " " + input.name + (in_place ? " in place" : "");
    // The angle of a rotated rectangle is the maths library's, and among the distances of maths.h.
    recorder.record(
        name,
        [&] {
            Outputs out;
            if (in_place) out.dst = input.image;
            const Outcome did = of_library([&] { operation.run(in_place ? out.dst : input.image, out); });
            out.rotated.angle = 0;
            return outcome_of(did, out);
        },
        [&] {
            Outputs out;
            if (in_place) out.dst = input.image;
            PlainOutputs plain(out, in_place);
            const Outcome did = of_reference([&] { operation.plain(to_reference(input.image), plain); });
            plain.rotated.angle = 0;
            return outcome_of(did, plain);
        });
}

/// Every width up to that of a vector, so that all its tails are met; all contents in turn.
std::vector<Input> inputs() {
    std::vector<Input> list;
    Random random(1001);
    int kind = 0;
    const auto add = [&](int rows, int cols, int channels) {
        const auto next = static_cast<Content>(kind++ % kContentCount);
        U8 image = content(random, rows, cols, channels, next);
        const std::string name = shape_of(image) + " " + kContents[static_cast<int>(next)];
        list.push_back({name, std::move(image)});
    };
    for (int cols = 1; cols <= 67; cols += cols < 34 ? 1 : 3) add(any_side(random), cols, 1);
    for (int cols = 1; cols <= 67; cols += 4) add(any_side(random), cols, 3);
    for (const int prime : {101, 127, 257, 521})
        for (const int channels : {1, 3}) add(random.range(1, 40), prime, channels);
    for (const int channels : {2, 4})
        for (int k = 0; k < 3; ++k) {
            const int rows = any_side(random);
            add(rows, any_side(random), channels);
        }
    int number = 0;
    for (U8& odd : odd_matrices()) {
        const std::string name = "odd " + std::to_string(number++) + ", " + shape_of(odd);
        list.push_back({name, std::move(odd)});
    }
    return list;
}

}  // namespace

void record_operations(const Recorder& recorder) {
    Random random(1002);
    const std::vector<Input> images = inputs();
    for (const Operation& operation : image_operations())
        for (const Input& input : images) record(recorder, operation, input, random.chance(25));

    Random widths(1003);
    for (int cols = 1; cols <= 67; ++cols) {
        const U8 colours = content(widths, widths.range(1, 9), cols, 3, Content::kNoise);
        const Input input = {shape_of(colours) + " of every width", colours};
        for (const Operation& operation : image_operations())
            if (operation.name.rfind("bgr2", 0) == 0) record(recorder, operation, input, false);
    }

    Random seals(1004);
    for (int k = 0; k < 60; ++k) {
        const Input photo = {"seal photo " + std::to_string(k), any_seal_photo(seals)};
        for (const Operation& operation : image_operations())
            if (operation.name.rfind("redColorDetect", 0) == 0 ||
                (k < 4 && operation.name.rfind("bgr2", 0) == 0))
                record(recorder, operation, photo, seals.chance(20));
    }
}

}  // namespace golden
