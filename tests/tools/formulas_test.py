"""The formulas in which `veltrane inspect` shows expressions, and that it takes every kind of them."""
import json
import unittest

from host_command import NAME, HostTest, X, model_document, number_field

FIELDS = [X, NAME, number_field("Age"), '<DataField name="Size" optype="ordinal" dataType="string"/>',
          '<DataField name="Flag" optype="categorical" dataType="boolean"/>',
          '<DataField name="Day" optype="continuous" dataType="date"/>']
REF = '<FieldRef field="x"/>'
TEXT = '<FieldRef field="Name"/>'


def apply(function, *arguments, more=""):
    return f'<Apply function="{function}"{more}>{"".join(arguments)}</Apply>'


def constant(text, kind="double"):
    return f'<Constant dataType="{kind}">{text}</Constant>'


def table(*rows):
    return "<InlineTable>" + "".join(
        "<row>" + "".join(f"<{name}>{text}</{name}>" for name, text in row.items()) + "</row>" for row in rows) + "</InlineTable>"


class Formulas(HostTest):
    """Of documents without a model; each is a document that `transform` takes."""

    def inspect(self, derived):
        self.document(FIELDS, derived)
        return json.loads(self.expect(self.run_host("inspect", "document.pmml", "--json"), 0, err="").stdout)

    def shows(self, formulas, kind="double", level="continuous"):
        for expression, formula in formulas.items():
            with self.subTest(formula):
                shown = self.inspect(f'<DerivedField name="d" optype="{level}" dataType="{kind}">{expression}</DerivedField>')
                self.assertEqual(shown["derivedFields"][0]["formula"], formula)
                self.assertEqual(shown["derivedFields"][0]["expression"], expression[1:].split()[0].split(">")[0].strip("/"))

    def test_fields_and_constants(self):
        self.shows({
            REF: "x",
            '<FieldRef field="x" mapMissingTo="-1"/>': "ifMissing(x, -1)",
            "<Constant> 1.50\n</Constant>": "1.50",
            '<Constant dataType="integer">+5</Constant>': "+5",
            '<Constant missing="1"/>': "missing",
        })

    def test_a_constant_is_of_the_type_that_it_states_or_of_that_of_its_field(self):
        self.shows({"<Constant>1</Constant>": '"1"', constant("1"): "1", '<FieldRef field="Name" mapMissingTo="5"/>':
                    'ifMissing(Name, "5")', apply("concat", "<Constant>1</Constant>", TEXT): "concat(1, Name)"},
                   "string", "categorical")
        self.shows({"<Constant>true</Constant>": "true", "<Constant>1</Constant>": "1",
                    apply("not", "<FieldRef field='Flag' mapMissingTo='true'/>"): "not(ifMissing(Flag, true))"},
                   "boolean", "categorical")
        self.shows({"<Constant>2024-02-29</Constant>": '"2024-02-29"'}, "date")

    def test_what_looks_values_up(self):
        self.shows({
            '<NormContinuous field="x" outliers="asMissingValues" mapMissingTo="0"><LinearNorm orig="0" norm="1"/>'
            '<LinearNorm orig="1" norm="3"/></NormContinuous>':
                "linear(x: 0 -> 1, 1 -> 3; missing 0; outliers asMissingValues)",
            '<NormDiscrete field="Size" value="5"/>': 'indicator(Size = "5")',
            '<NormDiscrete field="x" value="5" mapMissingTo="0"/>': "indicator(x = 5; missing 0)",
            '<Discretize field="x" defaultValue="2"><DiscretizeBin binValue="1"><Interval closure="openClosed" leftMargin="0" '
            'rightMargin="1"/></DiscretizeBin></Discretize>': "bins(x: (0, 1] -> 1; else 2)",
            '<MapValues outputColumn="o" defaultValue="9"><FieldColumnPair field="Size" column="a"/>'
            '<FieldColumnPair field="x" column="b"/>' + table({"a": 1, "b": 2, "o": 3}, {"a": 4, "b": 5}) + "</MapValues>":
                'map(Size, x: "1", 2 -> 3, "4", 5 -> missing; else 9)',
        })
        self.shows({
            '<Discretize field="x"><DiscretizeBin binValue="1"><Interval closure="openOpen" leftMargin="0"/></DiscretizeBin>'
            "</Discretize>": 'bins(x: > 0 -> "1")',
            '<MapValues outputColumn="o" dataType="integer" mapMissingTo="0"><FieldColumnPair field="x" column="a"/>'
            + table({"a": 1, "o": 2}) + "</MapValues>": "map(x: 1 -> 2; missing 0)",
        }, "string", "categorical")

    def test_what_looks_at_other_cases(self):
        self.shows({
            '<Lag field="x"/>': "lag(x, 1)",
            '<Lag field="x" n="3" aggregate="stddev"><BlockIndicator field="Name"/></Lag>': "lag(x, 3, stddev within Name)",
            '<Aggregate field="x" function="average" groupField="Name"/>': "average(x by Name)",
        })

    def test_operators_stand_between_their_arguments(self):
        self.shows({apply("/", apply("-", REF, constant("2.5")), constant("3")): "(x - 2.5) / 3"})

    def test_functions_stand_in_front_of_theirs(self):
        self.shows({apply("sum", REF, apply("*", REF, REF), constant("1")): "sum(x, x * x, 1)",
                    apply("hypot", REF, constant("3")): "hypot(x, 3)"})

    def test_texts_are_quoted(self):
        self.shows({apply("if", apply("equal", TEXT, constant("S", "string")), constant("a", "string"),
                          constant("b", "string")): 'if(equal(Name, "S"), "a", "b")',
                    apply("formatNumber", REF, constant("%5d", "string")): 'formatNumber(x, "%5d")'}, "string", "categorical")

    def test_any_expression_is_an_argument(self):
        self.shows({apply("+", '<NormDiscrete field="Size" value="S"/>', '<Lag field="x"/>'):
                    'indicator(Size = "S") + lag(x, 1)'})

    def test_what_stands_for_missing_arguments_is_told_from_what_stands_for_a_missing_result(self):
        """The function isn't applied to missing arguments for which there is a replacement: isMissing gives it too."""
        self.shows({
            apply("-", REF, REF, more=' mapMissingTo="0"'): "(x - x; missing 0)",
            apply("-", REF, REF, more=' defaultValue="1"'): "ifMissing(x - x, 1)",
            apply("-", REF, REF, more=' mapMissingTo="0" defaultValue="1"'): "ifMissing((x - x; missing 0), 1)",
            apply("isMissing", REF, more=' mapMissingTo="7"'): "isMissing(x; missing 7)",
            apply("*", apply("-", REF, REF, more=' defaultValue="1"'), REF): "ifMissing(x - x, 1) * x",
        })
        self.shows({apply("uppercase", TEXT, more=' defaultValue="1"'): 'ifMissing(uppercase(Name), "1")'}, "string",
                   "categorical")

    def test_what_stands_for_a_result_is_of_its_type(self):
        """Texts are quoted, also those that write numbers."""
        truth = apply("isMissing", REF)
        seven, missing = ' mapMissingTo="007"', '<Constant missing="true"/>'
        self.shows({
            apply("if", truth, TEXT, TEXT, more=seven): 'if(isMissing(x), Name, Name; missing "007")',
            apply("if", truth, TEXT, more=' defaultValue="007"'): 'ifMissing(if(isMissing(x), Name), "007")',
            apply("if", truth, missing, TEXT, more=seven): 'if(isMissing(x), missing, Name; missing "007")',
            apply("if", truth, constant("a", "string"), more=seven): 'if(isMissing(x), "a"; missing "007")',
            apply("if", truth, apply("concat", TEXT, REF), more=seven): 'if(isMissing(x), concat(Name, x); missing "007")',
            apply("if", truth, '<Lag field="Name"/>', more=seven): 'if(isMissing(x), lag(Name, 1); missing "007")',
            apply("if", truth, '<MapValues outputColumn="o"><FieldColumnPair field="x" column="i"/>' + table({"i": 1, "o": "a"})
                  + "</MapValues>", more=seven): 'if(isMissing(x), map(x: 1 -> "a"); missing "007")',
            apply("concat", apply("if", truth, TEXT, more=seven), TEXT): 'concat(if(isMissing(x), Name; missing "007"), Name)',
            apply("if", truth, TEXT, REF, more=seven): 'if(isMissing(x), Name, x; missing "007")',
            apply("concat", apply("if", truth, TEXT, REF, more=seven), TEXT): "concat(if(isMissing(x), Name, x; missing 007), Name)",
            apply("concat", apply("if", truth, REF, more=seven), TEXT): "concat(if(isMissing(x), x; missing 007), Name)",
            apply("concat", apply("equal", TEXT, TEXT, more=' mapMissingTo="0"'), TEXT): "concat(equal(Name, Name; missing 0), Name)",
            apply("concat", apply("equal", TEXT, TEXT, more=seven), TEXT): "concat(equal(Name, Name; missing 007), Name)",
            apply("if", truth, '<FieldRef field="Day"/>', more=' defaultValue="2020-1-2"'):
                'ifMissing(if(isMissing(x), Day), "2020-1-2")',
            apply("if", truth, '<FieldRef field="Day"/>', more=' defaultValue="007"'): "ifMissing(if(isMissing(x), Day), 007)",
            apply("concat", apply("+", REF, REF, more=' mapMissingTo="none"'), TEXT): 'concat((x + x; missing "none"), Name)',
        }, "string", "categorical")

    def test_word_counts(self):
        self.shows({
            '<TextIndex textField="Name"><Constant>1</Constant></TextIndex>': 'textIndex(Name, "1")',
            '<TextIndex textField="Name" localTermWeights="binary" countHits="bestHits" isCaseSensitive="true" '
            'maxLevenshteinDistance="1" wordSeparatorCharacterRE="[,]" tokenize="false"><FieldRef field="Size"/></TextIndex>':
                "textIndex(Name, Size; binary; bestHits; case sensitive; distance 1; words parted by /[,]/; no tokens)",
            '<TextIndex textField="Name"><TextIndexNormalization>' + table({"string": "cars", "stem": "car"}) +
            '</TextIndexNormalization><TextIndexNormalization recursive="true" inField="a" outField="b" regexField="c" '
            'isCaseSensitive="false">' + table({"a": "x+", "b": "x", "c": "true"}, {"a": "y", "b": "z", "c": "false"}) +
            "</TextIndexNormalization><Constant>car</Constant></TextIndex>":
                'textIndex(Name, "car"; replaces("cars" -> "car"); replacesAgainAndAgain(/x+/ -> "x", "y" -> "z"; '
                "case insensitive))",
        })
        self.assertEqual(self.inspect('<DerivedField name="d" optype="continuous" dataType="double"><TextIndex '
                                      'textField="Name"><Constant>a</Constant></TextIndex></DerivedField>')
                         ["derivedFields"][0]["source"], "Name")


