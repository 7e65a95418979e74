#!/bin/sh
# The Debian packages: fields, files, and programs that are built with and run from what they hold.
# usage: debs.sh DOCUMENT SOURCE BUILD     BUILD holds the library and docprep
set -eu
. "$(dirname "$0")/consumer.sh"
source=$2
version_header=$source/jni/orvex_991/orvex_991_version.h
checkout "$source" "$3"
(cd orvex_991 && run debs.sh)
debs=$work/orvex_991/debs

failed=0
complain() {
    echo "$1"
    failed=1
}
field() { dpkg-deb -f "$1" "$2"; }

for name in liborvex-991-dev docprep; do
    deb=$(echo "$debs/${name}"_*.deb)
    [ "$(field "$deb" Package)" = "$name" ] || complain "$deb: not of package $name"
    [ "$(basename "$deb")" = "${name}_$(field "$deb" Version)_$(field "$deb" Architecture).deb" ] ||
        complain "$deb: its name does not say what it is"
    "$source/tests/package/conan_recipe" version "$source/packaging/conan" |
        grep -qxF "$(field "$deb" Version)" || complain "$deb: version $(field "$deb" Version)"
    [ "$(field "$deb" Description | wc -l)" -gt 2 ] || complain "$deb: a bare description"
    dpkg-deb -x "$deb" tree
    cmp "$source/LICENSE" "tree/usr/share/doc/$name/copyright" || complain "$deb: licence"
done
cmp "$source/docs/third_party_licences.md" tree/usr/share/doc/docprep/third_party_licences.md ||
    complain "docprep: licences of what it links"
[ -z "$(field "$debs"/liborvex-991-dev_*.deb Depends)" ] || complain "the library depends on something"

# What a plain installation leaves is in one package or the other.
cmake --install orvex_991/build/release --prefix all > installed
(cd all && find . -type f | sort) > everything
(cd tree/usr && find . -type f ! -name copyright | sort) > packaged
diff everything packaged || complain "what is installed (<) and what is packaged (>) differ"

# Every library that docprep asks for comes from a package that it depends on.
dependencies=$(field "$debs"/docprep_*.deb Depends | tr ',|' '\n\n' | sed 's/^ *//; s/[ (:].*//')
needed=$(readelf -d tree/usr/bin/docprep | sed -n 's/.*(NEEDED).*\[\(.*\)\]$/\1/p')
[ -n "$needed" ] || complain "docprep needs no library"
for library in $needed; do
    owners=$(dpkg -S "*/$library" | sed 's/:.*//' | sort -u)
    echo "$dependencies" | grep -qxF "$owners" || complain "docprep needs $library, but does not depend on $owners"
    grep -qF "\`$owners\`" "$source/docs/third_party_licences.md" || complain "the bill of licences lacks $owners"
done
[ $failed -eq 0 ] || exit 1

tree/usr/bin/docprep "$source/samples/page.jpg" --stages rows -o prepared > summary
grep -q '^rows  *17$' summary || { cat summary; echo "docprep did not find 17 rows"; exit 1; }

export prefix="$work/tree/usr"
build_app_by_find_package "$version_header"
run pkg_config/build.sh
expect_app_to_have_run "$version_header"
