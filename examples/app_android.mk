# jni/Android.mk of an app: the library from its sources, and the app's own code linked with it.
LOCAL_PATH := $(call my-dir)

include $(CLEAR_VARS)
LOCAL_MODULE := orvex_991
sources := $(wildcard $(LOCAL_PATH)/orvex_991/*.cpp $(LOCAL_PATH)/orvex_991/*/*.cpp)
LOCAL_SRC_FILES := $(sources:$(LOCAL_PATH)/%=%)
LOCAL_C_INCLUDES := $(LOCAL_PATH)/orvex_991
LOCAL_EXPORT_C_INCLUDES := $(LOCAL_PATH)/orvex_991
LOCAL_CPPFLAGS := -std=c++17 -O3
LOCAL_CPP_FEATURES := exceptions
include $(BUILD_STATIC_LIBRARY)

include $(CLEAR_VARS)
LOCAL_MODULE := app
LOCAL_SRC_FILES := app.cpp
LOCAL_CPPFLAGS := -std=c++17
LOCAL_CPP_FEATURES := exceptions
LOCAL_STATIC_LIBRARIES := orvex_991
include $(BUILD_SHARED_LIBRARY)
