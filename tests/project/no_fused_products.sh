#!/usr/bin/env bash
# Fails where the library holds instructions that round a product and a sum together: its results would depend on the
# machine.
set -euo pipefail
fused=$(objdump -d --no-show-raw-insn "$1" | grep -cE '\svf(n?m(add|sub)|msubadd|maddsub)' || true)
[ "$fused" -eq 0 ] || { echo "$1 holds $fused fused multiplications"; exit 1; }
