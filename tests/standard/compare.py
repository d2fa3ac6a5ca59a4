#!/usr/bin/env python3
"""Compares the command with the evaluator of the standard on random documents.

    compare.py SEED [--rounds N] [--rows N] [--classes PATTERN...]     prints the first difference of each class, made small,
                                                                       and a table of classes with counts
    compare.py SEED --list                                             the classes: NAME@ROAD
    compare.py --check                                                 what open_classes.tsv says still holds
    compare.py SEED --fresh SECONDS                                    new documents of all classes that aren't listed there
    compare.py --record [--search N] [--classes PATTERN...]            writes open_classes.tsv anew, or what it says of these

open_classes.tsv lists the classes that don't hold yet, each with a seed that shows it, the number of cells that differ and
the kinds of difference. --check ends with 1 where a class differs that isn't listed, where one that is listed holds now,
differs in more cells or in another kind, or where the command crashes.
"""
import argparse
import dataclasses
import fnmatch
import pathlib
import sys
import tempfile
import time
import zlib

import running
import shrinking
from generator import catalogue
from generator.draw import Draw

OPEN = pathlib.Path(__file__).with_name("open_classes.tsv")
FIXED_SEED, FIXED_ROWS = 1, 12


@dataclasses.dataclass
class Open:
    """A class that doesn't hold: a seed whose document differs, in how many cells, and how."""
    seed: int
    differing: int
    kinds: set


class Tally:
    """What was found of one class."""

    def __init__(self):
        self.documents = self.rows = self.cells = self.differing = 0
        self.kinds, self.first = {}, None

    def add(self, seed, trial, found, cells):
        self.documents += 1
        self.rows += len(trial.rows)
        self.cells += cells
        self.differing += len(found)
        for each in found:
            self.kinds[each.kind] = self.kinds.get(each.kind, 0) + 1
        if found and self.first is None:
            self.first = seed, trial, found[0]


def read_open(path=OPEN):
    lines = [line.split("\t") for line in path.read_text(encoding="utf-8").splitlines() if not line.startswith("#")]
    return {name: Open(int(seed), int(count), set(kinds.split())) for name, seed, count, kinds in lines}


def write_open(classes, path=OPEN):
    lines = ["# Classes that don't hold yet: name, a seed that shows it, cells that differ, kinds. Written by compare.py --record."]
    lines += [f"{name}\t{each.seed}\t{each.differing}\t{' '.join(sorted(each.kinds))}" for name, each in classes.items()]
    path.write_text("\n".join(lines) + "\n", encoding="utf-8")


def trial_of(name, seed, rows):
    """The document of a class and a seed; it depends on nothing else."""
    return catalogue.make(name, Draw(zlib.crc32(f"{name} {seed}".encode())), rows)


def run(name, seed, rows, folder, tally):
    trial = trial_of(name, seed, rows)
    tally.add(seed, trial, *running.differences(trial, folder))


def show(name, tally, folder, small):
    seed, trial, difference = tally.first
    if small:
        trial, difference = shrinking.shrink(trial, folder, difference)
    print(f"== {name}, seed {seed}: {difference.kind}")
    print(trial.text)
    if difference.row:
        print(f"row {trial.rows[difference.row - 1]}, column {difference.column}")
    print(f"expected {difference.expected}, got {difference.got}\n")


def table_of(tallies):
    lines = ["| Class | Documents | Rows | Cells | Differences | |", "|---|---:|---:|---:|---:|---|"]
    for name, tally in tallies.items():
        kinds = ", ".join(f"{kind} {count}" for kind, count in tally.kinds.items())
        lines.append(f"| {name} | {tally.documents} | {tally.rows} | {tally.cells} | {tally.differing} | {kinds} |")
    return "\n".join(lines)


