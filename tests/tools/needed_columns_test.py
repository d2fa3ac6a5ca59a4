"""Columns that a document needs and a file of cases lacks."""
import unittest

from host_command import AGE, NAME, HostTest, field_ref, model_document, number_field, text_field, text_ref

INCOME = number_field("Income")
TAKEN_ONE = "; --missing-columns takes it for missing\n"
TAKEN = "; --missing-columns takes them for missing\n"
NONE = "; the header has none of the document's fields"
ONE = "veltrane: cases.csv: the document needs a column that is not there: "
SEVERAL = "veltrane: cases.csv: the document needs columns that are not there: "
TRY = "; another character seems to stand between its names: try --delimiter "

FIELDS = [AGE, INCOME, text_field("Zip"), text_field("Group"),
          '<DataField name="One" optype="categorical" dataType="string"><Value value="only"/>{more}</DataField>',
          number_field("Y")]
TREE = model_document(
    '<TreeModel functionName="regression"><MiningSchema><MiningField name="Age"/>'
    '<MiningField name="Income" missingValueReplacement="7"/>'
    '<MiningField name="Zip" usageType="supplementary"/><MiningField name="Group" usageType="group"/>'
    '<MiningField name="One" missingValueReplacement="only"{attributes}/>'
    '<MiningField name="Y" usageType="target"/></MiningSchema>'
    '<Node score="1"><True/></Node></TreeModel>', fields=FIELDS)


