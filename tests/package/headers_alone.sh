#!/bin/sh
# Every header of the library compiles by itself. usage: headers_alone.sh COMPILER FOLDER
set -eu
compiler=$1
cd "$2"
# Loops are compiled inside kernels.cpp alone.
for header in *.h base/*.h kernels/kernels.h algorithms/*.h; do
    echo "#include \"$header\"" |
        "$compiler" -std=c++17 -Wall -Wextra -Wpedantic -Werror -fsyntax-only -I . -x c++ - ||
        { echo "does not compile alone: $header"; exit 1; }
done
