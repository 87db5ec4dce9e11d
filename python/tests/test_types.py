"""The package and its examples are typed throughout, and what is offered is documented."""

import inspect
import subprocess
import sys
import tempfile
import unittest

import timbersim

from .fake_case import TESTS

PYTHON = TESTS.parent


def check(*arguments):
    return subprocess.run([sys.executable, "-m", "mypy", "--strict", "--no-error-summary", "--cache-dir=/dev/null",
                           *arguments], cwd=PYTHON, capture_output=True, text=True, check=False)


class TypesTest(unittest.TestCase):
    maxDiff = None

    def test_package_and_examples_pass_the_strict_check(self):
        checked = check("timbersim", "examples")

        self.assertEqual((checked.stdout, checked.stderr, checked.returncode), ("", "", 0))

    def test_the_check_finds_a_wrong_call(self):
        with tempfile.NamedTemporaryFile("w", suffix=".py") as wrong:
            wrong.write("import timbersim\ntimbersim.Session(window=1).run(on_get=lambda key: 'five')\n")
            wrong.flush()
            checked = check(wrong.name)

        self.assertIn('Argument "window" to "Session" has incompatible type "int"', checked.stdout)
        self.assertIn('got "str", expected "float"', checked.stdout)

    def test_the_package_says_that_it_is_typed(self):
        self.assertTrue((PYTHON / "timbersim" / "py.typed").exists())


class DocumentationTest(unittest.TestCase):
    def test_all_that_is_offered_has_a_docstring(self):
        offered = [getattr(timbersim, name) for name in timbersim.__all__]
        classes = [thing for thing in offered if inspect.isclass(thing)]
        operations = [member for thing in classes for name, member in vars(thing).items()
                      if not name.startswith("_") and (inspect.isfunction(member) or isinstance(member, property))]
        functions = [thing for thing in offered if inspect.isfunction(thing)]

        self.assertGreaterEqual(len(operations), 10)
        for thing in [timbersim, *classes, *operations, *functions]:
            with self.subTest(thing):
                self.assertTrue(thing.__doc__)

    def test_exceptions_have_one_base(self):
        exceptions = [thing for name in timbersim.__all__ if inspect.isclass(thing := getattr(timbersim, name))
                      and issubclass(thing, Exception)]

        self.assertEqual(len(exceptions), 11)
        self.assertTrue(all(issubclass(thing, timbersim.TimbersimError) for thing in exceptions))


if __name__ == "__main__":
    unittest.main()