class Transform(HostTest):
    BOTH = dict(fields=[AGE, NAME, INCOME], derived=field_ref("A", "Age") + text_ref("N", "Name"))

    def refuse(self, cases, error, *options, **more):
        self.expect(self.transform(cases, *options, **{**self.BOTH, **more}), 1, "", error)

    def test_one_that_is_not_there_is_named(self):
        self.refuse("Age\n1\n", ONE + '"Name"' + TAKEN_ONE)

    def test_the_nearest_name_that_is_there_is_named(self):
        self.refuse("Age,name \n1,x\n", ONE + '"Name" (the nearest name is "name ")' + TAKEN_ONE)
        self.refuse("Age,Nmae,id\n1,x\n", ONE + '"Name" (the nearest name is "Nmae")' + TAKEN_ONE)
        self.refuse("age,NAME\n1,x\n", SEVERAL + '"Age" (the nearest name is "age"), "Name" (the nearest name is "NAME")'
                  + NONE + TAKEN)

    def test_a_column_of_another_field_is_no_near_name(self):
        fields = [AGE.replace("Age", "x1"), AGE.replace("Age", "x2")]
        self.refuse("x2\n1\n", ONE + '"x1"' + TAKEN_ONE, fields=fields,
                  derived=field_ref("A", "x1") + field_ref("B", "x2"))

    def test_quiet_does_not_keep_it_back_and_no_file_appears(self):
        self.refuse("Age\n1\n", ONE + '"Name"' + TAKEN_ONE, "--quiet", "-o", "out.csv")
        self.assertNotIn("out.csv", self.names())

    def test_only_fields_that_derived_fields_read_are_needed(self):
        self.expect(self.transform("Age,Name\n1,x\n", **self.BOTH), 0, "A,N\n1,x\n", "")
        self.expect(self.transform("Age\n1\n", fields=[AGE, NAME], derived=field_ref("A", "Age") + field_ref("B", "A")),
                    0, "A,B\n1,1\n", "")

    def test_a_document_of_constants_needs_none(self):
        constant = '<DerivedField name="C" optype="continuous" dataType="double"><Constant>5</Constant></DerivedField>'
        self.expect(self.transform("id\n1\n", derived=constant), 0, "C\n5\n",
                    'veltrane: warning: cases.csv: columns that are no field are ignored: "id"\n')

    def test_every_kind_of_expression_needs_its_fields(self):
        date = '<DataField name="Day" optype="continuous" dataType="date"/>'
        fields = [NAME] + [AGE.replace("Age", f"x{i}") for i in range(1, 9)] + [date]
        derived = (
            '<DerivedField name="d1" optype="continuous" dataType="double"><NormContinuous field="x1">'
            '<LinearNorm orig="0" norm="0"/><LinearNorm orig="1" norm="2"/></NormContinuous></DerivedField>'
            '<DerivedField name="d2" optype="continuous" dataType="double"><NormDiscrete field="Name" value="a"/>'
            "</DerivedField>"
            '<DerivedField name="d3" optype="categorical" dataType="string"><Discretize field="x2">'
            '<DiscretizeBin binValue="low"><Interval closure="openClosed" rightMargin="3"/></DiscretizeBin></Discretize>'
            "</DerivedField>"
            '<DerivedField name="d4" optype="categorical" dataType="string"><MapValues outputColumn="o">'
            '<FieldColumnPair field="x3" column="a"/><FieldColumnPair field="x4" column="b"/><InlineTable>'
            "<row><a>1</a><b>2</b><o>z</o></row></InlineTable></MapValues></DerivedField>"
            '<DerivedField name="d5" optype="continuous" dataType="double"><Apply function="+"><FieldRef field="x5"/>'
            '<Apply function="max"><FieldRef field="x6"/><Constant>3</Constant></Apply></Apply></DerivedField>'
            '<DerivedField name="d6" optype="continuous" dataType="double"><Lag field="x7">'
            '<BlockIndicator field="x8"/></Lag></DerivedField>'
            '<DerivedField name="d7" optype="continuous" dataType="double"><Apply function="dateDaysSinceYear">'
            '<FieldRef field="Day"/><Constant>2000</Constant></Apply></DerivedField>')
        names = ", ".join(f'"{name}"' for name in ("x1", "Name", "x2", "x3", "x4", "x5", "x6", "x7", "x8", "Day"))
        self.refuse("id\n1\n", SEVERAL + names + NONE + TAKEN, fields=fields, derived=derived)
        header = "x1,x2,x3,x4,x5,x6,x7,x8,Name,Day\n"
        self.expect(self.transform(header, fields=fields, derived=derived), 0, "d1,d2,d3,d4,d5,d6,d7\n", "")

    def test_ten_are_named_and_the_others_counted(self):
        fields = [AGE.replace("Age", f"x{i}") for i in range(12)]
        derived = "".join(field_ref(f"d{i}", f"x{i}") for i in range(12))
        names = ", ".join(f'"x{i}"' for i in range(10))
        self.refuse("id\n1\n", SEVERAL + names + " and 2 more" + NONE + TAKEN, fields=fields, derived=derived)

    def test_missing_columns_can_be_allowed(self):
        result = self.transform("Age\n1\n", "--missing-columns", **self.BOTH)
        self.expect(result, 0, "A,N\n1,\n",
                    'veltrane: warning: cases.csv: fields without a column are missing in every case: "Name"\n')
        self.expect(self.transform("Age\n1\n", "--missing-columns", "--quiet", **self.BOTH), 0, "A,N\n1,\n", "")


