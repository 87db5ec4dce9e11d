"""Runs that don't come to their end, files that can't be read or written, and what is left then."""

import json
import os
import resource
import subprocess
import unittest

from batchProgram import (
    COUNTED,
    EXIT_DONE,
    EXIT_FILE_TROUBLE,
    EXIT_MODEL_FAILED,
    FAILS_IN_FOURTH,
    BatchCase,
)

NO_RESULTS = "No results: no replication came to its end.\n"
MEMORY_LIMIT = 200 * 1024 * 1024


class FailingModelTest(BatchCase):
    def testMessageAndExpressionAreOnLinesOfTheirOwn(self):
        process = self.run_program("counted.tbsmx", "-e", "SETATTRIBUTE Load Duration 6%n")

        self.assertEqual(
            (process.out, process.err, process.returncode),
            (
                NO_RESULTS,
                "timbersim-run: the model failed.\nDivision by 0.\nExpression: 6%n\n" + NO_RESULTS,
                EXIT_MODEL_FAILED,
            ),
        )

    def testLocationIsOnALineOfItsOwn(self):
        self.write("odd.tbsmx", COUNTED.replace("DURATION", "ENOUGH L1 PredNode.Length;\nDURATION"))
        process = self.run_program("odd.tbsmx")

        self.assertIn(
            "timbersim-run: the model failed.\nInvalid keyword Length\nIn queue Trucks\n" + NO_RESULTS, process.err
        )
        self.assertEqual(process.returncode, EXIT_MODEL_FAILED)

    def testMessageOfSeveralLinesIsShownWhole(self):
        process = self.run_program("counted.tbsmx", "-e", "SEED 5 6")

        self.assertIn("\nSyntax error in statement:\nSEED 5 6\n", process.err)
        self.assertEqual(process.returncode, EXIT_MODEL_FAILED)

    def testExpressionWithoutAMessageIsNamed(self):
        process = self.run_program("counted.tbsmx", "-e", "SAVEVALUE a 1)")

        self.assertIn("\nThe expression can't be evaluated.\nExpression: 1)\n", process.err)
        self.assertEqual(process.returncode, EXIT_MODEL_FAILED)

    def testNetworkThatIsNotFitToRunFails(self):
        self.write("alone.tbsmx", "COMBI Load;\n")
        process = self.run_program("alone.tbsmx")

        self.assertIn("\nSimulation failed to start.\n", process.err)
        self.assertEqual((process.out, process.returncode), (NO_RESULTS, EXIT_MODEL_FAILED))

    def testWhatWasGatheredIsShownAsPartial(self):
        process = self.run_program("counted.tbsmx", *FAILS_IN_FOURTH)

        self.assertEqual(process.returncode, EXIT_MODEL_FAILED)
        self.assertTrue(process.out.startswith("Partial results: 3 replications\n"), process.out)
        self.assertIn("\nAverage SimTime = 5\n", process.out)
        self.assertTrue(process.out.endswith("\nlog\n---\n2\n2\n3\n3\n6\n6\n"), process.out)
        self.assertTrue(process.err.endswith("\nPartial results: 3 replications\n"), process.err)

    def testWhatWasGatheredIsWrittenToEveryFile(self):
        outputs = ["--json", "r.json", "--csv", "r.csv", "--replications-csv", "lines.csv", "--trace", "trace.csv"]
        self.write("r.json", "old")
        process = self.run_program("counted.tbsmx", *FAILS_IN_FOURTH, *outputs, "--prints", "prints")

        self.assertEqual(process.returncode, EXIT_MODEL_FAILED)
        self.assertEqual(json.loads(self.read("r.json"))["SimTime"], 5)
        self.assertIn("Average SimTime = 5\n", self.read("r.csv"))
        self.assertEqual([line[:2] for line in self.read("lines.csv").splitlines()], ["Nu", "2,", "3,"])
        self.assertEqual(self.read("trace.csv").count("*SNo*"), 4)
        self.assertEqual(self.read("prints/log.txt"), "2\n2\n3\n3\n6\n6\n")

    def testTraceGoesUpToTheFailure(self):
        failing = ["-e", "BEFOREEND Load SAVEVALUE a 1/(SimTime-5)"]
        process = self.run_program("counted.tbsmx", *failing, "--trace", "trace.csv")

        self.assertEqual(process.returncode, EXIT_MODEL_FAILED)
        self.assertEqual(self.read("trace.csv").splitlines()[-1], "5.00,BEFOREEND,Load(0),,,,")

    def testFilesOfEarlierResultsStayWhereNothingWasGathered(self):
        outputs = {"--json": "r.json", "--csv": "r.csv", "--replications-csv": "lines.csv", "--trace": "trace.csv"}
        for name in outputs.values():
            self.write(name, "old")
        arguments = [word for pair in outputs.items() for word in pair]
        process = self.run_program("counted.tbsmx", "-e", "SEED 5 6", *arguments)

        self.assertEqual((process.out, process.returncode), (NO_RESULTS, EXIT_MODEL_FAILED))
        self.assertEqual({self.read(name) for name in outputs.values()}, {"old"})

    def testRunOutOfMemoryIsAFailureOfTheModel(self):
        growing = ["-e", 'AFTERTIMEADVANCE PRINT log "' + "x" * 10000 + '"']
        process = self.run_program(
            "forever.tbsmx",
            *growing,
            preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT)),
        )

        self.assertTrue(
            process.err.startswith("timbersim-run: the model failed.\nThe model needs more memory than there is.\n"),
            process.err,
        )
        self.assertEqual(process.returncode, EXIT_MODEL_FAILED)


