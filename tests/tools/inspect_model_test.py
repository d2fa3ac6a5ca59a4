"""`veltrane inspect` of documents with a model."""
import csv
import json
import unittest
from xml.etree import ElementTree

from host_command import NO_MODELS, PROJECT, X, Y, HostTest, dictionary, model_document

LOAN = PROJECT / "examples" / "loan"
SAMPLES = PROJECT / "tests" / "models" / "samples"
REAL = PROJECT.parent / "shared" / "cases" / "models"
DOCUMENTS = sorted([*SAMPLES.glob("*.pmml"), LOAN / "default.pmml", *REAL.glob("*.pmml")])
SIZES = {"nodes": ["Node"], "tables": ["RegressionTable"], "terms": ["NumericPredictor", "CategoricalPredictor",
                                                                    "PredictorTerm", "PCell"]}

EVERYTHING = """\
<?xml version="1.0" encoding="UTF-8"?>
<PMML version="4.4">
  <Header copyright="nobody" description="all that can be said" modelVersion="7">
    <Application name="A tool" version="1.5"/>
    <Timestamp>2024-02-29</Timestamp>
  </Header>
  <DataDictionary>
    <DataField name="age" displayName="Age in years" optype="continuous" dataType="integer">
      <Interval closure="closedOpen" leftMargin="0" rightMargin="120"/>
      <Value value="-1" property="missing"/>
    </DataField>
    <DataField name="size" optype="ordinal" dataType="string">
      <Value value="S" displayValue="small"/><Value value="10"/><Value value="?" property="invalid"/>
    </DataField>
    <DataField name="flag" optype="categorical" dataType="boolean"/>
    <DataField name="day" optype="continuous" dataType="date"/>
    <DataField name="cost" optype="continuous" dataType="double"/>
    <DataField name="note" optype="categorical" dataType="string"/>
  </DataDictionary>
  <TransformationDictionary>
    <DerivedField name="shared" optype="continuous" dataType="double"><FieldRef field="age" mapMissingTo="0"/></DerivedField>
  </TransformationDictionary>
  <RegressionModel modelName="all" functionName="regression" algorithmName="least squares" targetFieldName="cost">
    <MiningSchema>
      <MiningField name="age" missingValueReplacement="40" missingValueTreatment="asMean" importance="0.75"
                   invalidValueTreatment="asValue" invalidValueReplacement="50" outliers="asExtremeValues" lowValue="1"
                   highValue="99"/>
      <MiningField name="size" optype="categorical" missingValueReplacement="10" invalidValueTreatment="asMissing"/>
      <MiningField name="flag" usageType="supplementary" missingValueTreatment="asIs"/>
      <MiningField name="day" usageType="order"/>
      <MiningField name="cost" usageType="predicted"/>
    </MiningSchema>
    <Output>
      <OutputField name="cost" displayName="as it is" optype="continuous" dataType="double" feature="predictedValue"/>
      <OutputField name="twice" optype="continuous" dataType="double" feature="transformedValue">
        <Apply function="*"><FieldRef field="cost"/><Constant>2</Constant></Apply>
      </OutputField>
    </Output>
    <Targets>
      <Target field="cost" min="0" max="1e3" rescaleFactor="2" rescaleConstant="0.5" castInteger="round">
        <TargetValue defaultValue="12"/>
      </Target>
    </Targets>
    <LocalTransformations>
      <DerivedField name="text" displayName="A text" optype="categorical" dataType="string">
        <Discretize field="age" defaultValue="none" mapMissingTo="?">
          <DiscretizeBin binValue="a"><Interval closure="openClosed" leftMargin="1" rightMargin="2"/></DiscretizeBin>
          <DiscretizeBin binValue="b"><Interval closure="openOpen" leftMargin="2"/></DiscretizeBin>
          <DiscretizeBin binValue="c"><Interval closure="closedClosed" rightMargin="1"/></DiscretizeBin>
        </Discretize>
        <Value value="a"/>
      </DerivedField>
    </LocalTransformations>
    <RegressionTable intercept="1"><NumericPredictor name="age" coefficient="2"/>
      <CategoricalPredictor name="size" value="S" coefficient="2"/>
      <PredictorTerm coefficient="1"><FieldRef field="age"/><FieldRef field="shared"/></PredictorTerm></RegressionTable>
    <ModelVerification><NumericPredictor/></ModelVerification>
  </RegressionModel>
</PMML>
"""

