#!/usr/bin/env python3
"""Rows a second and peak memory of `veltrane transform` or `veltrane score` on many rows, on its roads side by side: row
by row, in blocks by one thread, and by one for each core. Memory must not grow with the rows.

Arguments: the command, `transform` or `score`, the document, its rows (CSV with a header), and the numbers of rows to try.
With `--by-hand PROGRAM` in front a program that gives the same bytes takes part, which gets the cases, the output and the
number of threads. The roads take turns; the fastest of a few runs counts. The last two columns are the speed beside row by
row, and the time beside that of the program on as many threads.
"""
import argparse
import filecmp
import itertools
import os
import pathlib
import subprocess
import sys
import tempfile
import time

ROUNDS = 5


def name_of(threads):
    return f"{threads} threads" if threads > 1 else "1 thread"


def roads(options, cases, out):
    """The command of each road, and the road that it is held against."""
    own = [options.command, options.verb, options.document, cases, "--quiet", "-o", out]
    found = {"row by row": (own + ["--by-case"], "by hand, 1 thread")}
    for threads in sorted({1, len(os.sched_getaffinity(0))}):
        by_hand = f"by hand, {name_of(threads)}"
        found[name_of(threads)] = own + ["--threads", str(threads)], by_hand
        if options.by_hand:
            found[by_hand] = [options.by_hand, cases, out, str(threads)], by_hand
    return found


def repeat_rows(source, target, count):
    header, *rows = source.read_text().splitlines()
    with target.open("w") as out:
        out.write(header + "\n")
        for row in itertools.islice(itertools.cycle(rows), count):
            out.write(row + "\n")


def run(command):
    """The seconds of a run, those of all processors together, and its peak memory in MB."""
    started = time.monotonic()
    child = subprocess.Popen(command)
    _, status, usage = os.wait4(child.pid, 0)
    if status != 0:
        sys.exit(1)
    return time.monotonic() - started, usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024


def measure(options, folder, count):
    """The best run of each road, over files that are removed with the folder."""
    cases, out, first = (os.path.join(folder, name) for name in ("cases.csv", "out.csv", "first.csv"))
    repeat_rows(pathlib.Path(options.rows), pathlib.Path(cases), count)
    best = {}
    for _ in range(ROUNDS):
        for road, (command, beside) in roads(options, cases, out).items():
            result = run(command)
            if not os.path.exists(first):
                os.rename(out, first)
            elif not filecmp.cmp(first, out, shallow=False):
                sys.exit(f"{road}: not the output of the other roads")
            best[road] = min(best.get(road, (result, beside)), (result, beside))
    return best


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--by-hand", metavar="PROGRAM")
    for name in ("command", "verb", "document", "rows"):
        parser.add_argument(name)
    parser.add_argument("counts", nargs="*", type=int, default=[100_000, 1_000_000])
    options = parser.parse_args()
    print(f"{'rows':>10} {'road':>18} {'seconds':>8} {'rows/s':>10} {'CPU s':>6} {'peak MB':>8} {'gain':>6} {'ratio':>6}")
    for count in options.counts:
        with tempfile.TemporaryDirectory() as folder:
            best = measure(options, folder, count)
        slowest = best["row by row"][0][0]
        for road, ((seconds, processors, memory), beside) in best.items():
            ratio = f"{seconds / best[beside][0][0]:>6.2f}" if beside in best else ""
            print(f"{count:>10} {road:>18} {seconds:>8.3f} {count / seconds:>10.0f} {processors:>6.2f} {memory:>8.1f} "
                  f"{slowest / seconds:>6.2f} {ratio}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
