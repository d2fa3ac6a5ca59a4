"""Rows of models: what a case gets by schema, regression, tree, targets and outputs, worked out by hand.

name, document, then cells and the columns that they give, one case after the other; None is missing."""

FIELDS = """<DataField name="x" optype="continuous" dataType="double"><Value value="-99" property="missing"/>
<Interval closure="closedClosed" leftMargin="-10" rightMargin="10"/></DataField>
<DataField name="n" optype="continuous" dataType="integer"/>
<DataField name="c" optype="categorical" dataType="string"><Value value="u"/><Value value="v"/></DataField>
<DataField name="o" optype="ordinal" dataType="string"><Value value="small"/><Value value="big"/><Value value="vast"/></DataField>
<DataField name="e" optype="continuous" dataType="dateDaysSince[1960]"/>
<DataField name="y" optype="continuous" dataType="double"/>
<DataField name="k" optype="{}" dataType="string"><Value value="A" displayValue="First"/><Value value="B"/><Value value="C"/></DataField>"""


def document(model, optype="categorical"):
    return (f'<PMML version="4.4"><Header/><DataDictionary>{FIELDS.format(optype)}</DataDictionary>'
            f"{model}</PMML>")


def schema(target, *fields):
    return (f'<MiningSchema><MiningField name="{target}" usageType="target"/>' +
            "".join(each if each.startswith("<") else f'<MiningField name="{each}"/>' for each in fields) + "</MiningSchema>")


def regression(content, attributes="", target="y", fields=("x", "c"), function="regression", optype="categorical"):
    return document(f'<RegressionModel functionName="{function}" {attributes}>{schema(target, *fields)}{content}</RegressionModel>',
                    optype)


def classes(sums, attributes, optype="categorical", more=""):
    tables = "".join(f'<RegressionTable targetCategory="{name}" intercept="{value}"/>' for name, value in sums.items())
    return regression(more + SHARES + tables, attributes, "k", (), "classification", optype)


SHARES = "<Output>" + "".join(f'<OutputField name="p{name}" feature="probability" value="{name}" dataType="double"/>'
                              for name in "ABC") + "</Output>"
LINEAR = ('<RegressionTable intercept="1"><NumericPredictor name="x" exponent="2" coefficient="0.5"/>'
          '<CategoricalPredictor name="c" value="u" coefficient="4"/></RegressionTable>')
TWICE = '<RegressionTable intercept="0"><NumericPredictor name="x" coefficient="2"/></RegressionTable>'


def treated(attributes):
    return regression(TWICE, fields=(f'<MiningField name="x" {attributes}/>',))


REGRESSIONS = [
    ("linear", regression(LINEAR), [({"x": "2", "c": "v"}, {"y": 3.0}), ({"x": "2", "c": "u"}, {"y": 7.0}),
                                    ({"x": "2"}, {"y": 3.0}), ({"c": "u"}, {"y": None}), ({"x": "-99", "c": "u"}, {"y": None}),
                                    ({"x": "2", "c": "w"}, {"y": None}), ({"x": "11", "c": "u"}, {"y": None})]),
    ("counting date", regression('<RegressionTable intercept="0"><NumericPredictor name="e" coefficient="2"/></RegressionTable>',
                                 fields=("e",)), [({"e": "1"}, {"y": 2.0})]),
    ("term", regression('<RegressionTable intercept="0"><PredictorTerm coefficient="2"><FieldRef field="x"/><FieldRef field="n" '
                        'mapMissingTo="5"/></PredictorTerm></RegressionTable>', fields=("x", "n")),
     [({"x": "3", "n": "2"}, {"y": 12.0}), ({"x": "3"}, {"y": 30.0}), ({"n": "2"}, {"y": None})]),
    ("no integer", regression('<RegressionTable intercept="0"><NumericPredictor name="n" coefficient="2"/></RegressionTable>',
                              fields=("n",)), [({"n": "3"}, {"y": 6.0}), ({"n": "1.5"}, {"y": None})]),
    ("logit", regression('<RegressionTable intercept="0"/>', 'normalizationMethod="logit"'), [({"x": "1"}, {"y": 0.5})]),
    ("exp", regression('<RegressionTable intercept="1"/>', 'normalizationMethod="exp"'), [({"x": "1"}, {"y": 2.718281828459045})]),
    ("cauchit", regression('<RegressionTable intercept="1"/>', 'normalizationMethod="cauchit"'), [({"x": "1"}, {"y": 0.75})]),
    ("infinite", regression('<RegressionTable intercept="1"><NumericPredictor name="x" exponent="400" coefficient="1"/>'
                            "</RegressionTable>", fields=("x",)), [({"x": "10"}, {"y": None}), ({"x": "1"}, {"y": 2.0})]),
]