TABLES = """\
Model

property       value
-------------  --------------------------------
kind           RegressionModel
name           all
function       regression
algorithm      least squares
attributes     targetFieldName=cost
size           tables: 1, terms: 3
document       PMML 4.4, A tool 1.5, 2024-02-29
description    all that can be said
copyright      nobody
model version  7

Inputs

name  label         type     level        role           values                   treatments
----  ------------  -------  -----------  -------------  -----------------------  ---------------------------------------------------------------------------------
age   Age in years  integer  continuous   active         [0, 120); missing: -1    missing -> 40 (asMean); invalid -> 50 (asValue); outliers asExtremeValues [1, 99]
size  size          string   categorical  active         S=small, 10; invalid: ?  missing -> 10; invalid asMissing
flag  flag          boolean  categorical  supplementary
day   day           date     continuous   order

Target

name  type    level       values  adjustment
----  ------  ----------  ------  ------------------------------------------------------------------------------------
cost  double  continuous          min=0, max=1000, rescaleFactor=2, rescaleConstant=0.5, castInteger=round, default 12

Outputs

column          output field  type    level       feature           value
--------------  ------------  ------  ----------  ----------------  --------
predicted cost                                    prediction
cost            cost          double  continuous  predictedValue
twice           twice         double  continuous  transformedValue  cost * 2

Derived fields

name    label   type    level        values  formula
------  ------  ------  -----------  ------  ---------------------------------------------------------------------------
shared  shared  double  continuous           ifMissing(age, 0)
text    A text  string  categorical  a       bins(age: (1, 2] -> "a", > 2 -> "b", <= 1 -> "c"; else "none"; missing "?")
"""


def local(tag):
    return tag.rsplit("}", 1)[-1]


class EveryDocument(HostTest):
    """What is shown agrees with an independent reading of the document, and with what `score` does."""

    def parts(self, path):
        root = ElementTree.parse(path).getroot()
        model = next(child for child in root if local(child.tag) not in NO_MODELS)
        return root, model

    def scored_columns(self, path):
        """The header that `score` writes, or nothing."""
        data = path.with_suffix(".csv")
        cases = data if data.exists() else self.write("none.csv", "no field\n")
        result = self.run_host("score", path, cases, "--quiet", "--missing-columns")
        if result.returncode not in (0, 3):
            return None, result
        return next(csv.reader(result.stdout.decode().splitlines())), result

    def check(self, path):
        root, model = self.parts(path)
        columns, scored = self.scored_columns(path)
        result = self.run_host("inspect", path, "--json")
        shown = json.loads(result.stdout)
        if columns is None:
            self.assertEqual((result.returncode, result.stderr), (scored.returncode, scored.stderr))
        else:
            self.assertEqual((result.returncode, result.stderr), (0, b""))
            self.assertEqual([output["column"] for output in shown["outputs"] if output["column"]], columns)
        self.assertEqual(shown["model"]["kind"], local(model.tag))
        self.assertEqual(shown["model"]["function"], model.get("functionName"))
        self.assertEqual(shown["model"]["algorithm"], model.get("algorithmName", ""))
        self.check_fields(shown, root, model)
        self.check_size(shown["model"]["size"], model)
        if path.stat().st_size > 1_000_000:
            return
        tables = self.run_host("inspect", path)
        self.assertEqual((tables.returncode, tables.stderr), (result.returncode, result.stderr))
        self.assertIn(f"kind         {local(model.tag)}".split(), [line.split() for line in tables.stdout.decode().splitlines()])

    def check_fields(self, shown, root, model):
        fields = {field.get("name"): field for field in root.iter() if local(field.tag) == "DataField"}
        self.assertEqual([field["name"] for field in shown["fields"]], list(fields))
        schema = next(child for child in model if local(child.tag) == "MiningSchema")
        mining = [field for field in schema if local(field.tag) == "MiningField"]
        targets = [field for field in mining if field.get("usageType") in ("predicted", "target")]
        self.assertEqual([(field["name"], field["role"]) for field in shown["inputs"]],
                         [(field.get("name"), field.get("usageType", "active")) for field in mining if field not in targets])
        self.assertEqual(shown["target"]["name"] if shown["target"] else None, targets[0].get("name") if targets else None)
        for field in shown["inputs"]:
            data = fields[field["name"]]
            self.assertEqual(field["type"], data.get("dataType"))
            self.assertEqual([str(category["value"]) for category in field["categories"]],
                             [value.get("value") for value in data if local(value.tag) == "Value"
                              and value.get("property", "valid") == "valid"])

    def check_size(self, size, model):
        for key, tags in SIZES.items():
            count = sum(1 for element in model.iter() if local(element.tag) in tags)
            self.assertEqual(size.get(key, 0), count, key)
        leaves = [node for node in model.iter() if local(node.tag) == "Node"
                  and not any(local(child.tag) == "Node" for child in node)]
        self.assertEqual(size.get("leaves", 0), len(leaves))


