"""What can go wrong between Python and the program. Every exception of the package is a TimbersimError."""

from __future__ import annotations

import signal
from collections.abc import Sequence


class TimbersimError(Exception):
    """The base of all exceptions of this package."""


class ProgramNotFound(TimbersimError):
    """There is no program to start, or what was found can't be started."""


class ProgramDied(TimbersimError):
    """The program ended, or closed its side of the pipes, while an answer was awaited. The session is closed.

    status: its exit status; below 0 the number of the signal that ended it; None if it had closed a pipe and lived on.
    stderr: the last lines of its standard error, joined by line feeds.
    """

    def __init__(self, program: str, status: int | None, stderr: Sequence[str]) -> None:
        self.status = status
        self.stderr = "\n".join(stderr)
        said = f":\n{self.stderr}" if stderr else ", and said nothing on standard error"
        super().__init__(f"{program} {_ending(status)}{said}")


def _ending(status: int | None) -> str:
    if status is None:
        return "closed its standard input or output"
    if status >= 0:
        return f"ended with exit status {status}"
    try:
        return f"was ended by {signal.Signals(-status).name}"
    except ValueError:
        return f"was ended by signal {-status}"


class ProtocolError(TimbersimError):
    """What came on the program's standard output is no answer that TIMBERSIM gives. The session is closed."""


class Timeout(TimbersimError, TimeoutError):
    """An answer didn't come in time. The session is closed, for a late answer couldn't be told from the next one."""


class ModelError(TimbersimError):
    """The model failed, or a file could not be loaded. The session is usable as before.

    code: 1 a statement; 2 an expression, a distribution, a link or a fork; 3 an element; 4 the checks at the start of
        a run; 5 stopped by the user; 0 anything else, such as a file that can't be read.
    message: the program's text, its line feeds turned to blanks.
    """

    def __init__(self, code: int, message: str) -> None:
        self.code = code
        self.message = message
        super().__init__(code, message)

    def __str__(self) -> str:
        return f"{self.message} (code {self.code})"


class UnansweredGet(TimbersimError):
    """The model asked for a value and there was no on_get to answer. The session is closed: a run can't be called off.

    key: what the model asked for.
    """

    def __init__(self, key: str) -> None:
        self.key = key
        super().__init__(f'the model asks for GET("{key}"), and no on_get was given to answer it')


class UnknownTrace(TimbersimError, LookupError):
    """No PRINT has written a text under this name since the last run began. The session is usable as before."""


class SessionClosed(TimbersimError):
    """The session was closed, by close() or by an earlier exception."""


class SessionBusy(TimbersimError):
    """Another call of the session is under way: on_get and on_message may call nothing of it but close()."""


class PandasMissing(TimbersimError, ImportError):
    """DataFrames were asked for, and pandas is not installed."""
