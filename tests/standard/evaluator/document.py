"""A document and its evaluation case by case.

Document(text).score(rows) and .transform(rows) take rows of cells by field name, "" for an empty cell, and give the
columns of each case as a list of (name, Value or MISSING).

Decision: without a target in the schema the predicted value is called "prediction"; the name of an output field that
equals the target's leaves "predicted NAME" to the prediction.
Decision: a derived field that reads itself has no meaning and is never generated.
"""
import math
import sys
import xml.etree.ElementTree as ElementTree
from . import baselines, regression, rules, scorecards, trees
from .expressions import as_type, evaluate, expression_of
from .outputs import Outputs
from .prediction import Prediction, winner
from .schema import Field, Refused, treat
from .targets import Target
from .values import MISSING, NotOfType, Unsupported, Value, cast, constant, equal

sys.setrecursionlimit(20000)  # expressions may be nested a thousand deep

MODELS = {"BaselineModel": baselines.score, "RegressionModel": regression.score, "RuleSetModel": rules.score,
          "Scorecard": scorecards.score, "TreeModel": trees.score}


def _clean(element):
    """Takes the namespaces off the names and the Extensions out, which are without effect wherever they stand."""
    for child in list(element):
        child.tag = child.tag.rpartition("}")[2]
        if child.tag == "Extension":
            element.remove(child)
        else:
            _clean(child)


def _only(element, tag):
    return next((child for child in element if child.tag == tag), None)


class Document:
    def __init__(self, text):
        root = ElementTree.fromstring(text)
        _clean(root)
        self.fields = {each.get("name"): Field(each) for each in _only(root, "DataDictionary") if each.tag == "DataField"}
        dictionary = _only(root, "TransformationDictionary")
        dictionary = () if dictionary is None else dictionary
        self.derived = {each.get("name"): each for each in dictionary if each.tag == "DerivedField"}
        self.functions = {each.get("name"): each for each in dictionary if each.tag == "DefineFunction"}
        self.shared = list(self.derived)
        self.model = next((each for each in root if each.tag in MODELS), None)
        self.mining, self.target, self.target_values, self.output = {}, None, Target(None), None
        if self.model is not None:
            self._read_model()

    def _read_model(self):
        self.mining = {each.get("name"): each for each in _only(self.model, "MiningSchema") if each.tag == "MiningField"}
        usage = {name: each.get("usageType", "active") for name, each in self.mining.items()}
        self.target = next((name for name, word in usage.items() if word in ("target", "predicted")), None)
        for each in _only(self.model, "LocalTransformations") or ():
            self.derived[each.get("name")] = each
        targets = _only(self.model, "Targets")
        if targets is not None:
            self.target_values = Target(_only(targets, "Target"))
        self.output = _only(self.model, "Output")

    def transform(self, rows):
        """The derived fields of the TransformationDictionary, which no mining schema precedes."""
        history = []
        for row in rows:
            case = Case(self, row, history, treated=False)
            yield [(name, case.field(name)) for name in self.shared]
            history.append(case)

    def score(self, rows):
        """The predicted value and the output fields."""
        history = []
        for row in rows:
            case = Case(self, row, history, treated=True)
            yield case.score()
            history.append(case)


