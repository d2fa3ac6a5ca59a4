#!/usr/bin/env python3
"""Writes docs/accuracy.md: python3 make_accuracy.py build/release/bin/veltrane_stats_tests

Runs the golden tests of the program and puts the largest error that they measured beside the tolerance and the reason of
each region in regions.txt.
"""
import pathlib
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as tree

HERE = pathlib.Path(__file__).resolve().parent
PAGE = HERE.parents[2] / "docs" / "accuracy.md"

HEAD = """# Accuracy of the distribution functions

The largest errors of the functions of `MCDistFun` against tables computed with fifty digits, by function and region.
`tests/stats/golden/make_golden.py` made the tables, `tests/stats/golden/make_accuracy.py` makes this page from a run of
the tests, and the tests hold every region to its tolerance, which `tests/stats/golden/regions.txt` lists.

Errors are relative; those marked *abs* are absolute. The usual tolerances are 1e-14 for the normal family, 1e-12 for
cumulative functions and densities, 1e-10 for quantiles. A wider one has its reason in the last column: the stopping rules
of the iterations are part of the results that models were built on, and stay.

| Function | Region | Points | Largest error | Tolerance | Why wider |
|---|---|---|---|---|---|
"""


def measured(program):
    """The number of points and the largest error of each region, as the tests record them."""
    with tempfile.TemporaryDirectory() as folder:
        report = pathlib.Path(folder) / "report.xml"
        subprocess.run([program, "--gtest_filter=*GoldenTable.StaysWithin*", f"--gtest_output=xml:{report}"],
                       check=True, stdout=subprocess.DEVNULL)
        return {entry.get("name"): entry.get("value").split() for entry in tree.parse(report).iter("property")}


def main():
    errors = measured(sys.argv[1])
    lines = []
    for line in (HERE / "regions.txt").read_text().splitlines():
        if not line or line.startswith("#"):
            continue
        function, region, measure, tolerance, reason = line.split("|")
        points, error = errors[f"{function}|{region}"]
        mark = " *abs*" if measure == "absolute" else ""
        lines.append(f"| `{function}` | {region} | {points} | {float(error):.1e}{mark} | {float(tolerance):g} | {reason} |")
    PAGE.write_text(HEAD + "\n".join(lines) + "\n")


if __name__ == "__main__":
    main()
