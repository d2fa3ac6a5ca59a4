#!/usr/bin/env python3
"""Writes the documents of general regressions among the samples, in which the tests change links and types.

    /usr/bin/python3 tests/models/general/general_samples.py
"""
import pathlib

SAMPLES = pathlib.Path(__file__).parent.parent / "samples"

DICTIONARY = """<?xml version="1.0" encoding="UTF-8"?>
<!-- {what} -->
<PMML version="4.4" xmlns="http://www.dmg.org/PMML-4_4">
  <Header/>
  <DataDictionary>
{fields}  </DataDictionary>
  <GeneralRegressionModel modelName="{name}" {attributes} algorithmName="hand" modelDF="12" isScorable="true">
    <MiningSchema>
{schema}    </MiningSchema>
    <Output>
{output}    </Output>
{body}  </GeneralRegressionModel>
</PMML>
"""


def data_field(name, values):
    if not values:
        return f'    <DataField name="{name}" optype="continuous" dataType="double"/>\n'
    listed = "".join(f'<Value value="{value}"/>' for value in values)
    return f'    <DataField name="{name}" optype="categorical" dataType="string">{listed}</DataField>\n'


def output_field(name, rest):
    return f'      <OutputField name="{name}" {rest}/>\n'


def parameters(count, rest=None):
    rest = rest or {}
    listed = "".join(f'<Parameter name="p{i}" label="P{i}"{rest.get(i, "")}/>' for i in range(count))
    return f"    <ParameterList>{listed}</ParameterList>\n"


def predictors(tag, names):
    return f"    <{tag}>" + "".join(f'<Predictor name="{name}"{inner}' for name, inner in names) + f"</{tag}>\n"


def cells(tag, cell, rows, attributes):
    """Rows of values by attributes; None leaves an attribute out."""
    listed = "".join(f"      <{cell} " + " ".join(f'{a}="{v}"' for a, v in zip(attributes, row) if v is not None)
                     + "/>\n" for row in rows)
    return f"    <{tag}>\n{listed}    </{tag}>\n"


PP = ("value", "predictorName", "parameterName", "targetCategory")
PC = ("targetCategory", "parameterName", "beta", "df")
COV = ("pRow", "pCol", "value")


def write(name, what, attributes, fields, schema, output, body):
    text = DICTIONARY.format(what=what, name=name, attributes=attributes, body=body,
                             fields="".join(data_field(*field) for field in fields),
                             schema="".join(f"      <MiningField {field}/>\n" for field in schema),
                             output="".join(output_field(*field) for field in output))
    (SAMPLES / f"{name}.pmml").write_text(text, encoding="utf-8")


def seedlings():
    contrasts = (' contrastMatrixType="Helmert"><Categories><Category value="clay"/><Category value="loam"/>'
                 '<Category value="sand"/></Categories><Matrix kind="any" nbRows="3" nbCols="2">'
                 '<Array n="2" type="real">0.5 0.25</Array><Array n="2" type="real">-0.5 0.25</Array>'
                 '<Array n="2" type="real">0 -0.5</Array></Matrix></Predictor>')
    write("seedlings", "Seedlings by soil, water and sun. The tests put other links in the place of this one.",
          'functionName="regression" modelType="generalizedLinear" targetVariableName="sprouts" '
          'distribution="binomial" distParameter="1.5" linkFunction="logit" linkParameter="0.75" '
          'trialsVariable="seeds" offsetVariable="start"',
          [("sprouts", ()), ("soil", ("clay", "loam", "sand")), ("sun", ("low", "some", "high")), ("water", ()),
           ("seeds", ()), ("start", ())],
          ['name="sprouts" usageType="target"', 'name="soil" invalidValueTreatment="asIs"',
           'name="sun" invalidValueTreatment="asIs"', 'name="water"', 'name="seeds"', 'name="start"'],
          [("number", 'feature="predictedValue"'), ("error", 'feature="standardError"')],
          parameters(8)
          + predictors("FactorList", [("soil", contrasts), ("sun", "/>")])
          + predictors("CovariateList", [("water", "/>")])
          + cells("PPMatrix", "PPCell", [
              ("clay", "soil", "p1"), ("loam", "soil", "p2"), ("some", "sun", "p3"), ("high", "sun", "p4"),
              (1, "water", "p5"), (0.5, "water", "p6"), ("high", "sun", "p7"), (1, "water", "p7"),
              ("clay", "soil", "p7")], PP)
          + '    <PCovMatrix type="model">\n' + cells("", "PCovCell", [
              ("p0", "p0", 0.04), ("p0", "p5", -0.002), ("p1", "p1", 0.02), ("p2", "p1", 0.003), ("p1", "p2", 0.003),
              ("p3", "p3", 0.01), ("p4", "p4", 0.0125), ("p5", "p5", 0.0009), ("p7", "p7", 0.001),
              ("p7", "p4", -0.0005), ("p6", "p6", 0.25)], COV).split("\n", 1)[1].rsplit("    </", 1)[0]
          + "    </PCovMatrix>\n"
          + cells("ParamMatrix", "PCell", [
              (None, "p0", 0.35, 1), (None, "p1", 0.2, 1), (None, "p2", -0.3, 1), (None, "p3", 0.125, 1),
              (None, "p4", 0.25, 1), (None, "p5", 0.05, 1), (None, "p7", 0.03, 1)], PC))


