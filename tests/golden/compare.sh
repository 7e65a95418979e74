#!/bin/sh
# Runs a command and compares the cases that it prints with those of a file; names the first that differ and
# says how many are equal.
# usage: compare.sh DIGESTS COMMAND...
set -eu
digests=$1
shift
got=$(mktemp)
trap 'rm -f "$got"' EXIT
status=0
"$@" > "$got" || status=$?
awk -v status="$status" '
    FNR == NR { want[++cases] = $0; next }
    { got[FNR] = $0; lines = FNR }
    END {
        for (i = 1; i <= cases || i <= lines; ++i) {
            if (i <= cases && i <= lines && want[i] == got[i]) { ++equal; continue }
            if (++differing <= 10) print "differs: " (i <= lines ? got[i] : "nothing") "\n   want: " \
                (i <= cases ? want[i] : "nothing")
        }
        print equal + 0 " of " cases + 0 " cases are equal"
        if (status != 0) print "the program ended with status " status
        exit differing > 0 || status != 0 || cases == 0
    }' "$digests" "$got"
