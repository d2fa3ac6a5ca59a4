"""`veltrane transform`: from cells to values, and from values to cells."""
import math
import unittest

from host_command import AGE, NAME, HostTest, field_ref, text_ref

DATES = [
    '<DataField name="D" optype="continuous" dataType="date"/>',
    '<DataField name="T" optype="continuous" dataType="time"/>',
    '<DataField name="M" optype="continuous" dataType="dateTime"/>',
    '<DataField name="S" optype="continuous" dataType="dateTimeSecondsSince[1960]"/>',
]


class Header(HostTest):
    def test_columns_may_stand_in_any_order(self):
        result = self.transform("Name,Age\nx,1\n", fields=[AGE, NAME],
                                derived=field_ref("A", "Age") + text_ref("N", "Name"))
        self.expect(result, 0, "A,N\n1,x\n", "")

    def test_columns_that_are_no_field_are_ignored_with_one_warning(self):
        result = self.transform("id,Age,note,id\n7,1,x,8\n8,2,y,9\n")
        self.expect(result, 0, "Out\n1\n2\n",
                    'veltrane: warning: cases.csv: columns that are no field are ignored: "id", "note", "id"\n')

    def test_names_of_fields_are_exact(self):
        result = self.transform("age, Age\n1,2\n", "--missing-columns")
        self.expect(result, 0, 'Out\n""\n',
                    'veltrane: warning: cases.csv: columns that are no field are ignored: "age", " Age"\n'
                    'veltrane: warning: cases.csv: fields without a column are missing in every case: "Age"\n')

    def test_a_field_without_a_column_is_missing_in_every_case(self):
        result = self.transform("Age\n1\n2\n", "--missing-columns", "--quiet", fields=[AGE, NAME, AGE.replace("Age", "Income")],
                                derived=text_ref("N", "Name", ' mapMissingTo="none"')
                                + field_ref("I", "Income", more=' mapMissingTo="-1"') + text_ref("N2", "Name"))
        self.expect(result, 0, "N,I,N2\nnone,-1,\nnone,-1,\n", "")

    def test_a_header_alone_gives_a_header(self):
        for text in ("Age\n", "Age", "Age\r\n"):
            self.expect(self.transform(text), 0, "Out\n", "")

    def test_an_empty_file_fails(self):
        for text in ("", "\n\n", "\ufeff"):
            self.expect(self.transform(text), 1, "",
                        "veltrane: cases.csv: the file is empty; a header of field names is needed\n")

    def test_two_columns_of_one_field_fail(self):
        self.expect(self.transform("Age,x,Age\n1,2,3\n"), 1, "", 'veltrane: cases.csv:1: two columns are named "Age"\n')

    def test_a_byte_order_mark_is_dropped(self):
        self.expect(self.transform("\ufeffAge\n1\n"), 0, "Out\n1\n", "")

    def test_utf_16_fails(self):
        self.expect(self.transform("Age\n1\n".encode("utf-16")), 1, "",
                    "veltrane: cases.csv: the file is UTF-16; convert it to UTF-8 first\n")


