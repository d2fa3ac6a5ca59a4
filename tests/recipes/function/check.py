#!/usr/bin/env python3
"""check.py COMMAND: whether `veltrane transform` computes the function `hypot`, and its page has it."""
import pathlib
import subprocess
import sys

FIELDS = "".join(f"<DataField name='{name}' optype='continuous' dataType='double'/>" for name in "ab")
# The page has the function's row, with its number and its arguments.
ROW = "| `hypot` | 1000 | 2 numbers |"


def run(command, apply):
    """The outcome for sides that are there, for sides of which one is missing, and for two more cases."""
    document = pathlib.Path("hypot.pmml")
    document.write_text(
        f"<PMML version='4.1'><DataDictionary numberOfFields='2'>{FIELDS}</DataDictionary><TransformationDictionary>"
        f"<DerivedField name='h' optype='continuous' dataType='double'>{apply}</DerivedField>"
        "</TransformationDictionary></PMML>", encoding="utf-8")
    cases = pathlib.Path("cases.csv")
    cases.write_text("a,b\n3,4\n5,\n-5,12\n-8,-15\n", encoding="utf-8")
    return subprocess.run([command, "transform", document, cases, "--quiet", "--plain"], text=True, capture_output=True, check=False)


def main():
    command = sys.argv[1]
    a, b = "<FieldRef field='a'/>", "<FieldRef field='b'/>"
    hypot = f"<Apply function='hypot'>{a}{b}</Apply>"
    outcomes = [
        (run(command, hypot).stdout, 'h\n5\n""\n13\n17\n'),
        (run(command, f"<Apply function='/'>{hypot}{b}</Apply>").stdout, 'h\n1.25\n""\n1.0833333333333333\n-1.1333333333333333\n'),
        (run(command, f"<Apply function='if'><Apply function='isMissing'>{b}</Apply><Constant>-1</Constant>{hypot}</Apply>")
         .stdout, "h\n5\n-1\n13\n17\n"),
        ("Require '2' parameters." in run(command, f"<Apply function='hypot'>{a}</Apply>").stderr, True),
        (ROW in pathlib.Path("docs/functions.md").read_text(encoding="utf-8"), True),
    ]
    faults = [f"{found!r} instead of {expected!r}" for found, expected in outcomes if found != expected]
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
