"""timbersim-run over the models of tests/conformance: every figure, text and trace is the one worked out beside it."""

import hashlib
import itertools
import json
import os
import pathlib
import re
import unittest
import urllib.parse

from batchProgram import EXIT_DONE, EXIT_MODEL_FAILED, EXIT_STOPPED, BatchCase

SOURCE = pathlib.Path(os.environ.get("TIMBERSIM_SOURCE", pathlib.Path(__file__).parents[2]))
MODELS = SOURCE / "tests" / "conformance" / "models"
EXPECTED = SOURCE / "tests" / "conformance" / "expected"

TRACE_HEADER = (
    b"*SNo*,*SimTime*,*Action*,*NodeName*,*AttemptResult*,*ActStartTime*,*ActEndTime*,*QCurCount*,*QTotCount*,"
    b"*FStrength*,*FSucc*\n"
)
TRACES_KEPT = 3  # of a case; it may have more replications

# Phase and code of a failure: exit status. What else the code tells stays inside the program.
FAILURE_STATUS = {
    **{("run", code): EXIT_MODEL_FAILED for code in (0, 1, 2, 3, 4)},
    ("run", 5): EXIT_STOPPED,
}
STATEMENT_FAILURE = 1

# What the reader says of an expression that still fails at the end of the file, as opposed to its other warnings.
EXPRESSION_WARNING = re.compile(r':\d+: (?:declaration ".*": |[A-Z]+ of ".*", ".*": )')

FILES = {"--json": "results.json", "--csv": "results.csv", "--replications-csv": "lines.csv"}
ALL_OUTPUTS = [*itertools.chain(*FILES.items()), "--prints", "prints", "--trace", "trace.csv", "--quiet"]


def case_names(folder, suffix):
    return sorted(path.name.removesuffix(suffix) for path in folder.iterdir())


def figure(value):
    """A figure so that it equals another where all bits do: -0.0 is not 0.0. None for what is no finite number."""
    if isinstance(value, int):
        return value
    if value is None or float(value) - float(value) != 0.0:
        return None
    return value.hex()


def figures(values):
    return {key: figure(value) for key, value in values.items()}


def replication_lines(case):
    """The lines of the replications, which continue the header; a single run that came to its end has none."""
    text = ",".join(["Num", *case["columns"]])
    if len(case["rows"]) == 1 and case["error"] is None:
        return text
    for number, row in enumerate(case["rows"], 1):
        text += f"{number}," + "".join(f"{float(value):.6f}," for value in row) + "\n"
    return text


def means_of(rows):
    """Of each column, by Welford's recurrence, as the program takes them: the last bit depends on the way."""
    means = [0.0] * len(rows[0])
    for count, row in enumerate(rows, 1):
        means = [mean + (float(value) - mean) / count for mean, value in zip(means, row, strict=True)]
    return means


def described(trace, shown):
    """A trace as a case describes it, with `shown` lines in full."""
    first = trace.decode("utf-8").splitlines(keepends=True)[:shown]
    return {"first": first, "lines": trace.count(b"\n"), "sha256": hashlib.sha256(trace).hexdigest()}


class ConformanceFolderTest(unittest.TestCase):
    def testThereAreModels(self):
        self.assertNotEqual(case_names(MODELS, ".tbsmx"), [])

    def testEveryModelHasItsExpectationAndTheReverse(self):
        self.assertEqual(case_names(MODELS, ".tbsmx"), case_names(EXPECTED, ".json"))