for document in DOCUMENTS:
    setattr(EveryDocument, f"test_{document.parent.name}_{document.stem}".replace("-", "_"),
            lambda self, path=document: self.check(path))


class Sample(HostTest):
    def test_the_tables_of_the_sample(self):
        self.expect(self.run_host("inspect", LOAN / "default.pmml"), 0, (LOAN / "default.inspect.txt").read_bytes(), "")


class Everything(HostTest):
    def test_tables(self):
        self.write("d.pmml", EVERYTHING)
        self.expect(self.run_host("inspect", "d.pmml"), 0, TABLES, "")

    def test_json(self):
        self.write("d.pmml", EVERYTHING)
        shown = json.loads(self.expect(self.run_host("inspect", "d.pmml", "--json"), 0, err="").stdout)
        self.assertEqual(list(shown), ["document", "models", "model", "inputs", "target", "outputs", "fields",
                                       "derivedFields", "functions"])
        self.assertEqual(shown["document"], {
            "format": "PMML", "version": "4.4", "producer": "A tool 1.5", "description": "all that can be said",
            "copyright": "nobody", "modelVersion": "7", "timestamp": "2024-02-29"})
        self.assertEqual(shown["models"], [{"number": 1, "kind": "RegressionModel", "name": "all", "isScorable": True}])
        self.assertEqual(shown["model"], {
            "number": 1, "kind": "RegressionModel", "name": "all", "function": "regression", "algorithm": "least squares",
            "attributes": {"targetFieldName": "cost"}, "size": {"tables": 1, "terms": 3}})
        self.assertEqual(shown["inputs"][0], {
            "name": "age", "label": "Age in years", "type": "integer", "level": "continuous", "missingValues": [-1],
            "categories": [], "invalidValues": [],
            "ranges": [{"low": 0, "lowIncluded": True, "high": 120, "highIncluded": False}], "role": "active",
            "treatments": {"missing": {"replacement": 40, "treatment": "asMean"},
                           "invalid": {"treatment": "asValue", "replacement": 50},
                           "outliers": {"treatment": "asExtremeValues", "low": 1, "high": 99}}, "importance": 0.75})
        self.assertEqual(shown["inputs"][1]["categories"], [{"value": "S", "label": "small"}, {"value": "10", "label": "10"}])
        self.assertEqual(shown["inputs"][1]["invalidValues"], ["?"])
        self.assertEqual(shown["inputs"][1]["treatments"]["missing"], {"replacement": "10"})
        self.assertEqual(shown["inputs"][2]["treatments"], {"missing": {"treatment": "asIs"},
                                                            "invalid": {"treatment": "returnInvalid"}})
        self.assertEqual([shown["target"][key] for key in ("name", "role", "min", "max", "castInteger", "targetValues")],
                         ["cost", "target", 0, 1000, "round", [{"defaultValue": 12}]])
        self.assertEqual(shown["outputs"], [
            {"name": None, "column": "predicted cost", "feature": "prediction"},
            {"name": "cost", "column": "cost", "label": "as it is", "type": "double", "level": "continuous",
             "feature": "predictedValue"},
            {"name": "twice", "column": "twice", "label": "twice", "type": "double", "level": "continuous",
             "feature": "transformedValue", "formula": "cost * 2"}])
        self.assertEqual([field["name"] for field in shown["fields"]], ["age", "size", "flag", "day", "cost", "note"])
        self.assertEqual([(field["name"], field["expression"], field["source"], field["local"])
                          for field in shown["derivedFields"]],
                         [("shared", "FieldRef", "age", False), ("text", "Discretize", "age", True)])

    def test_json_is_utf_8_and_tables_are_in_the_encoding(self):
        self.write("d.pmml", EVERYTHING.replace("A text", "Größe").replace('"twice"', '"Maß"'))
        tables = self.expect(self.run_host("inspect", "d.pmml", "--encoding", "CP1252"), 0, err="").stdout.decode("cp1252")
        self.assertIn("Größe", tables)
        self.assertIn("\nMaß             Maß", tables)
        shown = json.loads(self.run_host("inspect", "d.pmml", "--encoding", "CP1252", "--json").stdout.decode())
        self.assertEqual(shown["outputs"][2]["column"], "Maß")


