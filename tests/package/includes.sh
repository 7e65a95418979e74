# To be sourced in a folder of sources, below
#   floor_of FILE   prints the floor that a path means, from the ground up, or "unknown"
#   foreign FILE    succeeds for a header of somebody below all floors
# Complains about every include that points neither to its own folder nor to a floor below.

failed=0
complain() {
    echo "$1"
    failed=1
}

files=$(find . -name '*.h' -o -name '*.cpp' -o -name '*.def' | sed 's,^\./,,' | sort)
for file in $files; do
    own=$(floor_of "$file")
    [ "$own" != unknown ] || complain "$file: a folder that is no floor"
    for included in $(sed -n 's/^ *# *include *"\([^"]*\)".*/\1/p' "$file"); do
        ! foreign "$included" || continue
        # By its path from here, so that no generic name needs to be on an include path.
        [ -f "$included" ] || { complain "$file: \"$included\" is no path from $PWD"; continue; }
        [ "$(dirname "$included")" = "$(dirname "$file")" ] || [ "$(floor_of "$included")" -lt "$own" ] ||
            complain "$file: includes $included, which is no floor below"
    done
done
