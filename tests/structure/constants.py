#!/usr/bin/env python3
"""Checks that numbers which several subsystems go by stand in one place."""
import pathlib
import re
import sys

TREES = ["include", "src", "plugins", "tools"]
COMMENT = re.compile(r"//[^\n]*")
HOMES = {
    r"\b90027\b": "include/MCVeltrane_900/ScoreModel.h",
    r"\b86'?400(\.0)?\b": "include/MCVeltrane_900/DateTimeValue.h",
    r"\b30\.4375\b": "include/MCVeltrane_900/DateTimeValue.h",
    r"\b365\.25\b": "include/MCVeltrane_900/DateTimeValue.h",
    r"\b2\.22045e-14\b": "include/MCVeltrane_900/NumericValue.h",
    r"\bMAX_ENTITY_EXPANSIONS\s*=|setEntityExpansionLimit\(\s*\d": "include/MCVeltrane_900/ModelFactory.h",
}


def main():
    root = pathlib.Path(__file__).resolve().parents[2]
    faults = []
    for tree in TREES:
        for path in sorted((root / tree).rglob("*")):
            if path.suffix not in (".h", ".cpp"):
                continue
            text, name = COMMENT.sub("", path.read_text(encoding="utf-8")), str(path.relative_to(root))
            for number, home in HOMES.items():
                found = re.search(number, text)
                if found and name != home:
                    faults.append(f"{name}: {found.group()} has its place in {home}")
                elif name == home and not found:
                    faults.append(f"{name}: lacks {number}")
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
