"""Takes the pictures of the documentation: TIMBERSIM=PROGRAM python3 windowPictures.py FOLDER

Draws a model of earthmoving by hand, opens each panel, runs the model and holds it, and shows its results; then opens
each of the examples. Some of the pictures stand in docs/images; look at each before you commit it.
"""

import pathlib
import sys
import unittest

from goldenRuns import SOURCE
from windowDisplay import HEIGHT, WIDTH, is_dark
from windowProgram import ASIDE, ICONS, PAUSED, RUNNING, WindowCase

FOLDER = pathlib.Path(sys.argv.pop() if len(sys.argv) > 1 else ".")
END = "SIMULATECONDITION SimTime>=480;"
MARGIN = 24  # around what is drawn

# Each: the icon, its place, what stands in the lines of its panel, and the type of resource.
NODES = [
    ("Queue", (60, 210), {0: "TrucksAtPit", 1: "8"}, "Truck"),
    ("Queue", (220, 80), {0: "Excavators", 1: "2"}, "Excavator"),
    ("Combi", (220, 200), {0: "Load", 1: "Triangular(2,3,5)"}, None),
    ("NormalAct", (390, 210), {0: "Haul", 1: "Normal(9,1.1)"}, None),
    ("Queue", (560, 210), {0: "TrucksAtFill"}, "Truck"),
    ("Queue", (700, 80), {0: "Spotters", 1: "1"}, "Spotter"),
    ("Combi", (700, 200), {0: "Dump", 1: "Uniform(0.8,1.4)"}, None),
    ("NormalAct", (390, 330), {0: "Return", 1: "Normal(6.5,0.8)"}, None),
]
# Each: from where to where, and the type of resource where no queue tells it.
LINKS = [
    ((80, 210), (190, 210), None),
    ((200, 80), (190, 190), None),
    ((250, 190), (240, 80), None),
    ((250, 210), (360, 210), "Truck"),
    ((420, 210), (540, 210), None),
    ((580, 210), (670, 210), None),
    ((680, 80), (670, 190), None),
    ((730, 190), (720, 80), None),
    ((730, 210), (420, 330), "Truck"),
    ((360, 330), (40, 210), None),
]


class PictureCase(WindowCase):
    def take(self, name, *region):
        self.move(ASIDE)
        (FOLDER / f"{name}.png").write_bytes(self.screen.png(*region))


class Pictures(PictureCase):
    zoom = 18
    delay = 200
    spare = (250, 440)

    def add_types(self, *names):
        self.button("resources")
        left, top, *_ = self.geometry(self.wait_for_title("Resource Types"))
        self.click(left + 100, top + 57)
        for name in names:
            self.type(name)
            self.key("Return")
        self.take("types")
        self.key("Escape")
        self.wait_for_title("Untitled* - TIMBERSIM")

    def choose_type(self, field, name):
        """The types stand behind a line of the panel."""
        self.go_to_field(field)
        self.key("Tab")
        self.type(name)

    def draw_earthmoving(self):
        self.add_types("Excavator", "Spotter", "Truck")
        for kind, place, texts, resource in NODES:
            self.drop(kind, *place)
            self.fill(texts)
            if resource:
                self.choose_type(1, resource)
            self.accept()
        for start, end, resource in LINKS:
            self.join(start, end)
            if resource:
                self.click(*self.at(start[0] + 10, start[1]))
                self.choose_type(1, resource)
                self.accept()
        self.button("globalCode")
        self.wait_for_title("Global Code")
        self.type(END)
        self.take("globalCode")
        self.key("Escape")
        self.wait_for_title("Untitled* - TIMBERSIM")
        self.click(*self.at(*self.spare))

    def testModel(self):
        self.take("empty")
        self.draw_earthmoving()
        self.take("model")
        self.select(220, 200)
        self.take("drawing")
        self.close_panel()
        self.click(*self.tool("timeEdit"))
        self.type("30")
        self.tick("time")
        self.button("run")
        self.wait_for_state(PAUSED)
        self.tick("animate")
        self.tick("time")
        self.tick("nextEvent")
        for _ in range(6):
            self.button("run")
            self.wait_for_state(RUNNING)
            self.wait_for_state(PAUSED)
        self.take("run")
        self.tick("nextEvent")
        self.tick("animate")
        self.button("run")
        left, top, width, height = self.geometry(self.wait_for_title("Single Simulation Results"))
        self.take("results", left, top, width, height)

    def testPanels(self):
        for place, kind in enumerate(ICONS):
            self.drop(kind, 100 + 150 * (place % 5), 80 + 150 * (place // 5))
            self.take(f"panel{kind}")


class ExamplePictures(PictureCase):
    def open(self, path):
        self.key("ctrl+o")
        self.wait_for_title("Open TIMBERSIM Model")
        self.type(str(path))
        self.key("Return")
        self.wait_for_title(f"{path.name} - TIMBERSIM")
        for _ in range(2):
            self.tick("time")  # what is shown after the model shows that the model is

    def drawn(self):
        """Left, top, width and height of what is drawn on the canvas, with a margin."""
        inside = [(x, y) for x in range(150, WIDTH - 40) for y in range(self.stencil_top - 20, HEIGHT - 90)]
        columns, rows = zip(*(place for place in inside if is_dark(self.screen.pixel(*place))))
        left, top = min(columns) - MARGIN, min(rows) - MARGIN
        return left, top, max(columns) + MARGIN - left, max(rows) + MARGIN - top

    def testExamples(self):
        for path in sorted((SOURCE / "examples").glob("*.tbsmx")):
            self.open(path)
            self.take(path.stem, *self.drawn())


if __name__ == "__main__":
    FOLDER.mkdir(parents=True, exist_ok=True)
    unittest.main()