class Case:
    """One row: the environment of expressions and predicates."""

    def __init__(self, document, row, history, treated):
        self._document, self._row, self._history, self._treated = document, row, history, treated
        self._values, self.outputs, self.predicted = {}, {}, MISSING
        self.functions = document.functions

    def field(self, name):
        """The value of an output, derived or data field."""
        if name in self.outputs:
            return self.outputs[name]
        if name not in self._values:
            self._values[name] = self._find(name)
        return self._values[name]

    def _find(self, name):
        derived = self._document.derived.get(name)
        if derived is not None:
            type_ = derived.get("dataType")
            return as_type(evaluate(expression_of(derived), self, type_), type_)
        field, cell = self._document.fields[name], self._row.get(name, "")
        if not self._treated:
            return field.plain(cell)
        if name not in self._document.mining:
            raise Unsupported(f"{name} isn't in the mining schema")
        return treat(field, self._document.mining[name], cell)

    def type(self, name):
        """The declared type of a field, None where none is declared."""
        if name in self._document.derived:
            return self._document.derived[name].get("dataType")
        if name in self._document.fields:
            return self._document.fields[name].type
        return None

    def listed(self, name):
        """The values of an ordinal field in their order, None for other fields; those of a derived field in its own."""
        if name in self.outputs:
            return None
        derived = self._document.derived.get(name)
        if derived is not None:
            if derived.get("optype") != "ordinal":
                return None
            values = [constant(each.get("value"), derived.get("dataType")) for each in derived if each.tag == "Value"]
            return values or None
        field, mining = self._document.fields[name], self._document.mining.get(name)
        optype = field.optype if mining is None else mining.get("optype", field.optype)
        return field.listed() or None if optype == "ordinal" else None

    def earlier(self, name, count, blocks):
        """The values of a field in the cases before this one, the nearest first, down to where its block began."""
        found = []
        for case in reversed(self._history):
            if len(found) == count or not all(_same(case.field_or_missing(block), self.field(block)) for block in blocks):
                break
            found.append(case.field_or_missing(name))
        return found

    def field_or_missing(self, name):
        """A field's value for later cases, to which one that the schema refuses is missing."""
        try:
            return self.field(name)
        except Refused:
            return MISSING

    def actual(self):
        """The target's value in the case."""
        field = self._document.fields.get(self._document.target)
        return MISSING if field is None else field.plain(self._row.get(field.name, ""))

    def has_target(self, name):
        """Whether an output field that names this target speaks of the model's; one that names none does."""
        return name is None or self._document.target in (None, name)

    def display_value(self, category):
        """What a category or a predicted number is shown as."""
        document = self._document
        shown = document.target_values.display_value(category)
        if shown is None and document.target is not None:
            shown = next((each.get("displayValue") for each in document.fields[document.target].valid
                          if each.get("value") == category), None)
        return category if shown is None else shown

    def past(self):
        """The cases before this one, the first of them first."""
        return self._history

    def categories(self):
        """The categories of the target, in the dictionary's order."""
        return [each.get("value") for each in self._document.fields[self._document.target].valid]

    def valid(self, name):
        """The texts of the values that a field of the dictionary lists."""
        return [each.get("value") for each in self._document.fields[name].valid]

    def is_refused(self):
        """Whether the schema refuses the case for any of its fields."""
        active = [name for name, each in self._document.mining.items() if each.get("usageType", "active") == "active"]
        try:
            for name in active:
                self.field(name)
        except Refused:
            return True
        return False

    def _predict(self):
        document = self._document
        if self.is_refused():
            return Prediction()
        target = document.fields.get(document.target)
        optype = document.target_values.optype or (target.optype if target is not None else None)
        return MODELS[document.model.tag](document.model, self, optype)

    def score(self):
        document, prediction = self._document, self._predict()
        for name in document.derived:  # those that nothing uses have to be lawful too
            self.field_or_missing(name)
        if prediction.is_none:
            prediction = self._default()
        elif document.model.get("functionName") == "regression":
            prediction.value = document.target_values.number(prediction.value)
        self.predicted = self._as_target(prediction.value)
        columns = self._outputs(prediction)
        names = [name for name, _ in columns]
        name = document.target or "prediction"
        return [(f"predicted {name}" if name in names else name, self.predicted), *columns]

    def _default(self):
        """The prediction of a case that the model has none for."""
        target = self._document.target_values
        if self._document.model.get("functionName") == "regression":
            return Prediction(target.default_number())
        priors = target.priors()
        return Prediction(winner(priors), priors)

    def _as_target(self, value):
        if value is None:
            return MISSING
        field = self._document.fields.get(self._document.target)
        if isinstance(value, str):
            return constant(value, "string" if field is None else field.type)
        if not math.isfinite(value):
            return MISSING
        found = Value("integer" if isinstance(value, int) else "double", value)
        if field is not None and field.type == "string":
            return cast(found, "string")
        return found

    def _outputs(self, prediction):
        if self._document.output is None:
            return []
        try:
            return Outputs(self, prediction).columns(self._document.output)
        except Refused:
            return [(each.get("name"), MISSING) for each in self._document.output
                    if each.tag == "OutputField" and each.get("isFinalResult", "true") in ("true", "1")]


def _same(left, right):
    if left is MISSING or right is MISSING:
        return left is right
    try:
        return equal(left, right)
    except NotOfType:
        return False
