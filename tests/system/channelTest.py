"""Every message of the channel, both ways, between a controller and the built programs; both give the same replies."""

import json
import os
import pathlib
import re
import signal
import subprocess
import time
import unittest

from channelProgram import BATCH, PATIENCE, PLAIN, WINDOW, ChannelCase, closing
from windowDisplay import end_with_parent, finish

UNFIT_FAILURE = ('ERROR 4 Simulation failed to start. Combi "Load" does not have any inlinks and will be started '
                 "infinitely.")

MOST_TICKS = 20  # of the processor's time, of which a program that never waits takes a hundred a second


def waits_of(process):
    """How often the threads of a process have given the processor up to wait."""
    tasks = pathlib.Path(f"/proc/{process}/task").iterdir()
    return sum(int(re.search(r"^voluntary_ctxt_switches:\s*(\d+)", (task / "status").read_text(), re.MULTILINE)[1])
               for task in tasks)


def ticks_of(process):
    """The processor's time that a process took, its own and the system's."""
    fields = pathlib.Path(f"/proc/{process}/stat").read_text().rpartition(")")[2].split()
    return int(fields[11]) + int(fields[12])


class Transcripts:
    """What holds for both programs."""

    def setUp(self):
        super().setUp()
        self.program = self.start()

    def say(self, *lines):
        self.program.send(*lines)

    def assert_replies(self, *expected):
        self.assertEqual([self.program.reply() for _ in expected], list(expected))

    def results(self):
        self.say("GETRESULTS;")
        word, _, text = self.program.reply().partition(" ")
        self.assertEqual(word, "RESULTS")
        return json.loads(text)

    def load_and_run(self, name="plain"):
        self.say(f"LOAD {name}.tbsmx;", "RUNMODEL;")
        self.assert_replies("FINISHED_RUN")

    def assert_idle(self):
        """No reply is under way, and the program goes on."""
        self.say("GETTRACE nothing", "GETRESULTS;")
        self.assertTrue(self.program.reply().startswith("RESULTS "))

    # ---- messages to the program

    def testModelIsLoadedRunAndItsResultsRead(self):
        self.load_and_run()
        results = self.results()

        self.assertEqual((results["SimTime"], results["Load.TotInst"], results["Load.CurInst"]), (5, 1, 0))
        self.assertEqual(results["Loaded.CurCount"], 1)
        self.assertIsNone(results["Load.SDDur"])
        self.close(self.program)

    def testResultsBeforeARunAreAnEmptyObject(self):
        self.say("GETRESULTS;", "LOAD plain.tbsmx", "GETRESULTS;")

        self.assert_replies("RESULTS {}", "RESULTS {}")

    def testResultsAndTracesOutliveALoadUntilTheNextRun(self):
        self.say("LOAD plain.tbsmx", 'PRINT log "old";', "ADDTORESULTS Half 1/2;", "RUNMODEL;", "LOAD other.tbsmx",
                 "GETTRACE log;")
        self.assert_replies("FINISHED_RUN", "TRACE old|")
        old = self.results()
        self.say("RUNMODEL;", "GETTRACE log;")
        self.assert_replies("FINISHED_RUN")
        new = self.results()

        self.assertEqual((old["SimTime"], old["Half"], old["Loaded.CurCount"]), (5, 0.5, 1))
        # Load is a queue now, and Trucks are gone: the last run has no figures of the one, and the other's aren't shown.
        self.assertEqual([name for name in old if name.startswith(("Load.", "Trucks."))], [])
        self.assertEqual((new["SimTime"], new["Load.CurCount"], new["Loaded.CurCount"]), (0, 2, 0))
        self.assertNotIn("Half", new)

    def testResultsOutliveALoadThatFails(self):
        self.load_and_run()
        self.say("LOAD none.tbsmx;")

        self.assertEqual(self.results(), {"SimTime": 5})

    def testLoadedPathKeepsItsBlanksAndLosesOneSemicolon(self):
        self.say("load my  model; 1.tbsmx;", "RUNMODEL;")

        self.assert_replies("FINISHED_RUN")
        self.assertEqual(self.results()["SimTime"], 5)
        self.assertEqual(self.program.failures(), [])

    def testModelThatCannotBeReadIsToldOnStandardErrorAlone(self):
        self.load_and_run()
        self.say("LOAD none.tbsmx;", "RUNMODEL;")

        self.assert_replies("FINISHED_RUN")
        self.assertEqual(self.results(), {"SimTime": 0})
        self.close(self.program)
        self.assertEqual(len(self.program.failures()), 1)
        self.assertRegex(self.program.failures()[0], "^ERROR 0 .*No such file or directory$")

    def testWhatIsNoPlainFileIsNotLoaded(self):
        """Nor waited for: nobody writes to the pipe, and what is in the channel isn't the model's."""
        os.mkfifo(self.folder / "pipe")
        refused = ("pipe", "/dev/zero", "/dev/stdin", ".")
        for path in refused:
            self.say(f"LOAD {path};")
        self.load_and_run()
        self.close(self.program)

        self.assertEqual(len(self.program.failures()), len(refused))
        for failure in self.program.failures():
            self.assertRegex(failure, r"^ERROR 0 .*It is not a plain file\.$")

    def testPathWithAZeroByteIsNotLoadedAsFarAsThat(self):
        self.say("LOAD plain.tbsmx\0x;")
        self.load_and_run("other")
        self.close(self.program)

        self.assertEqual(len(self.program.failures()), 1)
        self.assertRegex(self.program.failures()[0], r"^ERROR 0 .*There is a zero byte in its name\.$")

    def testRunModelInLowerCaseRuns(self):
        self.say("LOAD plain.tbsmx", "runmodel;")

        self.assert_replies("FINISHED_RUN")

    def testRunModelWithABlankOrWithoutItsSemicolonIsAStatement(self):
        self.say("LOAD plain.tbsmx", "RUNMODEL", "RUNMODEL ;", "GETRESULTS;")

        self.assert_replies("RESULTS {}")

    def testRunsFollowOneAnother(self):
        self.load_and_run()
        for _ in range(2):
            self.say("RUNMODEL;")
            self.assert_replies("FINISHED_RUN")
            self.assertEqual(self.results()["Load.TotInst"], 1)
            self.say("RESETMODEL;")

    def testStatementsHoldForOneRun(self):
        self.say("LOAD plain.tbsmx", 'PRINT log "%d" 4;', "RUNMODEL;", "GETTRACE log;", "RESETMODEL;", "RUNMODEL;",
                 "GETTRACE log;", "GETRESULTS;")

        self.assert_replies("FINISHED_RUN", "TRACE 4|", "FINISHED_RUN")
        self.assertTrue(self.program.reply().startswith("RESULTS "))

    def testStatementMayTakeSeveralLines(self):
        self.say("LOAD plain.tbsmx", "ADDTORESULTS ", "Half", " 1/2;", "RUNMODEL;")

        self.assert_replies("FINISHED_RUN")
        self.assertEqual(self.results()["Half"], 0.5)

    def testResetAndLoadForgetStatements(self):
        for forgetting in ("RESETMODEL;", "LOAD plain.tbsmx"):
            self.say("LOAD plain.tbsmx", 'PRINT log "lost";', forgetting, "RUNMODEL;", "GETTRACE log", "GETRESULTS;")
            self.assert_replies("FINISHED_RUN")
            self.assertTrue(self.program.reply().startswith("RESULTS "))

    def testManyReplicationsAreMeans(self):
        self.say("LOAD plain.tbsmx", "MULTISIM 3;", 'PRINT log "run";', "RUNMODEL;", "GETTRACE log")

        self.assert_replies("FINISHED_RUN", "TRACE run|")
        self.assertEqual(self.results()["SimTime"], 5)

    def testTraceIsOneLineWithBars(self):
        self.say("LOAD plain.tbsmx", 'PRINT log "a|b";', 'PRINT log "c";', "RUNMODEL;", "gettrace log;")

        self.assert_replies("FINISHED_RUN", "TRACE a|b|c|")

    def testUnknownTraceGivesNoReply(self):
        self.load_and_run()
        self.say("GETTRACE none", "GETTRACE", "RUNMODEL;")

        self.assert_replies("FINISHED_RUN")

    def testSetAnimateIsTakenWithoutAReply(self):
        self.say("SETANIMATE", "SETANIMATE TRUE;", "setanimate false;")

        self.load_and_run()

    def testCloseInLowerCaseEndsTheProgram(self):
        self.say("close;")

        self.assert_replies("CLOSED_TIMBERSIM")
        self.assertEqual(self.program.wait(), 0)
        self.assertEqual(self.program.replies, ["CLOSED_TIMBERSIM"])

    def testNothingIsServedBehindClose(self):
        self.say("CLOSE;", "GETRESULTS;")

        self.assert_replies("CLOSED_TIMBERSIM")
        self.assertEqual(self.program.wait(), 0)
        self.assertEqual(self.program.replies, ["CLOSED_TIMBERSIM"])

    def testLastMessageNeedsNoLineFeed(self):
        self.program.send_bytes(b"GETRESULTS;")
        self.program.process.stdin.close()

        self.assert_replies("RESULTS {}")

    def testTextOfOtherLanguagesStaysWhole(self):
        self.say("LOAD plain.tbsmx", 'PRINT k\u00fchn "\u00e9\u4e2d";', "RUNMODEL;", "GETTRACE k\u00fchn;")

        self.assert_replies("FINISHED_RUN", "TRACE \u00e9\u4e2d|")

    # ---- questions and messages of the model

    def testModelAsksAndIsAnswered(self):
        self.say("LOAD asking.tbsmx", "RUNMODEL;")
        self.assert_replies("GET duration")
        self.say("RESPONSE_TO_GET 7.5")

        self.assert_replies("FINISHED_RUN")
        self.assertEqual(self.results()["SimTime"], 7.5)

    def testAnswerThatIsNoNumberIsZero(self):
        for answer in ("RESPONSE_TO_GET 7;", "RESPONSE_TO_GET seven", "RESPONSE_TO_GET", "RESPONSE_TO_GET  7",
                       "RESPONSE_TO_GET 0x10", "RESPONSE_TO_GET infinity", "RESPONSE_TO_GET nan", "RESPONSE_TO_GET 1e999"):
            self.say("LOAD asking.tbsmx", "RUNMODEL;")
            self.assert_replies("GET duration")
            self.say(answer)
            self.assert_replies("FINISHED_RUN")
            self.assertEqual(self.results()["SimTime"], 0, answer)

    def testAnswerThatNobodyAskedForIsNoneToTheNextQuestion(self):
        self.say("RESPONSE_TO_GET 3", "LOAD asking.tbsmx", "RUNMODEL;")
        self.assert_replies("GET duration")
        self.say("RESPONSE_TO_GET 4")

        self.assert_replies("FINISHED_RUN")
        self.assertEqual(self.results()["SimTime"], 4)

    def testPostedTextsAreMessages(self):
        self.say("LOAD plain.tbsmx", 'POST "n = %d" 3;', "RUNMODEL;")

        self.assert_replies("MESSAGE n = 3", "FINISHED_RUN")

    def testModelAsksWhileItIsLoaded(self):
        self.say("LOAD declaring.tbsmx;")
        self.assert_replies("GET rate")
        self.say("RUNMODEL;")
        reply = "GET rate"
        while reply == "GET rate":
            self.say("RESPONSE_TO_GET 3")
            reply = self.program.reply()

        self.assertEqual(reply, "FINISHED_RUN")
        self.assertEqual(self.results()["rate"], 3)

    def testCloseEndsALoadThatWaits(self):
        self.say("LOAD declaring.tbsmx;")
        self.assert_replies("GET rate")
        self.close(self.program)

        self.assertEqual(self.program.failures(), [])

    # ---- messages inside a run

    def testResultsAndTracesAreReadWhileTheModelWaits(self):
        self.say("LOAD asking.tbsmx", 'PRINT log "begun";', "RUNMODEL;")
        self.assert_replies("GET duration")
        self.say("GETRESULTS;", "GETTRACE log", "GETTRACE none", "SETANIMATE false;", "RESPONSE_TO_GET 1")

        self.assert_replies("RESULTS {}", "TRACE begun|", "FINISHED_RUN")

    def testStatementSentWhileTheModelWaitsIsForTheNextRun(self):
        self.say("LOAD asking.tbsmx", "RUNMODEL;")
        self.assert_replies("GET duration")
        self.say('POST "later";', "RESPONSE_TO_GET 1")
        self.assert_replies("FINISHED_RUN")
        self.say("RUNMODEL;")

        self.assert_replies("MESSAGE later", "GET duration")
        self.say("RESPONSE_TO_GET 1")
        self.assert_replies("FINISHED_RUN")

    def testWhatWouldChangeTheModelWaitsForTheEndOfTheRun(self):
        self.say("LOAD asking.tbsmx", "RUNMODEL;")
        self.assert_replies("GET duration")
        self.say("RUNMODEL;", "GETRESULTS;", "LOAD plain.tbsmx", "GETRESULTS;", "RESETMODEL;", "RUNMODEL;",
                 "RESPONSE_TO_GET 2")

        self.assert_replies("FINISHED_RUN", "GET duration")
        self.say("RESPONSE_TO_GET 3")
        self.assert_replies("FINISHED_RUN")
        self.assertEqual(json.loads(self.program.reply()[len("RESULTS "):])["SimTime"], 3)
        self.assertEqual(json.loads(self.program.reply()[len("RESULTS "):])["SimTime"], 3)  # no run since
        self.assert_replies("FINISHED_RUN")
        self.assertEqual(self.results()["SimTime"], 5)

    def testCloseWhileTheModelWaitsIsTheLastReply(self):
        self.say("LOAD asking.tbsmx", "RUNMODEL;")
        self.assert_replies("GET duration")
        self.say("CLOSE;")

        self.assert_replies("CLOSED_TIMBERSIM")
        self.assertEqual(self.program.wait(), 0)
        self.assertEqual(self.program.replies, ["GET duration", "CLOSED_TIMBERSIM"])
        self.assertEqual(self.program.failures(), [])

    # ---- failures

    def testRunThatFailsIsToldAndFinished(self):
        self.say("LOAD unfit.tbsmx", "RUNMODEL;")
        self.assert_replies("FINISHED_RUN")
        self.load_and_run()
        self.close(self.program)

        self.assertEqual(self.program.failures(), [UNFIT_FAILURE])

    def testStatementThatFailsIsToldAndFinishesTheRun(self):
        self.say("LOAD plain.tbsmx", "SEED 1 2;", "RUNMODEL;")
        self.assert_replies("FINISHED_RUN")
        self.say("RUNMODEL;")
        self.assert_replies("FINISHED_RUN")
        self.close(self.program)

        self.assertEqual(self.program.failures(), ["ERROR 1 Syntax error in statement: SEED 1 2"])

    def testFailureInALaterReplicationKeepsThoseBefore(self):
        self.say("LOAD plain.tbsmx", "MULTISIM 5;", "SAVEVALUE n 0;", "IF SimTime>=5 ASSIGN n n+1;",
                 'AFTERTIMEADVANCE PRINT log "%d" 6/(3-n);', "ADDTORESULTS n n;", "RUNMODEL;")
        self.assert_replies("FINISHED_RUN")

        self.assertEqual(self.results()["SimTime"], 5)
        self.assertEqual(self.results()["n"], 2)
        self.close(self.program)
        self.assertEqual(self.program.failures(), ["ERROR 2 Division by 0."])