class Header(HostTest):
    BOTH = Transform.BOTH
    NEEDS = SEVERAL + '"Age", "Name"' + NONE

    def refuse(self, cases, error, *options):
        self.expect(self.transform(cases, *options, **self.BOTH), 1, "", error)

    def test_another_delimiter_is_suggested(self):
        for delimiter, shown in ((";", "';'"), ("\t", "'\\t'"), ("|", "'|'"), (":", "':'"), ("^", "'^'"), ("~", "'~'"),
                                 (" ", "' '"), ("\x1f", "$'\\x1F'")):
            with self.subTest(delimiter):
                header = f"Age{delimiter}Income{delimiter}Name"
                self.refuse(header + "\n1\n", self.NEEDS + TRY + shown + TAKEN)

    def test_a_comma_is_suggested_where_another_was_told(self):
        self.refuse("Age,Name\n1,x\n", self.NEEDS + TRY + "','" + TAKEN, "--delimiter", ";")

    def test_names_with_blanks_and_quotes_around_are_known(self):
        self.refuse("Age ; Income ; Name\n1\n", self.NEEDS + TRY + "';'" + TAKEN)
        self.refuse('Age;"Name"\n1;x\n', "veltrane: cases.csv:1: a quote inside a cell that is not quoted" + TRY + "';'\n")
        self.refuse('"Age";"Name"\n1;x\n', "veltrane: cases.csv:1: text behind a closing quote" + TRY + "';'\n")

    def test_a_byte_order_mark_and_empty_lines_do_not_count(self):
        self.refuse("\ufeff\n\nAge;Name\n1;x\n", self.NEEDS + TRY + "';'" + TAKEN)

    def test_other_names_between_another_delimiter(self):
        self.refuse("years;first name\n1;x\n", self.NEEDS + TRY + "';'" + TAKEN)

    def test_no_header_at_all(self):
        self.refuse("35,17.5,Ann\n36,18,Bob\n",
                  self.NEEDS + "; it looks like a case, but the first line has to name the fields" + TAKEN)

    def test_no_header_at_all_in_a_case_of_many_texts(self):
        self.refuse("Ann,north,2024-02-28,35,own,red\n",
                    self.NEEDS + "; it looks like a case, but the first line has to name the fields" + TAKEN)

    def test_a_note_to_a_spreadsheet_program_is_no_header(self):
        self.refuse("sep=;\nAge;Name\n1;x\n", self.NEEDS + "; the first line is a note to a spreadsheet program: leave it out"
                    + TAKEN, "--delimiter", ";")
        self.refuse("sep=,\nAge,Name\n1,x\n", self.NEEDS + "; the first line is a note to a spreadsheet program: leave it out"
                    + TAKEN)

    def test_other_names(self):
        self.refuse("first,last\n1,2\n", self.NEEDS + TAKEN)

    def test_a_malformed_header_of_the_right_delimiter(self):
        self.refuse('Age,"Name"x\n', "veltrane: cases.csv:1: text behind a closing quote\n")


class Score(HostTest):
    def score(self, cases, *options, more="", attributes=""):
        self.write("model.pmml", TREE.replace("{more}", more).replace("{attributes}", attributes))
        self.write("cases.csv", cases)
        return self.run_host("score", "model.pmml", "cases.csv", *options)

    def test_active_fields_are_needed_and_no_others(self):
        self.expect(self.score("Age,Income\n1,2\n"), 0, "Y\n1\n", "")
        self.expect(self.score("Zip,Group,Y\na,b,1\n", "--quiet"), 1, "", SEVERAL + '"Age", "Income"' + TAKEN)

    def test_one_with_a_replacement_for_missing_values_is_needed(self):
        self.expect(self.score("Age\n1\n"), 1, "", ONE + '"Income"' + TAKEN_ONE)
        self.expect(self.score("Age\n1\n", "--missing-columns", "--quiet"), 0, "Y\n1\n", "")

    def test_one_whose_only_value_stands_in_for_a_missing_one_is_not_needed(self):
        self.expect(self.score("Age,Income\n1,2\n"), 0, "Y\n1\n", "")
        for change in (dict(more='<Value value="other"/>'), dict(attributes=' invalidValueTreatment="asIs"')):
            self.expect(self.score("Age,Income\n1,2\n", **change), 1, "", ONE + '"One"' + TAKEN_ONE)

    def test_a_header_of_another_delimiter(self):
        self.expect(self.score("Age;Income\n1;2\n"), 1, "", SEVERAL + '"Age", "Income"' + NONE + TRY + "';'" + TAKEN)


if __name__ == "__main__":
    unittest.main()
