"""Saves of the window that can't be made: the file stays, the user is told, and nothing counts as saved."""

import unittest

from fullDisk import DISK, on_small_disk, seen_by
from windowProgram import WindowCase

MODEL = """\
GENTYPE Default;
COMBI Load;
POSNODE Load 100 100;
RANKCOUNT 1;
"""
TITLE = "m.tbsmx - TIMBERSIM"
CHANGED = "m.tbsmx* - TIMBERSIM"
REFUSED = "Unable to open file"


class RefusedSaveTest(WindowCase):
    def setUp(self):
        self.make_folder()
        self.place = self.folder / "work/place"  # of the model and of nothing else
        self.place.mkdir()
        self.model = self.place / "m.tbsmx"
        self.model.write_text(MODEL, encoding="ascii")

    def change(self, model, **options):
        """Opens the model and changes it."""
        self.launch(model, title=TITLE, **options)
        self.find_places()
        self.draw("Queue", 400, 200, {})
        self.wait_for_title(CHANGED)

    def save_in_vain(self):
        """Saves, is told, and is asked at the end of the program: the first by Ctrl+S, the second by Yes."""
        self.key("ctrl+s")
        self.wait_for_title(REFUSED)
        self.key("Return")
        self.wait_for_title(CHANGED)

        self.key("ctrl+q")
        self.wait_for_title("TIMBERSIM")
        self.key("alt+y")
        self.wait_for_title(REFUSED)
        self.key("Return")
        self.wait_for_title(CHANGED)

    def save_well(self):
        self.key("ctrl+s")
        self.wait_for_title(TITLE)
        self.key("ctrl+q")
        self.assertEqual(self.wait_for_end(), 0)

    def assert_kept(self, folder, *others):
        self.assertEqual((folder / "m.tbsmx").read_text(encoding="ascii"), MODEL)
        self.assertEqual(sorted(path.name for path in folder.iterdir()), sorted(["m.tbsmx", *others]))

    def assert_saved(self, folder):
        self.assertIn("\nQUEUE Queue2 Default;\n", (folder / "m.tbsmx").read_text(encoding="ascii"))
        self.assertEqual([path.name for path in folder.iterdir()], ["m.tbsmx"])

    def testFullDisk(self):
        self.change(f"{DISK}/m.tbsmx", wrapper=on_small_disk(self, self.model, 65536, 0))
        disk = seen_by(self.process, DISK)

        self.save_in_vain()
        self.assert_kept(disk, "filling")

        (disk / "filling").unlink()
        self.key("ctrl+s")
        self.wait_for_title(TITLE)
        self.assert_saved(disk)

    def testFolderWithoutAPermissionToWrite(self):
        self.addCleanup(self.place.chmod, 0o755)
        self.change(self.model)
        self.place.chmod(0o555)

        self.save_in_vain()
        self.assert_kept(self.place)

        self.place.chmod(0o755)
        self.save_well()
        self.assert_saved(self.place)

    def testReadOnlyFile(self):
        self.change(self.model)
        self.model.chmod(0o444)

        self.save_in_vain()
        self.assert_kept(self.place)

        self.model.chmod(0o644)
        self.save_well()
        self.assert_saved(self.place)

    def testSymbolicLink(self):
        link = self.folder / "work/m.tbsmx"
        link.symlink_to("place/m.tbsmx")
        self.change(link)

        self.save_in_vain()

        self.assertEqual(str(link.readlink()), "place/m.tbsmx")
        self.assert_kept(self.place)
        self.assertFalse((self.folder / "work/m.tbsmx.new").exists())

    def testFolderThatIsGone(self):
        self.change(self.model)
        away = self.folder / "work/away"
        self.place.rename(away)

        self.save_in_vain()
        self.assert_kept(away)

        away.rename(self.place)
        self.save_well()
        self.assert_saved(self.place)


if __name__ == "__main__":
    unittest.main()
