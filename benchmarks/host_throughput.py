#!/usr/bin/env python3
"""Rows a second and peak memory of `veltrane transform` or `veltrane score` on many rows: memory must not grow with the
rows.

Arguments: the command, `transform` or `score`, the document, its rows (CSV with a header), and the numbers of rows to try.
"""
import itertools
import os
import pathlib
import subprocess
import sys
import tempfile
import time


def repeat_rows(source, target, count):
    header, *rows = source.read_text().splitlines()
    with target.open("w") as out:
        out.write(header + "\n")
        for row in itertools.islice(itertools.cycle(rows), count):
            out.write(row + "\n")


def main():
    command, verb, document, rows = sys.argv[1:5]
    counts = [int(text) for text in sys.argv[5:]] or [100_000, 1_000_000]
    print(f"{'rows':>10} {'seconds':>8} {'rows/s':>10} {'peak MB':>8}")
    for count in counts:
        with tempfile.TemporaryDirectory() as folder:
            cases = pathlib.Path(folder) / "cases.csv"
            repeat_rows(pathlib.Path(rows), cases, count)
            started = time.monotonic()
            child = subprocess.Popen([command, verb, document, str(cases), "--quiet", "-o", os.path.join(folder, "out.csv")])
            _, status, usage = os.wait4(child.pid, 0)
            seconds = time.monotonic() - started
            if status != 0:
                return 1
            print(f"{count:>10} {seconds:>8.2f} {count / seconds:>10.0f} {usage.ru_maxrss / 1024:>8.1f}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
