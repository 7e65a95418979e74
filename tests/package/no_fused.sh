#!/bin/sh
# On 64-bit Arm compilers fuse a product and a sum into one instruction, which rounds once instead of twice.
# The sources forbid it by themselves: compiled by one plain line, no object has such an instruction.
# usage: no_fused.sh COMPILER OBJDUMP FOLDER
set -eu
compiler=$1
objdump=$2
folder=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
"$compiler" -std=c++17 -O2 -Wall -Wextra -Werror -c -I "$folder" "$folder"/*.cpp "$folder"/*/*.cpp
"$objdump" -d --no-show-raw-insn ./*.o > listing
grep -qE '[[:space:]]fmul[[:space:]]' listing || { echo "no product in the listing: is it one of aarch64?"; exit 1; }
if grep -E '[[:space:]](fn?m(add|sub)|fml[as])[[:space:]]' listing; then
    echo "fused instructions above"
    exit 1
fi
