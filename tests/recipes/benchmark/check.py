#!/usr/bin/env python3
"""check.py COMMAND: whether the benchmark runs and gives its ratio."""
import json
import pathlib
import subprocess
import sys


def main():
    program = pathlib.Path("bin/hypot_bench")
    if not program.is_file():
        return 1
    result = subprocess.run([program, "--benchmark_min_time=0.01", "--benchmark_format=json"], text=True, capture_output=True,
                            check=False)
    print(result.stdout, result.stderr)
    return 0 if result.returncode == 0 and json.loads(result.stdout)["benchmarks"][0]["ratio"] > 0 else 1


if __name__ == "__main__":
    sys.exit(main())
