"""Rows and cells that could not be scored or read: what is told of them, the file of rejects, the limit of errors."""
import os
import unittest

from host_command import AGE, NAME, HostTest, field_ref, text_ref

MODEL = ('<PMML version="4.3"><DataDictionary>'
         '<DataField name="Income" optype="continuous" dataType="double"><Interval closure="closedClosed" leftMargin="0"/>'
         "</DataField>"
         '<DataField name="Housing" optype="categorical" dataType="string"><Value value="own"/><Value value="rent"/>'
         "</DataField>"
         '<DataField name="Y" optype="continuous" dataType="double"/></DataDictionary>'
         "<TransformationDictionary>"
         '<DerivedField name="Log" optype="continuous" dataType="double"><Apply function="ln"><FieldRef field="Income"/>'
         "</Apply></DerivedField></TransformationDictionary>"
         '<RegressionModel functionName="regression"><MiningSchema><MiningField name="Income"/>'
         '<MiningField name="Housing"/><MiningField name="Y" usageType="target"/></MiningSchema>'
         '<RegressionTable intercept="1"><NumericPredictor name="Log" coefficient="0"/>'
         '<CategoricalPredictor name="Housing" value="own" coefficient="1"/></RegressionTable>'
         "</RegressionModel></PMML>")
HEADER = "row,field,value,reason\n"


