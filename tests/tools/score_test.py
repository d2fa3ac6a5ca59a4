"""`veltrane score` with a plug-in of the tests that can keep or break its side of the contract."""
import unittest

from host_command import X, Y, HostTest, model_document, number_field

OUTPUTS = ('<ResultField name="Size" dataType="string" optype="categorical" feature="predictedDisplayValue"/>'
           '<ResultField name="Half" dataType="double" optype="continuous" feature="predictedValue"/>')
NO_DEFAULT = "the model gave no prediction (status 90027)"


class Score(HostTest):
    def setUp(self):
        super().setUp()
        self.write("models.txt", "ScriptedModel\n")

    def model(self, fault="", target="y", fields=(X, Y), outputs=OUTPUTS):
        self.write("model.pmml", model_document(f'<ScriptedModel fault="{fault}" target="{target}">{outputs}</ScriptedModel>',
                                                fields=fields, version="4.1"))

    def score(self, cases, *options):
        self.write("cases.csv", cases)
        return self.run_with_test_plugins("score", "model.pmml", "cases.csv", "--models", "models.txt", *options)


class Columns(Score):
    def test_the_prediction_stands_under_the_target_and_outputs_in_document_order(self):
        self.model()
        self.expect(self.score("x,y\n1,0\n11,\n"), 0, 'y,Size,Half\n2,small,0.5\n22,"big, or so",5.5\n', "")

    def test_without_a_result_dictionary_the_outputs_are_those_of_an_empty_result(self):
        self.model(outputs="")
        self.expect(self.score("x\n1\n"), 0, "y,Half,Size\n2,0.5,small\n", "")

    def test_without_a_target_the_column_is_called_prediction(self):
        self.model(target="", outputs=OUTPUTS)
        self.expect(self.score("x\n1\n"), 0, "prediction,Size,Half\n2,small,0.5\n", "")

    def test_an_output_with_the_target_s_name_keeps_it(self):
        self.model(target="Half", fields=(X, number_field("Half")))
        self.expect(self.score("x\n1\n"), 0, "predicted Half,Size,Half\n2,small,0.5\n", "")

    def test_input_columns_are_kept_in_front(self):
        self.model()
        self.expect(self.score("x,note\n1,a\n", "--keep"), 0, "x,note,y,Size,Half\n1,a,2,small,0.5\n",
                    'veltrane: warning: cases.csv: columns that are no field are ignored: "note"\n')

    def test_a_column_of_a_result_s_name_cannot_be_kept(self):
        self.model()
        for column in ("Size", "Half"):
            self.expect(self.score(f"x,{column}\n1,a\n", "--keep", "--quiet"), 1, "",
                        f'veltrane: cases.csv: the column "{column}" cannot be kept: a result has its name\n')

    def test_a_delimiter_serves_both_sides(self):
        self.model()
        self.expect(self.score("x;y\n11;0\n", "--delimiter", ";"), 0, "y;Size;Half\n22;big, or so;5.5\n", "")


class Rows(Score):
    def test_rows_that_cannot_be_scored_are_empty_and_counted_by_reason(self):
        self.model()
        self.expect(self.score("x\n1\n\"\"\n-1\nNA\n-2\n3\n-5\n", "--missing", "NA"), 3,
                    "y,Size,Half\n2,small,0.5\n,,\n,,\n,,\n,,\n6,small,1.5\n,,\n",
                    f"cases.csv:3: not scored: {NO_DEFAULT}\ncases.csv:4: not scored: status 7\n"
                    f"cases.csv:5: not scored: {NO_DEFAULT}\ncases.csv:6: not scored: status 7\n"
                    "cases.csv:8: not scored: status 7\n"
                    "veltrane: 3 rows could not be scored: status 7\n"
                    f"veltrane: 2 rows could not be scored: {NO_DEFAULT}\n")

    def test_a_plug_in_of_others_can_tell_why(self):
        self.model("tells")
        self.expect(self.score("y,x\n0,-1\n"), 3, "y,Size,Half\n,,\n",
                    'cases.csv:2: not scored: x: "-1" is invalid\nveltrane: 1 row could not be scored: x is invalid\n')
        self.model("tells nonsense")
        self.expect(self.score("y,x\n0,-1\n", "--quiet"), 3, "y,Size,Half\n,,\n",
                    "veltrane: 1 row could not be scored: the model gave no prediction\n")

    def test_they_are_counted_in_quiet_too(self):
        self.model()
        self.expect(self.score("x\n-1\n", "--quiet"), 3, "y,Size,Half\n,,\n",
                    "veltrane: 1 row could not be scored: status 7\n")

    def test_a_row_without_a_prediction_is_not_scored(self):
        self.model("no prediction")
        self.expect(self.score("x\n1\n"), 3, "y,Size,Half\n,,\n",
                    "cases.csv:2: not scored: the model gave no prediction\n"
                    "veltrane: 1 row could not be scored: the model gave no prediction\n")

    def test_a_row_with_a_warning_is_scored(self):
        self.model("warns")
        self.expect(self.score("x\n1\n"), 0, "y,Size,Half\n2,small,0.5\n", "")

    def test_an_unreadable_cell_is_missing(self):
        self.model()
        self.expect(self.score("x\nabc\n1\n"), 3, "y,Size,Half\n,,\n2,small,0.5\n",
                    f'cases.csv:2: x: "abc" is not a number\ncases.csv:2: not scored: {NO_DEFAULT}\n'
                    "veltrane: 1 cell could not be read\n"
                    f"veltrane: 1 row could not be scored: {NO_DEFAULT}\n")

    def test_strict_ends_at_the_first_unreadable_cell_and_leaves_no_file(self):
        self.model()
        self.expect(self.score("x\nabc\n", "--strict", "-o", "out.csv"), 1, "",
                    'cases.csv:2: x: "abc" is not a number\n')
        self.assertNotIn("out.csv", self.names())

    def test_the_output_goes_to_a_file(self):
        self.model()
        self.expect(self.score("x\n1\n", "-o", "out.csv"), 0, "", "")
        self.assertEqual((self.folder / "out.csv").read_text(), "y,Size,Half\n2,small,0.5\n")

    def test_an_input_without_a_column_that_is_allowed_is_told_once(self):
        self.model()
        self.expect(self.score("y\n1\n2\n", "--missing-columns"), 3, "y,Size,Half\n,,\n,,\n",
                    'veltrane: warning: cases.csv: fields without a column are missing in every case: "x"\n'
                    f"cases.csv:2: not scored: {NO_DEFAULT}\ncases.csv:3: not scored: {NO_DEFAULT}\n"
                    f"veltrane: 2 rows could not be scored: {NO_DEFAULT}\n")


