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


def installed_by(setup, name):
    return set(only(rf"^{name}_packages=\(((?:.|\n)*?)\)", setup).split())


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
    control = only(r"^Build-Depends:\n((?: .*\n)+)", read("debian/control"))
    setup = read("tools/setup.sh")
    demo, deb = (installed_by(setup, name) for name in ("demo", "deb"))
    needed = {package for package in demo if package.endswith("-dev")}
    declared = set(re.findall(r"[\w-]+-dev\b", control))
    if needed != declared:
        yield f"tools/setup.sh and debian/control differ in {', '.join(sorted(needed ^ declared))}"
    # What dpkg-buildpackage asks for: the dependencies, and this one without a word in debian/control.
    asked = {"build-essential"} | {name.replace("-compat", "") for name in re.findall(r"^ ([\w-]+)", control, re.MULTILINE)}
    if not asked <= demo | deb:
        yield f"tools/setup.sh deb doesn't install {', '.join(sorted(asked - demo - deb))}, which the packages need"

if __name__ == "__main__":
    found = list(faults())
    print("\n".join(found))
    sys.exit(bool(found))
