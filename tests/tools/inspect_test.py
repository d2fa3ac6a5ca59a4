"""`veltrane inspect`."""
import json
import unittest

from host_command import AGE, NAME, PROJECT, HostTest, document, field_ref, number_field, text_ref

FIELDS = [
    '<DataField name="Age" displayName="Age in years" optype="continuous" dataType="integer">'
    '<Interval closure="closedOpen" leftMargin="0" rightMargin="120"/></DataField>',
    '<DataField name="Size" optype="ordinal" dataType="string"><Value value="S" displayValue="small"/><Value value="L"/>'
    '<Value value="?" property="missing"/></DataField>',
    '<DataField name="Day" optype="continuous" dataType="dateDaysSince[1960]">'
    '<Value value="3653" property="missing"/></DataField>',
]
DERIVED = (field_ref("Copy", "Age", more=' mapMissingTo="-1"') + text_ref("日本", "Size")
           + '<DerivedField name="C" optype="continuous" dataType="double"><Constant>1.5</Constant></DerivedField>'
           '<DerivedField name="N" displayName="scaled" optype="continuous" dataType="double"><NormContinuous field="Age">'
           '<LinearNorm orig="0" norm="0"/><LinearNorm orig="120" norm="1"/></NormContinuous></DerivedField>'
           '<DerivedField name="I" optype="continuous" dataType="double"><NormDiscrete field="Size" value="S"/></DerivedField>'
           '<DerivedField name="B" optype="categorical" dataType="string"><Discretize field="Age">'
           '<DiscretizeBin binValue="x"><Interval closure="openOpen" leftMargin="1"/></DiscretizeBin></Discretize>'
           "</DerivedField>"
           '<DerivedField name="M" optype="continuous" dataType="double"><MapValues outputColumn="o">'
           '<FieldColumnPair field="Size" column="i"/><InlineTable><row><i>S</i><o>1</o></row></InlineTable></MapValues>'
           "</DerivedField>"
           '<DerivedField name="A" optype="continuous" dataType="double"><Apply function="+"><FieldRef field="Age"/>'
           "<Constant>1</Constant></Apply></DerivedField>"
           '<DerivedField name="L" optype="continuous" dataType="double"><Lag field="Age"/></DerivedField>')

TABLES = """\
Fields

name  label         type                 level       values
----  ------------  -------------------  ----------  ----------------------
Age   Age in years  integer              continuous  [0, 120)
Size  Size          string               ordinal     S=small, L; missing: ?
Day   Day           dateDaysSince[1960]  continuous  missing: 3653

Derived fields

name  label   type    level        values  expression      formula
----  ------  ------  -----------  ------  --------------  -----------------------------
Copy  Copy    double  continuous           FieldRef        ifMissing(Age, -1)
日本  日本    string  categorical          FieldRef        Size
C     C       double  continuous           Constant        1.5
N     scaled  double  continuous           NormContinuous  linear(Age: 0 -> 0, 120 -> 1)
I     I       double  continuous           NormDiscrete    indicator(Size = "S")
B     B       string  categorical          Discretize      bins(Age: > 1 -> "x")
M     M       double  continuous           MapValues       map(Size: "S" -> 1)
A     A       double  continuous           Apply           Age + 1
L     L       double  continuous           Lag             lag(Age, 1)
"""

PLAIN_TABLES = """\
Fields

name  label         type                 level       missing values  categories
----  ------------  -------------------  ----------  --------------  ----------
Age   Age in years  integer              continuous  < 0, >= 120
Size  Size          string               ordinal     ?               S=small, L
Day   Day           dateDaysSince[1960]  continuous  1970-01-01

Derived fields

name  label   type    level        missing values  categories  expression      source
----  ------  ------  -----------  --------------  ----------  --------------  -------
Copy  Copy    double  continuous                               FieldRef        Age
日本  日本    string  categorical                              FieldRef        Size
C     C       double  continuous                               Constant        1.5
N     scaled  double  continuous                               NormContinuous  Age
I     I       double  continuous                               NormDiscrete    Size
B     B       string  categorical                  x           Discretize      Age
M     M       double  continuous                               MapValues       Size
A     A       double  continuous                               Apply           Age + 1
L     L       double  continuous                               Lag             Age
"""


