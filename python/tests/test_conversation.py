"""What a session sends, and what it makes of the answers."""

import math
import unittest

import timbersim

from .fake_case import FakeCase


class ConversationTest(FakeCase):
    def test_load_sends_the_whole_path_blanks_and_semicolons_included(self):
        with self.start("Program") as session:
            session.load("/models/two words;.tbsmx")

        self.assertEqual(self.received(), ["LOAD /models/two words;.tbsmx;"])

    def test_a_relative_path_is_sent_as_an_absolute_one(self):
        with self.start("Program") as session:
            session.load(self.folder.joinpath("..", "pit.tbsmx"))

        self.assertEqual(self.received(), [f"LOAD {self.folder.parent / 'pit.tbsmx'};"])

    def test_a_path_of_bytes_is_sent_as_text(self):
        with self.start("Program") as session:
            session.load("/models/Gr\u00f6\u00dfe.tbsmx".encode())
            with self.assertRaises(ValueError):  # no text of the protocol, which is UTF-8
                session.load(b"/models/\xff.tbsmx")

        self.assertEqual(self.received(), ["LOAD /models/Gr\u00f6\u00dfe.tbsmx;"])

    def test_a_model_given_at_the_start_is_loaded(self):
        self.start("Program", model="/models/pit.tbsmx").close()

        self.assertEqual(self.received(), ["LOAD /models/pit.tbsmx;"])

    def test_a_load_that_fails_is_a_model_error_and_the_session_goes_on(self):
        with self.start("FailsToLoad") as session:
            with self.assertRaises(timbersim.ModelError) as caught:
                session.load("/models/none.tbsmx")

            self.assertEqual((caught.exception.code, caught.exception.message), (0, "No such file or directory"))
            self.assertEqual(caught.exception.__notes__, ["while loading /models/none.tbsmx"])
            self.assertEqual(session.results(), {"SimTime": 5})

    def test_a_model_that_fails_to_load_at_the_start_leaves_no_program(self):
        try:
            self.start("FailsToLoad", model="/models/none.tbsmx")
        except timbersim.ModelError:
            self.assert_gone()  # now, while the traceback keeps what it can alive
        else:
            self.fail("the load has not failed")

    def test_a_load_may_ask_for_values(self):
        asked = []

        with self.start("AsksInLoad") as session:
            with self.assertRaisesRegex(timbersim.ModelError, "after both values"):
                session.load("/models/pit.tbsmx", on_get=lambda key: asked.append(key) or len(asked))

            self.assertEqual(session.results(), {"SimTime": 5}, "no answer is left over")
        self.assertEqual(asked, ["first", "second"])
        self.assertEqual(self.received()[1:], ["RESPONSE_TO_GET 1.0", "RESPONSE_TO_GET 2.0"])

    def test_animate_sends_the_word_in_lower_case(self):
        with self.start("Program") as session:
            session.animate(True)
            session.animate(False)

        self.assertEqual(self.received(), ["SETANIMATE true;", "SETANIMATE false;"])

    def test_a_second_run_resets_the_model_ahead_of_its_statements(self):
        with self.start("Program") as session:
            session.add_statements("SEED 1")
            session.run()
            session.add_statements("SEED 2;")
            session.run()
            session.run()
            session.reset()
            session.run()

        self.assertEqual(self.received(), ["SEED 1;", "RUNMODEL;", "RESETMODEL;", "SEED 2;", "RUNMODEL;",
                                           "RESETMODEL;", "RUNMODEL;", "RESETMODEL;", "RUNMODEL;"])

    def test_a_load_after_a_run_is_no_reason_to_reset(self):
        with self.start("Program") as session:
            session.run()
            session.load("/pit.tbsmx")
            session.run()

        self.assertEqual(self.received(), ["RUNMODEL;", "LOAD /pit.tbsmx;", "RUNMODEL;"])

    def test_a_failed_run_is_a_model_error_and_the_session_goes_on(self):
        with self.start("FailsInRun") as session:
            with self.assertRaises(timbersim.ModelError) as caught:
                session.run()

            self.assertEqual((caught.exception.code, caught.exception.message),
                             (4, "Combi Dig has no in-links. Sorry. "))
            self.assertEqual(session.results(), {"SimTime": 5})

    def test_a_null_is_not_a_number_and_every_figure_a_float(self):
        with self.start("SaysNull") as session:
            results = session.results()

        self.assertEqual([type(value) for value in results.values()], [float] * 3)
        self.assertTrue(math.isnan(results["Dig.AveInt"]))

    def test_a_trace_gets_its_line_ends_back(self):
        with self.start("Program") as session:
            self.assertEqual(session.trace("log"), "first\nsecond\n")

    def test_an_unknown_trace_is_told_at_once_and_the_session_goes_on(self):
        with self.start("Program", timeout=None) as session:
            with self.assertRaisesRegex(timbersim.UnknownTrace, "'diary'"):
                session.trace("diary")

            self.assertEqual(session.trace("log"), "first\nsecond\n")

    def test_values_and_messages_of_a_run_by_hand_are_left_alone(self):
        with self.start("AsksUnasked") as session:
            self.assertEqual(session.results(), {"SimTime": 5})

        self.assertEqual(self.received(), [])

    def test_an_answer_in_pieces_is_put_together(self):
        with self.start("AnswersInPieces") as session:
            session.run()

            self.assertEqual(session.results(), {"SimTime": 5})


