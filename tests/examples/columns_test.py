#!/usr/bin/env python3
"""The programs of docs/columns.md: they stand there as they are built, and print what is shown."""
import os
import pathlib
import re
import subprocess
import unittest

PROJECT = pathlib.Path(__file__).resolve().parents[2]
BLOCKS = re.findall(r"^```(\w+)\n(.*?)^```$", (PROJECT / "docs/columns.md").read_text(), re.DOTALL | re.MULTILINE)
BUILT = os.environ["VELTRANE_EXAMPLES"].split(":")
DOCUMENT = "examples/columns/prices.pmml"


def block(kind):
    found = [text for each, text in BLOCKS if each == kind]
    assert len(found) == 1, kind
    return found[0]


class Programs(unittest.TestCase):
    def test_they_stand_on_the_page(self):
        for kind in ("cpp", "c"):
            self.assertEqual(block(kind), (PROJECT / f"examples/columns/score_columns.{kind}").read_text())

    def test_they_print_what_the_page_shows(self):
        for program in BUILT:
            result = subprocess.run([program, DOCUMENT], cwd=PROJECT, capture_output=True, text=True, timeout=60)
            self.assertEqual((result.returncode, result.stdout, result.stderr), (0, block("text"), ""))

    def test_they_tell_a_failure(self):
        for program in BUILT:
            result = subprocess.run([program, "nowhere.pmml"], cwd=PROJECT, capture_output=True, text=True, timeout=60)
            self.assertEqual((result.returncode, result.stdout), (1, ""))
            self.assertIn("Unexpected error in opening PMML file: 'nowhere.pmml'.", result.stderr)


if __name__ == "__main__":
    unittest.main()
