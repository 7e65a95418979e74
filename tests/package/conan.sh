#!/bin/sh
# The Conan recipe packages the library, and a program can be built with what it packages. Conan itself is not needed:
# stand-ins take its place. usage: conan.sh DOCUMENT SOURCE
set -eu
. "$(dirname "$0")/consumer.sh"
"$2/tests/package/conan_recipe" create "$2/packaging/conan" package
snippet app.cpp > app.cpp
c++ -std=c++17 -I package/include/orvex_991 app.cpp -L package/lib -lorvex_991 -o app
./app > printed
expect_app_to_have_run "$2/jni/orvex_991/orvex_991_version.h"
