"""The README: its programs compile as they are printed, and its outputs are what the commands print. After a change of
either, tools/docs/readme_outputs.py puts the new ones in their places."""
import os
import pathlib
import re
import subprocess
import unittest

from host_command import COMMAND, PROJECT, HostTest

README = (PROJECT / "README.md").read_text()
BLOCKS = re.findall(r"^```(\w+)\n(.*?)^```$", README, re.DOTALL | re.MULTILINE)
BUILD = pathlib.Path(COMMAND).resolve().parents[1]
COMPILER = os.environ.get("VELTRANE_COMPILER", "c++")
SANITIZE = os.environ.get("VELTRANE_SANITIZE", "")
TREE = "build/release"

# A command and what it prints stand behind one another; a program stands in front of the command that runs it.
SHOWN = [(command, output) for (kind, command), (next_kind, output) in zip(BLOCKS, BLOCKS[1:])
         if (kind, next_kind) == ("sh", "text")]
PROGRAMS = [(source, command, output) for (kind, source), (_, command), (_, output) in zip(BLOCKS, BLOCKS[1:], BLOCKS[2:])
            if kind == "cpp"]


class Outputs(HostTest):
    def shell(self, command):
        """Both outputs of a command, as a terminal shows them."""
        result = subprocess.run(["bash", "-c", command], cwd=PROJECT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                text=True, timeout=120)
        return result.stdout

    def test_every_output_is_what_its_command_prints(self):
        self.assertGreaterEqual(len(SHOWN), 6)
        for command, output in SHOWN:
            with self.subTest(command):
                self.assertEqual(self.shell(command.replace(TREE, str(BUILD))), output)

    def test_every_output_belongs_to_a_command(self):
        self.assertEqual(len(SHOWN), sum(kind == "text" for kind, _ in BLOCKS))


class Programs(HostTest):
    def compile(self, source, name):
        path = self.write(f"{name}.cpp", source)
        flags = [f"-fsanitize={SANITIZE}"] if SANITIZE else []
        libraries = BUILD / "lib"
        result = subprocess.run([COMPILER, "-std=c++20", "-Wall", "-Wextra", "-Werror", *flags, path, "-o", self.folder / name,
                                 "-I", PROJECT / "include", "-L", libraries, f"-Wl,-rpath,{libraries}", "-lveltrane",
                                 "-lxerces-c"], capture_output=True, text=True, timeout=300)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return self.folder / name

    def test_every_program_compiles_as_printed_and_prints_what_is_shown(self):
        self.assertEqual(len(PROGRAMS), sum(kind == "cpp" for kind, _ in BLOCKS))
        for source, command, output in PROGRAMS:
            built, *arguments = command.split()
            name = pathlib.Path(built).name
            with self.subTest(name):
                self.assertEqual(source, (PROJECT / "examples" / f"{name}.cpp").read_text())
                program = self.compile(source, name)
                result = subprocess.run([program, *(argument.replace(TREE, str(BUILD)) for argument in arguments)],
                                        cwd=PROJECT, capture_output=True, text=True, timeout=60)
                self.assertEqual((result.returncode, result.stdout, result.stderr), (0, output, ""))
                result = subprocess.run([program], cwd=PROJECT, capture_output=True, text=True, timeout=60)
                self.assertEqual((result.returncode, result.stdout), (2, ""))
                self.assertTrue(result.stderr.startswith(f"usage: {name} "), result.stderr)

    def test_one_program_shows_all_that_a_host_asks_for(self):
        self.assertTrue(any(all(word in source for word in (
            "#include <veltrane.h>", '"UTF-8"', "MCStatus", "GetErrorCode", "GetCategoryProbability", "GetResultFields",
            "to_chars", "catch (const VTException&")) for source, _, _ in PROGRAMS))

    @unittest.skipIf(SANITIZE, "the installed library of a sanitizer needs its flags in the project, too")
    def test_the_project_of_one_s_own_builds_against_an_installed_copy(self):
        projects = [text for kind, text in BLOCKS if kind == "cmake"]
        self.assertEqual(len(projects), 1)
        self.write("CMakeLists.txt", projects[0])
        source, command, output = PROGRAMS[0]
        self.write("my_program.cpp", source)
        steps = next(text for kind, text in BLOCKS if kind == "sh" and "CMAKE_PREFIX_PATH" in text)
        install, build = steps.replace(TREE, str(BUILD)).replace("$HOME", str(self.folder)).splitlines()
        for step in (install, build):
            result = subprocess.run(["bash", "-c", step], cwd=self.folder, capture_output=True, text=True, timeout=300,
                                    env=dict(os.environ, CXX=COMPILER))
            self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        result = subprocess.run([self.folder / "build" / "my_program", *self.installed(command.split()[1:])], cwd=PROJECT,
                                capture_output=True, text=True, timeout=60)
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, output, ""))

    def installed(self, arguments):
        """The arguments with the list of models that was installed, wherever libraries go here."""
        lists = list(self.folder.glob("veltrane/lib/**/modeldll.txt"))
        self.assertEqual(len(lists), 1)
        return [str(lists[0]) if argument.endswith("modeldll.txt") else argument for argument in arguments]


class Links(unittest.TestCase):
    def test_every_link_into_the_tree_leads_somewhere(self):
        for target in re.findall(r"\]\(([^)#:]+)\)", README):
            self.assertTrue((PROJECT / target).exists(), target)


if __name__ == "__main__":
    unittest.main()