class Rows(HostTest):
    WIDE = dict(fields=[AGE, NAME], derived=field_ref("A", "Age") + text_ref("N", "Name"))

    def test_line_ends_and_a_missing_last_one(self):
        for text in ("Age,Name\n1,x\n2,y\n", "Age,Name\r\n1,x\r\n2,y\r\n", "Age,Name\r1,x\r2,y", "Age,Name\n1,x\n2,y"):
            self.expect(self.transform(text, **self.WIDE), 0, "A,N\n1,x\n2,y\n", "")

    def test_quoting(self):
        result = self.transform('"Age",Name\n"1","a, ""b""\nc"\n', **self.WIDE)
        self.expect(result, 0, 'A,N\n1,"a, ""b""\nc"\n', "")

    def test_ragged_rows_are_reported_and_kept(self):
        result = self.transform("Age,Name\n1\n2,y,z,zz\n3,w\n", **self.WIDE)
        self.expect(result, 3, "A,N\n1,\n2,y\n3,w\n",
                    "cases.csv:2: 1 cell, but the header has 2\ncases.csv:3: 4 cells, but the header has 2\n"
                    "veltrane: 3 cells could not be read\n")

    def test_an_empty_line_is_a_case_only_in_a_single_column(self):
        self.expect(self.transform("Age\n1\n\n2\n"), 0, 'Out\n1\n""\n2\n', "")
        self.expect(self.transform("Age,Name\n1,x\n\n2,y\n\n", **self.WIDE), 0, "A,N\n1,x\n2,y\n", "")

    def test_text_that_is_no_csv_fails_with_its_line(self):
        result = self.transform('Age,Name\n1,x\n2,"y"z\n3,w\n', **self.WIDE)
        self.expect(result, 1, None, "veltrane: cases.csv:3: text behind a closing quote\n")
        result = self.transform('Age,Name\n1,"x\n2,y\n', **self.WIDE)
        self.expect(result, 1, None, "veltrane: cases.csv:2: a quote is not closed\n")

    def test_a_very_long_cell_passes_whole(self):
        text = "x" * 3_000_000
        self.expect(self.transform(f"Age,Name\n1,{text}\n", **self.WIDE), 0, f"A,N\n1,{text}\n", "")

    def test_standard_input(self):
        self.document([AGE], field_ref("Out", "Age"))
        result = self.run_host("transform", "document.pmml", "-", input=b"Age,x\n1,2\nabc,3\n")
        self.expect(result, 3, 'Out\n1\n""\n',
                    'veltrane: warning: -: columns that are no field are ignored: "x"\n'
                    '-:3: Age: "abc" is not a number\nveltrane: 1 cell could not be read\n')

    def test_another_delimiter_serves_both_ways(self):
        result = self.transform('Age;Name\n1;"a;b"\n2;c,d\n', "--delimiter", ";", **self.WIDE)
        self.expect(result, 0, 'A;N\n1;"a;b"\n2;c,d\n', "")
        result = self.transform("Age\tName\n1\ta b\n", "--delimiter", "\\t", **self.WIDE)
        self.expect(result, 0, "A\tN\n1\ta b\n", "")


