"""`veltrane`: documents, output files, exit codes, signals and pipes."""
import os
import signal
import subprocess
import sys
import time
import unittest

from host_command import AGE, COMMAND, HostTest, document, field_ref


class Documents(HostTest):
    def fails(self, message, *arguments):
        result = self.run_host(*(arguments or ("transform", "document.pmml", "cases.csv")))
        return self.expect(result, 1, "", f"veltrane: {message}\n")

    def setUp(self):
        super().setUp()
        self.write("cases.csv", "Age\n1\n")

    def test_a_catalogued_failure_is_told_with_its_number(self):
        self.document([AGE], field_ref("Out", "Income"))
        self.fails("error 260125: Missing variable:'Income' definition in the 'DataDictionary' and "
                   "'TransformationDictionary'. Attribute 'field' of 'FieldRef'.")

    def test_a_field_that_the_document_does_not_have(self):
        self.document([AGE], '<DerivedField name="M" optype="continuous" dataType="double"><MapValues outputColumn="o">'
                             '<FieldColumnPair field="Income" column="i"/></MapValues></DerivedField>')
        self.fails("error 260125: Missing variable:'Income' definition in the 'DataDictionary' and "
                   "'TransformationDictionary'. Attribute 'field' of 'FieldColumnPair'.")

    def test_a_document_without_transformations(self):
        self.write("document.pmml", document([AGE], "").replace("<TransformationDictionary></TransformationDictionary>", ""))
        self.fails("error 260114: Missing node: 'TransformationDictionary'.\n"
                   "veltrane: document.pmml: the document has no derived fields, and no model either")

    def test_a_document_without_derived_fields(self):
        self.document([AGE], "")
        self.fails("document.pmml: the document has no derived fields")

    def test_a_document_with_another_root(self):
        self.write("document.pmml", "<model/>")
        self.fails('document.pmml: the document is no PMML: its root element is "model"')
        self.fails('document.pmml: the document is neither PMML nor kord-ml: its root element is "model"', "inspect",
                   "document.pmml")

    def test_a_document_with_the_older_root(self):
        self.write("document.pmml", "<kord-ml/>")
        self.fails('document.pmml: the document is no PMML: its root element is "kord-ml"')
        self.fails("error 260114: Missing node: 'dictionary'.", "inspect", "document.pmml")

    def test_cases_that_cannot_be_read(self):
        self.document([AGE], field_ref("Out", "Age"))
        self.fails("none.csv: No such file or directory", "transform", "document.pmml", "none.csv")
        self.fails(".: Is a directory", "transform", "document.pmml", ".")


class Usage(HostTest):
    def test_wrong_usage_ends_with_two_and_says_what_is_wrong(self):
        for arguments, word in (((), "a command is needed"), (("transform",), "DOCUMENT"), (("transform", "d"), "CASES"),
                                (("inspect", "d", "--keep"), "--keep"),
                                (("transform", "d", "c", "--delimiter", "ab"), "delimiter"),
                                (("transform", "d", "c", "--encoding", "none"), 'unknown encoding "none"')):
            result = self.run_host(*arguments)
            self.expect(result, 2, "")
            self.assertIn(word, result.stderr.decode())

    def test_help_goes_to_standard_output(self):
        result = self.expect(self.run_host("transform", "--help"), 0, err="")
        for option in ("-o", "--encoding", "--delimiter", "--missing", "--keep", "--strict", "--quiet"):
            self.assertIn(option, result.stdout.decode())

    def test_version(self):
        self.assertRegex(self.run_host("--version").stdout.decode(), r"\Aveltrane \d+\.\d+\.\d+\n\Z")


