"""Output fields and predicted values that are dates and times are written as such, case by case and in blocks."""
import csv
import io
import unittest

from host_command import HostTest, model_document, number_field


def output(name, expression, **more):
    attributes = "".join(f' {key}="{value}"' for key, value in more.items())
    return f'<OutputField name="{name}" feature="transformedValue"{attributes}>{expression}</OutputField>'


class OutputDates(HostTest):
    FIELDS = (number_field("X"), '<DataField name="D" optype="continuous" dataType="date"/>',
              '<DataField name="T" optype="continuous" dataType="time"/>',
              '<DataField name="y" optype="categorical" dataType="date"><Value value="2020-01-05"/>'
              '<Value value="2021-03-04"/></DataField>')
    OUTPUTS = {
        "date": (output("date", "<Constant>2020-01-05</Constant>", dataType="date", optype="continuous"), "2020-01-05"),
        "time": (output("time", "<Constant>10:11:12</Constant>", dataType="time", optype="continuous"), "10:11:12"),
        "moment": (output("moment", "<Constant>2020-01-05T10:11:12</Constant>", dataType="dateTime"),
                   "2020-01-05T10:11:12"),
        "dateField": (output("dateField", '<FieldRef field="D"/>'), "2024-02-29"),
        "timeField": (output("timeField", '<FieldRef field="T"/>'), "23:59:58"),
        "timeConstant": (output("timeConstant", '<Constant dataType="time">10:11:12</Constant>'), "10:11:12"),
        "again": (output("again", '<FieldRef field="dateField"/>'), "2024-02-29"),
        "decided": (output("decided", '<FieldRef field="T"/>').replace("transformedValue", "decision"), "23:59:58"),
        "predicted": ('<OutputField name="predicted" feature="predictedValue"/>', "2020-01-05"),
        "second": ('<OutputField name="second" feature="predictedValue" rank="2"/>', "2021-03-04"),
        "stated": ('<OutputField name="stated" feature="predictedValue" dataType="date"/>', "2020-01-05"),
        "ofPredicted": (output("ofPredicted", '<FieldRef field="predicted"/>'), "2020-01-05"),
    }
    MODEL = model_document(
        '<RegressionModel functionName="classification" normalizationMethod="softmax"><MiningSchema>'
        '<MiningField name="X"/><MiningField name="D"/><MiningField name="T"/>'
        '<MiningField name="y" usageType="target"/></MiningSchema>'
        f'<Output>{"".join(element for element, _ in OUTPUTS.values())}</Output>'
        '<RegressionTable targetCategory="2020-01-05" intercept="0"><NumericPredictor name="X" coefficient="1"/>'
        '</RegressionTable><RegressionTable targetCategory="2021-03-04" intercept="0"/></RegressionModel>',
        fields=FIELDS, version="4.4")

    def rows(self, *options):
        self.write("model.pmml", self.MODEL)
        self.write("cases.csv", "X,D,T\n1,2024-02-29,23:59:58\n1,,\n")
        result = self.expect(self.run_host("score", "model.pmml", "cases.csv", *options), 0, err="")
        return list(csv.DictReader(io.StringIO(result.stdout.decode())))

    def test_they_have_the_form_of_their_type(self):
        expected = {"y": "2020-01-05", **{name: text for name, (_, text) in self.OUTPUTS.items()}}
        for options in (("--by-case",), ("--threads", "1"), ("--threads", "2")):
            with self.subTest(options=options):
                self.assertEqual(self.rows(*options)[0], expected)

    def test_those_of_missing_fields_are_empty(self):
        for options in (("--by-case",), ("--threads", "2")):
            with self.subTest(options=options):
                empty = [name for name, text in self.rows(*options)[1].items() if not text]
                self.assertEqual(empty, ["dateField", "timeField", "again", "decided"])


class DerivedDates(HostTest):
    """Derived fields and output fields that are the same are written the same."""

    FIELDS = ('<DataField name="M" optype="continuous" dataType="dateTimeSecondsSince[1980]"/>',
              '<DataField name="T" optype="continuous" dataType="timeSeconds"/>',
              '<DataField name="D" optype="continuous" dataType="dateDaysSince[1970]"/>')
    TYPES = {"M": "dateTime", "T": "time", "D": "date"}
    CASES = "M,T,D\n1.5,61.25,-1\n-1.5,0.000001,0.75\n1e12,86399,4e6\n,,\n"
    TEXTS = ["1980-01-01T00:00:01.5,00:01:01.25,1969-12-31", "1979-12-31T23:59:58.5,00:00:00.000001,1970-01-01",
             "1000315532800,23:59:59,3.456e+11", ",,"]

    def test_they_keep_what_is_left_of_a_second(self):
        derived = "".join(f'<DerivedField name="{name}d" optype="continuous" dataType="{kind}"><FieldRef field="{name}"/></DerivedField>'
                          for name, kind in self.TYPES.items())
        shown = "".join(output(name + "o", f'<FieldRef field="{name}d"/>', dataType=kind) for name, kind in self.TYPES.items())
        schema = "".join(f'<MiningField name="{name}"/>' for name in self.TYPES)
        model = (f'<RegressionModel functionName="regression"><MiningSchema>{schema}</MiningSchema><Output>{shown}</Output>'
                 '<RegressionTable intercept="0"/></RegressionModel>')
        self.write("d.pmml", model_document(f"<TransformationDictionary>{derived}</TransformationDictionary>", model,
                                            fields=self.FIELDS, version="4.4"))
        self.write("cases.csv", self.CASES)
        for options in ((), ("--by-case",), ("--threads", "2")):
            with self.subTest(options=options):
                self.expect(self.run_host("transform", "d.pmml", "cases.csv", *options), 0, "\n".join(["Md,Td,Dd", *self.TEXTS, ""]), "")
                scored = [f"0,{text}" for text in self.TEXTS]
                self.expect(self.run_host("score", "d.pmml", "cases.csv", *options), 0, "\n".join(["prediction,Mo,To,Do", *scored, ""]),
                            "")


if __name__ == "__main__":
    unittest.main()
