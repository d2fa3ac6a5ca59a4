"""Compares what the command writes with a producer's answers, all rows and all columns."""
import csv
import math

#: What a probability or a score near 0 is measured against: below it a tolerance is absolute.
SMALLEST = 1e-6


def read_rows(path):
    with open(path, newline="", encoding="utf-8") as file:
        return list(csv.reader(file))


def is_close(cell, answer, tolerance):
    """Equal texts, or finite numbers within the relative tolerance. An empty cell is close to nothing but another."""
    if cell == answer:
        return True
    try:
        number, wanted = float(cell), float(answer)
    except ValueError:
        return False
    return math.isfinite(number) and abs(number - wanted) <= tolerance * max(abs(wanted), SMALLEST)


def differences(written, answers, tolerance):
    """A line for each cell that differs, or for a difference of shape. Both have a header; columns are found by name."""
    header, *rows = written
    wanted_header, *wanted_rows = answers
    if sorted(header) != sorted(wanted_header) or len(set(header)) != len(header):
        return [f"columns {header}, not {wanted_header}"]
    if len(rows) != len(wanted_rows):
        return [f"{len(rows)} rows, not {len(wanted_rows)}"]
    places = [header.index(name) for name in wanted_header]
    return [f"line {line}, {name}: {row[place]!r}, not {answer!r}"
            for line, (row, wanted) in enumerate(zip(rows, wanted_rows), 2)
            for name, place, answer in zip(wanted_header, places, wanted)
            if not is_close(row[place], answer, tolerance)]
