#!/usr/bin/env bash
# Compiles every public header alone, as C++17. Arguments: compiler, folder of the sources, folder of the generated
# headers.
set -u
compiler=$1 sources=$2 generated=$3
cd "$sources"
find . -name '*.h' ! -name 'cfg_nr_leaf_rows.h' ! -name 'cfg_nr_leaf_text.h' ! -name 'cfg_nr_leaf_tables.h' -print0 |
    xargs -0 -P 2 -I{} "$compiler" -std=c++17 -fsyntax-only -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror \
        -I. -I"$generated" -x c++ -include {} /dev/null
