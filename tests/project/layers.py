#!/usr/bin/env python3
"""Fails where an include goes against the order of the layers, and where files include each other in a circle.

common <- phy_common <- manager <- config; phy_common, manager <- grids <- phy_dl <- phy_ul <- engine. The enumerations of
the grids and of the engine's record have their name tables in config. The tool uses façades, leaf tables and engine;
the library knows no tool.
Within the tool: analysis <- host <- commands; what analysis reckons from samples knows neither façades nor streams.
The receiver of the tests reads settings from the managers and big tables, and nothing that the generator works out.
"""
import pathlib
import re
import sys

GRIDS = {"lib_nr_resource_manager", "lib_nr_resource_marks", "lib_nr_resource_type", "lib_nr_prach_resource_manager",
         "lib_nr_phy_record", "lib_nr_phy_observer"}
ALLOWED = {
    "common": {"common"},
    "phy_common": {"common", "phy_common"},
    "manager": {"common", "phy_common", "manager"},
    "grids": {"common", "phy_common", "manager", "grids"},
    "config": {"common", "phy_common", "manager", "grids", "config"},
    "phy_dl": {"common", "phy_common", "manager", "grids", "phy_dl"},
    "phy_ul": {"common", "phy_common", "manager", "grids", "phy_dl", "phy_ul"},
    "engine": {"common", "phy_common", "manager", "grids", "phy_dl", "phy_ul", "engine"},
    "analysis": {"common", "analysis"},
    "host": {"common", "phy_common", "manager", "grids", "config", "engine", "analysis", "host"},
}
ALLOWED["receiver"] = {"manager", "tables", "receiver"}
ALLOWED["commands"] = ALLOWED["host"] | {"commands"}
STREAMS = {"iostream", "ostream", "sstream", "fstream", "cstdio"}


def layer(path):
    folder = path.parts[0]
    if folder == "host":
        return "commands" if path.stem == "main" else path.parent.name
    if folder != "phy":
        return folder
    return "grids" if path.stem in GRIDS else "engine"


def node(path):
    """A header and the source beside it are one."""
    return str(path.parent / path.stem)


def circles(includes):
    """Each way that leads back to where it began, found from the first of its files."""
    done, way, found = set(), [], []

    def walk(file):
        if file in way:
            found.append(" -> ".join(way[way.index(file):] + [file]))
        if file in done or file in way:
            return
        way.append(file)
        for included in sorted(includes.get(file, ())):
            walk(included)
        done.add(way.pop())

    for file in sorted(includes):
        walk(file)
    return found


def main():
    root = pathlib.Path(sys.argv[1])
    files = [(f, f.relative_to(root / "src")) for f in (root / "src").rglob("*") if f.suffix in (".h", ".cpp")]
    files += [(f, f.relative_to(root)) for f in (root / "host").rglob("*") if f.suffix in (".h", ".cpp")]
    files += [(f, f.relative_to(root / "tests")) for f in (root / "tests/receiver").rglob("*") if f.suffix in (".h", ".cpp")]
    checked = 0
    wrong = []
    includes = {}
    for file, name in files:
        text = file.read_text(encoding="utf-8")
        if layer(name) == "analysis" and (streams := STREAMS.intersection(re.findall(r"#\s*include\s+<(\w+)>", text))):
            wrong.append(f"{name} includes {', '.join(streams)}")
        for included in re.findall(r'^\s*#\s*include\s+"([^"]+)"', text, re.M):
            checked += 1
            target = pathlib.PurePosixPath(included)
            if node(target) != node(name):
                includes.setdefault(node(name), set()).add(node(target))
            allowed = ALLOWED.get(layer(name), set())
            is_table = target.parts[:2] == ("phy_common", "tables") and "tables" in allowed
            if len(target.parts) < 2 or not (is_table or layer(target) in allowed):
                wrong.append(f"{name} includes {included}")
    wrong += [f"a circle: {way}" for way in circles(includes)]
    print("\n".join(wrong) if wrong else f"{checked} includes, all downwards")
    return 1 if wrong or not checked else 0


if __name__ == "__main__":
    sys.exit(main())