class Functions(HostTest):
    def tables(self):
        """The lines of the table of the standard and of that of the library, each with its headings."""
        shown = self.expect(self.run_host("functions"), 0, err="").stdout.decode()
        standard, library = shown.split("\nFunctions of the library alone:\n\n")
        head = "Functions of PMML 4.4, with the meaning of the standard:\n\n"
        self.assertTrue(standard.startswith(head))
        return standard[len(head):].splitlines(), library.splitlines()

    def test_every_name_has_a_line(self):
        _, lines = self.tables()
        self.assertEqual(len(lines), 2 + 79)
        self.assertEqual(lines[0].split(), ["name", "also", "arguments", "result", "missing"])
        self.assertRegex(lines[2 + 7], r"^log10 +lg10 +a number +the logarithm to base 10 +missing unless ")
        self.assertRegex(lines[2 + 61], r"^substr +a text, a number ")

    def test_every_function_of_the_standard_has_a_line(self):
        lines, _ = self.tables()
        self.assertEqual(lines[0].split(), ["name", "arguments", "result", "missing"])
        names = (PROJECT / "tests/standard/function_rows.py").read_text().split('NAMES = """')[1].split('"""')[0].split()
        self.assertEqual(sorted(line.split()[0] for line in lines[2:]), sorted(names))
        shown = "\n".join(lines)
        for row in (r"/ +2 numbers +the quotient of two numbers, of integers too +missing when an argument is missing or the ",
                    r"median +any number of numbers +the median; ", r"and +2 truth values or more +whether all are true +missing ",
                    r"not +a truth value ", r"if +2 to 3 values of any kind ", r"isMissing +a value of any kind ",
                    r"replace +3 texts ", r"dateDaysSinceYear +2 values, a date or time first ",
                    r"dateSecondsSinceMidnight +a date or time "):
            self.assertRegex(shown, f"(?m)^{row}")

    def test_those_that_turn_ascii_letters_only_say_so(self):
        shown = "\n".join(self.tables()[1])
        for name, form in (("lowercase", "lower"), ("uppercase", "upper")):
            self.assertRegex(shown, rf"(?m)^{name} .* the text with its ASCII letters in {form} case; other letters stay as "
                                    "they are ")
        derived = "".join(f'<DerivedField name="{name}" optype="categorical" dataType="string">'
                          f'<Apply function="{name}"><FieldRef field="Name"/></Apply></DerivedField>'
                          for name in ("lowercase", "uppercase"))
        self.expect(self.transform("Name\nÄpfel ÀÉ é\n", "--plain", fields=[NAME], derived=derived), 0,
                    "lowercase,uppercase\nÄpfel ÀÉ é,ÄPFEL ÀÉ é\n", "")
        self.expect(self.transform("Name\nÄpfel ÀÉ é\n", fields=[NAME], derived=derived), 0,
                    "lowercase,uppercase\näpfel àé é,ÄPFEL ÀÉ É\n", "")

    def test_nothing_else_is_taken(self):
        self.assertEqual(self.run_host("functions", "more").returncode, 2)


