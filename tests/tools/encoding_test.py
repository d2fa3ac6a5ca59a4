"""Cases in another encoding than the one that was told, and documents whose elements are written with a prefix."""
import re
import unittest

from host_command import AGE, NAME, PROJECT, HostTest, document, field_ref, number_field, text_ref

TOTAL = "veltrane: 1 cell could not be read\n"
LOAN = (PROJECT / "examples" / "loan" / "default.pmml").read_text()
CASES = "Age,Income,Amount,Housing\n34,52000,12000,own\n22,18000,20000,rent\n"


def prefixed(text, prefix="p"):
    """The document with a prefix on each element, declared where its name space was."""
    text = re.sub(r'\sxmlns="', f' xmlns:{prefix}="', text)
    return re.sub(r"<(/?)([A-Za-z])", rf"<\1{prefix}:\2", text)


class Cells(HostTest):
    BOTH = dict(fields=[AGE, NAME], derived=field_ref("A", "Age") + text_ref("N", "Name"))

    def test_bytes_that_are_not_in_it_are_reported_and_missing(self):
        self.expect(self.transform("Age,Name\n1,Größe\n2,ok\n".encode("cp1252"), **self.BOTH), 3, "A,N\n1,\n2,ok\n",
                    'cases.csv:2: Name: "Gr\\xF6\\xDFe" is not text in UTF-8\n' + TOTAL)

    def test_what_is_in_it_passes(self):
        for encoding in ("utf-8", "cp1252", "shift_jis", "gb18030", "iso-2022-jp"):
            with self.subTest(encoding):
                text = "ソ表" if encoding in ("shift_jis", "iso-2022-jp") else "Größe"
                cases = f"Age,Name\n1,{text}\n".encode(encoding)
                self.expect(self.transform(cases, "--encoding", encoding, **self.BOTH), 0,
                            f"A,N\n1,{text}\n".encode(encoding), "")

    def test_utf_8_read_as_another_encoding(self):
        self.expect(self.transform("Age,Name\n1,é\n", "--encoding", "US-ASCII", **self.BOTH), 3, "A,N\n1,\n",
                    'cases.csv:2: Name: "é" is not text in US-ASCII\n' + TOTAL)

    def test_a_token_for_missing_values_is_compared_first(self):
        result = self.transform(b"Age,Name\n1,\xe9\n", "--missing", b"\xe9".decode(errors="surrogateescape"), **self.BOTH)
        self.expect(result, 0, "A,N\n1,\n", "")

    def test_a_number_is_no_number_first(self):
        self.expect(self.transform(b"Age,Name\n1\xe9,x\n", **self.BOTH), 3, "A,N\n,x\n",
                    'cases.csv:2: Age: "1\\xE9" is not a number\n' + TOTAL)

    def test_strict_and_quiet(self):
        cases = "Age,Name\n1,é\n2,é\n".encode("cp1252")
        self.expect(self.transform(cases, "--strict", **self.BOTH), 1, "",
                    'cases.csv:2: Name: "\\xE9" is not text in UTF-8\n')
        self.expect(self.transform(cases, "--quiet", **self.BOTH), 3, "A,N\n1,\n2,\n",
                    "veltrane: 2 cells could not be read\n")


class OtherColumns(HostTest):
    CASES = "Age,note\n1,schön\n2,ok\n".encode("cp1252")

    def test_a_kept_column_is_looked_at_and_written_as_it_is(self):
        self.expect(self.transform(self.CASES, "--keep"), 3, "Age,note,Out\n1,schön,1\n2,ok,2\n".encode("cp1252"),
                    'veltrane: warning: cases.csv: columns that are no field are ignored: "note"\n'
                    'cases.csv:2: note: "sch\\xF6n" is not text in UTF-8\n' + TOTAL)

    def test_strict_ends_at_it(self):
        self.expect(self.transform(self.CASES, "--keep", "--strict", "-o", "out.csv"), 1, "",
                    'veltrane: warning: cases.csv: columns that are no field are ignored: "note"\n'
                    'cases.csv:2: note: "sch\\xF6n" is not text in UTF-8\n')
        self.assertNotIn("out.csv", self.names())

    def test_one_that_goes_nowhere_is_not(self):
        self.expect(self.transform(self.CASES, "--quiet"), 0, "Out\n1\n2\n", "")

    def test_a_kept_field_is_reported_once(self):
        cases = "Name\nschön\n".encode("cp1252")
        self.expect(self.transform(cases, "--keep", fields=[NAME], derived=text_ref("N", "Name")), 3,
                    "Name,N\nschön,\n".encode("cp1252"), 'cases.csv:2: Name: "sch\\xF6n" is not text in UTF-8\n' + TOTAL)


