"""`veltrane transform` and `score` in blocks and threads: everything that comes out is what the rows give one by one."""
import csv
import io
import os
import random
import resource
import subprocess
import unittest
import zlib

from host_command import AGE, COMMAND, PROJECT, HostTest, field_ref, number_field, text_field, text_ref

MODELS = PROJECT / "tests" / "models" / "samples"


def apply(name, function, *arguments, data_type="double"):
    return (f'<DerivedField name="{name}" optype="continuous" dataType="{data_type}">'
            f'<Apply function="{function}">{"".join(arguments)}</Apply></DerivedField>')


def field(name):
    return f'<FieldRef field="{name}"/>'


class Roads(HostTest):
    FIELDS = (AGE, number_field("x"), text_field("Name"),
              '<DataField name="Day" optype="ordinal" dataType="date"/>',
              '<DataField name="Done" optype="categorical" dataType="boolean"/>',
              '<DataField name="Count" optype="continuous" dataType="integer"/>')
    DERIVED = (apply("Sum", "+", field("Age"), field("x")) + text_ref("Called", "Name") +
               field_ref("SameDay", "Day", "date", "ordinal") + field_ref("IsDone", "Done", "boolean", "categorical") +
               field_ref("Number", "Count", "integer") + apply("Upper", "uppercase", field("Name"), data_type="string"))

    def leaves(self, verb, cases, *options, **more):
        """The exit code and all that a run writes and tells."""
        rejects = self.folder / "rejects.csv"
        result = self.run_host(verb, "document.pmml", cases, "--rejects", rejects.name, *options, **more)
        content = rejects.read_bytes() if rejects.exists() else None
        rejects.unlink(missing_ok=True)
        return result.returncode, result.stdout, result.stderr, content

    def expect_the_same(self, verb, cases, *options):
        expected = self.leaves(verb, cases, "--by-case", *options)
        for threads in (1, 2, 5):
            self.assertEqual(self.leaves(verb, cases, "--threads", threads, *options), expected)
        return expected

    def random_rows(self, seed, rows):
        cells = ("1", "2.5", "-3e7", "", "abc", "Ann", '"Smith, ""J"""', '"two\nlines"', "2024-02-29", "2024-13-01", "true",
                 "maybe", " 4 ", "NA", "ä", "1e400", "0.1", "\t7", "-0")
        choice = random.Random(seed)
        lines = ["Age,x,Name,Day,Done,Count,other"]
        for _ in range(rows):
            count = 7 if choice.random() < 0.95 else choice.randrange(10)
            lines.append(",".join(choice.choice(cells) for _ in range(count)))
        return (choice.choice(["\n", "\r\n"])).join(lines).encode()

    def test_random_rows_leave_the_same_on_both_roads(self):
        self.document(self.FIELDS, self.DERIVED)
        for seed in range(6):
            self.write("cases.csv", self.random_rows(seed, 4000))
            for options in ((), ("--keep",), ("--missing", "NA", "--keep", "other,Age"), ("--strict",)):
                with self.subTest(seed=seed, options=options):
                    self.expect_the_same("transform", "cases.csv", *options)

    def test_text_in_another_encoding_is_told_on_both_roads(self):
        self.document(self.FIELDS, self.DERIVED)
        self.write("cases.csv", self.random_rows(1, 500) + b"\n1,2,\xe4\xf6,,,,\xfc\n1,2,a\0b,,,,\n")
        for encoding in ("UTF-8", "windows-1252", "Shift_JIS"):
            self.expect_the_same("transform", "cases.csv", "--keep", "--encoding", encoding)

    def test_a_history_keeps_the_order_of_the_rows(self):
        lag = ('<DerivedField name="Before" optype="continuous" dataType="double"><Lag field="Age" n="1"/></DerivedField>')
        self.document([AGE], lag)
        self.write("cases.csv", "Age\n" + "".join(f"{row}\n" for row in range(30000)))
        code, out, told, _ = self.expect_the_same("transform", "cases.csv")
        self.assertEqual((code, told), (0, b""))
        self.assertEqual(out.split(b"\n")[20001], b"19999")

    def test_the_samples_are_scored_alike(self):
        models = sorted(MODELS.glob("*.pmml"))
        self.assertGreater(len(models), 3)
        for model in models:
            self.write("document.pmml", model.read_bytes())
            for cases in sorted(MODELS.glob(f"{model.stem}.*csv")):
                with self.subTest(cases.name):
                    self.expect_the_same("score", cases, "--missing-columns")

    def test_models_leave_the_same_of_random_rows(self):
        for model in sorted(MODELS.glob("*.pmml")):
            self.write("document.pmml", model.read_bytes())
            with sorted(MODELS.glob(f"{model.stem}.*csv"))[0].open(newline="") as cases:
                header, *rows = csv.reader(cases)
            choice = random.Random(model.stem)
            odd = ["", "NA", "abc", " 1 ", "-1e9", "1e400", "0.5", "tent"]
            mixed = [[choice.choice(odd) if choice.random() < 0.1 else choice.choice(rows)[column]
                      for column in range(len(header))] for _ in range(2500)]
            text = io.StringIO()
            csv.writer(text, lineterminator="\n").writerows([header, *mixed, header[:-1]])
            self.write("cases.csv", text.getvalue())
            for options in ((), ("--missing", "NA"), ("--option", "missingValuePolicy=noPrediction", "--keep", header[0])):
                with self.subTest(model=model.name, options=options):
                    self.expect_the_same("score", "cases.csv", "--missing-columns", *options)

    def test_rows_of_a_pipe_are_answered_before_the_next_come(self):
        self.document([AGE], field_ref("Out", "Age"))
        for options in ((), ("--threads", "1"), ("--by-case",)):
            with subprocess.Popen([COMMAND, "transform", "document.pmml", "-", *options], cwd=self.folder,
                                  stdin=subprocess.PIPE, stdout=subprocess.PIPE) as child:
                for given, expected in ((b"Age\n", b"Out\n"), (b"1\n", b"1\n"), (b"2\n3\n4", b"2\n"), (b"5\n", b"3\n")):
                    child.stdin.write(given)
                    child.stdin.flush()
                    self.assertEqual(child.stdout.readline(), expected)
                child.stdin.close()
                self.assertEqual(child.stdout.read(), b"45\n")

    def test_rows_of_a_packed_pipe_are_answered_before_the_next_come(self):
        self.document([AGE], field_ref("Out", "Age"))
        packer = zlib.compressobj(wbits=31)
        with subprocess.Popen([COMMAND, "transform", "document.pmml", "-"], cwd=self.folder, stdin=subprocess.PIPE,
                              stdout=subprocess.PIPE) as child:
            for given, expected in ((b"Age\n1\n", b"Out\n1\n"), (b"2\n3\n4", b"2\n3\n"), (b"5\n", b"45\n")):
                child.stdin.write(packer.compress(given) + packer.flush(zlib.Z_SYNC_FLUSH))
                child.stdin.flush()
                self.assertEqual(b"".join(child.stdout.readline() for _ in expected.splitlines()), expected)
            child.stdin.write(packer.flush())
            child.stdin.close()
            self.assertEqual(child.stdout.read(), b"")

    @unittest.skipIf(os.environ.get("VELTRANE_SANITIZE"), "sanitizers take more room than is left")
    def test_fewer_threads_work_where_the_system_has_no_room_for_all(self):
        self.document([AGE], field_ref("Out", "Age"))
        self.write("cases.csv", "Age\n" + "".join(f"{row}\n" for row in range(60000)))
        room = 400 << 20  # for the stacks of some
        result = self.run_host("transform", "document.pmml", "cases.csv", "--threads", 500,
                               preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (room, room)))
        self.expect(result, 0, "Out\n" + "".join(f"{row}\n" for row in range(60000)), "")

    def test_packed_cases_and_outputs(self):
        self.document(self.FIELDS, self.DERIVED)
        self.write("cases.csv", self.random_rows(3, 3000))
        _, plain, _, _ = self.leaves("transform", "cases.csv", "--by-case")
        subprocess.run(["gzip", "-k", "cases.csv"], cwd=self.folder, check=True)
        self.run_host("transform", "document.pmml", "cases.csv.gz", "-o", "out.csv.gz", "--threads", 4)
        unpacked = subprocess.run(["gzip", "-dc", "out.csv.gz"], cwd=self.folder, check=True, capture_output=True)
        self.assertEqual(unpacked.stdout, plain)


class Options(HostTest):
    def test_a_number_of_threads_is_one_or_more(self):
        for text in ("0", "-1", "two", "1.5", ""):
            with self.subTest(text):
                result = self.transform("Age\n1\n", "--threads", text)
                self.assertEqual((result.returncode, result.stdout), (2, b""))
        self.expect(self.transform("Age\n1\n", "--threads", "64"), 0, "Out\n1\n", "")

    def test_help_shows_threads_and_not_the_reference(self):
        for verb in ("transform", "score"):
            shown = self.run_host(verb, "--help").stdout.decode()
            self.assertIn("--threads N", shown)
            self.assertNotIn("--by-case", shown)
        self.assertNotIn("by-case", self.run_host("transform", "--by-cas", "a", "b").stderr.decode())


if __name__ == "__main__":
    unittest.main()
