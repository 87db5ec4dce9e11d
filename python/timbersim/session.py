"""A session: one program that is started, driven and ended."""

from __future__ import annotations

import json
import math
import os
import threading
import weakref
from collections.abc import Callable, Iterator
from contextlib import contextmanager
from decimal import Decimal
from types import TracebackType

from ._channel import Channel, Deadline
from ._program import SERVER, WINDOW, command_of
from .errors import ProtocolError, SessionBusy, SessionClosed, TimbersimError, UnansweredGet, UnknownTrace
from .results import ResultFrames, result_frames

OnGet = Callable[[str], float]
OnMessage = Callable[[str], object]
AnyPath = str | bytes | os.PathLike[str] | os.PathLike[bytes]

CLOSE_PATIENCE = 10.0  # seconds that the program has to end by itself

GET = "GET "
MESSAGE = "MESSAGE "
RESULTS = "RESULTS "
TRACE = "TRACE "
FINISHED = "FINISHED_RUN"
CLOSED = "CLOSED_TIMBERSIM"

ASK_RESULTS = "GETRESULTS;"
COMMANDS = {"RESETMODEL;", "RUNMODEL;", ASK_RESULTS, "CLOSE;"}  # each a whole line, in any case
COMMAND_WORDS = {"LOAD", "SETANIMATE", "GETTRACE"}  # first in a line, in any case
ANSWER_WORD = "RESPONSE_TO_GET"  # how a line begins, in this case