SCHEMAS = [
    ("replaced", treated('missingValueReplacement="3"'), [({}, {"y": 6.0}), ({"x": "1"}, {"y": 2.0}), ({"x": "-99"}, {"y": 6.0})]),
    ("returnInvalid beats replacement", treated('missingValueReplacement="3" missingValueTreatment="returnInvalid"'),
     [({}, {"y": None}), ({"x": "1"}, {"y": 2.0})]),
    ("invalid as it is", treated('invalidValueTreatment="asIs"'), [({"x": "11"}, {"y": 22.0})]),
    ("invalid as missing", treated('invalidValueTreatment="asMissing" missingValueReplacement="3"'), [({"x": "11"}, {"y": 6.0}),
                                                                                                      ({"x": "abc"}, {"y": 6.0})]),
    ("invalid as value", treated('invalidValueTreatment="asValue" invalidValueReplacement="4"'), [({"x": "11"}, {"y": 8.0})]),
    ("invalid text", treated(""), [({"x": "abc"}, {"y": None})]),
    ("outlier bound", treated('outliers="asExtremeValues" lowValue="0" highValue="5"'), [({"x": "7"}, {"y": 10.0}),
                                                                                         ({"x": "-1"}, {"y": 0.0})]),
    ("outlier missing", treated('outliers="asMissingValues" lowValue="0" highValue="5" missingValueReplacement="1"'),
     [({"x": "7"}, {"y": 2.0}), ({"x": "5"}, {"y": 10.0})]),
]

CLASSIFICATIONS = [
    ("softmax", classes({"A": 0, "B": 0, "C": 0}, 'normalizationMethod="softmax"'), [({}, {"k": "A", "pB": 1 / 3})]),
    ("simplemax", classes({"A": 1, "B": 3}, 'normalizationMethod="simplemax"'), [({}, {"k": "B", "pA": 0.25, "pB": 0.75, "pC": 0.0})]),
    ("none of two is bounded", classes({"A": 2503.74, "B": 0}, ""), [({}, {"k": "A", "pA": 1.0, "pB": 0.0})]),
    ("none of two", classes({"A": 0.25, "B": 0}, ""), [({}, {"k": "B", "pA": 0.25, "pB": 0.75})]),
    ("none of three", classes({"A": 0.25, "B": 0.125, "C": 0}, ""), [({}, {"k": "C", "pA": 0.25, "pB": 0.125, "pC": 0.625})]),
    ("logit of two", classes({"A": 0, "B": 9}, 'normalizationMethod="logit"'), [({}, {"k": "A", "pA": 0.5, "pB": 0.5})]),
    ("cauchit of three", classes({"A": 0, "B": -1, "C": 9}, 'normalizationMethod="cauchit"'), [({}, {"k": "A", "pA": 0.5, "pB": 0.25, "pC": 0.25})]),
    ("cauchit of three without a rest", classes({"A": 1, "B": 0, "C": 9}, 'normalizationMethod="cauchit"'),
     [({}, {"k": "A", "pA": 0.6, "pB": 0.4, "pC": 0.0})]),
    ("ordinal that falls", classes({"A": 1, "B": 0, "C": 0}, 'normalizationMethod="cauchit"', "ordinal"),
     [({}, {"k": "A", "pA": 0.75, "pB": 0.0, "pC": 0.25})]),
    ("ordinal", classes({"A": 0, "B": 1, "C": 0}, 'normalizationMethod="cauchit"', "ordinal"),
     [({}, {"k": "A", "pA": 0.5, "pB": 0.25, "pC": 0.25})]),
    ("prior of a case without prediction", classes({"A": "1", "B": "-1"}, 'normalizationMethod="simplemax"', more=(
        '<Targets><Target field="k"><TargetValue value="A" priorProbability="0.25"/><TargetValue value="B" priorProbability="0.75"/>'
        "</Target></Targets>")), [({}, {"k": "B", "pA": 0.25, "pB": 0.75})]),
]