class Inspect(HostTest):
    def test_tables_are_aligned_in_terminal_columns(self):
        self.document(FIELDS, DERIVED)
        self.expect(self.run_host("inspect", "document.pmml"), 0, TABLES, "")

    def test_json_shows_the_same(self):
        self.document(FIELDS, DERIVED)
        result = self.expect(self.run_host("inspect", "document.pmml", "--json"), 0, err="")
        shown = json.loads(result.stdout)
        self.assertEqual(list(shown), ["fields", "derivedFields", "functions"])
        self.assertEqual(shown["fields"], [
            {"name": "Age", "label": "Age in years", "type": "integer", "level": "continuous", "missingValues": [],
             "categories": [], "invalidValues": [],
             "ranges": [{"low": 0, "lowIncluded": True, "high": 120, "highIncluded": False}]},
            {"name": "Size", "label": "Size", "type": "string", "level": "ordinal", "missingValues": ["?"],
             "categories": [{"value": "S", "label": "small"}, {"value": "L", "label": "L"}], "invalidValues": [],
             "ranges": []},
            {"name": "Day", "label": "Day", "type": "dateDaysSince[1960]", "level": "continuous",
             "missingValues": [3653], "categories": [], "invalidValues": [], "ranges": []}])
        self.assertEqual([(field["name"], field["expression"], field["source"]) for field in shown["derivedFields"]], [
            ("Copy", "FieldRef", "Age"), ("日本", "FieldRef", "Size"), ("C", "Constant", "1.5"),
            ("N", "NormContinuous", "Age"), ("I", "NormDiscrete", "Size"), ("B", "Discretize", "Age"),
            ("M", "MapValues", "Size"), ("A", "Apply", ""), ("L", "Lag", "Age")])
        self.assertEqual(list(shown["derivedFields"][0]), ["name", "label", "type", "level", "missingValues",
                                                           "categories", "invalidValues", "ranges", "expression",
                                                           "source", "formula", "local"])
        self.assertEqual({field["local"] for field in shown["derivedFields"]}, {False})
        self.assertEqual(shown["functions"], [])

    def test_long_lists_are_cut_in_tables_and_whole_in_json(self):
        values = "".join(f'<Value value="v{i}"/>' for i in range(40))
        self.document([f'<DataField name="F" optype="categorical" dataType="string">{values}</DataField>'],
                      text_ref("G", "F"))
        out = self.run_host("inspect", "document.pmml").stdout.decode()
        self.assertIn("v0, v1, v2, v3, v4, v5, ... (40)\n", out)
        shown = json.loads(self.run_host("inspect", "document.pmml", "--json").stdout)
        self.assertEqual(len(shown["fields"][0]["categories"]), 40)

    def test_types_without_a_kind_of_number(self):
        self.document([AGE.replace("double", "float"), NAME.replace("string", "boolean")], field_ref("E", "Age"))
        shown = json.loads(self.run_host("inspect", "document.pmml", "--json").stdout)
        self.assertEqual([field["type"] for field in shown["fields"]], ["float", "boolean"])

    def test_a_document_without_derived_fields_is_shown_and_fails(self):
        self.document([AGE], "")
        result = self.run_host("inspect", "document.pmml")
        self.expect(result, 1, err="veltrane: document.pmml: the document has no derived fields\n")
        self.assertIn("Age   double  continuous", result.stdout.decode())
        result = self.run_host("inspect", "document.pmml", "--json")
        self.expect(result, 1, err="veltrane: document.pmml: the document has no derived fields\n")
        self.assertEqual(json.loads(result.stdout)["derivedFields"], [])

    def kord(self, variables, head=""):
        self.write("old model.xml", f"{head}<kord-ml version='1'><dictionary>{variables}</dictionary></kord-ml>")

    def test_the_dictionary_of_a_document_with_the_root_kord_ml(self):
        self.kord("<variable name='Größe' label='height' storage-type='NUMERIC' measurement-level='CONTINUOUS'>"
                  "<missing-values><category value='-1'/><range><category value='900'/><category value='999'/></range>"
                  "</missing-values></variable>"
                  "<variable name='color' storage-type='STRING' measurement-level='NOMINAL'><categories>"
                  "<category value='r' display-value='red'/><category value='g'/></categories></variable>")
        result = self.expect(self.run_host("inspect", "old model.xml", "--json"), 0, err="")
        self.assertEqual(json.loads(result.stdout), {"fields": [
            {"name": "Größe", "label": "height", "type": "number", "level": "continuous",
             "missingValues": [-1, {"low": 900, "lowIncluded": True, "high": 999, "highIncluded": True}],
             "categories": []},
            {"name": "color", "label": "color", "type": "string", "level": "categorical", "missingValues": [],
             "categories": [{"value": "r", "label": "red"}, {"value": "g", "label": "g"}]}], "derivedFields": []})
        tables = self.expect(self.run_host("inspect", "old model.xml"), 0, err="").stdout.decode()
        self.assertIn("Größe  height  number  continuous   -1, [900, 999]", tables)
        self.assertIn("color  color   string  categorical                  r=red, g", tables)

    def test_a_document_with_the_root_kord_ml_that_cannot_be_read(self):
        self.kord("")
        self.expect(self.run_host("inspect", "old model.xml"), 1, "",
                    "veltrane: error 260283: No child element in Node 'dictionary'.\n")
        self.kord("<variable name='v' storage-type='NUMERIC' measurement-level='ORDINAL'><format-spec/></variable>")
        self.expect(self.run_host("inspect", "old model.xml"), 1, "",
                    "veltrane: old model.xml: a format-spec has decimals or a width that is no integer\n")

    def test_a_document_with_the_root_kord_ml_reaches_for_nothing_else(self):
        self.write("secret", "stolen")
        self.kord("<variable name='v' label='&e;' storage-type='STRING' measurement-level='ORDINAL'/>",
                  "<!DOCTYPE kord-ml [<!ENTITY e SYSTEM 'secret'>]>")
        result = self.run_host("inspect", "old model.xml")
        self.assertEqual(result.returncode, 1)
        self.assertNotIn(b"stolen", result.stdout + result.stderr)
        self.write("secret.dtd", "<!ENTITY e 'stolen'>")
        self.kord("<variable name='v' label='&e;' storage-type='STRING' measurement-level='ORDINAL'/>",
                  "<!DOCTYPE kord-ml SYSTEM 'secret.dtd'>")
        result = self.run_host("inspect", "old model.xml")
        self.assertNotIn(b"stolen", result.stdout)

    def test_tables_are_written_in_the_encoding_and_json_in_utf_8(self):
        self.document([number_field("Größe")], field_ref("Maß", "Größe"))
        tables = self.expect(self.run_host("inspect", "document.pmml", "--encoding", "CP1252"), 0, err="")
        self.assertIn("Größe  double", tables.stdout.decode("cp1252"))
        shown = json.loads(self.run_host("inspect", "document.pmml", "--encoding", "CP1252", "--json").stdout.decode())
        self.assertEqual(shown["derivedFields"][0]["source"], "Größe")


