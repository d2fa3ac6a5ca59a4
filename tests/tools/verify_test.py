"""`veltrane verify`: documents that agree with their own records, and documents that don't."""
import unittest

from host_command import PROJECT, HostTest

DEFAULT = (PROJECT / "examples" / "loan" / "default.pmml").read_text()
HEAD = "Field    Records  Agree  Largest difference\n-------  -------  -----  ------------------\n"


SEVERAL = """<PMML version="4.4"><DataDictionary><DataField name="x" optype="continuous" dataType="double"/>
<DataField name="y" optype="continuous" dataType="double"/><DataField name="z" optype="continuous" dataType="double"/>
<DataField name="k" optype="categorical" dataType="string"><Value value="u"/><Value value="v"/></DataField></DataDictionary>
<NeuralNetwork functionName="mixed" activationFunction="identity"><MiningSchema><MiningField name="x"/>
<MiningField name="y" usageType="target"/><MiningField name="z" usageType="target"/><MiningField name="k" usageType="target"/></MiningSchema>
<ModelVerification><VerificationFields><VerificationField field="x"/><VerificationField field="y"/><VerificationField field="z"/>
<VerificationField field="k"/></VerificationFields><InlineTable><row><x>2</x><y>6</y><z>10</z><k>u</k></row>
<row><x>-1</x><y>-3</y><z>-5</z><k>v</k></row></InlineTable></ModelVerification>
<NeuralInputs><NeuralInput id="0"><DerivedField optype="continuous" dataType="double"><FieldRef field="x"/></DerivedField></NeuralInput>
</NeuralInputs><NeuralLayer><Neuron id="1"><Con from="0" weight="3"/></Neuron><Neuron id="2"><Con from="0" weight="5"/></Neuron></NeuralLayer>
<NeuralOutputs><NeuralOutput outputNeuron="1"><DerivedField optype="continuous" dataType="double"><FieldRef field="y"/></DerivedField>
</NeuralOutput><NeuralOutput outputNeuron="2"><DerivedField optype="continuous" dataType="double"><FieldRef field="z"/></DerivedField>
</NeuralOutput><NeuralOutput outputNeuron="1"><DerivedField optype="continuous" dataType="double"><NormDiscrete field="k" value="u"/>
</DerivedField></NeuralOutput></NeuralOutputs></NeuralNetwork></PMML>"""


class Verify(HostTest):
    def verify_several(self, old="", new=""):
        self.assertIn(old, SEVERAL)
        self.write("several.pmml", SEVERAL.replace(old, new, 1))
        return self.run_host("verify", "several.pmml")

    def test_every_target_of_a_model_is_a_result(self):
        head = "Field  Records  Agree  Largest difference\n-----  -------  -----  ------------------\n"
        self.expect(self.verify_several(), 0, head + "y      2        2      0\nz      2        2      0\nk      2        2      -\n", "")
        self.expect(self.verify_several("<z>10", "<z>11"), 4,
                    head + "y      2        2      0\nz      2        1      1\nk      2        2      -\n", "")
        self.expect(self.verify_several("<k>v", "<k>u"), 4,
                    head + "y      2        2      0\nz      2        2      0\nk      2        1      -\n", "")

    def verify(self, old="", new=""):
        self.assertIn(old, DEFAULT)
        self.write("model.pmml", DEFAULT.replace(old, new, 1) if old else DEFAULT)
        return self.run_host("verify", "model.pmml")

    def test_records_that_agree(self):
        self.expect(self.verify(), 0, HEAD + "Default  3        3      -\nRisk     3        3      0\n", "")

    def test_a_number_that_differs(self):
        risk = "0.1383184753107612"
        self.expect(self.verify(risk, "0.6383184753107612"), 4,
                    HEAD + "Default  3        3      -\nRisk     3        2      0.5\n", "")

    def test_a_number_within_its_precision_agrees(self):
        result = self.expect(self.verify("0.1383184753107612", "0.13831847531"), 0, err="")
        self.assertIn(b"Risk     3        3      ", result.stdout)

    def test_a_category_that_differs(self):
        self.expect(self.verify("<default>no</default>", "<default>yes</default>"), 4,
                    HEAD + "Default  3        2      -\nRisk     3        3      0\n", "")

    def test_a_result_where_none_is_expected(self):
        self.expect(self.verify("<default>no</default>", ""), 4,
                    HEAD + "Default  3        2      -\nRisk     3        3      0\n", "")

    def test_a_case_without_a_result_differs_and_one_that_expects_none_agrees(self):
        row = "<age>34</age><income>52000</income><amount>12000</amount><housing>own</housing>"
        result = self.verify(row, "<age>34</age><income>52000</income><housing>own</housing>")
        self.expect(result, 4, HEAD + "Default  3        2      -\nRisk     3        2      0\n", "")
        self.expect(self.verify(row + "<default>no</default><risk>0.1383184753107612</risk>", "<age>34</age>"), 0,
                    HEAD + "Default  3        3      -\nRisk     3        3      0\n", "")

    def test_an_input_that_the_records_leave_out_is_told(self):
        document = DEFAULT.replace('<VerificationField field="Income" column="income"/>', "", 1)
        self.write("model.pmml", document.replace('fieldCount="6"', 'fieldCount="5"', 1))
        self.expect(self.run_host("verify", "model.pmml"), 4, err="veltrane: warning: model.pmml: inputs that the verification records leave out are "
                                   'missing in each: "Income"\n')

    def test_a_document_without_records(self):
        start, end = DEFAULT.index("<ModelVerification"), DEFAULT.index("</RegressionModel>")
        self.expect(self.verify(DEFAULT[start:end], ""), 1, "",
                    "veltrane: model.pmml: the document has no verification records\n")

    def test_a_field_that_is_neither_input_nor_result(self):
        self.expect(self.verify('field="Age" column="age"', 'field="Years" column="age"'), 1, "",
                    'veltrane: model.pmml: the verification field "Years" is neither a field nor a result\n')

    def test_an_output_field_that_is_not_written_is_verified(self):
        hidden = DEFAULT.replace('name="Risk"', 'name="Risk" isFinalResult="false"', 1)
        self.assertNotEqual(hidden, DEFAULT)
        self.write("model.pmml", hidden)
        self.expect(self.run_host("verify", "model.pmml"), 0, HEAD + "Default  3        3      -\nRisk     3        3      0\n", "")
        self.write("model.pmml", hidden.replace("0.1383184753107612", "0.6383184753107612", 1))
        self.expect(self.run_host("verify", "model.pmml"), 4, HEAD + "Default  3        3      -\nRisk     3        2      0.5\n", "")

    def test_a_cell_that_cannot_be_read(self):
        self.expect(self.verify("<age>22</age>", "<age>young</age>"), 1, "",
                    'veltrane: model.pmml: record 2: Age: "young" is not a number\n')


if __name__ == "__main__":
    unittest.main()
