"""A controller and a user at the same window."""

import unittest

from channelProgram import ASKING, ENDLESS, PLAIN, UNFIT, Controller
from windowProgram import EDITING, RUNNING, WindowCase

MODELS = {"asking": ASKING, "endless": ENDLESS, "plain": PLAIN, "unfit": UNFIT}


class ControllerAndUserTest(WindowCase):
    def start_program(self, command, environment, output):
        work = self.folder / "work"
        for name, text in MODELS.items():
            (work / f"{name}.tbsmx").write_text(text, encoding="utf-8")
        self.controller = Controller([*command, "--from-python"], work, environment)
        self.addCleanup(self.controller.finish)
        return self.controller.process

    def tearDown(self):
        """What it says is for the controller."""

    def say(self, *lines):
        self.controller.send(*lines)

    def assert_replies(self, *expected):
        self.assertEqual([self.controller.reply() for _ in expected], list(expected))

    def close(self):
        self.say("CLOSE;")
        self.assert_replies("CLOSED_TIMBERSIM")
        self.assertEqual(self.controller.wait(), 0)

    def testStopEndsAWaitForAControllerThatNeverAnswers(self):
        self.say("LOAD asking.tbsmx", "RUNMODEL;")
        self.assert_replies("GET duration")
        self.wait_for_state(RUNNING)
        self.button("stop")

        self.assert_replies("FINISHED_RUN")
        self.wait_for_title("Information")
        self.wait_for_state(EDITING)
        self.close()
        self.assertEqual(self.controller.failures(), ["ERROR 5 Simulation stopped. Simulation was stopped by user. "])

    def testStopEndsAnEndlessRun(self):
        self.say("LOAD endless.tbsmx", "RUNMODEL;")
        self.wait_for_state(RUNNING)
        self.button("stop")

        self.assert_replies("FINISHED_RUN")
        self.wait_for_state(EDITING)

    def testClosedWindowEndsAWaitForAnAnswer(self):
        self.say("LOAD asking.tbsmx", "RUNMODEL;")
        self.assert_replies("GET duration")
        self.key("ctrl+q")

        self.assertEqual(self.controller.wait(), 0)

    def testClosedWindowDoesNotWaitForSilentInput(self):
        self.key("ctrl+q")

        self.assertEqual(self.controller.wait(), 0)

    def testBoxOfAFailureIsNotWaitedFor(self):
        self.say("LOAD unfit.tbsmx", "RUNMODEL;")
        self.assert_replies("FINISHED_RUN")
        self.wait_for_title("Error")
        self.wait_for_state(EDITING)
        self.say("LOAD plain.tbsmx", "RUNMODEL;")

        self.assert_replies("FINISHED_RUN")
        self.assertIn("Error", self.windows())
        self.close()

    def testModelOfTheControllerIsOnTheCanvas(self):
        self.say("LOAD plain.tbsmx")
        self.wait_for_title("plain.tbsmx - TIMBERSIM")
        self.button("run")

        self.wait_for_title("Single Simulation Results")
        self.close()


if __name__ == "__main__":
    unittest.main()