class BatchTranscriptTest(Transcripts, ChannelCase):
    command = BATCH

    def testEndOfInputEndsTheProgram(self):
        self.say("LOAD plain.tbsmx", "RUNMODEL;", "GETRESULTS;")
        self.program.process.stdin.close()

        self.assert_replies("FINISHED_RUN")
        self.assertTrue(self.program.reply().startswith("RESULTS {"))
        self.assertEqual(self.program.wait(), 0)
        self.assertEqual(list(self.temporary.iterdir()), [])

    def testEndOfInputWhileTheModelWaitsEndsRunAndProgram(self):
        self.say("LOAD asking.tbsmx", "RUNMODEL;")
        self.assert_replies("GET duration")
        self.program.process.stdin.close()

        self.assert_replies("FINISHED_RUN", None)
        self.assertEqual(self.program.wait(), 0)
        self.assertEqual(self.program.failures(), ["ERROR 2 The input ended before the answer to a GET came."])

    def testNothingIsLeftBehindByAKill(self):
        self.say("LOAD plain.tbsmx", "MULTISIM 3;", "RUNMODEL;")
        self.assert_replies("FINISHED_RUN")
        self.assertEqual(list(self.temporary.iterdir()), [])
        self.say("LOAD asking.tbsmx", "MULTISIM 3;", "RUNMODEL;")
        self.assert_replies("GET duration")
        self.program.process.kill()

        self.assertEqual(self.program.wait(), -signal.SIGKILL)
        self.assertEqual(list(self.temporary.iterdir()), [])

    def testClosedStandardInputIsAtItsEnd(self):
        program = self.start("plain.tbsmx", stdin=None, preexec_fn=closing(0))

        self.assertEqual(program.wait(), 0)
        self.assertEqual(program.errors, [])

    def testClosedStandardOutputIsAReaderThatIsGone(self):
        program = self.start(preexec_fn=closing(1))
        program.send("GETRESULTS;")

        self.assertEqual(program.wait(), 0)  # standard input is open still

    def testNothingButFailuresIsSaidOnStandardError(self):
        self.load_and_run()
        self.close(self.program)

        self.assertEqual(self.program.errors, [])


