"""Opens the program's windows repeatedly and writes the section of docs/performance.md about them; see
window.sh.

usage: window.py TOOLS_FOLDER DOCUMENT ROUNDS

Leaves with 1 if a figure is outside of its limit.
"""
import datetime
import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile

import document
import machine

TOOLS, DOCUMENT, ROUNDS = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]), int(sys.argv[3])
DATA = pathlib.Path(__file__).resolve().parent.parent / "data"
LISTS = 257
TASK_ROUNDS = 5
MOST_START = 1.6   # times the window that hides the pages
MOST_MEMORY = 80   # MiB
MOST_CHANGE = 150  # ms
MOST_FRAME = 33    # ms


def make_home(home, templates, preview=True):
    """A user's folders with that many templates and no tip at the start."""
    config = home / ".config/orrery"
    folder = home / ".local/share/orrery/template"
    config.mkdir(parents=True)
    folder.mkdir(parents=True)
    hidden = "" if preview else "[Windows]\r\nfrmMain.Preview=0 hidden\r\n"
    (config / "orrery.ini").write_text("[Environment]\r\nShowTips=N\r\n" + hidden)
    for number in range(templates):
        for extension in ("xlsx", "ini"):
            shutil.copy(DATA / f"template/Desk.{extension}",
                        folder / f"Template {number:03}.{extension}")
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


def measured(value, limit, text):
    """The text, in bold and noted if the value is over its limit."""
    if value <= limit:
        return text
    measured.outside = True
    return f"**{text}**"


measured.outside = False


def measure_starts(homes):
    """A row for each case: from the start of the process to its end, cases in turn."""
    cases = {"a bare window of the toolkit": ("few", "bare"),
             "main window, pages hidden": ("plain", "main"),
             "main window, page painted": ("few", "main"),
             "the same with 500 templates": ("many", "main"),
             "all 13 pages painted": ("few", "pages")}
    times = {name: [] for name in cases}
    peaks = dict.fromkeys(cases, 0)
    run(homes["few"], "bare")  # fills the caches of fonts and icons
    for _ in range(ROUNDS):
        for name, (home, mode) in cases.items():
            time, peak, _ = run(homes[home], mode)
            times[name].append(time)
            peaks[name] = max(peaks[name], peak)
    medians = {name: statistics.median(values) for name, values in times.items()}
    bare, hidden = list(medians.values())[:2]
    limited = "main window, page painted"
    for name, time in medians.items():
        limit = MOST_START if name == limited else float("inf")
        yield (f"| {name} | {time:.0f} ms | {time / bare:.2f} | "
               f"{measured(time / hidden, limit, f'{time / hidden:.2f}')} | "
               f"{measured(peaks[name], MOST_MEMORY, f'{peaks[name]:.1f} MiB')} |\n")


def measure_tasks(environment):
    """A row for each thing that the window does, measured inside of it."""
    tasks = {"year changed, to the painted page": (("year", "20"), MOST_CHANGE),
             "large page dragged, to the painted page": (("drag", "40"), MOST_FRAME),
             "outline dragged in the parameter dialog, to the painted sheet": (("outline", "40"), MOST_FRAME),
             "parameter dialog with 10 lists of names": (("parameters", "10"), float("inf")),
             f"parameter dialog with {LISTS} lists of names":
                 (("parameters", str(LISTS)), float("inf"))}
    for name, (arguments, limit) in tasks.items():
        values = [float(run(environment, *arguments)[2].split()[-1]) for _ in range(TASK_ROUNDS)]
        time = statistics.median(values)
        yield f"| {name} | {measured(time, limit, f'{time:.1f} ms')} |\n"


def main():
    with tempfile.TemporaryDirectory() as scratch:
        folder = pathlib.Path(scratch)
        homes = {"few": make_home(folder / "few", 5), "many": make_home(folder / "many", 500),
                 "plain": make_home(folder / "plain", 5, preview=False)}
        before = os.getloadavg()[0]
        starts = "".join(measure_starts(homes))
        tasks = "".join(measure_tasks(homes["few"]))
    section = f"""## The window

From the start of the process to its end, which comes as soon as the window is painted:

| | time | ratio to bare | ratio to hidden | peak memory |
| --- | ---: | ---: | ---: | ---: |
{starts}
In the running window:

| | time |
| --- | ---: |
{tasks}
- Measured on {datetime.date.today()} on {machine.machine()}; load of the machine {before:.1f} before, {os.getloadavg()[0]:.1f} after.
- The template is `Desk.xlsx`. Times are medians of {ROUNDS} processes that took turns, and of {TASK_ROUNDS} in the running window.
- The limits: with the page painted {MOST_START} times the window that hides it, {MOST_MEMORY} MiB, {MOST_CHANGE} ms after
  a change, {MOST_FRAME} ms for each step of dragging. What is outside of its limit is in bold.

`bench/window.sh` measures again and writes this section.
"""
    document.replace_section(DOCUMENT, "window", section)
    print(section)
    sys.exit(1 if measured.outside else 0)


if __name__ == "__main__":
    main()
