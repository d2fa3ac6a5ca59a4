"""The main function of the test programs: which tests share the process, and what it tells of those that go wrong."""
import os
import subprocess
import sys
import unittest

PROGRAM = os.environ["VELTRANE_PROGRAM"]


def run(test_filter, **settings):
    result = subprocess.run([PROGRAM, "--gtest_brief=1", "--gtest_filter=" + test_filter], capture_output=True,
                            text=True, timeout=60, env={**os.environ, **settings})
    return result.returncode, result.stdout, result.stderr


class TestMain(unittest.TestCase):
    def test_a_test_of_its_own_process_finds_a_fresh_one_and_leaves_the_others_alone(self):
        code, out, _ = run("First*:Second*:Shared*")
        self.assertEqual(code, 0, out)
        self.assertIn("[  PASSED  ] 2 tests.\n", out)
        self.assertIn("[  PASSED  ] 1 test.\n", out)

    def test_failures_and_crashes_end_only_the_child_and_are_named(self):
        code, out, _ = run("*OwnProcess*")
        self.assertEqual(code, 1)
        self.assertIn("[  PASSED  ] 1 tests.\n[  SKIPPED ] 1 tests.\n[  FAILED  ] 3 tests, listed below:\n"
                      "[  FAILED  ] BadOwnProcess.Fails\n[  FAILED  ] BadOwnProcess.Crashes (signal 6)\n"
                      "[  FAILED  ] BadOwnProcess.EndsTheProcess\n", out)
        self.assertIn("as it should", out)
        self.assertIn("for a reason", out)

    def test_a_failure_in_a_child_fails_the_program_whatever_follows(self):
        code, out, _ = run("BadOwnProcess.Fails:Shared.*")
        self.assertEqual(code, 1)
        self.assertIn("[  PASSED  ] 1 test.\n", out)

    def test_a_test_that_leaves_the_process_changed_fails_by_its_own_name(self):
        code, out, _ = run("Leaving.*:Shared.*")
        self.assertEqual(code, 1)
        self.assertIn("the test leaves the locale C.UTF-8", out)
        self.assertIn("the test leaves another working directory", out)
        self.assertIn("[  PASSED  ] 1 test.\n", out)

    def test_a_filter_leaves_out(self):
        code, out, _ = run("*OwnProcess*:Shared*-Bad*")
        self.assertEqual(code, 0, out)
        self.assertIn("[  PASSED  ] 1 tests.\n", out)

    def test_a_filter_that_finds_nothing_fails(self):
        code, _, err = run("NoSuchTest.*")
        self.assertEqual((code, err), (1, "no test has a name like that: NoSuchTest.*\n"))

    def test_every_test_runs_in_one_shard(self):
        runs = [run("First*:Second*:Shared*", GTEST_TOTAL_SHARDS="2", GTEST_SHARD_INDEX=index)[1] for index in "01"]
        self.assertIn("2 tests ran, each in a process of its own", runs[0])
        self.assertNotIn("each in a process of its own", runs[1])
        self.assertEqual(sum(out.count("[  PASSED  ] 1 test.\n") for out in runs), 1)


if __name__ == "__main__":
    sys.exit(unittest.main())
