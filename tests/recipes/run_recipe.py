#!/usr/bin/env python3
"""Follows a recipe of CONTRIBUTING.md in a copy of the tree: run_recipe.py FOLDER OBJECTS LIBRARIES COMMAND

A recipe is a folder with

    change.patch   what its steps change by hand
    recipe.json    "heading" of the recipe in CONTRIBUTING.md, and what follows the change: the scripts that "generate"
                   pages and tables, with the files that they have to change; the sources of the library to "rebuild",
                   which are all that read the table that the change extends; the "targets" that the build has with it
                   and not without it; a "plugin" with its "name" and the sources to rebuild or, "like" another source,
                   to build; a "program" with its "source", built "like" another one, and its "libraries"; the "tests"
                   that are written as files of their own, each with one that it is compiled like; the test programs
                   to "run", with the sources to rebuild, those of static libraries to link "before" these, and the
                   tests that have to pass, the new ones and those that go over the table
    check.py       shows that the result works: it is run in the copy with the command of a library that has the change

The page says how many places in how many files the steps touch, in the line "**N places in M files**" below its heading;
the patch has to touch exactly these. With the change and the generated files the checks of tests/structure have to pass,
so a recipe can't leave out a place that they ask for. The library and the plug-in are linked from the objects of this
build, but for the rebuilt sources. The check has to fail without the change.

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
# The checks that look at a build.
OF_THE_BUILD = {"exported_symbols.py", "vtable_layout.py"}
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


def copy_tree(to):
    """What belongs to the tree; builds, the history and what other tools left behind stay."""
    for source in ROOT.iterdir():
        if source.name.startswith("build") or source.name == ".git":
            continue
        if source.is_dir():
            shutil.copytree(source, to / source.name, ignore=shutil.ignore_patterns("__pycache__"))
        else:
            shutil.copy(source, to)


def check_structure(copy):
    """Runs the checks that need nothing but the tree."""
    checks = [*sorted((copy / "tests/structure").glob("*.py")), *sorted((copy / "tools/docs").glob("*_page.py"))]
    for check in checks:
        if check.name not in OF_THE_BUILD:
            must([sys.executable, check, *(["--check"] if check.parent.name == "docs" else [])], cwd=copy)


def generate(scripts, copy):
    """Runs the scripts that make files from what has changed; each has to change its files."""
    for step in scripts:
        before = {name: (copy / name).read_bytes() for name in step["changes"]}
        must([sys.executable, *step["script"]], cwd=copy, env=dict(os.environ, PYTHONDONTWRITEBYTECODE="1"))
        for name, content in before.items():
            if (copy / name).read_bytes() == content:
                raise Fault(f"{step['script'][0]} does not change {name}")


TREES = ("src", "include", "plugins", "benchmarks", "examples", "tests")


def commands_of(build):
    """How the build compiles each source."""
    entries = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    return {str(pathlib.Path(entry["file"]).relative_to(ROOT)): entry["command"] for entry in entries
            if pathlib.Path(entry["file"]).is_relative_to(ROOT)}


def compile_command(commands, source, like, copy, target):
    """That of the build for a source, or for the one that it is like, in the copy and without the optimiser."""
    if like not in commands:
        raise Fault(f"the build has no source {like}")
    words = []
    for word in shlex.split(commands[like]):
        word = word.replace(f"{ROOT}/{like}", f"{ROOT}/{source}")
        for tree in TREES:
            if (copy / tree).is_dir():
                word = word.replace(f"{ROOT}/{tree}", f"{copy}/{tree}")
        words.append(word)
    words[words.index("-o") + 1] = str(target)
    return [*words, "-O0"]


def compile_all(sources, like, copy, build):
    """The objects of sources in the copy, each in a place of its own."""
    commands, targets = commands_of(build), []
    jobs = []
    for source in sources:
        targets.append(copy / "objects" / (source.replace("/", "_") + ".o"))
        jobs.append(compile_command(commands, source, like or source, copy, targets[-1]))
    (copy / "objects").mkdir(exist_ok=True)
    with concurrent.futures.ThreadPoolExecutor(max_workers=2) as pool:
        list(pool.map(lambda job: must(job, cwd=build), jobs))
    return [str(target) for target in targets]


def compile_tests(tests, copy, build):
    """They have to compile beside the tests that are there."""
    commands = commands_of(build)
    for source, like in tests.items():
        if like not in commands:
            raise Fault(f"the build has no source {like}")
        must([*shlex.split(commands[like].replace(f"{ROOT}/{like}", f"{copy}/{source}")), "-fsyntax-only"], cwd=build)


def without(objects, sources):
    """The objects of other sources than these."""
    kept = list(objects)
    for source in sources:
        ending = "/" + source.split("/", 1)[1] + ".o"
        places = [name for name in kept if name.endswith(ending)]
        if len(places) != 1:
            raise Fault(f"{source} is none of the sources")
        kept.remove(places[0])
    return kept


def link(target, parts):
    target.parent.mkdir(parents=True, exist_ok=True)
    must([os.environ.get("CXX", "c++"), "-o", target, *parts])


def link_library(recipe, options, copy):
    sources = recipe.get("rebuild", [])
    objects = without(options.objects.read_text().split(), sources) + compile_all(sources, None, copy, options.build)
    link(copy / "lib/libveltrane.so.9", ["-shared", "-Wl,-soname,libveltrane.so.9", *objects,
                                         "-Wl,-rpath,$ORIGIN:$ORIGIN/veltrane", *options.libraries.read_text().split(),
                                         "-ldl"])


def link_plugin(plugin, options, copy):
    """Objects of the change come first: of what else the plug-in and the kit define nothing more is taken."""
    objects = compile_all(plugin["sources"], plugin.get("like"), copy, options.build)
    own = options.build.glob(f"plugins/*/CMakeFiles/veltrane_plugin_{plugin['name']}.dir/plugin.cpp.o")
    archives = [*sorted(options.build.glob("lib/libveltrane_*_core.a")), options.build / "lib/libveltrane_kit.a"]
    link(copy / "lib/veltrane" / f"{plugin['name']}900r.so",
         ["-shared", *objects, *own, *archives, copy / "lib/libveltrane.so.9", *options.libraries.read_text().split()])


def link_program(program, options, copy):
    objects = compile_all([program["source"]], program["like"], copy, options.build)
    link(copy / "bin" / pathlib.Path(program["source"]).stem,
         [*objects, *(copy / extra for extra in program.get("beside", [])), copy / "lib/libveltrane.so.9",
          *program["libraries"]])


def run_tests(name, program, options, copy, environment):
    """Runs tests of a program that is linked from the objects of this build, but for the rebuilt sources. None of their
    names may stand for nothing."""
    words = must(["ninja", "-t", "commands", f"bin/{name}"], cwd=options.build).splitlines()[-1]
    words = without(shlex.split(words.removeprefix(": && ").removesuffix(" && :")), program["rebuild"])
    target = copy / "bin" / name
    target.parent.mkdir(exist_ok=True)
    place = words.index("-o")
    words[place + 1] = str(target)
    words[place:place] = compile_all(program.get("before", []), None, copy, options.build)
    must([*words, *compile_all(program["rebuild"], None, copy, options.build)], cwd=options.build)
    for test in program["tests"]:
        if "\n  " not in must([target, "--gtest_list_tests", f"--gtest_filter={test}"], env=environment):
            raise Fault(f"{name} has no test {test}")
    must([target, "--gtest_brief=1", f"--gtest_filter={':'.join(program['tests'])}"], env=environment)


def targets_of(copy, options):
    """The names of what CMake builds from the copy."""
    folder = copy / "build"
    must(["cmake", "-S", copy, "-B", folder, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release", *options])
    lines = must(["ninja", "-C", folder, "-t", "targets", "all"]).splitlines()
    shutil.rmtree(folder)
    return {line.split(":")[0] for line in lines}


def check_targets(targets, copy, patch):
    names = set(targets["names"])
    if names & targets_of(copy, targets.get("options", [])):
        raise Fault(f"the build has some of {sorted(names)} without the change")
    patch()
    missing = names - targets_of(copy, targets.get("options", []))
    if missing:
        raise Fault(f"the build has no target {sorted(missing)}")


def follow(recipe, folder, options, copy):
    text = (folder / "change.patch").read_text(encoding="utf-8")
    places = places_of(text)
    found, stated = (sum(places.values()), len(places)), stated_places(recipe["heading"])
    if found != stated:
        raise Fault(f"the change touches {found[0]} places in {found[1]} files, the page says {stated[0]} in {stated[1]}: "
                    f"{places}")
    copy_tree(copy)
    check = [sys.executable, folder / "check.py", options.command]
    environment = dict(os.environ, LD_LIBRARY_PATH=f"{copy}/lib:{copy}/lib/veltrane", PYTHONDONTWRITEBYTECODE="1")
    if run(check, cwd=copy, env=environment).returncode == 0:
        raise Fault("the check passes without the change")

    def patch():
        must(["patch", "-p1", "--no-backup-if-mismatch", "-i", folder / "change.patch"], cwd=copy)

    if "targets" in recipe:
        check_targets(recipe["targets"], copy, patch)
    else:
        patch()
    generate(recipe.get("generate", []), copy)
    check_structure(copy)
    link_library(recipe, options, copy)
    compile_tests(recipe.get("tests", {}), copy, options.build)
    if "plugin" in recipe:
        link_plugin(recipe["plugin"], options, copy)
    if "program" in recipe:
        link_program(recipe["program"], options, copy)
    must(check, cwd=copy, env=environment)
    for name, program in recipe.get("run", {}).items():
        run_tests(name, program, options, copy, environment)
    print(f"{recipe['heading']}: {found[0]} places in {found[1]} files")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    for name in ("folder", "build", "objects", "libraries", "command"):
        parser.add_argument(name, type=lambda text: pathlib.Path(text).resolve())
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
