#!/usr/bin/env python3
"""The Debian packages have the version and the libraries of the build."""
import pathlib
import re
import sys

PROJECT = pathlib.Path(__file__).resolve().parents[2]


def read(name):
    return (PROJECT / name).read_text()


def only(pattern, text):
    return re.search(pattern, text, re.MULTILINE).group(1)


def faults():
    version = only(r"^project\(veltrane VERSION ([\d.]+)", read("CMakeLists.txt"))
    packaged = only(r"^veltrane \((.*?)\)", read("debian/changelog"))
    if packaged != version:
        yield f"debian/changelog has version {packaged}, CMakeLists.txt {version}"
    packages = re.findall(r"^Package: (.*)", read("debian/control"), re.MULTILINE)
    library = "libveltrane" + version.split(".")[0]
    if library not in packages:
        yield f"debian/control has no package {library}, as the library's soname would have it"
    for package in packages:
        if not (PROJECT / "debian" / f"{package}.install").exists():
            yield f"nothing says what {package} holds"
    needed = set(re.findall(r"[\w-]+-dev\b", only(r"^demo_packages=\(((?:.|\n)*?)\)", read("tools/setup.sh"))))
    declared = set(re.findall(r"[\w-]+-dev\b", only(r"^Build-Depends:\n((?: .*\n)+)", read("debian/control"))))
    if needed != declared:
        yield f"tools/setup.sh and debian/control differ in {', '.join(sorted(needed ^ declared))}"


if __name__ == "__main__":
    found = list(faults())
    print("\n".join(found))
    sys.exit(bool(found))
