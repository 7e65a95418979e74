#!/bin/sh
# A compiler line with pkg-config uses the installed library, wherever its tree was moved.
# usage: pkg_config.sh DOCUMENT SOURCE BUILD
set -eu
. "$(dirname "$0")/consumer.sh"
checkout "$2" "$3"
export prefix="$work/first"
(cd orvex_991 && run install.sh)
mv "$prefix" "$work/moved"
prefix=$work/moved

mkdir app && cd app
snippet app.cpp > app.cpp
run pkg_config/build.sh
expect_app_to_have_run "$2/jni/orvex_991/orvex_991_version.h"
