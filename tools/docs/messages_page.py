#!/usr/bin/env python3
"""Writes docs/messages.md from include/MCVeltrane_900/Messages.def. With --check it writes nothing and fails when the page is
not current."""
import argparse
import difflib
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
TABLE = ROOT / "include/MCVeltrane_900/Messages.def"
PAGE = ROOT / "docs/messages.md"

BAND = re.compile(r"^// === (.+)$")
MESSAGE = re.compile(r'^VELTRANE_MESSAGE\((\d+), ([A-Z_]+), "(.*)"\)$')
PLACEHOLDER = re.compile(r"\{\d+\}")

HEAD = """\
# Messages

<!-- Made from include/MCVeltrane_900/Messages.def by tools/docs/messages_page.py; edit the table and run it. -->

Parsing, building and set-up fail with a `VTException`. `GetErrorCode` gives the id of the message that was put last,
`ConstructMessage` the text of all its messages, and `GetErrorMessage` that text with the detail message behind it.

A placeholder `{0}` stands for the first parameter. The column counts the placeholders; a message without any, and a
message whose first parameter is missing, is returned as it is stored, where every apostrophe of the texts below is
doubled. Texts that end in "message:" are followed by the detail message of the XML parser, without a blank between
them.

A message keeps the bytes of its parameters under every locale: bytes are read as UTF-8 and written as UTF-8, whatever
the default converter of ICU is, and a byte that is not UTF-8 comes out as it went in.
"""


def read_table():
    """The bands in table order: title and rows of id, name, placeholders and text."""
    bands = []
    for number, line in enumerate(TABLE.read_text(encoding="utf-8").splitlines(), 1):
        if band := BAND.match(line):
            bands.append((band[1], []))
        elif message := MESSAGE.match(line):
            text = message[3].replace("''", "'")
            bands[-1][1].append((message[1], message[2], len(PLACEHOLDER.findall(text)), text))
        elif line and not line.startswith("//"):
            sys.exit(f"{TABLE.relative_to(ROOT)}:{number}: not a line of the table: {line}")
    return bands


def render(bands):
    page = HEAD
    for title, rows in bands:
        page += f"\n## {title}\n\n| Id | Name | Parameters | Text |\n|---|---|---|---|\n"
        for identifier, name, count, text in rows:
            page += f"| {identifier} | `{name}` | {count} | `` {text} `` |\n"
    return page


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--check", action="store_true")
    page = render(read_table())
    if not parser.parse_args().check:
        PAGE.write_text(page, encoding="utf-8")
        return 0
    present = PAGE.read_text(encoding="utf-8") if PAGE.exists() else ""
    sys.stdout.writelines(difflib.unified_diff(present.splitlines(True), page.splitlines(True), "docs/messages.md", "table"))
    return 0 if present == page else 1


if __name__ == "__main__":
    sys.exit(main())
