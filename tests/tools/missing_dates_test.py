"""A missing date is an empty cell, whatever has passed it on, in `transform` and in `score`."""
import unittest

from host_command import Y, HostTest, field_ref, model_document, number_field

DATE = '<DataField name="D" optype="continuous" dataType="date"/>'
DAYS = '<DataField name="S" optype="continuous" dataType="dateDaysSince[1960]"/>'
X = number_field("X")


def derived(name, expression, data_type="date"):
    return f'<DerivedField name="{name}" optype="continuous" dataType="{data_type}">{expression}</DerivedField>'


class Transform(HostTest):
    """Each document has a date, then a missing one: what the first leaves behind must not show in the second."""

    def cells(self, derived_fields, cases="D,S,X\n2024-02-29,23435,1\n,,0\n,,1\n"):
        result = self.expect(self.transform(cases, fields=[DATE, DAYS, X], derived=derived_fields), 0, err="")
        return result.stdout.decode().splitlines()[1:]

    def test_a_field_reference(self):
        self.assertEqual(self.cells(field_ref("R", "D", "date") + field_ref("Q", "S", "dateDaysSince[1960]"))[1:],
                         [",", ","])

    def test_references_to_references(self):
        chain = "".join(field_ref(f"R{i}", f"R{i - 1}" if i else "D", "date") for i in range(8))
        self.assertEqual(self.cells(chain)[1:], ["," * 7, "," * 7])

    def test_a_lag(self):
        lags = derived("L", '<Lag field="D"/>') + field_ref("R", "L", "date")
        self.assertEqual([cells for cells in self.cells(lags)][2:], [","])

    def test_a_condition(self):
        condition = '<Apply function="greaterThan"><FieldRef field="X"/><Constant>0</Constant></Apply>'
        both = "".join(derived(name, f'<Apply function="if">{condition}<FieldRef field="{field}"/>'
                                     '<FieldRef field="D"/></Apply>', data_type)
                       for name, field, data_type in (("A", "D", "date"), ("B", "S", "dateDaysSince[1960]")))
        self.assertEqual(self.cells(both + derived("C", '<Lag field="A"/>'))[1:], [",,2024-02-29", ",,"])

    def test_a_map_from_a_date_and_a_reference_to_it(self):
        table = ('<MapValues outputColumn="o"><FieldColumnPair field="X" column="i"/>'
                 "<InlineTable><row><i>1</i><o>0</o></row></InlineTable></MapValues>")
        self.assertEqual(self.cells(derived("M", table) + field_ref("R", "M", "date"))[1], ",")

    def test_functions_of_it_are_missing(self):
        functions = (field_ref("R", "D", "date")
                     + derived("Y", '<Apply function="dateDaysSinceYear"><FieldRef field="R"/><Constant>2000</Constant></Apply>', "double")
                     + derived("M", '<Apply function="isMissing"><FieldRef field="R"/></Apply>', "double"))
        self.assertEqual(self.cells(functions)[1:], [",,1", ",,1"])


class Score(HostTest):
    MODEL = model_document(
        '<TransformationDictionary>' + field_ref("R", "D", "date") + field_ref("Q", "R", "date") + '</TransformationDictionary>'
        '<TreeModel functionName="regression"><MiningSchema><MiningField name="D"/>'
        '<MiningField name="y" usageType="target"/></MiningSchema><Output>'
        '<OutputField name="Copy" optype="continuous" dataType="date" feature="transformedValue">'
        '<FieldRef field="D"/></OutputField>'
        '<OutputField name="CopyOfCopy" optype="continuous" dataType="date" feature="transformedValue">'
        '<FieldRef field="Q"/></OutputField></Output>'
        '<Node score="0"><True/><Node score="1"><SimplePredicate field="Q" operator="isMissing"/></Node>'
        '<Node score="2"><True/></Node></Node></TreeModel>', fields=(DATE, Y))

    def test_outputs_and_conditions(self):
        self.write("model.pmml", self.MODEL)
        self.write("cases.csv", "D\n2024-02-29\n\"\"\n2024-02-28\n\"\"\n")
        result = self.expect(self.run_host("score", "model.pmml", "cases.csv"), 0, err="")
        rows = [row.split(",") for row in result.stdout.decode().splitlines()[1:]]
        self.assertEqual([row[0] for row in rows], ["2", "1", "2", "1"])
        self.assertEqual([rows[1], rows[3]], [["1", "", ""]] * 2)
        self.assertTrue(all(rows[0]) and all(rows[2]))


if __name__ == "__main__":
    unittest.main()
