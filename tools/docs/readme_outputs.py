#!/usr/bin/env python3
"""Puts the programs of examples/ and what the commands of a build print into README.md. A program stands in front of the
command that runs it, an output behind its command. Argument: the build's folder, build/release without it."""
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
README = ROOT / "README.md"
TREE = "build/release"
BLOCK = re.compile(r"^```(\w+)\n(.*?)^```$", re.DOTALL | re.MULTILINE)


def printed(command, build):
    return subprocess.run(["bash", "-c", command.replace(TREE, build)], cwd=ROOT, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, check=False).stdout


def main():
    build = str(pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ROOT / TREE).resolve())
    text = README.read_text(encoding="utf-8")
    blocks = list(BLOCK.finditer(text))
    for at, block in reversed(list(enumerate(blocks))):
        if block[1] == "text":
            content = printed(blocks[at - 1][2], build)
        elif block[1] == "cpp":
            name = pathlib.Path(blocks[at + 1][2].split()[0]).name
            content = (ROOT / "examples" / f"{name}.cpp").read_text(encoding="utf-8")
        else:
            continue
        text = text[:block.start(2)] + content + text[block.end(2):]
    README.write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main()
