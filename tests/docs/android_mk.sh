#!/bin/sh
# The makefile that the guide shows to Android apps names every source of the library, and links it. Plain make runs it,
# with stand-ins for what the NDK includes. usage: android_mk.sh SOURCE
set -eu
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/jni"
cp "$1/examples/app_android.mk" "$work/jni/Android.mk"
ln -s "$1/jni/orvex_991" "$work/jni/orvex_991"
cd "$work"
cat > ndk.mk <<'MAKE'
my-dir = jni
CLEAR_VARS := clear.mk
BUILD_STATIC_LIBRARY := static.mk
BUILD_SHARED_LIBRARY := shared.mk
include jni/Android.mk
all: ;
MAKE
echo 'undefine LOCAL_SRC_FILES' > clear.mk
# shellcheck disable=SC2016  # make expands them
echo '$(foreach file,$(LOCAL_SRC_FILES),$(info $(LOCAL_MODULE) $(file)))' > static.mk
# shellcheck disable=SC2016
echo '$(info $(LOCAL_MODULE) links $(LOCAL_STATIC_LIBRARIES))' > shared.mk
make -s -f ndk.mk > printed
sed -n '/^add_library(orvex_991 STATIC/,/)/s,^ *\([a-z_/]*\.cpp\).*,orvex_991 orvex_991/\1,p' \
    "$1/jni/orvex_991/CMakeLists.txt" | sort > expected
echo 'app links orvex_991' >> expected
sort printed | grep -v '^app' > found || true
grep '^app' printed >> found
diff expected found
