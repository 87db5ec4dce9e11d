"""Both programs as a controller drives them: lines on standard input, replies on standard output, failures on standard
error. Nothing here waits for a length of time; what doesn't come within PATIENCE fails."""

import contextlib
import os
import pathlib
import queue
import subprocess
import tempfile
import threading
import unittest

from windowDisplay import end_with_parent, finish

PATIENCE = 20.0  # seconds until a reply counts as missing

BATCH = [os.environ["TIMBERSIM_RUN"], "--serve"]
WINDOW = [os.environ["TIMBERSIM"], "--from-python"]

REPLIES = ("FINISHED_RUN", "RESULTS ", "TRACE ", "CLOSED_TIMBERSIM", "GET ", "MESSAGE ")

# One truck is loaded once; the controller says for how long.
ASKING = """\
GENTYPE Truck;
COMBI Load;
QUEUE Trucks Truck;
QUEUE Loaded Truck;

DRAWLINK L1 Trucks Load;
RELEASELINK L2 Load Loaded;

DURATION Load GET("duration");
TBINITIALCONTENT Trucks 1;
"""

# The same, for 5.
PLAIN = ASKING.replace('GET("duration")', "5")

# Loading never ends.
ENDLESS = PLAIN.replace("L2 Load Loaded", "L2 Load Trucks")

# Nothing leads to the Combi.
UNFIT = "COMBI Load;\n"

# Asks for a value that is declared, which a reader of the model does too.
DECLARING = PLAIN + "/<CODE>\nSAVEVALUE rate GET(\"rate\");\nADDTORESULTS rate rate;\n/<CODE>\n"

# Nothing happens; two of its names are those of another kind of element or of the same.
OTHER = "GENTYPE Truck;\nQUEUE Load Truck;\nQUEUE Loaded Truck;\nTBINITIALCONTENT Load 2;\n"

MODELS = {"asking": ASKING, "plain": PLAIN, "endless": ENDLESS, "unfit": UNFIT, "declaring": DECLARING, "other": OTHER,
          "my  model; 1": PLAIN}


class Controller:
    """A program, and what it said."""

    def __init__(self, command, folder, environment, **options):
        usual = {"stdin": subprocess.PIPE, "stdout": subprocess.PIPE, "stderr": subprocess.PIPE,
                 "preexec_fn": end_with_parent}
        self.process = subprocess.Popen(command, cwd=folder, env=environment, **{**usual, **options})
        self.arrived = queue.Queue()
        self.replies = []
        self.errors = []
        self.readers = [threading.Thread(target=self.read_replies), threading.Thread(target=self.read_errors)]
        for reader in self.readers:
            reader.start()

    def read_replies(self):
        for line in self.process.stdout:
            self.replies.append(line.decode("utf-8").rstrip("\n"))
            self.arrived.put(self.replies[-1])
        self.arrived.put(None)

    def read_errors(self):
        for line in self.process.stderr:
            self.errors.append(line.decode("utf-8", "replace").rstrip("\n"))

    def send(self, *lines):
        self.send_bytes(b"".join(line.encode("utf-8") + b"\n" for line in lines))

    def send_bytes(self, data):
        self.process.stdin.write(data)
        self.process.stdin.flush()

    def reply(self):
        """The next reply; nothing once standard output is closed."""
        return self.arrived.get(timeout=PATIENCE)

    def wait(self):
        """The exit status. All that the program said has been read then."""
        status = self.process.wait(PATIENCE)
        for reader in self.readers:
            reader.join(PATIENCE)
        return status

    def failures(self):
        """What standard error tells of failures."""
        return [line for line in self.errors if line.startswith("ERROR ")]

    def finish(self):
        finish(self.process)
        for reader in self.readers:
            reader.join()
        for stream in (self.process.stdin, self.process.stdout, self.process.stderr):
            with contextlib.suppress(BrokenPipeError):  # of what was written to a program that had ended
                if stream is not None:
                    stream.close()


def closing(stream):
    """What a child does that ends with the test, and has one of its standard streams closed."""
    def prepare():
        end_with_parent()
        os.close(stream)
    return prepare


class ChannelCase(unittest.TestCase):
    """A folder with models, and settings and temporary files of the test's own."""

    maxDiff = None
    command = BATCH

    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name) / "work"
        self.temporary = pathlib.Path(scratch.name) / "tmp"
        self.settings = pathlib.Path(scratch.name) / "settings"
        for folder in (self.folder, self.temporary, self.settings):
            folder.mkdir()
        self.environment = dict(os.environ, TMPDIR=str(self.temporary), XDG_CONFIG_HOME=str(self.settings),
                                XDG_RUNTIME_DIR=str(self.temporary), QT_QPA_PLATFORM="offscreen")
        for name, text in MODELS.items():
            (self.folder / f"{name}.tbsmx").write_text(text, encoding="utf-8")

    def start(self, *arguments, **options):
        controller = Controller([*self.command, *arguments], self.folder, self.environment, **options)
        self.addCleanup(controller.finish)
        return controller

    def close(self, controller):
        """Ends the program as a controller does, and sees that it ends well and at once."""
        controller.send("CLOSE;")
        self.assertEqual(controller.reply(), "CLOSED_TIMBERSIM")
        self.assertEqual(controller.wait(), 0)
        self.assert_table(controller)

    def assert_table(self, controller):
        """No reply that a controller doesn't know."""
        self.assertEqual([reply for reply in controller.replies if not reply.startswith(REPLIES)], [])
