"""An interactive shell at a terminal of its own, for tests of what it does with a key."""
import fcntl
import os
import pty
import re
import select
import signal
import struct
import termios
import time

LINE_KEY = b"\x18\x0c"  # Ctrl-X Ctrl-L shows the command line as the shell has it
START, END = b"<<line:", b":line>>"
SEQUENCES = re.compile(r"\x1b\[[0-9;?]*[A-Za-z]|\r")
SECONDS = 60


class Shell:
    """Starts a program; `ready` is typed first and has to bind LINE_KEY to show(line)."""

    def __init__(self, arguments, ready, folder, environment):
        self.process, self.terminal = pty.fork()
        if self.process == 0:
            os.chdir(folder)
            os.execvpe(arguments[0], arguments, {**environment, "TERM": "xterm"})
        fcntl.ioctl(self.terminal, termios.TIOCSWINSZ, struct.pack("HHHH", 500, 250, 0, 0))
        self.type(ready + "\n")
        self.line()

    def close(self):
        os.kill(self.process, signal.SIGKILL)
        os.waitpid(self.process, 0)
        os.close(self.terminal)

    def type(self, keys):
        os.write(self.terminal, keys.encode())

    def line(self):
        """The command line, and what the terminal showed until now; the line is empty afterwards."""
        os.write(self.terminal, LINE_KEY)
        shown = b""
        deadline = time.monotonic() + SECONDS
        while END not in shown.split(START)[-1] or START not in shown:
            if not select.select([self.terminal], [], [], deadline - time.monotonic())[0]:
                raise TimeoutError(f"the shell shows no line: {shown!r}")
            shown += os.read(self.terminal, 65536)
        before, line = shown.rsplit(START, 1)
        os.write(self.terminal, b"\x15")
        return line.split(END)[0].decode(), SEQUENCES.sub(" ", before.decode(errors="replace"))