class WindowTranscriptTest(Transcripts, ChannelCase):
    command = WINDOW

    def testDebugLogIsOnStandardError(self):
        self.say("GETTRACE none")
        self.assert_idle()
        self.close(self.program)

        self.assertIn("Python Receiver Thread Started!", self.program.errors)
        self.assertIn("Handling Python Message in Main Thread: GETTRACE none", self.program.errors)
        self.assertIn("TRACE not found for: none", self.program.errors)

    def testTraceThatIsSentIsInTheDebugLog(self):
        self.say("LOAD plain.tbsmx", 'PRINT log "text";', "RUNMODEL;", "GETTRACE log")
        self.assert_replies("FINISHED_RUN", "TRACE text|")
        self.close(self.program)

        sent = self.program.errors.index("Sending TRACE response to Python for: log text")
        self.assertIn("Flushed TRACE response to Python", self.program.errors[sent:])

    def testMessagesAreServedAgainAfterAnEndOfInput(self):
        path = self.folder / "messages"
        os.mkfifo(path)
        reader = os.open(path, os.O_RDONLY | os.O_NONBLOCK)  # at its end while nobody writes
        program = self.start(stdin=reader)
        os.close(reader)
        for message, reply in (("GETRESULTS;", "RESULTS {}"), ("CLOSE;", "CLOSED_TIMBERSIM")):
            path.write_text(message + "\n", encoding="ascii")
            self.assertEqual(program.reply(), reply)

        self.assertEqual(program.wait(), 0)

    def testCloseDuringAnEndlessRunEndsTheProgram(self):
        self.say("LOAD endless.tbsmx", "RUNMODEL;", "CLOSE;")

        self.assert_replies("CLOSED_TIMBERSIM")
        self.assertEqual(self.program.wait(), 0)

    def testCloseDuringAnAnimatedRunEndsTheProgram(self):
        self.say("LOAD endless.tbsmx", "SETANIMATE true;", "RUNMODEL;", "GETRESULTS;", "CLOSE;")

        self.assert_replies("RESULTS {}", "CLOSED_TIMBERSIM")
        self.assertEqual(self.program.wait(), 0)

    def testClosedStandardStreamsAreNoFilesOfTheWindow(self):
        for stream in (0, 1):
            program = subprocess.Popen(WINDOW, cwd=self.folder, env=self.environment, stderr=subprocess.PIPE,
                                       preexec_fn=closing(stream))
            self.addCleanup(finish, program)
            with program.stderr as said:
                self.assertIn(b"Python Receiver Thread Started!\n", iter(said.readline, b""))

                self.assertEqual(os.readlink(f"/proc/{program.pid}/fd/{stream}"), "/dev/null")

    def testEndsOfInputAndOutputEndAWaitForAnAnswer(self):
        program = subprocess.Popen(WINDOW, cwd=self.folder, env=self.environment, stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, preexec_fn=end_with_parent)
        self.addCleanup(finish, program)
        program.stdin.write(b"LOAD asking.tbsmx\nRUNMODEL;\n")
        program.stdin.close()
        self.assertEqual(program.stdout.readline(), b"GET duration\n")
        program.stdout.close()

        self.assertEqual(program.wait(PATIENCE), 0)

    def testEndOfInputIsLookedAtAgainAtLittleCost(self):
        """A look that doesn't wait before the next takes all of a processor, and gives it up for none."""
        self.assert_idle()
        process = self.program.process.pid
        waits, ticks, end = waits_of(process), ticks_of(process), time.monotonic() + PATIENCE
        self.program.process.stdin.close()
        while waits_of(process) < waits + 20 and ticks_of(process) <= ticks + MOST_TICKS:
            self.assertLess(time.monotonic(), end, "the program looks no more")
            time.sleep(0.01)  # between two of our own looks

        self.assertLessEqual(ticks_of(process), ticks + MOST_TICKS)
        self.assertIsNone(self.program.process.poll())

    def testSettingsAreWrittenAtTheEnd(self):
        for values, kept in ((["true;"], "true"), (["true;", "TRUE;"], "false")):
            program = self.start()
            program.send(*(f"SETANIMATE {value}" for value in values))
            self.close(program)

            settings = (self.settings / "timbersim/demosettings.ini").read_text(encoding="ascii")
            self.assertIn(f"ANIMATIONTOGGLE={kept}\n", settings)


