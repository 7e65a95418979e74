#!/bin/sh
# Includes of docprep point downward, by their folders. usage: docprep_layers.sh FOLDER
set -eu
here=$(cd "$(dirname "$0")" && pwd)
cd "$1"

floor_of() {
    case $1 in
        base/*) echo 1 ;;
        pipeline/* | formats/* | cli/*) echo 2 ;;
        output/* | html/*) echo 3 ;;
        run/*) echo 4 ;;
        batch/* | commands/*) echo 5 ;;
        main.cpp) echo 6 ;;
        *) echo unknown ;;
    esac
}

foreign() {  # the library
    case $1 in
        cv_*.h | util_*.h | orvex_991_version.h) return 0 ;;
        *) return 1 ;;
    esac
}

. "$here/includes.sh"
exit $failed
