#!/usr/bin/env python3
"""A run whose durations come from measurements: the model asks with GET, Python answers.

Loading and returning are drawn from what a stopwatch has seen. Hauling knows what no expression of the model does: from
the fifteenth haul on the road is wet, and takes a quarter longer.
"""

from __future__ import annotations

import pathlib
import random
from collections import defaultdict

import timbersim

MODEL = pathlib.Path(__file__).resolve().parent / "measured-hauls.tbsmx"

# Minutes, one by one as they were measured.
MEASURED = {
    "load": [2.4, 2.9, 3.1, 2.7, 3.8, 2.6, 2.8, 3.3],
    "haul": [8.1, 7.6, 8.4, 9.0, 7.9, 8.2, 8.8, 7.7],
    "return": [5.9, 6.2, 5.7, 6.6, 6.0, 5.8],
}
DRY_HAULS = 14
WET_FACTOR = 1.25


class Site:
    """Answers the model, and keeps what it answered."""

    def __init__(self, seed: int) -> None:
        self.random = random.Random(seed)
        self.answers: dict[str, list[float]] = defaultdict(list)
        self.dumped = ""

    def duration(self, key: str) -> float:
        """The next duration of an activity, in minutes. Raises KeyError for one that was never measured."""
        minutes = self.random.choice(MEASURED[key])
        if key == "haul" and len(self.answers[key]) >= DRY_HAULS:
            minutes *= WET_FACTOR
        self.answers[key].append(minutes)
        return minutes

    def heard(self, text: str) -> None:
        """Takes what the model posts at each dumped load."""
        self.dumped = text


def main() -> None:
    site = Site(seed=1)
    with timbersim.Session(MODEL) as session:
        session.run(on_get=site.duration, on_message=site.heard)
        results = session.results()

    print("activity   asked   least   mean   most")
    for key, answers in sorted(site.answers.items()):
        mean = sum(answers) / len(answers)
        print(f"{key:8}   {len(answers):5}   {min(answers):5.2f}   {mean:4.2f}   {max(answers):4.2f}")
    print()
    print(site.dumped.strip())
    print(f"{results['LoadsPerHour']:.1f} loads an hour, excavator used {results['ExcavatorUse']:.0%} of the time")


if __name__ == "__main__":
    main()
