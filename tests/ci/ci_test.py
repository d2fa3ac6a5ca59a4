"""What .ci/run tells of its steps, what it counts, and which sources a change makes clang-tidy look at."""
import os
import pathlib
import subprocess
import tempfile
import unittest

PROJECT = pathlib.Path(__file__).resolve().parents[2]
CI = PROJECT / ".ci"

STEPS = """
all_steps=(good bad counted)
step_good() { echo fine; }
step_bad() {
    false
    echo "not reached"
}
step_counted() {
    echo "40 0 0" >>"$CI_RESULTS/counted.counts"
    echo "2 0 3" >>"$CI_RESULTS/counted.counts"
    echo "    3 of models: the real documents are not here" >>"$CI_RESULTS/counted.skipped"
}
"""

JUNIT = """<?xml version="1.0"?>
<testsuite>
  <testcase name="data" status="run"><system-out>[  PASSED  ] 2 tests.
[  SKIPPED ] 1 tests.
tests/a.cpp:7: Skipped
no locale with a decimal comma
[==========] 350 tests from 3 test suites ran. (5 ms total)
[  PASSED  ] 347 tests.
</system-out></testcase>
  <testcase name="models" status="fail"><system-out>[  PASSED  ] 9 tests.
[  FAILED  ] 1 test, listed below:
[  FAILED  ] A.B
</system-out></testcase>
  <testcase name="crashed" status="fail"><system-out>Running main()
</system-out></testcase>
  <testcase name="host.files" status="run"><system-out>test_a (x) ... ok
test_b (x) ... skipped 'there is no pseudo-terminal here'

----------------------------------------------------------------------
Ran 4 tests in 1.2s

OK (skipped=1)
</system-out></testcase>
  <testcase name="host.score" status="fail"><system-out>
----------------------------------------------------------------------
Ran 5 tests in 1.2s

FAILED (failures=1, errors=2)
</system-out></testcase>
  <testcase name="structure.dependencies" status="run"><system-out></system-out></testcase>
</testsuite>
"""


class Folder(unittest.TestCase):
    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.folder = pathlib.Path(place.name)

    def write(self, name, text):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)
        return path


class Run(Folder):
    def run_steps(self, *steps):
        environment = {**os.environ, "CI_STEPS": str(self.write("steps.sh", STEPS))}
        return subprocess.run([CI / "run", *steps], env=environment, capture_output=True, text=True, timeout=60)

    def test_a_step_without_counts_is_one_check(self):
        result = self.run_steps("good")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(result.stdout.splitlines()[-1], "1 passed, 0 failed")

    def test_counts_and_skips_stand_at_the_end(self):
        result = self.run_steps("counted", "good")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertRegex(result.stdout, r"(?m)^counted +\d+ +42 +0 +3$")
        self.assertRegex(result.stdout, r"(?m)^total +\d+$")
        self.assertIn("!!! 3 tests were SKIPPED", result.stdout)
        self.assertIn("3 of models: the real documents are not here", result.stdout)
        self.assertEqual(result.stdout.splitlines()[-1], "43 passed, 0 failed, 3 skipped")

    def test_a_failure_ends_its_step_only(self):
        result = self.run_steps()
        self.assertEqual(result.returncode, 1)
        self.assertNotIn("not reached", result.stdout)
        self.assertIn("=== bad FAILED in ", result.stdout)
        self.assertEqual(result.stdout.splitlines()[-1], "43 passed, 1 failed, 3 skipped")

    def test_unknown_steps_are_refused(self):
        result = self.run_steps("good", "god")
        self.assertEqual((result.returncode, result.stdout), (2, ""))
        self.assertEqual(result.stderr, 'no step "god"; there are: good bad counted\n')

    def test_every_step_is_a_function(self):
        script = f'source "{CI}/steps.sh"; for step in "${{all_steps[@]}}" "${{other_steps[@]}}"; do declare -F "step_$step"; done'
        subprocess.run(["bash", "-ec", script], check=True, cwd=PROJECT, stdout=subprocess.DEVNULL, timeout=60)


class Counts(Folder):
    def test_tests_inside_programs_and_scripts_are_counted(self):
        junit = self.write("junit.xml", JUNIT)
        subprocess.run([CI / "count_tests.py", junit, self.folder / "counts", self.folder / "skipped"], check=True,
                       timeout=60)
        self.assertEqual((self.folder / "counts").read_text(), f"{349 + 9 + 3 + 2 + 1} {1 + 1 + 3} {1 + 1}\n")
        self.assertEqual((self.folder / "skipped").read_text(),
                         "       1 of data: no locale with a decimal comma\n"
                         "       1 of host.files: there is no pseudo-terminal here\n")


class ChangedSources(Folder):
    def sources(self, *changed):
        self.write("src/data/range.h", "#include <Kit/Value.h>\n")
        self.write("src/data/range.cpp", '#include "data/range.h"\n')
        self.write("src/data/other.cpp", '#include "range.h"\n')
        self.write("src/data/apart.cpp", "")
        self.write("include/Kit/Value.h", "#include <Kit/Value.def>\n")
        self.write("include/Kit/Value.def", "")
        result = subprocess.run([CI / "changed_sources.py"], input="\n".join(changed) + "\n", cwd=self.folder,
                                capture_output=True, text=True, check=True, timeout=60)
        return result.stdout.split()

    def test_a_source_is_looked_at_itself(self):
        self.assertEqual(self.sources("src/data/range.cpp", "docs/text.md"), ["src/data/range.cpp"])

    def test_a_header_is_looked_at_where_it_is_included(self):
        self.assertEqual(self.sources("src/data/range.h"), ["src/data/other.cpp", "src/data/range.cpp"])

    def test_a_header_that_only_headers_include_is_looked_at_through_them(self):
        both = ["src/data/other.cpp", "src/data/range.cpp"]
        self.assertEqual(self.sources("include/Kit/Value.h"), both)
        self.assertEqual(self.sources("include/Kit/Value.def"), both)

    def test_no_source_is_no_failure(self):
        self.assertEqual(self.sources("docs/text.md"), [])


class NoTerminal(Folder):
    def test_the_progress_bar_is_skipped_with_a_word_where_there_is_no_pseudo_terminal(self):
        self.write("pty.py", "def openpty():\n    raise OSError('out of pty devices')\n")
        environment = {**os.environ, "PYTHONPATH": str(self.folder)}
        result = subprocess.run(["/usr/bin/python3", PROJECT / "tests" / "tools" / "progress_test.py", "-v"],
                                env=environment, capture_output=True, text=True, timeout=60)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn("skipped 'there is no pseudo-terminal here'", result.stderr)


if __name__ == "__main__":
    unittest.main()
