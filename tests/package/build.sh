#!/usr/bin/env bash
# build.sh CMAKE BUILD-FOLDER PROGRAM-FOLDER COMPILER FLAGS
set -euo pipefail
cmake=$1 build=$2 program=$3 compiler=$4 flags=$5
place=$build/package-test
rm -rf "$place"
"$cmake" --install "$build" --prefix "$place/prefix" >/dev/null

echo "-- with find_package"
"$cmake" -S "$program" -B "$place/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$place/prefix" \
    -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_FLAGS="$flags" >/dev/null
"$cmake" --build "$place/cmake"
"$place/cmake/outside"

echo "-- with pkg-config"
export PKG_CONFIG_PATH=$place/prefix/lib/pkgconfig:$(echo "$place"/prefix/lib/*/pkgconfig)
# shellcheck disable=SC2046,SC2086
"$compiler" $flags "$program/main.cpp" -o "$place/outside" $(pkg-config --cflags --libs vexdblib)
libs=$(pkg-config --variable=libdir vexdblib)
LD_LIBRARY_PATH=$libs "$place/outside"
