#!/usr/bin/env python3
"""check.py COMMAND: whether `veltrane score` gives the attribute "rank" of an output field."""
import math
import pathlib
import subprocess
import sys

DOCUMENT = """<PMML version="4.3"><DataDictionary>
<DataField name="t" optype="categorical" dataType="string"><Value value="no"/><Value value="yes"/></DataField>
<DataField name="x" optype="continuous" dataType="double"/></DataDictionary>
<RegressionModel functionName="classification" normalizationMethod="logit">
<MiningSchema><MiningField name="t" usageType="target"/><MiningField name="x"/></MiningSchema>
<Output><OutputField name="second" feature="probability" rank="2"/></Output>
<RegressionTable targetCategory="yes" intercept="0"><NumericPredictor name="x" coefficient="1"/></RegressionTable>
<RegressionTable targetCategory="no" intercept="0"/></RegressionModel></PMML>"""


def main():
    command = sys.argv[1]
    pathlib.Path("rank.pmml").write_text(DOCUMENT, encoding="utf-8")
    pathlib.Path("cases.csv").write_text("x\n-1\n0\n", encoding="utf-8")
    pathlib.Path("models.txt").write_text("RegressionModel\n", encoding="utf-8")
    result = subprocess.run([command, "score", "rank.pmml", "cases.csv", "--models", "models.txt", "--quiet"], text=True,
                            capture_output=True, check=False)
    print(result.stdout, result.stderr)
    lines = [line.split(",") for line in result.stdout.splitlines()]
    if result.returncode != 0 or "second" not in lines[0]:
        return 1
    seconds = [float(line[lines[0].index("second")]) for line in lines[1:]]
    return 0 if math.isclose(seconds[0], 1 / (1 + math.e), rel_tol=1e-12) and seconds[1] == 0.5 else 1


if __name__ == "__main__":
    sys.exit(main())
