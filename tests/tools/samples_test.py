"""The sample of applicants, and documents of open-source tools with known answers."""
import csv
import pathlib
import unittest
from xml.etree import ElementTree

from host_command import COMMAND, NO_MODELS, PROJECT, HostTest

LOAN = PROJECT / "examples" / "loan"
CASES = PROJECT.parent / "shared" / "cases" / "transform"
MODELS = PROJECT.parent / "shared" / "cases" / "models"
OWN = PROJECT / "tests" / "documents"


def close(text, expected):
    """Equal texts, or numbers within 1e-12 of each other (relative, absolute below 1)."""
    if text == expected:
        return True
    try:
        number, other = float(text), float(expected)
    except ValueError:
        return False
    return abs(number - other) <= 1e-12 * max(1.0, abs(other))


def read_rows(path):
    with open(path, newline="") as file:
        return list(csv.reader(file))


class Sample(HostTest):
    def test_the_applicants_give_what_they_should(self):
        result = self.run_host("transform", LOAN / "applicants.pmml", LOAN / "applicants.csv", "--missing", "NA")
        self.expect(result, 0, (LOAN / "applicants.expected.csv").read_bytes(), "")

    def test_the_sample_has_every_kind_of_expression(self):
        result = self.expect(self.run_host("inspect", LOAN / "applicants.pmml"), 0, err="")
        self.assertEqual(result.stdout.decode(), (LOAN / "applicants.inspect.txt").read_text())
        for kind in ("Constant", "FieldRef", "NormContinuous", "NormDiscrete", "Discretize", "MapValues", "Apply", "Lag"):
            self.assertRegex(result.stdout.decode(), rf"(?m)  {kind} ")


class Model(HostTest):
    def test_the_model_gives_what_it_should(self):
        result = self.run_host("score", LOAN / "default.pmml", LOAN / "applicants.csv", "--missing", "NA", "--quiet")
        self.expect(result, 3, (LOAN / "default.expected.csv").read_bytes(),
                    "veltrane: 1 row could not be scored: Amount is missing\n")

    def test_the_model_s_own_records_agree(self):
        self.expect(self.run_host("verify", LOAN / "default.pmml"), 0,
                    "Field    Records  Agree  Largest difference\n-------  -------  -----  ------------------\n"
                    "Default  3        3      -\nRisk     3        3      0\n", "")


class Answers(HostTest):
    #: Those whose answers are not those of PMML, but of the library alone.
    PLAIN = ()

    def compare(self, name):
        for road in ((), ("--plain",)):
            if road or name not in self.PLAIN:
                self.compare_road(name, road)

    def compare_road(self, name, road):
        result = self.run_host("transform", self.FOLDER / f"{name}.pmml", self.FOLDER / f"{name}.csv", "--quiet", *road)
        rows = self.written_rows(result)
        expected = read_rows(self.FOLDER / f"{name}.expected.csv")
        self.assertEqual(rows[0], expected[0])
        self.assertEqual(len(rows), len(expected))
        for line, (row, wanted) in enumerate(zip(rows[1:], expected[1:]), 2):
            for column, cell, answer in zip(rows[0], row, wanted):
                self.assertTrue(close(cell, answer), f"{name}, line {line}, {column}: {cell}, not {answer}")


@unittest.skipUnless(CASES.is_dir(), "the real documents are not at ../shared/cases")
class KnownAnswers(Answers):
    FOLDER = CASES
    PLAIN = ("housing-components",)


class OwnAnswers(Answers):
    """Documents of the shapes that the tools write, whose answers were computed apart."""
    FOLDER = OWN / "transform"


class Predictions(HostTest):
    """The tools printed their answers with 6 to 15 digits. The first column is the predicted value. A document of a kind
    for which there is no plug-in is refused as one, until there is."""

    KINDS = (pathlib.Path(COMMAND).parents[1] / "lib" / "veltrane" / "modeldll.txt").read_text().split()

    def kind(self, name):
        root = ElementTree.parse(self.FOLDER / f"{name}.pmml").getroot()
        return next(tag for tag in (child.tag.split("}")[-1] for child in root) if tag not in NO_MODELS)

    def compare(self, name):
        if self.kind(name) not in self.KINDS:
            self.refuses(name)
        else:
            self.compare_answers(name)

    def refuses(self, name):
        result = self.expect(self.run_host("score", self.FOLDER / f"{name}.pmml", self.FOLDER / f"{name}.csv"), 1, "")
        self.assertIn(b"veltrane: error 260301: Unsupported model: ", result.stderr)

    def compare_answers(self, name):
        result = self.run_host("score", self.FOLDER / f"{name}.pmml", self.FOLDER / f"{name}.csv", "--quiet")
        header, *rows = self.written_rows(result)
        wanted_header, *wanted_rows = read_rows(self.FOLDER / f"{name}.expected.csv")
        self.assertEqual(len(rows), len(wanted_rows))
        # A tool may know confidences and probabilities that it doesn't have its document give.
        document = (self.FOLDER / f"{name}.pmml").read_text(encoding="utf-8")
        told = [column for column in wanted_header[1:] if column in header or f'"{column}"' in document
                or not column.startswith(("Confidence_", "Probability_"))]
        places = [0] + [header.index(column) for column in told]
        wanted_rows = [row[:1] + [row[wanted_header.index(column)] for column in told] for row in wanted_rows]
        for line, (row, wanted) in enumerate(zip(rows, wanted_rows), 2):
            for place, answer in zip(places, wanted):
                self.assertTrue(self.agree(row[place], answer), f"{name}, line {line}: {row[place]}, not {answer}")

    @staticmethod
    def agree(cell, answer):
        try:
            return abs(float(cell) - float(answer)) <= 1e-6 * max(abs(float(answer)), 1e-6)
        except ValueError:
            return cell == answer


@unittest.skipUnless(MODELS.is_dir(), "the real documents are not at ../shared/cases")
class KnownPredictions(Predictions):
    FOLDER = MODELS


class OwnPredictions(Predictions):
    FOLDER = OWN / "models"


def add_known_answers(suite):
    paths = sorted(suite.FOLDER.glob("*.pmml"))
    for path in paths:
        setattr(suite, "test_" + path.stem.replace("-", "_"), lambda self, name=path.stem: self.compare(name))
    if not paths:
        suite.test_all = lambda self: None


for tests in (KnownAnswers, OwnAnswers, KnownPredictions, OwnPredictions):
    add_known_answers(tests)

if __name__ == "__main__":
    unittest.main()
