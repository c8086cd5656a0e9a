"""Opens the program's windows repeatedly and prints medians and ratios; see window.sh.

usage: window.py TOOLS_FOLDER ROUNDS
"""
import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile

TOOLS, ROUNDS = pathlib.Path(sys.argv[1]).resolve(), int(sys.argv[2])
DATA = pathlib.Path(__file__).resolve().parent.parent / "data"
LISTS = 257


def make_home(home, templates):
    """A user's folders with that many templates and no tip at the start."""
    config = home / ".config/orrery"
    folder = home / ".local/share/orrery/template"
    config.mkdir(parents=True)
    folder.mkdir(parents=True)
    (config / "orrery.ini").write_text("[Environment]\r\nShowTips=N\r\n")
    for number in range(templates):
        shutil.copy(DATA / "template/Desk.xlsx", folder / f"Template {number:03}.xlsx")
    return {**os.environ, "HOME": str(home), "XDG_CONFIG_HOME": str(home / ".config"),
            "XDG_DATA_HOME": str(home / ".local/share")}


def run(environment, *arguments):
    """Milliseconds and peak memory in MiB of one process, and its standard error."""
    done = subprocess.run([TOOLS / "measure", TOOLS / "window_bench", *arguments],
                          env=environment, capture_output=True, text=True, timeout=60)
    if done.returncode != 0:
        sys.exit(f"failed: {' '.join(arguments)}\n{done.stderr}")
    microseconds, kibibytes = map(int, done.stdout.split())
    return microseconds / 1e3, kibibytes / 1024, done.stderr


def main():
    with tempfile.TemporaryDirectory() as scratch:
        few = make_home(pathlib.Path(scratch) / "few", 5)
        many = make_home(pathlib.Path(scratch) / "many", 500)
        cases = {"bare window": (few, "bare"), "5 templates": (few, "main"),
                 "500 templates": (many, "main")}
        times = {name: [] for name in cases}
        peaks = dict.fromkeys(cases, 0)
        dialogs = {10: [], LISTS: []}
        run(few, "bare")  # fills the caches of fonts and icons
        for _ in range(ROUNDS):
            for name, (environment, mode) in cases.items():
                time, peak, _ = run(environment, mode)
                times[name].append(time)
                peaks[name] = max(peaks[name], peak)
            for lists, opened in dialogs.items():
                opened.append(float(run(few, "parameters", str(lists))[2].split()[-1]))
        bare = statistics.median(times["bare window"])
        for name, values in times.items():
            time = statistics.median(values)
            print(f"{name:32} {time:7.0f} ms {time / bare:5.2f} x bare {peaks[name]:6.1f} MiB")
        for lists, values in dialogs.items():
            print(f"parameter dialog, {lists:3} name lists  {statistics.median(values):7.0f} ms")


if __name__ == "__main__":
    main()