class Rows(HostTest):
    def score(self, cases, *options):
        self.write("model.pmml", MODEL)
        self.write("cases.csv", cases)
        return self.run_host("score", "model.pmml", "cases.csv", *options)

    def rejects(self):
        return (self.folder / "rejects.csv").read_text()

    CASES = ("Housing,Income\nown,1\nrent,\nrent,NA\ntent,5\nown,-5\nown,abc\nown,0\n\"so,\n\"\"so\",9\nown\n")
    ROWS = ("2,Income,,is missing\n3,Income,NA,is missing\n4,Housing,tent,is invalid\n5,Income,-5,is invalid\n"
            "6,Income,abc,is not a number\n6,Income,abc,is invalid\n"
            '7,Log,,"is missing, a derived field whose inputs are there"\n'
            '8,Housing,"so,\n""so",is invalid\n'
            '9,,,"1 cell, but the header has 2"\n9,Income,,is missing\n')
    TOTALS = ("veltrane: 2 cells could not be read\n"
              "veltrane: 3 rows could not be scored: Income is missing\n"
              "veltrane: 2 rows could not be scored: Housing is invalid\n"
              "veltrane: 2 rows could not be scored: Income is invalid\n"
              "veltrane: 1 row could not be scored: Log is missing, a derived field whose inputs are there\n")

    def test_each_row_says_which_field_which_value_and_why(self):
        result = self.score(self.CASES, "--missing", "NA")
        self.expect(result, 3, 'Y\n2\n""\n""\n""\n""\n""\n""\n""\n""\n',
                    "cases.csv:3: not scored: Income is missing\n"
                    'cases.csv:4: not scored: Income: "NA" is missing\n'
                    'cases.csv:5: not scored: Housing: "tent" is invalid\n'
                    'cases.csv:6: not scored: Income: "-5" is invalid\n'
                    'cases.csv:7: Income: "abc" is not a number\n'
                    'cases.csv:7: not scored: Income: "abc" is invalid\n'
                    "cases.csv:8: not scored: Log is missing, a derived field whose inputs are there\n"
                    'cases.csv:9: not scored: Housing: "so,\\n"so" is invalid\n'
                    "cases.csv:11: 1 cell, but the header has 2\n"
                    "cases.csv:11: not scored: Income is missing\n" + self.TOTALS)

    def test_the_file_of_rejects_has_all(self):
        result = self.score(self.CASES, "--missing", "NA", "--rejects", "rejects.csv", "--quiet", "-o", "out.csv")
        self.expect(result, 3, "", self.TOTALS)
        self.assertEqual(self.rejects(), HEADER + self.ROWS)
        self.assertEqual(self.names(), ["cases.csv", "model.pmml", "out.csv", "rejects.csv"])

    def test_it_is_written_with_the_delimiter_and_packed_by_its_name(self):
        self.score("Housing;Income\ntent;5\n", "--delimiter", ";", "--rejects", "rejects.csv")
        self.assertEqual(self.rejects(), "row;field;value;reason\n1;Housing;tent;is invalid\n")
        self.score("Housing,Income\ntent,5\n", "--rejects", "rejects.csv.gz")
        self.assertEqual((self.folder / "rejects.csv.gz").read_bytes()[:2], b"\x1f\x8b")

    def test_without_rejects_it_has_a_header(self):
        self.expect(self.score("Housing,Income\nown,5\n", "--rejects", "rejects.csv"), 0, "Y\n2\n", "")
        self.assertEqual(self.rejects(), HEADER)

    def test_it_may_be_standard_output(self):
        result = self.score("Housing,Income\ntent,5\n", "--rejects", "-", "-o", "out.csv", "--quiet")
        self.expect(result, 3, HEADER + "1,Housing,tent,is invalid\n")

    def test_a_run_that_fails_leaves_none(self):
        self.expect(self.score('Housing,Income\ntent,5\n"x"y,5\n', "--rejects", "rejects.csv", "--quiet"), 1)
        self.expect(self.score("Income\n5\n", "--rejects", "rejects.csv"), 1)
        self.expect(self.score("Housing,Income\nown,x\n", "--rejects", "rejects.csv", "--strict"), 1)
        self.assertNotIn("rejects.csv", self.names())

    def test_neither_file_appears_when_the_end_of_an_archive_cannot_be_written(self):
        for packed in ("full.gz", "full.zst"):
            (self.folder / packed).symlink_to("/dev/full")
            for options in (("-o", packed, "--rejects", "rejects.csv"), ("-o", "out.csv", "--rejects", packed)):
                self.expect(self.score("Housing,Income\ntent,5\n", *options, "--quiet"), 1, "",
                            f"veltrane: {packed}: No space left on device\n")
                self.assertNotIn("rejects.csv", self.names())
                self.assertNotIn("out.csv", self.names())

    def test_it_is_no_input_and_not_the_output(self):
        self.expect(self.score("Housing,Income\n", "--rejects", "cases.csv"), 2, "",
                    "veltrane: cases.csv: the output is the same file as the input cases.csv; write to another one\n")
        same = "veltrane: --rejects and -o go to the same file; write one of them to another one\n"
        for rejects, output in (("new.csv", "./new.csv"), ("-", "-"), ("model2.pmml", "link")):
            self.write("model2.pmml", MODEL)
            if not (self.folder / "link").exists():
                (self.folder / "link").symlink_to("model2.pmml")
            self.expect(self.score("Housing,Income\n", "--rejects", rejects, "-o", output), 2, "", same)

    def test_a_file_of_two_names_is_one(self):
        self.write("old.csv", "old")
        os.link(self.folder / "old.csv", self.folder / "same.csv")
        self.expect(self.score("Housing,Income\n", "--rejects", "old.csv", "-o", "same.csv"), 2, "",
                    "veltrane: --rejects and -o go to the same file; write one of them to another one\n")
        self.assertEqual((self.folder / "old.csv").read_text(), "old")

    def test_the_first_twenty_are_shown(self):
        rows = "own,abc\n" * 20 + "tent,1\n"
        more = self.expect(self.score("Housing,Income\n" + rows), 3).stderr.decode().splitlines()
        self.assertEqual(len([line for line in more if line.endswith("is not a number")]), 20)
        self.assertEqual(len([line for line in more if ": not scored: " in line]), 20)
        self.assertEqual(more[-4:], ["veltrane: 20 cells could not be read",
                                     "veltrane: 20 rows could not be scored: Income is invalid",
                                     "veltrane: 1 row could not be scored: Housing is invalid",
                                     "veltrane: the first 20 are shown; --rejects FILE takes all"])
        self.assertEqual(len(more), 44)
        few = self.expect(self.score("Housing,Income\n" + "own,abc\n" * 20), 3).stderr.decode()
        self.assertNotIn("the first 20", few)
        told = self.expect(self.score("Housing,Income\n" + rows, "--rejects", "rejects.csv"), 3).stderr.decode()
        self.assertTrue(told.endswith("veltrane: the first 20 are shown; the file of rejects has all\n"))
        self.assertEqual(len(self.rejects().splitlines()), 42)
        quiet = self.expect(self.score("Housing,Income\n" + rows, "--quiet"), 3).stderr.decode()
        self.assertEqual(quiet.splitlines(), more[-4:-1])

    def test_a_field_without_a_column(self):
        self.expect(self.score("Housing\nown\n", "--missing-columns", "--quiet"), 3, 'Y\n""\n',
                    "veltrane: 1 row could not be scored: Income is missing\n")


