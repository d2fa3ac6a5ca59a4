#!/usr/bin/env python3
"""Writes docs/accuracy.md: python3 make_accuracy.py build/release/bin

Runs the golden tests of the programs in that folder and puts the largest error that they measured beside the tolerance
and the reason of each region in the regions.txt of the tables.
"""
import pathlib
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as tree

HERE = pathlib.Path(__file__).resolve().parent
TESTS = HERE.parents[1]
PAGE = HERE.parents[2] / "docs" / "accuracy.md"

HEAD = """# Accuracy of the numeric functions

The largest errors of the distribution functions and of the built-in functions of `Apply` against tables computed with
fifty digits, by function and region. `tests/stats/golden/make_golden.py` made the tables,
`tests/stats/golden/make_accuracy.py` makes this page from a run of the tests, and the tests hold every region to its
tolerance, which the `regions.txt` beside the tables lists.

Regions are named by the ranges that their points are drawn from, evenly or evenly on the logarithmic scale, with three
seeds each; together they cover the domain. A tolerance is some ten times the largest error of the table or of points of
nine other seeds, whichever is larger; in the beta family, where an error far above the others is rare but possible, it
is what the stopping rule may leave. `make_golden.py --check-seed` holds the same tolerances over points of a fresh
seed.

Errors are relative to the result; those marked *abs* are absolute, those marked *arg* relative to the largest argument.
"""

COLUMNS = """
| Function | Region | Points | Largest error | Tolerance | Why wider |
|---|---|---|---|---|---|
"""

DISTRIBUTIONS = """
## Distribution functions

The functions of `MCDistFun`. The usual tolerances are 1e-14 for the normal family, 1e-12 for cumulative functions and
densities, 1e-10 for quantiles. A wider one has its reason in the last column: the stopping rules of the iterations are
part of the results that models were built on, and stay.
"""

BUILT_IN = """
## Built-in functions

From a document with the function to its value. Results that are exact are held to 0, or to 1e-18 where twenty digits
don't write them in full; one correctly rounded operation to 1.2e-16; powers, exponentials, logarithms, sums and dates
to 1e-15; the normal family to 2e-15. `stdNormalPDF` is held to the density with its own constant, 6.2831853 for two pi.
Limits are the ends of the domain: zeros, overflow, missing arguments.
"""

PLAINLY = """
## Where few digits are left, or none

- The continued fraction of the beta ratio ends at a relative change of 10 (a + b) machine epsilons, so that the beta, t
  and F functions with two parameters above 1 have some 9 digits at an a + b of 1e6, 5 at 1e10, 3 at 1e12 and none
  beyond 1e14. With a parameter of at most 1 the series is exact wherever it is short; only far tails of large
  parameters are left to the fraction.
- That series ends at a term of 1e-15. For parameters below 1e-6 and values within 1e-4 of an end of the range what
  follows may add up to 1e-8; `CdfBeta` and `CdfF` lack it.
- Chi-square and gamma quantiles at a p below some 1e-57 have 8 digits: the bisection ends there at a width of 1e-8. A
  quantile below 5e-7 is exact.
- The logarithm of a quantile moves by 1 / parameter of the rounding of p and of the ratio: at a parameter of 1e-6 it
  has some 8 digits.
- `IdfBin` takes its guess when the cumulative probability there is within 128 machine epsilons of p, an absolute
  distance: a p below 1e-9 or above 1 - 1e-9 may be answered by any value whose probability is that near, and a p below
  2.8e-14 by any value that far out. There are no digits there.
- `CdfBin` is missing for more than 2147483647 trials, which do not count as a whole number; `PdfBin` has no such end.
- Non-central functions leave out 1e-12 of the weights: a tail below that has no digits. From a non-centrality of some
  4e7 on 60,000 terms do not reach the centre of the weights, and the result is missing. `NonCentralPdfT` sums terms of
  alternating sign where x and the non-centrality differ in sign; what cancels below 1e-14 of them is 0.
- What is below exp(-708) counts as 0 everywhere.

## Densities

The densities are the logarithms of their plain formulas with the large parts cancelled beforehand, where the plain ones
would lose a digit for each power of ten of their parameters; a test holds both to each other where the plain ones have
digits. The normal density splits its square, since at 37 deviations the rounding of the square alone costs three
digits; `PdfT`, `PdfGamma`, `PdfBin` and `PdfHyper` take the saddle-point form of C. Loader in place of differences of
ln Gamma.
"""

BOUNDS = """
## Bounds

Whatever its arguments are, a call of `MCDistFun` ends after 125,000 rounds of its loops, which is within a millisecond:
some 8 nanoseconds a round for the continued fraction of the beta ratio, 2 to 5 for the others. Tests count the rounds
for the ends of every range, a million random bit patterns an argument and ordinary numbers. What takes the longest are
quantiles of the beta family whose parameters are above 1e9 (90,000 rounds), tails of the hypergeometric distribution of
the largest populations (90,000), and non-central functions of a non-centrality above 1e7 (60,000).

Only `FindNCParamChi`, `FindNCParamF` and `FindNCParamT` go beyond it, up to 36 times as far. Each of some 55 bisections
of their bracket is a cumulative function whose sum may have 60,000 terms, and the result is the middle of the last
bracket, so that no step of them can be left out.

Expansions that would take longer for large parameters end elsewhere by a form of the same value: near the mean of a
gamma or a binomial distribution the sum is had as an integral, whose quadrature takes 48 pairs of points.
"""

SECTIONS = ((DISTRIBUTIONS, "stats"), (BUILT_IN, "transform"))
MARKS = {"relative": "", "absolute": " *abs*", "arguments": " *arg*"}


def measured(program):
    """The number of points and the largest error of each region, as the tests record them."""
    with tempfile.TemporaryDirectory() as folder:
        report = pathlib.Path(folder) / "report.xml"
        subprocess.run([program, "--gtest_filter=*GoldenTable.StaysWithin*", f"--gtest_output=xml:{report}"],
                       check=True, stdout=subprocess.DEVNULL)
        return {entry.get("name"): entry.get("value").split() for entry in tree.parse(report).iter("property")}


def rows(subsystem, programs):
    errors = measured(programs / f"veltrane_{subsystem}_tests")
    for line in (TESTS / subsystem / "golden" / "regions.txt").read_text().splitlines():
        if not line or line.startswith("#"):
            continue
        function, region, measure, tolerance, reason = line.split("|")
        points, error = errors[f"{function}|{region}"]
        yield (f"| `{function}` | {region} | {points} | {float(error):.1e}{MARKS[measure]} | {float(tolerance):g} | "
               f"{reason} |\n")


def main():
    programs = pathlib.Path(sys.argv[1])
    page = HEAD
    for text, subsystem in SECTIONS:
        page += text + COLUMNS + "".join(rows(subsystem, programs))
    PAGE.write_text(page + PLAINLY + BOUNDS)


if __name__ == "__main__":
    main()
