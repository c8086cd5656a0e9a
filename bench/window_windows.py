"""Opens a bare window and the program's repeatedly under Wine; see window_windows.sh.

usage: window_windows.py WINDOW_BENCH ROUNDS
"""
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

PROGRAM, ROUNDS = pathlib.Path(sys.argv[1]).resolve(), int(sys.argv[2])
ROOT = pathlib.Path(__file__).resolve().parent.parent
WINE = ROOT / "scripts/windows/wine.sh"


def run(program, mode):
    """Milliseconds of one process, measured from outside."""
    start = time.monotonic()
    subprocess.run([WINE, program, mode], check=True, timeout=60)
    return (time.monotonic() - start) * 1e3


def install(folder, settings):
    """The program in a folder of its own, with the shipped templates."""
    folder.mkdir()
    program = folder / "window_bench.exe"
    shutil.copy(PROGRAM, program)
    shutil.copytree(ROOT / "data/template", folder / "template")
    (folder / "orrery.ini").write_text("[Environment]\r\nShowTips=N\r\n" + settings)
    return program


def main():
    subprocess.run([WINE, "--end"], check=True)  # an earlier run on another display
    with tempfile.TemporaryDirectory() as scratch:
        shown = install(pathlib.Path(scratch) / "shown", "")
        hidden = install(pathlib.Path(scratch) / "hidden",
                         "[Windows]\r\nfrmMain.Preview=0 hidden\r\n")
        tasks = {"bare window": (shown, "bare"),
                 "main window, pages hidden": (hidden, "main"),
                 "main window, page painted": (shown, "main")}
        for task in tasks.values():
            run(*task)  # starts the services, fills the caches
        times = {name: [] for name in tasks}
        for _ in range(ROUNDS):
            for name, task in tasks.items():
                times[name].append(run(*task))
    subprocess.run([WINE, "--end"], check=True)
    medians = {name: statistics.median(values) for name, values in times.items()}
    bare, without = list(medians.values())[:2]
    for name, time_taken in medians.items():
        print(f"{name:<26}{time_taken:6.0f} ms {time_taken / bare:5.2f} x bare"
              f" {time_taken / without:5.2f} x hidden")


if __name__ == "__main__":
    main()
