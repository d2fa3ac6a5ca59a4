#!/usr/bin/env python3
"""Checks from the #include lines that the subsystems depend on each other in one direction only."""
import pathlib
import re
import sys

# A subsystem may use those of the layers above its own line, and itself.
LAYERS = [
    ["platform", "diagnostics", "text", "stats"],
    ["data"],
    ["predicates", "transform"],
    ["translators"],
    ["factory"],
    ["columns"],
]
LAYER_OF = {name: depth for depth, names in enumerate(LAYERS) for name in names}
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', re.MULTILINE)


def read_map(root):
    """The map of headers to subsystems that stands in the source tree."""
    home = {}
    for line in (root / "src" / "subsystems.txt").read_text().splitlines():
        if line and not line.startswith("#"):
            subsystem, headers = line.split(":", 1)
            home.update({header: subsystem.strip() for header in headers.split()})
    return home


def main():
    root = pathlib.Path(__file__).resolve().parents[2]
    home = read_map(root)
    faults = []
    for header in (root / "include").rglob("*"):
        name = str(header.relative_to(root / "include"))
        if header.is_file() and name not in home:
            faults.append(f"include/{name}: stands under no subsystem in src/subsystems.txt")
    for source in sorted(list((root / "src").rglob("*.cpp")) + list((root / "src").rglob("*.h"))
                         + [root / "include" / name for name in home]):
        if source.is_relative_to(root / "src"):
            subsystem = source.relative_to(root / "src").parts[0]
        else:
            subsystem = home[str(source.relative_to(root / "include"))]
        if subsystem == "all":
            continue
        for include in INCLUDE.findall(source.read_text()):
            target = home.get(include)
            if target is None and include.split("/")[0] in LAYER_OF:
                target = include.split("/")[0]
            if target is None or target == "all" or target == subsystem:
                continue
            allowed = LAYER_OF[target] < LAYER_OF[subsystem] or (LAYER_OF[subsystem] == 0 and LAYER_OF[target] == 0)
            if not allowed:
                faults.append(f"{source.relative_to(root)}: {subsystem} may not use {target} ({include})")
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