class Numbers(HostTest):
    def numbers(self, cells, *options):
        result = self.transform("Age\n" + "".join(cell + "\n" for cell in cells), *options)
        return result, result.stdout.decode().split("\n")[1:-1]

    def test_numbers_come_out_in_the_shortest_form(self):
        cells = ["1", "1.0", "+1", "0.10", "1e2", "123456789012", "0.30000000000000004", "-0", " 7 ", "\t8", ".5", "5."]
        result, out = self.numbers(cells)
        self.expect(result, 0, err="")
        self.assertEqual(out, ["1", "1", "1", "0.1", "100", "123456789012", "0.30000000000000004", "-0", "7", "8", "0.5",
                               "5"])

    def test_every_double_reads_back_the_same(self):
        numbers = [math.pi, 1 / 3, 1e300, 5e-324, 2.2250738585072014e-308, 1.7976931348623155e308, 2.0**53 + 2, -1e-7]
        result, out = self.numbers([repr(number) for number in numbers])
        self.expect(result, 0, err="")
        self.assertEqual([float(text) for text in out], numbers)

    def test_a_cell_that_is_no_number_is_reported_and_counts_as_missing(self):
        result, out = self.numbers(["1", "abc", "2x", '"1,5"', "nan", "0x1F", "1 2"])
        self.expect(result, 3, err="".join(
            f'cases.csv:{line}: Age: "{cell}" is not a number\n'
            for line, cell in enumerate(["abc", "2x", "1,5", "nan", "0x1F", "1 2"], 3))
            + "veltrane: 6 cells could not be read\n")
        self.assertEqual(out, ["1"] + ['""'] * 6)

    def test_the_line_is_the_one_where_the_record_starts(self):
        result = self.transform('Name,Age\n"a\nb\n",1\n"c\n",abc\nd,x\n', fields=[AGE, NAME])
        self.expect(result, 3, err='cases.csv:5: Age: "abc" is not a number\ncases.csv:7: Age: "x" is not a number\n'
                                   "veltrane: 2 cells could not be read\n")

    def test_the_file_is_named_as_given(self):
        path = self.write("cases.csv", "Age\nabc\n")
        self.document([AGE], field_ref("Out", "Age"))
        result = self.run_host("transform", "document.pmml", path)
        self.expect(result, 3, err=f'{path}:2: Age: "abc" is not a number\nveltrane: 1 cell could not be read\n')

    def test_a_reported_cell_is_short_and_on_one_line(self):
        result = self.transform('Age\n"a\nb\x1b[2J"\n' + "x" * 500 + "\n" + "é" * 60 + "\n")
        self.expect(result, 3, err='cases.csv:2: Age: "a\\nb\\x1B[2J" is not a number\n'
                                   f'cases.csv:4: Age: "{"x" * 100}..." is not a number\n'
                                   f'cases.csv:5: Age: "{"é" * 50}..." is not a number\n'
                                   "veltrane: 3 cells could not be read\n")

    def test_numbers_beyond_the_range(self):
        result, out = self.numbers(["1e999", "-1e999", "1e-999"])
        self.expect(result, 3, err='cases.csv:3: Age: "-1e999" is out of the range of numbers\n'
                                   "veltrane: 1 cell could not be read\n")
        self.assertEqual(out, ["inf", '""', "0"])

    def test_numbers_are_read_and_written_alike_under_every_locale(self):
        self.write("cases.csv", "Age\n1.5\n")
        self.document([AGE], field_ref("Out", "Age"))
        for locale in ("C", "de_DE.UTF-8"):
            result = self.run_host("transform", "document.pmml", "cases.csv", env={"LC_ALL": locale})
            self.expect(result, 0, "Out\n1.5\n", "")

    def test_strict_ends_at_the_first(self):
        result, _ = self.numbers(["1", "abc", "x"], "--strict")
        self.expect(result, 1, err='cases.csv:3: Age: "abc" is not a number\n')
        result = self.transform("Name,Age\na,1\nb\nc,x\n", "--strict", fields=[AGE, NAME])
        self.expect(result, 1, err="cases.csv:3: 1 cell, but the header has 2\n")

    def test_strict_does_not_mind_missing_cells(self):
        result, out = self.numbers(["1", "", "NA"], "--strict", "--missing", "NA")
        self.expect(result, 0, err="")
        self.assertEqual(out, ["1", '""', '""'])

    def test_quiet_tells_only_the_number_of_unreadable_cells(self):
        result = self.transform("Age,id\nabc,1\n2,3\n", "--quiet")
        self.expect(result, 3, 'Out\n""\n2\n', "veltrane: 1 cell could not be read\n")

    def test_a_nul_is_reported(self):
        result = self.transform(b"Name,Age\na\0b,1\0\n", fields=[AGE, NAME], derived=text_ref("N", "Name"))
        self.expect(result, 3, 'N\n""\n', 'cases.csv:2: Name: "a\\x00b" holds a NUL character\n'
                                          'cases.csv:2: Age: "1\\x00" holds a NUL character\n'
                                          "veltrane: 2 cells could not be read\n")


class Missing(HostTest):
    BOTH = dict(fields=[AGE, NAME], derived=field_ref("A", "Age", more=' mapMissingTo="-1"')
                + text_ref("N", "Name", ' mapMissingTo="none"'))

    def test_empty_cells_are_missing(self):
        self.expect(self.transform('Age,Name\n,\n"",""\n', **self.BOTH), 0, "A,N\n-1,none\n-1,none\n", "")

    def test_tokens_are_missing(self):
        result = self.transform("Age,Name\nNA,NA\n-9,-9\nn/a,n/a\n", "--missing", "NA", "--missing", "-9",
                                "--missing", "n/a", **self.BOTH)
        self.expect(result, 0, "A,N\n-1,none\n-1,none\n-1,none\n", "")

    def test_tokens_are_whole_and_exact(self):
        result = self.transform("Age,Name\nNAN,na\n", "--missing", "NA", **self.BOTH)
        self.expect(result, 3, "A,N\n-1,na\n", 'cases.csv:2: Age: "NAN" is not a number\n'
                                               "veltrane: 1 cell could not be read\n")

    def test_blanks_count_in_texts_only(self):
        result = self.transform("Age,Name\n  , \n NA , NA\n", "--missing", "NA", **self.BOTH)
        self.expect(result, 0, "A,N\n-1, \n-1, NA\n", "")

    def test_a_missing_result_is_an_empty_cell(self):
        derived = field_ref("A", "Age") + text_ref("N", "Name") + field_ref("B", "Age")
        self.expect(self.transform("Age,Name\n,\n", fields=[AGE, NAME], derived=derived), 0, "A,N,B\n,,\n", "")

    def test_a_lone_missing_result_is_a_quoted_empty_cell(self):
        self.expect(self.transform("Age\n\n1\n"), 0, 'Out\n""\n1\n', "")

    def test_values_declared_missing_are_values_of_the_cell(self):
        age = AGE.replace("/>", '><Value value="99" property="missing"/></DataField>')
        result = self.transform("Age\n99\n98\n", fields=[age],
                                derived=field_ref("A", "Age", more=' mapMissingTo="-1"'))
        self.expect(result, 0, "A\n-1\n98\n", "")


