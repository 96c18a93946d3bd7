#!/bin/bash
# clean_root.sh SOURCE PACKAGES CACHE installs the packages in the folder PACKAGES on a bare Debian in a folder of its
# own, uses them there and removes them. Needs root and a mirror, and says that it is skipped where one is missing. What
# was downloaded stays in CACHE; nothing is mounted or installed outside.
set -eu -o pipefail
source=$1 packages=$2 cache=$3
skipped=77

skip() {
    echo "SKIPPED, the packages were not installed anywhere: $*" >&2
    exit $skipped
}

[ "$(id -u)" -eq 0 ] || skip "this needs root."
unshare --mount --pid --fork true 2>/dev/null || skip "there are no namespaces of one's own here."
command -v debootstrap >/dev/null || skip "debootstrap is missing."
. /etc/os-release
mirror=$(apt-get indextargets --format '$(SITE) $(CODENAME)' | awk -v name="$VERSION_CODENAME" '$2 == name { print $1; exit }')
mkdir -p "$cache/archives"
/usr/lib/apt/apt-helper -o Acquire::Retries=0 -o Acquire::http::Timeout=20 \
    download-file "$mirror/dists/$VERSION_CODENAME/Release" "$cache/Release" >/dev/null 2>&1 || skip "the mirror '$mirror' does not answer."

if [ ! -d "$cache/base" ]; then
    rm -rf "$cache/base-unfinished"
    debootstrap --variant=minbase "$VERSION_CODENAME" "$cache/base-unfinished" "$mirror" > "$cache/debootstrap.log" 2>&1 ||
        skip "debootstrap made no system: $(tail -n 3 "$cache/debootstrap.log")"
    mv "$cache/base-unfinished" "$cache/base"
fi

root=$cache/root
rm -rf "$root"
trap 'rm -rf "$root"' EXIT
cp -a "$cache/base" "$root"
cp /etc/resolv.conf "$root/etc/resolv.conf"
mkdir "$root/test"
cp "$packages"/*.deb "$root/test"
cp -r "$source/tests/package/consumer" "$source/tests/package/debian/in_root.sh" "$root/test"
mkdir "$root/test/archives"
unshare --mount --pid --fork sh -eu -c '
    mount --bind "$1/archives" "$2/test/archives"
    mount -t proc proc "$2/proc"
    exec chroot "$2" env -i PATH=/usr/sbin:/usr/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive sh /test/in_root.sh
' sh "$cache" "$root"
