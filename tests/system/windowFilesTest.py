"""Models kept as files: drawn, saved, opened again and run; the title, its mark and the questions meanwhile."""

import os
import subprocess
import unittest

from windowDisplay import is_blue
from windowProgram import EDITING, PAUSED, RUNNING, WindowCase

BATCH_PROGRAM = os.environ["TIMBERSIM_RUN"]

UNTITLED = "Untitled - TIMBERSIM"
QUESTION = "TIMBERSIM"
MEMORY = 2 << 30
KEPT = "kept.tbsmx - TIMBERSIM"
KEPT_CHANGED = "kept.tbsmx* - TIMBERSIM"


class DrawnFileTest(WindowCase):
    def batch_results(self, path):
        table = path.with_suffix(".batch.csv")
        subprocess.run([BATCH_PROGRAM, path, "--quiet", "--csv", table], check=True, stdin=subprocess.DEVNULL,
                       stdout=subprocess.DEVNULL)
        return table.read_text(encoding="utf-8")

    def window_results(self, path):
        table = path.with_suffix(".window.csv")
        self.button("run")
        self.save_results("Single Simulation Results", table)
        self.wait_for_state(EDITING)
        return table.read_text(encoding="utf-8")

    def testDrawnModelComesBackAndRunsAsTheBatchRunnerRunsIt(self):
        path = self.folder / "work/yard.tbsmx"
        self.draw("Queue", 100, 100, {0: "Waiting", 1: "2+3"})
        self.draw("Combi", 300, 100, {0: "Load", 1: "5/(1+Waiting.CurCount)"})
        self.draw("Queue", 500, 100, {0: "Loaded"})
        self.join((120, 100), (270, 100))
        self.join((330, 100), (480, 100))

        self.key("ctrl+s")
        self.choose_file("Save", path.with_suffix(""))  # the dialog gives the name its ending
        self.wait_for_title("yard.tbsmx - TIMBERSIM")
        self.key("ctrl+q")
        self.assertEqual(self.wait_for_end(), 0)

        self.launch(path, title="yard.tbsmx - TIMBERSIM")
        results = self.window_results(path)
        self.assertEqual(results, self.batch_results(path))
        self.assertIn("\nLoaded,Default,5.00,5.00,", results)
        self.assertIn("\nLoad,5,0,", results)

    def testDrawnModelIsWhereItWasAndCanBeEdited(self):
        path = self.folder / "work/yard.tbsmx"
        self.draw("Combi", 300, 200, {0: "Load", 1: "7"})
        self.key("ctrl+s")
        self.choose_file("Save", path)
        self.wait_for_title("yard.tbsmx - TIMBERSIM")
        text = path.read_text(encoding="utf-8")
        self.key("ctrl+q")
        self.assertEqual(self.wait_for_end(), 0)

        self.launch(path, title="yard.tbsmx - TIMBERSIM")
        self.select(300, 200)
        self.assertEqual((self.field_text(0), self.field_text(1)), ("Load", "7"))
        self.fill({1: "8"})
        self.accept()
        self.key("ctrl+s")
        self.wait_for_title("yard.tbsmx - TIMBERSIM")

        self.assertIn("\nDURATION Load 7;\n", text)
        self.assertEqual(path.read_text(encoding="utf-8"), text.replace("DURATION Load 7;", "DURATION Load 8;"))


class RunningModelTest(WindowCase):
    def testFileSavedDuringARunIsTheSame(self):
        path = self.folder / "work/endless.tbsmx"
        self.draw_endless()
        self.key("ctrl+s")
        self.choose_file("Save", path)
        self.wait_for_title("endless.tbsmx - TIMBERSIM")
        text = path.read_bytes()
        path.unlink()

        self.button("run")
        self.wait_for_state(RUNNING)
        self.key("ctrl+s")
        self.until(path.exists, "the file")
        self.assertEqual(path.read_bytes(), text)

        self.button("pause")
        self.wait_for_state(PAUSED)
        path.unlink()
        self.key("ctrl+s")
        self.until(path.exists, "the file")
        self.assertEqual(path.read_bytes(), text)
        self.wait_for_state(PAUSED)


