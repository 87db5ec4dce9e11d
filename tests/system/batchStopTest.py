"""Ctrl-C: the first ends the run and what was gathered is reported, the second ends the program."""

import json
import os
import signal
import unittest

from batchProgram import EXIT_DONE, EXIT_STOPPED, FOREVER, HAULING, BatchCase

STOPPED = "Simulation stopped.\nSimulation was stopped by user.\n"
NO_RESULTS = "No results: no replication came to its end.\n"
MOST_REPLICATIONS = "2147483647"


class StopTest(BatchCase):
    def stop(self, *arguments):
        """Interrupts a run that would never end, wherever it is, and gives what it says."""
        process = self.start(*arguments)
        self.wait_for_interrupt(process, is_caught=True)
        process.send_signal(signal.SIGINT)
        process.out, process.err = process.communicate()
        self.assert_no_leftovers()
        return process

    def assert_stopped_without_results(self, process):
        self.assertEqual(process.returncode, EXIT_STOPPED)
        self.assertEqual(process.err, STOPPED + NO_RESULTS)
        self.assertEqual(process.out, NO_RESULTS)

    def testActivityThatTakesNoTimeIsStopped(self):
        self.assert_stopped_without_results(self.stop("forever.tbsmx"))

    def testDrawThatTakesNothingIsStopped(self):
        drawing = "DRAWAMT L1 0;\nDRAWUNTIL L1 0;\nTBINITIALCONTENT"
        self.write("drawing.tbsmx", FOREVER.replace("TBINITIALCONTENT", drawing))

        self.assert_stopped_without_results(self.stop("drawing.tbsmx"))

    def testSampleThatIsNeverFoundIsStoppedWhileTheModelIsRead(self):
        self.write("sampling.tbsmx", FOREVER.replace("Load 0;", "Load Pert(10^400-10^400,1,2);"))
        process = self.stop("sampling.tbsmx", "--json", "r.json")

        self.assert_stopped_without_results(process)
        self.assertEqual(self.made(), ["sampling.tbsmx"])

    def testFilesOfEarlierResultsStayWhereNothingWasGathered(self):
        self.write("r.json", "old")
        process = self.stop("forever.tbsmx", "--json", "r.json", "--csv", "r.csv")

        self.assert_stopped_without_results(process)
        self.assertEqual((self.made(), self.read("r.json")), (["r.json"], "old"))

    def testWhatWasGatheredIsReportedAsPartial(self):
        posting = ["-e", 'AFTERTIMEADVANCE POST "%d" n']
        outputs = ["--json", "r.json", "--csv", "r.csv", "--replications-csv", "lines.csv"]
        process = self.start("counted.tbsmx", *posting, "--replications", MOST_REPLICATIONS, *outputs)
        while process.stderr.readline() != "MESSAGE 3\n":  # three replications have ended
            pass

        process.send_signal(signal.SIGINT)
        out, err = process.communicate()

        self.assertEqual(process.returncode, EXIT_STOPPED)
        last_line = err.splitlines()[-1]
        self.assertRegex(last_line, r"^Partial results: \d+ replications$")
        self.assertIn(STOPPED + last_line + "\n", err)
        self.assertTrue(out.startswith(last_line + "\nThe following results are the averages of"), out)
        count = int(last_line.split()[2])
        self.assertGreaterEqual(count, 3)
        self.assertEqual(json.loads(self.read("r.json"))["SimTime"], 5)
        self.assertIn("Average SimTime = 5\n", self.read("r.csv"))
        lines = self.read("lines.csv").splitlines()
        self.assertEqual(len(lines), count)
        self.assertTrue(lines[-1].startswith(f"{count},5.000000,"))
        self.assert_no_leftovers()

    def testTraceGoesUpToTheStop(self):
        posting = ["-e", "AFTERTIMEADVANCE POST running"]
        process = self.start("forever.tbsmx", *posting, "--trace", "trace.csv")
        process.stderr.readline()
        process.send_signal(signal.SIGINT)
        process.communicate()

        self.assertEqual(process.returncode, EXIT_STOPPED)
        self.assertTrue(self.read("trace.csv").startswith("*SNo*,*SimTime*,"))
        self.assert_no_leftovers()

    def testSecondInterruptEndsTheProgramAtOnce(self):
        self.write("large.tbsmx", HAULING.replace("Pile 150;", "Pile 100000;"))
        process = self.start("large.tbsmx", "--trace", "-")
        os.read(process.stdout.fileno(), 1)  # the trace is longer than a pipe holds: the program waits for a reader

        process.send_signal(signal.SIGINT)
        self.wait_for_interrupt(process, is_caught=False)
        process.send_signal(signal.SIGINT)

        self.assertEqual(process.wait(), -signal.SIGINT)

    def testInterruptWhileResultsAreWrittenLeavesThemWhole(self):
        self.write("large.tbsmx", HAULING.replace("Pile 150;", "Pile 100000;"))
        whole = self.succeed("large.tbsmx", "--seed", "1", "--trace", "-")
        process = self.start("large.tbsmx", "--seed", "1", "--trace", "-")
        first = os.read(process.stdout.fileno(), 1).decode("utf-8")
        process.send_signal(signal.SIGINT)
        self.wait_for_interrupt(process, is_caught=False)

        rest, err = process.communicate()

        self.assertEqual((err, process.returncode), ("", EXIT_DONE))
        self.assertEqual((first + rest).splitlines(), whole.splitlines())


if __name__ == "__main__":
    unittest.main()
