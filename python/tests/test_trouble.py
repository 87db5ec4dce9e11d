"""Programs that die, hang, flood their pipes or talk nonsense: a clear exception, no hang, no process left."""

import unittest
from unittest import mock

import timbersim
import timbersim._channel
import timbersim.session

from .fake_case import PATIENCE, FakeCase

SOON = 0.3  # seconds, for a time-out that is meant to pass


class DeathTest(FakeCase):
    def test_a_death_at_the_start_is_told_with_status_and_last_words(self):
        with self.assertRaises(timbersim.ProgramDied) as caught:
            self.start("DiesAtStart")

        self.assertEqual((caught.exception.status, caught.exception.stderr), (3, "no display\nnothing to be done"))
        self.assertEqual(str(caught.exception),
                         "DiesAtStart ended with exit status 3:\nno display\nnothing to be done")
        self.assert_gone()

    def test_a_death_in_a_run_is_told_with_the_end_of_its_standard_error(self):
        session = self.start("DiesInRun")
        with self.assertRaises(timbersim.ProgramDied) as caught:
            session.run()

        self.assertEqual(caught.exception.status, 7)
        self.assertEqual(caught.exception.stderr.splitlines(), [f"last words {number}" for number in range(960, 1000)])
        self.assert_gone()

    def test_the_last_words_are_waited_for(self):
        session = self.start("DiesAfterItsOutput")
        with mock.patch.object(timbersim._channel, "GRACE", PATIENCE):
            with self.assertRaises(timbersim.ProgramDied) as caught:
                session.run()

        self.assertEqual(caught.exception.status, 4)
        self.assertEqual(caught.exception.stderr.splitlines()[-1], "last words 9999")

    def test_a_signal_is_told_by_its_name(self):
        session = self.start("IsKilledInRun")
        with self.assertRaises(timbersim.ProgramDied) as caught:
            session.run()

        self.assertEqual(caught.exception.status, -9)
        self.assertEqual(str(caught.exception),
                         "IsKilledInRun was ended by SIGKILL, and said nothing on standard error")

    def test_a_death_between_two_calls_is_met_by_the_next(self):
        session = self.start("DiesIdle")
        with self.assertRaises(timbersim.ProgramDied) as caught:
            session.run()

        self.assertEqual(caught.exception.status, 0)
        self.assertTrue(session.closed)
        self.assert_gone()

    def test_a_program_that_closes_its_output_and_lives_on_is_ended(self):
        session = self.start("ClosesOutputAndLives")
        with mock.patch.object(timbersim._channel, "GRACE", SOON), self.assertRaises(timbersim.ProgramDied) as caught:
            session.run()

        self.assertIsNone(caught.exception.status)
        self.assert_gone()

    def test_calls_after_the_death_find_the_session_closed(self):
        session = self.start("DiesInRun")
        with self.assertRaises(timbersim.ProgramDied):
            session.run()

        for call in (session.results, session.run, session.reset, lambda: session.trace("log"),
                     lambda: session.load("/pit.tbsmx"), lambda: session.animate(True),
                     lambda: session.add_statements("SEED 1"), session.results_frames):
            with self.assertRaises(timbersim.SessionClosed):
                call()
        session.close()


