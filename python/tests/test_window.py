"""Sessions with timbersim, which TIMBERSIM names, its window on a display that nobody sees."""

import unittest

from .driver_case import DriverTests


class WindowTest(DriverTests, unittest.TestCase):
    variable = "TIMBERSIM"
    window = True


if __name__ == "__main__":
    unittest.main()
