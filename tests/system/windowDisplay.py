"""A display of a test's own, with a window manager, and the pixels that it shows."""

import ctypes
import mmap
import os
import pathlib
import signal
import struct
import subprocess
import tempfile
import time
import zlib

PATIENCE = 10.0  # seconds until a step counts as failed
WIDTH, HEIGHT = 1400, 1000


def end_with_parent():
    """In a child: it ends with the test's process, even where that is killed and cleans nothing up."""
    ctypes.CDLL(None).prctl(1, signal.SIGKILL)


def finish(process):
    if process.poll() is None:
        process.kill()
    process.wait()


class Screen:
    """What an X server shows: the file of its frame buffer, which it keeps up to date."""

    def __init__(self, path):
        with open(path, "rb") as file:
            self.memory = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)
        header = struct.unpack(">25I", self.memory[:100])
        self.width, self.height, self.line = header[4], header[5], header[12]
        self.start = header[0] + header[19] * 12  # behind the header and the map of colours

    def pixel(self, x, y):
        place = self.start + y * self.line + 4 * x
        blue, green, red = self.memory[place:place + 3]
        return red, green, blue

    def region(self, left, top, width, height):
        """The bytes of a rectangle, to be compared with those of another time."""
        return [self.memory[place:place + 4 * width]
                for place in (self.start + y * self.line + 4 * left for y in range(top, top + height))]

    def count(self, left, top, width, height, is_wanted):
        return sum(is_wanted(self.pixel(x, y)) for y in range(top, top + height) for x in range(left, left + width))

    def png(self, left=0, top=0, width=None, height=None):
        width, height = width or self.width - left, height or self.height - top
        rows = bytearray()
        for row in self.region(left, top, width, height):
            pixels = bytearray(3 * width)
            pixels[0::3], pixels[1::3], pixels[2::3] = row[2::4], row[1::4], row[0::4]
            rows += b"\0" + pixels
        parts = [(b"IHDR", struct.pack(">2I5B", width, height, 8, 2, 0, 0, 0)), (b"IDAT", zlib.compress(rows, 9)),
                 (b"IEND", b"")]
        return b"\x89PNG\r\n\x1a\n" + b"".join(
            struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
            for kind, data in parts)


class Display:
    """An X server on a free display with a window manager, in a folder of its own."""

    def __init__(self):
        self.scratch = tempfile.TemporaryDirectory()
        self.folder = pathlib.Path(self.scratch.name)
        self.processes = []
        inherited = {name: os.environ[name] for name in ("PATH", "LD_LIBRARY_PATH") if name in os.environ}
        self.environment = dict(inherited, HOME=self.scratch.name, LC_ALL="C.UTF-8", QT_QPA_PLATFORM="xcb",
                                XDG_RUNTIME_DIR=self.scratch.name, TMPDIR=self.scratch.name)
        reader, writer = os.pipe()
        self.start("Xvfb", "-displayfd", str(writer), "-screen", "0", f"{WIDTH}x{HEIGHT}x24", "-dpi", "96",
                   "-nocursor", "-nolisten", "tcp", "-noreset", "-fbdir", self.scratch.name, pass_fds=[writer])
        os.close(writer)
        with os.fdopen(reader) as numbers:
            self.environment["DISPLAY"] = ":" + numbers.readline().strip()
        self.screen = Screen(self.folder / "Xvfb_screen0")
        # It runs the command once it takes care of windows: one that is shown sooner can be missed.
        self.start("openbox", "--sm-disable", "--startup", "xprop -root -format READY 8s -set READY yes")
        until(lambda: "yes" in self.ask("xprop", "-root", "READY"), "openbox", self)

    def start(self, *command, **options):
        process = subprocess.Popen(command, env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL, preexec_fn=end_with_parent, **options)
        self.processes.append(process)
        return process

    def close(self):
        for process in reversed(self.processes):
            finish(process)
        self.scratch.cleanup()

    def ask(self, *command, **options):
        """What a command on this display says; empty if it fails."""
        return subprocess.run(command, env=self.environment, capture_output=True, text=True, check=False,
                              timeout=PATIENCE, **options).stdout

    def do(self, *command):
        subprocess.run(["xdotool", *map(str, command)], env=self.environment, check=True, timeout=PATIENCE,
                       stdout=subprocess.DEVNULL)


def until(condition, wanted, display):
    """What `condition` gives once it is true. Fails with a picture if that doesn't come."""
    end = time.monotonic() + PATIENCE
    while not (result := condition()):
        if time.monotonic() > end:
            with tempfile.NamedTemporaryFile(prefix="timbersim-", suffix=".png", delete=False) as picture:
                picture.write(display.screen.png())
            raise AssertionError(f"waited in vain: {wanted}; the screen is in {picture.name}")
        time.sleep(0.005)  # between two looks
    return result


def is_blue(colour):
    return colour[2] > 200 and colour[0] < 150 and colour[1] < 150


def is_green(colour):
    return colour[1] > 200 and colour[0] < 100 and colour[2] < 100


def is_red(colour):
    return colour[0] > 200 and colour[1] < 100 and colour[2] < 100


def is_dark(colour):
    return max(colour) < 110


def runs_of(colours, is_wanted, shortest):
    """(first, length) of each unbroken run of wanted colours."""
    runs = []
    first = None
    for place, colour in enumerate([*colours, None]):
        if colour is not None and is_wanted(colour):
            first = place if first is None else first
        elif first is not None:
            if place - first >= shortest:
                runs.append((first, place - first))
            first = None
    return runs
