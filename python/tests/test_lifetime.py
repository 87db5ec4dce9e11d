"""The end of a session: whichever way it comes, the program ends too and leaves no zombie."""

import asyncio
import gc
import os
import subprocess
import sys
import threading
import unittest
import warnings
from unittest import mock

import timbersim
import timbersim.session

from .fake_case import PATIENCE, TESTS, FakeCase


class EndTest(FakeCase):
    def test_the_end_of_the_block_closes_with_leave(self):
        with self.start("Program") as session:
            session.run()

        self.assertTrue(session.closed)
        self.assertEqual(self.log.read_text(encoding="utf-8").splitlines()[-1], "CLOSE;")
        self.assert_gone()

    def test_an_exception_in_the_block_closes_and_comes_out(self):
        with self.assertRaises(ZeroDivisionError), self.start("Program"):
            raise ZeroDivisionError

        self.assert_gone()

    def test_closing_twice_is_closing_once(self):
        session = self.start("Program")
        session.close()
        session.close()

        self.assert_gone()

    def test_a_session_that_is_collected_ends_its_program(self):
        threads = threading.active_count()
        with warnings.catch_warnings():
            warnings.simplefilter("ignore", ResourceWarning)  # which says that nobody closed it
            self.keep_in_a_circle()
            gc.collect()
            self.until(lambda: threading.active_count() == threads)

        self.assert_gone()

    def keep_in_a_circle(self):
        session = timbersim.Session(program=self.program("Program"))
        session.circle = session

    def test_a_program_behind_a_script_ends_with_the_script(self):
        wrapper = self.folder / "wrapper"
        wrapper.write_text(f"#!/bin/sh\n{self.program('ClosesOnlyByForce')} --serve\nexit 1\n", encoding="utf-8")
        wrapper.chmod(0o755)
        with mock.patch.object(timbersim.session, "CLOSE_PATIENCE", 0.1):
            timbersim.Session(program=wrapper).close()

        self.until(self.is_gone)

    def test_an_interrupt_in_a_terminal_is_for_python_alone(self):
        session = self.start("Program")

        self.assertEqual(os.getpgid(session.pid), session.pid)

    def test_no_thread_and_no_open_file_is_left(self):
        def count():
            return threading.active_count(), len(os.listdir("/proc/self/fd"))

        before = count()
        self.start("Program").close()
        with self.assertRaises(timbersim.ProgramDied):
            self.start("DiesInRun").run()

        self.assertEqual(count(), before)

    def test_a_fork_that_collects_its_copy_leaves_the_program_alone(self):
        session = self.start("Program")
        child = os.fork()
        if child == 0:
            session._finalizer()
            os._exit(0)
        self.assertEqual(os.waitpid(child, 0)[1], 0)

        self.assertEqual(session.results(), {"SimTime": 5})


class InterpreterExitTest(FakeCase):
    """Scripts that never close their session."""

    def run_script(self, ending):
        script = (f"import os, signal, sys, threading, timbersim\n"
                  f"session = timbersim.Session(program={str(self.program('Program'))!r})\n{ending}\n")
        return subprocess.run([sys.executable, "-B", "-c", script], cwd=TESTS.parent, capture_output=True, text=True,
                              timeout=PATIENCE, check=False)

    def test_no_program_survives_its_interpreter(self):
        endings = {"pass": 0, "sys.exit(5)": 5, "raise RuntimeError": 1, "session.circle = session": 0,
                   "threading.Thread(target=session.results).start()": 0,
                   "def ask(key):\n    sys.exit(6)\nsession.close()\n"
                   f"session = timbersim.Session(program={str(self.program('Asks'))!r})\nsession.run(ask)": 6}
        for ending, status in endings.items():
            with self.subTest(ending):
                self.log.unlink(missing_ok=True)

                self.assertEqual(self.run_script(ending).returncode, status)
                self.assert_gone()

    def test_a_program_whose_interpreter_is_killed_meets_the_end_of_its_input(self):
        self.assertEqual(self.run_script("os.kill(os.getpid(), signal.SIGKILL)").returncode, -9)

        self.until(self.is_gone)


class ThreadTest(FakeCase):
    def in_thread(self, work):
        """What the work gives, or the exception that leaves it, on a thread of its own."""
        outcome = []

        def record():
            try:
                outcome.append(work())
            except BaseException as error:
                outcome.append(error)

        thread = threading.Thread(target=record)
        thread.start()
        return thread, outcome

    def test_a_session_lives_on_a_thread_that_is_not_the_main_one(self):
        def work():
            with self.start("Asks") as session:
                session.run(lambda key: 1)
                return session.results()

        thread, outcome = self.in_thread(work)
        thread.join(PATIENCE)

        self.assertEqual(outcome, [{"SimTime": 5}])
        self.assert_gone()

    def test_a_session_lives_within_a_running_event_loop_as_in_a_notebook(self):
        async def cell():
            with self.start("Asks") as session:
                session.run(lambda key: 1)
                return session.results()

        self.assertEqual(asyncio.run(cell()), {"SimTime": 5})

    def test_a_call_during_a_call_of_another_thread_is_refused(self):
        session = self.start("AsksWithoutEnd")
        asked, go_on = threading.Event(), threading.Event()

        def on_get(key):
            asked.set()
            go_on.wait(PATIENCE)
            return 1

        thread, outcome = self.in_thread(lambda: session.run(on_get))
        asked.wait(PATIENCE)
        with self.assertRaises(timbersim.SessionBusy):
            session.results()
        session.close()
        go_on.set()
        thread.join(PATIENCE)

        self.assertEqual([type(error) for error in outcome], [timbersim.SessionClosed])
        self.assert_gone()

    def test_close_ends_a_run_of_another_thread(self):
        session = self.start("NeverEndsRun")
        thread, outcome = self.in_thread(session.run)
        self.until(lambda: "RUNMODEL;" in self.received())
        session.close()
        thread.join(PATIENCE)

        self.assertEqual([type(error) for error in outcome], [timbersim.SessionClosed])
        self.assert_gone()

    def test_sessions_run_side_by_side(self):
        results = []

        def work():
            with timbersim.Session(program=program) as session:
                for _ in range(20):
                    session.run(lambda key: 1)
                    results.append(session.results())

        program = self.program("Asks")
        threads = [threading.Thread(target=work) for _ in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join(PATIENCE)

        self.assertEqual(results, [{"SimTime": 5}] * 80)


if __name__ == "__main__":
    unittest.main()
