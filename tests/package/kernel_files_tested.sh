#!/bin/sh
# Every file of loops has a test file of its name, and every test file has loops.
# usage: kernel_files_tested.sh FOLDER TESTS
set -eu
folder=$1
tests=$2

# What lies there beside the loops: what declares them, and what they are written with.
holds_loops() {
    case $1 in
        kernels | list | loops | simd | simd_end) false ;;
        *) [ -f "$folder/$1.h" ] ;;
    esac
}

failed=0
for file in "$folder"/*.h; do
    name=$(basename "$file" .h)
    if holds_loops "$name" && [ ! -f "$tests/${name}_test.cpp" ]; then
        echo "$name.h: no ${name}_test.cpp"
        failed=1
    fi
done
for file in "$tests"/*_test.cpp; do
    name=$(basename "$file" _test.cpp)
    holds_loops "$name" || { echo "${name}_test.cpp: no loops of that name"; failed=1; }
done
exit $failed
