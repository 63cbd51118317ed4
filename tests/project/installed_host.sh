#!/usr/bin/env bash
# Installs the build into a folder that it was not configured for, moves that folder, and from there starts the tool and
# imports the Python module, and builds and runs the example hosts: by find_package, and one by pkg-config. Then every
# installed header compiles alone.
# Arguments: build folder, source folder, compiler.
set -euo pipefail
build=$1 source=$2 compiler=$3
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT

cmake --install "$build" --prefix "$place/first" >/dev/null
mv "$place/first" "$place/moved"
"$place/moved/bin/nrwave" --version
[ -s "$place/moved/share/bash-completion/completions/nrwave" ]
! command -v help2man >/dev/null || grep -q generate "$place/moved/share/man/man1/nrwave.1"
if [ -d "$place/moved/lib/python3" ]; then
    PYTHONPATH=$place/moved/lib/python3/dist-packages /usr/bin/python3 -c '
import nrwave
w = nrwave.Waveform()
w["carrier[0].dl_ssb.enable"] = True
assert w.generate().samples.size == w["waveform_sample_points"]'
fi

cmake -S "$source/examples" -B "$place/host" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" \
    -DCMAKE_PREFIX_PATH="$place/moved" >/dev/null
cmake --build "$place/host" >/dev/null
"$place/host/first_waveform"
"$place/host/save_and_recall" "$place/settings.xml"
[ "$("$place/host/map_and_conflict" | wc -l)" = 5 ] # its own lines, none of the library's

libdir=$(dirname "$(find "$place/moved" -name nr_mod_lib.pc)")
export PKG_CONFIG_PATH=$libdir
# shellcheck disable=SC2046
"$compiler" -std=c++17 "$source/examples/first_waveform.cpp" -o "$place/by_pkg_config" \
    $(pkg-config --cflags --libs nr_mod_lib)
LD_LIBRARY_PATH=$(dirname "$libdir") "$place/by_pkg_config"

headers=$place/moved/include/nr_mod_lib
! find "$headers" -path '*tables*' -o -name 'cfg_nr_leaf_*.h' | grep . # the library's own
# What neither exports nor is included by another is the library's own too.
(cd "$headers" && find . -name '*.h' | sed 's,^\./,,' | while read -r header; do
    grep -q NR_MOD_LIB_EXPORT "$header" || grep -rqF "#include \"$header\"" . || { echo "$header"; exit 1; }
done)
"$source/tests/project/headers_alone.sh" "$compiler" "$headers"
