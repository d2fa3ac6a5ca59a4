#!/usr/bin/env python3
"""Follows a recipe of CONTRIBUTING.md in a copy of the tree: run_recipe.py FOLDER OBJECTS LIBRARIES COMMAND

A recipe is a folder with

    change.patch   what its steps change by hand
    recipe.json    "heading" of the recipe in CONTRIBUTING.md, the "copy" of files and folders that it needs, the scripts
                   that "generate" pages and tables after the change, with the files that they have to change, and the
                   sources to "rebuild", which are all that read the table that the change extends
    check.py       shows that the result works: it is run in the copy with the command of a library that has the change

The page says how many places in how many files the steps touch, in the line "**N places in M files**" below its heading;
the patch has to touch exactly these. The library is linked from the objects of this build, but for the rebuilt sources.
The check has to fail without the change.

OBJECTS is a file that lists the objects of the library, LIBRARIES one that lists what it is linked with; COMMAND is the
command `veltrane` of this build.
"""
import argparse
import concurrent.futures
import json
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGE = ROOT / "CONTRIBUTING.md"
STATED = re.compile(r"\*\*(\d+) places? in (\d+) files?\*\*")


class Fault(Exception):
    pass


def run(arguments, **options):
    return subprocess.run([str(a) for a in arguments], text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          check=False, **options)


def must(arguments, **options):
    result = run(arguments, **options)
    if result.returncode != 0:
        raise Fault(f"{shlex.join(str(a) for a in arguments)}:\n{result.stdout}")
    return result.stdout


def places_of(patch):
    """How many places a patch touches in each file: lines that change together are one."""
    places, file, inside = {}, None, False
    for line in patch.splitlines():
        if line.startswith("+++ "):
            file = line.split()[1].split("/", 1)[1]
            places[file] = 0
        elif not line.startswith("--- "):
            changes = line.startswith(("+", "-"))
            if changes and not inside:
                places[file] += 1
            inside = changes
    return places


def stated_places(heading):
    page = PAGE.read_text(encoding="utf-8")
    sections = re.split(r"^#+ ", page, flags=re.MULTILINE)
    section = next((text for text in sections if text.startswith(heading + "\n")), None)
    if section is None:
        raise Fault(f"CONTRIBUTING.md has no heading '{heading}'")
    stated = STATED.search(section)
    if stated is None:
        raise Fault(f"CONTRIBUTING.md does not say how many places '{heading}' touches")
    return int(stated[1]), int(stated[2])


def copy_tree(parts, to):
    for part in parts:
        source, target = ROOT / part, to / part
        target.parent.mkdir(parents=True, exist_ok=True)
        if source.is_dir():
            shutil.copytree(source, target, ignore=shutil.ignore_patterns("__pycache__"))
        else:
            shutil.copy(source, target)


def generate(scripts, copy):
    """Runs the scripts that make files from what has changed; each has to change its files."""
    for step in scripts:
        before = {name: (copy / name).read_bytes() for name in step["changes"]}
        must([sys.executable, *step["script"]], cwd=copy, env=dict(os.environ, PYTHONDONTWRITEBYTECODE="1"))
        for name, content in before.items():
            if (copy / name).read_bytes() == content:
                raise Fault(f"{step['script'][0]} does not change {name}")


def compile_command(entry, copy, target):
    """That of the build, in the copy and without the optimiser."""
    words = []
    for word in shlex.split(entry["command"]):
        for tree in ("src", "include"):
            word = word.replace(f"{ROOT}/{tree}", f"{copy}/{tree}")
        words.append(word)
    words[words.index("-o") + 1] = str(target)
    return [*words, "-O0"]


def rebuild(sources, objects, copy, build):
    """The objects of the library, with those of the changed sources in the place of the old ones."""
    entries = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    entries = {pathlib.Path(entry["file"]): entry for entry in entries}
    objects, commands = list(objects), []
    for number, source in enumerate(sources):
        ending = "/" + source.split("/", 1)[1] + ".o"
        places = [place for place, name in enumerate(objects) if name.endswith(ending)]
        if ROOT / source not in entries or len(places) != 1:
            raise Fault(f"{source} is no source of the library")
        target = copy / f"{number}.o"
        objects[places[0]] = str(target)
        commands.append(compile_command(entries[ROOT / source], copy, target))
    with concurrent.futures.ThreadPoolExecutor(max_workers=2) as pool:
        list(pool.map(lambda command: must(command, cwd=build), commands))
    return objects


def follow(recipe, folder, options, copy):
    text = (folder / "change.patch").read_text(encoding="utf-8")
    places = places_of(text)
    found, stated = (sum(places.values()), len(places)), stated_places(recipe["heading"])
    if found != stated:
        raise Fault(f"the change touches {found[0]} places in {found[1]} files, the page says {stated[0]} in {stated[1]}: "
                    f"{places}")
    copy_tree(recipe["copy"], copy)
    must(["patch", "-p1", "--no-backup-if-mismatch", "-i", folder / "change.patch"], cwd=copy)
    generate(recipe.get("generate", []), copy)

    objects = rebuild(recipe["rebuild"], options.objects.read_text().split(), copy, options.build)
    library = copy / "lib"
    library.mkdir()
    compiler = os.environ.get("CXX", "c++")
    must([compiler, "-shared", "-Wl,-soname,libveltrane.so.9", "-o", library / "libveltrane.so.9", *objects,
          *options.libraries.read_text().split(), "-ldl"])

    check = [sys.executable, folder / "check.py", options.command]
    if run(check, cwd=copy).returncode == 0:
        raise Fault("the check passes without the change")
    must(check, cwd=copy, env=dict(os.environ, LD_LIBRARY_PATH=str(library)))
    print(f"{recipe['heading']}: {found[0]} places in {found[1]} files")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    for name in ("folder", "build", "objects", "libraries", "command"):
        parser.add_argument(name, type=pathlib.Path)
    options = parser.parse_args()
    recipe = json.loads((options.folder / "recipe.json").read_text(encoding="utf-8"))
    try:
        with tempfile.TemporaryDirectory() as copy:
            follow(recipe, options.folder.resolve(), options, pathlib.Path(copy))
    except Fault as fault:
        print(fault)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
