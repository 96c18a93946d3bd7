#!/bin/bash
# check_symbols.sh SOURCE LIBRARY: the library exports what tests/package/plot2d.symbols lists, and the list has nothing but
# the classes and the namespace of the public headers.
set -eu -o pipefail
source=$1 library=$2
list=$source/tests/package/plot2d.symbols

if ! diff --unified=0 "$list" <("$source/tools/remake-symbols" --print "$library"); then
    echo "The library exports something else; if it should, run tools/remake-symbols." >&2
    exit 1
fi

public=$(cat "$source"/src/plot2d/[!_]*.h | grep -oP '^class PLOT2D_EXPORT \K\w+' | paste -sd '|')
if grep -vP "^((non-virtual|virtual) thunk to |(vtable|VTT|typeinfo|typeinfo name) for )?($public|Plot2dCommon)\b" "$list"; then
    echo "These belong to no public class." >&2
    exit 1
fi