def target(attributes, values=""):
    return regression(f'<Targets><Target field="y" {attributes}>{values}</Target></Targets>' + TWICE, fields=("x",))


OUTPUTS = """<Output><OutputField name="p" feature="predictedValue" dataType="string"/>
<OutputField name="hidden" feature="transformedValue" dataType="double" isFinalResult="false"><Apply function="+">
<FieldRef field="p"/><Constant>1</Constant></Apply></OutputField>
<OutputField name="t" feature="transformedValue" dataType="double"><Apply function="*"><FieldRef field="hidden"/>
<FieldRef field="x"/></Apply></OutputField><OutputField name="r" feature="residual" dataType="double"/>
<OutputField name="d" feature="decision" dataType="string"><Apply function="if"><Apply function="greaterThan">
<FieldRef field="p"/><Constant>5</Constant></Apply><Constant>yes</Constant><Constant>no</Constant></Apply></OutputField></Output>"""
RESIDUALS = '<Output><OutputField name="rA" feature="residual" value="A"/><OutputField name="rB" feature="residual" value="B"/>' \
    '<OutputField name="s" feature="predictedDisplayValue"/></Output><RegressionTable targetCategory="A" intercept="3"/>' \
    '<RegressionTable targetCategory="B" intercept="1"/>'

TARGETS = [
    ("bounds, factor, constant, cast", target('min="2" max="6" rescaleFactor="1.5" rescaleConstant="0.5" castInteger="round"'),
     [({"x": "0"}, {"y": 4}), ({"x": "2"}, {"y": 7}), ({"x": "9"}, {"y": 10})]),
    ("floor", target('castInteger="floor"'), [({"x": "-0.25"}, {"y": -1})]),
    ("ceiling", target('castInteger="ceiling"'), [({"x": "-0.25"}, {"y": 0})]),
    ("default", target("", '<TargetValue defaultValue="42"/>'), [({}, {"y": 42.0}), ({"x": "1"}, {"y": 2.0})]),
    ("outputs of single precision", regression(
        '<Output><OutputField name="p" feature="predictedValue" dataType="float"/><OutputField name="d" dataType="float" '
        'feature="transformedValue"><FieldRef field="p"/></OutputField><OutputField name="f" dataType="float" '
        'feature="transformedValue"><FieldRef field="x"/></OutputField></Output>' + TWICE, fields=("x",)),
     [({"x": "0.35"}, {"p": 0.7, "d": 0.7, "f": 0.3499999940395355})]),
    ("outputs", regression(OUTPUTS + TWICE, fields=("x",)),
     [({"x": "3", "y": "7"}, {"y": 6.0, "p": "6", "t": 21.0, "r": 1.0, "d": "yes"}), ({"x": "1"}, {"r": None, "d": "no"})]),
    ("residual and display", regression(RESIDUALS, 'normalizationMethod="simplemax"', "k", (), "classification"),
     [({"k": "A"}, {"k": "A", "rA": 0.25, "rB": -0.25, "s": "First"}), ({"k": "B"}, {"rA": -0.75, "rB": 0.75})]),
]


def node(content, predicate="<True/>", attributes=""):
    return f"<Node {attributes}>{predicate}{content}</Node>"


def simple(field, operator, value=None):
    shown = "" if value is None else f' value="{value}"'
    return f'<SimplePredicate field="{field}" operator="{operator}"{shown}/>'


def shares(confidence="", **counts):
    return "".join(f'<ScoreDistribution value="{name}" recordCount="{count}" {confidence}/>' for name, count in counts.items())


def tree(attributes, root, function="classification", goal="k", fields=("x", "c", "o")):
    outputs = SHARES.replace("</Output>", '<OutputField name="f" feature="confidence"/><OutputField name="id" feature="entityId"/>'
                             "</Output>") if function == "classification" else ""
    return document(f'<TreeModel functionName="{function}" {attributes}>{schema(goal, *fields)}{outputs}{root}</TreeModel>')


