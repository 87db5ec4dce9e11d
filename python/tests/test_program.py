"""Which program a session starts: the argument, then the environment, then PATH."""

import os
import unittest
from unittest import mock

import timbersim
from timbersim._program import SERVER, WINDOW, command_of

from .fake_case import FakeCase


class FindingTest(FakeCase):
    def setUp(self):
        super().setUp()
        self.in_path = self.executable("bin", "timbersim-run")
        self.window_in_path = self.executable("bin", "timbersim")
        self.named = self.executable("named", "server")
        self.given = self.executable("given", "server")
        self.use(PATH=str(self.folder / "bin"))

    def executable(self, folder, name):
        path = self.folder / folder / name
        path.parent.mkdir(exist_ok=True)
        path.write_text("#!/bin/sh\nexit 9\n", encoding="ascii")
        path.chmod(0o755)
        return str(path)

    def use(self, **variables):
        patch = mock.patch.dict(os.environ, variables)
        patch.start()
        self.addCleanup(patch.stop)
        for name in {"TIMBERSIM", "TIMBERSIM_RUN"} - variables.keys():
            os.environ.pop(name, None)

    def test_path_is_looked_through_last(self):
        self.assertEqual(command_of(SERVER, None), [self.in_path, "--serve"])
        self.assertEqual(command_of(WINDOW, None), [self.window_in_path, "--from-python"])

    def test_the_environment_goes_before_the_path(self):
        self.use(TIMBERSIM_RUN=self.named)
        self.assertEqual(command_of(SERVER, None), [self.named, "--serve"])
        self.assertEqual(command_of(WINDOW, None), [self.window_in_path, "--from-python"])

        self.use(TIMBERSIM=self.named)
        self.assertEqual(command_of(WINDOW, None), [self.named, "--from-python"])

    def test_the_argument_goes_before_the_environment(self):
        self.use(TIMBERSIM_RUN=self.named)

        self.assertEqual(command_of(SERVER, self.given), [self.given, "--serve"])

    def test_a_bare_name_is_looked_up_in_path(self):
        self.assertEqual(command_of(SERVER, "timbersim-run"), [self.in_path, "--serve"])

    def test_nothing_found_is_told_with_the_ways_to_say_where_it_is(self):
        self.use(PATH=str(self.folder))

        with self.assertRaisesRegex(timbersim.ProgramNotFound, "timbersim-run is not in PATH.*TIMBERSIM_RUN"):
            timbersim.Session()
        with self.assertRaisesRegex(timbersim.ProgramNotFound, "timbersim is not in PATH.*TIMBERSIM "):
            timbersim.Session(window=True)

    def test_a_program_that_does_not_exist_is_told_with_who_names_it(self):
        self.use(TIMBERSIM_RUN="/nowhere/server")

        with self.assertRaisesRegex(timbersim.ProgramNotFound, "/nowhere/server doesn't exist.*TIMBERSIM_RUN"):
            timbersim.Session()
        with self.assertRaisesRegex(timbersim.ProgramNotFound, "/nowhere/else doesn't exist.*argument program"):
            timbersim.Session(program="/nowhere/else")

    def test_what_cannot_be_executed_is_told(self):
        plain = self.folder / "plain"
        plain.touch(mode=0o644)
        with self.assertRaisesRegex(timbersim.ProgramNotFound, "plain can't be executed"):
            timbersim.Session(program=plain)

        plain.write_bytes(b"\0 no program")
        plain.chmod(0o755)
        with self.assertRaisesRegex(timbersim.ProgramNotFound, "plain can't be started: Exec format error"):
            timbersim.Session(program=plain)


if __name__ == "__main__":
    unittest.main()
