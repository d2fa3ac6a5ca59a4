"""The man page has the texts of the help of each command, and is a good one."""
import os
import pathlib
import re
import subprocess
import unittest

from host_command import HostTest

PAGE = pathlib.Path(os.environ["VELTRANE_PAGES"]) / "veltrane.1"


def mandoc(*arguments):
    return subprocess.run(["mandoc", *arguments, PAGE], capture_output=True, text=True, timeout=60)


def words(text):
    return " ".join(text.split())


class ManPage(HostTest):
    def setUp(self):
        super().setUp()
        shown = mandoc("-T", "utf8", "-O", "width=100").stdout
        self.page = re.sub(".\b", "", shown).replace("‐", "-")

    def section(self, command):
        """What the page tells of a command."""
        return words(re.search(rf"^   veltrane {command} .*\n((?:(?: {{4}}.*)?\n)*)", self.page, re.MULTILINE).group(1))

    def help(self, *command):
        return self.run_host(*command, "--help").stdout.decode()

    def commands(self):
        rows = re.findall(r"^  (\w+)  +(.*)", self.help().split("Subcommands:")[1], re.MULTILINE)
        self.assertIn("score", dict(rows))
        return rows

    def test_it_is_without_fault(self):
        result = mandoc("-T", "lint", "-W", "style")
        self.assertEqual((result.returncode, result.stdout), (0, ""))

    def test_commands(self):
        names = re.findall(r"veltrane (\w+) \[", self.page.split("SYNOPSIS")[1].split("DESCRIPTION")[0])
        self.assertEqual(names, [name for name, _ in self.commands()])
        for name, text in self.commands():
            self.assertTrue(self.section(name).startswith(text + "."), name)

    def test_options_and_files(self):
        for name, _ in self.commands():
            section = self.section(name)
            rows = re.findall(r"^  (\S+)((?: \S+)*)  +(\S.*)", self.help(name).split("Exit codes")[0], re.MULTILINE)
            self.assertGreaterEqual(len(rows), 1)
            for names, value, text in rows:
                placeholder = value.replace("REQUIRED", "").replace("...", "").partition("=")
                if value.endswith(" ..."):  # NAME=VALUE is a name here, not one with what holds without it
                    placeholder = (value[:-4], "", "")
                entry = words(f"{names.replace(',', ', ')}{placeholder[0]} {text}")
                self.assertIn(entry + (f" ({placeholder[2]} without it)" if placeholder[2] else ""), section)

    def test_name_description_version_and_exit_codes(self):
        first, *_ = self.help().splitlines()
        self.assertIn("veltrane - " + first[0].lower() + first[1:-1], words(self.page))
        self.assertIn(first, words(self.page))
        self.assertIn(self.run_host("--version").stdout.decode().strip(), self.page.splitlines()[-1])
        codes = self.help().split("Exit codes: ")[1].strip().rstrip(".").split("; ")
        self.assertEqual(len(codes), 5)
        self.assertEqual(words(self.page.split("EXIT STATUS")[1].rpartition("veltrane 9")[0]), " ".join(codes))

    def test_what_is_hidden_in_the_help_is_hidden_here(self):
        self.assertNotIn("complete-models", self.page)


if __name__ == "__main__":
    unittest.main()
