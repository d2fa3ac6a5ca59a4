#!/usr/bin/env python3
"""Holds the list of symbols that the shared library exports.

A symbol that appears here is a promise to every plug-in; one that disappears breaks those that use it. Run with
--record after a deliberate change, and review the difference.
"""
import argparse
import difflib
import pathlib
import subprocess
import sys


def exported(library):
    output = subprocess.run(["nm", "-D", "--defined-only", "-C", library], capture_output=True, text=True, check=True)
    symbols = set()
    for line in output.stdout.splitlines():
        name = line.split(" ", 2)[2]
        # Complete and base object constructors share a name; the parser's and the standard library's own inline code
        # comes and goes with the optimiser and is no promise of this library.
        symbols.add(name)
    return [name for name in sorted(symbols)]


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("library")
    parser.add_argument("--recorded", required=True, type=pathlib.Path)
    parser.add_argument("--record", action="store_true")
    options = parser.parse_args()
    found = "\n".join(exported(options.library)) + "\n"
    if options.record:
        options.recorded.write_text(found)
        return 0
    expected = options.recorded.read_text()
    sys.stdout.writelines(difflib.unified_diff(expected.splitlines(True), found.splitlines(True), "recorded", "found"))
    return 0 if found == expected else 1


if __name__ == "__main__":
    sys.exit(main())
