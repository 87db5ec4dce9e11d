"""Sessions with timbersim, which TIMBERSIM names, its window on a display that nobody sees."""

import os
import unittest

import timbersim

from .driver_case import DriverTests


class WindowTest(DriverTests, unittest.TestCase):
    variable = "TIMBERSIM"
    window = True

    def test_without_a_display_the_end_of_standard_error_says_so(self):
        os.environ["QT_QPA_PLATFORM"] = "xcb"
        os.environ.pop("DISPLAY", None)
        with self.assertRaisesRegex(timbersim.ProgramDied, "could not connect to display"):
            self.start()


if __name__ == "__main__":
    unittest.main()
