"""Lines to and from a running program, over the three pipes between it and this process.

Two things hold at all times:

- No pipe stays full. Who waits here, for an answer or for room to write, takes what comes on both outputs meanwhile;
  while nobody does, a thread does and throws standard output away, for nobody has asked for it.
- Standard error comes before the answer. The program flushes what it says there before it answers; so after each look
  at standard output comes one at standard error, and its lines are entered first.
"""

from __future__ import annotations

import os
import re
import select
import signal
import subprocess
import threading
import time
from collections import deque
from collections.abc import Iterator, Sequence
from contextlib import contextmanager
from typing import IO

from .errors import ModelError, ProgramDied, ProgramNotFound, ProtocolError, Timeout

PIPE_SIZE = 65536  # bytes: all that a pipe holds, so that one look takes it all
LONGEST_LINE = 1 << 28  # bytes; what is longer is no answer
TAIL = 40  # lines of standard error kept for the report of a death
GRACE = 2.0  # seconds for what follows at once: the end of a process that has closed its output, or was killed

ERROR_LINE = re.compile(r"ERROR (-?\d+)(?: (.*))?")


class Deadline:
    """A point in time that a wait may not pass: so many seconds from now, or never."""

    def __init__(self, seconds: float | None) -> None:
        self.seconds = seconds
        self._end = None if seconds is None else time.monotonic() + seconds

    def milliseconds_left(self) -> float | None:
        """Never more than an hour, which poll() can hold; who waits asks again."""
        if self._end is None:
            return None
        return 1000 * min(max(self._end - time.monotonic(), 0), 3600)

    @contextmanager
    def paused(self) -> Iterator[None]:
        """The time spent within doesn't count."""
        begin = time.monotonic()
        yield
        if self._end is not None:
            self._end += time.monotonic() - begin

    def has_passed(self) -> bool:
        return self._end is not None and time.monotonic() > self._end


class LineReader:
    """The lines that come through a pipe. A last line without a line feed is dropped."""

    def __init__(self, pipe: IO[bytes] | None) -> None:
        assert pipe is not None
        self.fd = pipe.fileno()
        self.is_open = True
        self._pieces: list[bytes] = []  # of a line whose end hasn't come yet
        self._size = 0  # of the pieces
        os.set_blocking(self.fd, False)

    def read(self) -> list[str]:
        """The lines completed by what is there now. Never waits. Raises ProtocolError if a line has no end."""
        if not self.is_open:
            return []
        try:
            piece = os.read(self.fd, PIPE_SIZE)
        except BlockingIOError:
            return []
        self.is_open = bool(piece)
        self._pieces.append(piece)
        self._size += len(piece)
        if b"\n" not in piece:
            if self._size > LONGEST_LINE:
                raise ProtocolError(f"the program writes a line of more than {LONGEST_LINE} bytes")
            return []
        *lines, rest = b"".join(self._pieces).split(b"\n")
        self._pieces = [rest]
        self._size = len(rest)
        return [line.decode("utf-8", errors="replace") for line in lines]


def poller_of(readers: Sequence[LineReader]) -> select.poll:
    poller = select.poll()
    for reader in readers:
        poller.register(reader.fd, select.POLLIN)
    return poller


