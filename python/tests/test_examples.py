"""The examples run as a user runs them, and print tables that make sense."""

import os
import subprocess
import sys
import unittest

from .fake_case import TESTS

EXAMPLES = TESTS.parent / "examples"


def lines_of(example):
    """What an example prints, without empty lines; it must say nothing on standard error."""
    ran = subprocess.run([sys.executable, "-B", EXAMPLES / example], capture_output=True, text=True, check=False,
                         env={"TIMBERSIM_RUN": os.environ["TIMBERSIM_RUN"], "PYTHONPATH": str(TESTS.parent)})
    if ran.returncode != 0 or ran.stderr:
        raise AssertionError(f"{example} ended with {ran.returncode}: {ran.stderr}")
    return [line for line in ran.stdout.splitlines() if line]


class FleetSizeTest(unittest.TestCase):
    def test_each_truck_more_brings_more_soil_and_a_longer_wait(self):
        title, *rows = [line.split() for line in lines_of("fleet_size.py")]

        self.assertEqual(title[0], "trucks")
        self.assertEqual([int(row[0]) for row in rows], list(range(4, 13)))
        for column in (1, 3):
            figures = [float(row[column]) for row in rows]
            self.assertEqual(figures, sorted(set(figures)))

    def test_the_same_seeds_give_the_same_table(self):
        self.assertEqual(lines_of("fleet_size.py"), lines_of("fleet_size.py"))


class MeasuredHaulsTest(unittest.TestCase):
    def test_the_model_is_answered_with_measured_and_wet_hauls(self):
        title, haul, load, back, last, summary = [line.split() for line in lines_of("measured_hauls.py")]

        self.assertEqual(title[:2], ["activity", "asked"])
        self.assertEqual([haul[0], load[0], back[0]], ["haul", "load", "return"])
        self.assertEqual((haul[2], haul[4]), ("7.60", "11.25"), "the shortest dry one, and the longest, wet")
        self.assertEqual((load[2], load[4]), ("2.40", "3.80"))
        self.assertGreaterEqual(int(load[1]), 40)
        self.assertEqual(last[:2], ["load", "40"])
        self.assertIn("an hour", " ".join(summary))


if __name__ == "__main__":
    unittest.main()