class Plain(HostTest):
    """A document as the library alone reads it."""

    def test_tables_are_aligned_in_terminal_columns(self):
        self.document(FIELDS, DERIVED)
        self.expect(self.run_host("inspect", "--plain", "document.pmml"), 0, PLAIN_TABLES, "")

    def test_json_shows_the_same(self):
        self.document(FIELDS, DERIVED)
        result = self.expect(self.run_host("inspect", "--plain", "document.pmml", "--json"), 0, err="")
        shown = json.loads(result.stdout)
        self.assertEqual(list(shown), ["fields", "derivedFields"])
        self.assertEqual(shown["fields"], [
            {"name": "Age", "label": "Age in years", "type": "integer", "level": "continuous",
             "missingValues": [{"low": None, "lowIncluded": True, "high": 0, "highIncluded": False},
                               {"low": 120, "lowIncluded": True, "high": None, "highIncluded": True}],
             "categories": []},
            {"name": "Size", "label": "Size", "type": "string", "level": "ordinal", "missingValues": ["?"],
             "categories": [{"value": "S", "label": "small"}, {"value": "L", "label": "L"}]},
            {"name": "Day", "label": "Day", "type": "dateDaysSince[1960]", "level": "continuous",
             "missingValues": ["1970-01-01"], "categories": []}])
        self.assertEqual([(field["name"], field["expression"], field["source"]) for field in shown["derivedFields"]], [
            ("Copy", "FieldRef", "Age"), ("日本", "FieldRef", "Size"), ("C", "Constant", "1.5"),
            ("N", "NormContinuous", "Age"), ("I", "NormDiscrete", "Size"), ("B", "Discretize", "Age"),
            ("M", "MapValues", "Size"), ("A", "Apply", ""), ("L", "Lag", "Age")])
        self.assertEqual([field.get("formula") for field in shown["derivedFields"]], [None] * 7 + ["Age + 1", None])
        self.assertEqual(list(shown["derivedFields"][0]), ["name", "label", "type", "level", "missingValues",
                                                           "categories", "expression", "source"])

    def test_a_field_without_an_expression(self):
        self.document([AGE], '<DerivedField name="E" optype="continuous" dataType="double"/>')
        shown = json.loads(self.run_host("inspect", "--plain", "document.pmml", "--json").stdout)
        self.assertEqual((shown["derivedFields"][0]["expression"], shown["derivedFields"][0]["source"]), ("", ""))

    def test_types_without_a_kind_of_number(self):
        self.document([AGE.replace("double", "float"), NAME], field_ref("E", "Age"))
        shown = json.loads(self.run_host("inspect", "--plain", "document.pmml", "--json").stdout)
        self.assertEqual([field["type"] for field in shown["fields"]], ["number", "string"])

    def test_a_document_without_derived_fields_is_shown_and_fails(self):
        self.document([AGE], "")
        result = self.run_host("inspect", "--plain", "document.pmml")
        self.expect(result, 1, err="veltrane: document.pmml: the document has no derived fields\n")
        self.assertIn("Age   Age    double  continuous", result.stdout.decode())
        result = self.run_host("inspect", "--plain", "document.pmml", "--json")
        self.expect(result, 1, err="veltrane: document.pmml: the document has no derived fields\n")
        self.assertEqual(json.loads(result.stdout)["derivedFields"], [])

    def test_a_document_with_a_model_is_shown_without_it(self):
        model = '<TreeModel functionName="regression"><MiningSchema/></TreeModel>'
        self.write("d.pmml", document([AGE], field_ref("Out", "Age")).replace("</PMML>", model + "</PMML>"))
        shown = json.loads(self.expect(self.run_host("inspect", "d.pmml", "--plain", "--json"), 0, err="").stdout)
        self.assertEqual(list(shown), ["fields", "derivedFields"])
        for option in ("--model", "--models"):
            self.expect(self.run_host("inspect", "d.pmml", "--plain", option, "1"), 2, "",
                        f"veltrane: {option} excludes --plain\nRun with --help for more information.\n")

    def test_a_document_with_the_root_kord_ml_is_shown_the_same(self):
        self.write("old.xml", "<kord-ml><dictionary><variable name='v' storage-type='STRING' measurement-level='ORDINAL'/>"
                              "</dictionary></kord-ml>")
        shown = self.expect(self.run_host("inspect", "old.xml"), 0, err="").stdout
        self.expect(self.run_host("inspect", "old.xml", "--plain"), 0, shown, "")


