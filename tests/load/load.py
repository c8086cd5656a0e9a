"""Many years in one call: each is written or fails with one clear error, no workbook is damaged, no
process and no file is left behind, and the program's memory does not grow.

usage: load.py ORRERY_CLI TEMPLATE builtin|libreoffice YEARS [KILLS [SEED]]

TEMPLATE is an .xlsx whose calendar has twelve English month sheets followed by the year sheet. With
KILLS the spreadsheet program is killed that many times, at random moments from the seed.
"""
import calendar
import multiprocessing
import os
import pathlib
import random
import re
import signal
import subprocess
import sys
import tempfile
import time
import zipfile
from collections import Counter

import openpyxl

FIRST_YEAR = 2001
SPREADSHEET_PROGRAM = "soffice.bin"
# Sanitizers hold on to freed memory and to that of threads, so memory is not measured with them.
MEASURED = os.environ.get("ORRERY_SANITIZE") != "ON"
LOST = re.compile(r"Error Info: ([^\n]+\n)?[^\n]*LibreOffice[^\n]*"
                  r"(does not answer any more|could not be started)[^\n]*\n")


def check(condition, message):
    if not condition:
        sys.exit(f"FAILED: {message}")


def processes():
    """The number, name, parent and command of each process."""
    for folder in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            fields = (folder / "stat").read_text()
            name, rest = fields[fields.index("(") + 1:].rsplit(")", 1)
            state, parent = rest.split()[:2]
            if state != "Z":
                yield int(folder.name), name, int(parent), (folder / "cmdline").read_bytes()
        except (OSError, ValueError):
            pass  # the process has just ended


def spreadsheet_programs_of(program):
    known = list(processes())
    family = {program}
    for _ in range(8):  # it is a few generations below
        family |= {number for number, _, parent, _ in known if parent in family}
    return [number for number, name, _, _ in known
            if number in family and name == SPREADSHEET_PROGRAM]


def peak_of(program):
    """The program's peak memory in KiB; 0 if it has ended."""
    try:
        status = pathlib.Path(f"/proc/{program}/status").read_text()
    except OSError:
        return 0
    found = re.search(r"VmHWM:\s+(\d+)", status)
    return int(found[1]) if found else 0


