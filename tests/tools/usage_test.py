"""`veltrane`: words that are none, standard streams by `-`, and outputs that would be written over an input."""
import os
import subprocess
import unittest

from host_command import AGE, COMMAND, HostTest, field_ref

COMMANDS = "The commands are transform, score, verify, inspect, functions; run one with --help for its options.\n"


class Words(HostTest):
    def complains(self, text, *arguments):
        self.expect(self.run_host(*arguments), 2, "", f"veltrane: {text}\n" + COMMANDS)

    def test_a_command_that_is_none_is_named_and_the_nearest_suggested(self):
        self.complains('there is no command "scor"; did you mean "score"?', "scor")
        self.complains('there is no command "scor"; did you mean "score"?', "scor", "model.pmml", "cases.csv")
        self.complains('there is no command "Inspect"; did you mean "inspect"?', "Inspect", "model.pmml")

    def test_a_command_that_is_like_none_is_named(self):
        self.complains('there is no command "predict"', "predict", "model.pmml")
        self.complains('there is no command "a\\nb"', "a\nb")

    def test_an_option_that_is_none_is_named_and_the_nearest_suggested(self):
        self.complains('there is no option "--mising" of score; did you mean "--missing"?',
                       "score", "d", "c", "--mising", "NA")
        self.complains('there is no option "--json" of verify', "verify", "d", "--json")
        self.complains('there is no option "--delimeter" of transform; did you mean "--delimiter"?',
                       "transform", "d", "c", "--delimeter=;")

    def test_where_the_output_goes_is_suggested_by_its_short_name(self):
        for name in ("--output", "--out", "--outptu"):
            self.complains(f'there is no option "{name}" of score; did you mean "-o"?', "score", "d", "c", name, "x")
        self.complains('there is no option "--output" of inspect', "inspect", "d", "--output", "x")

    def test_an_option_in_front_of_the_command_is_named(self):
        self.complains('there is no option "--hlp" in front of a command; did you mean "--help"?', "--hlp")
        self.complains('there is no option "--quiet" in front of a command', "--quiet", "score", "d", "c")

    def test_an_option_with_one_dash_is_named_and_the_one_with_two_suggested(self):
        self.complains('there is no option "-missing" of score; did you mean "--missing"?',
                       "score", "d", "c", "-missing", "NA")
        self.complains('there is no option "-m" of score', "score", "d", "c", "-m", "NA")
        self.complains('there is no option "-x" in front of a command', "-x")
        self.complains('there is no option "-versio" in front of a command; did you mean "--version"?', "-versio")

    def test_a_word_too_many_is_named(self):
        self.complains('"more.csv" is one too many; score takes DOCUMENT and CASES', "score", "d", "c", "more.csv", "x")
        self.complains('"c" is one too many; inspect takes DOCUMENT', "inspect", "d", "c")
        self.complains('"d" is one too many; functions takes no files', "functions", "d")

    def test_without_a_command(self):
        self.complains("a command is needed")

    def test_what_else_is_wrong_is_told_too(self):
        self.expect(self.run_host("score", "d"), 2, "",
                    "veltrane: CASES is required\nRun with --help for more information.\n")
        self.expect(self.run_host("score", "d", "c", "--encoding", "utf8x"), 2, "",
                    'veltrane: --encoding: unknown encoding "utf8x"\nRun with --help for more information.\n')

    def test_a_file_needs_a_name(self):
        def complains(name, *arguments):
            self.expect(self.run_host(*arguments), 2, "",
                        f"veltrane: {name}: its name is empty\nRun with --help for more information.\n")

        for command in ("transform", "score"):
            complains("DOCUMENT", command, "", "c")
            complains("CASES", command, "d", "")
            complains("-o", command, "d", "c", "-o", "")
            complains("--rejects", command, "d", "c", "--rejects", "")
        for command in ("inspect", "verify"):
            complains("DOCUMENT", command, "")
            complains("--models", command, "d", "--models", "")

    def test_a_document_named_like_no_command_is_none_of_its_business(self):
        self.expect(self.run_host("inspect", "scor"), 1, "")


class StandardStreams(HostTest):
    def setUp(self):
        super().setUp()
        self.path = self.document([AGE], field_ref("Out", "Age"))
        self.write("cases.csv", "Age\n1\n")

    def test_the_output_may_be_standard_output_by_name(self):
        self.expect(self.run_host("transform", "document.pmml", "cases.csv", "-o", "-"), 0, "Out\n1\n", "")
        self.assertEqual(self.names(), ["cases.csv", "document.pmml"])

    def test_both_inputs_cannot_be_standard_input(self):
        for command in ("transform", "score"):
            self.expect(self.run_host(command, "-", "-", input=b""), 2, "",
                        "veltrane: DOCUMENT and CASES cannot both be standard input\n")


class OutputsOnInputs(HostTest):
    def setUp(self):
        super().setUp()
        self.document([AGE], field_ref("Out", "Age"))
        self.write("cases.csv", "Age\n1\n2\n")

    def refuses(self, output, source, *arguments):
        before = {name: (self.folder / name).read_bytes() for name in self.names()}
        result = self.run_host(*(arguments or ("transform", "document.pmml", "cases.csv")), "-o", output)
        self.expect(result, 2, "", f"veltrane: {output}: the output is the same file as the input {source}; "
                                   "write to another one\n")
        self.assertEqual({name: (self.folder / name).read_bytes() for name in self.names()}, before)

    def test_by_the_same_name(self):
        self.refuses("cases.csv", "cases.csv")
        self.refuses("document.pmml", "document.pmml")

    def test_by_another_name(self):
        self.refuses("./cases.csv", "cases.csv")
        self.refuses(self.folder / "cases.csv", "cases.csv")

    def test_by_a_symbolic_and_by_a_hard_link(self):
        (self.folder / "link.csv").symlink_to("cases.csv")
        os.link(self.folder / "cases.csv", self.folder / "same.csv")
        self.refuses("link.csv", "cases.csv")
        self.refuses("same.csv", "cases.csv")

    def test_of_score(self):
        self.write("models.txt", "RegressionModel\n")
        for output, source in (("models.txt", "models.txt"), ("cases.csv", "cases.csv")):
            self.refuses(output, source, "score", "document.pmml", "cases.csv", "--models", "models.txt")

    def test_a_link_to_a_file_that_is_no_input_is_written_through(self):
        self.write("new.csv", "old")
        (self.folder / "link.csv").symlink_to("new.csv")
        self.expect(self.run_host("transform", "document.pmml", "cases.csv", "-o", "link.csv"), 0, "", "")
        self.assertEqual((self.folder / "new.csv").read_text(), "Out\n1\n2\n")

    def test_standard_input_and_standard_output_that_are_one_file(self):
        with open(self.folder / "cases.csv", "rb") as cases, open(self.folder / "cases.csv", "ab") as output:
            result = subprocess.run([COMMAND, "transform", "document.pmml", "-"], cwd=self.folder, stdin=cases,
                                    stdout=output, stderr=subprocess.PIPE, timeout=60)
        self.assertEqual((result.returncode, result.stderr.decode()), (
            2, "veltrane: standard output: the output is the same file as the input standard input; "
               "write to another one\n"))
        self.assertEqual((self.folder / "cases.csv").read_text(), "Age\n1\n2\n")

    def test_a_device_may_be_both(self):
        self.expect(self.run_host("transform", "document.pmml", "/dev/null", "-o", "/dev/null"), 1, "",
                    "veltrane: /dev/null: the file is empty; a header of field names is needed\n")


if __name__ == "__main__":
    unittest.main()