def lunch():
    reference = ' targetReferenceCategory="stew"'
    write("lunch", "What people choose for lunch, by the price and the weather.",
          'functionName="classification" modelType="multinomialLogistic"' + reference + ' offsetValue="0.125"',
          [("choice", ("soup", "stew", "salad")), ("price", ()), ("weather", ("sun", "rain"))],
          ['name="choice" usageType="target"', 'name="price"', 'name="weather" invalidValueTreatment="asIs"'],
          [(f"p({c})", f'feature="probability" value="{c}"') for c in ("soup", "stew", "salad")],
          parameters(4)
          + predictors("FactorList", [("weather", "><Categories><Category value=\"sun\"/><Category value=\"rain\"/>"
                                       "</Categories></Predictor>")])
          + predictors("CovariateList", [("price", "/>")])
          + cells("PPMatrix", "PPCell", [
              (1, "price", "p1"), ("rain", "weather", "p2", "soup"), ("sun", "weather", "p2", "salad"),
              (2, "price", "p3", "soup")], PP)
          + '    <PCovMatrix type="robust"><PCovCell pRow="p1" pCol="p1" tRow="soup" tCol="soup" value="0.5" '
            'targetCategory="soup"/></PCovMatrix>\n'
          + cells("ParamMatrix", "PCell", [
              ("soup", "p0", 0.5, 1), ("soup", "p1", -0.25, 1), (None, "p2", 0.75, 1), ("soup", "p3", 0.015625, 1),
              ("salad", "p0", -0.5, 1), ("salad", "p1", 0.125, 1)], PC))


def marks():
    write("marks", "Marks in school, by hours of learning. The tests put other links in the place of this one.",
          'functionName="classification" modelType="ordinalMultinomial" cumulativeLink="logit" '
          'offsetVariable="head"',
          [("mark", ("poor", "fair", "good", "best")), ("hours", ()), ("head", ()), ("rest", ("yes", "no"))],
          ['name="mark" usageType="target"', 'name="hours"', 'name="head"', 'name="rest"'],
          [(f"p({c})", f'feature="probability" value="{c}"') for c in ("poor", "fair", "good", "best")],
          parameters(3)
          + predictors("FactorList", [("rest", ' contrastMatrixType="deviation"><Matrix kind="diagonal" nbRows="2" '
                                       'nbCols="2" diagDefault="0" offDiagDefault="-1"><Array n="2" type="int">1 1'
                                       '</Array></Matrix></Predictor>')])
          + predictors("CovariateList", [("hours", "/>")])
          + cells("PPMatrix", "PPCell", [(1, "hours", "p1"), ("yes", "rest", "p2")], PP)
          + cells("ParamMatrix", "PCell", [
              ("poor", "p0", -1, 1), ("fair", "p0", 0.5, 1), ("good", "p0", 1.75, 1), (None, "p1", -0.25, 1),
              (None, "p2", -0.375, 1)], PC))


def pumps():
    stratum = ('<BaselineStratum value="{}" label="{}" maxTime="{}">{}</BaselineStratum>').format
    hazards = "".join('<BaselineCell time="{}" cumHazard="{}"/>'.format(*cell)
                      for cell in ((4, 0.05), (1, 0.01), (9.5, 0.2), (16, 0.45)))
    survival = ('      <OutputField name="survival" feature="transformedValue" optype="continuous" dataType="double">'
                '<Apply function="exp"><Apply function="*"><Constant>-1</Constant><FieldRef field="hazard"/></Apply>'
                '</Apply></OutputField>\n')
    write("pumps", "How long pumps run, by load and the hands that serve them: a baseline for each works.",
          'functionName="regression" modelType="CoxRegression" endTimeVariable="until" startTimeVariable="since" '
          'statusVariable="broken" subjectIDVariable="pump" baselineStrataVariable="works"',
          [("broken", ("no", "yes")), ("pump", ()), ("since", ()), ("until", ()), ("works", ("north", "south", "west")),
           ("load", ()), ("hands", ("two", "four"))],
          ['name="broken" usageType="target"', 'name="until"', 'name="works" invalidValueTreatment="asIs"',
           'name="load"', 'name="hands"', 'name="since" usageType="supplementary"'],
          [("hazard", 'feature="predictedValue"'), ("error", 'feature="standardError"')],
          parameters(3, {1: ' referencePoint="2.5"', 2: ' referencePoint="0.25"'})
          + predictors("FactorList", [("hands", "/>")]) + predictors("CovariateList", [("load", "/>")])
          + cells("PPMatrix", "PPCell", [(1, "load", "p1"), ("four", "hands", "p2")], PP)
          + "    <PCovMatrix>\n" + cells("", "PCovCell", [
              ("p1", "p1", 0.01), ("p1", "p2", 0.002), ("p2", "p2", 0.09)], COV).split("\n", 1)[1].rsplit("    </", 1)[0]
          + "    </PCovMatrix>\n"
          + cells("ParamMatrix", "PCell", [(None, "p1", 0.3, 1), (None, "p2", -0.6, 1)], PC)
          + '    <EventValues><Value value="yes"/></EventValues>\n'
          + "    <BaseCumHazardTables>" + stratum("north", "North", 20, hazards)
          + stratum("south", "South", 5, '<BaselineCell time="2" cumHazard="0.125"/>') + "</BaseCumHazardTables>\n")
    path = SAMPLES / "pumps.pmml"
    path.write_text(path.read_text(encoding="utf-8").replace("    </Output>\n", survival + "    </Output>\n"),
                    encoding="utf-8")


if __name__ == "__main__":
    for write_sample in (seedlings, lunch, marks, pumps):
        write_sample()