class Run:
    """A run of the program that is observed until it ends."""

    def __init__(self, command, output, environment, years, kills, rng):
        self.output, self.years, self.rng = output, years, rng
        self.first_peak = self.peak = 0
        self.killed = 0
        moments = sorted(rng.sample(range(1, max(years, kills + 1)), kills))
        printed, errors = output.parent / "printed", output.parent / "errors"
        begin = time.monotonic()
        with printed.open("wb") as stdout, errors.open("wb") as stderr:
            self.process = subprocess.Popen(command, env=environment, stdout=stdout, stderr=stderr)
            while self.process.poll() is None:
                made = self.sample()
                if moments and made >= moments[0] and self.kill_after_delay():
                    moments.pop(0)
                time.sleep(0.02)
        self.seconds = time.monotonic() - begin
        self.printed = printed.read_text().splitlines()
        self.before_reports, *self.reports = errors.read_text().split("Error!\n")

    def sample(self):
        self.peak = max(self.peak, peak_of(self.process.pid))
        made = len(os.listdir(self.output)) if self.output.exists() else 0
        if made <= max(self.years // 10, 1):
            self.first_peak = self.peak
        return made

    def kill_after_delay(self):
        time.sleep(self.rng.uniform(0, 1.5))
        found = spreadsheet_programs_of(self.process.pid)
        for number in found:
            os.kill(number, signal.SIGKILL)
        self.killed += len(found)
        return bool(found)


def check_run(run, scratch, kills, wanted):
    """Checks the run from outside. `wanted` are the workbooks of all years."""
    stray = [number for number, _, _, command in processes() if bytes(scratch) in command]
    check(not stray, f"processes stayed behind: {stray}")
    check(run.killed >= kills, f"only {run.killed} of {kills} instances could be killed")
    check(not run.before_reports, f"not a report: {run.before_reports}")
    check(len(run.reports) <= run.killed, f"more reports than kills: {run.reports}")
    for report in run.reports:
        check(LOST.fullmatch(report), f"not a clear report: {report}")
    check(run.process.returncode == (1 if run.reports else 0),
          f"exit code {run.process.returncode} with {len(run.reports)} reports")
    made = sorted(map(str, run.output.iterdir()))
    check(set(made) <= set(wanted), f"files that nobody wanted: {set(made) - set(wanted)}")
    check(run.printed == [path for path in wanted if path in made],
          "the printed paths are not those of the workbooks")
    # One whose program was killed just after it was saved is both saved and reported.
    check(len(wanted) <= len(made) + len(run.reports) <= len(wanted) + run.killed,
          f"{len(made)} workbooks and {len(run.reports)} reports of {len(wanted)} years")
    left = os.listdir(scratch / "tmp")
    check(run.killed or not left, f"temporary files that nobody takes away: {left}")
    check(not MEASURED or run.peak <= run.first_peak * 1.1 + 2048,
          f"the program grew from {run.first_peak} to {run.peak} KiB")


def days_on(sheet):
    return Counter(cell.value for row in sheet.iter_rows() for cell in row
                   if isinstance(cell.value, int) and cell.value <= 31)


def workbook_failure(path):
    """What is wrong with a workbook, which must contain every day of every month."""
    year = int(re.match(r"\d+", path.name)[0])
    try:
        with zipfile.ZipFile(path) as package:
            if package.testzip() is not None:
                return f"{path.name} is damaged"
        book = openpyxl.load_workbook(path)
    except Exception as failure:  # readers raise anything for a damaged file
        return f"{path.name} cannot be read: {failure}"
    if book.sheetnames != [*calendar.month_name[1:], str(year)]:
        return f"{path.name} has the sheets {book.sheetnames}"
    whole_year = Counter()
    for month, sheet in enumerate(book.worksheets[:12], start=1):
        days = Counter(range(1, calendar.monthrange(year, month)[1] + 1))
        whole_year += days
        if days_on(sheet) != days:
            return f"{path.name}: {sheet.title} has not each of its days once"
    if days_on(book.worksheets[12]) != whole_year:
        return f"{path.name}: the sheet of the year has not each day once"
    return None


def main(cli, template, engine, years, kills=0, seed=1):
    template = pathlib.Path(template).resolve()
    with tempfile.TemporaryDirectory(prefix="orrery-load-") as name:
        scratch = pathlib.Path(name)
        output = scratch / "out"
        (scratch / "tmp").mkdir()
        environment = {"HOME": name, "XDG_CACHE_HOME": str(scratch / "cache"),
                       "TMPDIR": str(scratch / "tmp"), "PATH": os.environ["PATH"],
                       "LANG": "C.UTF-8"}
        if kills:  # the search for leaks crashes where a lost connection's threads are still ending
            environment["ASAN_OPTIONS"] = "detect_leaks=0"
        last = FIRST_YEAR + years - 1
        run = Run([cli, "generate", str(template), f"{FIRST_YEAR}-{last}", "--engine", engine,
                   "--output-folder", str(output)], output, environment, years, kills,
                  random.Random(seed))
        wanted = [str(output / f"{year}{template.name}") for year in range(FIRST_YEAR, last + 1)]
        check_run(run, scratch, kills, wanted)
        made = list(output.iterdir())
        with multiprocessing.Pool() as pool:
            failures = list(filter(None, pool.imap_unordered(workbook_failure, made)))
        check(not failures, "\n".join(failures))
    print(f"{engine}: {len(made)} of {years} years in {run.seconds:.1f} s, {run.killed} killed, "
          f"{len(run.reports)} reported, peak {run.first_peak} KiB in the first tenth and "
          f"{run.peak} KiB in all")


if __name__ == "__main__":
    main(*sys.argv[1:4], *map(int, sys.argv[4:]))
