#!/usr/bin/env python3
"""How many trucks does the earthmoving job want? One model, run with 4 to 12 of them, ten seeds each.

Statements added to each run set the seed and the number of trucks; the file stays as it is.
"""

from __future__ import annotations

import pathlib
import statistics

import timbersim

MODEL = pathlib.Path(__file__).resolve().parents[2] / "examples" / "earthmoving.tbsmx"
FLEETS = range(4, 13)
SEEDS = range(1, 11)


def run_fleet(session: timbersim.Session, trucks: int, seed: int) -> dict[str, float]:
    """The results of one run of the job, which is the same for the same seed."""
    session.add_statements(f"SEED {seed}", f"SETATTRIBUTE TrucksAtPit InitialContent {trucks}")
    session.run()
    return session.results()


def main() -> None:
    print("trucks   m3 per hour     +-   wait at pit   excavator use")
    with timbersim.Session(MODEL) as session:
        for trucks in FLEETS:
            runs = [run_fleet(session, trucks, seed) for seed in SEEDS]
            production = [run["ProductionPerHour"] for run in runs]
            wait = statistics.mean(run["WaitAtPit"] for run in runs)
            use = statistics.mean(run["ExcavatorUse"] for run in runs)
            print(
                f"{trucks:6}   {statistics.mean(production):11.1f}   {statistics.stdev(production):4.1f}"
                f"   {wait:7.2f} min   {use:13.0%}"
            )


if __name__ == "__main__":
    main()