class GetTest(FakeCase):
    def test_keys_are_answered_and_messages_delivered_in_order(self):
        events = []

        def on_get(key):
            events.append(("get", key))
            return 2.5

        with self.start("Asks") as session:
            session.run(on_get, lambda text: events.append(("message", text)))

        self.assertEqual(events, [("get", "haul"), ("message", "one done "), ("get", ""), ("message", "")])
        self.assertEqual(self.received(), ["RUNMODEL;", "RESPONSE_TO_GET 2.5", "RESPONSE_TO_GET 2.5"])

    def test_values_are_sent_as_plain_decimals_with_all_digits(self):
        cases = {1: "1.0", -2: "-2.0", 0.1 + 0.2: "0.30000000000000004", 1e-7: "0.0000001", False: "0.0",
                 1.5e22: "15000000000000000000000", 5e-324: f"0.{'0' * 323}5"}
        with self.start("Asks") as session:
            for value in cases:
                session.run(on_get=lambda key: value)

        sent = [line.removeprefix("RESPONSE_TO_GET ") for line in self.received() if line.startswith("RESPONSE")]
        self.assertEqual(sent, [text for text in cases.values() for _ in range(2)])
        self.assertEqual([float(text) for text in cases.values()], list(cases))

    def test_what_is_no_finite_number_is_refused_and_closes_the_session(self):
        for value, error in ((math.nan, ValueError), (math.inf, ValueError), ("5", TypeError), (None, TypeError)):
            with self.subTest(value=value), self.start("Asks") as session:
                with self.assertRaises(error):
                    session.run(on_get=lambda key: value)

                self.assertTrue(session.closed)

    def test_an_exception_in_on_get_ends_the_program_and_comes_out(self):
        def on_get(key):
            raise ZeroDivisionError(key)

        session = self.start("Asks")
        with self.assertRaisesRegex(ZeroDivisionError, "haul"):
            session.run(on_get)

        self.assert_gone()
        with self.assertRaises(timbersim.SessionClosed):
            session.results()

    def test_an_exception_in_on_message_ends_the_program_and_comes_out(self):
        def on_message(text):
            raise KeyboardInterrupt

        session = self.start("Asks")
        with self.assertRaises(KeyboardInterrupt):
            session.run(lambda key: 1, on_message)

        self.assert_gone()
        self.assertTrue(session.closed)

    def test_a_get_without_on_get_is_told_with_its_key_and_closes_the_session(self):
        session = self.start("Asks")
        with self.assertRaises(timbersim.UnansweredGet) as caught:
            session.run()

        self.assertEqual(caught.exception.key, "haul")
        self.assertIn('GET("haul")', str(caught.exception))
        self.assertTrue(session.closed)
        self.assert_gone()

    def test_a_call_within_on_get_is_refused(self):
        session = self.start("Asks")
        with self.assertRaises(timbersim.SessionBusy):
            session.run(lambda key: session.results()["SimTime"])

        self.assert_gone()

    def test_close_within_on_get_ends_the_run(self):
        def on_get(key):
            session.close()
            return 1

        session = self.start("Asks")
        with self.assertRaises(timbersim.SessionClosed):
            session.run(on_get)

        self.assert_gone()


class StatementTest(FakeCase):
    def test_statements_are_sent_with_one_semicolon_each(self):
        with self.start("Program") as session:
            session.add_statements("SEED 5", " MULTISIM 3 ; ", 'PRINT log "%d" SimTime;')

        self.assertEqual(self.received(), ["SEED 5;", "MULTISIM 3;", 'PRINT log "%d" SimTime;'])

    def test_what_only_looks_like_a_command_is_a_statement(self):
        lines = ["RUNMODEL 1;", "LOAD;", "LOADER 5;", "response_to_get 5;", "SETANIMATED x;", "GETRESULTS x;"]
        with self.start("Program") as session:
            session.add_statements(*lines)

        self.assertEqual(self.received(), lines)

    def test_commands_and_what_is_not_one_statement_are_refused_and_nothing_is_sent(self):
        refused = ["RUNMODEL;", "runmodel", "RunModel ;", "GETRESULTS;", "ResetModel", "close;", "LOAD x", "load x;",
                   "GETTRACE log", "setanimate true;", "LOAD x ; ", "RESPONSE_TO_GET 5", "RESPONSE_TO_GETS",
                   "SEED 1\nRUNMODEL;", "SEED 1\rx", "SEED\0 1", "", "  ", ";", "SEED 1; SEED 2", "SEED 1;;",
                   "SEED 1 \\ comment", "PRINT log \ud800"]
        with self.start("Program") as session:
            for text in refused:
                with self.subTest(text=text), self.assertRaises(ValueError):
                    session.add_statements("SEED 7", text)
            session.add_statements("SEED 8")

        self.assertEqual(self.received(), ["SEED 8;"])

    def test_line_ends_in_paths_and_names_are_refused(self):
        with self.start("Program") as session:
            for call, text in ((session.load, "a\nCLOSE;"), (session.trace, "log;\nCLOSE;"), (session.load, "a\0b")):
                with self.subTest(text=text), self.assertRaises(ValueError):
                    call(text)

            self.assertFalse(session.closed)
        self.assertEqual(self.received(), [])


if __name__ == "__main__":
    unittest.main()
