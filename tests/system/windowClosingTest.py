"""The end of the window: the question before something is lost, and the end of a run with it."""

import unittest

from windowProgram import PAUSED, RUNNING, WindowCase

MODIFIED = "Untitled* - TIMBERSIM"
QUESTION = "TIMBERSIM"


class QuestionTest(WindowCase):
    def ask(self):
        """Closes the window of a model that has changed."""
        self.draw("Queue", 100, 100, {})
        self.key("ctrl+q")
        self.wait_for_title(QUESTION)

    def testUnchangedModelIsClosedWithoutAQuestion(self):
        self.key("ctrl+q")

        self.assertEqual(self.wait_for_end(), 0)

    def testCancelKeepsTheWindow(self):
        self.ask()

        self.key("Escape")

        self.wait_for_title(MODIFIED)
        self.select(100, 100)
        self.assertEqual(self.field_text(0), "Queue1")

    def testNoEndsTheProgramAndKeepsTheSettings(self):
        self.tick("animate")
        self.ask()

        self.key("alt+n")

        self.assertEqual(self.wait_for_end(), 0)
        kept = set(self.settings.read_text(encoding="ascii").split())
        self.assertEqual(kept, {"[General]", "ANIMATIONSPEED=10", "ANIMATIONTOGGLE=true", "FONTSLIDE=10",
                                "ZOOMSLIDE=12"})

    def testYesAsksForAFileAndWithoutOneKeepsTheWindow(self):
        self.ask()

        self.key("alt+y")
        self.wait_for_title("Save")
        self.key("Escape")

        self.wait_for_title(MODIFIED)
        self.select(100, 100)
        self.assertEqual(self.field_text(0), "Queue1")


class CloseDuringRunTest(WindowCase):
    def setUp(self):
        super().setUp()
        self.draw_endless()

    def close(self):
        self.key("ctrl+q")
        self.wait_for_title(QUESTION)
        self.key("alt+n")

    def testRunEndsWithTheWindow(self):
        self.button("run")
        self.wait_for_state(RUNNING)

        self.close()

        self.assertEqual(self.wait_for_end(), 0)

    def testAnimatedRunEndsWithTheWindow(self):
        self.tick("animate")
        self.button("run")
        self.wait_for_state(RUNNING)

        self.close()

        self.assertEqual(self.wait_for_end(), 0)

    def testHeldRunEndsWithTheWindow(self):
        self.tick("clockAdvance")
        self.button("run")
        self.wait_for_state(PAUSED)

        self.close()

        self.assertEqual(self.wait_for_end(), 0)

    def testRunGoesOnIfTheWindowStays(self):
        self.button("run")
        self.wait_for_state(RUNNING)
        self.key("ctrl+q")
        self.wait_for_title(QUESTION)

        self.key("Escape")
        self.wait_for_no_title(QUESTION)
        self.button("pause")

        self.wait_for_state(PAUSED)


if __name__ == "__main__":
    unittest.main()
