"""The figures of a run, sorted by what they are about."""

from __future__ import annotations

from collections import defaultdict
from collections.abc import Mapping, Sequence
from dataclasses import dataclass
from typing import TYPE_CHECKING

from .errors import PandasMissing

if TYPE_CHECKING:
    import pandas

QUEUE_FIGURES = ("CurCount", "TotCount", "AveWait", "AveCont", "MinCont", "MaxCont")
ACTIVITY_FIGURES = (
    "TotInst",
    "CurInst",
    "AveDur",
    "SDDur",
    "MinDur",
    "MaxDur",
    "AveInt",
    "SDInt",
    "MinInt",
    "MaxInt",
)


@dataclass(frozen=True)
class ResultTables:
    """The figures of a run as rows. Times are in the model's own unit."""

    queues: dict[str, dict[str, float]]  # by name of the queue, then by QUEUE_FIGURES
    activities: dict[str, dict[str, float]]  # by name of the activity, then by ACTIVITY_FIGURES
    entries: dict[str, float]  # all others: SimTime and the labels of ADDTORESULTS


@dataclass(frozen=True)
class ResultFrames:
    """The figures of a run as DataFrames. Each has the names as its index; times are in the model's own unit."""

    queues: pandas.DataFrame  # columns QUEUE_FIGURES
    activities: pandas.DataFrame  # columns ACTIVITY_FIGURES
    entries: pandas.DataFrame  # column Value: SimTime and the labels of ADDTORESULTS


def result_tables(results: Mapping[str, float]) -> ResultTables:
    """Sorts what Session.results() gives into rows, in the order of the names.

    A queue or an activity is what has all the figures of one; a label that only looks like one of them is an entry.
    """
    elements: dict[str, dict[str, float]] = defaultdict(dict)
    for key, value in results.items():
        name, _, figure = key.rpartition(".")
        elements[name][figure] = value
    queues = _rows(elements, QUEUE_FIGURES)
    activities = _rows(elements, ACTIVITY_FIGURES)
    taken = {f"{name}.{figure}" for rows in (queues, activities) for name in rows for figure in rows[name]}
    return ResultTables(queues, activities, {key: results[key] for key in sorted(results) if key not in taken})


def _rows(elements: Mapping[str, Mapping[str, float]], figures: Sequence[str]) -> dict[str, dict[str, float]]:
    return {
        name: {figure: elements[name][figure] for figure in figures}
        for name in sorted(elements)
        if name and elements[name].keys() >= set(figures)
    }


def result_frames(results: Mapping[str, float]) -> ResultFrames:
    """Sorts what Session.results() gives into DataFrames. Raises PandasMissing without pandas."""
    try:
        import pandas
    except ImportError as failure:
        message = "results as DataFrames take pandas, which is not installed (pip install pandas)"
        raise PandasMissing(message) from failure

    def frame(rows: Mapping[str, Mapping[str, float]], columns: Sequence[str], index: str) -> pandas.DataFrame:
        names = pandas.Index(rows, name=index, dtype=object)
        return pandas.DataFrame(rows.values(), index=names, columns=columns, dtype=float)

    tables = result_tables(results)
    return ResultFrames(
        frame(tables.queues, QUEUE_FIGURES, "Queue"),
        frame(tables.activities, ACTIVITY_FIGURES, "Activity"),
        frame({name: {"Value": value} for name, value in tables.entries.items()}, ["Value"], "Entry"),
    )