class ConformanceTest(BatchCase):
    """One test for each model, which `add_tests` makes. Each part of what is expected fails by itself."""

    def run_model(self, name, case, keys, *options):
        """Runs a model with answers to `keys` alone."""
        answers = [word for key in keys for word in ("--get", f"{key}={case['gets_answered'][key]!r}")]
        return self.run_program(str(MODELS / f"{name}.tbsmx"), "--seed", str(case["seed"]), *answers, *options)

    def check(self, name):
        case = json.loads((EXPECTED / f"{name}.json").read_text(encoding="utf-8"))
        process = self.run_model(name, case, dict.fromkeys(case["gets"]), *ALL_OUTPUTS)
        parts = [self.check_end, self.check_traces, self.check_prints, self.check_asked_keys]
        if case["rows"]:
            parts += [self.check_columns, self.check_rows]
        else:
            parts += [self.check_that_no_figures_were_written]
        if case["error"] is None:
            parts += [self.check_results, self.check_csv, self.check_replication_file]
        for part in parts:
            with self.subTest(part=part.__name__.removeprefix("check_")):
                part(name, case, process)

    def check_end(self, name, case, process):
        """Exit status, and all that standard error says: warnings of the reader, messages, the failure."""
        said = process.err.splitlines(keepends=True)
        warnings = list(itertools.takewhile(lambda line: line.startswith(f"{MODELS / name}.tbsmx:"), said))
        failing = [line for line in warnings if EXPRESSION_WARNING.search(line)]
        self.assertEqual(len(failing), case["load_warnings"], warnings)

        rest = "".join(said[len(warnings) :])
        messages = "".join(f"MESSAGE {text}\n" for text in case["messages"])
        if case["error"] is None:
            self.assertEqual((rest, process.returncode), (messages, EXIT_DONE))
        else:
            self.check_failure(case, process, rest, messages)

    def check_failure(self, case, process, said, messages):
        """Behind the message may stand the element and the expression, which a case doesn't tell."""
        error = case["error"]
        self.assertEqual(process.returncode, FAILURE_STATUS.get((error["phase"], error["code"])))

        count = len(case["rows"])
        note = f"Partial results: {count} replication{'' if count == 1 else 's'}\n"
        head = f"{messages}timbersim-run: the model failed.\n{error['message']}\n"
        tail = note if count else "No results: no replication came to its end.\n"
        pattern = f"{re.escape(head)}(?:In (?:link|queue).*\n)?(?P<expression>Expression: .*\n)?{re.escape(tail)}"
        self.assertRegex(said, rf"\A{pattern}\Z")
        if error["code"] == STATEMENT_FAILURE:  # the message holds the statement
            self.assertIsNone(re.match(pattern, said)["expression"])

    def check_traces(self, name, case, process):
        """The header begins the trace of a replication. A failure before anything was traced leaves it unwritten."""
        whole = (self.folder / "trace.csv").read_bytes() if "trace.csv" in self.made() else b""
        before, *traces = whole.split(TRACE_HEADER)
        if case["error"] is not None and len(traces) == len(case["rows"]):
            traces.append(b"")
        self.assertEqual((before, len(traces)), (b"", len(case["rows"]) + (case["error"] is not None)))

        self.assertEqual(len(traces[:TRACES_KEPT]), len(case["traces"]))
        for trace, kept in zip(traces, case["traces"]):
            self.assertEqual(described(TRACE_HEADER + trace, len(kept["first"])), kept)

    def check_prints(self, name, case, process):
        made = {
            urllib.parse.unquote(path.name.removesuffix(".txt")): path.read_bytes().decode("utf-8")
            for path in (self.folder / "prints").iterdir()
        }
        self.assertEqual(made, case["prints"])

    def check_asked_keys(self, name, case, process):
        """A key without an answer ends the run by its name, so the keys show in the order of their first question."""
        keys = list(dict.fromkeys(case["gets"]))
        for position, key in enumerate(keys):
            unanswered = self.run_model(name, case, keys[:position])
            self.assertIn(f'\nNo answer to GET("{key}"): ', unanswered.err)

    def check_columns(self, name, case, process):
        header = ",".join(["Num", *case["columns"]])
        self.assertEqual(self.read("lines.csv")[: len(header)], header)

    def check_rows(self, name, case, process):
        """The lines have six digits behind the point; to the last bit a row shows through the means alone."""
        self.assertEqual(self.read("lines.csv").splitlines(), replication_lines(case).splitlines())

        made = json.loads(self.read("results.json"))
        means = dict(zip(case["columns"], means_of(case["rows"]), strict=True))
        self.assertEqual(figures({column: made.get(column) for column in means}), figures(means))

    def check_that_no_figures_were_written(self, name, case, process):
        self.assertEqual(sorted(set(self.made()) & set(FILES.values())), [])

    def check_results(self, name, case, process):
        self.assertEqual(figures(json.loads(self.read("results.json"))), figures(case["results"]))

    def check_csv(self, name, case, process):
        self.assertEqual(self.read("results.csv"), case["csv"])

    def check_replication_file(self, name, case, process):
        self.assertEqual(self.read("lines.csv"), case["replication_file"])


def add_tests(cases):
    for name in cases:
        setattr(ConformanceTest, f"testAgreesWith_{name}", lambda self, name=name: self.check(name))


add_tests(case_names(MODELS, ".tbsmx"))


if __name__ == "__main__":
    unittest.main()