class Channel:
    """A program that runs, and the conversation with it.

    Who talks holds `lock` from the first line sent to the last line received.
    """

    def __init__(self, command: Sequence[str]) -> None:
        """Starts the program, in a process group of its own: Ctrl-C in a terminal is for Python alone.

        Raises ProgramNotFound if it can't be started.
        """
        self.name = os.path.basename(command[0])
        self.lock = threading.Lock()
        try:
            self._process = subprocess.Popen(
                command,
                stdin=subprocess.PIPE,
                stdout=subprocess.PIPE,
                stderr=subprocess.PIPE,
                bufsize=0,
                process_group=0,
            )
        except OSError as failure:
            raise ProgramNotFound(f"{command[0]} can't be started: {failure.strerror}") from failure
        assert self._process.stdin is not None
        self._input = self._process.stdin.fileno()
        os.set_blocking(self._input, False)
        self._output = LineReader(self._process.stdout)
        self._error = LineReader(self._process.stderr)
        self._lines: deque[str] = deque()
        self._tail: deque[str] = deque(maxlen=TAIL)
        self._failure: ModelError | None = None
        self._owner = os.getpid()
        self._idler = threading.Thread(target=self._drain_while_idle, name=f"{self.name} output", daemon=True)
        self._idler.start()

    @property
    def pid(self) -> int:
        """The number of the process, also after its end."""
        return self._process.pid

    def begin(self) -> None:
        """Forgets what came unasked, before a new request."""
        self._collect()
        self._lines.clear()
        self._failure = None

    def send(self, line: str, deadline: Deadline) -> None:
        """Raises Timeout if the program doesn't take the line in time, and ProgramDied if it is gone."""
        rest = memoryview(line.encode("utf-8") + b"\n")
        while rest:
            try:
                rest = rest[os.write(self._input, rest) :]
            except BlockingIOError:
                self._wait(deadline, for_room=True)
            except BrokenPipeError:
                raise self._death() from None

    def receive(self, deadline: Deadline) -> str:
        """The next line of standard output. Raises Timeout, ProgramDied or ProtocolError."""
        while not self._lines:
            if not self._output.is_open:
                raise self._death()
            self._wait(deadline)
        return self._lines.popleft()

    def take_failure(self) -> ModelError | None:
        """The last failure that the program told of on standard error since begin(), and forgets it."""
        failure, self._failure = self._failure, None
        return failure

    def wait_for_end(self, deadline: Deadline) -> None:
        """Until the program has closed its outputs, which is what the end of its process does. Raises Timeout."""
        while self._open_outputs():
            self._wait(deadline)
            self._lines.clear()

    def kill(self) -> None:
        """Ends the program and what it started, at once. From any thread; a call that waits for it meets its death."""
        if self._process.returncode is None:
            try:
                os.killpg(self._process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass  # ended, and reaped behind our back by a process that ignores SIGCHLD

    def abandon(self) -> None:
        """Ends the program and leaves no zombie. In a fork of the process that started it, does nothing."""
        if os.getpid() == self._owner:
            self.kill()
            self._process.wait()

    def end(self) -> None:
        """abandon(), and gives back thread and pipes. Not with `lock` held: the thread has to see the end."""
        self.abandon()
        self._idler.join(GRACE)
        if self._idler.is_alive():
            return  # a stranger has inherited the pipes and keeps them open; the thread still looks at them
        for pipe in (self._process.stdin, self._process.stdout, self._process.stderr):
            assert pipe is not None
            pipe.close()

    def _wait(self, deadline: Deadline, for_room: bool = False) -> None:
        """Until there is output, or with for_room also until there is room for input; takes the output."""
        poller = poller_of(self._open_outputs())
        if for_room:
            poller.register(self._input, select.POLLOUT)
        poller.poll(deadline.milliseconds_left())
        self._collect()
        if deadline.has_passed():
            raise self._timeout(deadline)

    def _open_outputs(self) -> list[LineReader]:
        return [reader for reader in (self._output, self._error) if reader.is_open]

    def _collect(self) -> None:
        """Takes what is there, without waiting."""
        answers = self._output.read()
        for line in self._error.read():
            self._tail.append(line)
            if match := ERROR_LINE.fullmatch(line):
                self._failure = ModelError(int(match[1]), match[2] or "")
        self._lines.extend(answers)

    def _drain_while_idle(self) -> None:
        while readers := self._open_outputs():
            poller_of(readers).poll()
            with self.lock:
                try:
                    self._collect()
                except ProtocolError:
                    return  # who asks next meets it again
                self._lines.clear()

    def _timeout(self, deadline: Deadline) -> Timeout:
        return Timeout(f"{self.name} gave no answer within {deadline.seconds:g} seconds")

    def _death(self) -> ProgramDied:
        """What is to be said about a program that takes or gives no more lines. Waits a little for its last words."""
        deadline = Deadline(GRACE)
        try:
            self.wait_for_end(deadline)
            self._process.wait(GRACE)
        except (Timeout, ProtocolError, subprocess.TimeoutExpired):
            pass
        return ProgramDied(self.name, self._process.returncode, self._tail)
