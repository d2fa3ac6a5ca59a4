#!/usr/bin/env python3
"""Checks that every test suite named Kept... stands on the page of kept behaviours, and every suite there in a test."""
import pathlib
import re
import sys


def main():
    root = pathlib.Path(__file__).resolve().parents[2]
    suites = set()
    for test in (root / "tests").rglob("*.cpp"):
        suites |= set(re.findall(r"TEST(?:_F|_P)?\(\s*(Kept\w+)\s*,", test.read_text()))
    named = set(re.findall(r"`(Kept\w+)`", (root / "docs/kept-behaviours.md").read_text()))
    faults = [f"not in docs/kept-behaviours.md: {name}" for name in sorted(suites - named)]
    faults += [f"no such suite: {name}" for name in sorted(named - suites)]
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
