#!/usr/bin/env python3
"""check.py COMMAND: whether a lag of more than a million cases is refused by the message, which its page has."""
import pathlib
import subprocess
import sys

MESSAGE = "A lag of '1000001' cases is longer than 1000000."


def complaint(command, n):
    """What the command says of a document with a lag of n cases."""
    document = pathlib.Path("lag.pmml")
    document.write_text(
        "<PMML version='4.1'><DataDictionary numberOfFields='1'><DataField name='x' optype='continuous' dataType='double'/>"
        "</DataDictionary><TransformationDictionary><DerivedField name='z' optype='continuous' dataType='double'>"
        f"<Lag field='x' n='{n}'/></DerivedField></TransformationDictionary></PMML>", encoding="utf-8")
    return subprocess.run([command, "inspect", "--plain", document], text=True, capture_output=True, check=False).stderr


def main():
    command = sys.argv[1]
    page = pathlib.Path("docs/messages.md").read_text(encoding="utf-8")
    holds = [f"error 260362: {MESSAGE}" in complaint(command, 1000001), complaint(command, 1000000) == "", "260362" in page]
    print(holds)
    return 0 if all(holds) else 1


if __name__ == "__main__":
    sys.exit(main())
