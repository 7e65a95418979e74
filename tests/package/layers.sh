#!/bin/sh
# Includes only point downward: a kernel includes nothing, and nothing below the facade includes it.
# usage: layers.sh FOLDER
set -eu
cd "$1"
failed=0
if grep -n '#include' kernels/*.h | grep -v '^kernels/all\.h:'; then
    echo "kernels include nothing: all.h lists them and its includer provides the types"
    failed=1
fi
if grep -ln '"cv_imgproc.h"' ./*.h ./*.cpp | grep -v '^./cv_imgproc\.'; then
    echo "only cv_imgproc.cpp includes the facade"
    failed=1
fi
if grep -n '#include "kernels/' ./*.h ./*.cpp | grep -v '^./cv_kernels.cpp:'; then
    echo "only cv_kernels.cpp includes kernels"
    failed=1
fi
if grep -nE '#include "(cv_|[a-z_]*(order|labelling|otsu|rows|warp|morphology|rules|saliency)\.)' util_*.h util_*.cpp; then
    echo "utilities stand below the images"
    failed=1
fi
if grep -nE 'printf|puts\(|CException|Clock' kernels/*.h cv_kernels.*; then
    echo "kernels neither report nor throw"
    failed=1
fi
exit $failed
