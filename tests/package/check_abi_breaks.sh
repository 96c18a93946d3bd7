#!/bin/bash
# check_abi_breaks.sh SOURCE SCRATCH COMPILER PREFIX LIBRARY: tools/check-abi finds each break that is planted into a
# small library, and takes each change that breaks nobody. Of the library in PREFIX it notices that it lacks a function
# of a release: LIBRARY is that release, with Plot2dCommon::planted().
set -eu -o pipefail
source=$1 scratch=$2 compiler=$3 prefix=$4 library=$5
check=$source/tools/check-abi
parts=$source/tests/package/interface
rm -rf "$scratch"
mkdir -p "$scratch"

# build NAME SONAME [FILE EDIT]... installs the small library with sed's edits.
build() {
    local folder=$scratch/$1 headers=$scratch/$1/include/plot2d/thing soname=$2
    shift 2
    mkdir -p "$headers" "$folder/lib" "$folder/src"
    cp "$parts"/* "$folder/src"
    while [ $# -gt 0 ]; do
        sed -i "$2" "$folder/src/$1"
        if cmp -s "$parts/$1" "$folder/src/$1"; then
            echo "the edit changes nothing: $2" >&2
            exit 1
        fi
        shift 2
    done
    cp "$folder/src/thing.h" "$headers"
    "$compiler" -std=c++17 -g -O0 -shared -fPIC "-Wl,-soname,$soname" "$folder/src/thing.cpp" -o "$folder/lib/libplot2d_thing.so"
}

# expect RESULT NAME [FILE EDIT]... compares the edited library with the release.
expect() {
    local expected=$1 name=$2
    shift 2
    build "$name" "${soname:-libplot2d_thing.so.0}" "$@"
    compare "$expected" "$name" "$scratch/$name" "$scratch/release.tar.xz"
}

# compare RESULT NAME PREFIX RELEASE
compare() {
    local expected=$1 name=$2 result=0
    "$check" --installed "$3" "$4" > "$scratch/$name.log" 2>&1 || result=$?
    if [ "$result" -ne "$expected" ]; then
        cat "$scratch/$name.log"
        echo "$name: $result instead of $expected" >&2
        failed=1
    fi
}

failed=0
build release libplot2d_thing.so.0
"$check" --installed "$scratch/release" --record "$scratch/release.tar.xz"

expect 1 removed_function thing.h '/scaled/d' thing.cpp '/::scaled/,/^}/d'
expect 1 other_parameter thing.h 's/doubled(int/doubled(long/' thing.cpp 's/doubled(int/doubled(long/'
expect 1 other_result thing.h 's/double scaled/float scaled/' thing.cpp 's/^double Thing/float Thing/;s/m_inner->size \* factor/float(factor)/'
expect 1 new_member thing.h 's/Inner\* m_inner;/&\n    int m_more = 0;/'
expect 1 other_member thing.h 's/Inner\* m_inner;/int m_more = 0;\n    &/' thing.cpp 's/^    : m_inner(new Inner(size))/    : m_more(0), m_inner(new Inner(size))/'
expect 1 new_virtual thing.h 's/virtual int size/virtual int before() const { return 0; }\n    &/'
expect 1 no_longer_virtual thing.h 's/virtual int size/int size/'
expect 0 unchanged
expect 0 new_function thing.h 's/double scaled/int more() const;\n    &/' thing.cpp '$a int Thing::more() const { return 1; }'
expect 0 other_inside inner_p.h 's/int size;/int before = 0;\n    &/'
expect 0 removed_inside inner_p.h '/twice/d' thing.cpp '/Inner::twice/,/^}/d'
soname=libplot2d_thing.so.1 expect 0 removed_under_new_name thing.h '/scaled/d' thing.cpp '/::scaled/,/^}/d'

for name in longer shorter; do
    mkdir -p "$scratch/$name/include" "$scratch/$name/lib"
    cp -r "$prefix/include/plot2d" "$scratch/$name/include"
done
cp "$library" "$scratch/longer/lib/libplot2d.so"
cp "$(find "$prefix" -name libplot2d.so)" "$scratch/shorter/lib"
for name in longer shorter; do
    "$check" --installed "$scratch/$name" --record "$scratch/$name.tar.xz"
done
compare 1 planted_is_gone "$scratch/shorter" "$scratch/longer.tar.xz"
compare 0 planted_is_new "$scratch/longer" "$scratch/shorter.tar.xz"
if ! grep -q "Plot2dCommon::planted" "$scratch/planted_is_gone.log"; then
    echo "The function that is gone is not named." >&2
    failed=1
fi
exit $failed