SPLIT = node(shares(A=6, B=4) + node(shares(A=1, B=3), simple("x", "lessThan", 0), 'id="l" recordCount="4"') +
             node(node(shares(A=5, B=0), simple("c", "equal", "u"), 'id="u" recordCount="5"') +
                  node(shares(A=0, B=1), simple("c", "equal", "v"), 'id="v" recordCount="1"'),
                  simple("x", "greaterOrEqual", 0), 'id="r" recordCount="6" defaultChild="v"'), "<True/>",
             'id="top" recordCount="10" defaultChild="r"')
ORDER = node(node("", simple("o", "lessThan", "vast"), 'score="A"') + node("", "<True/>", 'score="B"'), "<True/>", 'score="C"')


def compound(operator, *parts):
    return f'<CompoundPredicate booleanOperator="{operator}">{"".join(parts)}</CompoundPredicate>'


def chosen(predicate):
    return tree("", node(node("", predicate, 'score="A"') + node("", "<True/>", 'score="B"'), "<True/>", 'score="C"'))


UNKNOWN, TRUE, FALSE = simple("c", "equal", "u"), "<True/>", "<False/>"
SET = '<SimpleSetPredicate field="c" booleanOperator="isNotIn"><Array type="string">u "a b" "q\\"r"</Array></SimpleSetPredicate>'

TREES = [
    ("leaves", tree("", SPLIT), [({"x": "-1"}, {"k": "B", "pA": 0.25, "id": "l", "f": 0.75}),
                                 ({"x": "1", "c": "u"}, {"k": "A", "pA": 1.0, "pC": 0.0, "id": "u"}), ({"x": "1"}, {"k": None}),
                                 ({}, {"k": None})]),
    ("returnLastPrediction above", tree('noTrueChildStrategy="returnLastPrediction"', SPLIT),
     [({"x": "1"}, {"k": "A", "pA": 0.6, "id": "top"}), ({}, {"k": "A", "id": "top"})]),
    ("lastPrediction above", tree('missingValueStrategy="lastPrediction"', SPLIT), [({"x": "1"}, {"k": "A", "pA": 0.6, "id": "top"})]),
    ("nullPrediction", tree('missingValueStrategy="nullPrediction"', SPLIT), [({"x": "1"}, {"k": None}), ({"x": "-1"}, {"k": "B"})]),
    ("defaultChild", tree('missingValueStrategy="defaultChild" missingValuePenalty="0.5"', SPLIT),
     [({}, {"k": "B", "pB": 1.0, "f": 0.25, "id": "v"}), ({"x": "1"}, {"k": "B", "f": 0.5}), ({"x": "1", "c": "u"}, {"f": 1.0})]),
    ("weightedConfidence", tree('missingValueStrategy="weightedConfidence"', SPLIT),
     [({"x": "1"}, {"k": "A", "pA": 5 / 6, "f": 5 / 6, "id": None}), ({"c": "u"}, {"k": "A", "f": 0.4 * 0.25 + 0.6})]),
    ("aggregateNodes", tree('missingValueStrategy="aggregateNodes"', SPLIT), [({"c": "v"}, {"k": "B", "pB": 0.8}),
                                                                              ({}, {"k": "A", "pA": 0.6})]),
    ("ordinal order", tree("", ORDER), [({"o": "big"}, {"k": "A"}), ({"o": "vast"}, {"k": "B"}), ({}, {"k": "B"})]),
    ("and", chosen(compound("and", UNKNOWN, FALSE)), [({}, {"k": "B"}), ({"c": "u"}, {"k": "B"})]),
    ("or", chosen(compound("or", UNKNOWN, TRUE)), [({}, {"k": "A"}), ({"c": "v"}, {"k": "A"})]),
    ("xor", chosen(compound("xor", UNKNOWN, TRUE)), [({}, {"k": "B"}), ({"c": "v"}, {"k": "A"}), ({"c": "u"}, {"k": "B"})]),
    ("surrogate", chosen(compound("surrogate", UNKNOWN, simple("x", "lessThan", 0), FALSE)),
     [({"c": "u", "x": "1"}, {"k": "A"}), ({"x": "-1"}, {"k": "A"}), ({"x": "1"}, {"k": "B"}), ({}, {"k": "B"})]),
    ("missing test", chosen(simple("c", "isMissing")), [({}, {"k": "A"}), ({"c": "u"}, {"k": "B"})]),
    ("winner of equal probabilities", tree("", node(
        '<ScoreDistribution value="A" recordCount="2" probability="0.5"/><ScoreDistribution value="B" recordCount="5" probability="0.5"/>')),
     [({}, {"k": "B", "pA": 0.5})]),
    ("set", chosen(SET), [({"c": "v"}, {"k": "A"}), ({"c": "u"}, {"k": "B"}), ({}, {"k": "B"})]),
    ("single precision", chosen(simple("x", "lessOrEqual", 0.7)).replace('name="x" optype="continuous" dataType="double"',
                                                                         'name="x" optype="continuous" dataType="float"'),
     [({"x": "0.70000001"}, {"k": "A"}), ({"x": "0.7000001"}, {"k": "B"})]),
    ("infinite bound", chosen(simple("x", "lessOrEqual", "INF")), [({"x": "9"}, {"k": "A"}), ({}, {"k": "B"})]),
    ("regression", tree("", node(node("", simple("x", "lessThan", 0), 'score="-1.5"') + node("", "<True/>", 'score="2"')),
                        "regression", "y"), [({"x": "-1"}, {"y": -1.5}), ({"x": "1"}, {"y": 2.0})]),
]



