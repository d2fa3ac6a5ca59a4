#!/usr/bin/env python3
"""Checks that no folder of sources holds more files than a reader takes in at once, and that the folders of each tree
include each other in one direction only."""
import pathlib
import re
import sys

# Folders of installed headers are left out: their paths stand in the sources of every caller.
TREES = ["src", "plugins", "tools", "tests", "fuzz", "benchmarks", "examples"]
SOURCES = {".cpp", ".h", ".def", ".py", ".sh"}
MOST_FILES = 25
# Where the compiler looks for what the sources of a tree include in quotes.
INCLUDE_ROOTS = {"src": "src", "plugins": "plugins", "tools": "tools/veltrane"}
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', re.MULTILINE)


def crowded(root):
    """The folders with too many sources."""
    for tree in TREES:
        folders = [root / tree, *(path for path in (root / tree).rglob("*") if path.is_dir())]
        for folder in sorted(folders):
            count = sum(1 for path in folder.iterdir() if path.suffix in SOURCES)
            if count > MOST_FILES:
                yield f"{folder.relative_to(root)}: {count} sources in one folder, the bound is {MOST_FILES}"


def uses_of(root, include_root):
    """For each folder those whose headers its files include, with an example."""
    uses = {}
    for path in sorted((root / include_root).rglob("*")):
        if path.suffix not in (".cpp", ".h"):
            continue
        for include in INCLUDE.findall(path.read_text(encoding="utf-8")):
            header = root / include_root / include
            if header.is_file() and header.parent != path.parent:
                uses.setdefault(path.parent, {}).setdefault(header.parent, (path, include))
    return uses


def circle(uses):
    """A circle of folders, or nothing."""
    state, trail = {}, []

    def visit(folder):
        state[folder] = "open"
        trail.append(folder)
        for other in uses.get(folder, {}):
            if state.get(other) == "open":
                return trail[trail.index(other):] + [other]
            found = visit(other) if other not in state else None
            if found:
                return found
        state[folder] = "done"
        trail.pop()
        return None

    for folder in uses:
        found = visit(folder) if folder not in state else None
        if found:
            return found
    return None


def main():
    root = pathlib.Path(__file__).resolve().parents[2]
    faults = list(crowded(root))
    for include_root in INCLUDE_ROOTS.values():
        uses = uses_of(root, include_root)
        found = circle(uses)
        if found:
            for folder, other in zip(found, found[1:]):
                path, include = uses[folder][other]
                faults.append(f"{path.relative_to(root)}: includes {include}, and {other.relative_to(root)} leads back to "
                              f"{folder.relative_to(root)}")
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
