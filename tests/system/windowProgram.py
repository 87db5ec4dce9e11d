"""The built timbersim as tests drive it: on a display of its own, by mouse and keyboard, read by the pixels it shows.

Nothing here waits for a length of time: each step waits until what it brings about can be seen, and fails if that
doesn't come. Places are read off the screen too, so that another font moves them without a test noticing.
"""

import ctypes
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

from windowDisplay import (HEIGHT, PATIENCE, WIDTH, Display, end_with_parent, finish, is_dark, is_green, runs_of,
                           until)

PROGRAM = os.environ["TIMBERSIM"]

END_PATIENCE = 1.0  # seconds that the process may live on after it was told to end
LEFT_BUTTON = "1"

WHITE = (255, 255, 255)
STENCIL_GREY = (200, 200, 200)
GRID_DOT = (200, 200, 200)
RED = (255, 0, 0)
GREEN = (0, 255, 0)
BLUE = (0, 0, 255)

SETTINGS = "[General]\nANIMATIONTOGGLE=false\nANIMATIONSPEED={delay}\nZOOMSLIDE={zoom}\nFONTSLIDE=10\n"
PLAIN_ZOOM = 12  # at which a unit of the scene is a pixel, and a node dropped on a dot of the grid stays there

ICONS = ["Combi", "NormalAct", "Queue", "FusionQueue", "Link", "Fork", "Dynafork", "Assembler", "Disassembler",
         "Consolidator"]
ICON_HEIGHT = 80

# The buttons with icons have places that depend on no text; x of each, from the left of the window.
BUTTONS = {"run": 144, "pause": 177, "stop": 210, "resources": 258, "globalCode": 292}
AFTER_BUTTONS = 310
EDITING = {"run"}
RUNNING = {"pause", "stop"}
PAUSED = {"run", "stop"}

