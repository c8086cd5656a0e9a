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


def main():
    subprocess.run([WINE, "--end"], check=True)  # an earlier run on another display
    with tempfile.TemporaryDirectory() as scratch:
        folder = pathlib.Path(scratch)
        program = folder / "window_bench.exe"
        shutil.copy(PROGRAM, program)
        shutil.copytree(ROOT / "data/template", folder / "template")
        (folder / "orrery.ini").write_text("[Environment]\r\nShowTips=N\r\n")
        times = {"bare": [], "main": []}
        for mode in times:
            run(program, mode)  # starts the services, fills the caches
        for _ in range(ROUNDS):
            for mode, values in times.items():
                values.append(run(program, mode))
    subprocess.run([WINE, "--end"], check=True)
    bare, window = (statistics.median(times[mode]) for mode in ("bare", "main"))
    print(f"bare window {bare:6.0f} ms")
    print(f"main window {window:6.0f} ms {window / bare:5.2f} x bare")


if __name__ == "__main__":
    main()