class Formulas(HostTest):
    """Expressions of local transformations."""

    X = '<FieldRef field="x"/>'

    def formula(self, expression):
        field = f'<DerivedField name="d" optype="continuous" dataType="double">{expression}</DerivedField>'
        self.write("d.pmml", model_document('<TimeSeriesModel functionName="regression"><MiningSchema/><LocalTransformations>'
                                            f"{field}</LocalTransformations></TimeSeriesModel>", fields=[X], version="4.4"))
        result = self.run_host("inspect", "d.pmml", "--json")
        return json.loads(result.stdout)["derivedFields"][0]["formula"]

    def test_each_kind(self):
        row = "<row><a>0</a><b>t</b><o>0</o></row>"
        pairs = '<FieldColumnPair field="x" column="a"/><FieldColumnPair field="t" column="b"/>'
        for expression, formula in {
            "<Constant>1.50</Constant>": "1.50",
            "<Constant>abc</Constant>": '"abc"',
            '<Constant dataType="string">1</Constant>': '"1"',
            '<Constant missing="true"/>': "missing",
            self.X: "x",
            '<FieldRef field="x" mapMissingTo="none"/>': 'ifMissing(x, "none")',
            '<NormContinuous field="x" outliers="asExtremeValues" mapMissingTo="1"><LinearNorm orig="0" norm="0"/>'
            '<LinearNorm orig="10" norm="1"/></NormContinuous>':
                "linear(x: 0 -> 0, 10 -> 1; missing 1; outliers asExtremeValues)",
            '<NormDiscrete field="x" value="S" mapMissingTo="0"/>': 'indicator(x = "S"; missing 0)',
            f'<MapValues outputColumn="o" defaultValue="d" mapMissingTo="m">{pairs}<InlineTable>{row}</InlineTable>'
            "</MapValues>": 'map(x, t: 0, "t" -> 0; else "d"; missing "m")',
            '<Lag field="x"/>': "lag(x, 1)",
            '<Lag field="x" n="3" aggregate="avg"><BlockIndicator field="g"/></Lag>': "lag(x, 3, avg within g)",
            '<Aggregate field="x" function="sum" groupField="g"/>': "sum(x by g)",
            '<TextIndex textField="t"><FieldRef field="x"/></TextIndex>': "textIndex(t, x)",
            "": "",
        }.items():
            self.assertEqual(self.formula(expression), formula)

    def test_long_tables_are_cut(self):
        rows = "".join(f"<row><a>{key}</a><o>{key * 2}</o></row>" for key in range(9))
        self.assertEqual(self.formula('<MapValues outputColumn="o"><FieldColumnPair field="x" column="a"/>'
                                      f"<InlineTable>{rows}</InlineTable></MapValues>"),
                         "map(x: 0 -> 0, 1 -> 2, 2 -> 4, 3 -> 6, 4 -> 8, 5 -> 10, ... (9))")

    def test_applications(self):
        difference = f'<Apply function="-">{self.X}<Constant>1</Constant></Apply>'
        for expression, formula in {
            f'<Apply function="/"><Extension/>{difference}<Constant>2</Constant></Apply>': "(x - 1) / 2",
            f'<Apply function="max">{difference}{self.X}</Apply>': "max(x - 1, x)",
            f'<Apply function="-">{self.X}</Apply>': "-(x)",
            f'<Apply function="+" mapMissingTo="0">{self.X}{difference}</Apply>': "(x + (x - 1); missing 0)",
            '<Apply function="today"/>': "today()",
        }.items():
            self.assertEqual(self.formula(expression), formula)