class Session:
    """A running program, and what can be asked of it. A context manager: its end closes the program.

        with timbersim.Session("earthmoving.tbsmx") as session:
            session.run()
            print(session.results()["SimTime"])

    model: a file to be loaded at once, as by load().
    program: the path of the program. Without it the environment variable TIMBERSIM_RUN (with window: TIMBERSIM) says
        where it is, and without that PATH, where it is called timbersim-run (timbersim).
    window: shows the window, which needs a display and takes about twenty lines a second.
    timeout: seconds to wait for each answer other than that of run(); None waits for ever.

    A session that isn't closed ends its program, without its leave, when it is collected or the interpreter exits.
    Calls may come from any thread, one at a time; a second one at the same time raises SessionBusy. Only close() may
    always be called: it ends the program, and a call under way raises SessionClosed.

    ModelError, UnknownTrace, PandasMissing and the ValueError for an argument that can't be sent leave the session
    usable. Whatever else leaves a call, KeyboardInterrupt and exceptions of on_get and on_message included, closes the
    session and ends the program: the conversation has stopped in the middle, and the protocol has no word to call off
    a run.

    Raises ProgramNotFound, ProgramDied, ProtocolError or Timeout when the program can't be brought to answer, and
    ModelError when the model can't be loaded. No program is left behind then.
    """

    def __init__(
        self,
        model: AnyPath | None = None,
        *,
        program: str | os.PathLike[str] | None = None,
        window: bool = False,
        timeout: float | None = 30.0,
    ) -> None:
        self._closed = True  # until there is something to close
        self._call = threading.Lock()  # held by the call that is under way
        self._timeout = timeout
        self._has_run = False  # the model stands as the last run left it
        self._channel = Channel(command_of(WINDOW if window else SERVER, program))
        self._finalizer = weakref.finalize(self, self._channel.abandon)
        self._closed = False
        try:
            self.results()  # the first answer: it is there, and speaks the protocol
            if model is not None:
                self.load(model)
        except BaseException:
            self.close()
            raise

    def __enter__(self) -> Session:
        return self

    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, traceback: TracebackType | None
    ) -> None:
        self.close()

    @property
    def closed(self) -> bool:
        """Whether the session has ended. Every call but close() then raises SessionClosed."""
        return self._closed

    @property
    def pid(self) -> int:
        """The number of the program's process."""
        return self._channel.pid

    def load(self, path: AnyPath, on_get: OnGet | None = None, on_message: OnMessage | None = None) -> None:
        """Loads a model file in place of the model that is there.

        The declarations of its Global Code are executed, and may ask for values as run() does; on_get and on_message
        are as there. Raises ModelError if the file can't be read or a declaration fails.
        """
        absolute = os.path.abspath(os.fsdecode(path))
        message = _line(f"LOAD {absolute};")
        with self._conversation() as channel:
            self._send(message)
            # A load has no answer. What follows it has one, which comes after it, unless it is given while the load
            # waits for a value: therefore one more for each value.
            self._send(ASK_RESULTS)
            barriers = 1
            deadline = Deadline(self._timeout)
            while barriers:
                line = channel.receive(deadline)
                if line.startswith(RESULTS):
                    barriers -= 1
                    continue
                with deadline.paused():
                    self._serve(line, on_get, on_message)
                if line.startswith(GET):
                    self._send(ASK_RESULTS)
                    barriers += 1
            self._has_run = False
            failure = channel.take_failure()
        if failure is not None:
            failure.add_note(f"while loading {absolute}")
            raise failure

    def add_statements(self, *statements: str) -> None:
        """Adds statements of the model language to the next run, ahead of its Global Code.

        Each argument is one statement; the ";" at its end may be left out. They hold for that run; only what
        SETATTRIBUTE sets stays until it is set again or a model is loaded. Raises ValueError for what is not one
        statement, or would be read as a command of the protocol, and then adds none of them.
        """
        lines = [_statement_line(statement) for statement in statements]
        with self._conversation():
            self._reset_after_run()
            for line in lines:
                self._send(line)

    def run(
        self, on_get: OnGet | None = None, on_message: OnMessage | None = None, timeout: float | None = 3600.0
    ) -> None:
        """Runs the model, with all its replications, to the end.

        on_get: called with the key at each GET("key") of the model; gives the value; what is no finite number raises
            ValueError or TypeError here. Without it such a model raises UnansweredGet.
        on_message: called with the text of each POST of the model.
        timeout: seconds that the program may take in all; None waits for ever. The time that on_get and on_message
            take doesn't count.

        Figures and traces stay for results() and trace() until the next run. Raises ModelError if the model
        fails or its user stops it (code 5).
        """
        with self._conversation() as channel:
            self._reset_after_run()
            self._send("RUNMODEL;")
            self._has_run = True
            deadline = Deadline(timeout)
            while (line := channel.receive(deadline)) != FINISHED:
                with deadline.paused():
                    self._serve(line, on_get, on_message)
            failure = channel.take_failure()
        if failure is not None:
            raise failure

    def results(self) -> dict[str, float]:
        """The figures of the last run, by name; with many replications their means. Empty before the first.

        "SimTime", the labels of ADDTORESULTS, and for each queue and activity its name, "." and the figure, such as
        "Pile.AveCont" (timbersim.QUEUE_FIGURES and ACTIVITY_FIGURES list them). NaN is what the program can't write
        as a number: an infinite figure, or one that is none.
        """
        with self._conversation():
            self._send(ASK_RESULTS)
            return _figures(self._receive_results())

    def results_frames(self) -> ResultFrames:
        """results() as DataFrames of queues, activities and entries. Raises PandasMissing without pandas."""
        return result_frames(self.results())

    def trace(self, name: str) -> str:
        """The text that the model's PRINT statements wrote under a name in the last run, its lines ended by "\\n".

        On its way a line end is a "|", so that a "|" of the text itself becomes a line end too. Raises UnknownTrace
        if nothing was written under the name.
        """
        message = _line(f"GETTRACE {name};")
        texts: list[str] = []
        with self._conversation():
            self._send(message)
            self._send(ASK_RESULTS)  # an unknown name has no answer; this has, and comes after
            self._receive_results(texts)
        if not texts:
            raise UnknownTrace(f"no PRINT has written a text under the name {name!r}")
        return texts[0].replace("|", "\n")

    def animate(self, on: bool) -> None:
        """Whether the window shows each step of a run. Without a window it changes nothing."""
        with self._conversation():
            self._send("SETANIMATE true;" if on else "SETANIMATE false;")

    def reset(self) -> None:
        """Sets the model back to where it was before its run, and forgets the statements added for the next one.

        run() and add_statements() do so themselves after a run; this is for the window, which shows it.
        """
        with self._conversation():
            self._reset()

    def close(self) -> None:
        """Ends the program, by force if it doesn't by itself. Raises nothing; a closed session stays closed."""
        if self._closed:
            return
        self._closed = True
        if self._call.locked():
            self._channel.kill()  # the call that is under way meets the end of the program, and does the rest
            return
        try:
            with self._channel.lock:
                self._part(Deadline(CLOSE_PATIENCE))
        except TimbersimError:
            pass  # it is ended by force below
        finally:
            self._end()

    def _part(self, deadline: Deadline) -> None:
        self._channel.begin()
        self._channel.send("CLOSE;", deadline)
        while self._channel.receive(deadline) != CLOSED:
            pass
        self._channel.wait_for_end(deadline)

    def _end(self) -> None:
        self._finalizer.detach()
        self._channel.end()

    @contextmanager
    def _conversation(self) -> Iterator[Channel]:
        """One call at a time, from its first line to its last. An exception within it closes the session."""
        if self._closed:
            raise SessionClosed("the session is closed")
        if not self._call.acquire(blocking=False):
            raise SessionBusy("another call of this session is under way")
        try:
            with self._channel.lock:
                if self._closed:  # while we waited for the lock
                    raise SessionClosed("the session is closed")
                self._channel.begin()
                yield self._channel
        except BaseException as error:
            was_closed, self._closed = self._closed, True
            if was_closed and isinstance(error, TimbersimError):
                raise SessionClosed("the session was closed during this call") from None
            raise
        finally:
            self._call.release()
            if self._closed:
                self._end()

    def _send(self, line: str) -> None:
        self._channel.send(line, Deadline(self._timeout))

    def _serve(self, line: str, on_get: OnGet | None, on_message: OnMessage | None) -> None:
        """Does what a line asks for that isn't the end of what was asked."""
        if line.startswith(GET):
            key = line.removeprefix(GET)
            if on_get is None:
                raise UnansweredGet(key)
            self._send(f"{ANSWER_WORD} {_decimal(on_get(key))}")
        elif line.startswith(MESSAGE):
            if on_message is not None:
                on_message(line.removeprefix(MESSAGE))
        else:
            raise _unknown(line)

    def _receive_results(self, traces: list[str] | None = None) -> str:
        """The text of the next RESULTS; the texts of TRACEs before it go to the list, if there is one.

        In the window its user may have a run going, whose values and messages are none of ours.
        """
        deadline = Deadline(self._timeout)
        while not (line := self._channel.receive(deadline)).startswith(RESULTS):
            if traces is not None and line.startswith(TRACE):
                traces.append(line.removeprefix(TRACE))
            elif not line.startswith((GET, MESSAGE)):
                raise _unknown(line)
        return line.removeprefix(RESULTS)

    def _reset_after_run(self) -> None:
        if self._has_run:
            self._reset()

    def _reset(self) -> None:
        self._send("RESETMODEL;")
        self._has_run = False