class Cells(HostTest):
    BOTH = dict(fields=[AGE, NAME], derived=field_ref("A", "Age") + text_ref("N", "Name"))

    def test_transform_has_a_file_of_rejects_too(self):
        result = self.transform("Age,Name\nx,a\n1,b,c\n2,d\n", "--rejects", "rejects.csv", "--quiet", **self.BOTH)
        self.expect(result, 3, "A,N\n,a\n1,b\n2,d\n", "veltrane: 2 cells could not be read\n")
        self.assertEqual((self.folder / "rejects.csv").read_text(),
                         HEADER + '1,Age,x,is not a number\n2,,,"3 cells, but the header has 2"\n')

    def test_that_of_transform_is_no_input_and_not_the_output(self):
        self.expect(self.transform("Age,Name\n", "--rejects", "cases.csv", **self.BOTH), 2, "")
        self.expect(self.transform("Age,Name\n", "--rejects", "new.csv", "-o", "./new.csv", **self.BOTH), 2, "")
        self.assertNotIn("new.csv", self.names())

    def test_the_header_is_row_0(self):
        result = self.transform("Age,Größe\n1,2\n".encode("cp1252"), "--rejects", "rejects.csv", "--quiet")
        self.expect(result, 3, "Out\n1\n")
        self.assertEqual((self.folder / "rejects.csv").read_bytes(),
                         (HEADER + "0,column 2,Größe,is not text in UTF-8\n").encode("cp1252"))


class Limits(HostTest):
    def code(self, bad, good, *options):
        return self.transform("Age\n" + "x\n" * bad + "1\n" * good, "--quiet", *options).returncode

    def test_any_error_counts_without_it(self):
        self.assertEqual(self.code(0, 5), 0)
        self.assertEqual(self.code(1, 5), 3)

    def test_a_number_of_rows(self):
        self.assertEqual(self.code(2, 0, "--max-errors", "2"), 0)
        self.assertEqual(self.code(3, 1000, "--max-errors", "2"), 3)
        self.assertEqual(self.code(1, 0, "--max-errors", "0"), 3)

    def test_a_share_of_the_rows(self):
        self.assertEqual(self.code(1, 999, "--max-errors", "0.1%"), 0)
        self.assertEqual(self.code(2, 998, "--max-errors", "0.1%"), 3)
        self.assertEqual(self.code(1, 998, "--max-errors", "0.1%"), 3)
        self.assertEqual(self.code(5, 0, "--max-errors", "100%"), 0)
        self.assertEqual(self.code(0, 0, "--max-errors", "0%"), 0)

    def test_a_row_counts_once(self):
        fields = dict(fields=[AGE, AGE.replace("Age", "B")], derived=field_ref("A", "Age") + field_ref("C", "B"))
        result = self.transform("Age,B\nx,y\n1,2\n", "--max-errors", "1", **fields)
        self.expect(result, 0, "A,C\n,\n1,2\n",
                    'cases.csv:2: Age: "x" is not a number\ncases.csv:2: B: "y" is not a number\n'
                    "veltrane: 2 cells could not be read\n")

    def test_other_words_are_wrong_usage(self):
        for text in ("", "x", "-1", "1.5", "101%", "1e3", "%", "1 %"):
            self.assertEqual(self.code(0, 1, "--max-errors", text), 2, text)


if __name__ == "__main__":
    unittest.main()
