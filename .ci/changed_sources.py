#!/usr/bin/env python3
"""Prints the sources that a change touches, for clang-tidy: those that were changed, and for each changed header those
that include it. Reads the changed files from standard input."""
import pathlib
import re
import sys

FOLDERS = ("src", "tools", "plugins", "include")
NOT_HERE = {"src/platform/windows.cpp"}
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', re.MULTILINE)


def files_of(root):
    return [path.relative_to(root).as_posix() for folder in FOLDERS for path in sorted((root / folder).rglob("*"))
            if path.suffix in (".h", ".cpp", ".def")]


def includes(root, name, names):
    """The project's files that a file includes: beside it, or in one of the folders that the compiler searches."""
    found = set()
    for include in INCLUDE.findall((root / name).read_text(encoding="utf-8")):
        for folder in (pathlib.PurePosixPath(name).parent.as_posix(), *FOLDERS, "tools/veltrane"):
            path = pathlib.PurePosixPath(folder, include).as_posix()
            if path in names:
                found.add(path)
                break
    return found


def sources_of(changed, included_by):
    """A source is checked itself. A header is checked in the sources that include it; one that only headers include, in
    the sources of those."""
    sources, seen, waiting = set(), set(), list(changed)
    while waiting:
        name = waiting.pop()
        if name in seen:
            continue
        seen.add(name)
        if name.endswith(".cpp"):
            sources.add(name)
            continue
        users = included_by.get(name, set())
        direct = {user for user in users if user.endswith(".cpp")}
        sources |= direct
        if not direct:
            waiting.extend(users)
    return sources - NOT_HERE


def main():
    root = pathlib.Path.cwd()
    names = set(files_of(root))
    included_by = {}
    for name in names:
        for include in includes(root, name, names):
            included_by.setdefault(include, set()).add(name)
    changed = [line for line in sys.stdin.read().split("\n") if line in names]
    for source in sorted(sources_of(changed, included_by)):
        print(source)


if __name__ == "__main__":
    main()
