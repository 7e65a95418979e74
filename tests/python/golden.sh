#!/bin/sh
# Compares the digests of the golden cases through Python with the reference's, and counts the calls that Python cannot
# express: matrices whose shape their block does not hold, extents below 0, and images without pixels that are their own
# output. usage: golden.sh FOLDER PROGRAM
set -eu
counts=$(mktemp)
trap 'rm -f "$counts"' EXIT
"$1/compare.sh" "$1/digests.txt" "$2" 2> "$counts" || { cat "$counts" >&2; exit 1; }
expected="11279 calls through the binding, 717 beyond it"
[ "$(cat "$counts")" = "$expected" ] || { cat "$counts"; echo "expected: $expected"; exit 1; }
