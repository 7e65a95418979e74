#!/bin/sh
# Every header of the library compiles by itself. usage: headers_alone.sh COMPILER FOLDER
set -eu
compiler=$1
folder=$2
for header in "$folder"/*.h; do
    echo "#include \"$(basename "$header")\"" |
        "$compiler" -std=c++17 -Wall -Wextra -Wpedantic -Werror -fsyntax-only -I "$folder" -x c++ - ||
        { echo "does not compile alone: $header"; exit 1; }
done