def _line(text: str) -> str:
    """The text, if it can go on one line. Raises ValueError."""
    if any(character in text for character in "\n\r\0"):
        raise ValueError(f"a line end or a zero byte can't be sent: {text!r}")
    text.encode("utf-8")  # a lone surrogate is a UnicodeEncodeError, which is a ValueError
    return text


def _statement_line(statement: str) -> str:
    text = _line(statement.strip().removesuffix(";").rstrip())
    if not text:
        raise ValueError("an empty statement")
    if ";" in text:
        raise ValueError(f"more than one statement: {statement!r}")
    if "\\" in text:
        raise ValueError(f"a backslash begins a comment, which would hide the end of the statement: {statement!r}")
    line = text + ";"
    word = line.split(" ")[0].upper()
    if line.upper() in COMMANDS or word in COMMAND_WORDS or line.startswith(ANSWER_WORD):
        raise ValueError(f"a command of the protocol and no statement: {statement!r}")
    return line


def _decimal(value: float) -> str:
    """All digits of a number, without an exponent. Raises TypeError or ValueError for what is no finite number."""
    if not math.isfinite(value):
        raise ValueError(f"on_get gave {value}, which is no finite number")
    return format(Decimal(repr(float(value))), "f")


def _figures(text: str) -> dict[str, float]:
    """The figures in the text of a RESULTS. Raises ProtocolError if they are none."""
    try:
        figures = json.loads(text, parse_int=float)
    except ValueError as failure:
        raise ProtocolError(f"the results are no JSON: {failure}: {_short(text)}") from failure
    if not isinstance(figures, dict) or not all(isinstance(value, float | None) for value in figures.values()):
        raise ProtocolError(f"the results are no figures by name: {_short(text)}")
    return {name: math.nan if value is None else value for name, value in figures.items()}


def _unknown(line: str) -> ProtocolError:
    return ProtocolError(f"this is no answer of TIMBERSIM's: {_short(line)}")


def _short(text: str) -> str:
    return repr(text if len(text) <= 200 else text[:200] + "...")
