#!/usr/bin/env python3
"""Trains and exports the documents of tests/corpus/, with rows and the producers' own answers. run.sh starts it where
its packages are.

    tools/corpus/run.sh                          # all documents of tests/corpus/
    tools/corpus/run.sh --out build/corpus/try 'hist-*' tree-iris
"""
import argparse
import contextlib
import csv
import fnmatch
import io
import pathlib
import sys
import time
import traceback
import warnings

from recipes import (bayes, boosting, combined, forests, generalized, lightgbm_models, linear, neighbours, networks,
                     trees, vectors, xgboost_models)

ROOT = pathlib.Path(__file__).resolve().parents[2]
KEPT_FOLDER = ROOT / "tests" / "corpus"
KEPT = (trees, linear, generalized, bayes, forests, boosting, combined, xgboost_models, lightgbm_models, networks,
        neighbours, vectors)
#: Written with --waiting alone, beside tests/corpus/ until there are plug-ins for their kinds.
WAITING = ()
HEADER = ("producer", "document", "rows", "tolerance", "why")


def chosen(modules, patterns):
    for module in modules:
        for entry in module.entries():
            if not patterns or any(fnmatch.fnmatch(entry.name, pattern) for pattern in patterns):
                yield entry


def listed(path):
    """The lines of the list by document, so that writing a few leaves those of the others."""
    if not path.is_file():
        return {}
    with open(path, newline="", encoding="utf-8") as file:
        return {(row["producer"], row["document"]): row for row in csv.DictReader(file, delimiter="\t")}


def write_list(path, lines):
    with open(path, "w", newline="", encoding="utf-8") as file:
        writer = csv.DictWriter(file, HEADER, delimiter="\t", lineterminator="\n")
        writer.writeheader()
        writer.writerows(lines[key] for key in sorted(lines))


def write_one(entry, out):
    """The number of rows, or nothing where the producer or its exporter fails, which is told."""
    told, started = io.StringIO(), time.monotonic()
    try:
        with contextlib.redirect_stdout(told), contextlib.redirect_stderr(told):
            rows = entry.write(out / entry.producer)
    except Exception as error:  # whatever a producer raises: the others are written all the same
        lines = [line for line in told.getvalue().splitlines() if "xception" in line or "Solution" in line]
        print(f"{entry.name}: FAILED: {error!r}"[:300], *lines[:3], traceback.format_exc(limit=-2), sep="\n    ",
              file=sys.stderr)
        return None
    print(f"{entry.name}: {rows} rows, {time.monotonic() - started:.1f} s", flush=True)
    return rows


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("documents", nargs="*", help="names or patterns; all without any")
    parser.add_argument("--out", type=pathlib.Path, default=KEPT_FOLDER)
    parser.add_argument("--waiting", action="store_true", help="those of kinds that no plug-in reads yet; needs --out")
    arguments = parser.parse_args()
    if arguments.waiting and arguments.out == KEPT_FOLDER:
        parser.error("--waiting needs a folder of its own: --out")
    warnings.simplefilter("ignore")

    path = arguments.out / "documents.tsv"
    lines, failed = listed(path), 0
    for entry in chosen(WAITING if arguments.waiting else KEPT, arguments.documents):
        rows = write_one(entry, arguments.out)
        failed += rows is None
        if rows is not None:
            lines[entry.producer, entry.name] = dict(zip(HEADER, (
                entry.producer, entry.name, rows, f"{entry.tolerance:g}", entry.why)))
            write_list(path, lines)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
