"""timbersim-run over models that nobody meant: it says what is wrong and where, and never dies."""

import os
import pathlib
import re
import unittest

from batchProgram import EXIT_DONE, EXIT_FILE_TROUBLE, EXIT_MODEL_FAILED, BatchCase

SOURCE = pathlib.Path(os.environ.get("TIMBERSIM_SOURCE", pathlib.Path(__file__).parents[2]))
MALFORMED = SOURCE / "tests" / "models" / "malformed"

# File: exit status, and the lines of the file that standard error names, in order.
FILES = {
    # cut short
    "empty": (EXIT_FILE_TROUBLE, []),
    "onlyBlanks": (EXIT_FILE_TROUBLE, []),
    "cutInKeyword": (EXIT_DONE, []),
    "cutInStatement": (EXIT_DONE, [8]),
    "cutInValue": (EXIT_DONE, [10]),
    "cutInCode": (EXIT_DONE, [21]),
    "cutBehindCodeMark": (EXIT_DONE, [21]),
    "tooFewWords": (EXIT_FILE_TROUBLE, [*range(1, 41)]),
    "nodesWithoutType": (EXIT_MODEL_FAILED, [*range(1, 6)]),
    # bytes that aren't the text of a model
    "binary": (EXIT_FILE_TROUBLE, [1, 2, 3, 4, 5, 6, 7]),
    "utf16": (EXIT_FILE_TROUBLE, [1]),
    "oldLineEnds": (EXIT_FILE_TROUBLE, [1]),
    "carriageReturns": (EXIT_DONE, []),
    "byteOrderMark": (EXIT_DONE, []),
    "zeroBytes": (EXIT_MODEL_FAILED, [2, 7, 8, 8, 8, 10, 11, 12, 13, 27, 28]),
    # words
    "unknownKeywords": (EXIT_DONE, []),
    "tooManyWords": (EXIT_DONE, [8]),
    "emptyNames": (EXIT_DONE, [10, 16]),
    "keywordInName": (EXIT_DONE, [14]),
    "keywordInValue": (EXIT_DONE, [11]),
    "positionsNoNumbers": (EXIT_DONE, []),
    "counterTooLarge": (EXIT_DONE, [30]),
    "counterAtTheLimit": (EXIT_DONE, [30]),
    "counterNoNumber": (EXIT_DONE, [30]),
    "counterFirst": (EXIT_DONE, []),
    # names
    "refusedNames": (EXIT_DONE, [2, 3, 7, 8]),
    "duplicateNames": (EXIT_MODEL_FAILED, [6, 7, 12]),
    "elementReplacedByAnother": (EXIT_MODEL_FAILED, [10, 11]),
    # elements that don't go together
    "missingNodes": (EXIT_MODEL_FAILED, [7, 7, 8, 8, 26, 28]),
    "linkToLink": (EXIT_MODEL_FAILED, [8, 8]),
    "refusedPairs": (EXIT_MODEL_FAILED, [7, 8, 8]),
    "fusionOfNothing": (EXIT_MODEL_FAILED, [10, 10, 11, 11]),
    "propertiesFirst": (EXIT_MODEL_FAILED, [1, 2, 3, 4, 5, 7, 8, 9, 12, 13]),
    "linksFirst": (EXIT_MODEL_FAILED, [1, 1, 1, 2, 2, 2, 4, 5, 6, 9, 10]),
    "wrongClasses": (EXIT_DONE, [10, 11, 15, 17, 27]),
    "wrongLinkKinds": (EXIT_DONE, []),
    # types
    "noTypes": (EXIT_MODEL_FAILED, [2, 3, 6, 7]),
    "unknownTypes": (EXIT_MODEL_FAILED, [4, 7, 8]),
    "typeOfAnotherFamily": (EXIT_MODEL_FAILED, []),
    # expressions and code
    "brokenExpressions": (EXIT_MODEL_FAILED, [10, 11, 12, 13, 17]),
    "brokenDeclarations": (EXIT_MODEL_FAILED, [21, 21, 21]),
    "brokenCode": (EXIT_MODEL_FAILED, []),
    "severalCodes": (EXIT_DONE, [34]),
    # nodes that can't do their work
    "forkWithoutOutLinks": (EXIT_MODEL_FAILED, []),
    "assemblerWithoutOutLinks": (EXIT_MODEL_FAILED, []),
    "assemblerOfAmounts": (EXIT_MODEL_FAILED, []),
    "disassemblerOfAmounts": (EXIT_DONE, []),
    "circleOfForks": (EXIT_MODEL_FAILED, []),
    "circleOfDynaforks": (EXIT_MODEL_FAILED, []),
}

MEGABYTE = 1000000
LARGE = 10 * MEGABYTE

MODEL = """\
GENTYPE Soil;
QUEUE Q1 Soil;
COMBI C1;
DRAWLINK L1 Q1 C1;
TBINITIALCONTENT Q1 3;
DURATION C1 2;
"""


