#!/usr/bin/env python3
"""check.py COMMAND: whether `veltrane score` computes the function `copysign`, its page has it, and the comparison with
the standard knows it."""
import os
import pathlib
import subprocess
import sys

DOCUMENT = """<PMML version="4.4"><DataDictionary><DataField name="x" optype="continuous" dataType="double"/>
<DataField name="y" optype="continuous" dataType="double"/></DataDictionary>
<RegressionModel functionName="regression"><MiningSchema><MiningField name="x"/><MiningField name="y"/></MiningSchema>
<Output><OutputField name="c" feature="transformedValue" dataType="double"><Apply function="copysign">
<FieldRef field="x"/><FieldRef field="y"/></Apply></OutputField></Output>
<RegressionTable intercept="0"/></RegressionModel></PMML>"""
# The page has the function's row, with its number and its arguments.
ROW = "| `copysign` | 1071 | 2 numbers |"


def score(command):
    pathlib.Path("copysign.pmml").write_text(DOCUMENT, encoding="utf-8")
    pathlib.Path("cases.csv").write_text("x,y\n3,-1\n-2.5,4\n1,\n", encoding="utf-8")
    result = subprocess.run([command, "score", "copysign.pmml", "cases.csv", "--quiet"], text=True, capture_output=True,
                            check=False)
    return [line.rpartition(",")[2] for line in result.stdout.splitlines()]


def succeeds(*arguments, **environment):
    return subprocess.run([sys.executable, *arguments], check=False, env=dict(os.environ, **environment)).returncode == 0


def main():
    command = sys.argv[1]
    pathlib.Path("lib/veltrane").mkdir(parents=True, exist_ok=True)
    pathlib.Path("lib/veltrane/modeldll.txt").write_text("RegressionModel\n", encoding="utf-8")
    holds = [score(command) == ["c", "-3", "2.5", ""], ROW in pathlib.Path("docs/functions.md").read_text(encoding="utf-8"),
             succeeds("tests/standard/evaluator_test.py"),
             succeeds("tests/standard/compare.py", "1", "--classes", "function.copysign@score", "--rounds", "3",
                      VELTRANE_COMMAND=command)]
    print(holds)
    return 0 if all(holds) else 1


if __name__ == "__main__":
    sys.exit(main())
