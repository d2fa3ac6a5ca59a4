"""`--keep`: which input columns stand in front of the results, and how the prediction makes way for the target's own."""
import unittest

from host_command import AGE, NAME, X, Y, HostTest, field_ref, number_field
from score_test import OUTPUTS, Score

HALF = number_field("Half")


class Transform(HostTest):
    def test_some_columns_in_the_order_asked_for(self):
        cases = 'id,Age,note\n7, 1.0 ,"a,b"\n8,2,c\n'
        for options in (("--keep", "note,id"), ("--keep=note,id",), ("--keep", "note", "--keep", "id,note")):
            self.expect(self.transform(cases, "--quiet", *options), 0, 'note,id,Out\n"a,b",7,1\nc,8,2\n', "")

    def test_columns_of_one_name_are_kept_together(self):
        self.expect(self.transform("id,Age,id\n7,1,8\n", "--keep", "id", "--quiet"), 0, "id,id,Out\n7,8,1\n", "")

    def test_a_name_with_a_comma(self):
        self.expect(self.transform('"a,b",Age\nx,1\n', "--keep", '"a,b"', "--quiet"), 0, '"a,b",Out\nx,1\n', "")

    def test_a_name_in_the_encoding_of_the_cases(self):
        cases = "größe,Age\nx,1\n".encode("cp1252")
        result = self.transform(cases, "--keep", "größe", "--encoding", "cp1252", "--quiet")
        self.expect(result, 0, "größe,Out\nx,1\n".encode("cp1252"), "")

    def test_one_that_is_not_there(self):
        self.expect(self.transform("id,Age\n7,1\n", "--keep", "age", "--quiet"), 1, "",
                    'veltrane: cases.csv: there is no column "age" to keep; did you mean "Age"?\n')
        self.expect(self.transform("id,Age\n7,1\n", "--keep", "elsewhere", "--quiet"), 1, "",
                    'veltrane: cases.csv: there is no column "elsewhere" to keep\n')

    def test_one_with_the_name_of_a_derived_field_can_be_left_out(self):
        self.expect(self.transform("id,Age,Out\n7,1,2\n", "--keep", "id", "--quiet"), 0, "id,Out\n7,1\n", "")
        self.expect(self.transform("id,Age,Out\n7,1,2\n", "--keep", "Out", "--quiet"), 1, "",
                    'veltrane: cases.csv: the column "Out" cannot be kept: a derived field has its name\n')

    def test_alone_in_front_of_the_files_it_keeps_all(self):
        self.write("cases.csv", "id,Age\n7,1\n")
        self.document([AGE, NAME], field_ref("Out", "Age"))
        self.expect(self.run_host("transform", "--keep", "document.pmml", "cases.csv", "--quiet"), 0, "id,Age,Out\n7,1,1\n")


class Target(Score):
    def test_its_column_is_kept_and_the_prediction_called_predicted(self):
        self.model()
        self.expect(self.score("x,y\n1,5\n", "--keep"), 0, "x,y,predicted_y,Size,Half\n1,5,2,small,0.5\n", "")
        self.expect(self.score("x,y\n1,5\n", "--keep", "y"), 0, "y,predicted_y,Size,Half\n5,2,small,0.5\n", "")

    def test_without_it_the_prediction_has_its_name(self):
        self.model()
        self.expect(self.score("x,y\n1,5\n", "--keep", "x"), 0, "x,y,Size,Half\n1,2,small,0.5\n", "")
        self.expect(self.score("x,y\n1,5\n"), 0, "y,Size,Half\n2,small,0.5\n", "")

    def test_the_output_of_a_run_can_be_its_input(self):
        self.model()
        self.expect(self.score("x,y,predicted_y\n1,5,2\n", "--keep", "--quiet"), 0,
                    "x,y,predicted_y,predicted_predicted_y,Size,Half\n1,5,2,2,small,0.5\n", "")

    def test_an_output_with_the_target_s_name_makes_way_too(self):
        self.model(target="Half", fields=(X, HALF))
        self.expect(self.score("x,Half\n1,9\n", "--keep"), 0,
                    "x,Half,predicted_Half,Size,output_Half\n1,9,2,small,0.5\n", "")

    def test_a_column_of_another_result_s_name_cannot_be_kept(self):
        self.model()
        self.expect(self.score("x,Half\n1,9\n", "--keep", "--quiet"), 1, "",
                    'veltrane: cases.csv: the column "Half" cannot be kept: a result has its name\n')
        self.expect(self.score("x,Half\n1,9\n", "--keep", "x", "--quiet"), 0, "x,y,Size,Half\n1,2,small,0.5\n", "")

    def test_a_row_without_a_score_is_kept(self):
        self.model()
        self.expect(self.score("x,y\n-1,5\n", "--keep", "y", "--quiet"), 3, "y,predicted_y,Size,Half\n5,,,\n")

    def test_without_a_target_nothing_makes_way(self):
        self.model(target="", fields=(X, Y), outputs=OUTPUTS)
        self.expect(self.score('x,""\n1,5\n', "--keep", "--quiet"), 0, 'x,,prediction,Size,Half\n1,5,2,small,0.5\n')


del Score  # its own tests are run in their own file

if __name__ == "__main__":
    unittest.main()
