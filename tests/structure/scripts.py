#!/usr/bin/env python3
"""Checks that every script of the tree can be read by Python, those included that no test runs."""
import ast
import pathlib
import sys

LEFT_OUT = {"build", ".git"}


def files(root, pattern):
    """Folders of builds are left out."""
    for path in sorted(root.rglob(pattern)):
        parts = path.relative_to(root).parts
        if not LEFT_OUT.intersection(parts) and not parts[0].startswith("build"):
            yield path


def fault_of(path):
    """None for a script that can be read."""
    text = path.read_text(encoding="utf-8")
    if text.startswith("#! ") or text.startswith("#!/ "):
        return "1: no path of a program behind #!"
    try:
        ast.parse(text)
    except SyntaxError as fault:
        return f"{fault.lineno}: {fault.msg}"
    return None


def main():
    root = pathlib.Path(__file__).resolve().parents[2]
    scripts = list(files(root, "*.py"))
    faults = [f"{path.relative_to(root)}:{fault}" for path in scripts if (fault := fault_of(path))]
    if not scripts:
        faults.append("no script was found")
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
