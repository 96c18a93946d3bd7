#!/bin/bash
# check_versions.sh SOURCE: all files that name the version name the same one, and a release has its description.
set -eu -o pipefail
cd "$1"
failed=0

expect() {
    if [ "$2" != "$version" ]; then
        echo "$1 names ${2:-no version}, CMakeLists.txt $version." >&2
        failed=1
    fi
}

version=$(grep -oPm1 '^ *VERSION \K[0-9.]+' CMakeLists.txt)
expect apps/optiondesk/desktop/optiondesk.1 "$(grep -oPm1 '^\.TH .*"optiondesk \K[0-9.]+' apps/optiondesk/desktop/optiondesk.1)"
expect packaging/debian/changelog "$(grep -oPm1 '^plot2d \(\K[0-9.]+(?=-[0-9]+\))' packaging/debian/changelog)"

runtime=$(grep -oP '^Package: libplot2d\K[0-9]+' packaging/debian/control)
if [ "$runtime" != "${version%%.*}" ]; then
    echo "packaging/debian/control names libplot2d$runtime." >&2
    failed=1
fi

# Until there is a release nothing describes one.
released=$(grep -oPm1 '^## \[\K[0-9.]+(?=\] - [0-9]{4}-[0-9]{2}-[0-9]{2}$)' CHANGELOG.md || true)
described=$(find tests/package -name 'abi-*.tar.xz' | sed 's/.*abi-//; s/\.tar\.xz$//')
if [ -n "$released$described" ]; then
    expect CHANGELOG.md "$released"
    expect tests/package/abi-VERSION.tar.xz "$described"
fi
if ! grep -qx '## \[Unreleased\]' CHANGELOG.md; then
    echo "CHANGELOG.md has no room for what comes next." >&2
    failed=1
fi
exit $failed
