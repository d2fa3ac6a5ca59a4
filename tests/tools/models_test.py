"""`veltrane`: which of several models of a document is meant."""
import unittest

from host_command import X, HostTest, model_document, number_field

SCHEMA = '<MiningSchema><MiningField name="x"/><MiningField name="y" usageType="target"/></MiningSchema>'


def verification(answer):
    return ('<ModelVerification recordCount="1" fieldCount="2"><VerificationFields><VerificationField field="x"/>'
            '<VerificationField field="y"/></VerificationFields>'
            f"<InlineTable><row><x>3</x><y>{answer}</y></row></InlineTable></ModelVerification>")


def attributes(name, more):
    return f'functionName="regression"{f" modelName={chr(34)}{name}{chr(34)}" if name else ""}{more}'


def regression(coefficient, name="", more=""):
    return (f"<RegressionModel {attributes(name, more)}>{SCHEMA}<RegressionTable intercept=\"0\">"
            f'<NumericPredictor name="x" coefficient="{coefficient}"/></RegressionTable>'
            f"{verification(3 * coefficient)}</RegressionModel>")


def tree(score, name="", more=""):
    return (f'<TreeModel {attributes(name, more)}>{SCHEMA}<Node score="{score}"><True/></Node>{verification(score)}'
            "</TreeModel>")


def document(*models, head="", version="4.2"):
    return head + model_document(*models, "<Extension/>", version=version)


class ModelsTest(HostTest):
    def setUp(self):
        super().setUp()
        self.write("cases.csv", "x\n3\n")
        self.write("models.txt", "RegressionModel TreeModel\n")

    def score(self, content, *options, **more):
        self.write("d.pmml", content)
        return self.run_host("score", "d.pmml", "cases.csv", "--models", "models.txt", *options, **more)

    def scores(self, value, content, *options, told=""):
        self.expect(self.score(content, *options), 0, f"y\n{value}\n", f"veltrane: warning: d.pmml: {told}\n" if told else "")


class WithoutAChoice(ModelsTest):
    def test_a_document_of_one_model_tells_nothing(self):
        self.scores(30, document(regression(10)))

    def test_the_first_in_the_document_is_scored_and_the_others_are_told(self):
        self.scores(7, document(tree(7), regression(10, "steep"), tree(8)),
                    told='of its 3 models, 1 (TreeModel) is used; the others: 2 "steep" (RegressionModel), 3 '
                         "(TreeModel); choose with --model")
        self.scores(30, document(regression(10, "steep"), tree(7)),
                    told='of its 2 models, 1 "steep" (RegressionModel) is used; the others: 2 (TreeModel); choose '
                         "with --model")

    def test_one_of_the_same_kind_too(self):
        self.scores(30, document(regression(10), regression(20)),
                    told="of its 2 models, 1 (RegressionModel) is used; the others: 2 (RegressionModel); choose with "
                         "--model")

    def test_models_that_cannot_be_scored_are_passed_over(self):
        self.scores(8, document("<Scorecard/>", tree(7, "no", ' isScorable="false"'), tree(6, "", ' isScorable="0"'),
                                tree(8, "yes")),
                    told='of its 4 models, 4 "yes" (TreeModel) is used; the others: 1 (Scorecard), 2 "no" (TreeModel), '
                         "3 (TreeModel); choose with --model")

    def test_the_plug_in_tells_why_none_can_be_scored(self):
        self.expect(self.score(document("<Scorecard/>", tree(7, "no", ' isScorable="false"'))), 1, "")
        self.assertIn(b"veltrane: error 260179: ", self.score(document(tree(7, "no", ' isScorable="false"'))).stderr)

    def test_quiet_is_quiet(self):
        self.expect(self.score(document(tree(7), tree(8)), "--quiet"), 0, "y\n7\n", "")

    def test_the_nearest_neighbours_of_another_model_play_no_part(self):
        self.scores(7, document(tree(7), "<NearestNeighborModel/>"),
                    told="of its 2 models, 1 (TreeModel) is used; the others: 2 (NearestNeighborModel); choose with "
                         "--model")

    def test_a_kind_that_stands_within_another_model_plays_no_part(self):
        """The library by itself takes the first kind of the list that stands anywhere in the document."""
        inner = "<Extension><RegressionModel/><ScriptedModel/></Extension>"
        self.scores(7, document(tree(7).replace(SCHEMA, inner + SCHEMA)))
        self.write("models.txt", "RegressionModel ScriptedModel TreeModel TextModel\n")
        self.scores(7, document(tree(7).replace(SCHEMA, inner + SCHEMA)))

    def test_many_models_are_not_all_told(self):
        result = self.score(document(*[tree(score) for score in range(100)]))
        self.expect(result, 0, "y\n0\n")
        self.assertTrue(result.stderr.endswith(b", 11 (TreeModel), ...; choose with --model\n"), result.stderr)