class Dates(HostTest):
    ALL = dict(fields=DATES, derived=field_ref("t", "T", "time") + field_ref("m", "M", "dateTime")
               + field_ref("s", "S", "dateTimeSecondsSince[1960]"))

    def test_dates_are_read_in_the_fields_storage_type_and_written_as_iso_text(self):
        result = self.transform("D,T,M,S\n2024-02-29,23:59:58,2024-02-29T12:00:01,315619200\n"
                                "1969-12-31,0:0:1,1969-12-31 23:59:59,-1.5\n", **self.ALL)
        self.expect(result, 0, "t,m,s\n23:59:58,2024-02-29T12:00:01,315619200\n"
                               "00:00:01,1969-12-31T23:59:59,-1.5\n", "")
        result = self.transform("D,T,M,S\n2024-02-29,23:59:58,2024-02-29T12:00:01,315619200\n", "--plain", **self.ALL)
        self.expect(result, 0, "t,m,s\n23:59:58,2024-02-29T12:00:01,1970-01-01T00:00:00\n", "")

    def test_seconds_may_have_a_fraction(self):
        cells = "T,M\n23:59:58.25,2024-02-29T12:00:01.1\n0:0:0.000001,1969-12-31 23:59:59.75\n"
        texts = dict(fields=DATES[1:3], derived=field_ref("t", "T", "string") + field_ref("m", "M", "string"))
        moments = dict(fields=DATES[1:3], derived=field_ref("t", "T", "time") + field_ref("m", "M", "dateTime"))
        written = "t,m\n23:59:58.25,2024-02-29T12:00:01.1\n00:00:00.000001,1969-12-31T23:59:59.75\n"
        self.expect(self.transform(cells, **texts), 0, written, "")
        self.expect(self.transform(cells, **moments), 0, written, "")
        self.expect(self.transform(cells, "--plain", **moments), 0, written, "")
        self.expect(self.transform(written.upper(), **moments), 0, written, "")

    def test_a_fraction_that_is_none_is_reported(self):
        result = self.transform("T,M\n12:00:00.,2024-02-29T12:00:01.5Z\n"
                                "23:59:59.99999999999999999,2024-02-29\n", fields=DATES[1:3],
                                derived=field_ref("t", "T", "time") + field_ref("m", "M", "dateTime"))
        self.expect(result, 3, "t,m\n,\n,\n",
                    'cases.csv:2: T: "12:00:00." is not a time\ncases.csv:2: M: "2024-02-29T12:00:01.5Z" is not a date-time\n'
                    'cases.csv:3: T: "23:59:59.99999999999999999" is not a time\n'
                    'cases.csv:3: M: "2024-02-29" is not a date-time\nveltrane: 4 cells could not be read\n')

    def test_cells_that_are_none_are_reported(self):
        result = self.transform("D,T,M,S\nx,12:30,2024-02-29,2024-02-29T00:00:00\n"
                                "2023-02-29,24:00:00,2024-02-30T00:00:00,x\n", **self.ALL)
        self.expect(result, 3, "t,m,s\n,,\n,,\n",
                    'cases.csv:2: D: "x" is not a date\ncases.csv:2: T: "12:30" is not a time\n'
                    'cases.csv:2: M: "2024-02-29" is not a date-time\n'
                    'cases.csv:2: S: "2024-02-29T00:00:00" is not a number\n'
                    'cases.csv:3: D: "2023-02-29" is not a date\ncases.csv:3: T: "24:00:00" is not a time\n'
                    'cases.csv:3: M: "2024-02-30T00:00:00" is not a date-time\ncases.csv:3: S: "x" is not a number\n'
                    "veltrane: 8 cells could not be read\n")

    def test_a_count_keeps_all_its_digits(self):
        cells = "S\n125405284.999999\n0.1\n1e300\n"
        derived = field_ref("t", "S", "string") + field_ref("n", "S", "double") + field_ref("s", "S", "dateTimeSecondsSince[1960]")
        self.expect(self.transform(cells, fields=DATES[3:], derived=derived), 0,
                    "t,n,s\n125405284.999999,125405284.999999,125405284.999999\n0.1,0.1,0.1\n1e+300,1e+300,1e+300\n", "")

    def test_missing_dates(self):
        self.expect(self.transform("D,T,M,S\n,,,\nNA,NA,NA,NA\n", "--missing", "NA", **self.ALL), 0,
                    "t,m,s\n,,\n,,\n", "")


