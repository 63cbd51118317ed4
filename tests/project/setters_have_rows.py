#!/usr/bin/env python3
"""Fails where a setter of a façade has no row in the leaf tables or no word above it, or a row is wired to another
setting's operations.

`set_x` of src/config/cfg_nr_y.h has a row named x in src/config/leaves/cfg_nr_y_leaves.*; only cursors have none. An
override has the row of its base.
"""
import pathlib
import re
import sys

# Getters whose spelling is their own.
GETTERS = {
    "csirs_port": "get_csirs_feedback_port",
    "timeoffset": "get_timeoffet",
    "zeroCorrelation_zone": "get_ZeroCorrelationZone",
}
CURSOR = re.compile(r"set_current_\w+")
SETTER = re.compile(r"^\s*(?:virtual\s+)?(?:bool|int|void)\s+(set_\w+)\([^()]*\)(?!\s*override)", re.M)
ROW = re.compile(r"leaf<([^<>]*)>\(\s*\"(\w+)\"|indexed<([^<>]*)>\(\s*\"(\w+)\"", re.S)


def without_word(text):
    """Setters with no /// right above; a // comment above stands for all that follow it up to the next ///."""
    above = comment = ""
    for line in text.splitlines():
        setter = SETTER.match(line)
        if setter and not CURSOR.fullmatch(setter.group(1)) and comment != "//" and not above.startswith("///"):
            yield setter.group(1)
        above = line.strip()
        if above.startswith("//"):
            comment = "///" if above.startswith("///") else "//"


def main():
    config = pathlib.Path(sys.argv[1]) / "src" / "config"
    wrong = []
    setters = 0
    for header in sorted(config.glob("cfg_nr_*.h")):
        text = header.read_text(encoding="utf-8")
        if "class NR_MOD_LIB_EXPORT cfg_nr_" not in text:
            continue
        wrong += [f"{header.name}: {name} has no word above it" for name in without_word(text)]
        rows = {}
        for leaves in (config / "leaves").glob(f"{header.stem}_leaves.*"):
            for arguments, name, indexed, indexed_name in ROW.findall(leaves.read_text(encoding="utf-8")):
                name = name or indexed_name
                operations = [part.strip().split("::")[-1] for part in (arguments or indexed).split(",")]
                getter, setter = operations[1:3] if indexed else operations[:2]
                rows[f"set_{name}"] = setter
                # A constant stands for one of several overloads.
                if not getter.startswith((GETTERS.get(name, f"get_{name}"), "k_")) or setter != f"set_{name}":
                    wrong.append(f"{leaves.name}: {name} is wired to {getter}, {setter}")
        declared = {name for name in SETTER.findall(text) if not CURSOR.fullmatch(name)}
        setters += len(declared)
        wrong += [f"{header.name}: {name} has no row" for name in sorted(declared - rows.keys())]
    print("\n".join(wrong) if wrong else f"{setters} setters, each with its row")
    return 1 if wrong or not setters else 0


if __name__ == "__main__":
    sys.exit(main())
