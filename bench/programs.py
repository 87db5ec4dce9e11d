"""The programs that are measured: how they are built, run, and what a run of them costs."""

import dataclasses
import pathlib
import subprocess

ROOT = pathlib.Path(__file__).resolve().parents[1]
RELEASE = ROOT / "build" / "release"
BUILT = ROOT / "build" / "bench"

# Program of bench/: its source and what else it takes.
OWN_PROGRAMS = {
    "cycle": ["limit/cycle.cpp"],
    "servers": ["limit/servers.cpp"],
    "usage": ["usage.cpp"],
    "rounding": ["rounding/rounding.cpp", "-ffp-contract=off", "-I../src", "-I../tests",
                 RELEASE / "libtimbersim_engine.a"],
}


def build():
    for command in (["cmake", "--preset", "release"], ["cmake", "--build", "--preset", "release"]):
        subprocess.run(command, cwd=ROOT, check=True, stdout=subprocess.DEVNULL)
    BUILT.mkdir(parents=True, exist_ok=True)
    for name, words in OWN_PROGRAMS.items():
        subprocess.run(["c++", "-std=c++20", "-O2", "-o", BUILT / name, *words], cwd=ROOT / "bench", check=True)


@dataclasses.dataclass(frozen=True)
class Usage:
    """What one run of a program used, start included."""

    seconds: float  # user and system time
    kilobytes: int  # the most that was in memory
    text: str  # what it printed


def usage_of(command):
    run = subprocess.run([BUILT / "usage", *command], capture_output=True, text=True)
    if run.returncode != 0:
        raise SystemExit(f"bench/run: {' '.join(map(str, command))} failed\n{run.stderr}")
    microseconds, kilobytes = run.stderr.splitlines()[-1].split()
    return Usage(int(microseconds) / 1e6, int(kilobytes), run.stdout)


def engine_usage(path, *options):
    return usage_of([RELEASE / "bin" / "timbersim-run", path, "--seed", "1", "--quiet", "--json", "-", *options])


def model_usage(folder, text, *options):
    """A run of a model given as text."""
    path = folder / "model.tbsmx"
    path.write_text(text)
    return engine_usage(path, *options)
