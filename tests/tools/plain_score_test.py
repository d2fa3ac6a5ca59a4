"""`veltrane score --plain`: the derived fields of the TransformationDictionary are computed by the library alone."""
import unittest

from host_command import NAME, X, Y, HostTest, dictionary, number_field

FIELDS = (X, Y, NAME, '<DataField name="flag" optype="categorical" dataType="boolean"/>',
          '<DataField name="when" optype="continuous" dataType="dateTime"/>')
COLUMNS = ("x", "Name", "flag", "when")
CASES = ("x,Name,flag,when\n1,ab,true,2024-02-29T12:00:00\n,cab,false,\n2.5,,1,1969-12-31T00:00:00\n,,,\n-3,b,0,\n"
         "abc,a,true,2024-02-29T12:00:00\n4,b,maybe,no\n")


def derived(name, expression, kind="double", level="continuous", more=""):
    return f'<DerivedField name="{name}" optype="{level}" dataType="{kind}">{expression}{more}</DerivedField>'


def apply(function, *arguments):
    return f'<Apply function="{function}">{"".join(arguments)}</Apply>'


def ref(name):
    return f'<FieldRef field="{name}"/>'


def text(content):
    return f'<Constant dataType="string">{content}</Constant>'


#: Of each kind of value, with functions that PMML lacks or means otherwise.
SHARED = {
    "normal": derived("normal", apply("cdf.normal", ref("x"), "<Constant>0</Constant>", "<Constant>1</Constant>")),
    "shouted": derived("shouted", apply("replace", ref("Name"), text("b"), text("B")), "string", "categorical"),
    "before": derived("before", '<Lag field="x"/>'),
    "isFlag": derived("isFlag", apply("+", ref("flag"), ref("flag"))),
    "above": derived("above", apply("greaterThan", ref("normal"), "<Constant>0.5</Constant>"), "boolean", "categorical"),
    "size": derived("size", ref("Name"), "string", "ordinal", '<Value value="b"/><Value value="ab"/><Value value="cab"/>'),
    "moment": derived("moment", ref("when"), "dateTime"),
}
DATA = {name: field[:field.index(">")].replace("DerivedField", "DataField") + "/>" for name, field in SHARED.items()}
DATA["size"] = DATA["size"][:-2] + '><Value value="b"/><Value value="ab"/><Value value="cab"/></DataField>'
UNUSED = derived("unused", apply("cdf.normal", ref("other"), ref("other"), ref("other")))
LOCAL = derived("word", apply("replace", ref("shouted"), text("B"), text("-")), "string", "categorical")

TREE = ('<TreeModel functionName="classification" noTrueChildStrategy="returnLastPrediction"><MiningSchema>{schema}'
        '<MiningField name="y" usageType="target"/></MiningSchema><Output>{outputs}</Output><LocalTransformations>'
        f"{LOCAL}</LocalTransformations>"
        '<Node score="0" id="0"><True/><Node score="1" id="1"><CompoundPredicate booleanOperator="and">'
        '<SimplePredicate field="above" operator="equal" value="true"/><SimplePredicate field="size" operator="greaterThan" '
        'value="b"/></CompoundPredicate></Node><Node score="2" id="2"><SimplePredicate field="isFlag" operator="equal" '
        'value="2"/></Node></Node></TreeModel>')
OUTPUTS = "".join(f'<OutputField name="out {name}" optype="{level}" dataType="{kind}" feature="transformedValue">{ref(name)}'
                  "</OutputField>" for name, kind, level in (
                      ("normal", "double", "continuous"), ("shouted", "string", "categorical"),
                      ("before", "double", "continuous"), ("moment", "dateTime", "continuous"),
                      ("word", "string", "categorical")))


def pmml(fields, transformations, schema, more=""):
    mining = "".join(f'<MiningField name="{name}" invalidValueTreatment="asIs"/>' for name in schema)
    return (f'<PMML version="4.4"><Header/>{dictionary(fields)}{transformations}'
            f"{TREE.format(schema=mining, outputs=OUTPUTS)}{more}</PMML>")


