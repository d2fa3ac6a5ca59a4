#!/usr/bin/env python3
"""Writes the rows of function_rows.py as a table that the tests of the kit read, tests/models/functions/rows.tsv. With
--check it writes nothing and fails when the table is not current.

A line is a function, its result and its arguments, each a type with a text or "missing"; "invalid:" stands before a value
that its field excludes. Behind the rows stand, for each function, a row for each place of its arguments where one is
invalid, which counts as its value unless validity is what is asked for, and, for each that a missing argument makes
missing, a row for each place where one is."""
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
    first, whole = {}, {}
    for name, arguments, wanted, *_ in function_rows.ROWS:
        first.setdefault(name, arguments)
        if None not in arguments:
            whole.setdefault(name, (arguments, wanted))
        yield "\t".join([name, cell(wanted), *map(cell, arguments)])
    for name, (arguments, wanted) in whole.items():
        for place, argument in enumerate(arguments):
            if name not in function_rows.OF_VALIDITY and not isinstance(argument, function_rows.Invalid):
                spoilt = [function_rows.Invalid(each) if i == place else each for i, each in enumerate(arguments)]
                result = function_rows.Invalid(wanted) if function_rows.PASSED_ON.get(name) == place else wanted
                yield "\t".join([name, cell(result), *map(cell, spoilt)])
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
