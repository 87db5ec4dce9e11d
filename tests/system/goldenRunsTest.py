"""Every golden run gives the bytes that are kept, twice."""

import os
import tempfile
import unittest

import goldenRuns

PROGRAM = os.environ["TIMBERSIM_RUN"]


class GoldenRunsTest(unittest.TestCase):
    maxDiff = 2000

    def outputs(self, name):
        with tempfile.TemporaryDirectory() as folder:
            goldenRuns.run(PROGRAM, name, folder)
            return goldenRuns.contents(folder)

    def testOutputsAreThoseKept(self):
        for name in goldenRuns.RUNS:
            with self.subTest(run=name):
                kept = goldenRuns.contents(goldenRuns.GOLDEN / name)
                made = self.outputs(name)
                self.assertEqual(sorted(made), sorted(kept))
                for file, content in kept.items():
                    self.assertEqual(made[file].splitlines(), content.splitlines(), file)
                    self.assertEqual(made[file], content, file)

    def testASecondRunGivesTheSameBytes(self):
        for name in goldenRuns.RUNS:
            with self.subTest(run=name):
                self.assertEqual(self.outputs(name), self.outputs(name))

    def testEveryKeptFolderBelongsToARun(self):
        folders = sorted(path.name for path in goldenRuns.GOLDEN.iterdir())
        self.assertEqual(folders, sorted(goldenRuns.RUNS))

    def testEveryExampleHasAGoldenRun(self):
        examples = sorted(path.name for path in (goldenRuns.SOURCE / "examples").glob("*.tbsmx"))
        self.assertEqual(examples, sorted({model for model, _ in goldenRuns.RUNS.values()}))


if __name__ == "__main__":
    unittest.main()
