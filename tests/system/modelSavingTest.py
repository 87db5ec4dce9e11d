"""Saves that fail or are cut off at any step: the file is always the old one or the new one, whole."""

import os
import pathlib
import random
import re
import subprocess
import tempfile
import time
import unittest

from fullDisk import DISK, on_small_disk, seen_by

PROGRAM = os.environ["TIMBERSIM_SAVE_ON_REQUEST"]

KILLS = 100
MOST_SAVES = 3  # of one process
LONGEST_WAIT = 0.001  # seconds from the beginning of the last save to the kill: about what the save takes

# The calls of the system that a save makes, as strace knows them, an error that each can come to, and what it is told.
STEPS = [
    ("/^open", "EACCES", "Permission denied"),
    ("/^open", "ENOSPC", "No space left on device"),
    ("write", "ENOSPC", "No space left on device"),
    ("write", "EIO", "Input/output error"),
    ("fsync", "EIO", "Input/output error"),
    ("close", "EDQUOT", "Disk quota exceeded"),
    ("/^rename", "EBUSY", "Device or resource busy"),
]

MODEL = """\
GENTYPE Default;
COMBI {name};



DURATION {name} 5;
PRIORITY {name} 0;
SEMAPHORE {name} 1;

/<CODE>
{code}
/<CODE>
POSNODE {name} 100 100;
RANKCOUNT 1;
"""


def model(name, lines):
    return MODEL.format(name=name, code="\n".join([f"VARIABLE {name}Pace 4;"] * lines))


OLD = model("Dig", 2000)
NEW = model("Haul", 9000)  # longer by far


class SavingCase(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name).resolve()
        self.environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", XDG_CONFIG_HOME=scratch.name,
                                XDG_RUNTIME_DIR=scratch.name, LC_ALL="C.UTF-8")
        self.work = self.folder / "work"
        self.work.mkdir()
        self.target = self.work / "m.tbsmx"
        for name, text in (("old", OLD), ("new", NEW), ("work/m.tbsmx", OLD)):
            (self.folder / name).write_text(text, encoding="ascii")

    def start(self, *wrapper, target=None):
        """The program, once it has opened the model that it shall replace."""
        with open(self.folder / "said", "wb") as said:
            process = subprocess.Popen([*wrapper, PROGRAM, str(target or self.target)], cwd=self.folder, text=True,
                                       env=self.environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=said)
        self.addCleanup(self.finish, process)
        self.assertEqual(process.stdout.readline(), "ready\n", self.said())
        return process

    def finish(self, process):
        if process.poll() is None:
            process.kill()
        process.wait()
        process.stdout.close()
        process.stdin.close()

    def said(self):
        return (self.folder / "said").read_text(encoding="utf-8")

    def open(self, process, name):
        """Returns when the save of that model begins."""
        process.stdin.write(name + "\n")
        process.stdin.flush()
        self.assertEqual(process.stdout.readline(), "opened\n", self.said())

    def save(self, process, name):
        """What comes of the save of that model."""
        self.open(process, name)
        return process.stdout.readline().rstrip("\n")

    def assert_holds(self, folder, text, *others):
        self.assertTrue((folder / "m.tbsmx").read_text(encoding="ascii") == text, "the file is another one")
        self.assertEqual(sorted(path.name for path in folder.iterdir()), sorted(["m.tbsmx", *others]))


class FailingStepTest(SavingCase):
    def testSaveThatFailsAtAnyStepLeavesTheOldFileAndTheNextOneReplacesIt(self):
        for call, error, told in STEPS:
            with self.subTest(call=call, error=error):
                self.target.write_text(OLD, encoding="ascii")
                process = self.start("strace", "-f", "-qq", "-o", "/dev/null", "-P", f"{self.target}.new",
                                     "-e", f"inject={call}:error={error}:when=1")

                self.assertEqual(self.save(process, "new"), f"Unable to open file: {told}")
                self.assert_holds(self.work, OLD)

                self.assertEqual(self.save(process, "new"), "saved")
                self.assert_holds(self.work, NEW)

    def testTextIsOnTheDiskBeforeItTakesTheFilesPlaceAndSoIsThePlaceThen(self):
        log = self.folder / "calls"
        process = self.start("strace", "-f", "-qq", "-y", "-o", str(log), "-P", f"{self.target}.new",
                             "-P", str(self.work), "-e", "trace=write,fsync,/^rename")

        self.assertEqual(self.save(process, "new"), "saved")
        self.finish(process)

        calls = re.findall(r"^\d+ +(\w+?)(?:at2?)?\((?:\d+<(.*?)>)?", log.read_text(encoding="utf-8"), re.MULTILINE)
        self.assertEqual(calls, [("write", f"{self.target}.new"), ("fsync", f"{self.target}.new"), ("rename", ""),
                                 ("fsync", str(self.work))])


class FullDiskTest(SavingCase):
    def testSaveWithoutRoomLeavesTheOldFileAndTheNextOneReplacesIt(self):
        for room in (0, 4096, 100_000):
            with self.subTest(room=room):
                process = self.start(*on_small_disk(self, self.target, 300_000, room), target=f"{DISK}/m.tbsmx")
                disk = seen_by(process, DISK)

                self.assertEqual(self.save(process, "new"), "Unable to open file: No space left on device")
                self.assert_holds(disk, OLD, "filling")

                (disk / "filling").unlink()
                self.assertEqual(self.save(process, "new"), "saved")
                self.assert_holds(disk, NEW)


class KilledSaveTest(SavingCase):
    def testKilledProgramLeavesTheOldFileOrTheNewOneAndStartsAgainOnIt(self):
        moments = random.Random(6)
        found = []
        halfSaved = 0
        for kill in range(KILLS):
            process = self.start()
            names = ["new", "old"] * MOST_SAVES
            *before, last = names[kill % 2:][:moments.randint(1, MOST_SAVES)]
            for name in before:
                self.assertEqual(self.save(process, name), "saved")
            self.open(process, last)
            time.sleep(moments.uniform(0, LONGEST_WAIT))  # the moment is what this is about
            process.kill()
            process.wait()
            self.assertEqual(self.said(), "")
            self.assertEqual({path.name for path in self.work.iterdir()} - {"m.tbsmx", "m.tbsmx.new"}, set())
            text = self.target.read_text(encoding="ascii")
            self.assertTrue(text in (OLD, NEW), "the file is neither")
            found.append(text)
            halfSaved += (self.work / "m.tbsmx.new").exists()
            self.finish(process)

        self.assertTrue(set(found) == {OLD, NEW})
        self.assertGreater(halfSaved, 0, "no kill came in the middle of a save")


if __name__ == "__main__":
    unittest.main()