class OutputFile(HostTest):
    def setUp(self):
        super().setUp()
        self.document([AGE], field_ref("Out", "Age"))
        self.write("cases.csv", "Age\n1\n2\n")

    def test_the_file_holds_the_output(self):
        self.expect(self.run_host("transform", "document.pmml", "cases.csv", "-o", "out.csv"), 0, "", "")
        self.assertEqual((self.folder / "out.csv").read_text(), "Out\n1\n2\n")
        self.assertEqual(self.names(), ["cases.csv", "document.pmml", "out.csv"])

    def test_the_file_appears_with_unreadable_cells_too(self):
        self.write("cases.csv", "Age\nx\n")
        self.expect(self.run_host("transform", "document.pmml", "cases.csv", "-o", "out.csv"), 3, "")
        self.assertEqual((self.folder / "out.csv").read_text(), 'Out\n""\n')

    def test_a_failure_leaves_what_was_there(self):
        self.write("out.csv", "old")
        for cases, options in (("Age\nx\n", ["--strict"]), ('Age\n1\n"', []), ("", []), ("Age,Age\n", [])):
            self.write("cases.csv", cases)
            self.expect(self.run_host("transform", "document.pmml", "cases.csv", "-o", "out.csv", *options), 1, "")
            self.assertEqual((self.folder / "out.csv").read_text(), "old")
            self.assertEqual(self.names(), ["cases.csv", "document.pmml", "out.csv"])

    def test_a_folder_that_is_missing(self):
        self.expect(self.run_host("transform", "document.pmml", "cases.csv", "-o", "none/out.csv"), 1, "",
                    "veltrane: none/out.csv: No such file or directory\n")

    def test_a_full_device(self):
        self.expect(self.run_host("transform", "document.pmml", "cases.csv", "-o", "/dev/full"), 1, "",
                    "veltrane: /dev/full: No space left on device\n")

    def test_open_files_are_written_to_as_they_are(self):
        for name in ("/dev/stdout", "/dev/fd/1", "/proc/self/fd/1"):
            self.expect(self.run_host("transform", "document.pmml", "cases.csv", "-o", name), 0, "Out\n1\n2\n", "")
            with open(self.folder / "log", "ab") as log:
                log.write(b"before\n")
                log.flush()
                subprocess.run([COMMAND, "transform", "document.pmml", "cases.csv", "-o", name], cwd=self.folder,
                               stdout=log, check=True, timeout=60)
            self.assertEqual((self.folder / "log").read_text(), "before\nOut\n1\n2\n")
            (self.folder / "log").unlink()

    def test_a_file_that_is_not_open(self):
        self.expect(self.run_host("transform", "document.pmml", "cases.csv", "-o", "/dev/fd/77"), 1, "",
                    "veltrane: /dev/fd/77: Bad file descriptor\n")

    def test_a_file_size_limit_is_a_failure_that_leaves_nothing(self):
        self.write("cases.csv", "Age\n" + "123456789\n" * 100_000)
        result = subprocess.run(["bash", "-c", f"ulimit -f 100; exec {COMMAND} transform document.pmml cases.csv -o out.csv"],
                                cwd=self.folder, capture_output=True, timeout=60)
        self.expect(result, 1, "", "veltrane: out.csv: File too large\n")
        self.assertEqual(self.names(), ["cases.csv", "document.pmml"])

    def test_a_signal_ends_the_run_and_leaves_nothing(self):
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            child = subprocess.Popen([COMMAND, "transform", "document.pmml", "-", "-o", "out.csv"], cwd=self.folder,
                                     stdin=subprocess.PIPE, stderr=subprocess.PIPE)
            child.stdin.write(b"Age\n1\n")
            child.stdin.flush()
            deadline = time.monotonic() + 30
            while len(self.names()) == 2 and time.monotonic() < deadline:
                time.sleep(0.01)
            self.assertEqual(len(self.names()), 3, "the temporary stands beside the output")
            child.send_signal(number)
            _, errors = child.communicate(timeout=30)
            self.assertEqual(child.returncode, -number, errors)
            self.assertEqual(self.names(), ["cases.csv", "document.pmml"])


