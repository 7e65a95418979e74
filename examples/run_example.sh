#!/bin/sh
# Runs an example on the sample frame and looks for the lines that its head says it prints, in their order. What else
# it prints is the library's.
# usage: run_example.sh SOURCE FRAME.nv21.gz PROGRAM [ARGUMENT...]     an argument `frame.nv21` is the frame, unpacked
set -eu
source=$1 frame=$2
shift 2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
gzip -dc "$frame" > frame.nv21
"$@" > printed
sed -n 's,^\(//\|#\) prints: ,,p' "$source" > expected
grep -Fx -f expected printed > found || true
diff expected found || { cat printed; exit 1; }
