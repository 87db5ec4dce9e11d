"""The engine, the model layer and the batch runner do without Qt: no program of theirs loads a Qt library."""

import os
import re
import subprocess
import unittest

QT_LIBRARY = re.compile(r"^\s*(?:\S*/)?libQt\S*", re.MULTILINE)


def loaded_libraries(program):
    """What ldd tells of the program: one line per shared library that it loads, those of libraries included."""
    return subprocess.run(["ldd", program], check=True, capture_output=True, text=True).stdout


class WithoutQtTest(unittest.TestCase):
    def assert_loads_no_qt(self, program):
        libraries = loaded_libraries(program)

        self.assertIn("libc.so", libraries)
        self.assertEqual(QT_LIBRARY.findall(libraries), [])

    def test_engine_and_model_load_no_qt(self):
        self.assert_loads_no_qt(os.environ["TIMBERSIM_WITHOUT_QT"])

    def test_batch_runner_loads_no_qt(self):
        self.assert_loads_no_qt(os.environ["TIMBERSIM_RUN"])

    def test_a_qt_library_would_be_seen(self):
        libraries = "\tlibQt6Core.so.6 => /usr/lib/libQt6Core.so.6 (0x00007f)\n\tlibc.so.6 => /lib/libc.so.6 (0x00007f)\n"

        self.assertEqual(QT_LIBRARY.findall(libraries), ["\tlibQt6Core.so.6"])


if __name__ == "__main__":
    unittest.main()