class UnreadableFileTest(BatchCase):
    def assert_trouble(self, process, *reasons):
        self.assertEqual((process.out, process.returncode), ("", EXIT_FILE_TROUBLE))
        for reason in reasons:
            self.assertIn(reason, process.err)

    def testMissingModelIsNamed(self):
        process = self.run_program("nowhere.tbsmx")

        self.assert_trouble(process, "can't read nowhere.tbsmx: No such file or directory\n")

    def testFolderIsNoModel(self):
        process = self.run_program(".")

        self.assert_trouble(process, "can't read .: Is a directory\n")

    def testMissingCodeIsNamed(self):
        process = self.run_program("counted.tbsmx", "--code", "nowhere.txt")

        self.assert_trouble(process, "can't read nowhere.txt: No such file or directory\n")

    def testFileWithoutAModelIsRefused(self):
        self.write("letter.txt", "Dear Sir,\nthe soil has been moved.\n")
        process = self.run_program("letter.txt")

        self.assert_trouble(process, "letter.txt: ", "timbersim-run: nothing to run in letter.txt\n")

    def testWarningsNameFileAndLineAndTheRunGoesOn(self):
        self.write("odd.tbsmx", COUNTED.replace("DURATION Load 5;", "DURATION Load 5;\nDURATION Haul 7;"))
        process = self.run_program("odd.tbsmx", "--json", "-")

        line = COUNTED.splitlines().index("DURATION Load 5;") + 2
        self.assertEqual(process.err, f'odd.tbsmx:{line}: there is no element "Haul"\n')
        self.assertEqual((json.loads(process.out)["SimTime"], process.returncode), (5, EXIT_DONE))

    def testUnreadableModelTouchesNoOutput(self):
        self.write("r.json", "old")
        process = self.run_program("nowhere.tbsmx", "--json", "r.json", "--csv", "r.csv", "--prints", "prints")

        self.assertEqual(process.returncode, EXIT_FILE_TROUBLE)
        self.assertEqual((self.made(), self.read("r.json")), (["r.json"], "old"))


