"""`veltrane`: documents and cases that are packed, and outputs that are to be."""
import gzip
import os
import resource
import struct
import subprocess
import unittest

from host_command import AGE, COMMAND, PROJECT, HostTest, document, field_ref

LOAN = PROJECT / "examples" / "loan"


def stored_by_zstd(data):
    """One frame of zstd whose blocks hold the data as they are."""
    blocks = [data[start:start + 100_000] for start in range(0, len(data), 100_000)] or [b""]
    frame = b"\x28\xB5\x2F\xFD\xA0" + struct.pack("<I", len(data))
    for at, block in enumerate(blocks):
        frame += struct.pack("<I", len(block) << 3 | (at == len(blocks) - 1))[:3] + block
    return frame


PACKINGS = {"gzip": gzip.compress, "zstd": stored_by_zstd}


class PackedInputs(HostTest):
    def setUp(self):
        super().setUp()
        self.plain = document([AGE], field_ref("Out", "Age")).encode()

    def test_documents_of_every_command(self):
        model = (LOAN / "default.pmml").read_bytes()
        cases = LOAN / "applicants.csv"
        commands = ((self.plain, ("transform",), ("cases.csv",)), (self.plain, ("inspect",), ()), (model, ("verify",), ()),
                    (model, ("score",), (cases, "--missing", "NA", "--quiet")))
        self.write("cases.csv", "Age\n1\n")
        for content, command, more in commands:
            self.write("plain.pmml", content)
            expected = self.run_host(*command, "plain.pmml", *more)
            self.assertIn(expected.returncode, (0, 3))
            for kind, pack in PACKINGS.items():
                with self.subTest(command=command[0], kind=kind):
                    self.write("packed.pmml", pack(content))
                    result = self.run_host(*command, "packed.pmml", *more)
                    self.expect(result, expected.returncode, expected.stdout, expected.stderr.decode())
                    result = self.run_host(*command, "-", *more, input=pack(content))
                    self.expect(result, expected.returncode, expected.stdout, expected.stderr.decode())

    def test_cases(self):
        self.write("d.pmml", self.plain)
        text = b"Age\n" + b"".join(b"%d\n" % number for number in range(100_000))
        expected = b"Out" + text[3:]
        for pack in PACKINGS.values():
            self.write("cases", pack(text))
            self.expect(self.run_host("transform", "d.pmml", "cases"), 0, expected, "")
            self.expect(self.run_host("transform", "d.pmml", "-", input=pack(text)), 0, expected, "")
            self.write("cases", pack(text[:1000]) + pack(text[1000:]))
            self.expect(self.run_host("transform", "d.pmml", "cases"), 0, expected, "")

    def test_the_content_tells_and_not_the_name(self):
        self.write("d.pmml.gz", self.plain)
        self.write("cases.csv.zst", "Age\n1\n")
        self.expect(self.run_host("transform", "d.pmml.gz", "cases.csv.zst"), 0, "Out\n1\n", "")

    def test_damaged_documents(self):
        self.write("cases.csv", "Age\n1\n")
        for pack in PACKINGS.values():
            self.write("d.pmml.gz", pack(self.plain)[:-10])
            for command in (("transform", "d.pmml.gz", "cases.csv"), ("score", "d.pmml.gz", "cases.csv"),
                            ("inspect", "d.pmml.gz"), ("verify", "d.pmml.gz")):
                self.expect(self.run_host(*command), 1, "",
                            "veltrane: d.pmml.gz: the packed file ends too early; is it cut off?\n")

    def test_damaged_cases_leave_no_output(self):
        self.write("d.pmml", self.plain)
        text = b"Age\n" + b"1\n" * 1_000_000
        for pack in PACKINGS.values():
            self.write("cases", pack(text)[:-10])
            self.expect(self.run_host("transform", "d.pmml", "cases", "-o", "out.csv"), 1, "",
                        "veltrane: cases: the packed file ends too early; is it cut off?\n")
            self.assertNotIn("out.csv", self.names())

    def test_an_archive_of_nothing_is_an_empty_file(self):
        self.write("cases.csv", "Age\n1\n")
        self.write("plain.pmml", self.plain)
        for pack in PACKINGS.values():
            self.write("d.pmml", pack(b""))
            self.assertIn(b"veltrane: d.pmml: the file is empty\n", self.run_host("inspect", "d.pmml").stderr)
            self.expect(self.run_host("transform", "plain.pmml", "d.pmml"), 1, "",
                        "veltrane: d.pmml: the file is empty; a header of field names is needed\n")

    def test_other_archives_are_named(self):
        self.write("d.pmml", self.plain)
        self.write("cases.xlsx", b"PK\x03\x04...")
        told = ("veltrane: cases.xlsx: the file is a ZIP archive, as spreadsheets are; of packed files those of gzip and zstd "
                "are read\n")
        self.expect(self.run_host("transform", "d.pmml", "cases.xlsx"), 1, "", told)
        self.expect(self.run_host("inspect", "cases.xlsx"), 1, "", told)

    def test_a_document_that_unpacks_to_too_much(self):
        bomb = gzip.compress(b"<PMML>" + b" " * 100_000_000)
        self.write("d.pmml", bomb)
        for command in (("inspect",), ("verify",)):
            result = self.run_host(*command, "d.pmml")
            self.expect(result, 1, "", f"veltrane: d.pmml: the document unpacks to more than {48 + 80 * len(bomb) // 2**20} "
                                       f"MiB, which is too much for {len(bomb)} packed bytes; unpack it first if that is "
                                       "right\n")

    @unittest.skipIf(os.environ.get("VELTRANE_SANITIZE"), "a sanitizer takes memory of its own")
    def test_cases_that_unpack_to_much_take_no_more_memory(self):
        self.write("d.pmml", self.plain)
        text = b"Age,Note\n" + (b"1," + b"x" * 1_000_000 + b"\n") * 100
        self.write("cases", gzip.compress(text, 1))
        limit = 60 << 20
        result = subprocess.run([COMMAND, "transform", "d.pmml", "cases", "--quiet"], cwd=self.folder, capture_output=True,
                                timeout=120, preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_DATA, (limit, limit)))
        self.expect(result, 0, "Out\n" + "1\n" * 100, "")
        self.assertGreater(len(text), limit)

    def test_a_row_from_a_packed_pipe_is_cut_at_64_mebibytes_too(self):
        self.write("d.pmml", self.plain)
        result = self.run_host("transform", "d.pmml", "-", "-o", "out.csv", input=gzip.compress(b'Age\n"' + b"x" * (70 << 20)))
        self.expect(result, 1, "", "veltrane: -:2: a record is longer than 64 MiB; is a quote left open?\n")


