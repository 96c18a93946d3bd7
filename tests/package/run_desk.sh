#!/bin/sh
# run_desk.sh PREFIX PICTURE: the installed desk takes the libraries beside it, and draws its window.
set -eu
prefix=$(cd "$1" && pwd) picture=$2
unset LD_LIBRARY_PATH
desk=$prefix/bin/optiondesk
found=$(ldd "$desk" | grep libplot2d)
echo "$found"
# A library that is not found has no path.
if echo "$found" | grep -v "=> $prefix/"; then
    echo "is not from $prefix" >&2
    exit 1
fi
rm -f "$picture"
"$desk" --no-settings --picture "$picture"
test -s "$picture"
