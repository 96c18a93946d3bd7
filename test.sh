#!/bin/bash
# Sets the machine up if need be, then builds and runs all tests: the debug build, the build under AddressSanitizer and
# UndefinedBehaviorSanitizer, and ten seconds of each fuzzer. Arguments: presets to run instead of all that.
set -u
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$root/tools/setup.sh"

need_packages "${build_packages[@]}" "${packaging_packages[@]}" "${abi_packages[@]}" \
    lintian debootstrap xvfb xauth xdotool desktop-file-utils groff-base postgresql doxygen

given=$#
[ $# -gt 0 ] || set -- dev asan-ubsan
for preset in "$@"; do
    echo "== $preset"
    configure_and_build "$root" "$preset"
    (cd "$root" && ctest --preset "$preset") || exit 1
done
[ "$given" -eq 0 ] || exit 0
echo "== fuzz"
"$root/tools/fuzz" --jobs 2 10 || exit 1
