"""Cases in another encoding than the one that was told."""
import unittest

from host_command import AGE, NAME, HostTest, field_ref, text_ref

TOTAL = "veltrane: 1 cell could not be read\n"


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


if __name__ == "__main__":
    unittest.main()
