APP_ABI := arm64-v8a armeabi-v7a x86 x86_64
APP_PLATFORM := android-21
APP_STL := c++_static
APP_SUPPORT_FLEXIBLE_PAGE_SIZES := true
