#include "call.h"

#include <cstdlib>
#include <cstring>

namespace orvex_wasm {

// One for the module, which has one thread.
Word results[16];

namespace {

char last_message[128];  // longer than any of the library
void* blocks[kMostBlocks];
int block_count;

}  // namespace

void begin_call() noexcept {
    block_count = 0;
}

void fail_call(const orvex_991::String& message) noexcept {
    std::strncpy(last_message, message.c_str(), sizeof last_message - 1);
    for (int k = 0; k < block_count; ++k) std::free(blocks[k]);
}

Mat<float> matrix_from(const float* elements) {
    Mat<float> matrix;
    matrix.mat_create(2, 3, 1, 0);
    for (int k = 0; k < 6; ++k) matrix.data[k] = elements[k];
    return matrix;
}

void* block_of(std::size_t bytes) {
    void* const block = std::malloc(bytes > 0 ? bytes : 1);
    if (!block) throw std::bad_alloc();
    return blocks[block_count++] = block;
}

ORVEX_EXPORT(const Word*) orvex_results() {
    return results;
}

ORVEX_EXPORT(const char*) orvex_message() {
    return last_message;
}

// Null without memory.
ORVEX_EXPORT(void*) orvex_alloc(std::size_t bytes) {
    return std::malloc(bytes > 0 ? bytes : 1);
}

ORVEX_EXPORT(void) orvex_free(void* block) {
    std::free(block);
}

// An image whose pixels hold anything; null without memory. JavaScript has checked that the extents are not negative and
// that there are at most 2^31 - 1 bytes.
ORVEX_EXPORT(U8*) orvex_image(int rows, int cols, int channels) {
    U8* const image = new (std::nothrow) U8;
    if (!image) return nullptr;
    image->data = new (std::nothrow) unsigned char[static_cast<std::size_t>(rows * cols * channels)];
    if (!image->data) {
        delete image;
        return nullptr;
    }
    image->rows = image->dims_rows = rows;
    image->cols = image->dims_cols = cols;
    image->channels = image->elem_size = channels;
    image->step = cols * channels;
    return image;
}

ORVEX_EXPORT(void) orvex_free_image(U8* image) {
    delete image;
}

ORVEX_EXPORT(Mat<int>*) orvex_labels() {
    return new (std::nothrow) Mat<int>;
}

ORVEX_EXPORT(void) orvex_free_labels(Mat<int>* labels) {
    delete labels;
}

}  // namespace orvex_wasm
