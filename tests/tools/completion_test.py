"""The completions for bash and zsh offer what the help of each command shows, and what its values can be."""
import os
import pathlib
import re
import shlex
import unittest

from host_command import AGE, COMMAND, HostTest, document
from shell import Shell

PAGES = pathlib.Path(os.environ["VELTRANE_PAGES"])
MODELS = ('<TreeModel modelName="churn risk"/><TreeModel/><RegressionModel modelName="cost"/>'
          '<RegressionModel modelName="it&apos;s"/>')

BASH = (r"""PS1='$ '; bind 'set bell-style none'; bind 'set completion-query-items 0'; bind 'set page-completions off'; """
        r"""bind 'set show-all-if-ambiguous on'; bind 'set enable-bracketed-paste off'; """
        r"""show() { printf '<<%s:%s:%s>>' line "$READLINE_LINE" line; }; bind -x '"\C-x\C-l": show'; source """)
ZSH = (r"""PS1='$ '; LISTMAX=0; bindkey -e; unsetopt beep; autoload -Uz compinit && compinit -u -D; """
       r"""show() { print -rn -- "<<""line:${BUFFER}:li""ne>>"; }; zle -N show; bindkey '^X^L' show""")


class Completion:
    """The tests of both shells. A test types a line that ends in a tab and looks at what becomes of it."""

    def setUp(self):
        super().setUp()
        self.write("churn.pmml", document([AGE], "").replace("<TransformationDictionary></TransformationDictionary>", MODELS))
        self.write("cases.csv", "Age\n1\n")
        self.environment = {"PATH": f"{pathlib.Path(COMMAND).resolve().parent}:/usr/bin:/bin", "HOME": str(self.folder),
                            "LC_ALL": "C.UTF-8", "ASAN_OPTIONS": "detect_leaks=0"}
        self.shell = self.start()
        self.addCleanup(self.shell.close)

    def completed(self, line):
        """The line after a tab, and what the shell lists."""
        self.shell.type(line + "\t")
        return self.shell.line()

    def becomes(self, line, expected):
        self.assertEqual(self.completed(line)[0], expected)

    def lists(self, line, words):
        after, shown = self.completed(line)
        self.assertEqual(set(words) - set(shown.split()), set(), after)
        return shown

    def help(self, *command):
        return self.run_host(*command, "--help").stdout.decode()

    def commands(self):
        names = re.findall(r"^  (\w+)  ", self.help().split("Subcommands:")[1], re.MULTILINE)
        self.assertIn("score", names)
        return names

    def options(self, *command):
        """The names of the options in the help, and whether they take a value."""
        rows = re.findall(r"^  (-\S+)((?: \S+)*)  +(?=\S)", self.help(*command).split("Options:")[1], re.MULTILINE)
        options = {name: bool(value) for names, value in rows for name in names.split(",")}
        self.assertIn("--help", options)
        return options

    def test_every_command(self):
        shown = self.lists("veltrane ", self.commands())
        self.assertNotIn("complete-models", shown)
        for name in self.commands():
            self.becomes(f"veltrane {name[:-1]}", f"veltrane {name} ")

    def test_every_option(self):
        self.lists("veltrane -", self.options())
        for command in self.commands():
            self.lists(f"veltrane {command} -", self.options(command))
            if command != "functions":
                self.becomes(f"veltrane {command} --encodi", f"veltrane {command} --encoding{self.behind_option}")

    def test_files(self):
        for command in set(self.commands()) - {"functions"}:
            self.becomes(f"veltrane {command} chu", f"veltrane {command} churn.pmml ")
        for line in ("veltrane score churn.pmml ca", "veltrane score churn.pmml cases.csv -o ca",
                     "veltrane score --models ca", "veltrane transform --rejects ca", "veltrane transform --rejects=ca",
                     "veltrane score --missing x --strict churn.pmml ca", "veltrane score -- churn.pmml ca"):
            self.becomes(line, line + "ses.csv ")

    def test_encodings(self):
        self.becomes("veltrane verify --encoding UTF", "veltrane verify --encoding UTF-8 ")
        self.becomes("veltrane score --encoding=UTF", "veltrane score --encoding=UTF-8 ")
        shown = self.lists("veltrane transform --encoding ", ["ISO-8859-15", "windows-1252", "Shift_JIS"])
        for name in re.findall(r"[A-Za-z][\w-]*\d[\w-]*", shown.split("--encoding ")[1]):
            self.expect(self.transform("Age\n1\n", "--encoding", name, derived=""), 1)
        self.assertNotIn("UTF-16", shown)

    def test_delimiters(self):
        self.lists("veltrane score --delimiter ", [",", r"\;", r"\|", r"\\t"])

    def test_values_that_cannot_be_known(self):
        for option in ("--missing", "--max-errors"):
            self.becomes(f"veltrane score {option} c", f"veltrane score {option} c")

    def test_models_of_the_document(self):
        self.becomes("veltrane score churn.pmml --model cos", "veltrane score churn.pmml --model cost ")
        self.becomes("veltrane score churn.pmml --model=cos", "veltrane score churn.pmml --model=cost ")
        self.becomes("veltrane score churn.pmml --model chu", r"veltrane score churn.pmml --model churn\ risk ")
        self.becomes(r"veltrane score churn.pmml --model churn\ r", r"veltrane score churn.pmml --model churn\ risk ")
        self.becomes('veltrane score churn.pmml --model "chu', 'veltrane score churn.pmml --model "churn risk" ')
        self.becomes("veltrane score churn.pmml --model it", r"veltrane score churn.pmml --model it\'s ")
        self.lists("veltrane inspect churn.pmml --model ", ["2", "cost"])
        self.becomes("veltrane verify --model cos", "veltrane verify --model cos")

    def test_options_of_models(self):
        self.becomes("veltrane score --option mis", "veltrane score --option missingValuePolicy=")
        self.becomes("veltrane score --option missingValuePolicy=no", "veltrane score --option missingValuePolicy=noPrediction ")
        self.becomes("veltrane score --option=missingValuePolicy=def",
                     "veltrane score --option=missingValuePolicy=defaultPrediction ")


class Bash(Completion, HostTest):
    behind_option = " "

    def start(self):
        return Shell(["bash", "--norc", "--noprofile", "-i"], BASH + shlex.quote(str(PAGES / "veltrane.bash")), self.folder,
                     self.environment)

    def test_model_behind_the_cursor(self):
        self.shell.type("veltrane score --model cos churn.pmml" + "\x02" * len(" churn.pmml"))
        self.becomes("", "veltrane score --model cost churn.pmml")

    def test_names_with_colons(self):
        self.write("colon.pmml", (self.folder / "churn.pmml").read_text().replace("churn risk", "churn:risk"))
        self.becomes("veltrane score colon.pmml --model churn:r", "veltrane score colon.pmml --model churn:risk ")
        self.becomes("veltrane score --delimiter : --models ca", "veltrane score --delimiter : --models cases.csv ")


class Zsh(Completion, HostTest):
    behind_option = "="

    def start(self):
        return Shell(["zsh", "-f", "-i"], f"fpath=({shlex.quote(str(PAGES))} $fpath); " + ZSH, self.folder, self.environment)

    def test_texts_of_the_help(self):
        for command in self.commands():
            rows = re.findall(r"^  -\S+(?: \S+)*  +(.*)", self.help(command).split("Options:")[1], re.MULTILINE)
            shown = " ".join(self.completed(f"veltrane {command} -")[1].split())
            for text in rows:
                self.assertIn(" ".join(text.split()), shown)


if __name__ == "__main__":
    unittest.main()
