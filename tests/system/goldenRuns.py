"""The golden runs: examples with a fixed seed, whose outputs are held to the last byte.

The outputs stand in tests/golden, a folder for each run. scripts/renew-golden writes them anew.
"""

import os
import pathlib
import subprocess

SOURCE = pathlib.Path(os.environ.get("TIMBERSIM_SOURCE", pathlib.Path(__file__).parents[2]))
GOLDEN = SOURCE / "tests" / "golden"

# Name of the run: model, options. The trace of a run is long; of many replications it is kept for a few only.
RUNS = {
    "earthmoving": ("earthmoving.tbsmx", ["--trace", "trace.csv"]),
    "earthmoving-replicated": ("earthmoving.tbsmx", ["--replications", "20"]),
    "quarry": ("quarry.tbsmx", []),
    "quarry-traced": ("quarry.tbsmx", ["--replications", "2", "--trace", "trace.csv"]),
    "paving": ("paving.tbsmx", ["--trace", "trace.csv"]),
    "concrete-pour": ("concrete-pour.tbsmx", ["--trace", "trace.csv"]),
    "concrete-pour-replicated": ("concrete-pour.tbsmx", ["--replications", "20"]),
    "precast-yard": ("precast-yard.tbsmx", ["--trace", "trace.csv"]),
    "precast-yard-replicated": ("precast-yard.tbsmx", ["--replications", "20"]),
    "tunnel-mucking": ("tunnel-mucking.tbsmx", ["--trace", "trace.csv"]),
    "tunnel-mucking-replicated": ("tunnel-mucking.tbsmx", ["--replications", "20"]),
}

OUTPUTS = ["--json", "results.json", "--csv", "results.csv", "--replications-csv", "replications.csv",
           "--prints", "prints"]


def run(program, name, folder):
    """Runs the golden run `name` with all outputs in `folder`, the tables as tables.txt."""
    model, options = RUNS[name]
    command = [program, SOURCE / "examples" / model, "--seed", "1", "--quiet", *OUTPUTS, *options]
    done = subprocess.run(command, cwd=folder, stdin=subprocess.DEVNULL, capture_output=True, check=True)
    if done.stderr:
        raise RuntimeError(f"{name} said on standard error: {done.stderr!r}")
    (pathlib.Path(folder) / "tables.txt").write_bytes(done.stdout)


def contents(folder):
    """The files below `folder`: relative path to bytes."""
    files = sorted(path for path in pathlib.Path(folder).rglob("*") if path.is_file())
    return {path.relative_to(folder).as_posix(): path.read_bytes() for path in files}
