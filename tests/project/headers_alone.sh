#!/usr/bin/env bash
# Compiles every header below a folder alone, as C++17. Arguments: compiler, folder.
set -u
compiler=$1
cd "$2"
find . -name '*.h' -print0 |
    xargs -0 -P 2 -I{} "$compiler" -std=c++17 -fsyntax-only -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror \
        -I. -x c++ -include {} /dev/null
