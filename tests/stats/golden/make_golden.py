#!/usr/bin/env python3
"""Makes the golden tables: python3 make_golden.py [function ...]

Needs mpmath. The tables of the distribution functions stand beside this script, those of the built-in functions of Apply
in tests/transform/golden: one file a function, one point a line: region, arguments, result. Arguments are doubles in the
shortest form that reads back; results have twenty digits. A result of "missing" is the missing number. The points are
drawn with fixed seeds, so a run without changes makes the same files.
"""
import pathlib
import sys
from multiprocessing import Pool

from mpmath import mp

HERE = pathlib.Path(__file__).resolve().parent
BUILT_IN = HERE.parents[1] / "transform" / "golden"
sys.path.append(str(BUILT_IN))

import apply_functions
import distributions
from draw import MISSING, Draw

TABLES = {HERE: distributions.FUNCTIONS, BUILT_IN: apply_functions.FUNCTIONS}


def text_of(result):
    return result if result == MISSING else mp.nstr(result, 20, min_fixed=0, max_fixed=0)


def make(folder, name):
    lines = []
    for region, rows in TABLES[folder][name](Draw(name)):
        for arguments, result in rows:
            lines.append("\t".join([region] + [repr(float(a)) for a in arguments] + [text_of(result)]))
    (folder / f"{name}.txt").write_text("\n".join(lines) + "\n")
    return name, len(lines)


def main():
    wanted = [(folder, name) for folder, functions in TABLES.items() for name in functions
              if not sys.argv[1:] or name in sys.argv[1:]]
    with Pool() as pool:
        for name, count in pool.starmap(make, wanted, chunksize=1):
            print(f"{name}: {count} points", flush=True)


if __name__ == "__main__":
    main()
