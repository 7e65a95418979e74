#!/bin/sh
# The vcpkg port packages the library, and a program can be built with what it packages. vcpkg itself is not needed:
# its commands are stood in for by plain CMake. usage: vcpkg.sh DOCUMENT SOURCE
set -eu
. "$(dirname "$0")/consumer.sh"
cmake -DPORT=orvex-991 -DPORT_FOLDER="$2/packaging/vcpkg/orvex-991" -DWORK="$work" \
    -P "$2/tests/package/vcpkg_commands.cmake" > installed
for file in share/orvex_991/orvex_991Config.cmake share/orvex-991/copyright share/orvex-991/usage; do
    [ -f "packages/$file" ] || { echo "the package lacks $file"; exit 1; }
done
for folder in share/doc lib/cmake; do
    [ ! -e "packages/$folder" ] || { echo "the package has $folder"; exit 1; }
done
export prefix="$work/packages"
build_app_by_find_package "$2/jni/orvex_991/orvex_991_version.h"
