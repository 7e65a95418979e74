#!/bin/sh
# Includes point downward: the path of a file says its floor, and it includes only its own folder and floors below.
# usage: layers.sh FOLDER
set -eu
here=$(cd "$(dirname "$0")" && pwd)
cd "$1"

# From the ground up. What lies beside the folders is the values (headers) and, on top of all, the operations with the
# other sources that check and print; each folder is a floor.
floor_of() {
    case $1 in
        base/*) echo 1 ;;
        kernels/*) echo 2 ;;
        algorithms/*) echo 3 ;;
        cv_imgproc.h) echo 4 ;;
        */*) echo unknown ;;
        *.h) echo 0 ;;
        *) echo 4 ;;
    esac
}

foreign() {
    return 1
}

. "$here/includes.sh"

# Loops are compiled once for each instruction set, in a namespace of its own, where no header may open.
if grep -n '# *include' kernels/*.h | grep -v -e '^kernels/kernels\.h:' -e '^kernels/loops\.h:'; then
    complain "loops include nothing: loops.h lists them, and kernels.cpp provides the types"
fi
if grep -nE 'printf|puts\(|ORVEX_CHECK|Clock' base/* kernels/* algorithms/*; then
    complain "what is printed, checked and timed stands beside the folders"
fi
if grep -nE 'throw|CException' kernels/*; then
    complain "kernels do not throw"
fi
exit $failed
