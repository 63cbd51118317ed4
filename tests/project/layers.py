#!/usr/bin/env python3
"""Fails where an include goes against the order of the layers.

common <- phy_common <- manager <- config; phy_common, manager <- grids <- phy_dl <- phy_ul <- engine. The enumerations of
the grids have their name tables in config. The tool uses façades, leaf tables and engine; the library knows no tool.
"""
import pathlib
import re
import sys

GRIDS = {"lib_nr_resource_manager", "lib_nr_prach_resource_manager"}
ALLOWED = {
    "common": {"common"},
    "phy_common": {"common", "phy_common"},
    "manager": {"common", "phy_common", "manager"},
    "grids": {"common", "phy_common", "manager", "grids"},
    "config": {"common", "phy_common", "manager", "grids", "config"},
    "phy_dl": {"common", "phy_common", "manager", "grids", "phy_dl"},
    "phy_ul": {"common", "phy_common", "manager", "grids", "phy_dl", "phy_ul"},
    "engine": {"common", "phy_common", "manager", "grids", "phy_dl", "phy_ul", "engine"},
    "host": {"common", "phy_common", "manager", "grids", "config", "engine", "host"},
}


def layer(path):
    folder = path.parts[0]
    if folder != "phy":
        return folder
    return "grids" if path.stem in GRIDS else "engine"


def main():
    root = pathlib.Path(sys.argv[1])
    files = [(f, f.relative_to(root / "src")) for f in (root / "src").rglob("*") if f.suffix in (".h", ".cpp")]
    files += [(f, f.relative_to(root)) for f in (root / "host").rglob("*") if f.suffix in (".h", ".cpp")]
    checked = 0
    wrong = []
    for file, name in files:
        for included in re.findall(r'^\s*#\s*include\s+"([^"]+)"', file.read_text(encoding="utf-8"), re.M):
            checked += 1
            target = pathlib.PurePosixPath(included)
            if len(target.parts) < 2 or layer(target) not in ALLOWED.get(layer(name), set()):
                wrong.append(f"{name} includes {included}")
    print("\n".join(wrong) if wrong else f"{checked} includes, all downwards")
    return 1 if wrong or not checked else 0


if __name__ == "__main__":
    sys.exit(main())
