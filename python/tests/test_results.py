"""Figures sorted into queues, activities and entries, with pandas and without."""

import subprocess
import sys
import unittest

import timbersim

from .fake_case import TESTS

QUEUE = {"CurCount": 2.0, "TotCount": 8.0, "AveWait": 1.5, "AveCont": 0.5, "MinCont": 0.0, "MaxCont": 3.0}
ACTIVITY = {"TotInst": 6.0, "CurInst": 0.0, "AveDur": 3.0, "SDDur": 0.1, "MinDur": 2.0, "MaxDur": 4.0, "AveInt": 5.0,
            "SDInt": 0.2, "MinInt": 4.0, "MaxInt": 6.0}


def named(name, figures):
    return {f"{name}.{figure}": value for figure, value in reversed(figures.items())}


RESULTS = {"SimTime": 480.0, **named("Trucks", QUEUE), **named("Dig", ACTIVITY), **named("Pile", QUEUE),
           "Production": 278.5, "Trucks.PerHour": 4.0, "Lone.AveDur": 1.0}
ENTRIES = {"Lone.AveDur": 1.0, "Production": 278.5, "SimTime": 480.0, "Trucks.PerHour": 4.0}


class TablesTest(unittest.TestCase):
    def test_elements_have_rows_and_all_else_is_an_entry(self):
        tables = timbersim.result_tables(RESULTS)

        self.assertEqual(tables.queues, {"Pile": QUEUE, "Trucks": QUEUE})
        self.assertEqual(tables.activities, {"Dig": ACTIVITY})
        self.assertEqual(tables.entries, ENTRIES)

    def test_rows_are_in_the_order_of_names_and_figures_in_that_of_the_columns(self):
        tables = timbersim.result_tables(RESULTS)

        self.assertEqual(list(tables.queues), ["Pile", "Trucks"])
        self.assertEqual(tuple(tables.queues["Pile"]), timbersim.QUEUE_FIGURES)
        self.assertEqual(tuple(tables.activities["Dig"]), timbersim.ACTIVITY_FIGURES)
        self.assertEqual(list(tables.entries), list(ENTRIES))

    def test_no_results_are_no_rows(self):
        self.assertEqual(timbersim.result_tables({}), timbersim.ResultTables({}, {}, {}))


class FramesTest(unittest.TestCase):
    def test_frames_hold_the_rows_of_the_tables(self):
        frames = timbersim.result_frames(RESULTS)

        self.assertEqual(frames.queues.to_dict("index"), {"Pile": QUEUE, "Trucks": QUEUE})
        self.assertEqual(frames.activities.to_dict("index"), {"Dig": ACTIVITY})
        self.assertEqual(frames.entries["Value"].to_dict(), ENTRIES)
        self.assertEqual([frame.index.name for frame in (frames.queues, frames.activities, frames.entries)],
                         ["Queue", "Activity", "Entry"])

    def test_no_results_are_empty_frames_with_all_columns(self):
        frames = timbersim.result_frames({})

        self.assertEqual(tuple(frames.queues), timbersim.QUEUE_FIGURES)
        self.assertEqual(tuple(frames.activities), timbersim.ACTIVITY_FIGURES)
        self.assertEqual([len(frames.queues), len(frames.activities), len(frames.entries)], [0, 0, 0])
        self.assertEqual(str(frames.queues["AveWait"].dtype), "float64")


class WithoutPandasTest(unittest.TestCase):
    """The package where pandas can't be imported."""

    def run_script(self, script):
        blocked = "import sys\nsys.modules['pandas'] = None\nimport timbersim\n" + script
        return subprocess.run([sys.executable, "-B", "-c", blocked], cwd=TESTS.parent, capture_output=True, text=True,
                              check=False)

    def test_everything_but_frames_works(self):
        ran = self.run_script(f"print(timbersim.result_tables({RESULTS!r}).entries)")

        self.assertEqual((ran.stdout, ran.stderr), (f"{ENTRIES}\n", ""))

    def test_frames_say_what_is_missing(self):
        ran = self.run_script("try:\n    timbersim.result_frames({})\n"
                              "except timbersim.PandasMissing as error:\n    print(error)")

        self.assertEqual((ran.stdout, ran.stderr), (
            "results as DataFrames take pandas, which is not installed (pip install pandas)\n", ""))

    def test_pandas_is_not_imported_unless_frames_are_asked_for(self):
        ran = subprocess.run([sys.executable, "-B", "-c", "import sys, timbersim; print('pandas' in sys.modules)"],
                             cwd=TESTS.parent, capture_output=True, text=True, check=False)

        self.assertEqual(ran.stdout, "False\n")


if __name__ == "__main__":
    unittest.main()