class PlainScore(HostTest):
    def write_documents(self, more=""):
        """One with derived fields, and one that has them in its cases."""
        self.write("derived.pmml", pmml(
            [*FIELDS, number_field("other")], "<TransformationDictionary>" + UNUSED + "".join(SHARED.values())
            + "</TransformationDictionary>", COLUMNS, more))
        self.write("data.pmml", pmml([*FIELDS, *DATA.values()], "", [*COLUMNS, *DATA]))

    def test_a_model_gets_what_transform_computes_so(self):
        self.write_documents()
        self.write("cases.csv", CASES.replace("true", "1").replace("false", "0"))
        self.expect(self.run_host("transform", "derived.pmml", "cases.csv", "--plain", "--keep", "-o", "both.csv",
                                  "--missing-columns"), 3)
        expected = self.run_host("score", "data.pmml", "both.csv")
        self.assertIn(b"1,0.8413447460685429,abaB,,2024-02-29T12:00:00,aba-\n", expected.stdout)
        result = self.run_host("score", "derived.pmml", "cases.csv", "--plain")
        self.assertEqual(result.stdout, expected.stdout)
        self.expect(result, 3, err='cases.csv:7: x: "abc" is not a number\ncases.csv:8: when: "no" is not a date-time\n'
                                   "veltrane: 2 cells could not be read\n")

    def test_without_it_the_same_document_is_refused_or_means_something_else(self):
        self.write_documents()
        self.write("cases.csv", CASES)
        self.expect(self.run_host("score", "derived.pmml", "cases.csv"), 1, "",
                    "veltrane: error 260153: Invalid value: 'cdf.normal' of attribute 'function' in 'Apply'.\n"
                    'veltrane: derived.pmml: PMML has no function "cdf.normal", but the library alone does: "veltrane '
                    'transform --plain" computes it\n')
        self.write("d.pmml", self.regression('<NumericPredictor name="d" coefficient="1"/>', derived("d", apply(
            "and", apply("greaterThan", ref("x"), "<Constant>1</Constant>"), apply("isNotMissing", ref("x"))))))
        self.write("cases.csv", "x\n2\n1\n")
        for options in ((), ("--plain",)):
            self.expect(self.run_host("score", "d.pmml", "cases.csv", *options), 0, "y\n1\n0\n", "")
        self.write("cases.csv", 'x\n""\n')
        self.expect(self.run_host("score", "d.pmml", "cases.csv", "--quiet"), 0, "y\n0\n", "")

    def regression(self, predictors, transformations, fields=(X, Y, NAME), schema=("x",), more=""):
        mining = "".join(f'<MiningField name="{name}"/>' for name in schema)
        return (f'<PMML version="4.4"><Header/>{dictionary(fields)}<TransformationDictionary>{transformations}'
                f'</TransformationDictionary>{more}<RegressionModel functionName="regression" modelName="it"><MiningSchema>'
                f'{mining}<MiningField name="y" usageType="target"/></MiningSchema><RegressionTable intercept="0">{predictors}'
                "</RegressionTable></RegressionModel></PMML>")

    NORMAL = derived("d", apply("cdf.normal", ref("x"), "<Constant>0</Constant>", "<Constant>1</Constant>"))
    TERM = '<NumericPredictor name="d" coefficient="2"/>'

    def test_the_columns_behind_the_fields_have_to_be_there_and_no_others(self):
        self.write("d.pmml", self.regression(self.TERM, self.NORMAL + UNUSED, (X, Y, number_field("other")), ()))
        self.write("cases.csv", "X\n0\n")
        self.expect(self.run_host("score", "d.pmml", "cases.csv", "--plain"), 1, "",
                    'veltrane: cases.csv: the document needs a column that is not there: "x" (the nearest name is "X"); '
                    "the header has none of the document's fields; --missing-columns takes it for missing\n")
        self.write("cases.csv", "x\n0\n")
        self.expect(self.run_host("score", "d.pmml", "cases.csv", "--plain"), 0, "y\n1\n", "")

    def test_a_column_with_the_name_of_such_a_field_is_no_field(self):
        self.write("d.pmml", self.regression(self.TERM, self.NORMAL))
        self.write("cases.csv", "d,x\n7,0\n")
        self.expect(self.run_host("score", "d.pmml", "cases.csv", "--plain", "--keep"), 0, "d,x,y\n7,0,1\n",
                    'veltrane: warning: cases.csv: columns that are no field are ignored: "d"\n')

    def test_such_a_field_without_a_value_is_told_by_its_name(self):
        self.write("d.pmml", self.regression(self.TERM, self.NORMAL))
        self.write("cases.csv", 'x\n""\nabc\n')
        self.expect(self.run_host("score", "d.pmml", "cases.csv", "--plain"), 3, 'y\n""\n""\n',
                    "cases.csv:2: not scored: d is missing\n"
                    'cases.csv:3: x: "abc" is not a number\ncases.csv:3: not scored: x: "abc" is invalid\n'
                    "veltrane: 1 cell could not be read\nveltrane: 1 row could not be scored: d is missing\n"
                    "veltrane: 1 row could not be scored: x is invalid\n")

    def test_true_and_false_are_1_and_0_to_the_library(self):
        self.write("d.pmml", self.regression('<NumericPredictor name="isFlag" coefficient="1"/>', SHARED["isFlag"],
                                             FIELDS, ("flag",)))
        self.write("cases.csv", "flag\ntrue\nfalse\n1\n0\n")
        self.expect(self.run_host("score", "d.pmml", "cases.csv", "--plain"), 0, "y\n2\n0\n2\n0\n", "")

    def test_names_and_values_of_any_kind(self):
        name = "a &lt; &quot;\u00e4\u65e5&quot; &amp;#10; b"
        field = derived(name, '<Constant>1</Constant>', more=f'<Extension name="{name}">]]&gt;</Extension>')
        self.write("d.pmml", self.regression(f'<NumericPredictor name="{name}" coefficient="3"/>', field, schema=()))
        self.write("cases.csv", "x\n0\n")
        self.expect(self.run_host("score", "d.pmml", "cases.csv", "--plain"), 0, "y\n3\n", "")
        latin = self.regression('<NumericPredictor name="Größe" coefficient="3"/>', derived("Größe", ref("x")))
        self.write("d.pmml", latin)
        self.write("cases.csv", "x\n2\n")
        self.expect(self.run_host("score", "d.pmml", "cases.csv", "--plain", "--encoding", "CP1252"), 0, "y\n6\n", "")

    def test_what_the_library_alone_refuses(self):
        define = '<DefineFunction name="f"><ParameterField name="a"/><FieldRef field="a"/></DefineFunction>'
        self.write("d.pmml", self.regression(self.TERM, define + derived("d", apply("f", ref("x")))))
        self.write("cases.csv", "x\n0\n")
        self.expect(self.run_host("score", "d.pmml", "cases.csv", "--plain"), 1, "",
                    "veltrane: error 260303: Unsupported value 'f' of attribute 'function'.\nveltrane: d.pmml: the library "
                    "alone reads no functions that a document defines itself (DefineFunction)\n")

    def test_a_function_of_the_document_serves_the_model_s_own_fields_still(self):
        define = ('<DefineFunction name="f"><ParameterField name="a"/>' + apply("+", ref("a"), "<Constant>1</Constant>")
                  + "</DefineFunction>")
        local = f'<LocalTransformations>{derived("e", apply("f", ref("d")))}</LocalTransformations><RegressionTable '
        self.write("d.pmml", self.regression('<NumericPredictor name="e" coefficient="1"/>', define + self.NORMAL)
                   .replace("<RegressionTable ", local))
        self.write("cases.csv", "x\n0\n")
        self.expect(self.run_host("score", "d.pmml", "cases.csv", "--plain"), 0, "y\n1.5\n", "")

    def test_one_of_several_models(self):
        other = ('<RegressionModel functionName="regression" modelName="first"><MiningSchema><MiningField name="x"/>'
                 '</MiningSchema><RegressionTable intercept="5"/></RegressionModel>')
        self.write("d.pmml", self.regression(self.TERM, self.NORMAL, more=other))
        self.write("cases.csv", "x\n0\n")
        for model, written in (("first", "prediction\n5\n"), ("it", "y\n1\n")):
            self.expect(self.run_host("score", "d.pmml", "cases.csv", "--plain", "--model", model), 0, written, "")

    def test_a_document_without_derived_fields_is_scored_as_ever(self):
        self.write("d.pmml", self.regression('<NumericPredictor name="x" coefficient="2"/>', "")
                   .replace("<TransformationDictionary></TransformationDictionary>", ""))
        self.write("cases.csv", "x\n2\n")
        self.expect(self.run_host("score", "d.pmml", "cases.csv", "--plain"), 0, "y\n4\n", "")

    def test_a_document_that_cannot_be_read_is_refused_as_ever(self):
        for content in (b"", b"<PMML>", b"<PMML/>"):
            self.write("d.pmml", content)
            refused = self.run_host("score", "d.pmml", "cases.csv")
            self.expect(self.run_host("score", "d.pmml", "cases.csv", "--plain"), 1, refused.stdout, refused.stderr.decode())


if __name__ == "__main__":
    unittest.main()