class OwnFunctions(HostTest):
    """What a document defines itself."""

    TWICE = ('<DefineFunction name="scaled" optype="continuous" dataType="string"><ParameterField name="a" optype="continuous" '
             'dataType="double"/><ParameterField name="x" displayName="factor" dataType="string"/>'
             + apply("*", '<FieldRef field="a" mapMissingTo="1"/>', '<FieldRef field="x" mapMissingTo="1"/>')
             + "</DefineFunction>")
    CALL = ('<DerivedField name="d" optype="categorical" dataType="string">'
            + apply("scaled", REF, constant("3"), more=' defaultValue="0"') + "</DerivedField>")

    def expect_shown(self, shown):
        self.assertEqual(shown["derivedFields"][0]["formula"], 'ifMissing(scaled(x, 3), "0")')
        self.assertEqual(shown["functions"], [
            {"name": "scaled", "type": "string", "level": "continuous",
             "parameters": [{"name": "a", "label": "a", "type": "double", "level": "continuous"},
                            {"name": "x", "label": "factor", "type": "string", "level": ""}],
             "formula": 'ifMissing(a, 1) * ifMissing(x, "1")'}])

    def test_of_a_document_without_a_model(self):
        self.document(FIELDS, self.TWICE + self.CALL)
        self.expect_shown(json.loads(self.expect(self.run_host("inspect", "document.pmml", "--json"), 0, err="").stdout))
        tables = self.expect(self.run_host("inspect", "document.pmml"), 0, err="").stdout.decode()
        self.assertTrue(tables.endswith(
            "\nFunctions\n\nname    parameters          type    level       formula\n"
            "------  ------------------  ------  ----------  -----------------------------------\n"
            'scaled  a double, x string  string  continuous  ifMissing(a, 1) * ifMissing(x, "1")\n'), tables)

    def test_what_stands_for_the_result_of_one_without_a_type_is_of_its_expressions(self):
        same = ('<DefineFunction name="{0}"><ParameterField name="p" dataType="{1}"/><FieldRef field="p"/></DefineFunction>')
        called = ('<DerivedField name="{0}" optype="categorical" dataType="string">'
                  + apply("concat", apply("{0}", TEXT, more=' mapMissingTo="007"'), TEXT) + "</DerivedField>")
        self.document(FIELDS, same.format("same", "string") + same.format("number", "double") + called.format("same")
                      + called.format("number"))
        shown = json.loads(self.expect(self.run_host("inspect", "document.pmml", "--json"), 0, err="").stdout)
        self.assertEqual([field["formula"] for field in shown["derivedFields"]],
                         ['concat(same(Name; missing "007"), Name)', "concat(number(Name; missing 007), Name)"])

    def test_of_a_document_with_a_model(self):
        model = ('<RegressionModel functionName="regression"><MiningSchema><MiningField name="x"/></MiningSchema>'
                 '<RegressionTable intercept="1"/></RegressionModel>')
        self.write("d.pmml", model_document(f"<TransformationDictionary>{self.TWICE}{self.CALL}</TransformationDictionary>",
                                            model, fields=FIELDS, version="4.4"))
        self.expect_shown(json.loads(self.expect(self.run_host("inspect", "d.pmml", "--json"), 0, err="").stdout))
        tables = self.expect(self.run_host("inspect", "d.pmml"), 0, err="").stdout.decode()
        self.assertIn('\nscaled  a double, x string  string  continuous  ifMissing(a, 1) * ifMissing(x, "1")\n', tables)


if __name__ == "__main__":
    unittest.main()