class Roads(HostTest):
    """What `inspect` takes and refuses is what `transform` does, in the same words, by either road."""

    EXPRESSIONS = {
        "a function of PMML alone": '<Apply function="hypot"><FieldRef field="Age"/><FieldRef field="Age"/></Apply>',
        "an expression in an expression": '<Apply function="+"><Constant>1</Constant><NormContinuous field="Age">'
                                          '<LinearNorm orig="0" norm="0"/><LinearNorm orig="1" norm="2"/></NormContinuous>'
                                          "</Apply>",
        "a word count": '<TextIndex textField="Name"><Constant>a</Constant></TextIndex>',
        "a sum of cases before": '<Lag field="Age" n="3" aggregate="sum"/>',
        "a function of the document": '<Apply function="twice"><FieldRef field="Age"/></Apply>',
        "a told function": '<Apply function="cdf.normal"><FieldRef field="Age"/><Constant>0</Constant>'
                           "<Constant>1</Constant></Apply>",
        "a misspelt function": '<Apply function="sqroot"><FieldRef field="Age"/></Apply>',
        "too few arguments": '<Apply function="if"><FieldRef field="Age"/></Apply>',
        "no arguments": '<Apply function="sum"/>',
        "no expression": "",
        "a field that isn't there": '<FieldRef field="none"/>',
        "points that go down": '<NormContinuous field="Age"><LinearNorm orig="1" norm="0"/><LinearNorm orig="0" norm="1"/>'
                               "</NormContinuous>",
        "an unknown word": '<Lag field="Age" aggregate="mode"/>',
        "a misplaced element": '<FieldRef field="Age"/><Array/>',
    }
    TWICE = ('<DefineFunction name="twice"><ParameterField name="a"/><Apply function="*"><FieldRef field="a"/>'
             "<Constant>2</Constant></Apply></DefineFunction>")
    REFUSED_BY_PMML = {"a told function", "a misspelt function", "too few arguments", "no arguments", "no expression",
                       "a field that isn't there", "points that go down", "an unknown word", "a misplaced element"}

    def answers(self, expression, *options):
        field = f'<DerivedField name="d" optype="continuous" dataType="double">{expression}</DerivedField>'
        self.document([AGE, NAME], self.TWICE * ("twice" in expression) + field)
        self.write("cases.csv", "Age,Name\n1,a\n")
        transformed = self.run_host("transform", "document.pmml", "cases.csv", *options)
        inspected = self.run_host("inspect", "document.pmml", *options)
        self.assertEqual((inspected.returncode, inspected.stderr), (transformed.returncode, transformed.stderr))
        return inspected

    def test_the_meaning_of_pmml(self):
        refused = {name for name, expression in self.EXPRESSIONS.items() if self.answers(expression).returncode == 1}
        self.assertEqual(refused, self.REFUSED_BY_PMML)

    def test_the_library_alone(self):
        refused = {name for name, expression in self.EXPRESSIONS.items()
                   if self.answers(expression, "--plain").returncode == 1}
        self.assertEqual(set(self.EXPRESSIONS) - refused,
                         {"a told function", "too few arguments", "no arguments", "no expression",
                          "points that go down", "a sum of cases before", "an unknown word"})


if __name__ == "__main__":
    unittest.main()
