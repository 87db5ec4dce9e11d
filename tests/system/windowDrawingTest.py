"""A model drawn by hand: icons dropped, nodes joined, properties typed."""

import unittest

from windowDisplay import is_blue, is_dark, is_green, is_red
from windowProgram import BLUE, EDITING, ICONS, WindowCase

# What each icon makes: the name in the first line of its panel, and a place on its outline, from its middle. A fusion
# queue has no name of its own. The outline of what has just been made is blue.
MADE = {
    "Combi": ("Combi1", (-25, -15)),
    "NormalAct": ("Normal2", (-30, -20)),
    "Queue": ("Queue3", (14, 14)),
    "Fork": ("Fork6", (0, -10)),
    "Dynafork": ("Dynafork7", (0, -10)),
    "Assembler": ("Assembler8", (0, -10)),
    "Disassembler": ("Disassembler9", (0, -10)),
    "Consolidator": ("Consolidator10", (-25, -10)),
}


class DrawingTest(WindowCase):
    def testEachIconMakesItsElementWhereItIsDropped(self):
        for place, kind in enumerate(ICONS):
            x, y = 100 + 200 * (place % 5), 100 + 150 * (place // 5)
            with self.subTest(kind):
                self.drop(kind, x, y)

                if kind in MADE:
                    name, (to_x, to_y) = MADE[kind]
                    self.assertEqual(self.field_text(0), name)
                    self.until(lambda: self.colours_near(x + to_x, y + to_y, is_blue, 2), "a blue outline")
        self.assertIn("Untitled* - TIMBERSIM", self.windows())

    def testLinkIsDroppedWithTwoLooseHandles(self):
        self.drop("Link", 300, 200)

        for y in (180, 220):
            self.until(lambda: self.colours_near(300, y, is_red, 3) > 10, f"a red handle at 300, {y}")
        self.assertEqual(self.field_text(0), "Link1")

    def testFusionQueueHasABrokenOutline(self):
        self.drop("Queue", 200, 100)
        whole = self.until(lambda: self.colours_near(200, 100, is_blue, 21), "a blue outline")

        self.drop("FusionQueue", 400, 100)

        self.until(lambda: 0 < self.colours_near(400, 100, is_blue, 21) < 0.7 * whole, "an outline of dots")

    def testFusionQueueNeedsAQueue(self):
        self.drag(self.icon("FusionQueue"), self.at(300, 100))

        self.wait_for_title("Error")
        self.key("Return")
        self.wait_for_no_title("Error")
        self.assertEqual(list(self.windows()), ["Untitled - TIMBERSIM"])

    def testDeleteRemovesWhatIsSelected(self):
        self.draw("Queue", 100, 100, {})
        self.select(100, 100)

        self.key("Delete")

        self.until(lambda: self.stencil_height() == self.whole_stencil, "the end of the panel")
        self.until(lambda: not self.colours_near(100, 100, is_blue, 21), "an empty place")

    def testNodeTakesItsLinkAlong(self):
        self.draw("Queue", 100, 100, {})
        self.draw("Combi", 300, 100, {})
        self.join((120, 100), (270, 100))
        crosses = lambda y: self.colours_near(200, y, is_dark, 1)
        self.until(lambda: crosses(100), "a link between the two")

        self.drag(self.at(300, 110), self.at(300, 210))

        self.until(lambda: not crosses(100), "no link on its former way")
        self.until(lambda: self.colours_near(265, 200, is_dark, 2) > 4, "an arrow where the Combi is now")


class JoinTest(WindowCase):
    def take_end_over(self, place):
        """Holds the end of a link that starts at a queue over a place."""
        self.draw("Queue", 100, 100, {1: "3"})
        self.draw("NormalAct", 500, 100, {})
        self.drop("Link", 300, 300)
        self.close_panel()
        self.drag(self.at(300, 280), self.at(120, 100))
        self.close_panel()
        self.press(self.at(300, 320), self.at(*place))

    def testForbiddenJoinStaysRedAndJoinsNothing(self):
        self.take_end_over((470, 100))
        self.until(lambda: self.colours_near(470, 100, is_red), "a red handle over the Normal")
        self.assertEqual(self.colours_near(470, 100, is_green), 0)

        self.release()

        self.until(lambda: self.colours_near(470, 100, is_red), "a red handle on the Normal")
        self.assertEqual(self.colours_near(470, 100, is_green), 0)
        self.button("run")
        self.wait_for_title("Error")  # a link isn't connected
        self.key("Return")
        self.wait_for_state(EDITING)

    def testHandleInTheOpenIsRed(self):
        self.take_end_over((700, 200))

        self.until(lambda: self.colours_near(700, 200, is_red), "a red handle over nothing")


class PanelTest(WindowCase):
    def setUp(self):
        super().setUp()
        self.draw("Combi", 300, 100, {1: "5"})
        self.select(300, 100)

    def marked(self):
        """How many pixels of the duration's line are marked."""
        y = self.fields()[1]
        return self.screen.count(60, y - 7, 200, 14, lambda colour: colour == BLUE)

    def refuse(self, texts, title):
        self.fill(texts)
        self.key("Return")
        self.wait_for_title(title)
        self.key("Return")
        self.wait_for_no_title(title)

    def testRefusedExpressionStaysMarkedAndTheFieldsAfterItAreNotRead(self):
        self.refuse({0: "Load", 1: "2+(3", 2: "9"}, "Error")

        self.until(lambda: self.marked() > 50, "a blue mark in the line of the duration")
        self.assertEqual(self.copied(), "2+(3")
        self.close_panel()
        self.select(300, 100)
        self.assertEqual((self.field_text(0), self.field_text(2)), ("Load", "0"))

    def testRefusedExpressionIsRefusedAgain(self):
        self.refuse({1: "2+(3"}, "Error")

        self.refuse({}, "Error")

        self.until(lambda: self.marked() > 50, "a blue mark in the line of the duration")

    def testRefusedNameIsToldAndTheOtherFieldsAreRead(self):
        self.refuse({0: "1st", 1: "7"}, "Naming Error")

        self.until(lambda: self.stencil_height() == self.whole_stencil, "the end of the panel")
        self.select(300, 100)
        self.assertEqual((self.field_text(0), self.field_text(1)), ("Combi1", "7"))

    def testCancelForgetsWhatWasTyped(self):
        self.fill({0: "Load", 1: "7"})
        self.close_panel()

        self.select(300, 100)

        self.assertEqual((self.field_text(0), self.field_text(1)), ("Combi1", "5"))


if __name__ == "__main__":
    unittest.main()
