#!/usr/bin/env python3
"""check.py COMMAND: whether `veltrane score` scores a ConstantModel."""
import pathlib
import subprocess
import sys

DOCUMENT = """<PMML version="4.4"><DataDictionary>
<DataField name="y" optype="continuous" dataType="double"/><DataField name="x" optype="continuous" dataType="double"/>
</DataDictionary><ConstantModel functionName="regression" value="2.5">
<MiningSchema><MiningField name="y" usageType="target"/><MiningField name="x"/></MiningSchema></ConstantModel></PMML>"""


def main():
    command = sys.argv[1]
    pathlib.Path("constant.pmml").write_text(DOCUMENT, encoding="utf-8")
    pathlib.Path("cases.csv").write_text("x\n1\n2\n", encoding="utf-8")
    pathlib.Path("models.txt").write_text("ConstantModel\n", encoding="utf-8")
    result = subprocess.run([command, "score", "constant.pmml", "cases.csv", "--models", "models.txt", "--quiet"], text=True,
                            capture_output=True, check=False)
    print(result.stdout, result.stderr)
    predictions = [line.split(",")[0] for line in result.stdout.splitlines()[1:]]
    return 0 if predictions == ["2.5", "2.5"] else 1


if __name__ == "__main__":
    sys.exit(main())
