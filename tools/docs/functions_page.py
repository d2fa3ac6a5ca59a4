#!/usr/bin/env python3
"""Writes docs/functions.md from include/MCVeltrane_900/TransformFunctions.def and
plugins/kit/functions/standard_functions.def. With --check it writes nothing and fails when the page is not current."""
import argparse
import difflib
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
TABLE = ROOT / "include/MCVeltrane_900/TransformFunctions.def"
STANDARD = ROOT / "plugins/kit/functions/standard_functions.def"
PAGE = ROOT / "docs/functions.md"

FUNCTION = re.compile(
    r"VELTRANE_TRANSFORM_FUNCTION\(\w+, (?P<number>\d+), \((?P<names>[^)]*)\),"
    r"\s+\w+\([^)]*\), (?P<arguments>\w+)(?:\((?P<count>\w+)\))?, (?P<families>[\w |]+),"
    r'\s+(?P<result>"[^"]*"(?:\s+"[^"]*")*),\s+(?P<missing>"[^"]*"(?:\s+"[^"]*")*)\)\n'
)
STANDARD_FUNCTION = re.compile(
    r'VELTRANE_STANDARD_FUNCTION\("(?P<name>[^"]+)", (?P<fewest>\d+), (?P<most>\w+), (?P<arguments>\w+), (?P<type>\w+), \w+,'
    r'\s+\w+<\w+>\(\),\s+"(?P<result>[^"]*)",\s+"(?P<missing>[^"]*)"\)\n'
)
QUOTED = re.compile(r'"([^"]*)"')

# What the arguments of a function are: for one, for a fixed number, for any number.
ARGUMENTS = {
    "NUMBERS": ("1 number", "{} numbers", "any number of numbers"),
    "TEXTS": ("1 text", "{} texts", "any number of texts"),
    "TEXT_CONSTANTS": ("1 text", "{} texts", "any number of texts"),
    "TARGET_FIELD": ("1 field of the derived field's type", None, None),
    "NUMERIC_FIELD": ("1 numeric field", None, None),
    "METHOD_SECOND": (None, "{}, of any kind", None),
    "ANYTHING": ("1, of any kind", "{}, of any kind", None),
}
TEXT_THEN_NUMBERS = {"2": "a text and a number", "3": "a text and two numbers"}
UNCHECKED = ("UNCHECKED", "MEANS_AND_VARIANCES")
# A row whose arguments state no number takes one.
ONE = "1"

FAMILIES = {
    "ARITHMETIC": "arithmetic",
    "MATHEMATICS": "mathematics",
    "STATISTIC": "statistic",
    "DATE_TIME": "date-time",
    "LOGIC": "logic",
    "STRING": "string",
    "MIX_OUTPUT": "mixed output",
    "MIX_INPUT": "mixed input",
    "NUMERIC_RESULT": "numeric",
    "INPUT_STRING": "string input",
    "OUTPUT_NUMERIC": "numeric output",
    "NO_FAMILY": "none",
}

# What messages call the functions that they have no word for: those that the table marks, and all from this number on.
NO_WORD = "<not defined>"
WORDLESS = "WORDLESS"
FIRST_WORDLESS = 72

FIRST_NUMBER = 1000
KINDS = {"NUMBERS": ("number", "numbers"), "TEXTS": ("text", "texts"), "TRUTHS": ("truth value", "truth values"),
         "MOMENTS": ("date or time", "values, a date or time first"), "ANYTHING": ("value of any kind", "values of any kind")}
TYPES = {"REAL": "double", "INTEGER": "integer", "SAME_KIND": "integer of integers, else double", "TRUTH": "boolean",
         "TEXT": "string", "ARGUMENT": "that of the argument"}

STANDARD_HEAD = """\
# Functions

<!-- Made from include/MCVeltrane_900/TransformFunctions.def and plugins/kit/functions/standard_functions.def by
tools/docs/functions_page.py; edit the tables and run the script. -->

There are two sets of built-in functions that an `Apply` can name: those of PMML 4.4 with the meaning that the standard
gives them, which the kit of the plug-ins has, and those of the library alone, some of which have the same names and
another meaning. Hosts add functions of their own by `veltrane/functions.h`: a `FunctionLibrary` takes each with its
name, its arguments, a kernel for one case, one for columns if there is any, and its documentation.

    double Celsius(double fahrenheit) {{
        return (fahrenheit - 32.0) / 1.8;
    }}

    veltrane::Function function;
    function.name = "celsius";
    function.ofOne = Celsius;
    function.summary = "degrees of Celsius for degrees of Fahrenheit";
    function.missingRule = "missing when the argument is missing";
    veltrane::FunctionLibrary::OfHost().Add(std::move(function));

## Functions of PMML 4.4

All {functions} built-in functions of the standard. Names are compared exactly; the number tells a function from the
others of its library.

- A function of numbers takes a boolean as 1 or 0 and a text as the number that it writes; one that writes none makes
  the result missing. A function of texts takes anything else as the text that it is written as.
- A result outside the domain of a function is missing; one that grows beyond all doubles is infinite.
- A truth value is a boolean, the number 1 or 0, or the text "true" or "false".
- Texts are read in the encoding that the host has asked for. Positions and lengths count characters.
- Regular expressions are those of ICU, in which lines end at a line feed. What they may cost is bounded by the length
  of their text, and no function makes a text of more than 16 MiB.

What the standard leaves open is decided in [documents.md](documents.md#functions-of-the-standard).
"""