def rules(criterion, default='defaultScore="C" defaultConfidence="0.5"'):
    """Of one x a letter, of a great one three."""
    said = [simple("x", "greaterThan", 0) + '<ScoreDistribution value="A" recordCount="3" confidence="0.7"/>'
            '<ScoreDistribution value="C" recordCount="1" confidence="0.2"/>', simple("x", "greaterThan", 1),
            simple("x", "greaterThan", 2)]
    body = (f'<SimpleRule score="A" weight="2" confidence="0.75" nbCorrect="5">{said[0]}</SimpleRule><CompoundRule>'
            f'{simple("c", "equal", "u")}<SimpleRule id="r" score="B" weight="3" confidence="0.5">{said[1]}</SimpleRule>'
            f'</CompoundRule><SimpleRule score="A" weight="2.5" confidence="0.25">{said[2]}</SimpleRule>')
    shown = [("r1", 'feature="ruleValue" ruleFeature="ruleId"'), ("r2", 'feature="ruleValue" ruleFeature="ruleId" rank="2"'),
             ("k2", 'feature="predictedValue" rank="2"'), ("s", 'feature="support"'), ("pA", 'feature="probability" value="A"'),
             ("fA", 'feature="confidence" value="A"'), ("fC", 'feature="confidence" value="C"')]
    outputs = "<Output>" + "".join(f'<OutputField name="{name}" {said}/>' for name, said in shown) + "</Output>"
    return document(f'<RuleSetModel functionName="classification">{schema("k", "x", "c")}{outputs}<RuleSet {default} recordCount="10">'
                    f'<RuleSelectionMethod criterion="{criterion}"/>{body}</RuleSet></RuleSetModel>')


RULES = [
    ("first hit", rules("firstHit"),
     [({"x": "5", "c": "u"}, {"k": "A", "r1": "1", "r2": "r", "k2": "B", "s": 0.5, "pA": 0.75, "fA": 0.75, "fC": 0.2}),
      ({"x": "5"}, {"k": "A", "r2": "3", "k2": None}), ({"x": "0"}, {"k": "C", "r1": None, "pA": None, "fA": 0.0, "fC": 0.5})]),
    ("weighted maximum", rules("weightedMax"),
     [({"x": "5", "c": "u"}, {"k": "B", "r1": "r", "r2": "3", "k2": "A", "s": None, "pA": None, "fA": 0.25, "fC": 0.0})]),
    ("weighted sum", rules("weightedSum"),
     [({"x": "5", "c": "u"}, {"k": "A", "r1": "3", "r2": "1", "k2": "B", "pA": 0.75, "fA": 1 / 3, "fC": 0.0}),
      ({"x": "2", "c": "u"}, {"k": "B", "r1": "r", "k2": "A", "fA": 0.375})]),
    ("no default", rules("firstHit", ""), [({"x": "0"}, {"k": None}), ({}, {"k": None})]),
]


