#!/bin/sh
# Every kernel that is declared is called by the kernel tests. usage: kernels_tested.sh HEADER FOLDER
set -eu
header=$1
folder=$2
names=$(sed -n 's/^[a-z].* \([a-z0-9_]*\)(Isa isa.*/\1/p' "$header")
[ -n "$names" ] || { echo "no kernels in $header"; exit 1; }
failed=0
for name in $names; do
    grep -qw "kernels::$name" "$folder"/*.cpp || { echo "no test calls $name"; failed=1; }
done
exit $failed
