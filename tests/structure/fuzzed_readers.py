#!/usr/bin/env python3
"""Checks that every reader of elements, attributes or files stands in the table of fuzz/README.md with the targets that
reach it, and that what it reads stands in their seeds.

A reader is a source that walks a document's tree, uses the vocabulary of documents or opens a stream. What it reads are
the names of the vocabulary that it mentions, in the plug-ins their literals. A name counts as seeded when it stands as a
word in a seed of one of the reader's targets.
"""
import pathlib
import re
import sys

SOURCES = ["src", "plugins"]
READS = re.compile(r"\bDOM(?:Element|Node|NodeList|Document|Attr)\b|\b(?:PMML|KORD)ModelTags::XML_|\bstd::i?f?stream\b"
                   r"|\bstd::istream\b|\bconst Element&")
ROW = re.compile(r"^\| `(\w+/[\w/.]+)` \| ([\w, ]+) \|$", re.MULTILINE)
TAG = re.compile(r'^VELTRANE_TAG\((\w+), "([^"]*)"\)$', re.MULTILINE)
MENTIONED = re.compile(r"\b\w*Tags::(XML_\w+)")
LITERAL = re.compile(r'\bu"([A-Za-z][\w-]+)"')


def vocabulary(root, name):
    return dict(TAG.findall((root / "include/MCVeltrane_900" / name).read_text()))


def readers(root):
    """Path and text of each reader."""
    for folder in SOURCES:
        for source in sorted((root / folder).rglob("*.cpp")):
            text = source.read_text()
            if READS.search(text):
                yield str(source.relative_to(root)), text


def words_of(path, text, pmml, kord):
    """The names of elements and attributes that a reader reads."""
    tags = kord if "KORDModelTags" in text else pmml
    words = {tags[constant] for constant in MENTIONED.findall(text) if constant in tags}
    if path.startswith("plugins/"):
        words |= set(LITERAL.findall(text))
    return words


class Seeds:
    """The seeds of each target."""

    def __init__(self, root):
        self.root = root
        self.texts = {}

    def files(self, target):
        folder = self.root / "fuzz/seeds" / target
        return [seed for seed in folder.iterdir() if seed.is_file() and seed.stat().st_size > 0] if folder.is_dir() else []

    def text(self, target):
        if target not in self.texts:
            self.texts[target] = "\n".join(seed.read_bytes().decode("latin-1") for seed in self.files(target))
        return self.texts[target]

    def hold(self, targets, word):
        whole = re.compile(rf"(?<![\w-]){re.escape(word)}(?![\w-])")
        return any(whole.search(self.text(target)) for target in targets)


def target_faults(root, table, seeds):
    targets = {path.name.removesuffix("_fuzz.cpp") for path in (root / "fuzz").glob("*_fuzz.cpp")}
    named = set().union(*table.values())
    return ([f"fuzz/{name}_fuzz.cpp: in no row of fuzz/README.md" for name in sorted(targets - named)]
            + [f"fuzz/README.md: no such target: {name}" for name in sorted(named - targets)]
            + [f"fuzz/seeds/{name}: no seeds" for name in sorted(targets) if not seeds.files(name)])


def reader_faults(root, table, seeds):
    pmml, kord = vocabulary(root, "PMMLModelTags.def"), vocabulary(root, "KORDModelTags.def")
    found = dict(readers(root))
    faults = [f"fuzz/README.md: no such source: {path}" for path in table if not (root / path).is_file()]
    for path, text in found.items():
        if path not in table:
            faults.append(f"{path}: reads documents or files, and is not in fuzz/README.md")
            continue
        faults += [f"{path}: reads \"{word}\", which is in no seed of {', '.join(sorted(table[path]))}"
                   for word in sorted(words_of(path, text, pmml, kord)) if not seeds.hold(table[path], word)]
    return faults


def main():
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else __file__).resolve()
    root = root if root.is_dir() else root.parents[2]
    table = {path: set(targets.split(", ")) for path, targets in ROW.findall((root / "fuzz/README.md").read_text())}
    if not table:
        print("fuzz/README.md: no table")
        return 1
    seeds = Seeds(root)
    faults = target_faults(root, table, seeds) + reader_faults(root, table, seeds)
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
