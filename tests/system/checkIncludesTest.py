"""scripts/check-includes, run over small trees that stand on the floors of this project."""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

SCRIPTS = pathlib.Path(os.environ["TIMBERSIM_SOURCE"]) / "scripts"

CLEAN_TREE = {
    "language/rounding.h": "#pragma once\n#include <string>\n",
    "flow/link.h": '#pragma once\n#include "language/rounding.h"\n',
    "kernel/network.h": "#pragma once\nclass cLink;\n",
    "kernel/eventLoop.cpp": '#include "kernel/network.h"\n\n#include "flow/link.h"\n',
    "model/reader.cpp": '#include "kernel/network.h"\n',
    "editor/view.h": "#pragma once\n#include <QGraphicsView>\n",
    "app/window.cpp": '#include "editor/view.h"\n\n#include <QtWidgets/QMainWindow>\n',
}


class CheckIncludesTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        (self.root / "scripts").mkdir()
        shutil.copy(SCRIPTS / "floors.txt", self.root / "scripts")
        for name, text in CLEAN_TREE.items():
            self.write(name, text)

    def write(self, name, text):
        path = self.root / "src" / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")

    def check(self):
        command = [sys.executable, "-B", SCRIPTS / "check-includes", self.root]
        return subprocess.run(command, capture_output=True, text=True, check=False)

    def assert_found(self, *findings):
        """The check fails with these findings, given as (file, line, what), and no other."""
        result = self.check()

        expected = [f"{self.root / 'src' / file}:{line}: {what}" for file, line, what in findings]
        self.assertEqual(result.stdout.splitlines(), expected)
        self.assertEqual(result.stderr, "")
        self.assertEqual(result.returncode, 1)

    def assert_nothing_found(self):
        result = self.check()

        self.assertEqual((result.stdout, result.stderr, result.returncode), ("", "", 0))

    def assert_cannot_check(self, message):
        result = self.check()

        self.assertEqual((result.stdout, result.stderr, result.returncode), ("", message + "\n", 2))

    def test_a_tree_whose_includes_go_down_passes(self):
        self.assert_nothing_found()

    def test_an_include_of_a_higher_floor_fails(self):
        self.write("kernel/network.h", '#pragma once\n\n#include "flow/link.h"\n')

        self.assert_found(("kernel/network.h", 3, "runs up from floor 3 to floor 4: flow/link.h"))

    def test_a_header_and_its_source_file_may_stand_on_two_floors(self):
        self.write("language/symbols.h", "#pragma once\n")
        self.write("language/symbols.cpp", '#include "language/symbols.h"\n\n#include "flow/link.h"\n')

        self.assert_nothing_found()

    def test_the_low_one_of_two_such_files_may_not_look_up(self):
        self.write("language/symbols.h", '#include "flow/link.h"\n')

        self.assert_found(("language/symbols.h", 1, "runs up from floor 3 to floor 4: flow/link.h"))

    def test_an_include_of_our_own_file_in_angles_is_ours_all_the_same(self):
        self.write("language/rounding.h", "#include <flow/link.h>\n")
        self.write("flow/link.h", "#pragma once\n")

        self.assert_found(("language/rounding.h", 1, "runs up from floor 1 to floor 4: flow/link.h"))

    def test_a_cycle_on_one_floor_fails(self):
        self.write("flow/link.h", '#pragma once\n#include "kernel/combi.h"\n')
        self.write("kernel/combi.h", '#pragma once\n#include "kernel/queue.h"\n')
        self.write("kernel/queue.h", '#pragma once\n#include "flow/link.h"\n')

        circle = "flow/link.h -> kernel/combi.h -> kernel/queue.h -> flow/link.h"
        self.assert_found(("kernel/queue.h", 2, f"include cycle: {circle}"))

    def test_a_file_that_includes_itself_is_a_cycle(self):
        self.write("flow/link.h", '#include "link.h"\n')

        self.assert_found(("flow/link.h", 1, "include cycle: flow/link.h -> flow/link.h"))

    def test_two_ways_to_one_file_are_no_cycle(self):
        self.write("kernel/queue.h", '#include "flow/link.h"\n#include "kernel/network.h"\n')
        self.write("kernel/combi.h", '#include "flow/link.h"\n#include "kernel/queue.h"\n')

        self.assert_nothing_found()

    def test_qt_below_the_editor_fails(self):
        for file in ("language/rounding.h", "flow/link.h", "kernel/network.h", "model/reader.cpp", "batch/main.cpp"):
            for header in ("QString", "QtCore/QString", "Qt", "qglobal.h"):
                with self.subTest(file=file, header=header):
                    self.write(file, f"#pragma once\n#include <{header}>\n")

                    self.assert_found((file, 2, f"includes Qt below the layers that may: {header}"))
            self.write(file, "#pragma once\n")

    def test_qt_in_quotes_fails_too(self):
        self.write("model/reader.cpp", '#include "QString"\n')

        self.assert_found(("model/reader.cpp", 1, "includes Qt below the layers that may: QString"))

    def test_qt_through_a_neighbour_on_the_same_floor_fails(self):
        self.write("batch/main.cpp", '#include "editor/view.h"\n')

        self.assert_found(("batch/main.cpp", 1, "brings in Qt below the layers that may: editor/view.h"))

    def test_a_file_without_a_floor_fails(self):
        self.write("kernel/misc.h", "#pragma once\n")

        self.assert_found(("kernel/misc.h", 1, "no line of scripts/floors.txt covers this file"))

    def test_a_folder_without_a_floor_fails(self):
        self.write("model/old/reader.h", "#pragma once\n")

        self.assert_found(("model/old/reader.h", 1, "no line of scripts/floors.txt covers this file"))

    def test_an_include_in_quotes_of_no_file_fails(self):
        self.write("model/reader.cpp", '\n\n#include "kernel/netwrok.h"\n')

        self.assert_found(("model/reader.cpp", 3, "no such file below src: kernel/netwrok.h"))

    def test_an_include_through_a_macro_fails(self):
        self.write("model/reader.cpp", "#include CONFIGURATION\n")

        self.assert_found(("model/reader.cpp", 1, "the include doesn't name its file"))

    def test_an_include_in_a_comment_is_none(self):
        self.write("model/reader.cpp", '// #include "app/a.h"\n/*\n#include "app/b.h"\n*/ const char quote = \'"\';  /*\n'
                                       '#include "app/c.h"\n*/\n')

        self.assert_nothing_found()

    def test_an_include_behind_a_comment_keeps_its_line(self):
        self.write("model/reader.cpp", '/* one\n   two */\n  #  include "app/window.h"  // three\n')
        self.write("app/window.h", "#pragma once\n")

        self.assert_found(("model/reader.cpp", 3, "brings in Qt below the layers that may: app/window.h"),
                          ("model/reader.cpp", 3, "runs up from floor 6 to floor 9: app/window.h"))

    def test_all_findings_are_told_by_file_and_line(self):
        self.write("flow/link.h", '#include <QString>\n#include "app/window.h"\n#include "kernel/eventLoop.h"\n')
        self.write("batch/main.cpp", '#include "batch/none.h"\n')

        self.assert_found(("batch/main.cpp", 1, "no such file below src: batch/none.h"),
                          ("flow/link.h", 1, "includes Qt below the layers that may: QString"),
                          ("flow/link.h", 2, "no such file below src: app/window.h"),
                          ("flow/link.h", 3, "no such file below src: kernel/eventLoop.h"))

    def test_the_last_line_that_covers_a_file_decides(self):
        (self.root / "scripts" / "floors.txt").write_text("# all on one floor\n9 */* qt\n1 */*.h qt\n2 flow/link.h qt\n")
        self.write("language/rounding.h", '#include "flow/link.h"\n')
        self.write("flow/link.h", "#pragma once\n")

        self.assert_found(("language/rounding.h", 1, "runs up from floor 1 to floor 2: flow/link.h"))

    def test_a_tree_without_files_is_not_called_clean(self):
        shutil.rmtree(self.root / "src")

        self.assert_cannot_check(f"{self.root}/src: no files to check")

    def test_a_missing_table_is_not_called_clean(self):
        (self.root / "scripts" / "floors.txt").unlink()

        self.assert_cannot_check(f"{self.root}/scripts/floors.txt: No such file or directory")

    def test_a_line_of_the_table_that_makes_no_sense_is_named(self):
        for line in ("one kernel/*", "1", "1 kernel/* Qt", "1 kernel/* qt too"):
            with self.subTest(line=line):
                (self.root / "scripts" / "floors.txt").write_text(f"# floors\n{line}\n")

                self.assert_cannot_check(f"{self.root}/scripts/floors.txt:2: "
                                         f'expected a floor, a pattern and perhaps "qt", found: {line}')


if __name__ == "__main__":
    unittest.main()
