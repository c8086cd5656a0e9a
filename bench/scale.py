#!/usr/bin/env python3
"""Times the command with large valid inputs, each in two sizes, and says which stay within limits.

usage: scale.py ORRERY_CLI MEASURE [NAME...]

Makes workbooks with very many of one thing (tests/hostile/heavy.py): hyperlinks, parts, tables,
names, relationships, sheets, objects, namespaces, blanks. The larger size must be done within 2 s
and 200 MiB; twice the size should take about twice the time. Prints seconds, peak memory in MiB,
the ratio of the times, and the exit code (1 is a refusal with an error message). MEASURE is the
program of that name from this folder; the machine must be idle.
"""
import os
import pathlib
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
sys.path.append(str(HERE.parent / "tests" / "hostile"))
import heavy  # noqa: E402

SECONDS, MEBIBYTES = 2, 200
LONGEST = 30  # seconds after which a run is killed
ROUNDS = 3     # of which the fastest counts


def environment(folder):
    return {**os.environ, "HOME": str(folder), "XDG_CONFIG_HOME": str(folder / "config"),
            "XDG_DATA_HOME": str(folder / "data")}


def measure(command, folder):
    """(seconds, MiB, exit code) of one run; seconds are None if it was killed."""
    script = 'ulimit -v 8000000; exec timeout "$0" "$@"'
    done = subprocess.run(["bash", "-c", script, str(LONGEST), *map(str, command)],
                          capture_output=True, text=True, env=environment(folder), check=False)
    if done.returncode in (124, 137) or not done.stdout.strip():
        return None, 0, done.returncode
    microseconds, kibibytes = map(int, done.stdout.split()[-2:])
    return microseconds / 1e6, kibibytes / 1024, done.returncode


def run(cli, tool, case, folder):
    """The fastest of several runs with one workbook; a slow one is not repeated."""
    path = folder / case.file_name
    path.write_bytes(case.data)
    path.with_suffix(".ini").write_text(case.parameters, encoding="utf-8")
    command = [tool, cli, "generate", path, 2027, "--engine", "builtin", "--output-folder",
               folder / "output"]
    runs = [measure(command, folder)]
    while len(runs) < ROUNDS and runs[0][0] is not None and runs[0][0] < 5:
        runs.append(measure(command, folder))
    return min(runs, key=lambda one: (one[0] is None, one[0]))


def shown(seconds):
    return f">{LONGEST}" if seconds is None else f"{seconds:.2f}"


def verdict(seconds, memory):
    if seconds is None or seconds > SECONDS:
        return "too slow"
    return "too large" if memory > MEBIBYTES else "passes"


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    cli, tool = (pathlib.Path(name).resolve() for name in sys.argv[1:3])
    wanted = sys.argv[3:] or [one.name for one in heavy.ALL]
    print(f"{'input':28}{'count':>9}{'s half':>8}{'s':>8}{'ratio':>7}{'MiB half':>9}{'MiB':>7}"
          f"{'ended':>6}  within {SECONDS} s and {MEBIBYTES} MiB")
    for one in heavy.ALL:
        if one.name not in wanted:
            continue
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            half = run(cli, tool, one.case(0.5), folder)
            whole = half if half[0] is None else run(cli, tool, one.case(1), folder)
        ratio = f"{whole[0] / half[0]:.1f}" if whole[0] and half[0] else "-"
        print(f"{one.name:28}{one.count:>9}{shown(half[0]):>8}{shown(whole[0]):>8}{ratio:>7}"
              f"{half[1]:>9.0f}{whole[1]:>7.0f}{whole[2]:>6}  {verdict(*whole[:2])}", flush=True)


main()