def card(attributes=""):
    """10 points or x, and 3 or 4."""
    first = (f'<Attribute partialScore="10" reasonCode="XX">{simple("x", "lessThan", 0)}</Attribute><Attribute><True/>'
             '<ComplexPartialScore><FieldRef field="x"/></ComplexPartialScore></Attribute>')
    second = f'<Attribute partialScore="3">{simple("c", "equal", "u")}</Attribute><Attribute partialScore="4"><True/></Attribute>'
    shown = "".join(f'<OutputField name="r{rank}" feature="reasonCode" rank="{rank}"/>' for rank in (1, 2, 3))
    return document(f'<Scorecard functionName="regression" initialScore="2" baselineScore="5" {attributes}>{schema("y", "x", "c")}'
                    f'<Output>{shown}</Output><Characteristics><Characteristic reasonCode="X" baselineScore="8">{first}'
                    f'</Characteristic><Characteristic reasonCode="C">{second}</Characteristic></Characteristics></Scorecard>')


CARDS = [
    ("points below", card(), [({"x": "6", "c": "u"}, {"y": 11.0, "r1": "X", "r2": "C", "r3": None}),
                              ({"x": "7"}, {"y": 13.0, "r1": "X", "r2": "C"}), ({"x": "-1"}, {"y": 16.0, "r1": "C", "r2": None}),
                              ({"c": "u"}, {"y": None, "r1": None})]),
    ("points above", card('reasonCodeAlgorithm="pointsAbove"'), [({"x": "-1"}, {"y": 16.0, "r1": "XX", "r2": None}),
                                                                ({"x": "8"}, {"y": 14.0, "r1": "X"})]),
    ("no reasons", card('useReasonCodes="false"'), [({"x": "6", "c": "u"}, {"y": 11.0, "r1": None})]),
]


def tested(attributes, baseline, alternate=""):
    return document(f'<BaselineModel functionName="regression">{schema("y", "x", "c", "n")}<TestDistributions {attributes}>'
                    f"<Baseline>{baseline}</Baseline>{alternate}</TestDistributions></BaselineModel>")


NORMAL = '<GaussianDistribution mean="1" variance="4"/>'
COUNTS = ('<CountTable><FieldValueCount field="c" value="u" count="3"/><FieldValueCount field="c" value="v" count="4"/>'
          "</CountTable>")
BASELINES = [
    ("z-value", tested('field="x" testStatistic="zValue"', NORMAL), [({"x": "4"}, {"y": 1.5}), ({}, {"y": None}), ({"x": "-1"}, {"y": -1.0})]),
    ("z-value of a window", tested('field="x" testStatistic="zValue" windowSize="4" weightField="n"', NORMAL),
     [({"x": "4", "n": "1"}, {"y": 1.5}), ({"x": "2", "n": "3"}, {"y": 1.5}), ({"x": "2", "n": "-1"}, {"y": None})]),
    ("cumulative sum", tested('field="x" testStatistic="CUSUM" resetValue="-1"', NORMAL,
                              '<Alternate><GaussianDistribution mean="3" variance="4"/></Alternate>'),
     [({"x": "4"}, {"y": 0.0}), ({"x": "3"}, {"y": 0.5}), ({"x": "11"}, {"y": None}), ({"x": "-9"}, {"y": -1.0}), ({"x": "2"}, {"y": -1.0})]),
    ("counts side by side", tested('field="c" testStatistic="scalarProduct"', COUNTS),
     [({"c": "u"}, {"y": 0.6}), ({"c": "v"}, {"y": 1.4 / 2 ** 0.5}), ({}, {"y": None})]),
    ("shares of a table", tested('field="c" testStatistic="chiSquareDistribution"', COUNTS.replace('"4"', '"3"')),
     [({"c": "u"}, {"y": 0.31731050786291415}), ({"c": "v"}, {"y": 1.0})]),
    ("table and cases", tested('field="c" testStatistic="chiSquareIndependence"', COUNTS.replace('"4"', '"3"')),
     [({"c": "u"}, {"y": 0.34957480612329803}), ({"c": "v"}, {"y": 1.0})]),
]

ROWS = REGRESSIONS + SCHEMAS + CLASSIFICATIONS + TARGETS + TREES + RULES + CARDS + BASELINES
