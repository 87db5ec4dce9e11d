"""Sessions with a program of fake_program.py instead of TIMBERSIM."""

import os
import pathlib
import sys
import tempfile
import time
import unittest

import timbersim

TESTS = pathlib.Path(__file__).resolve().parent
PATIENCE = 20.0  # seconds until a test gives up


class FakeCase(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)
        self.log = self.folder / "log"

    def program(self, behaviour):
        """The path of a program that behaves like a class of fake_program.py."""
        path = self.folder / behaviour
        path.write_text(
            f"#!{sys.executable} -B\n"
            f"import sys\nsys.path.insert(0, {str(TESTS)!r})\nimport fake_program\n"
            f"fake_program.{behaviour}({str(self.log)!r}).serve()\n",
            encoding="utf-8",
        )
        path.chmod(0o755)
        return path

    def start(self, behaviour, **options):
        session = timbersim.Session(program=self.program(behaviour), **options)
        self.addCleanup(session.close)
        return session

    def received(self):
        """The lines that came to the program, without those that ask for results and the one that closes it."""
        lines = self.log.read_text(encoding="utf-8").splitlines()[1:]
        return [line for line in lines if line not in ("", "GETRESULTS;", "CLOSE;")]

    def pid(self):
        return int(self.log.read_text(encoding="utf-8").splitlines()[0])

    def assert_gone(self):
        """The process has ended, and has been reaped: its number means nothing any more."""
        with self.assertRaises(ProcessLookupError):
            os.kill(self.pid(), 0)

    def is_gone(self):
        """Ended; whether a new parent reaps it is that one's affair."""
        try:
            stat = pathlib.Path(f"/proc/{self.pid()}/stat").read_text(encoding="utf-8")
        except FileNotFoundError:
            return True
        return stat.rpartition(")")[2].split()[0] == "Z"

    def until(self, condition):
        """Waits for what another process brings about."""
        end = time.monotonic() + PATIENCE
        while not condition():
            self.assertLess(time.monotonic(), end, "waited in vain")
            time.sleep(0.002)
