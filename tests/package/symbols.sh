#!/bin/sh
# The static library defines no writable data and asks for no thread, file or locale function.
# usage: symbols.sh LIBRARY NM
set -eu
library=$1
nm=$2
symbols=$("$nm" "$library")
[ -n "$symbols" ] || { echo "nm shows nothing of $library"; exit 1; }

# b, d, s and their capitals are writable data, C is a common block. (DW.ref.* are the compiler's, of type V.)
if echo "$symbols" | grep -E ' [bBdDsSC] '; then
    echo "writable data above"
    exit 1
fi
# Whole names, versions cut off.
if echo "$symbols" | sed -n 's/^ *U \([^@ ]*\).*/\1/p' |
    grep -E '^(pthread_.*|thrd_.*|f?open(64)?|creat|fdopen|freopen(64)?|fclose|close|read|write|fread|mmap(64)?|unlink|getenv|setlocale|localeconv|.*(ios_base|basic_[io]?stream|filebuf|locale|thread).*)$'; then
    echo "thread, file or locale functions above"
    exit 1
fi
