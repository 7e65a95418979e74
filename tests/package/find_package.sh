#!/bin/sh
# A project finds the installed library with find_package. The installed tree may be moved, its headers compile alone,
# and a version that is not compatible is refused. usage: find_package.sh DOCUMENT SOURCE BUILD
set -eu
. "$(dirname "$0")/consumer.sh"
version_header=$2/jni/orvex_991/orvex_991_version.h
checkout "$2" "$3"
export prefix="$work/first"
(cd orvex_991 && run install.sh)
mv "$prefix" "$work/moved"
prefix=$work/moved

for header in "$prefix"/include/orvex_991/*.h; do
    c++ -std=c++17 -fsyntax-only -x c++ -include "$header" /dev/null || { echo "does not compile alone: $header"; exit 1; }
done

build_app_by_find_package "$version_header"

sed -i 's/orvex_991 [0-9.]* REQUIRED/orvex_991 99.0 REQUIRED/' CMakeLists.txt
if cmake -S . -B newer -DCMAKE_PREFIX_PATH="$prefix" > refusal 2>&1; then
    echo "find_package is content with a version older than it asked for"
    exit 1
fi
grep -q 'compatible with requested version "99.0"' refusal || { cat refusal; exit 1; }