class ModelOptions(Score):
    def test_they_reach_the_model_in_order(self):
        self.model()
        self.expect(self.score("x\n1\n", "--option", "factor=3", "--option", "factor=5"), 0,
                    "y,Size,Half\n5,small,0.5\n", "")

    def test_unknown_ones_end_the_run(self):
        self.model()
        for option, shown in (("speed=3", '"speed", or "3"'), ("factor=x", '"factor", or "x"'),
                              ("factor=", '"factor", or ""'), ("a=b=c", '"a", or "b=c"')):
            self.expect(self.score("x\n1\n", "--option", option), 1, "",
                        f"veltrane: model.pmml: the model has no option {shown} is no value of it\n")

    def test_text_that_is_no_option_is_wrong_usage(self):
        self.model()
        for option in ("factor", "=3", ""):
            self.expect(self.score("x\n1\n", "--option", option), 2, "")


class Models(Score):
    def test_a_list_that_is_not_there_is_told(self):
        self.model()
        self.write("cases.csv", "x\n1\n")
        self.expect(self.run_host("score", "model.pmml", "cases.csv", "--models", "none.txt"), 1, "",
                    "veltrane: error 260103: Could not open file: 'none.txt'.\n"
                    "veltrane: none.txt: No such file or directory\n")

    def test_names_of_files_have_blanks_and_any_letters(self):
        self.model()
        self.write("cases.csv", "x\n1\n")
        (self.folder / "model.pmml").rename(self.folder / "Größe und 模型.pmml")
        (self.folder / "models.txt").rename(self.folder / "eine Liste für alle.txt")
        for locale in ("C", "en_US.UTF-8", "de_DE.UTF-8"):
            result = self.run_with_test_plugins("score", "Größe und 模型.pmml", "cases.csv", "--models",
                                                "eine Liste für alle.txt", LC_ALL=locale)
            self.expect(result, 0, "y,Size,Half\n2,small,0.5\n", "")
        self.expect(self.run_host("score", "kein Maß", "cases.csv", "--models", "eine Liste für alle.txt"), 1, "",
                    "veltrane: error 260104: Unexpected error in opening PMML file: 'kein Maß'.\n"
                    "veltrane: kein Maß: No such file or directory\n")

    def test_a_model_that_the_list_lacks_is_told(self):
        self.model()
        self.write("models.txt", "TreeModel\n")
        self.expect(self.score("x\n1\n"), 1, "")
        self.assertIn(b"veltrane: error 260301: ", self.score("x\n1\n").stderr)


class Faults(Score):
    """Plug-ins that break their side of the contract: the command says so and ends cleanly."""

    FAULTS = {
        "no model": "model.pmml: the plug-in made no model of the document",
        "no dictionary": "model.pmml: the plug-in made a model without a data dictionary",
        "no result": "model.pmml: the model makes no results",
        "a lie": "model.pmml: the model's results say that they are of kind 0, and are not",
        "no kind": "model.pmml: the model's results say that they are of kind 28, and are not",
        "throws at the document": "a plug-in failed with something that is no exception of the library",
        "throws at a case": "a plug-in failed with something that is no exception of the library",
    }

    def test_each_is_told(self):
        for fault, text in self.FAULTS.items():
            with self.subTest(fault):
                self.model(fault)
                self.expect(self.score("x\n1\n", "-o", "out.csv"), 1, "", f"veltrane: {text}\n")
                self.assertNotIn("out.csv", self.names())


if __name__ == "__main__":
    unittest.main()
