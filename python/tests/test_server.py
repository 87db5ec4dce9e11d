"""Sessions with timbersim-run, which TIMBERSIM_RUN names."""

import os
import signal
import unittest

import timbersim

from .driver_case import DRIVES, EARTHMOVING, DriverTests


class ServerTest(DriverTests, unittest.TestCase):
    def test_a_thousand_runs_in_one_session_give_the_same_figures(self):
        session = self.start(EARTHMOVING)
        seen = set()
        for _ in range(1000):
            session.add_statements("SEED 1")
            session.run()
            seen.add(session.results()["ProductionPerHour"])

        self.assertEqual(len(seen), 1)

    def test_a_run_that_never_ends_is_ended_by_its_timeout(self):
        session = self.start(self.model(DRIVES.replace('GET("minutes")', "0").replace("SIMULATECONDITION", "\\")))
        with self.assertRaises(timbersim.Timeout):
            session.run(timeout=0.3)

        with self.assertRaises(ProcessLookupError):
            os.kill(session.pid, 0)

    def test_a_program_that_is_killed_while_it_waits_for_a_value_is_told(self):
        session = self.start(self.model(DRIVES))
        with self.assertRaises(timbersim.ProgramDied) as caught:
            session.run(lambda key: os.kill(session.pid, signal.SIGKILL) or 1)

        self.assertEqual(caught.exception.status, -signal.SIGKILL)

    def test_fifty_thousand_values_are_answered(self):
        session = self.start(self.model(DRIVES.replace("Driven>=3", "Driven>=50000")))
        session.run(lambda key: 1)

        self.assertEqual(session.results()["SimTime"], 50000)

    def test_a_long_trace_comes_whole(self):
        session = self.start(self.model(DRIVES.replace("Driven>=3", "Driven>=50000")))
        session.run(lambda key: 1)

        self.assertEqual(session.trace("log"), "".join(f"drive {number}\n" for number in range(1, 50001)))

    def test_replications_are_averaged_by_the_program(self):
        """Event code runs in the first replication alone, so the drives are counted by their starts."""
        session = self.start(self.model(DRIVES.replace("Driven>=3", "Drive.TotInst>=3")))
        minutes = iter(range(1, 7))
        session.add_statements("MULTISIM 2")
        session.run(lambda key: next(minutes))

        self.assertEqual(session.results()["Drive.MaxDur"], (3 + 6) / 2)


if __name__ == "__main__":
    unittest.main()
