#!/usr/bin/env python3
"""Fails where a name table differs from its enumeration.

Every enumeration of the configuration has a table; each of its enumerators stands there once, under its own name.
"""
import pathlib
import re
import sys

# Internal to coders: no setting and no host ever names them.
WITHOUT_TABLE = {"lib_nr_crc_type_t"}


def main():
    source = pathlib.Path(sys.argv[1]) / "src"
    tables = {}
    text = "".join(f.read_text(encoding="utf-8") for f in sorted((source / "config").glob("cfg_nr_enum_name_maps*.cpp")))
    for name, rows in re.findall(r"g_(\w+)_name_map\s*=\s*name_map<\s*\w+\s*>\(\{(.*?)\}\);", text, re.S):
        tables[name] = re.findall(r'\{\s*(\w+),\s*"([^"]*)"\s*\}', rows)
    wrong = []
    found = set()
    for folder in ("phy_common", "manager", "phy", "phy_dl", "phy_ul"):
        for header in (source / folder).glob("*.h"):
            for name, body in re.findall(r"enum (\w+) : std::uint32_t\s*\{(.*?)\};", header.read_text("utf-8"), re.S):
                if name in WITHOUT_TABLE:
                    continue
                found.add(name)
                enumerators = re.findall(r"^\s*(\w+) =", body, re.M)
                rows = tables.get(name, [])
                wrong += [f"{name}: {value} is called {text}" for value, text in rows if value != text]
                if sorted(enumerators) != sorted(value for value, _ in rows):
                    wrong.append(f"{name}: {len(rows)} names for {len(enumerators)} enumerators")
    wrong += [f"{name}: no such enumeration" for name in tables.keys() - found]
    print("\n".join(wrong) if wrong else f"{len(found)} enumerations, each with its table")
    return 1 if wrong or not found else 0


if __name__ == "__main__":
    sys.exit(main())
