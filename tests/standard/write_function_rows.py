#!/usr/bin/env python3
"""Writes the rows of function_rows.py as a table that the tests of the kit read, tests/models/functions/rows.tsv. With
--check it writes nothing and fails when the table is not current.

A line is a function, its result and its arguments, each a type with a text or "missing"; "invalid:" stands before a value
that its field excludes. Behind the rows stands, for each function that a missing argument makes missing, a row for each
place of its arguments."""
import argparse
import difflib
import pathlib
import sys

import function_rows
from evaluator import functions, values
from evaluator_test import value_of

TABLE = pathlib.Path(__file__).resolve().parents[1] / "models/functions/rows.tsv"


def cell(thing):
    if thing is None or thing is function_rows.UNDEFINED:
        return "missing"
    value = value_of(thing)
    text = repr(value.data) if isinstance(value.data, float) else values.text_of(value)
    for plain, escaped in (("\\", "\\\\"), ("\t", "\\t"), ("\n", "\\n"), ("\r", "\\r")):
        text = text.replace(plain, escaped)
    return f"{'invalid:' if value.invalid else ''}{value.type}:{text}"


def lines():
    first = {}
    for name, arguments, wanted, *_ in function_rows.ROWS:
        first.setdefault(name, arguments)
        yield "\t".join([name, cell(wanted), *map(cell, arguments)])
    for name, arguments in first.items():
        for place in range(len(arguments)) if name in functions.NEEDS_ALL else ():
            holed = [None if i == place else each for i, each in enumerate(arguments)]
            yield "\t".join([name, "missing", *map(cell, holed)])


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--check", action="store_true")
    table = "\n".join(lines()) + "\n"
    if not parser.parse_args().check:
        TABLE.write_text(table, encoding="utf-8")
        return 0
    present = TABLE.read_text(encoding="utf-8") if TABLE.exists() else ""
    sys.stdout.writelines(difflib.unified_diff(present.splitlines(True), table.splitlines(True), "rows.tsv", "function_rows.py"))
    return 0 if present == table else 1


if __name__ == "__main__":
    sys.exit(main())