class TitleTest(WindowCase):
    def setUp(self):
        super().setUp()
        self.kept = self.folder / "work/kept.tbsmx"
        self.draw("Queue", 100, 100, {0: "Waiting", 1: "3"})
        self.key("ctrl+s")
        self.choose_file("Save", self.kept)
        self.wait_for_title(KEPT)
        self.text = self.kept.read_text(encoding="utf-8")
        self.key("ctrl+n")
        self.wait_for_title(UNTITLED)

    def open_kept(self):
        self.key("ctrl+o")
        self.choose_file("Open TIMBERSIM Model", self.kept)
        self.wait_for_title(KEPT)

    def testOpenedModelIsShown(self):
        self.open_kept()

        self.select(100, 100)
        self.assertEqual((self.field_text(0), self.field_text(1)), ("Waiting", "3"))

    def testMarkComesWithASelectionAndGoesWithASave(self):
        self.open_kept()

        self.select(100, 100)
        self.wait_for_title(KEPT_CHANGED)
        self.key("ctrl+s")

        self.wait_for_title(KEPT)

    def testSaveAsGivesTheDocumentAnotherFile(self):
        self.open_kept()
        self.select(100, 100)
        self.fill({0: "Ready"})
        self.accept()

        self.key("alt+f", "Down", "Down", "Down", "Return")
        self.choose_file("Save", self.folder / "work/other.tbsmx")

        self.wait_for_title("other.tbsmx - TIMBERSIM")
        self.assertIn("QUEUE Ready Default;\n", (self.folder / "work/other.tbsmx").read_text(encoding="utf-8"))
        self.assertEqual(self.kept.read_text(encoding="utf-8"), self.text)

    def testSaveAsAsksBeforeItTakesThePlaceOfAnotherFile(self):
        self.draw("Queue", 300, 100, {})
        self.key("ctrl+s")
        dialog = self.wait_for_title("Save")
        self.type(str(self.kept))
        self.key("Return")
        self.until(lambda: self.active_window() != dialog, "a question")
        self.key("alt+n")
        self.until(lambda: self.active_window() == dialog, "the dialog")
        self.key("Escape")

        self.wait_for_title("Untitled* - TIMBERSIM")
        self.assertEqual(self.kept.read_text(encoding="utf-8"), self.text)

    def testOpenCalledOffKeepsTheModel(self):
        self.open_kept()

        self.key("ctrl+o")
        self.wait_for_title("Open TIMBERSIM Model")
        self.key("Escape")

        self.wait_for_title(KEPT)
        self.select(100, 100)

    def testNewAsksForAChangedModelAlone(self):
        self.open_kept()
        self.select(100, 100)
        self.until(lambda: self.colours_near(100, 100, is_blue, 21), "the queue of the file")

        self.key("ctrl+n")
        self.wait_for_title(QUESTION)
        self.key("Escape")
        self.wait_for_title(KEPT_CHANGED)
        self.key("ctrl+n")
        self.wait_for_title(QUESTION)
        self.key("alt+n")
        self.wait_for_title(UNTITLED)
        self.until(lambda: not self.colours_near(100, 100, is_blue, 21), "an empty place")

        self.key("ctrl+o")
        self.choose_file("Open TIMBERSIM Model", self.kept)
        self.wait_for_title(KEPT)
        self.key("ctrl+n")
        self.wait_for_title(UNTITLED)

    def testOpenAsksForAChangedModel(self):
        self.draw("Queue", 300, 100, {})

        self.key("ctrl+o")
        self.wait_for_title(QUESTION)
        self.key("alt+n")

        self.choose_file("Open TIMBERSIM Model", self.kept)
        self.wait_for_title(KEPT)

    def testClosingAsksAfterASelectionAndNotAfterASave(self):
        self.open_kept()
        self.select(100, 100)

        self.key("ctrl+q")
        self.wait_for_title(QUESTION)
        self.key("Escape")
        self.wait_for_title(KEPT_CHANGED)
        self.key("ctrl+s")
        self.wait_for_title(KEPT)
        self.key("ctrl+q")

        self.assertEqual(self.wait_for_end(), 0)

    def testClosingWithYesSavesAndEnds(self):
        self.open_kept()
        self.select(100, 100)
        self.fill({1: "4"})
        self.accept()

        self.key("ctrl+q")
        self.wait_for_title(QUESTION)
        self.key("alt+y")

        self.assertEqual(self.wait_for_end(), 0)
        self.assertIn("\nTBINITIALCONTENT Waiting 4;\n", self.kept.read_text(encoding="utf-8"))


class StartTest(WindowCase):
    def setUp(self):
        self.make_folder()

    def testFileThatCantBeReadIsToldAndTheWindowStays(self):
        self.launch("none.tbsmx", title="Unable to open file")

        self.key("Return")

        self.wait_for_title(UNTITLED)
        self.find_places()
        self.draw("Queue", 100, 100, {})
        self.assertIn("Untitled* - TIMBERSIM", self.windows())

    def testFileLargerThanTheMemoryIsToldAndTheWindowStays(self):
        path = self.folder / "work/large.tbsmx"
        with open(path, "wb") as file:
            file.truncate(2 * MEMORY)  # it takes no room on the disk

        self.launch(path, title="Unable to open file", wrapper=("prlimit", f"--as={MEMORY}"))
        self.key("Return")

        self.wait_for_title(UNTITLED)

    def testRemarksThatNobodyReadsEndNothing(self):
        path = self.folder / "work/bad.tbsmx"
        path.write_text("DURATION Missing 5;\n", encoding="ascii")
        reader, writer = os.pipe()
        os.close(reader)
        self.addCleanup(os.close, writer)

        self.launch(path, title="Information.", output=writer)
        self.key("Return")

        self.wait_for_title("bad.tbsmx - TIMBERSIM")

    def testRemarksOnAFileHoldNothingUp(self):
        path = self.folder / "work/short.tbsmx"
        path.write_text("GENTYPE Default;\nQUEUE MYQUEUE Default;\nPOSNODE MYQUEUE 100 100;\nCOMBI Late;\n",
                        encoding="ascii")
        self.says = ('timbersim: Line 3: reading stopped here: the line holds an element keyword but begins with '
                     '"POSNODE"\n')
        self.launch(path, title="Information.")

        self.find_places()
        self.draw("Queue", 100, 100, {})
        self.assertIn("Information.", self.windows())
        self.key("ctrl+q")
        self.wait_for_title(QUESTION)
        self.key("alt+n")

        self.assertEqual(self.wait_for_end(), 0)


if __name__ == "__main__":
    unittest.main()
