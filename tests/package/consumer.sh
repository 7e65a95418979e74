# To be sourced by tests of how other projects use the library. They run the commands and build the files of a
# document, word for word, in a folder of their own.
#
# Sets `work`, the folder, which goes when the script ends, and the current one. $CXX compiles wherever a command
# says c++. The first argument is the document.
document=$(realpath "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
mkdir bin
ln -s "$(command -v "${CXX:-c++}")" bin/c++
PATH=$work/bin:$PATH
export CXX=c++
CMAKE_BUILD_PARALLEL_LEVEL=$(nproc)
export CMAKE_BUILD_PARALLEL_LEVEL

# snippet NAME: the fenced block of the document that follows the line "<!-- NAME -->".
snippet() {
    awk -v mark="<!-- $1 -->" '
        $0 == mark {marked = 1; next}
        marked && /^```/ {if (inside) exit; inside = 1; next}
        inside {print; found = 1}
        END {exit !found}' "$document" || { echo "no snippet $1 in $document" >&2; exit 1; }
}

# run NAME: the commands of a snippet, in the current folder; what they print is shown when one fails.
run() {
    snippet "$1" > "$work/commands"
    sh -eu "$work/commands" > "$work/printed" 2>&1 || { cat "$work/printed"; echo "$1 failed"; exit 1; }
}

# The program that the document builds every time ends with the version and the level of white.
expect_app_to_have_run() {
    number() { sed -n "s/^#define ORVEX_991_VERSION_$1 //p" "$2"; }
    expected="$(number MAJOR "$1").$(number MINOR "$1").$(number PATCH "$1") 253"
    [ "$(tail -n 1 "$work/printed")" = "$expected" ] ||
        { cat "$work/printed"; echo "does not end with $expected"; exit 1; }
}

# build_app_by_find_package VERSION_HEADER: the document's project finds the library below $prefix, in a folder app, which
# becomes the current one.
build_app_by_find_package() {
    mkdir app && cd app
    snippet app.cpp > app.cpp
    snippet find_package/CMakeLists.txt > CMakeLists.txt
    run find_package/build.sh
    expect_app_to_have_run "$1"
}

# checkout SOURCE BUILD: a folder orvex_991 that looks as one in which the release preset has been built.
checkout() {
    mkdir -p orvex_991/build
    ln -s "$2" orvex_991/build/release
    for entry in "$1"/*; do
        case $entry in
            */build) ;;
            *) ln -s "$entry" orvex_991/ ;;
        esac
    done
}
