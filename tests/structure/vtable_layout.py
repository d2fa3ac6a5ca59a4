#!/usr/bin/env python3
"""Holds the order of the virtual operations of every public class.

Plug-ins are built against the classes, so a virtual operation that moves breaks them without a word from the linker.
The layout is read from the debug information of one translation unit that includes every public header, and compared
with the recorded list. Run with --record after a deliberate change, and review the difference.
"""
import argparse
import pathlib
import subprocess
import sys
import tempfile

from elftools.elf.elffile import ELFFile

NAMESPACES = {"MCVeltrane_900", "MCXML_900", "MCMath_900", "MCCommon_900", "MCScore", "ScoreContext"}


def compile_headers(compiler, includes, folder):
    source = folder / "all.cpp"
    source.write_text("#include <veltrane.h>\n")
    target = folder / "all.o"
    flags = ["-std=c++20", "-g", "-gdwarf-4", "-O0", "-fno-eliminate-unused-debug-types", "-femit-class-debug-always"]
    subprocess.run([compiler, *flags, *["-I" + i for i in includes], "-c", str(source), "-o", str(target)], check=True)
    return target


def slot_of(die):
    attribute = die.attributes.get("DW_AT_vtable_elem_location")
    if attribute is None:
        return None
    value = attribute.value
    if isinstance(value, int):
        return value
    # DW_OP_constu N, in LEB128
    number, shift = 0, 0
    for byte in value[1:]:
        number |= (byte & 0x7F) << shift
        shift += 7
    return number


def class_layouts(object_file):
    layouts = {}
    with open(object_file, "rb") as handle:
        dwarf = ELFFile(handle).get_dwarf_info()
        for unit in dwarf.iter_CUs():
            for space in unit.get_top_DIE().iter_children():
                name = space.attributes.get("DW_AT_name")
                if space.tag != "DW_TAG_namespace" or name is None or name.value.decode() not in NAMESPACES:
                    continue
                for die in space.iter_children():
                    if die.tag in ("DW_TAG_class_type", "DW_TAG_structure_type"):
                        collect(name.value.decode(), die, layouts)
    return layouts


def collect(space, die, layouts):
    if "DW_AT_name" not in die.attributes or "DW_AT_declaration" in die.attributes:
        return
    slots = {}
    for child in die.iter_children():
        if child.tag != "DW_TAG_subprogram" or "DW_AT_virtuality" not in child.attributes:
            continue
        slot = slot_of(child)
        linkage = child.attributes.get("DW_AT_linkage_name")
        text = linkage.value.decode() if linkage is not None else child.attributes["DW_AT_name"].value.decode()
        if slot is not None:
            slots[slot] = text
    if slots:
        layouts[space + "::" + die.attributes["DW_AT_name"].value.decode()] = slots


def render(layouts):
    lines = []
    for name in sorted(layouts):
        lines.append(name)
        for slot in sorted(layouts[name]):
            text = subprocess.run(["c++filt", layouts[name][slot]], capture_output=True, text=True, check=True)
            lines.append(f"    {slot:3d} {text.stdout.strip()}")
    return "\n".join(lines) + "\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--compiler", default="g++")
    parser.add_argument("--include", action="append", default=[])
    parser.add_argument("--recorded", required=True, type=pathlib.Path)
    parser.add_argument("--record", action="store_true")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        layouts = class_layouts(compile_headers(options.compiler, options.include, pathlib.Path(folder)))
    found = render(layouts)
    if options.record:
        options.recorded.write_text(found)
        return 0
    expected = options.recorded.read_text()
    if found == expected:
        return 0
    import difflib
    sys.stdout.writelines(difflib.unified_diff(expected.splitlines(True), found.splitlines(True), "recorded", "found"))
    return 1


if __name__ == "__main__":
    sys.exit(main())
