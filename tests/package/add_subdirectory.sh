#!/bin/sh
# A project that adds the library's folder gets one target and nothing else. With `build` the project is built and run,
# too, and once more with FetchContent from an archive of the sources.
# usage: add_subdirectory.sh DOCUMENT SOURCE [build]
set -eu
. "$(dirname "$0")/consumer.sh"
source=$2
build=${3-}
checks=$source/tests/package/subproject.cmake

# leaks_nothing NAME: configures the project of that snippet with checks before and after.
leaks_nothing() {
    snippet app.cpp > app.cpp
    snippet "$1/CMakeLists.txt" > CMakeLists.txt
    cmake -S . -B checked -DCMAKE_PROJECT_app_INCLUDE="$checks" > configured 2>&1 || { cat configured; exit 1; }
    if grep -i -A9 warning configured; then exit 1; fi
    if find checked -name CTestTestfile.cmake | grep .; then
        echo "the project has tests now"
        exit 1
    fi
    DESTDIR=$work/installed cmake --install checked > installing
    [ ! -e "$work/installed" ] || { echo "the library installs itself with the project:"; cat installing; exit 1; }
}

mkdir app && cd app
ln -s "$source" orvex_991
leaks_nothing add_subdirectory
[ "$build" = build ] || exit 0
run build.sh
expect_app_to_have_run "$source/jni/orvex_991/orvex_991_version.h"

mkdir ../fetching && cd ../fetching
version=$(snippet fetch_content/CMakeLists.txt | sed -n 's/.*orvex_991-\([0-9.]*\)\.tar\.gz.*/\1/p')
git -C "$source" ls-files -z |
    tar -C "$source" --null -T - --transform "s,^,orvex_991-$version/," -czf "orvex_991-$version.tar.gz"
leaks_nothing fetch_content
run build.sh
expect_app_to_have_run "$source/jni/orvex_991/orvex_991_version.h"
