#!/bin/sh
# The library builds without CMake: one plain compiler line, no flag of ours, no generated file.
# usage: plain_line.sh COMPILER FOLDER
set -eu
compiler=$1
folder=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
"$compiler" -std=c++17 -O2 -Wall -Wextra -Werror -c -I "$folder" "$folder"/*.cpp "$folder"/*/*.cpp
cat > client.cpp <<'CLIENT'
#include "cv_imgproc.h"
int main() {
    orvex_cv_991::Mat<unsigned char> src, dst;
    src.mat_create(1, 1, 3, 255);
    orvex_cv_991::CImgproc::bgr2gray(src, dst);
    return dst.data[0] == 253 ? 0 : 1;
}
CLIENT
"$compiler" -std=c++17 -O2 -I "$folder" client.cpp ./*.o -o client
./client > /dev/null