class UnwritableFileTest(BatchCase):
    TARGETS = ("--json", "--csv", "--replications-csv", "--trace")

    def testUnwritablePlaceIsFoundBeforeTheRunAndNothingIsTouched(self):
        self.write("old.txt", "old")
        for option in (*self.TARGETS, "--prints"):
            with self.subTest(option=option):
                fine = [word for name in self.TARGETS if name != option for word in (name, name[2:])]
                posting = ["-e", "POST running"]
                process = self.run_program("counted.tbsmx", *posting, *fine, option, "old.txt/inside")

                self.assertIn("old.txt/inside: Not a directory\n", process.err)
                self.assertNotIn("MESSAGE", process.err)
                self.assertEqual((process.out, process.returncode), ("", EXIT_FILE_TROUBLE))
                self.assertEqual((self.made(), self.read("old.txt")), (["old.txt"], "old"))

    def testFullDiskIsToldAndKeepsBackNoOtherOutput(self):
        for option in self.TARGETS:
            with self.subTest(option=option):
                arguments = ["hauling.tbsmx", "--replications", "2", "--prints", "prints", option, "/dev/full"]
                process = self.run_program(*arguments)

                self.assertEqual(
                    (process.err, process.returncode),
                    ("timbersim-run: can't write /dev/full: No space left on device\n", EXIT_FILE_TROUBLE),
                )
                self.assertIn("Average SimTime = ", process.out)
                self.assertEqual(self.read("prints/notes.txt"), "pile of 0\n")

    def testFullDiskForPrintsIsTold(self):
        limit = 4096
        printing = ["-e", 'PRINT log "' + "x" * 2 * limit + '"']
        process = self.run_program(
            "counted.tbsmx",
            *printing,
            "--prints",
            "prints",
            preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit)),
            restore_signals=False,  # SIGXFSZ stays ignored, as Python has it
        )

        self.assertEqual(
            (process.err, process.returncode),
            ("timbersim-run: can't write prints/log.txt: File too large\n", EXIT_FILE_TROUBLE),
        )
        self.assertEqual(self.made(), [])

    def testStandardOutputThatIsFullIsTold(self):
        for arguments in (["counted.tbsmx"], ["counted.tbsmx", "--json", "-"], ["--help"], ["--version"]):
            with self.subTest(arguments=arguments), open("/dev/full", "wb") as full:
                process = self.run_program(*arguments, stdout=full)

                self.assertEqual(
                    (process.err, process.returncode),
                    ("timbersim-run: can't write standard output: No space left on device\n", EXIT_FILE_TROUBLE),
                )

    def testReaderOfStandardOutputThatWentAwayIsTold(self):
        reading, writing = os.pipe()
        os.close(reading)
        process = self.run_program("counted.tbsmx", "--csv", "r.csv", stdout=writing)
        os.close(writing)

        self.assertEqual(
            (process.err, process.returncode),
            ("timbersim-run: can't write standard output: Broken pipe\n", EXIT_FILE_TROUBLE),
        )
        self.assertTrue(self.read("r.csv").startswith("Simulation has ended."))

    def testClosedStandardOutputIsTold(self):
        process = self.run_program("counted.tbsmx", "--csv", "r.csv", stdout=None, preexec_fn=lambda: os.close(1))

        self.assertEqual(
            (process.err, process.returncode),
            ("timbersim-run: can't write standard output: Bad file descriptor\n", EXIT_FILE_TROUBLE),
        )
        self.assertTrue(self.read("r.csv").startswith("Simulation has ended."))

    def testClosedStandardErrorDoesNotRunIntoTheFiles(self):
        posting = ["-e", "AFTERTIMEADVANCE POST written"]
        outputs = ["--csv", "r.csv", "--json", "r.json"]
        process = self.run_program("counted.tbsmx", *posting, *outputs, stderr=None, preexec_fn=lambda: os.close(2))

        self.assertEqual(process.returncode, EXIT_DONE)
        self.assertNotIn("MESSAGE", self.read("r.csv") + self.read("r.json"))

    def testMissingDirectoryForTemporaryFilesIsTold(self):
        self.environment["TMPDIR"] = str(self.folder / "nowhere")
        process = self.run_program("counted.tbsmx", "--csv", "r.csv")

        self.assertIn("timbersim-run: can't use the folder for temporary files: ", process.err)
        self.assertEqual((process.out, process.returncode), ("", EXIT_FILE_TROUBLE))
        self.assertEqual(self.made(), [])

    def testFailedRunWhoseResultsCanNotBeWrittenIsFileTrouble(self):
        process = self.run_program("counted.tbsmx", *FAILS_IN_FOURTH, "--json", "/dev/full")

        self.assertIn("the model failed", process.err)
        self.assertIn("can't write /dev/full", process.err)
        self.assertEqual(process.returncode, EXIT_FILE_TROUBLE)


class WholeFileTest(BatchCase):
    def testOldFileIsReplacedAndKeepsItsPermissions(self):
        self.write("r.csv", "old")
        (self.folder / "r.csv").chmod(0o640)
        self.succeed("counted.tbsmx", "--csv", "r.csv")

        self.assertTrue(self.read("r.csv").startswith("Simulation has ended."))
        self.assertEqual((self.folder / "r.csv").stat().st_mode & 0o777, 0o640)

    def testNewFileIsReadableByWhomTheMaskAllows(self):
        self.succeed("counted.tbsmx", "--csv", "r.csv", preexec_fn=lambda: os.umask(0o027))

        self.assertEqual((self.folder / "r.csv").stat().st_mode & 0o777, 0o640)

    def testOldFileIsWholeWhileTheRunGoesOn(self):
        self.write("r.csv", "old")
        process = self.start("forever.tbsmx", "-e", "AFTERTIMEADVANCE POST running", "--csv", "r.csv")
        process.stderr.readline()

        while_running = self.read("r.csv")
        process.kill()

        self.assertEqual(while_running, "old")

    def testParallelRunsDoNotDisturbEachOther(self):
        runs = {seed: ["hauling.tbsmx", "--replications", "50", "--seed", seed] for seed in ("1", "2", "3", "4")}
        alone = {seed: self.succeed(*run, "--replications-csv", "-") for seed, run in runs.items()}

        together = {seed: self.start(*run, "--replications-csv", f"{seed}.csv") for seed, run in runs.items()}
        ends = {seed: process.communicate() + (process.returncode,) for seed, process in together.items()}

        self.assertEqual({(err, status) for _, err, status in ends.values()}, {("", EXIT_DONE)})
        self.assertEqual({seed: self.read(f"{seed}.csv") for seed in runs}, alone)
        self.assert_no_leftovers()

    def testDevicesAndPipesAreWrittenToAsTheyAre(self):
        os.mkfifo(self.folder / "pipe")
        process = self.start("counted.tbsmx", "--json", "pipe", "--csv", "/dev/null")
        received = self.read("pipe")
        process.communicate()

        self.assertEqual(json.loads(received)["SimTime"], 5)
        self.assertTrue((self.folder / "pipe").is_fifo())
        self.assertEqual(process.returncode, EXIT_DONE)


if __name__ == "__main__":
    unittest.main()
