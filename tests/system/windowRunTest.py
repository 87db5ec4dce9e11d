"""Runs of a drawn model: animated or not, held, stopped, their results read and saved."""

import unittest

from windowDisplay import is_green
from windowProgram import EDITING, PAUSED, RUNNING, WindowCase

# Three trucks are loaded at once, for 5, and haul for 2.
QUEUES = [
    ["Dumped", "Default", "3.00", "3.00", "0.00", "0.00", "0.00", "3.00"],
    ["Waiting", "Default", "0.00", "3.00", "0.00", "0.00", "0.00", "3.00"],
]
ACTIVITIES = [
    ["Haul", "3", "0", "2", "0", "2", "2", "nan", "nan", "0", "0"],
    ["Load", "3", "0", "5", "0", "5", "5", "nan", "nan", "0", "0"],
]
QUEUE_HEADINGS = ("*QueueName*,*ResourceType*,*CurrentCount*,*TotalCount*,*AverageWait*,*AverageContent*,"
                  "*MinimumContent*,*MaximumContent*")
ACTIVITY_HEADINGS = ("*ActName*,*TotalInstances*,*CurrentInstances*,*AverageDuration*,*StdDevDuration*,"
                     "*MinimumDuration*,*MaximumDuration*,*AverageInterval*,*StdDevInterval*,*MinimumInterval*,"
                     "*MaximumInterval*")
# What comes to pass before the clock moves: trucks arrive, and each is drawn and begins to be loaded.
EVENT_TIMES = ["0.00"] * 7
RESULTS = "Single Simulation Results"


def lines(rows):
    return "".join("".join(cell + "," for cell in row) + "\n" for row in rows)


class FiniteRunTest(WindowCase):
    delay = 20

    def setUp(self):
        super().setUp()
        self.draw("Queue", 100, 100, {0: "Waiting", 1: "3"})
        self.draw("Combi", 300, 100, {0: "Load", 1: "5"})
        self.draw("NormalAct", 500, 100, {0: "Haul", 1: "2"})
        self.draw("Queue", 700, 100, {0: "Dumped"})
        self.join((120, 100), (270, 100))
        self.join((330, 100), (470, 100))
        self.join((530, 100), (680, 100))

    def start(self, *halts):
        for halt in halts:
            self.tick(halt)
        self.button("run")

    def assert_results(self):
        self.assertEqual(self.tables(), [QUEUES, ACTIVITIES])
        self.wait_for_state(EDITING)

    def testResultsAreShownInTwoTables(self):
        self.start()

        self.assert_results()

    def testAnimatedRunShowsWhatWorksAndEndsTheSame(self):
        self.start("animate", "clockAdvance")
        self.wait_for_sim_time("0.00")
        self.wait_for_state(PAUSED)
        self.button("run")

        self.wait_for_sim_time("5.00")
        self.wait_for_state(PAUSED)
        self.until(lambda: self.colours_near(300, 80, is_green), "a green outline of what is at work")
        self.assertEqual(self.colours_near(500, 80, is_green), 0)
        self.tick("clockAdvance")
        self.button("run")
        self.assert_results()
        self.assertEqual(self.colours_near(300, 80, is_green), 0)

    def testRunHoldsAtEachClockAdvance(self):
        self.start("clockAdvance")

        for time in ("0.00", "5.00", "7.00"):
            self.wait_for_sim_time(time)
            self.wait_for_state(PAUSED)
            self.button("run")
        self.assert_results()

    def testRunHoldsAtEachEvent(self):
        self.start("nextEvent")

        for time in EVENT_TIMES:
            self.wait_for_sim_time(time)
            self.wait_for_state(PAUSED)
            self.button("run")
        self.wait_for_sim_time("5.00")
        self.tick("nextEvent")
        self.button("run")
        self.assert_results()

    def testRunHoldsOnceATimeIsReached(self):
        self.click(*self.tool("timeEdit"))
        self.type("6")
        self.start("time")

        self.wait_for_state(PAUSED)
        self.tick("time")
        self.wait_for_sim_time("7.00")
        self.button("run")
        self.assert_results()

    def testStopOfAHeldRunShowsNoResults(self):
        self.start("clockAdvance")
        self.wait_for_state(PAUSED)

        self.button("stop")

        self.wait_for_title("Information")
        self.key("Return")
        self.wait_for_state(EDITING)
        self.assertEqual(list(self.windows()), ["Untitled* - TIMBERSIM"])

    def testSavedResultsAreThoseOnTheScreen(self):
        path = self.folder / "work/results.csv"
        self.start()
        self.save_results(RESULTS, path)

        self.assertEqual(path.read_text(encoding="utf-8"),
                         "Simulation has ended. \nSimTime = 7\n"
                         f"\n{QUEUE_HEADINGS}\n{lines(QUEUES)}\n{ACTIVITY_HEADINGS}\n{lines(ACTIVITIES)}")

    def testLinesOfManyReplicationsAreSaved(self):
        path = self.folder / "work/lines.csv"
        self.button("globalCode")
        self.wait_for_title("Global Code")
        self.type("MULTISIM 3;")
        self.key("Escape")
        self.wait_for_title("Untitled* - TIMBERSIM")
        self.start()
        self.save_results("Multiple Simulation Results", path)

        header, *further = path.read_text(encoding="utf-8").splitlines()
        figures = "7.000000,3.000000,3.000000,"  # the time, then the counts of Dumped
        self.assertTrue(header.startswith("Num,SimTime,Dumped.CurCount,Dumped.TotCount,"), header)
        self.assertIn(f"1,{figures}", header)  # the first line goes on behind the header
        self.assertEqual([line[:len(figures) + 2] for line in further], [f"2,{figures}", f"3,{figures}"])


class EndlessRunTest(WindowCase):
    """One truck is loaded again and again."""

    def setUp(self):
        super().setUp()
        self.draw_endless()

    def hold(self):
        self.button("run")
        self.wait_for_state(RUNNING)
        self.button("pause")
        self.wait_for_state(PAUSED)

    def stop(self):
        self.button("stop")
        self.wait_for_title("Information")
        self.key("Return")
        self.wait_for_state(EDITING)

    def testRunIsPausedResumedAndStopped(self):
        self.hold()

        self.button("run")
        self.wait_for_state(RUNNING)
        self.stop()

        self.assertEqual(list(self.windows()), ["Untitled* - TIMBERSIM"])

    def testAnimatedRunIsPausedResumedAndStopped(self):
        self.tick("animate")
        self.hold()

        self.button("run")
        self.wait_for_state(RUNNING)
        self.stop()

        self.assertEqual(list(self.windows()), ["Untitled* - TIMBERSIM"])

    def testNothingIsEditedDuringARun(self):
        self.hold()

        self.select(300, 100)
        self.click(300, self.fields()[1])
        self.type("7")
        self.stop()

        self.assertEqual(self.field_text(1), "5")


if __name__ == "__main__":
    unittest.main()
