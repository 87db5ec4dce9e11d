"""What holds for both programs, the one with a window and the one without: each has a test file that says so."""

import json
import os
import pathlib
import subprocess
import tempfile
from unittest import mock

import timbersim

EXAMPLES = pathlib.Path(__file__).resolve().parents[2] / "examples"
EARTHMOVING = EXAMPLES / "earthmoving.tbsmx"

# One truck drives three times, for as long as it is told.
DRIVES = """\
GENTYPE Truck;
COMBI Drive;
QUEUE Trucks Truck;

DRAWLINK Take Trucks Drive;
RELEASELINK Give Drive Trucks;

DURATION Drive GET("minutes");
TBINITIALCONTENT Trucks 1;

/<CODE>
SAVEVALUE Driven 0;
ONEND Drive ASSIGN Driven Driven+1;
ONEND Drive PRINT log "drive %d" Driven;
ONEND Drive POST "back at %f" SimTime;
SIMULATECONDITION Driven>=3;
/<CODE>
"""

# As before, but a declaration asks too, and so does each load of the file.
ASKS_AT_LOAD = DRIVES.replace("SAVEVALUE Driven 0;", 'SAVEVALUE Start GET("start");\nSAVEVALUE Driven 0;')


class DriverTests:
    """Mixed into a TestCase that says how to start the session."""

    maxDiff = None
    variable = "TIMBERSIM_RUN"  # of the environment, which has to name the program
    window = False

    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)
        settings = self.folder / "timbersim" / "demosettings.ini"
        settings.parent.mkdir()
        settings.write_text("[General]\nANIMATIONSPEED=1\n", encoding="ascii")  # milliseconds of an animated step
        places = {name: scratch.name for name in ("TMPDIR", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR")}
        patch = mock.patch.dict(os.environ, {**places, "QT_QPA_PLATFORM": "offscreen"})
        patch.start()
        self.addCleanup(patch.stop)

    def start(self, model=None):
        session = timbersim.Session(model, program=os.environ[self.variable], window=self.window)
        self.addCleanup(session.close)
        return session

    def model(self, text, name="model.tbsmx"):
        path = self.folder / name
        path.write_text(text, encoding="utf-8")
        return path

    def test_a_model_is_loaded_run_and_read_with_the_figures_of_the_batch_runner(self):
        batch = subprocess.run([os.environ["TIMBERSIM_RUN"], EARTHMOVING, "-e", "SEED 1", "--quiet", "--json", "-"],
                               capture_output=True, check=True)
        expected = {name: value for name, value in json.loads(batch.stdout).items() if value is not None}
        session = self.start(EARTHMOVING)
        session.add_statements("SEED 1")
        session.run()

        results = session.results()
        self.assertEqual({name: value for name, value in results.items() if value == value}, expected)
        self.assertGreater(results["ProductionPerHour"], 0)
        frames = session.results_frames()
        self.assertEqual(list(frames.activities.index), ["Dump", "Haul", "Load", "Return"])
        self.assertEqual(frames.queues.loc["Embankment", "CurCount"], 2400)
        self.assertEqual(frames.entries.loc["SimTime", "Value"], results["SimTime"])

    def test_there_are_no_results_before_a_run(self):
        self.assertEqual(self.start(EARTHMOVING).results(), {})

    def test_a_path_with_blanks_semicolons_and_umlauts_is_loaded(self):
        session = self.start(self.model(DRIVES, "die Straße; zwei.tbsmx"))
        session.run(lambda key: 5)

        self.assertEqual(session.results()["SimTime"], 15)

    def test_a_file_that_cannot_be_read_is_told_and_the_session_goes_on(self):
        session = self.start()
        with self.assertRaisesRegex(timbersim.ModelError, "No such file or directory"):
            session.load(self.folder / "none.tbsmx")

        session.load(EARTHMOVING)
        session.run()
        self.assertEqual(session.results()["Embankment.CurCount"], 2400)

    def test_values_are_asked_for_and_messages_and_traces_come_back(self):
        minutes = iter([0.1, 2.25, 1e-7])
        keys, messages = [], []

        def on_get(key):
            keys.append(key)
            return next(minutes)

        session = self.start(self.model(DRIVES))
        session.run(on_get, messages.append)

        self.assertEqual(keys, ["minutes"] * 3)
        self.assertEqual(session.results()["SimTime"], 0.1 + 2.25 + 1e-7)
        self.assertEqual(messages, ["back at 0.100000", "back at 2.350000", "back at 2.350000"])
        self.assertEqual(session.trace("log"), "drive 1\ndrive 2\ndrive 3\n")
        with self.assertRaises(timbersim.UnknownTrace):
            session.trace("diary")

    def test_a_get_without_on_get_ends_the_program(self):
        session = self.start(self.model(DRIVES))
        with self.assertRaises(timbersim.UnansweredGet):
            session.run()

        self.assertTrue(session.closed)

    def test_a_declaration_may_ask_while_the_model_is_loaded(self):
        keys = []

        def on_get(key):
            keys.append(key)
            return len(keys)

        session = self.start()
        session.load(self.model(ASKS_AT_LOAD), on_get)
        self.assertEqual(keys, ["start"])
        self.assertEqual(session.results(), {}, "no answer is left over")

        session.run(on_get)
        self.assertEqual(keys.count("minutes"), 3)

    def test_a_model_that_fails_is_told_and_the_session_goes_on(self):
        session = self.start(EARTHMOVING)
        session.add_statements("SEED 5 6")
        with self.assertRaises(timbersim.ModelError) as caught:
            session.run()

        self.assertEqual((caught.exception.code, caught.exception.message), (
            1, "Syntax error in statement: SEED 5 6"))
        session.run()
        self.assertEqual(session.results()["Embankment.CurCount"], 2400)

    def test_runs_one_after_another_do_not_pile_up_statements(self):
        session = self.start(self.model(DRIVES))
        logs = []
        for _ in range(2):
            session.add_statements('AFTERTIMEADVANCE PRINT clock "%f" SimTime')
            session.run(lambda key: 1)
            logs.append(session.trace("clock"))

        self.assertEqual(logs, ["0.000000\n1.000000\n2.000000\n3.000000\n"] * 2)
        session.run(lambda key: 1)
        with self.assertRaises(timbersim.UnknownTrace):
            session.trace("clock")

    def test_statements_that_were_reset_are_forgotten(self):
        session = self.start(self.model(DRIVES))
        session.add_statements("SEED 5 6")
        session.reset()
        session.run(lambda key: 1)

        self.assertEqual(session.results()["SimTime"], 3)

    def test_animation_does_not_change_the_figures(self):
        session = self.start(self.model(DRIVES))
        for on in (True, False):
            session.animate(on)
            session.run(lambda key: 1)

            self.assertEqual(session.results()["SimTime"], 3)
