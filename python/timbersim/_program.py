"""Which program to start, and with what arguments."""

from __future__ import annotations

import os
import shutil
from dataclasses import dataclass

from .errors import ProgramNotFound


@dataclass(frozen=True)
class Driver:
    """One of the two programs that speak the protocol."""

    name: str
    variable: str  # of the environment, with a path that goes before what is in PATH
    argument: str


WINDOW = Driver("timbersim", "TIMBERSIM", "--from-python")
SERVER = Driver("timbersim-run", "TIMBERSIM_RUN", "--serve")


def command_of(driver: Driver, program: str | os.PathLike[str] | None) -> list[str]:
    """The command that starts the driver: the given program, else the one that the environment names, else from PATH.

    Raises ProgramNotFound.
    """
    return [_path_of(driver, program), driver.argument]


def _path_of(driver: Driver, program: str | os.PathLike[str] | None) -> str:
    if program is not None:
        return _checked(os.fspath(program), "the argument program")
    if named := os.environ.get(driver.variable):
        return _checked(named, f"the environment variable {driver.variable}")
    if found := shutil.which(driver.name):
        return found
    raise ProgramNotFound(
        f"{driver.name} is not in PATH; say where it is with the environment variable {driver.variable} "
        "or the argument program"
    )


def _checked(path: str, source: str) -> str:
    """The path, or for a bare name what it is in PATH."""
    found = shutil.which(path)
    if found is None:
        reason = "can't be executed" if os.path.exists(path) else "doesn't exist"
        raise ProgramNotFound(f"{path} {reason}, which {source} names as the program to start")
    return found
