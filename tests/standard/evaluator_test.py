#!/usr/bin/env python3
"""The evaluator of the standard against rows that were worked out by hand or stand in the standard."""
import math
import unittest

import function_rows
import model_rows
import rule_rows
from evaluator import dates, functions, logic, values
from evaluator.document import Document
from evaluator.values import Value

FIELDS = {"a": ("continuous", "double"), "b": ("continuous", "double"), "s": ("categorical", "string"),
          "t": ("categorical", "string"), "f": ("categorical", "boolean"), "d": ("ordinal", "date")}
LISTED = ("small", "big", "vast")
DEFINED = """<DefineFunction name="twice" optype="continuous" dataType="double"><ParameterField name="x" dataType="double"/>
<Apply function="*"><Constant>2</Constant><FieldRef field="x"/></Apply></DefineFunction>
<DefineFunction name="four" optype="continuous" dataType="double"><ParameterField name="x"/>
<Apply function="twice"><Apply function="twice"><FieldRef field="x"/></Apply></Apply></DefineFunction>"""


def value_of(thing):
    """What a row writes, as a Value."""
    if thing is None:
        return None
    if isinstance(thing, function_rows.Invalid):
        value = value_of(thing.of)
        value.invalid = True
        return value
    if isinstance(thing, str) and thing.partition(":")[0] in dates.ALL:
        type_, _, text = thing.partition(":")
        return values.read(text, type_)
    return Value({bool: "boolean", int: "integer", float: "double", str: "string"}[type(thing)], thing)


def document_of(expression, type_):
    fields = "".join(f'<DataField name="{name}" optype="{optype}" dataType="{data_type}"/>'
                     for name, (optype, data_type) in FIELDS.items())
    fields += ('<DataField name="o" optype="ordinal" dataType="string">' + "".join(f'<Value value="{each}"/>' for each in LISTED) +
               "</DataField>")
    return (f'<PMML version="4.4" xmlns="http://www.dmg.org/PMML-4_4"><Header/><DataDictionary>{fields}</DataDictionary>'
            f'<TransformationDictionary>{DEFINED}<DerivedField name="r" optype="continuous" dataType="{type_}">{expression}'
            "</DerivedField></TransformationDictionary></PMML>")


class EvaluatorTest(unittest.TestCase):
    def expect(self, found, wanted, exact_type=False):
        """The same value: numbers to 15 digits, since some rows are from tables."""
        if wanted is None or found is None:
            self.assertIs(found, wanted)
            return
        wanted = value_of(wanted)
        if isinstance(wanted.data, float):
            self.assertTrue(math.isclose(found.data, wanted.data, rel_tol=4e-15, abs_tol=1e-300), (found, wanted))
        else:
            self.assertEqual(found.data, wanted.data)
            self.assertEqual(isinstance(found.data, bool), isinstance(wanted.data, bool))
        if exact_type:
            self.assertEqual(found.type, wanted.type)

    def test_functions_give_what_the_rows_say(self):
        for name, arguments, wanted, *more in function_rows.ROWS:
            with self.subTest(function=name, arguments=arguments):
                arguments = [value_of(each) for each in arguments]
                if wanted is function_rows.UNDEFINED:
                    self.assertRaises(functions.Undefined, functions.call, name, arguments)
                else:
                    self.expect(functions.call(name, arguments), wanted, bool(more))

    def test_every_function_of_the_standard_has_rows(self):
        self.assertEqual(functions.names(), sorted(function_rows.NAMES))
        self.assertEqual({row[0] for row in function_rows.ROWS}, set(function_rows.NAMES))

    def test_a_missing_argument_makes_the_result_missing(self):
        for name, arguments, *_ in function_rows.ROWS:
            for place in range(len(arguments)) if name in functions.NEEDS_ALL else ():
                with self.subTest(function=name, place=place):
                    holed = [None if i == place else value_of(each) for i, each in enumerate(arguments)]
                    self.assertIsNone(functions.call(name, holed))

    def test_an_invalid_value_is_told_from_a_missing_one(self):
        invalid = Value("string", "x", invalid=True)
        self.assertFalse(functions.call("isValid", [invalid]).data)
        self.assertTrue(functions.call("isNotValid", [invalid]).data)
        self.assertTrue(functions.call("isNotMissing", [invalid]).data)

    def test_an_invalid_argument_counts_as_its_value(self):
        for name, arguments, wanted, *_ in function_rows.ROWS:
            for place, argument in enumerate(arguments):
                if argument is None or wanted is function_rows.UNDEFINED or name in function_rows.OF_VALIDITY:
                    continue
                with self.subTest(function=name, arguments=arguments, place=place):
                    spoilt = [value_of(each) for each in arguments]
                    spoilt[place].invalid = True
                    self.expect(functions.call(name, spoilt), wanted)

    def test_exclusive_or_is_unknown_where_a_part_is(self):
        self.assertIs(logic.odd_number_of([True, False]), True)
        self.assertIs(logic.odd_number_of([True, True]), False)
        self.assertIsNone(logic.odd_number_of([True, None]))

    def test_expressions_follow_the_rules(self):
        for kind, rows in rule_rows.ROWS.items():
            for name, expression, type_, cells, wanted in rows:
                with self.subTest(expression=kind, row=name):
                    [[(_, found)]] = Document(document_of(expression, type_)).transform([cells])
                    self.expect(found, wanted)

    def test_models_follow_the_rules(self):
        for kind, text, cases in model_rows.ROWS:
            found = Document(text).score([cells for cells, _ in cases])
            for (cells, wanted), columns in zip(cases, found, strict=True):
                with self.subTest(model=kind, cells=cells):
                    for name, value in wanted.items():
                        self.expect(dict(columns)[name], value)

    def test_lags_look_back_within_their_block(self):
        def lag(attributes):
            text = document_of(f'<Lag field="a" {attributes}/>' if "<" not in attributes else attributes, "double")
            rows = [{"a": "1", "s": "x", "t": "p"}, {"a": "2", "s": "y", "t": "q"}, {"a": "", "s": "x", "t": "q"},
                    {"a": "5", "s": "x", "t": "q"}]
            return [None if row[0][1] is None else row[0][1].data for row in Document(text).transform(rows)]
        self.assertEqual(lag(""), [None, 1.0, 2.0, None])
        self.assertEqual(lag('n="2"'), [None, None, 1.0, 2.0])
        self.assertEqual(lag('n="2" aggregate="sum"'), [None, 1.0, 3.0, 2.0])
        self.assertEqual(lag('n="3" aggregate="avg"'), [None, 1.0, 1.5, 1.5])
        self.assertEqual(lag('n="3" aggregate="max"'), [None, 1.0, 2.0, 2.0])
        self.assertEqual(lag('n="3" aggregate="stddev"'), [None, None, math.sqrt(0.5), math.sqrt(0.5)])
        self.assertEqual(lag('<Lag field="a"><BlockIndicator field="s"/></Lag>'), [None, None, None, None])
        self.assertEqual(lag('<Lag field="a" aggregate="sum" n="3"><BlockIndicator field="t"/></Lag>'), [None, None, 2.0, 2.0])

    def test_days_go_by_the_gregorian_calendar(self):
        import datetime
        for count in [*range(-30000, 60000, 17), -719162, 2932896]:
            day = datetime.date.fromordinal(count + 719163)
            self.assertEqual(dates.day_of(count), (day.year, day.month, day.day))
            self.assertEqual(dates.days(*dates.day_of(count)), count)
        self.assertEqual(dates.day_of(-719528), (0, 1, 1))


if __name__ == "__main__":
    unittest.main()
