"""The progress bar of `veltrane transform`, on a pseudo-terminal."""
import fcntl
import os
import pty
import re
import struct
import subprocess
import termios
import unittest

from host_command import AGE, COMMAND, HostTest, field_ref


def terminal_is_there():
    try:
        master, slave = pty.openpty()
    except OSError:
        return False
    os.close(master)
    os.close(slave)
    return True


@unittest.skipUnless(terminal_is_there(), "there is no pseudo-terminal here")
class Progress(HostTest):
    ROWS = 20_000

    def setUp(self):
        super().setUp()
        self.document([AGE], field_ref("Out", "Age"))
        self.write("cases.csv", "Age\n" + "1.5\n" * self.ROWS)

    def on_terminal(self, *arguments, columns=80, output_too=False, **more):
        """Runs the command with standard error on a terminal; gives its exit code and what the terminal got."""
        master, slave = pty.openpty()
        fcntl.ioctl(slave, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
        child = subprocess.Popen([COMMAND, "transform", "document.pmml", *arguments], cwd=self.folder, stderr=slave,
                                 stdout=slave if output_too else subprocess.DEVNULL, **more)
        os.close(slave)
        shown = b""
        while True:
            try:
                piece = os.read(master, 65536)
            except OSError:  # the last writer has gone
                break
            if not piece:
                break
            shown += piece
        os.close(master)
        return child.wait(timeout=60), shown.decode()

    def test_the_bar_tells_share_rows_rate_and_time_left(self):
        code, shown = self.on_terminal("cases.csv", "-o", "out.csv")
        self.assertEqual(code, 0)
        drawings = shown.split("\r\x1b[K")
        self.assertEqual(drawings[0], "")
        self.assertRegex(drawings[1], r"^\[ +\]   0%  0 rows  0 rows/s  -:-- left$")
        self.assertRegex(drawings[-1], r"^\[#+\] 100%  20,000 rows  [\d,]+ rows/s  0:00 left\r\n$")

    def test_the_bar_fits_the_terminal(self):
        for columns in (120, 60, 40, 10):
            _, shown = self.on_terminal("cases.csv", columns=columns)
            for drawing in shown.split("\r\x1b[K"):
                self.assertLess(len(drawing.rstrip("\r\n")), columns)

    def test_reports_stand_on_lines_of_their_own(self):
        self.write("cases.csv", "Age\n1\nabc\n2\n")
        code, shown = self.on_terminal("cases.csv")
        self.assertEqual(code, 3)
        self.assertIn('\r\x1b[Kcases.csv:3: Age: "abc" is not a number\r\n', shown)
        self.assertTrue(shown.endswith("\r\nveltrane: 1 cell could not be read\r\n"), shown)

    def test_rows_on_the_same_terminal_stand_on_lines_of_their_own(self):
        self.write("cases.csv", "Age\n1\n2\n")
        _, shown = self.on_terminal("cases.csv", output_too=True)
        self.assertIn("\r\x1b[KOut\r\n1\r\n2\r\n\r\x1b[K", shown)

    def test_a_failure_takes_the_bar_away(self):
        self.write("cases.csv", "Age\n1\nabc\n")
        code, shown = self.on_terminal("cases.csv", "--strict")
        self.assertEqual(code, 1)
        self.assertTrue(shown.endswith('\r\x1b[Kcases.csv:3: Age: "abc" is not a number\r\n'), shown)

    def test_there_is_no_bar_with_quiet(self):
        self.assertEqual(self.on_terminal("cases.csv", "--quiet"), (0, ""))

    def test_there_is_no_bar_for_a_pipe(self):
        with subprocess.Popen(["cat", self.folder / "cases.csv"], stdout=subprocess.PIPE) as cat:
            self.assertEqual(self.on_terminal("-", stdin=cat.stdout), (0, ""))

    def test_there_is_a_bar_for_a_file_on_standard_input(self):
        with open(self.folder / "cases.csv", "rb") as cases:
            code, shown = self.on_terminal("-", stdin=cases)
        self.assertEqual(code, 0)
        self.assertIn("100%  20,000 rows", shown)

    def test_there_is_no_bar_without_a_terminal(self):
        self.expect(self.run_host("transform", "document.pmml", "cases.csv", "-o", "out.csv"), 0, "", "")

    def test_the_bar_moves(self):
        self.write("cases.csv", "Age\n" + "".join(f"{row * 7919 % 900007}.5\n" for row in range(900_000)))
        for options in (("--by-case",), ()):
            with self.subTest(options=options):  # packing takes a while
                _, shown = self.on_terminal("cases.csv", "-o", "out.csv.gz", *options)
                shares = [int(share) for share in re.findall(r"(\d+)%", shown)]
                self.assertEqual(shares, sorted(shares))
                self.assertGreater(len(set(shares)), 3)


if __name__ == "__main__":
    unittest.main()