# Where the pointer covers nothing.
ASIDE = (WIDTH // 2, 28)

# The buttons of the panel.
OK_BUTTON = (WIDTH - 145, HEIGHT - 68)
CANCEL_BUTTON = (WIDTH - 60, HEIGHT - 68)

# The white fields of the toolbars, from left to right.
TOOL_FIELDS = ["clockAdvance", "nextEvent", "time", "timeEdit", "simTimeEdit", "animate"]


# Rights of root, and the call that takes one away from a process and its children: PR_CAPBSET_DROP.
IGNORE_PERMISSIONS = [1, 2]  # CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH
DROP_RIGHT = 24


def become_plain_program():
    """In a child: it ends with the test, and permissions of files hold for it even where root runs the tests."""
    end_with_parent()
    for right in IGNORE_PERMISSIONS:
        ctypes.CDLL(None).prctl(DROP_RIGHT, right)  # fails for a user who has none of them


class WindowCase(unittest.TestCase):
    """Starts the program with settings and temporary files of the test's own."""

    maxDiff = None
    delay = 10  # milliseconds of an animated step
    zoom = PLAIN_ZOOM
    spare = (700, 300)  # where links are dropped, before their handles are taken elsewhere
    says = ""  # on its standard streams, where it has no business as a rule

    @classmethod
    def setUpClass(cls):
        cls.display = Display()
        cls.addClassCleanup(cls.display.close)
        cls.screen = cls.display.screen

    def setUp(self):
        self.make_folder()
        self.launch()
        self.find_places()

    def make_folder(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)
        for name in ("settings/timbersim", "tmp", "work"):
            (self.folder / name).mkdir(parents=True)
        self.settings = self.folder / "settings/timbersim/demosettings.ini"
        self.settings.write_text(SETTINGS.format(delay=self.delay, zoom=self.zoom), encoding="ascii")
        self.addCleanup(lambda: self.display.do("mouseup", LEFT_BUTTON))

    def launch(self, *arguments, title="Untitled - TIMBERSIM", wrapper=(), output=None):
        """Starts the program, once more too, and waits for what it shows first. `output` is for what it says."""
        environment = dict(self.display.environment, XDG_CONFIG_HOME=str(self.folder / "settings"),
                           TMPDIR=str(self.folder / "tmp"))
        self.process = self.start_program([*wrapper, PROGRAM, *map(str, arguments)], environment, output)
        self.addCleanup(finish, self.process)
        self.wait_for_title(title)

    def start_program(self, command, environment, output):
        with open(self.folder / "said", "wb") as said:
            return subprocess.Popen(command, cwd=self.folder / "work", env=environment, stdout=output or said,
                                    stderr=output or said, stdin=subprocess.DEVNULL, preexec_fn=become_plain_program)

    def tearDown(self):
        self.assertEqual((self.folder / "said").read_text(encoding="utf-8"), self.says)

    # ---- conditions

    def until(self, condition, wanted):
        return until(condition, wanted, self.display)

    def windows(self):
        """The titles of the program's windows on the screen, and their numbers."""
        found = self.display.ask("xdotool", "search", "--onlyvisible", "--pid", str(self.process.pid), "--name", ".")
        return {self.display.ask("xdotool", "getwindowname", number).rstrip("\n"): number for number in found.split()}

    def wait_for_title(self, title):
        """The number of the window, once it has the keyboard."""
        def active():
            number = self.windows().get(title)
            return number and self.active_window() == number and number
        return self.until(active, f"a window {title!r}")

    def active_window(self):
        """The number of the window that has the keyboard."""
        return self.display.ask("xdotool", "getactivewindow").strip()

    def wait_for_no_title(self, title):
        self.until(lambda: title not in self.windows(), f"the end of window {title!r}")

    def wait_for_end(self):
        """The exit status. The process has a second."""
        return self.process.wait(END_PATIENCE)

    # ---- places

    def find_places(self):
        """Reads off the screen where the parts of the window are. No panel is open then."""
        self.stencil_top = self.until(self.find_stencil, "the stencil")
        self.whole_stencil = self.stencil_height()
        self.tool_row = self.until(self.find_tool_row, "the toolbars")
        self.tool_fields = dict(zip(TOOL_FIELDS, self.white_runs(self.tool_row)))
        self.origin = self.until(self.find_grid, "the grid of the canvas")

    def find_stencil(self):
        column = [self.screen.pixel(14, y) for y in range(HEIGHT)]
        runs = runs_of(column, lambda colour: colour == STENCIL_GREY, 500)
        return runs and runs[0][0]

    def stencil_height(self):
        """How high the stencil is. A panel below takes from it."""
        height = 0
        while self.screen.pixel(14, self.stencil_top + height) == STENCIL_GREY:
            height += 1
        return height

    def white_runs(self, y):
        """(first, length) of what is white in a row, from behind the buttons with icons."""
        row = [self.screen.pixel(x, y) for x in range(AFTER_BUTTONS, WIDTH)]
        return [(AFTER_BUTTONS + first, length) for first, length in runs_of(row, lambda colour: colour == WHITE, 9)]

    def find_tool_row(self):
        """A row through the white fields of the toolbars, all six."""
        for y in range(40, self.stencil_top):
            if len(self.white_runs(y)) == len(TOOL_FIELDS):
                return y + 5  # the middle of the boxes, which are lower than the fields
        return None

    def find_grid(self):
        """A dot of the grid in the upper left part of the canvas. Places on the canvas count from there."""
        step = 10 * self.zoom // PLAIN_ZOOM
        for y in range(self.stencil_top + 20, self.stencil_top + 20 + step):
            for x in range(200, 200 + step):
                if self.screen.pixel(x, y) == GRID_DOT == self.screen.pixel(x + step, y + step):
                    return x, y
        return None

    def at(self, x, y):
        """A place of the canvas on the screen. Multiples of 10 lie on the grid."""
        return self.origin[0] + x * self.zoom // PLAIN_ZOOM, self.origin[1] + y * self.zoom // PLAIN_ZOOM

    def icon(self, kind):
        return 71, self.stencil_top + ICON_HEIGHT * ICONS.index(kind) + ICON_HEIGHT // 2

    # ---- mouse and keyboard

    def move(self, place):
        self.display.do("mousemove", *place)

    def click(self, x, y):
        self.display.do("mousemove", x, y, "click", LEFT_BUTTON)

    def key(self, *names):
        self.display.do("key", "--delay", "2", *names)

    def type(self, text):
        self.display.do("type", "--delay", "2", text)

    def press(self, place, target):
        """Takes what lies at a place to the target, and holds it there."""
        (x, y), (to_x, to_y) = place, target
        self.display.do("mousemove", x, y, "mousedown", LEFT_BUTTON, "mousemove", (x + to_x) // 2, (y + to_y) // 2,
                        "mousemove", to_x - 1, to_y, "mousemove", to_x, to_y)

    def release(self):
        self.display.do("mouseup", LEFT_BUTTON)

    def drag(self, place, target):
        self.press(place, target)
        self.release()

    # ---- clipboard

    def copied(self):
        """What the program puts on the clipboard at Ctrl+C. It differs from what was there before."""
        mark = "nothing copied yet"
        subprocess.run(["xclip", "-selection", "clipboard"], input=mark, text=True, check=True, timeout=PATIENCE,
                       env=self.display.environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.key("ctrl+c")
        def taken():
            text = self.display.ask("xclip", "-selection", "clipboard", "-o")
            return [text] if text and text != mark else None
        return self.until(taken, "a text on the clipboard")[0]

    # ---- elements and their panels

    def drop(self, kind, x, y):
        """Drags an icon to a place of the canvas. The new element has its panel open."""
        self.close_panel()
        self.drag(self.icon(kind), self.at(x, y))
        self.until(lambda: self.stencil_height() < self.whole_stencil, f"the panel of a {kind}")

    def select(self, x, y):
        """Clicks an element, whose panel opens. No other panel is open."""
        self.click(*self.at(x, y))
        self.until(self.fields, f"the panel of the element at {x}, {y}")

    def panel_top(self):
        return self.stencil_top + self.stencil_height() + 5

    def fields(self):
        """The y of each line of text in the open panel, from the top."""
        top = self.panel_top()
        column = [self.screen.pixel(WIDTH // 2, y) for y in range(top, HEIGHT)]
        runs = runs_of(column, lambda colour: colour in (WHITE, BLUE), 14)
        return [top + first + length // 2 for first, length in runs]

    def go_to_field(self, number):
        """Gives a line of the open panel the keyboard, its text selected."""
        self.until(lambda: len(self.fields()) > number, f"field {number}")
        self.click(WIDTH // 2, self.fields()[number])
        self.key("ctrl+a")

    def field_text(self, number):
        self.go_to_field(number)
        return self.copied()

    def fill(self, texts):
        """Types texts into lines of the open panel, by their numbers."""
        for number, text in texts.items():
            self.go_to_field(number)
            self.type(text)

    def accept(self):
        """Ok, which closes the panel."""
        self.click(*OK_BUTTON)
        self.until(lambda: self.stencil_height() == self.whole_stencil, "the end of the panel")

    def close_panel(self):
        """Cancel, if a panel is open."""
        if self.stencil_height() == self.whole_stencil:
            return
        self.click(*CANCEL_BUTTON)
        self.until(lambda: self.stencil_height() == self.whole_stencil, "the end of the panel")

    def draw(self, kind, x, y, texts):
        self.drop(kind, x, y)
        self.fill(texts)
        self.accept()

    def join(self, start, end):
        """Drops a link in a spare place and drags its handles onto two places."""
        x, y = self.spare
        self.drop("Link", x, y)
        self.close_panel()
        for handle, target in (((x, y - 20), start), ((x, y + 20), end)):
            self.press(self.at(*handle), self.at(*target))
            self.until(lambda: self.colours_near(*target, is_green), f"a green handle at {target}")
            self.release()
        self.close_panel()

    def draw_endless(self):
        """A queue of one truck that is loaded, for 5, again and again."""
        self.draw("Queue", 100, 100, {1: "1"})
        self.draw("Combi", 300, 100, {1: "5"})
        self.join((120, 100), (270, 100))
        self.join((300, 120), (100, 120))

    def colours_near(self, x, y, is_wanted, half=5):
        """How many pixels around a place of the canvas have a colour."""
        left, top = self.at(x - half, y - half)
        return self.screen.count(left, top, 2 * half + 1, 2 * half + 1, is_wanted)

    # ---- runs

    def tool(self, name):
        first, length = self.tool_fields[name]
        return first + length // 2, self.tool_row

    def tick(self, name):
        """Ticks a box of the toolbars, or takes its tick away."""
        first, length = self.tool_fields[name]
        look = lambda: self.screen.region(first, self.tool_row - 2, length, 5)
        before = look()
        self.click(*self.tool(name))
        self.until(lambda: look() != before, f"a change of box {name}")

    def button(self, name):
        self.click(BUTTONS[name], self.tool_row)
        self.move(ASIDE)

    def run_state(self):
        """The buttons of run control that can be pressed: the others are grey, light and without colour."""
        return {name for name in ("run", "pause", "stop") if self.is_button_enabled(name)}

    def is_button_enabled(self, name):
        def is_strong(colour):
            return max(colour) - min(colour) > 60 or max(colour) < 100
        return self.screen.count(BUTTONS[name] - 8, self.tool_row - 8, 17, 17, is_strong) > 20

    def wait_for_state(self, state):
        self.until(lambda: self.run_state() == state, f"the buttons {sorted(state)}")

    def wait_for_sim_time(self, expected):
        """Until SimTime looks like the expected text in the field for Time=, which is empty before and after."""
        self.click(*self.tool("timeEdit"))
        self.key("ctrl+a")
        self.type(expected)
        self.key("Tab")
        self.move(ASIDE)
        self.until(lambda: self.glyphs("timeEdit") == self.glyphs("simTimeEdit"), f"SimTime {expected}")
        self.click(*self.tool("timeEdit"))
        self.key("ctrl+a", "BackSpace", "Tab")

    def glyphs(self, name):
        first, _ = self.tool_fields[name]
        return [[is_dark(self.screen.pixel(x, y)) for x in range(first, first + 40)]
                for y in range(self.tool_row - 8, self.tool_row + 8)]

    # ---- results

    def geometry(self, number):
        """Left, top, width and height of a window."""
        said = self.display.ask("xwininfo", "-id", number)
        return [int(re.search(rf"{name}: +(-?\d+)", said)[1])
                for name in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")]

    def tables(self):
        """The rows of both tables of the results of one replication, copied from them."""
        left, top, width, height = self.geometry(self.wait_for_title("Single Simulation Results"))
        texts = []
        for part in (0.5, 0.9):  # the empty parts of the two
            self.click(left + width * 9 // 10, top + int(height * part))
            self.key("ctrl+a")
            texts.append([row.split("\t") for row in self.copied().split("\n")])
        return texts

    def save_results(self, title, path):
        """Saves what the results of that title show."""
        left, top, _, _ = self.geometry(self.wait_for_title(title))
        self.click(left + 100, top + 22)
        self.choose_file("Save Results File", path)
        self.until(path.exists, f"the file {path}")

    # ---- files

    def choose_file(self, title, path):
        """Types a path into a dialog for files."""
        self.wait_for_title(title)
        self.type(str(path))
        self.key("Return")
        self.wait_for_no_title(title)
