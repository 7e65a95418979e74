#!/bin/sh
# The commands of docs/python.md install the package into a fresh environment, without any registry: a wheel holds the
# package and nothing else, and works away from its sources. usage: python_wheel.sh DOCUMENT SOURCE [PYTHON]
set -eu
. "$(dirname "$0")/consumer.sh"
source=$2
python=${3-/usr/bin/python3}
ln -s "$python" bin/python3
# A clone, so that what builds leave behind is not left in the sources; then what an archive of sources takes of it.
mkdir clone orvex_991
git -C "$source" ls-files -z --cached --others --exclude-standard |
    (cd "$source" && tar -c --null -T -) | tar -x -C clone
(cd clone && python3 setup.py -q sdist > "$work/printed" 2>&1) || { cat printed; exit 1; }
tar -xf clone/dist/*.tar.gz -C orvex_991 --strip-components 1

(cd orvex_991 && run wheel.sh)
set -- orvex_991/dist/orvex_991-*.whl
[ $# = 1 ] && [ -e "$1" ] || { echo "not one wheel: $*"; exit 1; }
python3 -m zipfile -l "$1" | sed -n 's,^\([^ ]*\) .*,\1,p' | sed 1d > files
if grep -v -x -e 'orvex_991/[_a-z]*\.\(py\|pyi\|typed\)' -e 'orvex_991/_[a-z]*\.[-_.a-z0-9]*\.so' \
    -e 'orvex_991-[0-9.]*\.dist-info/.*' files; then
    echo "the wheel holds more than the package"
    exit 1
fi
for file in __init__.py _core.pyi py.typed; do
    grep -q -x "orvex_991/$file" files || { echo "the wheel lacks $file"; exit 1; }
done

mv orvex_991/dist .
rm -r orvex_991
run venv.sh
cat > program.py <<'PROGRAM'
import numpy
import orvex_991
print(orvex_991.__version__, orvex_991.bgr2gray(numpy.full((1, 1, 3), 255, numpy.uint8))[0, 0])
PROGRAM
venv/bin/python program.py > printed
expect_app_to_have_run "$source/jni/orvex_991/orvex_991_version.h"