class WithAChoice(ModelsTest):
    CONTENT = document(tree(7, "low"), regression(10, "steep"), tree(8, "high"), regression(20, "2"))

    def test_by_number(self):
        for number, value in (("1", 7), ("3", 8), ("4", 60)):
            self.scores(value, self.CONTENT, "--model", number)

    def test_by_name_and_by_it_before_a_number(self):
        for name, value in (("low", 7), ("steep", 30), ("high", 8), ("2", 60)):
            self.scores(value, self.CONTENT, "--model", name)

    def test_of_several_models_of_neighbours(self):
        def near(name, *answers):
            rows = "".join(f"<row><x>{4 * place}</x><y>{answer}</y></row>" for place, answer in enumerate(answers))
            return (f'<NearestNeighborModel numberOfNeighbors="1" {attributes(name, "")}>{SCHEMA}<TrainingInstances>'
                    '<InstanceFields><InstanceField field="x"/><InstanceField field="y"/></InstanceFields>'
                    f"<InlineTable>{rows}</InlineTable></TrainingInstances>"
                    '<ComparisonMeasure kind="distance"><euclidean/></ComparisonMeasure>'
                    '<KNNInputs><KNNInput field="x"/></KNNInputs></NearestNeighborModel>')
        self.write("models.txt", "RegressionModel NearestNeighborModel\n")
        content = document(near("one", 7, 9), regression(10, "steep"), near("two", 17, 19))
        for wanted, value in (("1", 9), ("one", 9), ("2", 30), ("3", 19), ("two", 19)):
            self.scores(value, content, "--model", wanted)

    def test_of_neighbours_in_other_encodings(self):
        """Their plug-in reads the stream by itself, and what is left of it where a model was chosen."""
        def content(*names):
            return document(*[
                f'<NearestNeighborModel numberOfNeighbors="1" instanceIdVariable="who" {attributes("", "")}>{SCHEMA}'
                '<Output><OutputField name="near" feature="entityId"/></Output><TrainingInstances><InstanceFields>'
                '<InstanceField field="who"/><InstanceField field="x"/><InstanceField field="y"/></InstanceFields>'
                f"<InlineTable><row><who>{name}</who><x>0</x><y>7</y></row></InlineTable></TrainingInstances>"
                '<ComparisonMeasure kind="distance"><euclidean/></ComparisonMeasure><KNNInputs><KNNInput field="x"/>'
                "</KNNInputs></NearestNeighborModel>" for name in names])
        self.write("models.txt", "NearestNeighborModel\n")
        for encoding in ("ISO-8859-1", "UTF-16"):
            head = f'<?xml version="1.0" encoding="{encoding}"?>'
            for text, options, who in ((content("d\xe9j\xe0"), (), "d\xe9j\xe0"),
                                       (content("no", "\xe9"), ("--model", "2"), "\xe9")):
                self.expect(self.score((head + text).encode(encoding), *options), 0, f"y,near\n7,{who}\n")

    def test_of_one_model(self):
        self.scores(7, document(tree(7, "low")), "--model", "low")
        self.scores(7, document(tree(7)), "--model", "1")

    def test_one_that_is_not_there(self):
        for wanted in ("0", "5", "-1", "1x", "lower", "Low"):
            self.expect(self.score(self.CONTENT, f"--model={wanted}"), 1, "",
                        f'veltrane: d.pmml: there is no model "{wanted}"; the document holds 1 "low" (TreeModel), 2 "steep" '
                        '(RegressionModel), 3 "high" (TreeModel), 4 "2" (RegressionModel)\n')

    def test_a_name_that_several_have(self):
        self.expect(self.score(document(tree(7, "a"), tree(8, "a")), "--model", "a"), 1, "",
                    'veltrane: d.pmml: several models are named "a"; choose one by its number: 1 "a" (TreeModel), 2 "a" '
                    "(TreeModel)\n")

    def test_one_without_a_plug_in(self):
        self.expect(self.score(document(tree(7), "<Scorecard/>"), "--model", "2"), 1, "",
                    "veltrane: error 260301: Unsupported model: 'Scorecard'.\n"
                    "veltrane: d.pmml: there are plug-ins for RegressionModel, TreeModel (by models.txt)\n")

    def test_one_that_says_that_it_cannot_be_scored(self):
        result = self.score(document(tree(7), tree(8, "no", ' isScorable="false"')), "--model", "no")
        self.expect(result, 1, "")
        self.assertIn(b"veltrane: error 260179: ", result.stderr)

    def test_a_name_s_control_characters_are_shown_as_escapes(self):
        self.scores(7, document(tree(7, "a&#10;&#x9B;31m"), tree(8)),
                    told='of its 2 models, 1 "a\\n\\xC2\\x9B31m" (TreeModel) is used; the others: 2 (TreeModel); choose with '
                         "--model")

    def test_characters_of_xml_1_1_stay(self):
        field = number_field("a&#1;&#x85;&#x2028;")
        schema = SCHEMA.replace('"x"', '"a&#1;&#x85;&#x2028;"')
        content = document(tree(7), tree(8, "b"), head='<?xml version="1.1"?>').replace(X, X + field).replace(
            'numberOfFields="2"', 'numberOfFields="3"').replace(SCHEMA, schema)
        self.write("cases.csv", "a\x01\x85\u2028\n3\n")
        self.scores(8, content, "--model", "b")

    def test_a_document_without_models(self):
        self.expect(self.score("<kord-ml/>", "--model", "1"), 1, "",
                    "veltrane: d.pmml: the document holds no models to choose from\n")

    def test_verify_takes_the_records_of_the_model(self):
        self.write("d.pmml", self.CONTENT.replace("<y>7</y>", "<y>0</y>").replace("<y>30</y>", "<y>0</y>"))
        head = "Field  Records  Agree  Largest difference\n-----  -------  -----  ------------------\n"
        self.expect(self.run_host("verify", "d.pmml", "--model", "high"), 0, head + "y      1        1      0\n", "")
        self.expect(self.run_host("verify", "d.pmml", "--model", "steep"), 4, head + "y      1        0      30\n", "")
        self.expect(self.run_host("verify", "d.pmml"), 4, head + "y      1        0      7\n",
                    'veltrane: warning: d.pmml: of its 4 models, 1 "low" (TreeModel) is used; the others: 2 "steep" '
                    '(RegressionModel), 3 "high" (TreeModel), 4 "2" (RegressionModel); choose with --model\n')


class OtherEncodings(ModelsTest):
    def test_a_model_is_chosen_by_its_name_in_utf_8(self):
        content = document(tree(7, "low"), tree(8, "höher"), head='<?xml version="1.0" encoding="{}"?>')
        for encoding in ("UTF-16", "ISO-8859-1"):
            self.scores(8, content.format(encoding).encode(encoding), "--model", "höher")


if __name__ == "__main__":
    unittest.main()
