#!/bin/sh
# The static library defines no writable data and asks for no thread, file or locale function, and
# its kernels next to nothing.
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
# Kernels are arithmetic: they copy and fill memory and ask which processor this is, and that is all.
imports=$(echo "$symbols" | awk '/^[^ ]*\.o(bj)?:$/ {kernels = /kernels/} kernels && $1 == "U" {print $2}' | sort -u)
[ -n "$imports" ] || { echo "kernels import nothing: is there an object of theirs in $library?"; exit 1; }
if echo "$imports" |
    grep -vE '^(mem(cpy|move|set|cmp)|__cpu_model|__cpu_indicator_init|__stack_chk_fail|_GLOBAL_OFFSET_TABLE_)$'; then
    echo "imports of the kernels above"
    exit 1
fi
