#!/bin/sh
# Every kernel of the list is called by the kernel tests. usage: kernels_tested.sh LIST FOLDER
set -eu
list=$1
folder=$2
names=$(sed -n 's/^ORVEX_KERNEL([^,]*, \([a-z0-9_]*\),.*/\1/p' "$list")
[ -n "$names" ] || { echo "no kernels in $list"; exit 1; }
failed=0
for name in $names; do
    grep -qw "kernels::$name" "$folder"/*.cpp || { echo "no test calls $name"; failed=1; }
done
exit $failed
