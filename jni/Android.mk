# ndk-build's entry: the library, and its Java binding as a shared object. Sources as in orvex_991/CMakeLists.txt; a
# test compares the lists.
LOCAL_PATH := $(call my-dir)

# Pages of 16 KiB, which newer devices have; whoever links the library into a shared object gets it, too.
orvex_991_ldflags := -Wl,-z,max-page-size=16384

include $(CLEAR_VARS)
LOCAL_MODULE := orvex_991
LOCAL_SRC_FILES := \
    orvex_991/algorithms/adaptive_threshold.cpp \
    orvex_991/algorithms/affine_warp.cpp \
    orvex_991/algorithms/bit_morphology.cpp \
    orvex_991/algorithms/component_order.cpp \
    orvex_991/algorithms/convex_hull.cpp \
    orvex_991/algorithms/equalization.cpp \
    orvex_991/algorithms/forest_limit.cpp \
    orvex_991/algorithms/gray_morphology.cpp \
    orvex_991/algorithms/labelling.cpp \
    orvex_991/algorithms/mask_profile.cpp \
    orvex_991/algorithms/otsu.cpp \
    orvex_991/algorithms/quarter_turn.cpp \
    orvex_991/algorithms/red_mask.cpp \
    orvex_991/algorithms/rotating_calipers.cpp \
    orvex_991/algorithms/saliency.cpp \
    orvex_991/algorithms/seal_rules.cpp \
    orvex_991/algorithms/sharpness.cpp \
    orvex_991/algorithms/text_rows.cpp \
    orvex_991/base/block.cpp \
    orvex_991/base/key_sort.cpp \
    orvex_991/cv_forest_join.cpp \
    orvex_991/cv_geometry.cpp \
    orvex_991/cv_imgproc.cpp \
    orvex_991/cv_mat.cpp \
    orvex_991/kernels/kernels.cpp \
    orvex_991/util_math.cpp \
    orvex_991/util_string.cpp
LOCAL_C_INCLUDES := $(LOCAL_PATH)/orvex_991
LOCAL_EXPORT_C_INCLUDES := $(LOCAL_PATH)/orvex_991
# No file needs flags of its own: kernels.cpp compiles its loops for AVX2 by itself, and chooses at run time.
LOCAL_CPPFLAGS := -std=c++17 -O3 -ffp-contract=off
LOCAL_CPP_FEATURES := exceptions
LOCAL_EXPORT_LDFLAGS := $(orvex_991_ldflags)
include $(BUILD_STATIC_LIBRARY)

include $(CLEAR_VARS)
LOCAL_MODULE := orvex_991_jni
LOCAL_SRC_FILES := \
    ../bindings/android/bridge.cpp \
    ../bindings/android/nv21_packer.cpp \
    ../bindings/android/page_reader.cpp
LOCAL_CPPFLAGS := -std=c++17 -O3 -ffp-contract=off -fvisibility=hidden
LOCAL_CPP_FEATURES := exceptions
# Nothing but the methods of the Java classes is visible.
LOCAL_LDFLAGS := $(orvex_991_ldflags) -Wl,--exclude-libs,ALL
LOCAL_STATIC_LIBRARIES := orvex_991
include $(BUILD_SHARED_LIBRARY)