class PackedOutputs(HostTest):
    def setUp(self):
        super().setUp()
        self.document([AGE], field_ref("Out", "Age"))
        numbers = b"".join(b"%d\n" % (number * 7919) for number in range(50_000))
        self.cases = b"Age\n" + numbers
        self.text = b"Out\n" + numbers
        self.write("cases.csv", self.cases)

    def write_to(self, name):
        self.expect(self.run_host("transform", "document.pmml", "cases.csv", "-o", name), 0, "", "")
        return (self.folder / name).read_bytes()

    def test_by_gzip(self):
        for name in ("out.csv.gz", "OUT.GZ"):
            packed = self.write_to(name)
            self.assertEqual(gzip.decompress(packed), self.text)
            self.assertLess(len(packed), len(self.text) // 2)

    def test_by_zstd(self):
        packed = self.write_to("out.csv.zst")
        self.assertEqual(packed[:4], b"\x28\xB5\x2F\xFD")
        self.assertLess(len(packed), len(self.text) // 2)
        self.write("back.pmml", document([AGE.replace("Age", "Out")], field_ref("Age", "Out")))
        self.expect(self.run_host("transform", "back.pmml", "out.csv.zst"), 0, self.cases, "")

    def test_the_same_twice(self):
        for name in ("out.gz", "out.zst"):
            self.assertEqual(self.write_to(name), self.write_to(name))

    def test_only_by_the_end_of_the_name(self):
        self.assertEqual(self.write_to("out.gz.csv"), self.text)

    def test_a_failure_leaves_nothing(self):
        self.write("cases.csv", self.cases + b'"')
        for name in ("out.gz", "out.zst"):
            self.expect(self.run_host("transform", "document.pmml", "cases.csv", "-o", name), 1, "")
            self.assertNotIn(name, self.names())


if __name__ == "__main__":
    unittest.main()
