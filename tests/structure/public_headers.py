#!/usr/bin/env python3
"""Checks that the lists of public headers (the install list and include/veltrane.h) hold exactly the folder include/."""
import pathlib
import re
import sys


def main():
    root = pathlib.Path(__file__).resolve().parents[2]
    present = {str(p.relative_to(root / "include")) for p in (root / "include").rglob("*") if p.is_file()}
    listed = set(re.findall(r"^\s+([\w/]+\.(?:h|def))$", (root / "cmake/public_headers.cmake").read_text(), re.MULTILINE))
    gathered = set(re.findall(r"#include <([^>]+)>", (root / "include/veltrane.h").read_text()))
    faults = [f"not in cmake/public_headers.cmake: {name}" for name in sorted(present - listed)]
    faults += [f"listed, but not there: {name}" for name in sorted(listed - present)]
    wanted = {name for name in present if name.endswith(".h")} - {"veltrane.h"}
    faults += [f"not in include/veltrane.h: {name}" for name in sorted(wanted - gathered)]
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
