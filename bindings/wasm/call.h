// How JavaScript calls a function of the module, and what it finds afterwards.
//
// Every function returns 0 or the code of an error. Images are matrices whose addresses JavaScript holds; it reads and
// writes their fields itself. All other results stand in a block of words, lists as the address and the length of a
// block that JavaScript frees.
#ifndef ORVEX_WASM_CALL_H
#define ORVEX_WASM_CALL_H

#include <cstddef>
#include <cstdio>
#include <new>

#include "cv_imgproc.h"

/// A function that JavaScript calls by its name.
#define ORVEX_EXPORT(type) extern "C" __attribute__((visibility("default"), used)) type

namespace orvex_wasm {

using orvex_991::vector;
using orvex_cv_991::CImgproc;
using orvex_cv_991::Mat;
using orvex_cv_991::Point;
using orvex_cv_991::Point32f;
using orvex_cv_991::Rect;
using orvex_cv_991::RotatedRect;
using orvex_cv_991::Size;
using U8 = CImgproc::U8;

// What package/memory.js relies on.
static_assert(sizeof(int) == 4 && sizeof(void*) == 4);
template <class T>
constexpr bool is_as_read = offsetof(Mat<T>, rows) == 0 && offsetof(Mat<T>, cols) == 4 &&
                            offsetof(Mat<T>, channels) == 8 && offsetof(Mat<T>, data) == 12;
static_assert(is_as_read<unsigned char> && is_as_read<int>);
static_assert(sizeof(Point) == 8 && sizeof(Point32f) == 8 && sizeof(Rect) == 16);

/// A number of a result, or where a list begins.
union Word {
    int number;
    double real;
    void* block;
};
static_assert(sizeof(Word) == 8);

constexpr int kMostBlocks = 4;

/// What calls fill, from the front.
extern Word results[16];

/// Before a call.
void begin_call() noexcept;

/// After a call that threw: keeps the message for JavaScript and frees the blocks that it will not ask for.
void fail_call(const orvex_991::String& message) noexcept;

/// Runs a call and hands its lines over. 0, or the code of what it threw.
template <class Call>
int code_of(const Call& call) noexcept {
    int code = 0;
    begin_call();
    try {
        call();
    } catch (const orvex_991::CException& error) {
        fail_call(error.message);
        code = error.code;
    } catch (const std::bad_alloc&) {
        fail_call(orvex_991::String());
        code = 3;
    }
    std::fflush(stdout);
    return code;
}

/// The 2 x 3 matrix of JavaScript's 6 numbers.
Mat<float> matrix_from(const float* elements);

/// A list from JavaScript's block.
template <class T>
vector<T> list_from(const T* data, int n) {
    vector<T> list(n);
    for (int k = 0; k < n; ++k) list[k] = data[k];
    return list;
}

/// Memory that holds anything, for JavaScript, which frees it when the call has succeeded. A call makes kMostBlocks.
/// @throws std::bad_alloc
void* block_of(std::size_t bytes);

/// Room for a list, which two words of the results tell.
/// @throws std::bad_alloc
template <class T>
T* give_room(Word* words, int n) {
    void* const block = block_of(sizeof(T) * static_cast<std::size_t>(n));
    words[0].block = block;
    words[1].number = n;
    return static_cast<T*>(block);
}

/// @throws std::bad_alloc
template <class T>
void give(Word* words, const vector<T>& list) {
    const int n = list.size;
    T* const to = give_room<T>(words, n);
    for (int k = 0; k < n; ++k) to[k] = list[k];
}

/// Lists as the list of their lengths and that of all their elements, in four words.
/// @throws std::bad_alloc
template <class T>
void give(Word* words, const vector<vector<T>>& lists) {
    const int n = lists.size;
    int* const lengths = give_room<int>(words, n);
    int sum = 0;
    for (int k = 0; k < n; ++k) sum += lengths[k] = lists[k].size;
    T* to = give_room<T>(words + 2, sum);
    for (int k = 0; k < n; ++k)
        for (int i = 0; i < lengths[k]; ++i) *to++ = lists[k][i];
}

}  // namespace orvex_wasm

#endif  // ORVEX_WASM_CALL_H
