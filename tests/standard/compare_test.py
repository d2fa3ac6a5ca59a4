#!/usr/bin/env python3
"""What the comparison says of cells, documents and the list of open classes; without running the command."""
import pathlib
import tempfile
import unittest

import compare
import running
from evaluator import values
from evaluator.document import Document
from evaluator.values import Value
from generator import catalogue
from running import Difference


def tally(*kinds):
    made = compare.Tally()
    trial = compare.trial_of("function.+@score", 1, 1)
    made.add(1, trial, [Difference(kind, "a", "b") for kind in kinds], 9)
    return made


class CompareTest(unittest.TestCase):
    def judged(self, kinds, listed):
        tallies = {"function.+@score": tally(*kinds)}
        return list(compare.judge(tallies, listed, catalogue.names()))

    def open(self, count, *kinds):
        return {"function.+@score": compare.Open(1, count, set(kinds))}

    def test_a_difference_of_a_class_that_is_not_listed_is_told(self):
        self.assertEqual(self.judged(["value"], {}), ["function.+@score differs in 1 cells and isn't listed"])
        self.assertEqual(self.judged([], {}), [])

    def test_a_listed_class_that_holds_is_told(self):
        self.assertIn("holds now", self.judged([], self.open(1, "value"))[0])
        self.assertEqual(self.judged(["value"], self.open(1, "value")), [])

    def test_more_differences_and_other_kinds_of_a_listed_class_are_told(self):
        self.assertIn("listed are 1", self.judged(["value", "value"], self.open(1, "value"))[0])
        self.assertIn("'refused'", self.judged(["refused"], self.open(5, "value"))[0])

    def test_a_crash_is_told_of_every_class(self):
        self.assertIn("crashes", self.judged(["crashed"], self.open(5, "crashed"))[0])

    def test_a_listed_name_that_is_no_class_is_told(self):
        self.assertEqual(list(compare.judge({}, {"gone@score": compare.Open(1, 1, {"value"})}, catalogue.names())),
                         ["gone@score is listed and no class"])

    def test_the_list_is_read_as_it_was_written(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "open.tsv"
            compare.write_open(self.open(2, "columns", "value"), path)
            self.assertEqual(compare.read_open(path), self.open(2, "columns", "value"))

    def test_cells_are_compared_by_what_they_mean(self):
        same = running.same
        self.assertTrue(same(None, "", 0))
        self.assertFalse(same(None, "0", 0))
        self.assertFalse(same(Value("double", 0.0), "", 0))
        self.assertTrue(same(Value("integer", 3), "3.0", 0))
        self.assertTrue(same(Value("boolean", True), "1", 0) and same(Value("boolean", True), "true", 0))
        self.assertFalse(same(Value("boolean", False), "true", 0))
        self.assertFalse(same(Value("double", 0.1), "0.10000000000000002", 0))
        self.assertTrue(same(Value("double", 0.1), "0.10000000000000002", 1e-12))
        self.assertFalse(same(Value("double", 0.1), "0.1000001", 1e-12))
        self.assertFalse(same(Value("string", "a"), "a ", 0))

    def test_a_count_of_days_may_be_written_as_number_or_date(self):
        day = values.read("1", "dateDaysSince[1960]")
        self.assertTrue(running.same(day, "1", 0) and running.same(day, "1960-01-02", 0))
        self.assertFalse(running.same(day, "1970-01-02", 0) or running.same(day, "-3652", 0))

    def test_a_class_makes_the_same_document_of_a_seed_and_others_of_others(self):
        for name in catalogue.names()[::29]:
            first, again, other = (compare.trial_of(name, seed, 20) for seed in (1, 1, 2))
            self.assertEqual((first.text, first.rows), (again.text, again.rows))
            if not name.startswith("refused."):
                self.assertNotEqual((first.text, first.rows), (other.text, other.rows), name)

    def test_the_evaluator_knows_all_that_the_classes_ask_for(self):
        for name in catalogue.names():
            trial = compare.trial_of(name, 7, 2)
            if not trial.refused:
                with self.subTest(name):
                    self.assertEqual(len(list(getattr(Document(trial.text.encode()), trial.road)(trial.rows))), len(trial.rows))

    def test_the_list_names_classes_once_each_with_a_seed_that_can_show_it(self):
        for name, each in compare.read_open().items():
            self.assertIn(name, catalogue.names())
            self.assertGreater(each.differing, 0)
            self.assertTrue(each.kinds <= {"value", "refused", "accepted", "message", "columns"}, each.kinds)


if __name__ == "__main__":
    unittest.main()
