"""The conditions of a document worked out from operator and value alone, in three-valued logic: true, false and, where a
value is missing, None. SURROGATE is an answer that a later child of a surrogate compound has given."""
import operator
import shlex
import xml.etree.ElementTree as ElementTree

SURROGATE = "surrogate"
COMPARISONS = {"equal": operator.eq, "notEqual": operator.ne, "lessThan": operator.lt, "lessOrEqual": operator.le,
               "greaterThan": operator.gt, "greaterOrEqual": operator.ge}
PREDICATES = {"SimplePredicate", "SimpleSetPredicate", "CompoundPredicate", "True", "False"}


def tag(element):
    return element.tag.rpartition("}")[2]


def children(element, name):
    return [child for child in element if tag(child) == name]


class Document:
    """A document, its fields and the elements that have conditions, in the order of their tags."""

    def __init__(self, path):
        self.root = ElementTree.parse(path).getroot()
        fields = [element for element in self.root.iter() if tag(element) == "DataField"]
        self.levels = {field.get("name"): field.get("optype") for field in fields}
        self.categories = {field.get("name"): [value.get("value") for value in children(field, "Value")]
                           for field in fields}
        self.holders = []
        for name in ("Node", "SimpleRule", "CompoundRule"):
            found = [element for element in self.root.iter() if tag(element) == name]
            self.holders += [(element.get("id") or f"{name}#{number}", element)
                             for number, element in enumerate(found, 1)]

    def truth(self, holder, case):
        condition = next(child for child in holder if tag(child) in PREDICATES)
        return self.evaluate(condition, case)

    def evaluate(self, element, case):
        kind = tag(element)
        if kind in ("True", "False"):
            return kind == "True"
        if kind == "CompoundPredicate":
            answers = [self.evaluate(child, case) for child in element if tag(child) in PREDICATES]
            return combine(element.get("booleanOperator"), answers)
        value = case.get(element.get("field"))
        if kind == "SimpleSetPredicate":
            return None if value is None else (value in elements_of(element)) == (
                element.get("booleanOperator") == "isIn")
        return self.compare(element, value)

    def compare(self, element, value):
        comparison, operand = element.get("operator"), element.get("value")
        if comparison == "isMissing" or operand == "":
            return value is None
        if value is None:
            return None
        if comparison == "isNotMissing":
            return True
        rank = self.ranks(element.get("field"))
        return COMPARISONS[comparison](rank(value), rank(operand))

    def ranks(self, field):
        level = self.levels.get(field, "continuous")
        if level == "continuous":
            return float
        return self.categories[field].index if level == "ordinal" else str


def elements_of(element):
    return shlex.split(children(element, "Array")[0].text)


def combine(boolean_operator, answers):
    if boolean_operator == "surrogate":
        for place, answer in enumerate(answers):
            if answer is not None:
                return SURROGATE if answer and place > 0 else answer
        return None
    if boolean_operator == "xor":
        return None if None in answers else sum(answers) % 2 == 1
    decisive = boolean_operator == "or"
    return decisive if decisive in answers else None if None in answers else not decisive
