#!/usr/bin/env python3
"""Checks the names of enumerators and constants: enumerators are UPPER_CASE, constants are kNames. A constant that gives a
meaning to a word of a table (a .def file) bears that word."""
import pathlib
import re
import sys

TREES = ["include", "src", "plugins", "tools", "tests", "fuzz", "benchmarks", "examples"]
LINE_COMMENT = re.compile(r"//[^\n]*")
DIRECTIVE = re.compile(r"^[ \t]*#.*$", re.MULTILINE)
ENUMERATION = re.compile(r"\benum\s+(?:class\s+)?\w*[^;{()]*\{([^}]*)\}")
CONSTANT = re.compile(r"\bconstexpr\s+(?:const\s+)?[\w:<>, ]+?[ *&]+(\w+)(?:\[\w*\])?\s*(?:=|\{|;)")
UPPER_CASE = re.compile(r"[A-Z][A-Z0-9_]*\Z")
CONSTANT_NAME = re.compile(r"k[A-Z0-9]\w*\Z")
# Names that hosts and plug-ins write.
OF_THE_INTERFACE = {"kNUMERIC_VAR", "gMachineMaxExp", "gMachineMinExp", "gMachineMaxInt", "gMachineEpsilon", "gSysmisValue",
                    "gInfinity", "fEpsilon"}


def faults_of(name, text):
    """The names in a source that break the rule, each as a line."""
    text = DIRECTIVE.sub("", LINE_COMMENT.sub("", text))
    for enumeration in ENUMERATION.finditer(text):
        for enumerator in enumeration.group(1).split(","):
            word = re.split(r"[\s=(]", enumerator.strip())[0]
            if word and not UPPER_CASE.match(word) and word not in OF_THE_INTERFACE:
                yield f"{name}: the enumerator {word} isn't UPPER_CASE"
    for constant in CONSTANT.findall(text):
        if not CONSTANT_NAME.match(constant) and not UPPER_CASE.match(constant) and constant not in OF_THE_INTERFACE:
            yield f"{name}: the constant {constant} isn't a kName"


def main():
    root = pathlib.Path(__file__).resolve().parents[2]
    faults = [fault for tree in TREES for path in sorted((root / tree).rglob("*")) if path.suffix in (".h", ".cpp")
              for fault in faults_of(path.relative_to(root), path.read_text(encoding="utf-8"))]
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
