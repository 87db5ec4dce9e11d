"""What a controlling program waits for: loads, runs and results, answers to the model, and the start of both programs.

These are times of the wall clock, taken by a controller in Python: what a user of the channel sees.
"""

import contextlib
import os
import subprocess
import time

from programs import RELEASE, ROOT

BATCH = [RELEASE / "bin" / "timbersim-run", "--serve"]
WINDOW = [RELEASE / "bin" / "timbersim", "--from-python"]
EXAMPLE = ROOT / "examples" / "earthmoving.tbsmx"

# Each load asks for its duration, so there is a question for each unit of soil.
ASKING = """\
GENTYPE Soil;
COMBI Load;
QUEUE Pile Soil;

DRAWLINK L1 Pile Load;

DURATION Load GET("duration");
DRAWAMT L1 1;
DRAWUNTIL L1 nDraws==1;
TBINITIALCONTENT Pile {questions};
"""


@contextlib.contextmanager
def driven(command, folder):
    """A program that is driven, closed at the end. Settings and temporary files are the bench's own."""
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", XDG_CONFIG_HOME=str(folder),
                       XDG_RUNTIME_DIR=str(folder), TMPDIR=str(folder))
    with subprocess.Popen(command, env=environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL) as program:
        yield program
        exchange(program, b"CLOSE;\n")


def exchange(program, lines):
    """Sends lines that have one reply, and gives it."""
    program.stdin.write(lines)
    program.stdin.flush()
    reply = program.stdout.readline()
    if not reply:
        raise SystemExit(f"bench/run: no reply to {lines!r}")
    return reply


def start_seconds(command, folder):
    """From the start of the process to its first reply."""
    begin = time.perf_counter()
    with driven(command, folder) as program:
        exchange(program, b"GETRESULTS;\n")
        return time.perf_counter() - begin


def turn_seconds(turns, folder):
    """For loading a model, running it and reading its results, over many turns."""
    with driven(BATCH, folder) as program:
        begin = time.perf_counter()
        for _ in range(turns):
            exchange(program, f"LOAD {EXAMPLE};\nRUNMODEL;\n".encode())
            exchange(program, b"GETRESULTS;\n")
        return (time.perf_counter() - begin) / turns


def answer_rate(command, questions, folder):
    """Answered questions of a model per second."""
    path = folder / "asking.tbsmx"
    path.write_text(ASKING.format(questions=questions))
    with driven(command, folder) as program:
        reply = exchange(program, f"LOAD {path};\nRUNMODEL;\n".encode())
        begin = time.perf_counter()
        while reply == b"GET duration\n":
            reply = exchange(program, b"RESPONSE_TO_GET 5\n")
        seconds = time.perf_counter() - begin
    if reply != b"FINISHED_RUN\n":
        raise SystemExit(f"bench/run: the model said {reply!r}")
    return questions / seconds


def channel_rows(folder, short):
    turns, questions, few = (10, 100, 3) if short else (1000, 100000, 100)
    yield [f"a load, a run and its results, of {turns:,}", f"{turn_seconds(turns, folder) * 1e3:.2f} ms"]
    yield [f"questions answered through --serve, of {questions:,}",
           f"{answer_rate(BATCH, questions, folder):,.0f} a second"]
    yield [f"questions answered through --from-python, of {few}",
           f"{answer_rate(WINDOW, few, folder):.1f} a second"]
    for name, command in (("timbersim-run --serve", BATCH), ("timbersim --from-python", WINDOW)):
        seconds = min(start_seconds(command, folder) for _ in range(1 if short else 5))
        yield [f"start of {name} up to its first reply", f"{seconds * 1e3:.0f} ms"]