class StandardOutput(HostTest):
    def setUp(self):
        super().setUp()
        self.document([AGE], field_ref("Out", "Age"))
        self.write("cases.csv", "Age\n" + "1.5\n" * 100_000)

    def test_a_full_device(self):
        with open("/dev/full", "wb") as full:
            result = subprocess.run([COMMAND, "transform", "document.pmml", "cases.csv"], cwd=self.folder, stdout=full,
                                    stderr=subprocess.PIPE, timeout=60)
        self.assertEqual((result.returncode, result.stderr), (1, b"veltrane: standard output: No space left on device\n"))
        with open("/dev/full", "wb") as full:
            result = subprocess.run([COMMAND, "inspect", "document.pmml"], cwd=self.folder, stdout=full,
                                    stderr=subprocess.PIPE, timeout=60)
        self.assertEqual((result.returncode, result.stderr), (1, b"veltrane: standard output: No space left on device\n"))

    def test_a_closed_pipe(self):
        reader, writer = os.pipe()
        os.close(reader)
        result = subprocess.run([COMMAND, "transform", "document.pmml", "cases.csv"], cwd=self.folder, stdout=writer,
                                stderr=subprocess.PIPE, timeout=60)
        os.close(writer)
        self.assertEqual((result.returncode, result.stderr), (1, b"veltrane: standard output: Broken pipe\n"))

    def test_no_standard_output_at_all(self):
        before = (self.folder / "cases.csv").read_bytes()
        result = subprocess.run(["bash", "-c", f"exec {COMMAND} transform document.pmml cases.csv >&-"], cwd=self.folder,
                                stderr=subprocess.PIPE, timeout=60)
        self.assertEqual((result.returncode, result.stderr), (1, b"veltrane: standard output: Bad file descriptor\n"))
        self.assertEqual((self.folder / "cases.csv").read_bytes(), before)

    def test_rows_from_a_pipe_come_out_while_it_is_open(self):
        child = subprocess.Popen([COMMAND, "transform", "document.pmml", "-"], cwd=self.folder, stdin=subprocess.PIPE,
                                 stdout=subprocess.PIPE)
        child.stdin.write(b"Age\n1\n")
        child.stdin.flush()
        self.assertEqual(child.stdout.readline(), b"Out\n")
        self.assertEqual(child.stdout.readline(), b"1\n")
        child.stdin.write(b"2\n")
        child.stdin.flush()
        self.assertEqual(child.stdout.readline(), b"2\n")
        child.communicate(timeout=30)
        self.assertEqual(child.returncode, 0)


class Memory(HostTest):
    def peak(self, rows):
        """The largest resident size in MB, read while the last rows are still to come."""
        child = subprocess.Popen([COMMAND, "transform", "document.pmml", "-", "-o", "out.csv"], cwd=self.folder,
                                 stdin=subprocess.PIPE)
        child.stdin.write(b"Age\n")
        for _ in range(rows // 1000):
            child.stdin.write(b"123.456\n" * 1000)
        child.stdin.flush()
        with open(f"/proc/{child.pid}/status", encoding="ascii") as status:
            size = next(int(line.split()[1]) for line in status if line.startswith("VmHWM:"))
        child.stdin.close()
        self.assertEqual(child.wait(timeout=120), 0)
        self.assertEqual((self.folder / "out.csv").read_bytes().count(b"\n"), rows + 1)
        return size / 1024

    def test_memory_does_not_grow_with_the_rows(self):
        self.document([AGE], field_ref("Out", "Age"))
        few = self.peak(10_000)
        many = self.peak(1_000_000)
        self.assertLess(many - few, 2, f"{few:.1f} MB for 10,000 rows, {many:.1f} MB for 1,000,000")


if os.environ.get("VELTRANE_SANITIZE"):
    del Memory.test_memory_does_not_grow_with_the_rows  # a sanitizer keeps freed memory

if __name__ == "__main__":
    if sys.version_info < (3, 9):
        sys.exit("Python 3.9 or later is needed")
    unittest.main()
