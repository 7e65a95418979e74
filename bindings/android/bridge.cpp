// The native methods of com.orvex991. They keep no state. Arguments come checked from the Java side: buffers are direct
// and long enough, extents positive. No C++ exception leaves a method: it becomes a Java one.
#include <jni.h>

#include <new>
#include <vector>

#include "nv21_packer.h"
#include "page_reader.h"

using namespace orvex_android;
using orvex_991::CException;
using orvex_cv_991::Rect;

namespace {

constexpr int kNoMemory = 3;

void throw_java(JNIEnv* env, int code, const char* message) {
    const jclass type = env->FindClass("com/orvex991/ImageException");
    if (type == nullptr) return;  // a Java exception is on its way already; so below
    const jmethodID constructor = env->GetMethodID(type, "<init>", "(ILjava/lang/String;)V");
    if (constructor == nullptr) return;
    const jstring text = env->NewStringUTF(message);
    if (text == nullptr) return;
    const jobject exception = env->NewObject(type, constructor, jint{code}, text);
    if (exception != nullptr) env->Throw(static_cast<jthrowable>(exception));
}

const uint8_t* bytes_of(JNIEnv* env, jobject buffer) {
    return static_cast<const uint8_t*>(env->GetDirectBufferAddress(buffer));
}

void append(const Rect& rect, std::vector<jint>& numbers) {
    numbers.insert(numbers.end(), {rect.x, rect.y, rect.width, rect.height});
}

std::vector<jint> numbers_of(const Rects& rects) {
    std::vector<jint> numbers;
    for (int k = 0; k < rects.size; ++k) append(rects[k], numbers);
    return numbers;
}

/// Null, and a Java exception on its way, without memory.
jintArray int_array(JNIEnv* env, const std::vector<jint>& numbers) {
    const auto count = static_cast<jsize>(numbers.size());
    const jintArray array = env->NewIntArray(count);
    if (array != nullptr) env->SetIntArrayRegion(array, 0, count, numbers.data());
    return array;
}

jbyteArray byte_array(JNIEnv* env, const Image& image) {
    const jsize count = image.rows * image.cols;
    const jbyteArray array = env->NewByteArray(count);
    if (array != nullptr)
        env->SetByteArrayRegion(array, 0, count, reinterpret_cast<const jbyte*>(image.data));
    return array;
}

/// Null, and a Java exception on its way, without memory.
jobject java_page(JNIEnv* env, const Page& page) {
    std::vector<jint> row_lengths, row_boxes;
    for (int k = 0; k < page.rows.size; ++k) {
        const Rects& row = page.rows[k];
        row_lengths.push_back(row.size);
        for (int i = 0; i < row.size; ++i) append(row[i], row_boxes);
    }
    const jclass type = env->FindClass("com/orvex991/Page");
    if (type == nullptr) return nullptr;
    const jmethodID constructor = env->GetMethodID(type, "<init>", "(II[BF[I[I[I)V");
    if (constructor == nullptr) return nullptr;
    const jbyteArray pixels = byte_array(env, page.pixels);
    if (pixels == nullptr) return nullptr;
    const jintArray components = int_array(env, numbers_of(page.components));
    if (components == nullptr) return nullptr;
    const jintArray lengths = int_array(env, row_lengths);
    if (lengths == nullptr) return nullptr;
    const jintArray boxes = int_array(env, row_boxes);
    if (boxes == nullptr) return nullptr;
    return env->NewObject(type, constructor, jint{page.pixels.cols}, jint{page.pixels.rows}, pixels,
                          jfloat{page.sharpness}, components, lengths, boxes);
}

}  // namespace

extern "C" {

JNIEXPORT jobject JNICALL Java_com_orvex991_PageReader_read(JNIEnv* env, jclass, jobject data, jboolean nv21,
                                                            jint columns, jint rows, jboolean binary,
                                                            jint least_height, jint most_height) {
    try {
        const Page page =
            read_page(bytes_of(env, data), nv21 ? PixelFormat::kNv21 : PixelFormat::kBgr, rows, columns,
                      binary ? PageKind::kBinary : PageKind::kGray, {least_height, most_height});
        return java_page(env, page);
    } catch (const CException& e) {
        throw_java(env, e.code, e.message.c_str());
    } catch (const std::bad_alloc&) {
        throw_java(env, kNoMemory, "");
    }
    return nullptr;
}

JNIEXPORT void JNICALL Java_com_orvex991_Nv21_pack(JNIEnv* env, jclass, jobject y, jint y_row, jint y_pixel,
                                                   jobject u, jint u_row, jint u_pixel, jobject v, jint v_row,
                                                   jint v_pixel, jint columns, jint rows, jobject out) {
    pack_nv21({bytes_of(env, y), y_row, y_pixel}, {bytes_of(env, u), u_row, u_pixel},
              {bytes_of(env, v), v_row, v_pixel}, rows, columns,
              static_cast<uint8_t*>(env->GetDirectBufferAddress(out)));
}

}  // extern "C"
