"""Cells that say what their field lists for missing values have been read: nobody counts them among those that could not
be, whatever their field's type, row by row and in blocks."""
import unittest

from host_command import Y, HostTest, model_document


def field(name, data_type, *texts):
    listed = "".join(f'<Value value="{text}" property="missing"/>' for text in texts)
    return f'<DataField name="{name}" optype="continuous" dataType="{data_type}">{listed}</DataField>'


def derived(name, data_type, field_name, more=""):
    return (f'<DerivedField name="{name}" optype="continuous" dataType="{data_type}"><FieldRef field="{field_name}"{more}/>'
            "</DerivedField>")


FIELDS = [field("n", "double", "NA", "-1", "k. A."), field("d", "date", "never", "0000-00-00"), field("c", "dateDaysSince[1960]", "?"),
          field("p", "double")]
DERIVED = derived("N", "double", "n", ' mapMissingTo="7"') + derived("D", "date", "d", ' mapMissingTo="2020-01-02"') + \
    derived("C", "dateDaysSince[1960]", "c", ' mapMissingTo="3"') + derived("P", "double", "p", ' mapMissingTo="9"')
CASES = "n,d,c,p\n1,1999-12-31,5,2\nNA,never,?,2\n-1,,,\n k. A. , 0000-00-00,\t?,1\n"
RESULTS = "N,D,C,P\n1,1999-12-31,5,2\n7,2020-01-02,3,2\n7,2020-01-02,3,9\n7,2020-01-02,3,1\n"
SCHEMA = "".join(f'<MiningField name="{name}"/>' for name in "ndcp")
OUTPUT = "".join(f'<OutputField name="o{name}" feature="transformedValue" dataType="{type_}"><FieldRef field="{name}"/></OutputField>'
                 for name, type_ in (("N", "double"), ("D", "date"), ("C", "double"), ("P", "double")))
MODEL = model_document(
    f"<TransformationDictionary>{DERIVED}</TransformationDictionary>",
    f'<RegressionModel functionName="regression"><MiningSchema><MiningField name="y" usageType="target"/>{SCHEMA}</MiningSchema>'
    f'<Output>{OUTPUT}</Output><RegressionTable intercept="0"><NumericPredictor name="N" coefficient="1"/></RegressionTable>'
    "</RegressionModel>", fields=(*FIELDS, Y), version="4.4")
ROADS = ((), ("--by-case",), ("--threads", "2"))


class Transform(HostTest):
    def test_they_are_missing_and_not_counted(self):
        for options in ROADS:
            self.expect(self.transform(CASES, *options, fields=FIELDS, derived=DERIVED), 0, RESULTS, "")

    def test_they_do_not_end_a_strict_run(self):
        for options in ROADS:
            self.expect(self.transform(CASES, "--strict", *options, fields=FIELDS, derived=DERIVED), 0, RESULTS, "")

    def test_other_texts_are_told_and_so_are_those_of_another_field(self):
        for options in ROADS:
            result = self.transform("n,p\nna,NA\nNA,1\nNA.,?\n", "--rejects", "rejects.csv", "--missing-columns", "--quiet", *options,
                                    fields=FIELDS, derived=DERIVED)
            self.expect(result, 3, err="veltrane: 4 cells could not be read\n")
            self.assertEqual((self.folder / "rejects.csv").read_text(), "row,field,value,reason\n1,n,na,is not a number\n"
                             "1,p,NA,is not a number\n3,n,NA.,is not a number\n3,p,?,is not a number\n")

    def test_texts_beyond_ascii_and_names_are_those_of_the_encoding(self):
        for options in ROADS:
            result = self.transform("größe\nfällt aus\n2\n".encode("latin-1"), "--encoding", "latin1", *options,
                                    fields=[field("größe", "double", "fällt aus")], derived=derived("N", "double", "größe"))
            self.expect(result, 0, 'N\n""\n2\n', "")

    def test_a_document_with_a_prefix_lists_them_too(self):
        self.write("cases.csv", "n\nNA\n")
        text = self.document(FIELDS, DERIVED).read_text()
        prefixed = text.replace("<", "<p:").replace("<p:/", "</p:").replace("<p:?", "<?").replace("<p:PMML", '<p:PMML xmlns:p="http://www.dmg.org/PMML-4_1"')
        self.write("prefixed.pmml", prefixed)
        self.expect(self.run_host("transform", "prefixed.pmml", "cases.csv", "--missing-columns", "--quiet"), 0,
                    "N,D,C,P\n7,2020-01-02,3,9\n", "")


class Score(HostTest):
    def test_they_are_missing_and_not_counted(self):
        self.write("model.pmml", MODEL)
        self.write("cases.csv", CASES)
        scored = "y,oN,oD,oC,oP\n" + "".join(f"{row.split(',')[0]},{row}\n" for row in RESULTS.splitlines()[1:])
        for options in ROADS:
            self.expect(self.run_host("score", "model.pmml", "cases.csv", *options), 0, scored, "")

    def test_they_are_treated_as_missing_and_not_as_invalid(self):
        self.write("model.pmml", MODEL.replace('name="n"/>', 'name="n" invalidValueTreatment="returnInvalid" missingValueReplacement="8"/>'))
        self.write("cases.csv", "n\nNA\nna\n")
        for options in ROADS:
            result = self.run_host("score", "model.pmml", "cases.csv", "--missing-columns", "--keep", "n", *options)
            self.assertEqual(result.stdout.decode().splitlines()[1].split(",")[1], "8")
            self.assertEqual(result.stdout.decode().splitlines()[2], "na,,,,,")
            self.assertIn(b"1 cell could not be read", result.stderr)

    def test_a_record_that_verifies_the_model_may_say_them(self):
        records = ('<ModelVerification><VerificationFields><VerificationField field="n" column="n"/><VerificationField field="y" '
                   'column="y"/></VerificationFields><InlineTable><row><n>NA</n><y>7</y></row></InlineTable></ModelVerification>')
        self.write("model.pmml", MODEL.replace("</RegressionModel>", records + "</RegressionModel>"))
        result = self.run_host("verify", "model.pmml")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn(b"y      1        1      0", result.stdout)


if __name__ == "__main__":
    unittest.main()
