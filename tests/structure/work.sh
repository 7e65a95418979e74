#!/bin/sh
# Twice as many components, points or rectangles take about twice the instructions: n log n gives 2.2, and what is
# quadratic anywhere would give 4. Instructions are counted, not seconds. usage: work.sh VALGRIND PROGRAM
set -eu
valgrind=$1
program=$2
instructions() {
    "$valgrind" --tool=callgrind --callgrind-out-file=/dev/null "$program" "$1" "$2" 2>&1 >/dev/null |
        sed -n 's/^==[0-9]*== Collected : //p'
}
failed=0
for kind in components components-with-points rows one-row hull rectangle; do
    few=$(instructions "$kind" 20000)
    many=$(instructions "$kind" 40000)
    [ -n "$few" ] && [ -n "$many" ] || { echo "$kind: instructions were not counted"; exit 1; }
    echo "$kind: $few for 20000, $many for 40000"
    [ $((many * 10)) -lt $((few * 26)) ] || { echo "$kind: more than 2.6 times as many"; failed=1; }
done
exit $failed
