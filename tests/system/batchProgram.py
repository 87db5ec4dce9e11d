"""The built timbersim-run as tests drive it: in a folder of their own, with a directory for temporary files of its own."""

import os
import pathlib
import signal
import subprocess
import tempfile
import unittest

PROGRAM = os.environ["TIMBERSIM_RUN"]

EXIT_DONE = 0
EXIT_MODEL_FAILED = 1
EXIT_WRONG_USAGE = 2
EXIT_FILE_TROUBLE = 3
EXIT_STOPPED = 130

# Two trucks carry a pile of soil away in loads of 10. At most one load is dug at a time and truck.
HAULING = """\
GENTYPE Truck;
GENTYPE Soil;
COMBI Load;
QUEUE Trucks Truck;
QUEUE Pile Soil;
QUEUE Dumped Soil;

DRAWLINK L1 Trucks Load;
DRAWLINK L2 Pile Load;
RELEASELINK L3 Load Trucks;
RELEASELINK L4 Load Dumped;

DURATION Load Triangular(2,3,5);
TBINITIALCONTENT Trucks 2;
TBINITIALCONTENT Pile 150;
DRAWAMT L1 1;
DRAWUNTIL L1 nDraws==1;
DRAWAMT L2 10;
DRAWUNTIL L2 nDraws==1;
RELEASEAMT L4 10;

/<CODE>
ADDTORESULTS Production Dumped.CurCount/SimTime;
PRINT notes "pile of %d" Pile.TotCount;
/<CODE>
"""

# One truck is loaded once, for 5, and is gone then: a replication has one event. n counts the replications that came to
# it, so that code given with -e can act in one of them.
COUNTED = """\
GENTYPE Truck;
COMBI Load;
QUEUE Trucks Truck;

DRAWLINK L1 Trucks Load;

DURATION Load 5;
TBINITIALCONTENT Trucks 1;

/<CODE>
SAVEVALUE n 0;
IF SimTime>=5 ASSIGN n n+1;
/<CODE>
"""

# Fails in the fourth replication, when n is 3.
FAILS_IN_FOURTH = ["--replications", "9", "-e", "AFTERTIMEADVANCE PRINT log \"%d\" 6/(3-n)"]

# Loading takes no time, so the clock never moves.
FOREVER = """\
GENTYPE Truck;
COMBI Load;
QUEUE Trucks Truck;

DRAWLINK L1 Trucks Load;
RELEASELINK L2 Load Trucks;

DURATION Load 0;
TBINITIALCONTENT Trucks 1;
"""


class BatchCase(unittest.TestCase):
    """Runs the program in a scratch folder, and sees that it leaves no temporary file behind."""

    maxDiff = None

    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name) / "work"
        self.temporary = pathlib.Path(scratch.name) / "tmp"
        self.folder.mkdir()
        self.temporary.mkdir()
        self.environment = dict(os.environ, TMPDIR=str(self.temporary))
        self.write("hauling.tbsmx", HAULING)
        self.write("counted.tbsmx", COUNTED)
        self.write("forever.tbsmx", FOREVER)
        self.given = self.names()

    def write(self, name, text):
        (self.folder / name).write_text(text, encoding="utf-8")

    def read(self, name):
        return (self.folder / name).read_bytes().decode("utf-8")

    def names(self):
        return sorted(path.name for path in self.folder.iterdir())

    def made(self):
        """The names in the folder that were not there at the start."""
        return sorted(set(self.names()) - set(self.given))

    def start(self, *arguments, **options):
        streams = {"stdin": subprocess.DEVNULL, "stdout": subprocess.PIPE, "stderr": subprocess.PIPE}
        process = subprocess.Popen(
            [PROGRAM, *arguments], cwd=self.folder, env=self.environment, text=True, **{**streams, **options}
        )
        self.addCleanup(self.finish, process)
        return process

    def finish(self, process):
        """Whatever a failed test left running."""
        if process.poll() is None:
            process.kill()
        process.wait()
        for stream in (process.stdout, process.stderr):
            if stream is not None:
                stream.close()

    def run_program(self, *arguments, **options):
        process = self.start(*arguments, **options)
        process.out, process.err = process.communicate()
        self.assert_no_leftovers()
        return process

    def succeed(self, *arguments, **options):
        """What a run that must go well says on standard output."""
        process = self.run_program(*arguments, **options)
        self.assertEqual((process.err, process.returncode), ("", EXIT_DONE))
        return process.out

    def assert_no_leftovers(self):
        self.assertEqual(list(self.temporary.iterdir()), [])
        self.assertEqual([name for name in self.names() if name.endswith(".part")], [])

    def wait_for_interrupt(self, process, is_caught):
        """Returns once the process handles interrupts itself, or once it no longer does."""
        bit = 1 << (signal.SIGINT - 1)
        while process.poll() is None:
            status = pathlib.Path(f"/proc/{process.pid}/status").read_text(encoding="ascii")
            caught = next(line.split()[1] for line in status.splitlines() if line.startswith("SigCgt:"))
            if bool(int(caught, 16) & bit) == is_caught:
                return
        self.fail(f"the program ended by itself with {process.returncode}: {process.stderr.read()}")
