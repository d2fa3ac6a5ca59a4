"""Documents that producers wrote, with rows and those producers' own answers, made by tools/corpus/. The
command scores each document, and every cell has to agree."""
import csv
import pathlib
import unittest

from agreement import differences, read_rows
from host_command import HostTest

HERE = pathlib.Path(__file__).resolve().parent
LIST = HERE / "documents.tsv"
#: So many there are at least; a corpus that has lost documents says less than it seems to.
FEWEST_DOCUMENTS, FEWEST_ROWS = 70, 60
#: What an answer may be off where a producer sums in doubles, and where it doesn't and the list says so.
EXACT, LOOSEST = 1e-6, 1e-5


def listed():
    with open(LIST, newline="", encoding="utf-8") as file:
        return list(csv.DictReader(file, delimiter="\t"))


class Corpus(HostTest):
    """Each listed document has a test of its own, added below."""

    def compare(self, line):
        path = HERE / line["producer"] / line["document"]
        answers = read_rows(f"{path}.answers.csv")
        self.assertEqual(len(answers) - 1, int(line["rows"]), "rows of the list")
        result = self.run_host("score", f"{path}.pmml", f"{path}.csv", "--quiet")
        found = differences(self.written_rows(result), answers, float(line["tolerance"]))
        self.assertEqual(found[:5], [], f"{len(found)} cells differ")


class List(unittest.TestCase):
    def test_it_has_each_document_of_the_folders_and_no_other(self):
        kept = sorted(path.relative_to(HERE).with_suffix("").as_posix() for path in HERE.glob("*/*.pmml"))
        self.assertEqual(kept, sorted(f'{line["producer"]}/{line["document"]}' for line in listed()))

    def test_it_has_documents_and_rows_enough(self):
        self.assertGreaterEqual(len(listed()), FEWEST_DOCUMENTS)
        for line in listed():
            self.assertGreaterEqual(int(line["rows"]), FEWEST_ROWS, line["document"])

    def test_a_wide_tolerance_has_its_reason(self):
        for line in listed():
            tolerance = float(line["tolerance"])
            self.assertLessEqual(tolerance, LOOSEST, line["document"])
            self.assertEqual(tolerance > EXACT, bool(line["why"]), line["document"])

    def test_the_answers_of_a_document_are_not_all_the_same(self):
        for line in listed():
            header, *rows = read_rows(HERE / line["producer"] / f'{line["document"]}.answers.csv')
            for place, name in enumerate(header):
                self.assertGreater(len({row[place] for row in rows}), 1, f'{line["document"]}, {name}')


class Comparison(unittest.TestCase):
    """The comparison itself: what it takes and what it tells."""
    ANSWERS = [["kind", "p"], ["a", "0.25"], ["b", "0.0"]]

    def told(self, *written, tolerance=EXACT):
        return differences([list(row) for row in written], self.ANSWERS, tolerance)

    def test_equal_cells_in_any_order_of_columns_agree(self):
        self.assertEqual(self.told(("p", "kind"), ("0.25", "a"), ("0", "b")), [])

    def test_a_number_within_its_tolerance_agrees(self):
        self.assertEqual(self.told(("kind", "p"), ("a", "0.2500002"), ("b", "1e-13")), [])

    def test_each_cell_that_differs_is_told(self):
        self.assertEqual(self.told(("kind", "p"), ("b", "0.2500003"), ("b", "1e-11")),
                         ["line 2, kind: 'b', not 'a'", "line 2, p: '0.2500003', not '0.25'",
                          "line 3, p: '1e-11', not '0.0'"])

    def test_an_empty_cell_and_one_that_is_no_number_differ(self):
        self.assertEqual(len(self.told(("kind", "p"), ("a", ""), ("b", "nan"))), 2)
        self.assertEqual(len(self.told(("kind", "p"), ("", "inf"), ("b", "0"))), 2)

    def test_a_row_or_a_column_too_few_or_too_many_is_told(self):
        header, first, second = ("kind", "p"), ("a", "0.25"), ("b", "0")
        self.assertEqual(self.told(header, first), ["1 rows, not 2"])
        self.assertEqual(self.told(header, first, second, second), ["3 rows, not 2"])
        self.assertEqual(self.told(("kind",), ("a",), ("b",)), ["columns ['kind'], not ['kind', 'p']"])
        self.assertEqual(len(self.told((*header, "q"), (*first, "1"), (*second, "1"))), 1)


for document in listed():
    name = "test_" + document["document"].replace("-", "_")
    setattr(Corpus, name, lambda self, line=document: self.compare(line))

if __name__ == "__main__":
    unittest.main()
