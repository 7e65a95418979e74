#!/bin/sh
# The library builds without CMake: one plain compiler line, no flag of ours, no generated file, no warning.
# usage: plain_line.sh DOCUMENT SOURCE
set -eu
. "$(dirname "$0")/consumer.sh"
compiler=$(readlink bin/c++)
rm bin/c++
printf '#!/bin/sh\nexec "%s" -Wall -Wextra -Werror "$@"\n' "$compiler" > bin/c++
chmod +x bin/c++

ln -s "$2" orvex_991
snippet app.cpp > app.cpp
run plain_line/build.sh
expect_app_to_have_run "$2/jni/orvex_991/orvex_991_version.h"