def large(text):
    """`text` over and over, to the size of a large file."""
    return text * (LARGE // len(text))


# Name: text of the file, exit status, lines named.
GENERATED = {
    "one long line": (large("x"), EXIT_FILE_TROUBLE, []),
    "a long line behind a model": (MODEL + large("x"), EXIT_DONE, []),
    "a long line of words": (MODEL + "DRAWORDER L1 " + large("1 ") + ";\n", EXIT_DONE, []),
    "a long line of elements": (large("COMBI C1;"), EXIT_MODEL_FAILED, []),
    "brackets": (MODEL + "DURATION C1 " + "(" * 100000 + "5" + ")" * 100000 + ";\n", EXIT_DONE, []),
    "opening brackets": (MODEL + "DURATION C1 " + "(" * 100000 + "5;\n", EXIT_MODEL_FAILED, [7]),
    "closing brackets": (MODEL + "DURATION C1 5" + ")" * 100000 + ";\n", EXIT_MODEL_FAILED, [7]),
    "functions": (MODEL + "DURATION C1 " + "Uniform(" * 100000 + "5" + ",5)" * 100000 + ";\n", EXIT_DONE, []),
    "a long name": (MODEL + "COMBI " + "n" * MEGABYTE + ";\n", EXIT_MODEL_FAILED, [7]),
    "a long type": (MODEL + "QUEUE Q2 " + "n" * MEGABYTE + ";\n", EXIT_DONE, [7]),
    "empty lines": ("\n" * MEGABYTE + MODEL + "DURATION C2 5;\n", EXIT_DONE, [MEGABYTE + 7]),
    "blank lines": (" ;\n" * MEGABYTE, EXIT_FILE_TROUBLE, []),
    "many faults": (MODEL + "DURATION C2 5;\n" * 1000, EXIT_DONE, [*range(7, 1007)]),
    "code without an end": (MODEL + "<CODE>\n" + large("no end in sight \n") + "<CODE>\n", EXIT_DONE, []),
    "code that is not closed": (MODEL + "<CODE>\n" + "SAVEVALUE x 1;\n" * 100000, EXIT_DONE, [7]),
    "code on one line": (MODEL + "<CODE>\n" + large("SAVEVALUE x 1;") + "\n<CODE>\n", EXIT_DONE, []),
    "code on many lines": (MODEL + "<CODE>\n" + large("SAVEVALUE x 1;\n") + "<CODE>\n", EXIT_DONE, []),
    "comment": (MODEL + "<CODE>\n" + large("\\ SAVEVALUE x 1;\n") + "<CODE>\n", EXIT_DONE, []),
    "zero bytes": (large("\0"), EXIT_FILE_TROUBLE, []),
}


class MalformedModelsTest(BatchCase):
    def run_model(self, path):
        """Runs a model. @return exit status, the lines of the file that were named, and standard error."""
        process = self.run_program(str(path), errors="replace")
        named = re.findall(rf"^(?:timbersim-run: )?{re.escape(str(path))}:(\d+): \S", process.err, re.MULTILINE)
        return process.returncode, [int(line) for line in named], process.err

    def testEveryFileIsInTheTable(self):
        self.assertEqual(sorted(path.name for path in MALFORMED.iterdir()), sorted(f"{name}.tbsmx" for name in FILES))

    def testEveryFileHasItsExitStatusAndItsFaultsAreNamedWithTheirLines(self):
        for name, (status, lines) in FILES.items():
            with self.subTest(file=name):
                ended, named, said = self.run_model(MALFORMED / f"{name}.tbsmx")

                self.assertEqual((ended, named), (status, lines), said)

    def testAFileWithoutFaultsOfItsOwnSaysNothing(self):
        for name, (status, lines) in FILES.items():
            with self.subTest(file=name):
                said = self.run_model(MALFORMED / f"{name}.tbsmx")[2]

                self.assertEqual(said == "", status == EXIT_DONE and not lines, said)

    def testAFileWithNothingToRunIsNamed(self):
        for name in ("empty", "onlyBlanks", "binary", "utf16", "oldLineEnds", "tooFewWords"):
            with self.subTest(file=name):
                path = MALFORMED / f"{name}.tbsmx"

                self.assertIn(f"timbersim-run: nothing to run in {path}\n", self.run_model(path)[2])

    def testWhereReadingStoppedEarlyIsSaid(self):
        path = MALFORMED / "keywordInName.tbsmx"

        self.assertIn(f"{path}:14: reading stopped here", self.run_model(path)[2])

    def testALargeFileHasItsExitStatusAndItsFaultsAreNamedWithTheirLines(self):
        for name, (text, status, lines) in GENERATED.items():
            with self.subTest(file=name):
                self.write("large.tbsmx", text)
                ended, named, said = self.run_model("large.tbsmx")

                self.assertEqual((ended, named), (status, lines), said[:1000])


if __name__ == "__main__":
    unittest.main()
