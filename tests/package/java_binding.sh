#!/bin/sh
# The Java binding, compiled for this machine as jni/Android.mk says, passes its tests on a desktop JVM.
# usage: java_binding.sh DOCUMENT SOURCE
set -eu
. "$(dirname "$0")/ndk.sh"
. "$(dirname "$0")/consumer.sh"
source=$2
home=${JAVA_HOME-$(dirname "$(dirname "$(readlink -f "$(command -v javac)")")")}

ndk_modules "$source" > modules
of() { sed -n "s/^$1 $2 //p" modules; }

# compile MODULE FLAG...: its objects, in a folder of its name.
compile() {
    module=$1
    shift
    flags=$(of "$module .*" LOCAL_CPPFLAGS)
    mkdir "$module"
    # shellcheck disable=SC2086  # one word a flag
    of "$module .*" LOCAL_SRC_FILES | tr -s ' ' '\n' | sed "s,^,$source/jni/," |
        (cd "$module" && xargs -n 1 -P "$(nproc)" c++ -c -fPIC -Wall -Wextra -Werror $flags "$@")
}
exported=$(of 'orvex_991 static' LOCAL_EXPORT_C_INCLUDES)
compile orvex_991 -I "$(of 'orvex_991 static' LOCAL_C_INCLUDES)"
ar rc liborvex_991.a orvex_991/*.o
compile orvex_991_jni -I "$exported" -I "$home/include" -I "$home/include/linux"
# shellcheck disable=SC2046  # one word a flag
c++ -shared orvex_991_jni/*.o $(of 'orvex_991_jni shared' LOCAL_LDFLAGS) $(of 'orvex_991 static' LOCAL_EXPORT_LDFLAGS) \
    liborvex_991.a -o liborvex_991_jni.so

readelf -lW liborvex_991_jni.so | awk '$1 == "LOAD" && $NF != "0x4000" {print; wrong = 1} END {exit wrong}' ||
    { echo "segments above are not aligned to 16 KiB"; exit 1; }
# Weak symbols are of the standard library's templates.
nm -D --defined-only liborvex_991_jni.so | awk '$2 != "W" {print $3}' | sort > visible
printf 'Java_com_orvex991_%s\n' Nv21_pack PageReader_read | diff - visible ||
    { echo "symbols of the shared object (>) are not the native methods (<)"; exit 1; }

snippet Scan.java > Scan.java
"$home/bin/javac" --release 8 -Xlint:all,-options -Werror -d classes \
    "$source"/bindings/android/java/com/orvex991/*.java "$source/tests/android/BindingTest.java" Scan.java
frame=$source/samples/frame_1280x720.nv21.gz
"$home/bin/java" -Xcheck:jni -Djava.library.path="$work" -cp classes BindingTest "$frame" 1280 720 of_java \
    > printed 2>&1 || { grep -v '^D ' printed; exit 1; }
if grep 'in native method' printed; then exit 1; fi

gzip -dc "$frame" > frame.nv21
c++ -std=c++17 -I "$exported" -I "$source/bindings/android" "$source/tests/android/page_results.cpp" \
    orvex_991_jni/page_reader.o liborvex_991.a -o page_results
./page_results frame.nv21 1280 720 of_cpp > printed
grep -q '^component' of_cpp || { echo "nothing was read from the frame"; exit 1; }
diff of_cpp of_java > differences || { head -n 20 differences; echo "C++ (<) and Java (>) differ"; exit 1; }