HEAD = """\
## Functions of the library alone

{names} names for {functions} functions. A row with two names has two spellings of one function. The number is that of
`TransformationDictionary::TransformFunction`, which plug-ins are built against. The library alone doesn't read a
document's own functions (`DefineFunction`); an `Apply` that names one is refused as one that names none.

The arguments of an `Apply` are its `FieldRef`, `Constant` and `Apply` children in document order. Their number and
their kinds are checked when the document is read:

- A field is a number when its variable is numeric. Any other field passes as a text, one of dates and times too.
- A `Constant` is a number unless its `dataType` says otherwise, but a text under `matches`, `concat` and `replace`. A
  date-time constant is no number and passes as a text.
- So a date can't be added or averaged, but it can stand under `concat` or `matches`, as its text: "Undefined" for every
  ordinary date. The date-time functions take an argument of any kind, and a first one that is no date makes them
  missing. A difference takes the seconds of its first date and what the second one reports, which for a date without a
  time of day is its days.
- A nested `Apply` has to fit by its families. Arithmetic, mathematics, statistic, date-time and numeric functions take
  one of these families, of logic or of numeric output. Functions of the families string and string input take string
  functions. Both take mixed output. The others take none, where their arguments are checked at all.
- "Not checked" means that neither the number nor the kinds are looked at.
- A text constant under `outlierHandle`, where the second argument is the method, has to be "asIs", "asMissingValues" or
  "asExtremeValues".
- `imputeCatFieldMissingAgainstConTarget` needs two fields, the category and the target, and two `Extension` children
  with an `Array` each, both of one length: the means of the categories and their variances.

A missing field is first replaced by the `mapMissingTo` of its `FieldRef`, though not under `value` and `sysmis`. What a
function makes of an argument that is missing then stands behind its result. A number is missing when it is the
system-missing one, which every number that its field declares missing becomes. A text that its field declares missing
stays as it is; a field that the case lacks gives the empty text.

`lowercase`, `lower` and `uppercase` go byte by byte, by the C locale of the process: under the locales C and UTF-8 they
turn the letters A to Z and leave all others, "Ä" or "é", as they are. The functions of the standard turn all letters.

"In messages" is the word that refusals use; some functions have none of their own.
"""


def read_table():
    """The rows of the table, of which nothing may be left over."""
    text = re.sub(r"^(//|#undef).*\n", "", TABLE.read_text(encoding="utf-8"), flags=re.MULTILINE)
    rows = []
    while text := text.lstrip("\n"):
        function = FUNCTION.match(text)
        if not function:
            sys.exit(f"{TABLE.relative_to(ROOT)}: not a row of the table: {text.splitlines()[0]}")
        row = function.groupdict(ONE)
        rows.append(row | {name: "".join(QUOTED.findall(row[name])) for name in ("result", "missing")}
                    | {"names": QUOTED.findall(row["names"])})
        text = text[function.end():]
    return rows


def read_standard():
    """The rows of the functions of the standard, of which nothing may be left over."""
    text = re.sub(r"^(//|#undef).*\n", "", STANDARD.read_text(encoding="utf-8"), flags=re.MULTILINE)
    rows = []
    while text := text.lstrip("\n"):
        function = STANDARD_FUNCTION.match(text)
        if not function:
            sys.exit(f"{STANDARD.relative_to(ROOT)}: not a row of the table: {text.splitlines()[0]}")
        rows.append(function.groupdict() | {"number": FIRST_NUMBER + len(rows)})
        text = text[function.end():]
    return rows


def standard_arguments(row):
    one, several = KINDS[row["arguments"]]
    fewest, most = row["fewest"], row["most"]
    if most == ONE:
        return f"1 {one}"
    if most == "ANY":
        return f"any number of {several}" if fewest == ONE else f"{fewest} {several} or more"
    return f"{fewest} {several}" if fewest == most else f"{fewest} to {most} {several}"


def render_standard(rows):
    page = STANDARD_HEAD.format(functions=len(rows))
    page += "\n| Name | Number | Arguments | Type | Result | With missing arguments |\n|---|---|---|---|---|---|\n"
    for row in rows:
        cells = [f"`{row['name']}`", str(row["number"]), standard_arguments(row), TYPES[row["type"]], row["result"], row["missing"]]
        page += "| " + " | ".join(cells) + " |\n"
    return page + "\n"


def arguments_text(row):
    arguments, count = row["arguments"], row["count"]
    if arguments in UNCHECKED:
        return "not checked"
    if arguments == "TEXT_THEN_NUMBERS":
        return TEXT_THEN_NUMBERS[count]
    one, several, any_number = ARGUMENTS[arguments]
    if count == "ANY":
        return any_number
    return one if count == ONE else several.format(count)


def word(row):
    is_wordless = WORDLESS in row["families"] or int(row["number"]) >= FIRST_WORDLESS
    return NO_WORD if is_wordless else row["names"][0]


def families_text(row):
    return ", ".join(FAMILIES[family] for family in row["families"].split(" | ") if family != WORDLESS)


def render(rows):
    page = HEAD.format(names=sum(len(row["names"]) for row in rows), functions=len(rows))
    page += "\n| Name | Number | Arguments | Result | With missing arguments | Families | In messages |\n"
    page += "|---|---|---|---|---|---|---|\n"
    for row in rows:
        names = ", ".join(f"`{name}`" for name in row["names"])
        cells = [names, row["number"], arguments_text(row), row["result"], row["missing"], families_text(row)]
        page += "| " + " | ".join(cells) + f" | `{word(row)}` |\n"
    return page


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--check", action="store_true")
    page = render_standard(read_standard()) + render(read_table())
    if not parser.parse_args().check:
        PAGE.write_text(page, encoding="utf-8")
        return 0
    present = PAGE.read_text(encoding="utf-8") if PAGE.exists() else ""
    difference = difflib.unified_diff(present.splitlines(True), page.splitlines(True), "docs/functions.md", "tables")
    sys.stdout.writelines(difference)
    return 0 if present == page else 1


if __name__ == "__main__":
    sys.exit(main())