def judge(tallies, listed, names):
    """What is wrong with the list of open classes after a run of each class's document."""
    for name, tally in tallies.items():
        if "crashed" in tally.kinds:
            yield f"{name}: the command crashes"
        elif name not in listed:
            if tally.differing:
                yield f"{name} differs in {tally.differing} cells and isn't listed"
        elif not tally.differing:
            yield f"{name} is listed and holds now: take it out of the list (--record)"
        elif tally.differing > listed[name].differing:
            yield f"{name} differs in {tally.differing} cells, listed are {listed[name].differing}"
        elif not set(tally.kinds) <= listed[name].kinds:
            yield f"{name} differs by {sorted(tally.kinds)}, listed is {sorted(listed[name].kinds)}"
    for name in listed:
        if name not in names:
            yield f"{name} is listed and no class"


def check(names, folder):
    """One document of each class, that of its seed in the list where it is open."""
    listed, tallies = read_open(), {name: Tally() for name in names}
    for name, tally in tallies.items():
        run(name, listed[name].seed if name in listed else FIXED_SEED, FIXED_ROWS, folder, tally)
    return tallies, list(judge(tallies, listed, catalogue.names()))


def fresh(names, seed, rows, seconds, folder):
    """Documents of seeds from this one on, for all classes that aren't open, until the time has passed."""
    listed, until = read_open(), time.monotonic() + seconds
    tallies = {name: Tally() for name in names if name not in listed}
    while time.monotonic() < until:
        for name, tally in tallies.items():
            if not tally.differing and time.monotonic() < until:
                run(name, seed, rows, folder, tally)
        seed += 1
    return tallies, [f"{name} differs in {tally.differing} cells" for name, tally in tallies.items() if tally.differing]


def record(names, search, folder):
    """Looks in so many seeds for a difference of each class, stops at the first, and writes the list; lines of classes that
    weren't looked at stay."""
    tallies = {}
    for name in names:
        for seed in range(FIXED_SEED, FIXED_SEED + search):
            tallies[name] = Tally()
            run(name, seed, FIXED_ROWS, folder, tallies[name])
            if tallies[name].differing:
                break
    before = read_open()
    found = {name: Open(tally.first[0], tally.differing, set(tally.kinds)) for name, tally in tallies.items() if tally.differing}
    write_open({name: found.get(name, before.get(name)) for name in catalogue.names()
                if name in found or name in before and name not in tallies})
    return tallies


def explore(names, options, folder):
    tallies = {name: Tally() for name in names}
    for name, tally in tallies.items():
        for seed in range(options.seed, options.seed + options.rounds):
            run(name, seed, options.rows, folder, tally)
    return tallies


def parse():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("seed", type=int, nargs="?", default=FIXED_SEED)
    parser.add_argument("--rounds", type=int, default=1)
    parser.add_argument("--rows", type=int, default=40)
    parser.add_argument("--classes", nargs="+", default=["*"])
    parser.add_argument("--fresh", type=float, default=0)
    parser.add_argument("--search", type=int, default=10)
    for word in ("--no-shrink", "--list", "--check", "--record"):
        parser.add_argument(word, action="store_true")
    return parser.parse_args()


def main():
    options, wrong = parse(), []
    names = [name for name in catalogue.names() if any(fnmatch.fnmatchcase(name, each) for each in options.classes)]
    if options.list:
        print("\n".join(names))
        return 0
    with tempfile.TemporaryDirectory(prefix="veltrane_standard.") as folder:
        if options.record:
            tallies = record(names, options.search, folder)
        elif options.check:
            tallies, wrong = check(names, folder)
        elif options.fresh:
            tallies, wrong = fresh(names, options.seed, options.rows, options.fresh, folder)
        else:
            tallies = explore(names, options, folder)
        about = {line.split()[0].rstrip(":") for line in wrong} if options.check else set(names)
        for name, tally in tallies.items():
            if tally.first and not options.record and name in about:
                show(name, tally, folder, not options.no_shrink)
    print("\n".join(wrong))
    if not options.check and not options.fresh:
        print(table_of(tallies))
    print(f"{sum(each.documents for each in tallies.values())} documents, {sum(each.rows for each in tallies.values())} rows, "
          f"{sum(each.cells for each in tallies.values())} cells compared, seed {options.seed}")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
