"""The pages say of the command what it does."""
import os
import pathlib
import re
import unittest

from host_command import AGE, NAME, PROJECT, HostTest, field_ref, text_ref

DOCS = PROJECT / "docs"
PAGE = (DOCS / "command-line.md").read_text()
LOAN = PROJECT / "examples" / "loan"


def rows(heading, text=PAGE):
    """The cells of the first table behind a heading, without the backquotes."""
    section = text[text.index(heading):]
    table = re.search(r"\n\|---.*\n((?:\|.*\n)+)", section).group(1)
    return [[cell.strip() for cell in re.split(r"(?<!\\)\|", line.strip("|"))] for line in table.splitlines()]


class Options(HostTest):
    def test_the_page_and_the_help_of_each_command_have_the_same_options(self):
        transform = {row[0].strip("`").split()[0] for row in rows("## transform")}
        score = {row[0].strip("`").split()[0] for row in rows("## score")} | transform
        for command, options in (("transform", transform), ("score", score)):
            shown = self.run_host(command, "--help").stdout.decode()
            listed = set(re.findall(r"^  (?:-\w,)?(--?[\w-]+)", shown, re.MULTILINE)) - {"--help"}
            self.assertEqual(listed, options)

    def test_the_first_lines_of_the_pages_have_the_options_of_each_command(self):
        for page in (PAGE, (PROJECT / "README.md").read_text()):
            for command in ("transform", "verify", "inspect"):
                shown = self.run_host(command, "--help").stdout.decode()
                listed = set(re.findall(r"^  (?:-\w,)?(--?[\w-]+)", shown, re.MULTILINE)) - {"--help"}
                usage = re.search(f"^    veltrane {command} (.*)$", page, re.MULTILINE).group(1)
                self.assertEqual(listed, set(re.findall(r"(?<=\[)--?[\w-]+", usage)), command)

    def test_the_options_of_models_take_the_values_of_the_page(self):
        completion = (pathlib.Path(os.environ["VELTRANE_PAGES"]) / "veltrane.bash").read_text()
        for name, values, _ in rows("### The options of a model"):
            for value in re.findall("`(.*?)`", values):
                self.assertIn(f"'{name.strip('`')}={value}'", completion)
                result = self.run_host("score", LOAN / "default.pmml", LOAN / "applicants.csv", "--missing", "NA", "--quiet",
                                       "--option", f"{name.strip('`')}={value}")
                self.expect(result, 3)
            self.expect(self.run_host("score", LOAN / "default.pmml", LOAN / "applicants.csv", "--option",
                                      f"{name.strip('`')}=else"), 1, "")

    def test_encodings(self):
        row = next(row[1] for row in rows("## transform") if "--encoding" in row[0])
        good, bad = row.split("One that doesn't")
        for names, code in ((good, 0), (bad, 2)):
            for name in re.findall("`(.*?)`", names):
                self.expect(self.transform("Age\n1\n", "--encoding", name), code)

    def test_delimiters(self):
        row = next(row[1] for row in rows("## transform") if "--delimiter" in row[0])
        refused, taken = re.search(r"none that(.*?)line end\.(.*)", row).groups()
        for character in re.findall("`(.*?)`", refused) + list("aZ09\"\n\r"):
            self.expect(self.transform("Age\n1\n", "--delimiter", character), 2)
        for character in [text.replace("\\|", "|") for text in re.findall("`(.*?)`", taken)] + [" ", "\t", "~", "_", ":"]:
            delimiter = "\t" if character == "\\t" else character
            self.expect(self.transform(f"Age{delimiter}Name\n1{delimiter}x\n", "--delimiter", character, fields=[AGE, NAME],
                                       derived=field_ref("A", "Age") + text_ref("N", "Name")), 0, f"A{delimiter}N\n1{delimiter}x\n")


class Numbers(HostTest):
    def test_beyond_the_range(self):
        self.assertIn("`1e400` is infinity, and written as `inf`; `-1e400` cannot be read. `1e-400` and", PAGE)
        self.expect(self.transform("Age\n1e400\n-1e400\n1e-400\n-1e-400\n"), 3, 'Out\ninf\n""\n0\n-0\n',
                    'cases.csv:3: Age: "-1e400" is out of the range of numbers\nveltrane: 1 cell could not be read\n')


class Functions(HostTest):
    def test_a_function_of_the_document_is_applied(self):
        for page in ("features.md", "functions.md"):
            self.assertIn("`DefineFunction`", (DOCS / page).read_text())
        define = ('<DefineFunction name="twice" optype="continuous" dataType="double"><ParameterField name="a"/>'
                  '<Apply function="*"><FieldRef field="a"/><Constant>2</Constant></Apply></DefineFunction>')
        call = ('<DerivedField name="d" optype="continuous" dataType="double"><Apply function="twice">'
                '<FieldRef field="Age"/></Apply></DerivedField>')
        self.expect(self.transform("Age\n1\n", derived=define + call), 0, "d\n2\n", "")
        self.expect(self.transform("Age\n1\n", derived=call), 1, "",
                    "veltrane: error 260153: Invalid value: 'twice' of attribute 'function' in 'Apply'.\n")

    def test_the_library_alone_refuses_it(self):
        define = ('<DefineFunction name="twice" optype="continuous" dataType="double"><ParameterField name="a"/>'
                  '<Apply function="*"><FieldRef field="a"/><Constant>2</Constant></Apply></DefineFunction>')
        call = ('<DerivedField name="d" optype="continuous" dataType="double"><Apply function="twice">'
                '<FieldRef field="Age"/></Apply></DerivedField>')
        told = "veltrane: error 260303: Unsupported value 'twice' of attribute 'function'.\n"
        self.expect(self.transform("Age\n1\n", "--plain", derived=define + call), 1, "",
                    told + "veltrane: document.pmml: the library alone reads no functions that a document defines itself "
                    "(DefineFunction)\n")
        self.expect(self.transform("Age\n1\n", "--plain", derived=define + field_ref("Out", "Age")), 0, "Out\n1\n", "")


class Hosts(unittest.TestCase):
    def test_no_page_tells_hosts_to_call_what_is_not_installed(self):
        for page in [*DOCS.glob("*.md"), PROJECT / "README.md"]:
            self.assertNotIn("veltrane_kit::", page.read_text(), page.name)
        self.assertIn("isn't installed", (DOCS / "documents.md").read_text())


if __name__ == "__main__":
    unittest.main()
