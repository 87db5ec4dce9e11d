"""The progress line: on a terminal, while many replications run, and gone at the end."""

import os
import pty
import threading
import unittest

from batchProgram import EXIT_DONE, EXIT_MODEL_FAILED, FAILS_IN_FOURTH, BatchCase

ERASE = "\r\x1b[K"


class ProgressTest(BatchCase):
    def run_on_terminal(self, *arguments):
        """Runs with a terminal for standard error. @return the process, and all that the terminal was sent."""
        terminal, program_side = pty.openpty()
        received = []

        def receive():
            try:
                while piece := os.read(terminal, 4096):
                    received.append(piece)
            except OSError:  # how a terminal tells that nobody writes to it any more
                pass

        reader = threading.Thread(target=receive)
        reader.start()
        process = self.start(*arguments, stderr=program_side)
        os.close(program_side)
        process.out, _ = process.communicate()
        reader.join()
        os.close(terminal)
        self.assert_no_leftovers()
        return process, b"".join(received).decode("utf-8")

    def testTerminalShowsHowFarARunOfManyIs(self):
        process, shown = self.run_on_terminal("counted.tbsmx", "--replications", "200")

        lines = shown.split(ERASE)
        self.assertEqual(lines[:2], ["", "0 of 200 replications"])
        self.assertEqual(lines[-1], "")
        for line in lines[2:-1]:
            self.assertRegex(line, r"^\d+ of 200 replications, \d+\.\d per second, 0:\d\d:\d\d left$")
        self.assertIn("Average SimTime = 5\n", process.out)
        self.assertEqual(process.returncode, EXIT_DONE)

    def testTerminalShowsNothingElseAfterTheLineIsErased(self):
        process, shown = self.run_on_terminal("counted.tbsmx", *FAILS_IN_FOURTH)

        self.assertEqual(process.returncode, EXIT_MODEL_FAILED)
        self.assertTrue(shown.startswith(ERASE + "0 of 9 replications"), shown)
        self.assertIn(ERASE + "timbersim-run: the model failed.\r\nDivision by 0.\r\n", shown)
        self.assertEqual(shown.count("replications" + ERASE), 1)

    def testQuietTerminalShowsNothing(self):
        process, shown = self.run_on_terminal("counted.tbsmx", "--replications", "200", "--quiet")

        self.assertEqual((shown, process.returncode), ("", EXIT_DONE))

    def testSingleRunShowsNothing(self):
        process, shown = self.run_on_terminal("counted.tbsmx")

        self.assertEqual((shown, process.returncode), ("", EXIT_DONE))

    def testPipeIsSentNothing(self):
        self.succeed("counted.tbsmx", "--replications", "200")


if __name__ == "__main__":
    unittest.main()