class TimeoutTest(FakeCase):
    def test_a_program_that_never_answers_at_the_start_is_ended(self):
        with self.assertRaisesRegex(timbersim.Timeout, "NeverAnswers gave no answer within 0.3 seconds"):
            self.start("NeverAnswers", timeout=SOON)

        self.assert_gone()

    def test_a_run_that_never_ends_is_ended_by_its_own_timeout(self):
        session = self.start("NeverEndsRun", timeout=PATIENCE)
        with self.assertRaises(TimeoutError):
            session.run(timeout=SOON)

        self.assertTrue(session.closed)
        self.assert_gone()

    def test_a_run_that_asks_for_ever_is_ended_too(self):
        session = self.start("AsksWithoutEnd")
        with self.assertRaises(timbersim.Timeout):
            session.run(lambda key: 1, timeout=SOON)

        self.assert_gone()

    def test_the_timeout_of_answers_does_not_bound_a_run(self):
        with self.start("Program", timeout=PATIENCE) as session:
            session._timeout = 0.0
            session.run()
            with self.assertRaises(timbersim.Timeout):
                session.results()

    def test_time_spent_in_on_get_does_not_count(self):
        """Each answer takes longer than the program may."""
        with self.start("Asks") as session:
            now = [0.0]

            def on_get(key):
                now[0] += 100.0
                return 1.0

            with mock.patch("time.monotonic", lambda: now[0]):
                session.run(on_get, timeout=50.0)

    def test_a_program_that_stops_reading_is_ended(self):
        session = self.start("StopsReading")
        session._timeout = SOON
        with self.assertRaises(timbersim.Timeout):
            session.add_statements(*["SAVEVALUE x 1"] * 100000)

        self.assert_gone()

    def test_a_program_that_will_not_close_is_ended_by_force(self):
        session = self.start("ClosesOnlyByForce")
        with mock.patch.object(timbersim.session, "CLOSE_PATIENCE", SOON):
            session.close()

        self.assert_gone()

    def test_messages_without_end_do_not_put_off_the_timeout_of_an_answer(self):
        session = self.start("FloodsWithMessagesForEver")
        session._timeout = SOON
        with self.assertRaises(timbersim.Timeout):
            session.trace("log")

        self.assert_gone()

    def test_standard_error_without_end_does_not_put_off_the_timeout(self):
        session = self.start("FloodsStandardErrorForEver")
        with self.assertRaises(timbersim.Timeout):
            session.run(timeout=SOON)

        self.assert_gone()


class FloodTest(FakeCase):
    def test_more_standard_error_than_a_pipe_holds_stops_nobody_and_its_end_is_read_before_the_answer(self):
        with self.start("FloodsStandardError") as session:
            with self.assertRaisesRegex(timbersim.ModelError, "told behind the noise"):
                session.run()

            self.assertEqual(session.results(), {"SimTime": 5})

    def test_more_messages_than_a_pipe_holds_all_arrive(self):
        messages = []
        with self.start("FloodsWithMessages") as session:
            session.run(on_message=messages.append)

        self.assertEqual(messages, [str(number) for number in range(100000)])

    def test_what_comes_between_two_calls_stops_nobody_and_is_nobodys_answer(self):
        with self.start("FloodsWhileIdle") as session:
            self.until(lambda: "flooded" in self.received())
            session.load("/models/pit.tbsmx")

            self.assertEqual(session.results(), {"SimTime": 5})


class NonsenseTest(FakeCase):
    def test_what_is_no_answer_is_told_and_closes_the_session(self):
        session = self.start("SaysGarbage")
        with self.assertRaisesRegex(timbersim.ProtocolError, "no answer of TIMBERSIM's: .*garbage"):
            session.run()

        self.assertTrue(session.closed)
        self.assert_gone()

    def test_a_program_that_only_echoes_is_found_out(self):
        with self.assertRaisesRegex(timbersim.ProtocolError, "GETRESULTS;"):
            timbersim.Session(program=self.script("#!/bin/sh\nexec cat\n"))

    def script(self, text):
        path = self.folder / "echo"
        path.write_text(text, encoding="ascii")
        path.chmod(0o755)
        return path

    def test_results_that_are_no_figures_are_told(self):
        for behaviour, said in (("SaysNoJson", "no JSON.*'{'"), ("SaysTexts", "no figures by name.*five")):
            with self.subTest(behaviour), self.assertRaisesRegex(timbersim.ProtocolError, said):
                self.start(behaviour)

    def test_a_line_without_end_is_cut_off(self):
        session = self.start("WritesWithoutLineEnd")
        with mock.patch.object(timbersim._channel, "LONGEST_LINE", 1 << 22):
            with self.assertRaisesRegex(timbersim.ProtocolError, "a line of more than 4194304 bytes"):
                session.run()

        self.assert_gone()


if __name__ == "__main__":
    unittest.main()
