#!/usr/bin/env python3
"""Fails where a test's suite is not called after its file: tests/phy/lib_nr_phy_test.cpp holds TEST(lib_nr_phy, ...).

Whoever reads of a failing test then knows its file, and a file's tests are run by one name.
"""
import pathlib
import re
import sys


def main():
    wrong = []
    tests = 0
    for file in sorted((pathlib.Path(sys.argv[1]) / "tests").rglob("*.cpp")):
        suites = re.findall(r"^\s*(?:TYPED_)?TEST(?:_[A-Z]+)?\(\s*(\w+)", file.read_text(encoding="utf-8"), re.M)
        tests += len(suites)
        wrong += [f"{file.name}: suite {suite}" for suite in suites if f"{suite}_test" != file.stem]
    print("\n".join(wrong) if wrong else f"{tests} tests, each in the suite of its file")
    return 1 if wrong or not tests else 0


if __name__ == "__main__":
    sys.exit(main())