class KeptDates(HostTest):
    def test_a_copied_date_holds_its_day_count_as_seconds(self):
        result = self.transform("D\n2024-02-29\n", "--plain", fields=DATES[:1], derived=field_ref("E", "D", "date"))
        self.expect(result, 0, "E\n1970-01-01\n", "")
        result = self.transform("D\n2024-02-29\n", fields=DATES[:1], derived=field_ref("E", "D", "date"))
        self.expect(result, 0, "E\n2024-02-29\n", "")


class Output(HostTest):
    def test_a_column_a_derived_field_in_document_order(self):
        derived = field_ref("z", "Age") + field_ref("a", "Age") + field_ref("m", "z")
        self.expect(self.transform("Age\n1\n", derived=derived), 0, "z,a,m\n1,1,1\n", "")

    def test_keep_writes_the_input_columns_first_as_they_are(self):
        result = self.transform('id,Age,"a, b"\n007, 1.0 ,"x ""y"""\n8,abc,\n', "--keep")
        self.expect(result, 3, 'id,Age,"a, b",Out\n007, 1.0 ,"x ""y""",1\n8,abc,,\n')

    def test_keep_fills_short_rows_and_cuts_long_ones(self):
        result = self.transform("id,Age\n7\n8,2,3\n", "--keep")
        self.expect(result, 3, "id,Age,Out\n7,,\n8,2,2\n")

    def test_keep_refuses_a_column_with_the_name_of_a_derived_field(self):
        result = self.transform("Age,Out\n1,2\n", "--keep")
        self.expect(result, 1, "", 'veltrane: warning: cases.csv: columns that are no field are ignored: "Out"\n'
                                   'veltrane: cases.csv: the column "Out" cannot be kept: a derived field has its name\n')

    def test_names_and_texts_are_quoted_where_needed(self):
        derived = text_ref("a,b", "Name") + text_ref("say &quot;hi&quot;", "Name")
        result = self.transform('Name\n"x,y"\n"q""q"\n', fields=[NAME], derived=derived)
        self.expect(result, 0, '"a,b","say ""hi"""\n"x,y","x,y"\n"q""q","q""q"\n', "")

    def test_encoding_is_that_of_cases_and_output(self):
        field = '<DataField name="Straße" optype="categorical" dataType="string"/>'
        derived = ('<DerivedField name="Größe" optype="categorical" dataType="string">'
                   '<MapValues outputColumn="o" defaultValue="fremd"><FieldColumnPair field="Straße" column="i"/>'
                   "<InlineTable><row><i>Allee ü</i><o>größer €</o></row></InlineTable></MapValues></DerivedField>")
        self.document([field], derived)
        for encoding in ("utf-8", "cp1252"):
            self.write("cases.csv", "Straße\nAllee ü\nsonst\n".encode(encoding))
            result = self.run_host("transform", "document.pmml", "cases.csv", "--encoding", encoding)
            self.expect(result, 0, "Größe\ngrößer €\nfremd\n".encode(encoding), "")


if __name__ == "__main__":
    unittest.main()
