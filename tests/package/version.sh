#!/bin/sh
# One version everywhere: the header states it, and nothing disagrees. usage: version.sh SOURCE BUILD [DOCPREP]
set -eu
source=$1
build=$2
docprep=${3-}
number() { sed -n "s/^#define ORVEX_991_VERSION_$1 \([0-9]*\)$/\1/p" "$source/jni/orvex_991/orvex_991_version.h"; }
version=$(number MAJOR).$(number MINOR).$(number PATCH)
series=${version%.*}

failed=0
# agrees WHERE FOUND [EXPECTED]
agrees() {
    [ "$2" = "${3-$version}" ] || { echo "$1 says '$2', the header '${3-$version}'"; failed=1; }
}
# first FILE PATTERN: what the group of the pattern matches first.
first() { sed -n "s/$2/\1/p" "$1" | head -n 1; }

agrees CMake "$(first "$build/CMakeCache.txt" '^CMAKE_PROJECT_VERSION:STATIC=\(.*\)$')"
agrees orvex_991.pc "$(first "$build/orvex_991.pc" '^Version: \(.*\)$')"
agrees orvex_991ConfigVersion.cmake \
    "$(first "$build/orvex_991ConfigVersion.cmake" '^set(PACKAGE_VERSION "\(.*\)")$')"
agrees "packages of cpack" "$(first "$build/CPackConfig.cmake" '^set(CPACK_PACKAGE_VERSION "\(.*\)")$')"
agrees "the vcpkg port" \
    "$(first "$source/packaging/vcpkg/orvex-991/vcpkg.json" '^ *"version-semver": "\(.*\)",$')"
agrees "the Conan recipe" "$("$source/tests/package/conan_recipe" version "$source/packaging/conan")"
agrees "the Python package" "$(cd "$source" && /usr/bin/python3 setup.py --version)"
agrees "the npm package" "$(first "$source/bindings/wasm/package/package.json" '^ *"version": "\(.*\)",$')"
agrees "docs/wasm.md" "$(first "$source/docs/wasm.md" '.*orvex_991-\([0-9.]*\)\.tgz.*')"
[ -z "$docprep" ] || agrees "docprep --version" "$("$docprep" --version)" "docprep $version"

# Above the newest release the changelog may have a heading for what is not released.
agrees CHANGELOG.md "$(first "$source/CHANGELOG.md" '^## \([0-9.]*\) - [0-9]\{4\}-[0-9][0-9]-[0-9][0-9]$')"
document=$source/docs/packages.md
agrees "docs/packages.md, program" "$(first "$document" '.*\/\/ \([0-9.]*\) 253.*')"
agrees "docs/packages.md, archive" "$(first "$document" '.*orvex_991-\([0-9.]*\)\.tar\.gz.*')"
agrees "docs/packages.md, tag" "$(first "$document" '.*GIT_TAG v\([0-9.]*\)`.*')"
agrees "docs/packages.md, find_package" "$(first "$document" '^find_package(orvex_991 \([0-9.]*\) REQUIRED)$')" "$series"
for name in liborvex-991-dev docprep; do
    agrees "docs/packages.md, $name" "$(first "$document" ".*[^-]${name}_\([0-9.]*\)_.*")"
done
exit $failed
