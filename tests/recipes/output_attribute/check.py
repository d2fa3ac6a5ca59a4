#!/usr/bin/env python3
"""check.py COMMAND: whether `veltrane score` gives the attribute "x-atLeast" of an output field."""
import pathlib
import subprocess
import sys

DOCUMENT = """<PMML version="4.3"><DataDictionary>
<DataField name="t" optype="categorical" dataType="string"><Value value="no"/><Value value="yes"/></DataField>
<DataField name="x" optype="continuous" dataType="double"/></DataDictionary>
<RegressionModel functionName="classification" normalizationMethod="logit">
<MiningSchema><MiningField name="t" usageType="target"/><MiningField name="x"/></MiningSchema>
<Output><OutputField name="sure" feature="probability" value="yes" x-atLeast="0.5"/></Output>
<RegressionTable targetCategory="yes" intercept="0"><NumericPredictor name="x" coefficient="1"/></RegressionTable>
<RegressionTable targetCategory="no" intercept="0"/></RegressionModel></PMML>"""


def main():
    command = sys.argv[1]
    pathlib.Path("least.pmml").write_text(DOCUMENT, encoding="utf-8")
    pathlib.Path("cases.csv").write_text("x\n-1\n0\n", encoding="utf-8")
    pathlib.Path("models.txt").write_text("RegressionModel\n", encoding="utf-8")
    result = subprocess.run([command, "score", "least.pmml", "cases.csv", "--models", "models.txt", "--quiet"], text=True,
                            capture_output=True, check=False)
    print(result.stdout, result.stderr)
    lines = [line.split(",") for line in result.stdout.splitlines()]
    if result.returncode != 0 or "sure" not in lines[0]:
        return 1
    return 0 if [line[lines[0].index("sure")] for line in lines[1:]] == ["", "0.5"] else 1


if __name__ == "__main__":
    sys.exit(main())
