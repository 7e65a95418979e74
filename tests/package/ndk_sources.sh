#!/bin/sh
# ndk-build compiles the files that CMake compiles, and links for pages of 16 KiB.
# usage: ndk_sources.sh SOURCE CMAKE-SOURCES     the latter as a CMake list, relative to jni/orvex_991
set -eu
. "$(dirname "$0")/ndk.sh"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
ndk_modules "$1" > "$work/modules"
cd "$1/jni"

of() { sed -n "s/^$1 $2 //p" "$work/modules"; }
lines() { tr -s ' ;' '\n\n' | sed '/^$/d' | sort; }
failed=0
complain() {
    echo "$1"
    failed=1
}

of 'orvex_991 static' LOCAL_SRC_FILES | lines > "$work/ndk"
echo "$2" | lines | sed 's,^,orvex_991/,' > "$work/cmake"
[ -s "$work/cmake" ] || complain "no sources"
diff "$work/cmake" "$work/ndk" || complain "sources of CMake (<) and of Android.mk (>) differ"

of 'orvex_991_jni shared' LOCAL_SRC_FILES | lines > "$work/ndk"
ls ../bindings/android/*.cpp | sort > "$work/there"
diff "$work/there" "$work/ndk" || complain "files of bindings/android (<) and of Android.mk (>) differ"

for module in 'orvex_991 static' 'orvex_991_jni shared'; do
    for flag in -std=c++17 -ffp-contract=off; do
        of "$module" LOCAL_CPPFLAGS | lines | grep -qxe "$flag" || complain "$module lacks $flag"
    done
    of "$module" 'LOCAL\(_EXPORT\)\?_LDFLAGS' | lines | grep -qx -e '-Wl,-z,max-page-size=16384' ||
        complain "$module: pages of 16 KiB are not asked for"
done
[ "$(of 'application -' APP_STL)" = c++_static ] || complain "Application.mk was not read"
exit $failed
