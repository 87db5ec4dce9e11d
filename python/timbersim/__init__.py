"""Drives TIMBERSIM, the simulator of construction operations: models are loaded, run, answered and read from Python.

    import timbersim

    with timbersim.Session("examples/earthmoving.tbsmx") as session:
        for trucks in range(4, 13):
            session.add_statements("SEED 1", f"SETATTRIBUTE TrucksAtPit InitialContent {trucks}")
            session.run()
            print(trucks, session.results()["ProductionPerHour"])

A model that says DURATION Haul GET("haul") asks Python for each duration:

    session.run(on_get=lambda key: measured[key].pop())

A Session starts timbersim-run, which has no window and answers at once; Session(window=True) starts timbersim and shows
what happens. Everything that can go wrong is a TimbersimError.
"""

from .errors import (
    ModelError,
    PandasMissing,
    ProgramDied,
    ProgramNotFound,
    ProtocolError,
    SessionBusy,
    SessionClosed,
    TimbersimError,
    Timeout,
    UnansweredGet,
    UnknownTrace,
)
from .results import ACTIVITY_FIGURES, QUEUE_FIGURES, ResultFrames, ResultTables, result_frames, result_tables
from .session import OnGet, OnMessage, Session

__all__ = [
    "ACTIVITY_FIGURES",
    "QUEUE_FIGURES",
    "ModelError",
    "OnGet",
    "OnMessage",
    "PandasMissing",
    "ProgramDied",
    "ProgramNotFound",
    "ProtocolError",
    "ResultFrames",
    "ResultTables",
    "Session",
    "SessionBusy",
    "SessionClosed",
    "TimbersimError",
    "Timeout",
    "UnansweredGet",
    "UnknownTrace",
    "result_frames",
    "result_tables",
]
__version__ = "1.0.0"
