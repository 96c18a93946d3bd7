#!/bin/sh
# build_by_pkgconfig.sh PREFIX SOURCE PROGRAM COMPILER [FLAG...] builds a program against the library in PREFIX by
# what pkg-config says of it, and runs it.
set -eu
prefix=$1 source=$2 program=$3
shift 3
description=$(find "$prefix" -name plot2d.pc)
PKG_CONFIG_PATH=$(dirname "$description")
export PKG_CONFIG_PATH
libraries=$(pkg-config --variable=libdir plot2d)
# The flags are words of their own.
# shellcheck disable=SC2046
"$@" -std=c++17 -fPIC "$source" -o "$program" $(pkg-config --cflags --libs plot2d) "-Wl,-rpath,$libraries"
"$program"
