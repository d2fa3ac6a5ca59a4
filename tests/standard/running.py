"""Runs the command on a trial and compares each cell with the evaluator."""
import csv
import dataclasses
import io
import math
import os
import pathlib
import subprocess

from evaluator import dates
from evaluator.document import Document
from evaluator.values import MISSING, NotOfType, read, text_of

COMMAND = os.environ.get("VELTRANE_COMMAND", "build/release/bin/veltrane")


@dataclasses.dataclass
class Difference:
    """kind is "value", "columns" (others than expected), "refused" and "accepted" of documents, "message" (without the words that
    it has to have) or "crashed"; a value's row counts from 1."""
    kind: str
    expected: str
    got: str
    row: int = 0
    column: str = ""


def shown(value):
    return "missing" if value is MISSING else f"{value.type} {text_of(value)!r}"


def columns_of(rows):
    names = {}
    for row in rows:
        names.update(dict.fromkeys(row))
    return list(names)


def run(trial, folder):
    """The command's exit code, rows by column, and standard error."""
    folder = pathlib.Path(folder)
    document, cases = folder / "document.pmml", folder / "cases.csv"
    document.write_text(trial.text, encoding="utf-8")
    with open(cases, "w", encoding="utf-8", newline="") as file:
        names = columns_of(trial.rows)
        writer = csv.writer(file, lineterminator="\n")
        writer.writerow(names)
        writer.writerows([row.get(name, "") for name in names] for row in trial.rows)
    result = subprocess.run([COMMAND, trial.road, str(document), str(cases), "--missing-columns", "--quiet"],
                            capture_output=True, timeout=300, check=False)
    if result.returncode == 2:
        raise RuntimeError(f"the command is used wrongly: {result.stderr.decode()}")
    table = list(csv.reader(io.StringIO(result.stdout.decode("utf-8", "replace"), newline="")))
    return result.returncode, table, result.stderr.decode("utf-8", "replace").strip()


def expected(trial):
    """The columns that the evaluator gives each case."""
    document = Document(trial.text.encode("utf-8"))
    return list(getattr(document, trial.road)(trial.rows))


def same(value, cell, tolerance, absolute=0.0):
    """Whether a cell of the output is a value. Booleans may be written as words or as 1 and 0; a date, a time and a
    dateTime are written as such, counts of days and seconds as numbers or as the dates, times or dateTimes that they are."""
    if value is MISSING or value.type == "string":
        return cell == ("" if value is MISSING else value.data)
    if value.type == "boolean":
        return cell in (("true", "1") if value.data else ("false", "0"))
    if cell == "":
        return False
    if value.type in dates.MOMENTS:
        return _same_moment(value, cell)
    try:
        number = float(cell)
    except ValueError:
        return value.type in dates.COUNTING and _same_moment(value, cell)
    data = float(value.data)
    return number == data or (tolerance > 0 and math.isclose(number, data, rel_tol=tolerance, abs_tol=absolute))


def _shown_number(number):
    """Digits of a whole number, else the shortest ones."""
    return str(int(number)) if number == int(number) else repr(number)


def _same_moment(value, cell):
    """To the microsecond, which is what a cell has of it; outside the years 0 to 9999 it has the number of seconds."""
    type_ = dates.kind(value.type)
    data = dates.convert(value.data, value.type, type_)
    text = dates.write(data, type_)
    try:
        return dates.write(read(cell, type_).data, type_) == text
    except NotOfType:
        return type_ != "time" and text[4] != "-" and cell == _shown_number(data)


def differences(trial, folder):
    """All Differences of a trial, and how many cells were compared."""
    code, table, errors = run(trial, folder)
    if code not in (0, 1, 3):
        return [Difference("crashed", "an end", f"exit code {code} {errors}")], 1
    if trial.refused:
        absent = [word for word in trial.refused if word not in errors]
        if code != 1:
            return [Difference("accepted", "refused", f"exit code {code}")], 1
        return [Difference("message", f"names {absent}", errors)] if absent else [], 1
    wanted = expected(trial)
    if code == 1:
        return [Difference("refused", "read", errors)], 1
    if len(table) != len(wanted) + 1 or (wanted and table[0] != [name for name, _ in wanted[0]]):
        return [Difference("columns", f"{len(wanted)} rows of {[name for name, _ in wanted[0]]}",
                           f"{len(table) - 1} rows of {table[:1]}")], 1
    found = []
    for place, (columns, cells) in enumerate(zip(wanted, table[1:]), 1):
        found += [Difference("value", shown(value), repr(cell), place, name)
                  for (name, value), cell in zip(columns, cells) if not same(value, cell, trial.tolerance, trial.absolute)]
    return found, len(wanted) * len(wanted[0])
