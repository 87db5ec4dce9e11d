"""A program that speaks the protocol and simulates nothing, and programs that misbehave, each in a way of its own.

A test starts one through a script of its own (see fake_case). Each line that comes is written to a log, behind a first
line with the number of the process.
"""

import os
import signal
import sys
import time

MEGABYTE = 1 << 20


class Program:
    """Does all that is asked, at once. Every run takes 5."""

    results = '{"SimTime":5}'
    trace = "first|second|"

    def __init__(self, log):
        self.log = open(log, "a", buffering=1, encoding="utf-8")
        self.note(os.getpid())

    def note(self, what):
        self.log.write(f"{what}\n")

    def say(self, line):
        sys.stdout.write(line + "\n")
        sys.stdout.flush()

    def complain(self, line):
        sys.stderr.write(line + "\n")
        sys.stderr.flush()

    def serve(self):
        while line := self.read():
            self.handle(line)

    def read(self):
        line = sys.stdin.readline().rstrip("\n")
        self.note(line)
        return line

    def handle(self, line):
        word = line.split(" ")[0].upper()
        handlers = {"LOAD": self.load, "RUNMODEL;": self.run, "GETRESULTS;": self.get_results,
                    "GETTRACE": self.get_trace, "CLOSE;": self.close}
        if word in handlers:
            handlers[word](line)

    def load(self, line):
        pass

    def run(self, line):
        self.say("FINISHED_RUN")

    def get_results(self, line):
        self.say("RESULTS " + self.results)

    def get_trace(self, line):
        if line == "GETTRACE log;":
            self.say("TRACE " + self.trace)

    def close(self, line):
        self.say("CLOSED_TIMBERSIM")
        sys.exit(0)


class DiesAtStart(Program):
    def serve(self):
        self.complain("no display\nnothing to be done")
        sys.exit(3)


class DiesInRun(Program):
    def run(self, line):
        for number in range(1000):
            self.complain(f"last words {number}")
        sys.exit(7)


class DiesAfterItsOutput(Program):
    """Closes its output, and then says more than a pipe holds."""

    def run(self, line):
        os.close(1)
        for number in range(10000):
            self.complain(f"last words {number}")
        os._exit(4)


class IsKilledInRun(Program):
    def run(self, line):
        os.kill(os.getpid(), signal.SIGKILL)


class DiesIdle(Program):
    def get_results(self, line):
        super().get_results(line)
        sys.exit(0)


class ClosesOutputAndLives(Program):
    def run(self, line):
        os.close(1)
        signal.pause()


class NeverAnswers(Program):
    def serve(self):
        signal.pause()


class NeverEndsRun(Program):
    def run(self, line):
        signal.pause()


class ClosesOnlyByForce(Program):
    def close(self, line):
        signal.pause()


class StopsReading(Program):
    def get_results(self, line):
        super().get_results(line)
        signal.pause()


class AnswersInPieces(Program):
    def say(self, line):
        for byte in (line + "\n").encode("utf-8"):
            os.write(1, bytes([byte]))
            time.sleep(0.001)  # a program that takes its time


class SaysGarbage(Program):
    def run(self, line):
        os.write(1, b"\xff\0garbage\n")


class SaysNoJson(Program):
    results = "{"


class SaysTexts(Program):
    results = '{"SimTime":"five"}'


class SaysNull(Program):
    results = '{"Dig.AveInt":null,"Dig.CurInst":0,"SimTime":5.5}'


class WritesWithoutLineEnd(Program):
    def run(self, line):
        while True:
            os.write(1, b"x" * MEGABYTE)


class FloodsStandardError(Program):
    """More than any pipe holds, with and without line ends, ahead of the answer."""

    def run(self, line):
        sys.stderr.write("noise\n" * MEGABYTE + "x" * MEGABYTE + "\n")
        self.complain("ERROR 2 told behind the noise")
        super().run(line)


class FloodsStandardErrorForEver(Program):
    def run(self, line):
        while True:
            os.write(2, b"noise\n" * 1000)


class FloodsWithMessages(Program):
    def run(self, line):
        for number in range(100000):
            sys.stdout.write(f"MESSAGE {number}\n")
        super().run(line)


class FloodsWithMessagesForEver(Program):
    """Whatever is asked, as a model that a user runs in the window might."""

    def get_trace(self, line):
        while True:
            os.write(1, b"MESSAGE again\n" * 1000)


class FloodsWhileIdle(Program):
    """After the first answer, more than its pipes hold; then it notes that all of it has gone."""

    has_flooded = False

    def get_results(self, line):
        super().get_results(line)
        if self.has_flooded:
            return
        self.has_flooded = True
        for number in range(100000):
            self.complain("ERROR 1 unasked")
            self.say("FINISHED_RUN")
        self.note("flooded")


class FailsToLoad(Program):
    def load(self, line):
        self.complain("Handling it\nERROR 0 No such file or directory")


class FailsInRun(Program):
    def run(self, line):
        self.complain("ERROR 4 Combi Dig has no in-links. Sorry. ")
        super().run(line)


class Asks(Program):
    def run(self, line):
        self.say("GET haul")
        self.read()
        self.say("MESSAGE one done ")
        self.say("GET ")
        self.read()
        self.say("MESSAGE ")
        super().run(line)


class AsksWithoutEnd(Program):
    def run(self, line):
        while True:
            self.say("GET haul")
            self.read()


class AsksInLoad(Program):
    """As a load does: what comes while a value is awaited is handled within."""

    def load(self, line):
        for key in ("first", "second"):
            self.say("GET " + key)
            while not (nested := self.read()).startswith("RESPONSE_TO_GET"):
                self.handle(nested)
        self.complain("ERROR 1 after both values")


class AsksUnasked(Program):
    """As when the user of the window runs a model by hand."""

    def get_results(self, line):
        self.say("GET by hand")
        self.say("MESSAGE by hand")
        super().get_results(line)
