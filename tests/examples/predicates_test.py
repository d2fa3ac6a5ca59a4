"""The example that prints which conditions of a document hold: on its samples, and on trees of open-source tools."""
import csv
import os
import pathlib
import subprocess
import tempfile
import unittest

from plain_conditions import SURROGATE, Document, children

EXAMPLE = os.environ.get("VELTRANE_EXAMPLE", "build/debug/bin/predicates")
PROJECT = pathlib.Path(__file__).resolve().parents[2]
SAMPLES = PROJECT / "examples" / "predicates"
CASES = PROJECT.parent / "shared" / "cases" / "models"
OWN = PROJECT / "tests" / "documents" / "models"
MISSING = ("", "NA")


def run(*arguments):
    return subprocess.run([EXAMPLE, *map(str, arguments)], capture_output=True, text=True, timeout=300)


def read_cases(path):
    """The rows of a CSV file without their missing cells."""
    with open(path, newline="") as file:
        return [{name: cell for name, cell in row.items() if cell not in MISSING} for row in csv.DictReader(file)]


def line(number, document, case):
    """What the example has to print for a case."""
    answers = [(name, document.truth(holder, case)) for name, holder in document.holders]
    true = [name + ("~" if answer == SURROGATE else "") for name, answer in answers if answer]
    unknown = [name for name, answer in answers if answer is None]
    return f"{number}:" + "".join(" " + name for name in true) + (" | " + " ".join(unknown) if unknown else "")


class Examples(unittest.TestCase):
    maxDiff = None

    def lines(self, document, cases):
        result = run(document, cases, "NA")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return result.stdout.splitlines()


class Samples(Examples):
    def compare(self, name, derive=lambda case: None):
        lines = self.lines(SAMPLES / f"{name}.pmml", SAMPLES / "applications.csv")
        self.assertEqual(lines, (SAMPLES / f"{name}.expected.txt").read_text().splitlines())
        document = Document(SAMPLES / f"{name}.pmml")
        cases = read_cases(SAMPLES / "applications.csv")
        for case in cases:
            derive(case)
        self.assertEqual(lines, [line(number, document, case) for number, case in enumerate(cases, 1)])

    def test_the_tree_gives_what_it_should(self):
        def derive(case):
            if "Amount" in case and "Income" in case:
                case["Burden"] = float(case["Amount"]) / float(case["Income"])

        self.compare("approval-tree", derive)

    def test_the_readme_shows_what_the_tree_gives(self):
        self.assertIn("```text\n" + (SAMPLES / "approval-tree.expected.txt").read_text() + "```\n",
                      (PROJECT / "README.md").read_text())

    def test_the_rules_give_what_they_should(self):
        self.compare("review-rules")


class Failures(Examples):
    def expect(self, result, error):
        self.assertEqual((result.returncode, result.stdout, result.stderr), (1, "", error))

    def test_a_document_that_is_no_document(self):
        self.expect(run(__file__, SAMPLES / "applications.csv"), f"{__file__} is not well-formed\n")

    def test_a_file_that_is_not_there(self):
        self.expect(run("none.pmml", SAMPLES / "applications.csv"), "cannot open none.pmml\n")
        self.expect(run(SAMPLES / "approval-tree.pmml", "none.csv"), "cannot open none.csv\n")

    def test_a_catalogued_failure(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "tree.pmml"
            text = (SAMPLES / "approval-tree.pmml").read_text()
            path.write_text(text.replace('booleanOperator="surrogate"', 'booleanOperator="substitute"'))
            self.expect(run(path, SAMPLES / "applications.csv"),
                        "260153 Invalid value: 'substitute' of attribute 'booleanOperator' in 'CompoundPredicate'.\n")

    def test_wrong_usage(self):
        self.assertEqual(run("tree.pmml").returncode, 2)


class Trees(Examples):
    def compare(self, name):
        lines = self.lines(self.FOLDER / f"{name}.pmml", self.FOLDER / f"{name}.csv")
        document = Document(self.FOLDER / f"{name}.pmml")
        cases = read_cases(self.FOLDER / f"{name}.csv")
        self.assertEqual(len(lines), len(cases))
        for number, (printed, case) in enumerate(zip(lines, cases), 1):
            self.assertEqual(printed, line(number, document, case))
        self.compare_predictions(name, document, lines)

    def compare_predictions(self, name, document, lines):
        """Follows the conditions that hold down to a leaf, which has to score what the tool says."""
        with open(self.FOLDER / f"{name}.expected.csv", newline="") as file:
            expected = list(csv.reader(file))[1:]
        self.assertEqual(len(lines), len(expected))
        for printed, answer in zip(lines, expected):
            hold = {name.rstrip("~") for name in printed.split(":")[1].split("|")[0].split()}
            node = document.holders[0][1]
            while deeper := [child for child in children(node, "Node") if child.get("id") in hold]:
                node = deeper[0]
            if " | " in printed and children(node, "Node"):
                continue  # what is unknown ends the way to a leaf
            self.assertEqual(children(node, "Node"), [], "no leaf")
            self.assertEqual(node.get("score"), answer[0], printed)


class OwnTrees(Trees):
    """Trees of the shapes that the tools write, whose answers were computed apart."""
    FOLDER = OWN

    def test_surrogates(self):
        self.compare("mushroom-surrogates")

    def test_sets(self):
        self.compare("parcel-sets")

    def test_binary_splits(self):
        self.compare("apple-binary")


@unittest.skipUnless(CASES.is_dir(), "the real documents are not at ../shared/cases")
class KnownTrees(Trees):
    FOLDER = CASES

    def test_rattle_tree_audit(self):
        self.compare("rattle-tree-audit")

    def test_rattle_tree_iris(self):
        self.compare("rattle-tree-iris")

    def test_knime_tree_iris(self):
        self.compare("knime-tree-iris")


if __name__ == "__main__":
    unittest.main()
