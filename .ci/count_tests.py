#!/usr/bin/env python3
"""Counts what a run of ctest has run: the tests inside each program of gtest and each script of unittest, and one for
everything else. Reads ctest's JUnit file; appends "passed failed skipped" to the file of the step's counts, and the
skipped tests by their reasons to that of the skipped ones."""
import collections
import re
import sys
import xml.etree.ElementTree as ElementTree

GTEST = {word: re.compile(r"^\[  " + word + r" *\] (\d+) tests?\b", re.MULTILINE) for word in
         ("PASSED", "FAILED", "SKIPPED")}
GTEST_REASON = re.compile(r"^\S+:\d+: Skipped\n(.*)$", re.MULTILINE)
UNITTEST = re.compile(r"^Ran (\d+) tests? in .*\n\n(OK|FAILED)(?: \((.*)\))?$", re.MULTILINE)
UNITTEST_REASON = re.compile(r"\.\.\. skipped (['\"])(.*)\1$", re.MULTILINE)


def sum_of(pattern, text):
    return sum(int(number) for number in pattern.findall(text))


def count_gtest(text):
    return tuple(sum_of(GTEST[word], text) for word in ("PASSED", "FAILED", "SKIPPED"))


def count_unittest(text):
    _, ran, _, details = UNITTEST.search(text).group(0, 1, 2, 3)
    parts = dict(part.split("=") for part in (details or "").split(", ") if part)
    failed = int(parts.get("failures", 0)) + int(parts.get("errors", 0)) + int(parts.get("unexpected successes", 0))
    skipped = int(parts.get("skipped", 0))
    return int(ran) - failed - skipped, failed, skipped


def count_case(case):
    """Counts of one entry of ctest, and the reasons of what it skipped."""
    text = case.findtext("system-out") or ""
    good = case.get("status") == "run"
    if UNITTEST.search(text):
        counts, reasons = count_unittest(text), [reason for _, reason in UNITTEST_REASON.findall(text)]
    elif any(pattern.search(text) for pattern in GTEST.values()):
        counts, reasons = count_gtest(text), GTEST_REASON.findall(text)
    else:
        counts, reasons = (int(good), int(not good), 0), []
    passed, failed, skipped = counts
    if not good and not failed:  # it crashed, or ran too long
        failed = 1
    return (passed, failed, skipped), reasons[:skipped] + ["no reason given"] * (skipped - len(reasons))


def main(junit, counts_file, skipped_file):
    total = [0, 0, 0]
    reasons = collections.Counter()
    for case in ElementTree.parse(junit).getroot().iter("testcase"):
        counts, why = count_case(case)
        total = [sum(pair) for pair in zip(total, counts)]
        reasons.update((case.get("name"), reason) for reason in why)
    with open(counts_file, "a", encoding="utf-8") as file:
        file.write("{} {} {}\n".format(*total))
    if reasons:
        with open(skipped_file, "a", encoding="utf-8") as file:
            for (name, reason), number in sorted(reasons.items()):
                file.write(f"    {number:4} of {name}: {reason}\n")
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
