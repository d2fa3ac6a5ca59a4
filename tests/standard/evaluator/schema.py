"""The dictionary's and the mining schema's treatment of one cell.

In the standard's order: a missing value is replaced or refused; an invalid one is refused, taken as it is, taken for
missing or replaced; a number beyond the bounds of outliers stays, becomes missing or becomes the bound.

Decision: returnInvalid for missing values refuses the case although a replacement stands beside it.
Decision: a value that counts as missing by another rule gets the missing treatment.
Decision: a replacement is neither invalid nor an outlier; an invalid value that is taken as it is can be one.
Decision: a cell that can't be read as the field's type is invalid; taken as it is, it is missing.
"""
from . import tables
from .values import MISSING, NotOfType, Value, constant, equal, is_number_type, number, read


class Refused(Exception):
    """The schema refuses the case for a field's value."""


class Field:
    """A DataField: its type, what it lists, and the reading of its cells."""

    def __init__(self, element):
        self.name, self.type, self.optype = element.get("name"), element.get("dataType"), element.get("optype")
        self.intervals = [each for each in element if each.tag == "Interval"]
        values = [each for each in element if each.tag == "Value"]
        self.missing = [each.get("value") for each in values if each.get("property") == "missing"]
        self.excluded = [each.get("value") for each in values if each.get("property") == "invalid"]
        self.valid = [each for each in values if each.get("property", "valid") == "valid"]

    def listed(self):
        """The valid values in the document's order, for fields with an order of their own."""
        return [read(each.get("value"), self.type) for each in self.valid]

    def is_missing(self, cell):
        return cell == "" or any(self._writes(text, cell) for text in self.missing)

    def _writes(self, text, cell):
        """Whether a cell has the value of a text in the document; the same text is the same value of every type."""
        try:
            return text == cell or equal(read(text, self.type), read(cell, self.type))
        except NotOfType:
            return False

    def is_valid(self, cell):
        try:
            value = read(cell, self.type)
        except NotOfType:
            return False
        if any(self._writes(text, cell) for text in self.excluded):
            return False
        if not self.valid and not self.intervals:
            return True
        return any(self._writes(each.get("value"), cell) for each in self.valid) or (
            is_number_type(self.type) and any(tables.inside(each, number(value)) for each in self.intervals))

    def plain(self, cell):
        """The value of a cell without a mining schema."""
        if self.is_missing(cell):
            return MISSING
        try:
            return read(cell, self.type)
        except NotOfType:
            return MISSING


def _replacement(field, mining):
    if mining.get("missingValueTreatment") == "returnInvalid":
        raise Refused(field.name)
    text = mining.get("missingValueReplacement")
    return MISSING if text is None else constant(text, field.type)


def _outlier(field, mining, value):
    treatment = mining.get("outliers", "asIs")
    optype = mining.get("optype", field.optype)
    if treatment == "asIs" or optype != "continuous" or not is_number_type(value.type):
        return value
    low, high = mining.get("lowValue"), mining.get("highValue")
    for bound, beyond in ((low, lambda a, b: a < b), (high, lambda a, b: a > b)):
        if bound is not None and beyond(number(value), float(bound)):
            if treatment == "asMissingValues":
                return _replacement(field, mining)
            return constant(bound, value.type)
    return value


def _as_it_is(field, cell):
    try:
        value = read(cell, field.type)
    except NotOfType:
        return MISSING
    return Value(value.type, value.data, invalid=True)


def treat(field, mining, cell):
    """The value of a cell after the schema's treatment; Refused where the case has none."""
    if field.is_missing(cell):
        return _replacement(field, mining)
    if not field.is_valid(cell):
        treatment = mining.get("invalidValueTreatment", "returnInvalid")
        if treatment == "returnInvalid":
            raise Refused(field.name)
        if treatment == "asMissing":
            return _replacement(field, mining)
        if treatment == "asValue":
            return constant(mining.get("invalidValueReplacement"), field.type)
        value = _as_it_is(field, cell)
        return value if value is MISSING else _outlier(field, mining, value)
    return _outlier(field, mining, read(cell, field.type))
