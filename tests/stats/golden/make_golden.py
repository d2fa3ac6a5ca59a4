#!/usr/bin/env python3
"""Makes the golden tables: python3 make_golden.py [function ...]

Needs mpmath. The tables of the distribution functions stand beside this script, those of the built-in functions of Apply
in tests/transform/golden: one file a function, one point a line: region, arguments, result. Arguments are doubles in the
shortest form that reads back; results have twenty digits. A result of "missing" is the missing number; a distribution
function's below exp(-708) counts as 0. The points are drawn with fixed seeds, so a run without changes makes the same files.

    python3 make_golden.py --check-seed SEED PROGRAMS [function ...]

draws the same regions with a seed of its own instead, into a temporary folder, and runs the golden tests of the programs
in the folder PROGRAMS over it: what the regions claim holds for points that nobody has seen.
"""
import argparse
import os
import pathlib
import subprocess
import sys
import tempfile

from mpmath import mp, mpf

HERE = pathlib.Path(__file__).resolve().parent
TESTS = HERE.parents[1]
BUILT_IN = TESTS / "transform" / "golden"
sys.path.append(str(BUILT_IN))

import apply_functions
import distributions
from draw import MISSING, Draw

TABLES = {HERE: distributions.FUNCTIONS, BUILT_IN: apply_functions.FUNCTIONS}
PROGRAMS = {"stats": distributions.FUNCTIONS, "transform": apply_functions.FUNCTIONS}
NOTHING = mp.exp(-708)


def text_of(result):
    return result if result == MISSING else mp.nstr(result, 20, min_fixed=0, max_fixed=0)


def counted(result):
    """A result of a distribution function, which is 0 below a bound."""
    return result if result == MISSING or abs(result) >= NOTHING else mpf(0)


def make(functions, name, to):
    lines = []
    for region, rows in functions[name](Draw(name)):
        for arguments, result in rows:
            if functions is distributions.FUNCTIONS and name != "korddnlgam":
                result = counted(result)
            lines.append("\t".join([region] + [repr(float(a)) for a in arguments] + [text_of(result)]))
    (to / f"{name}.txt").write_text("\n".join(lines) + "\n")
    print(f"{name}: {len(lines)} points", flush=True)


def make_all(names, root):
    for folder, functions in TABLES.items():
        to = root / folder.relative_to(TESTS)
        to.mkdir(parents=True, exist_ok=True)
        for name in functions:
            if not names or name in names:
                make(functions, name, to)


def check(seed, programs, names):
    """Whether the tests hold over fresh points."""
    Draw.seeds = (seed,)
    with tempfile.TemporaryDirectory() as folder:
        make_all(names, pathlib.Path(folder))
        environment = dict(os.environ, VELTRANE_GOLDEN_TABLES=folder)
        results = [0]
        for program, functions in PROGRAMS.items():
            chosen = [f"*GoldenTable.StaysWithin*/{name}" for name in functions if not names or name in names]
            if chosen:
                run = [programs / f"veltrane_{program}_tests", "--gtest_brief=1", f"--gtest_filter={':'.join(chosen)}"]
                results.append(subprocess.run(run, env=environment, check=False).returncode)
    return max(results)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--check-seed", type=int)
    parser.add_argument("names", nargs="*")
    options = parser.parse_args()
    if options.check_seed is None:
        make_all(options.names, TESTS)
        return 0
    return check(options.check_seed, pathlib.Path(options.names[0]), options.names[1:])


if __name__ == "__main__":
    sys.exit(main())