class Header(HostTest):
    def test_a_name_is_reported(self):
        self.expect(self.transform("Age,Größe\n1,2\n".encode("cp1252")), 3, "Out\n1\n",
                    'cases.csv:1: column 2: "Gr\\xF6\\xDFe" is not text in UTF-8\n'
                    'veltrane: warning: cases.csv: columns that are no field are ignored: "Gr\\xF6\\xDFe"\n' + TOTAL)

    def test_a_needed_name_in_another_encoding(self):
        field = NAME.replace("Name", "Größe")
        self.expect(self.transform("Größe\n1\n".encode("cp1252"), fields=[field], derived=text_ref("N", "Größe")), 1, "",
                    'cases.csv:1: column 1: "Gr\\xF6\\xDFe" is not text in UTF-8\n'
                    'veltrane: cases.csv: the document needs a column that is not there: "Größe"; the header has none of '
                    "the document's fields; --missing-columns takes it for missing\n")

    def test_strict_ends_there(self):
        self.expect(self.transform("Age,Größe\n1,2\n".encode("cp1252"), "--strict"), 1, "",
                    'cases.csv:1: column 2: "Gr\\xF6\\xDFe" is not text in UTF-8\n')


class PrefixedNames(HostTest):
    """Elements with a prefix for PMML's name space mean what they mean without it."""

    def same(self, text, *arguments, plain=LOAN):
        """The command says of both documents the same."""
        self.write("m.pmml", plain)
        expected = self.run_host(*arguments)
        self.assertEqual(expected.returncode, 0, expected.stderr)
        self.write("m.pmml", text)
        self.expect(self.run_host(*arguments), 0, expected.stdout.decode(), expected.stderr.decode())

    def test_a_model_is_scored_verified_and_shown(self):
        self.write("cases.csv", CASES)
        self.assertIn("<p:PMML", prefixed(LOAN))
        for command in (("score", "m.pmml", "cases.csv"), ("verify", "m.pmml"), ("inspect", "m.pmml")):
            self.same(prefixed(LOAN), *command)

    def test_derived_fields_are_computed(self):
        self.write("cases.csv", "x\n1.5\n")
        plain = document([number_field("x")], field_ref("d", "x")).replace(
            "<PMML ", '<PMML xmlns="http://www.dmg.org/PMML-3_0" ')
        self.same(prefixed(plain), "transform", "m.pmml", "cases.csv", plain=plain)

    def test_a_prefix_may_be_declared_within_and_mean_something_else_there(self):
        inner = LOAN.replace("<DataDictionary", '<q:DataDictionary xmlns:q="http://www.dmg.org/PMML-4_4"', 1)
        inner = inner.replace("</DataDictionary>", "</q:DataDictionary>", 1)
        other = '<q:Extension xmlns:q="http://example.org/"><q:DataField name="no"/></q:Extension></q:DataDictionary>'
        self.write("cases.csv", CASES)
        self.same(inner, "score", "m.pmml", "cases.csv")
        self.write("m.pmml", inner.replace("</q:DataDictionary>", other, 1))
        result = self.run_host("score", "m.pmml", "cases.csv")
        self.expect(result, 1, "", "veltrane: error 260159: Invalid node 'q:Extension' in 'DataDictionary'.\n")

    def test_other_prefixes_stay(self):
        self.write("cases.csv", CASES)
        for space in ("http://example.org/", "http://www.dmg.org/"):
            self.write("m.pmml", prefixed(LOAN).replace("http://www.dmg.org/PMML-", space + "pmml-"))
            result = self.run_host("score", "m.pmml", "cases.csv")
            self.assertEqual((result.returncode, result.stdout), (1, b""))
            self.assertIn(b"error 260301: Unsupported model: 'p:PMML'.", result.stderr)

    def test_characters_of_any_encoding_stay(self):
        self.write("cases.csv", "größe\n2\n")
        text = document([number_field("größe")], field_ref("a&lt;&#9;\"".replace('"', "&quot;"), "größe"), "ISO-8859-1")
        text = text.replace("<PMML ", '<PMML xmlns="http://www.dmg.org/PMML-4_4" ')
        for document_text in (text, prefixed(text)):
            (self.folder / "m.pmml").write_bytes(document_text.encode("iso-8859-1"))
            self.expect(self.run_host("transform", "m.pmml", "cases.csv", "--encoding", "UTF-8"), 0,
                        '"a<\t"""\n2\n', "")

    def test_the_library_alone_takes_names_as_they_are_written(self):
        plain = document([number_field("x")], field_ref("d", "x")).replace(
            "<PMML ", '<PMML xmlns="http://www.dmg.org/PMML-4_4" ')
        self.write("m.pmml", prefixed(plain))
        self.write("cases.csv", "x\n1\n")
        for command in (("transform", "m.pmml", "cases.csv", "--plain"), ("inspect", "m.pmml", "--plain")):
            result = self.run_host(*command)
            self.assertEqual((result.returncode, result.stdout), (1, b""))
            self.assertIn(b'its root element is "p:PMML"', result.stderr)
        self.write("m.pmml", prefixed(LOAN))
        self.write("cases.csv", CASES)
        result = self.run_host("score", "m.pmml", "cases.csv", "--plain")
        self.assertEqual((result.returncode, result.stdout), (1, b""))
        self.assertIn(b"error 260301: Unsupported model: 'p:PMML'.", result.stderr)

    def test_a_fault_is_told_where_it_stands_in_the_document(self):
        self.write("m.pmml", prefixed(LOAN) + "\n<more/>")
        result = self.run_host("verify", "m.pmml")
        self.assertEqual(result.returncode, 1)
        self.assertRegex(result.stderr, rb"veltrane: m\.pmml:\d+:\d+: ")


if __name__ == "__main__":
    unittest.main()
