#!/usr/bin/env bash
# Installs the build into a folder of its own, then builds and runs the example host against it: by find_package and by
# pkg-config. Arguments: build folder, source folder, compiler.
set -euo pipefail
build=$1 source=$2 compiler=$3
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT

cmake --install "$build" --prefix "$place/installed" >/dev/null
cmake -S "$source/examples" -B "$place/host" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" \
    -DCMAKE_PREFIX_PATH="$place/installed" >/dev/null
cmake --build "$place/host" >/dev/null
"$place/host/first_waveform"

libdir=$(dirname "$(find "$place/installed" -name nr_mod_lib.pc)")
export PKG_CONFIG_PATH=$libdir
prefix=(--define-variable=prefix="$place/installed")
# shellcheck disable=SC2046
"$compiler" -std=c++17 "$source/examples/first_waveform.cpp" -o "$place/by_pkg_config" \
    $(pkg-config "${prefix[@]}" --cflags --libs nr_mod_lib)
LD_LIBRARY_PATH=$(dirname "$libdir") "$place/by_pkg_config"