class GivenModelTest(ChannelCase):
    command = BATCH

    def testGivenModelIsLoadedFirst(self):
        program = self.start("plain.tbsmx")
        program.send("RUNMODEL;", "GETRESULTS;")

        self.assertEqual(program.reply(), "FINISHED_RUN")
        self.assertIn('"SimTime":5.0', program.reply())
        self.close(program)

    def testGivenModelMayBeAPipeOnce(self):
        path = self.folder / "pipe"
        os.mkfifo(path)
        program = self.start("pipe")
        path.write_text(PLAIN, encoding="ascii")
        program.send("RUNMODEL;", "GETRESULTS;", "LOAD pipe;")

        self.assertEqual(program.reply(), "FINISHED_RUN")
        self.assertIn('"SimTime":5.0', program.reply())
        self.close(program)
        self.assertEqual(program.failures(), ["ERROR 0 can't read pipe: It is not a plain file."])

    def testGivenModelThatCannotBeReadEndsTheProgram(self):
        program = self.start("none.tbsmx")

        self.assertEqual(program.wait(), 3)
        self.assertEqual(program.replies, [])
        self.assertEqual(program.errors, ["ERROR 0 can't read none.tbsmx: No such file or directory"])

    def testSeedRepeatsTheFigures(self):
        texts = []
        for _ in range(2):
            program = self.start("plain.tbsmx", "--seed", "7")
            program.send("SETATTRIBUTE Load Duration Normal(9,1);", "RUNMODEL;", "GETRESULTS;")
            self.assertEqual(program.reply(), "FINISHED_RUN")
            texts.append(program.reply())
            self.close(program)

        self.assertEqual(texts[0], texts[1])
        self.assertNotIn('"SimTime":5.0', texts[0])


if __name__ == "__main__":
    unittest.main()
