"""What the tests of the built command share: a folder of its own for each test, small documents, and running it."""
import csv
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

COMMAND = os.environ.get("VELTRANE_COMMAND", "build/debug/bin/veltrane")
PROJECT = pathlib.Path(__file__).resolve().parents[2]

# What stands beside the models in a document.
NO_MODELS = {"Header", "MiningBuildTask", "DataDictionary", "TransformationDictionary", "Extension"}


def number_field(name):
    return f'<DataField name="{name}" optype="continuous" dataType="double"/>'


def text_field(name):
    return f'<DataField name="{name}" optype="categorical" dataType="string"/>'


AGE = number_field("Age")
NAME = text_field("Name")
X = number_field("x")
Y = number_field("y")


def dictionary(fields):
    return f'<DataDictionary numberOfFields="{len(fields)}">{"".join(fields)}</DataDictionary>'


def document(fields, derived, encoding="UTF-8"):
    """A PMML document of DataField elements and the content of its TransformationDictionary."""
    return (f'<?xml version="1.0" encoding="{encoding}"?>\n<PMML version="4.1"><Header/>{dictionary(fields)}'
            f"<TransformationDictionary>{derived}</TransformationDictionary></PMML>")


def model_document(*models, fields=(X, Y), version="4.2"):
    """A PMML document of DataField elements and what stands behind its dictionary."""
    return f'<PMML version="{version}"><Header/>{dictionary(fields)}{"".join(models)}</PMML>'


def field_ref(name, field, data_type="double", optype="continuous", more=""):
    return (f'<DerivedField name="{name}" optype="{optype}" dataType="{data_type}">'
            f'<FieldRef field="{field}"{more}/></DerivedField>')


def text_ref(name, field, more=""):
    return field_ref(name, field, "string", "categorical", more)


class HostTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="veltrane_host."))
        self.addCleanup(shutil.rmtree, self.folder)

    def write(self, name, content):
        path = self.folder / name
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return path

    def document(self, fields, derived, encoding="UTF-8"):
        path = self.folder / "document.pmml"
        path.write_bytes(document(fields, derived, encoding).encode(encoding))
        return path

    def run_host(self, *arguments, **more):
        """Runs the command inside the test's folder; the result holds its exit code and its bytes."""
        return subprocess.run([COMMAND, *map(str, arguments)], cwd=self.folder, capture_output=True, timeout=120, **more)

    def run_with_test_plugins(self, *arguments, **environment):
        """Runs the command where it finds the plug-ins of the tests."""
        plugins = os.environ["VELTRANE_TEST_PLUGINS"]
        return self.run_host(*arguments, env={**os.environ, "LD_LIBRARY_PATH": plugins, **environment})

    def expect(self, result, code, out=None, err=None):
        """Compares the exit code and, where given, all the bytes of standard output and standard error."""
        self.assertEqual(result.returncode, code, result.stderr)
        if out is not None:
            self.assertEqual(result.stdout, out if isinstance(out, bytes) else out.encode())
        if err is not None:
            self.assertEqual(result.stderr.decode(errors="replace"), err)
        return result

    def written_rows(self, result):
        """The rows of cells that a run has written, which told nothing."""
        return list(csv.reader(self.expect(result, 0, err="").stdout.decode().splitlines()))

    def transform(self, cases, *options, fields=(AGE,), derived=field_ref("Out", "Age")):
        """Runs `transform` on a file cases.csv with this content."""
        self.write("cases.csv", cases)
        self.document(list(fields), derived)
        return self.run_host("transform", "document.pmml", "cases.csv", *options)

    def names(self):
        return sorted(entry.name for entry in self.folder.iterdir())
