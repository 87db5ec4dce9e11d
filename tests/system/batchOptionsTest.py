"""What timbersim-run prints, and what each of its options does."""

import json
import unittest

from batchProgram import COUNTED, EXIT_DONE, EXIT_MODEL_FAILED, EXIT_WRONG_USAGE, BatchCase


class BatchOptionsTest(BatchCase):
    def testTablesAndPrintsAreTheDefaultOutput(self):
        out = self.succeed("counted.tbsmx", "-e", 'PRINT day "first of %d" 2')

        self.assertEqual(
            out,
            "Simulation has ended. \n"
            "SimTime = 5\n"
            "\n"
            "Queue   Resource  Current  Total  Average  Average  Minimum  Maximum\n"
            "Name    Type        Count  Count     Wait  Content  Content  Content\n"
            "Trucks  Truck        0.00   1.00     0.00     0.00     0.00     1.00\n"
            "\n"
            "Activity      Total    Current   Average  Std.Dev.   Minimum   Maximum   Average  Std. Dev."
            "   Minimum  Maximumn\n"
            "Name      Instances  Instances  Duration  Duration  Duration  Duration  Interval   Interval"
            "  Interval  Interval\n"
            "Load              1          0         5       nan         5         5         0          0"
            "     1e+06        -1\n"
            "\n"
            "day\n"
            "---\n"
            "first of 2\n",
        )

    def testManyReplicationsAreSaidToBeAverages(self):
        lines = self.succeed("hauling.tbsmx", "--seed", "1", "--replications", "3").splitlines()

        self.assertEqual(lines[0], "The following results are the averages of multiple simulation runs. ")
        self.assertRegex(lines[1], r"^Average SimTime = 2\d\.\d+$")
        self.assertRegex(lines[2], r"^Production : 5\.\d+$")

    def testJsonIsOneSortedObjectOnOneLine(self):
        text = self.succeed("hauling.tbsmx", "--seed", "1", "--json", "-")

        results = json.loads(text)
        self.assertEqual(text, json.dumps(results, sort_keys=True, separators=(",", ":")) + "\n")
        self.assertEqual(len(results), 2 + 3 * 6 + 9 + 1)
        self.assertEqual(results["Dumped.CurCount"], 150)
        self.assertEqual(results["Load.TotInst"], 15)
        self.assertAlmostEqual(results["Production"], 150 / results["SimTime"], delta=1e-6)  # six decimals are kept

    def testJsonFileHoldsWhatStandardOutputWould(self):
        shown = self.succeed("hauling.tbsmx", "--seed", "1", "--json", "-")
        tables = self.succeed("hauling.tbsmx", "--seed", "1", "--json", "r.json")

        self.assertEqual(self.read("r.json"), shown)
        self.assertTrue(tables.startswith("Simulation has ended. \n"))

    def testCsvIsTheSingleRunText(self):
        self.succeed("counted.tbsmx", "--csv", "r.csv")

        self.assertEqual(
            self.read("r.csv"),
            "Simulation has ended. \n"
            "SimTime = 5\n"
            "\n"
            "*QueueName*,*ResourceType*,*CurrentCount*,*TotalCount*,*AverageWait*,*AverageContent*,"
            "*MinimumContent*,*MaximumContent*\n"
            "Trucks,Truck,0.00,1.00,0.00,0.00,0.00,1.00,\n"
            "\n"
            "*ActName*,*TotalInstances*,*CurrentInstances*,*AverageDuration*,*StdDevDuration*,*MinimumDuration*,"
            "*MaximumDuration*,*AverageInterval*,*StdDevInterval*,*MinimumInterval*,*MaximumInterval*\n"
            "Load,1,0,5,nan,5,5,0,0,1e+06,-1,\n",
        )

    def testReplicationLinesContinueTheLineOfTheHeader(self):
        self.succeed("counted.tbsmx", "--replications", "2", "--replications-csv", "lines.csv")

        columns = "Num,SimTime," + ",".join(
            f"Load.{name}"
            for name in ("TotInst", "AveDur", "SDDur", "MinDur", "MaxDur", "AveInt", "SDInt", "MinInt", "MaxInt")
        )
        columns += "," + ",".join(
            f"Trucks.{name}" for name in ("CurCount", "TotCount", "AveWait", "AveCont", "MinCont", "MaxCont")
        )
        figures = "5.000000,1.000000,5.000000,nan,5.000000,5.000000,0.000000,0.000000,1000000.000000,-1.000000,"
        figures += "0.000000,1.000000,0.000000,0.000000,0.000000,1.000000,"
        self.assertEqual(self.read("lines.csv"), f"{columns}1,{figures}\n2,{figures}\n")

    def testASingleRunHasTheHeaderOfTheReplicationLinesAlone(self):
        process = self.run_program("counted.tbsmx", "--replications-csv", "lines.csv")

        self.assertEqual(process.returncode, EXIT_DONE)
        self.assertIn("a single run has no replication lines", process.err)
        self.assertTrue(self.read("lines.csv").startswith("Num,SimTime,Load.TotInst"))
        self.assertTrue(self.read("lines.csv").endswith(",Trucks.MaxCont"))

    def testQuietRunSaysNothingBesideItsResults(self):
        self.succeed("counted.tbsmx", "--quiet", "--replications-csv", "lines.csv")

    def testPrintsHaveAFileForEachKey(self):
        code = ["-e", 'PRINT log "one"', "-e", 'PRINT log "two"', "-e", 'PRINT ../a/b "three"']
        self.succeed("counted.tbsmx", *code, "--prints", "out/prints")

        prints = self.folder / "out/prints"
        self.assertEqual(
            {path.name: path.read_text(encoding="utf-8") for path in prints.iterdir()},
            {"log.txt": "one\ntwo\n", "%2E.%2Fa%2Fb.txt": "three\n"},
        )

    def testTraceHoldsEveryReplication(self):
        self.succeed("counted.tbsmx", "--replications", "2", "--trace", "trace.csv")

        lines = self.read("trace.csv").splitlines()
        header = lines[0]
        self.assertTrue(header.startswith("*SNo*,*SimTime*,*Action*"))
        self.assertEqual(len(lines) % 2, 0)
        self.assertEqual(lines[: len(lines) // 2], lines[len(lines) // 2 :])
        self.assertEqual(lines.count(header), 2)
        self.assertEqual(lines.count("0.00,ATTEMPT,Load,Success,,,,"), 2)
        self.assertEqual(lines.count("5.00,ONEND,Load(0),,,,"), 2)

    def testStandardOutputCanTakeAnyOneFileInPlaceOfTheTables(self):
        opening = {
            "--json": '{"Dumped.AveCont":',
            "--csv": "The following results are the averages",
            "--replications-csv": "Num,SimTime,Production,",
            "--trace": "*SNo*,*SimTime*,",
        }
        for option, text in opening.items():
            with self.subTest(option=option):
                out = self.succeed("hauling.tbsmx", "--replications", "2", option, "-")

                self.assertTrue(out.startswith(text), out)
                self.assertNotIn("Resource  Current", out)

    def testReplicationsOverruleTheModel(self):
        self.write("many.tbsmx", COUNTED.replace("SAVEVALUE n 0;", "SAVEVALUE n 0;\nMULTISIM 7;"))
        self.succeed("many.tbsmx", "--replications", "3", "--replications-csv", "lines.csv")

        self.assertEqual(len(self.read("lines.csv").splitlines()), 3)

    def testReplicationsSeedAnewAndOneAfterAnother(self):
        figures = []
        for seed, count in (("5", "3"), ("6", "2"), ("7", "2")):
            self.succeed("hauling.tbsmx", "--seed", seed, "--replications", count, "--replications-csv", "lines.csv")
            header_and_first, *others = self.read("lines.csv").splitlines()
            first = header_and_first.partition("Trucks.MaxCont1,")[2]
            figures.append([first] + [line.partition(",")[2] for line in others])

        self.assertEqual(figures[0][1:], figures[1])
        self.assertEqual(figures[0][2], figures[2][0])
        self.assertEqual(len(set(figures[0])), 3)

    def testSameSeedGivesTheSameBytes(self):
        outputs = ["--json", "r.json", "--csv", "r.csv", "--replications-csv", "lines.csv", "--trace", "trace.csv"]
        for count in ("1", "4"):
            with self.subTest(replications=count):
                made = []
                for _ in range(2):
                    run = ["hauling.tbsmx", "--seed", "11", "--quiet", "--replications", count, "--prints", "prints"]
                    tables = self.succeed(*run, *outputs)
                    files = [self.read(name) for name in outputs[1::2] + ["prints/notes.txt"]]
                    made.append([tables] + files)

                self.assertEqual(made[0], made[1])

    def testOtherSeedsGiveOtherResults(self):
        results = {self.succeed("hauling.tbsmx", "--seed", seed, "--json", "-") for seed in ("1", "2", "3")}

        self.assertEqual(len(results), 3)

    def testCodeRunsAheadOfTheGlobalCodeInTheOrderGiven(self):
        self.write("model.tbsmx", COUNTED.replace("SAVEVALUE n 0;", 'SAVEVALUE n 0;\nPRINT order "global";'))
        self.write("one.txt", 'PRINT order "one";\nPRINT order\n "one again"; \\ a comment\n')
        self.write("two.txt", 'PRINT order "two"; PRINT order "two again"; PRINT order "two at last"')
        order = ["-e", 'PRINT order "first";', "--code", "one.txt", "-e", 'PRINT order "second"', "--code", "two.txt"]

        self.succeed("model.tbsmx", *order, "--prints", "prints")

        self.assertEqual(
            self.read("prints/order.txt").splitlines(),
            ["one", "one again", "two", "two again", "two at last", "first", "second", "global"],
        )

    def testCodeReachesTheElementsOfTheModel(self):
        self.succeed("counted.tbsmx", "-e", "SETATTRIBUTE Load Duration 8", "--json", "r.json")

        self.assertEqual(json.loads(self.read("r.json"))["SimTime"], 8)

    def testGetIsAnsweredFromTheCommandLine(self):
        self.write("model.tbsmx", COUNTED.replace("DURATION Load 5;", 'DURATION Load GET("Minutes");'))
        results = self.succeed("model.tbsmx", "--get", "Minutes=7.5", "--get", "unasked=1", "--json", "-")

        self.assertEqual(json.loads(results)["SimTime"], 7.5)

    def testGetWithoutAnAnswerFailsTheRun(self):
        process = self.run_program("counted.tbsmx", "-e", 'SAVEVALUE a GET("Minutes")', "--get", "minutes=3")

        self.assertEqual(process.returncode, EXIT_MODEL_FAILED)
        self.assertIn('\nNo answer to GET("Minutes"): give one with --get Minutes=VALUE.\n', process.err)

    def testPostedTextsGoToStandardError(self):
        process = self.run_program("counted.tbsmx", "-e", 'AFTERTIMEADVANCE POST "at %d" SimTime', "--json", "-")

        self.assertEqual(process.err, "MESSAGE at 0\nMESSAGE at 5\n")
        self.assertEqual(json.loads(process.out)["SimTime"], 5)

    def testHelpGoesToStandardOutput(self):
        out = self.succeed("--help")

        self.assertIn("Usage: timbersim-run [OPTIONS] MODEL\n", out)

    def testVersionGoesToStandardOutput(self):
        self.assertRegex(self.succeed("--version"), r"^timbersim-run \d+\.\d+\.\d+\n$")

    def testWrongUsageSaysWhatIsWrongAndRunsNothing(self):
        wrong = {
            (): "MODEL is required",
            ("counted.tbsmx", "--fast"): "--fast",
            ("counted.tbsmx", "hauling.tbsmx"): "hauling.tbsmx",
            ("counted.tbsmx", "--replications", "0"): "--replications: 0 is not a whole number",
            ("counted.tbsmx", "--seed", "4294967296"): "--seed: 4294967296 is not a whole number",
            ("counted.tbsmx", "--get", "Minutes"): "--get: Minutes is not of the form KEY=VALUE",
            ("counted.tbsmx", "--get", "Minutes=x"): "--get: the value in Minutes=x is not a number",
            ("counted.tbsmx", "-e", "SEED 1; SEED 2"): "-e: give one statement at a time",
            ("counted.tbsmx", "--json", "-", "--trace", "-"): "--json and --trace can't both go to standard output",
            ("counted.tbsmx", "--json", "r", "--csv", "./r"): "--csv would overwrite ./r",
            ("counted.tbsmx", "--json", "counted.tbsmx"): "--json would overwrite counted.tbsmx",
            ("counted.tbsmx", "--prints", "-"): "--prints: needs the name of a folder",
            ("counted.tbsmx", "--json"): "--json: 1 required FILE missing",
        }
        for arguments, reason in wrong.items():
            with self.subTest(arguments=arguments):
                process = self.run_program(*arguments)

                self.assertEqual((process.out, process.returncode), ("", EXIT_WRONG_USAGE))
                self.assertTrue(process.err.startswith("timbersim-run: "), process.err)
                self.assertIn(reason, process.err)
                self.assertEqual(self.made(), [])


if __name__ == "__main__":
    unittest.main()
