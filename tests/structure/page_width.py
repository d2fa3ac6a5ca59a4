#!/usr/bin/env python3
"""Checks that no line of prose on a page is wider than the others. Tables, headings, examples and lines of a single long
word, as addresses are, stay as they are."""
import pathlib
import re
import sys

WIDEST = 120
FENCE = re.compile(r"\s*(```|~~~)")
INDENTED = re.compile(r" {4}|\t")
LIST_ITEM = re.compile(r"\s*([-*+]|\d+\.)\s")
LEFT_OUT = {"build", ".git"}


def pages(root):
    """The pages of the tree, folders of builds left out."""
    for path in sorted(root.rglob("*.md")):
        parts = path.relative_to(root).parts
        if not LEFT_OUT.intersection(parts) and not parts[0].startswith("build"):
            yield path


def prose_lines(text):
    """The lines of prose with their numbers."""
    is_example, after_blank, in_list = False, True, False
    for number, line in enumerate(text.splitlines(), 1):
        if FENCE.match(line):
            is_example = not is_example
            continue
        if LIST_ITEM.match(line):
            in_list = True
        elif line and not line.startswith(" ") and after_blank:
            in_list = False
        # Indented lines are an example, but within a list they go on with an item.
        is_indented_example = INDENTED.match(line) and not in_list
        after_blank = not line.strip()
        if not is_example and not is_indented_example and not line.lstrip().startswith(("|", "#")):
            yield number, line


def wide_lines(name, text):
    for number, line in prose_lines(text):
        if len(line) > WIDEST and len(line.split()) > 1:
            yield f"{name}:{number}: {len(line)} characters, the bound is {WIDEST}"


def main():
    root = pathlib.Path(__file__).resolve().parents[2]
    faults = [fault for path in pages(root)
              for fault in wide_lines(path.relative_to(root), path.read_text(encoding="utf-8"))]
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
