"""Controllers that break every rule: no crash, no process left behind, no reply that isn't in the table."""

import contextlib
import os
import random
import select
import signal
import subprocess
import sys
import unittest

from channelProgram import BATCH, PATIENCE, WINDOW, ChannelCase
from windowDisplay import finish

MEGABYTE = 1 << 20
SESSION = b"LOAD asking.tbsmx;\nRUNMODEL;\nRESPONSE_TO_GET 5\nGETRESULTS;\n"
WORDS = ["RESPONSE_TO_GET", "RESETMODEL;", "LOAD", "SETANIMATE", "GETRESULTS;", "GETTRACE", "runmodel;", "RUNMODEL",
         "true;", "false;", "plain.tbsmx", "asking.tbsmx", "none", ";", "", "SEED", "MULTISIM 2;", "PRINT", "POST", "1",
         "0x", "nan", '"%d"', "SIMULATE;", "INIT Trucks 1;", "GET(\"x\")", "\t", "CLOSE", "\\", "\u00df\u4e2d", "IF",
         "VARIABLE", "ASSIGN", "SAVEVALUE v 0;"]

# A controller that is killed while the model waits for its answer: it starts the program, tells its number, and waits.
DYING_CONTROLLER = """\
import subprocess, sys, time
program = subprocess.Popen(sys.argv[1:], stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
program.stdin.write(b"LOAD {model}.tbsmx\\nRUNMODEL;\\n")
program.stdin.flush()
{ready}
print(program.pid, flush=True)
time.sleep(1000)
"""
ASKED = "assert program.stdout.readline().startswith(b'GET ')"


def random_lines(seed, count):
    chosen = random.Random(seed)
    return [" ".join(chosen.choices(WORDS, k=chosen.randint(1, 4))) for _ in range(count)]


class Abuse:
    def answer_until_results(self, program, wanted):
        """Reads replies until the last of `wanted` results came, and answers whatever is asked."""
        while wanted > 0:
            reply = program.reply()
            self.assertIsNotNone(reply, program.errors[-5:])
            if reply.startswith("GET "):
                program.send("RESPONSE_TO_GET 1")
            wanted -= reply.startswith("RESULTS ")

    def testRandomLines(self):
        program = self.start()
        lines = [line for line in random_lines(1, self.random_count) if line.upper() != "CLOSE;"]
        program.send(*lines, "RESETMODEL;", "GETRESULTS;")
        wanted = sum(line.upper() == "GETRESULTS;" for line in lines) + 1
        self.answer_until_results(program, wanted)

        self.close(program)

    def testLinesOfAMegabyte(self):
        program = self.start()
        for opening in (b"", b"LOAD ", b"GETTRACE ", b"SETANIMATE ", b"RESPONSE_TO_GET ", b"PRINT log ", b"\xff"):
            program.send_bytes(opening + b"x" * MEGABYTE + b"\n")
        program.send("RUNMODEL;", "GETRESULTS;")

        self.assertEqual(program.reply(), "FINISHED_RUN")
        self.assertTrue(program.reply().startswith("RESULTS "))
        self.close(program)

    def testBinaryInput(self):
        program = self.start()
        program.send_bytes(random.Random(2).randbytes(4096).replace(b"\n", b"") + b"\n")
        program.send_bytes(bytes(range(256)) + b"\nLOAD \x00\xff\nGETTRACE \x00\n\x00\nRUNMODEL;\nGETRESULTS;\n")

        self.assertEqual(program.reply(), "FINISHED_RUN")
        self.assertTrue(program.reply().startswith("RESULTS "))
        self.close(program)

    def testKilledControllerTakesTheProgramWithIt(self):
        for model, ready in (("asking", ASKED), ("endless", "")):
            script = DYING_CONTROLLER.format(model=model, ready=ready)
            controller = subprocess.Popen([sys.executable, "-c", script, *self.command], cwd=self.folder,
                                          env=self.environment, stdout=subprocess.PIPE)
            number = int(controller.stdout.readline())
            program = os.pidfd_open(number)
            self.addCleanup(os.close, program)
            self.addCleanup(self.kill, program)
            controller.kill()
            controller.wait()
            controller.stdout.close()

            self.assertTrue(self.ends(program), f"process {number} lives on with model {model}")

    def ends(self, program):
        """Whether a process that is no child of ours ends: its descriptor is readable then."""
        return bool(select.select([program], [], [], PATIENCE)[0])

    def kill(self, program):
        with contextlib.suppress(ProcessLookupError):
            signal.pidfd_send_signal(program, signal.SIGKILL)

    def testControllerThatGoesAtAnyMessageTakesTheProgramWithIt(self):
        messages = SESSION.splitlines(keepends=True)
        for count in range(len(messages) + 1):
            with self.subTest(sent=messages[:count]):
                program = subprocess.Popen(self.command, cwd=self.folder, env=self.environment, stdin=subprocess.PIPE,
                                           stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
                self.addCleanup(finish, program)
                program.stdin.write(b"".join(messages[:count]))
                program.stdin.close()
                program.stdout.close()

                self.assertEqual(program.wait(PATIENCE), 0)

    def testSilentInputDoesNotKeepTheProgramAlive(self):
        program = self.start()
        program.send("CLOSE;")

        self.assertEqual(program.wait(), 0)  # standard input is open still


class BatchAbuseTest(Abuse, ChannelCase):
    command = BATCH
    random_count = 10000

    def testEndOfInputAtEveryPointOfASession(self):
        for length in range(len(SESSION) + 1):
            with self.subTest(sent=SESSION[:length]):
                program = self.start()
                program.send_bytes(SESSION[:length])
                program.process.stdin.close()

                self.assertEqual(program.wait(), 0)
                self.assert_table(program)
        self.assertEqual(list(self.temporary.iterdir()), [])

    def testInterruptEndsAWaitForAnAnswer(self):
        program = self.start()
        program.send("LOAD asking.tbsmx", "RUNMODEL;")
        self.assertEqual(program.reply(), "GET duration")
        program.process.send_signal(signal.SIGINT)

        self.assertEqual(program.reply(), "FINISHED_RUN")
        self.assertEqual(program.wait(), 130)
        self.assertEqual(program.failures(), ["ERROR 5 Simulation stopped. Simulation was stopped by user. "])
        self.assertEqual(list(self.temporary.iterdir()), [])


class WindowAbuseTest(Abuse, ChannelCase):
    command = WINDOW
    random_count = 100  # a window takes twenty a second


if __name__ == "__main__":
    unittest.main()
