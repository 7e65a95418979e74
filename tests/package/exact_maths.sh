#!/bin/sh
# Flags that let a compiler change results stop the compilation, as far as it says that they are on.
# usage: exact_maths.sh COMPILER FOLDER
set -eu
compiler=$1
folder=$2
compiles() { "$compiler" -std=c++17 -O2 -fsyntax-only "$@" -I "$folder" "$folder/util_math.cpp" 2> /dev/null; }
compiles || { echo "does not compile as it is"; exit 1; }
flags="-ffast-math -ffinite-math-only"
if "$compiler" -funsafe-math-optimizations -dM -E -x c++ /dev/null | grep -q __ASSOCIATIVE_MATH__; then
    flags="$flags -funsafe-math-optimizations -fno-signed-zeros"
fi
for flag in $flags; do
    if compiles "$flag"; then
        echo "compiles under $flag"
        exit 1
    fi
done
