#!/bin/bash
# check_packages.sh SOURCE PACKAGES: what lintian does not ask of the packages in the folder PACKAGES.
set -eu -o pipefail
source=$(realpath "$1") packages=$(realpath "$2")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=0

complain() {
    echo "$*" >&2
    failed=1
}

package() {
    local found=("$packages/$1"_*.deb)
    [ -f "${found[0]}" ] && [ ${#found[@]} -eq 1 ] || { echo "There is not one package $1." >&2; exit 1; }
    echo "${found[0]}"
}

# depends_on PACKAGE REGEX... of which each matches a dependency as a whole.
depends_on() {
    local name=$1 dependencies wanted
    dependencies=$(dpkg-deb --field "$(package "$name")" Depends | sed 's/, /\n/g')
    shift
    for wanted in "$@"; do
        grep -qxP "$wanted" <<< "$dependencies" || complain "$name depends not on $wanted but on" $dependencies
    done
}

for name in libplot2d0 libplot2d-dev optiondesk; do
    dpkg-deb --extract "$(package $name)" "$scratch/all"
    dpkg-deb --extract "$(package $name)" "$scratch/$name"
    dpkg-deb --control "$(package $name)" "$scratch/$name.control"
done
cd "$scratch"

version=$(dpkg-parsechangelog -l "$source/packaging/debian/changelog" -S Version)
upstream=${version%-*}
depends_on libplot2d0 'libc6 .*' 'libpq5.*' 'libqt5sql5.*' 'libqt5widgets5.*' 'libqwt-qt5-6.*'
depends_on libplot2d-dev "libplot2d0 \(= \Q$version\E\)" qtbase5-dev libqwt-qt5-dev
depends_on optiondesk "libplot2d0 \(>= \Q$upstream\E\)" 'libquantlib.*' libqt5sql5-sqlite libqt5sql5-psql
grep -qx 'activate-noawait ldconfig' libplot2d0.control/triggers || complain "libplot2d0 does not trigger ldconfig."

folder=usr/lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)
for link in "$source"/src/host/*/ plot2d; do
    name=libplot2d
    [ "$link" = plot2d ] || name=libplot2d_host_$(basename "$link")
    [ -f "libplot2d0/$folder/$name.so.$upstream" ] || complain "$name is not in libplot2d0."
    [ -L "libplot2d-dev/$folder/$name.so" ] || complain "The link of $name is not in libplot2d-dev."
    grep -qx "$name ${upstream%%.*} libplot2d0 (>= $upstream)" libplot2d0.control/shlibs || complain "$name is not in shlibs."
done

# Debian's linker asks for everything at once, and nothing is asked for that is not used.
export LD_LIBRARY_PATH=$scratch/libplot2d0/$folder
for file in libplot2d0/"$folder"/*.so.*.* optiondesk/usr/bin/optiondesk; do
    dynamic=$(readelf --dynamic --wide "$file")
    if grep -E 'R(UN)?PATH' <<< "$dynamic"; then complain "$file says where its libraries are."; fi
    grep -q 'FLAGS.*NOW' <<< "$dynamic" || complain "$file binds late."
    parts=$(readelf --segments --sections --wide "$file")
    grep -q GNU_RELRO <<< "$parts" || complain "$file leaves its tables writable."
    if grep -q ' \.symtab ' <<< "$parts"; then complain "$file is not stripped."; fi
    unused=$(ldd -u "$file" | sed 1d || true)
    [ -z "$unused" ] || complain "$file asks for what it does not use:" $unused
done
grep -q 'Type: *DYN' <<< "$(readelf --file-header optiondesk/usr/bin/optiondesk)" || complain "optiondesk lies at a fixed address."

"$source/tests/package/check_symbols.sh" "$source" "libplot2d0/$folder/libplot2d.so.$upstream" || failed=1

for file in usr/share/applications/optiondesk.desktop usr/share/man/man1/optiondesk.1.gz \
    usr/share/icons/hicolor/scalable/apps/optiondesk.svg; do
    [ -s "optiondesk/$file" ] || complain "$file is not in optiondesk."
done
exit $failed