class SeveralModels(HostTest):
    def setUp(self):
        super().setUp()
        second = EVERYTHING[EVERYTHING.index("  <RegressionModel"):EVERYTHING.index("</PMML>")]
        first = '  <TextModel modelName="card" functionName="regression"><MiningSchema/><Characteristic/></TextModel>\n'
        self.write("d.pmml", EVERYTHING.replace(second, first + second + second.replace('"all"', '"2"')))

    def test_the_one_that_score_takes_is_shown_and_all_are_listed(self):
        shown = self.expect(self.run_host("inspect", "d.pmml"), 0, err="").stdout.decode()
        self.assertIn("number         2 of 3 in the document\n", shown)
        self.assertIn("\nModels\n\nnumber  kind             name  scorable\n------  ---------------  ----  --------\n"
                      "1       TextModel        card  yes\n2       RegressionModel  all   yes\n"
                      "3       RegressionModel  2     yes\n\nInputs\n", shown)

    def test_another_may_be_chosen(self):
        for wanted, name in (("3", "2"), ("2", "2"), ("all", "all")):
            shown = json.loads(self.run_host("inspect", "d.pmml", "--json", "--model", wanted).stdout)
            self.assertEqual(shown["model"]["name"], name)
        result = self.run_host("inspect", "d.pmml", "--json", "--model", "card")
        self.assertEqual(json.loads(result.stdout)["model"]["size"], {"characteristics": 1})
        self.expect(result, 1)
        self.assertIn(b"veltrane: error 260301: Unsupported model: 'TextModel'.\n", result.stderr)

    def test_one_that_is_not_there(self):
        self.expect(self.run_host("inspect", "d.pmml", "--model", "4"), 1, "")


class OtherModels(HostTest):
    """Documents that only their plug-ins understand."""

    FIELDS = dictionary([X, Y])
    MODEL = ('<ScriptedModel target="y"><ResultField name="Half" dataType="double" optype="continuous" '
             'feature="predictedValue"/></ScriptedModel>')

    def inspect(self, content, *options):
        self.write("models.txt", "ScriptedModel\n")
        self.write("d.pmml", content)
        return self.run_with_test_plugins("inspect", "d.pmml", "--models", "models.txt", *options)

    def test_a_model_without_a_mining_schema(self):
        result = self.inspect(f"<PMML><Header/>{self.FIELDS}{self.MODEL}</PMML>", "--json")
        shown = json.loads(self.expect(result, 0, err="").stdout)
        self.assertEqual([(field["name"], field["type"], field["role"]) for field in shown["inputs"]],
                         [("x", "double", "active")])
        self.assertEqual((shown["target"]["name"], shown["target"]["role"]), ("y", "target"))
        self.assertEqual(shown["outputs"], [{"name": None, "column": "y", "feature": "prediction"},
                                            {"name": "Half", "column": "Half"}])

    def test_a_model_where_documents_have_none(self):
        result = self.inspect(f"<AssocLattice>{self.FIELDS}{self.MODEL}</AssocLattice>", "--json")
        shown = json.loads(self.expect(result, 0, err="").stdout)
        self.assertEqual([field["name"] for field in shown["fields"]], ["x", "y"])
        self.expect(self.inspect(f"<PMML>{self.FIELDS}<Extension>{self.MODEL}</Extension></PMML>"), 1, "",
                    "veltrane: error 260114: Missing node: 'ScriptedModel'.\n")

    def test_a_plug_in_that_breaks_its_side(self):
        result = self.inspect(f'<PMML><Header/>{self.FIELDS}<ScriptedModel fault="no result"/></PMML>')
        self.expect(result, 1, err="veltrane: d.pmml: the model makes no results\n")
        self.assertIn(b"kind        ScriptedModel\n", result.stdout)


if __name__ == "__main__":
    unittest.main()
