"""What an interrupted run leaves behind: never a half-written workbook, never a lost one.

usage: faults.py [RUNNER] ORRERY_CLI TEMPLATE kill|deleted|disk-full|unwritable
"""
import os
import pathlib
import random
import signal
import subprocess
import sys
import tempfile
import time

import openpyxl
import xlrd
import xlwt

YEAR = "2027"


def generate(cli, template, output):
    return [*cli, "generate", str(template), YEAR, "--output-folder", str(output)]


def as_root(*command):
    prefix = [] if os.getuid() == 0 else ["sudo"]
    subprocess.run(prefix + list(command), check=True)


def check(condition, message):
    if not condition:
        sys.exit(f"FAILED: {message}")


def is_whole(path):
    """An output is missing, empty (a run first checks that it can be written), or complete."""
    if not path.exists() or path.stat().st_size == 0:
        return True
    return len(sheet_names(path)) >= 12


def sheet_names(path):
    """Reads the whole workbook with an independent reader."""
    if path.suffix == ".xlsx":
        return openpyxl.load_workbook(path).sheetnames
    with open(os.devnull, "w", encoding="utf-8") as silence:
        return xlrd.open_workbook(path, formatting_info=True, logfile=silence).sheet_names()


def big_template(template, folder):
    """The given template with another, large sheet, so that saving takes a while."""
    rng = random.Random(1)
    rows = 4000 if template.suffix == ".xlsx" else 16000  # an .xls is saved much faster
    numbers = [[rng.random() for _ in range(20)] for _ in range(rows)]
    target = folder / template.name
    if template.suffix == ".xlsx":
        workbook = openpyxl.load_workbook(template)
        sheet = workbook.create_sheet("Weight")
        for row in numbers:
            sheet.append(row)
        workbook.save(target)
    else:
        workbook = xlwt.Workbook()
        for name in sheet_names(template):
            workbook.add_sheet(name)
        sheet = workbook.add_sheet("Weight")
        for number, row in enumerate(numbers):
            for column, value in enumerate(row):
                sheet.write(number, column, value)
        workbook.save(str(target))
    target.with_suffix(".ini").write_bytes(template.with_suffix(".ini").read_bytes())
    return target


def time_of_run(cli, template, output):
    start = time.perf_counter()
    subprocess.run(generate(cli, template, output), check=True, stdout=subprocess.DEVNULL)
    return time.perf_counter() - start


class Outputs:
    """The output folder, whose workbook must always be whole."""

    def __init__(self, folder, target):
        self.folder = folder
        self.target = target
        self.seen = None

    def temporary_files(self):
        return [path for path in self.folder.iterdir() if path != self.target]

    def check_target(self):
        """Reads the output only if it has changed, because reading takes long."""
        state = self.target.stat() if self.target.exists() else None
        stamp = state and (state.st_ino, state.st_size, state.st_mtime_ns)
        if stamp != self.seen:
            check(is_whole(self.target), "a half-written workbook stands under the output's name")
            self.seen = stamp


def wait_for_save(process, outputs, earlier):
    """Waits until the run begins to write the output, or ends."""
    while process.poll() is None and not set(outputs.temporary_files()) - set(earlier):
        time.sleep(0.0005)


def kill_during_save(cli, template, folder):
    heavy = big_template(template, folder)
    outputs = Outputs(folder / "output", folder / "output" / f"{YEAR}{heavy.name}")
    whole = time_of_run(cli, heavy, outputs.folder)
    untouched = heavy.read_bytes()
    rng = random.Random(2)
    is_killed = len(cli) == 1  # a runner would receive the signal instead of the program
    killed = runs = left = 0
    temporary = []
    while runs < 50 or (killed < 20 and runs < 300):
        runs += 1
        process = subprocess.Popen(generate(cli, heavy, outputs.folder), stdout=subprocess.DEVNULL)
        if is_killed and runs % 2:
            wait_for_save(process, outputs, temporary)
            time.sleep(rng.uniform(0, whole / 20))
        else:
            time.sleep(rng.uniform(0, whole))
        if process.poll() is None:
            killed += 1
            process.send_signal(signal.SIGKILL)
            whole *= 1.05
        else: # the run was faster than measured
            whole *= 0.95
        process.wait()
        outputs.check_target()
        check(heavy.read_bytes() == untouched, "the template was changed")
        temporary = outputs.temporary_files()
        check(len(temporary) <= 1 or not is_killed, f"earlier runs left {temporary}")
        left += len(temporary)
    check(killed >= 20, f"only {killed} of {runs} runs were killed: the loop proves too little")
    subprocess.run(generate(cli, heavy, outputs.folder), check=True, stdout=subprocess.DEVNULL)
    outputs.check_target()
    check(outputs.target.stat().st_size > 0, "the next run did not succeed")
    if is_killed:
        check(left > 0, "no killed run left a temporary file: the loop proves too little")
        check(outputs.temporary_files() == [], f"left behind: {outputs.temporary_files()}")
    print(f"{killed} of {runs} runs killed, every output whole, {left} temporary files removed")


def delete_during_run(cli, template, folder):
    """The template is deleted at a random moment: the run succeeds or reports what is missing."""
    heavy = big_template(template, folder)
    content = heavy.read_bytes()
    output = folder / "output"
    target = output / f"{YEAR}{heavy.name}"
    whole = time_of_run(cli, heavy, output)
    rng = random.Random(3)
    codes = []
    for number in range(20):
        process = subprocess.Popen(generate(cli, heavy, output), stdout=subprocess.DEVNULL,
                                   stderr=subprocess.PIPE, text=True)
        time.sleep(0 if number == 0 else rng.uniform(0, whole))
        heavy.unlink()
        report = process.communicate()[1]
        codes.append(process.returncode)
        if process.returncode == 0:
            check(target.stat().st_size > 0 and is_whole(target), "half a workbook was saved")
        else:
            check(process.returncode == 1 and report.startswith("Error!\nError Info: ") and
                  ("was not found" in report or "Failed to open the calendar file" in report),
                  f"exit code {process.returncode}: {report!r}")
            check(is_whole(target), "half a workbook was left behind")
        heavy.write_bytes(content)
    check(0 in codes, "every run failed: the loop proves too little")
    print(f"template deleted: {codes.count(0)} runs ended well, {codes.count(1)} said why not")


def failing_run(cli, template, output, **options):
    done = subprocess.run(generate(cli, template, output), capture_output=True, text=True,
                          **options)
    check(done.returncode == 1, f"exit code {done.returncode}, not 1")
    check(done.stdout == "", "a path was printed although nothing was saved")
    check(done.stderr.startswith("Error!\nError Info: "), f"unexpected report: {done.stderr!r}")
    check("terminate" not in done.stderr, "the program ended by a signal")
    return done.stderr.replace("\\", "/").replace("Z:/", "/")  # as Windows shows paths


def disk_full(cli, template, folder):
    disk = folder / "disk"
    disk.mkdir()
    as_root("mount", "-t", "tmpfs", "-o", "size=32k,mode=777", "tmpfs", str(disk))
    try:
        report = failing_run(cli, template, disk)
        check("Failed to save the calendar file." in report, f"not the save's report: {report!r}")
        check("full" in report, f"the report does not say that the disk is full: {report!r}")
        check(list(disk.iterdir()) == [], f"left behind: {list(disk.iterdir())}")
    finally:
        as_root("umount", str(disk))
    print("full disk: reported, nothing left behind")


def unwritable_folder(cli, template, folder):
    disk = folder / "disk"
    disk.mkdir()
    as_root("mount", "-t", "tmpfs", "-o", "size=1m,ro", "tmpfs", str(disk))
    try:
        report = failing_run(cli, template, disk)
        target = disk / f"{YEAR}{template.name}"
        check(f'Failed to open the calendar file "{target}".' in report,
              f"not the report of a folder that cannot be written: {report!r}")
    finally:
        as_root("umount", str(disk))
    print("unwritable folder: reported")


def main():
    *cli, template, fault = sys.argv[1:]
    faults = {"kill": kill_during_save, "deleted": delete_during_run, "disk-full": disk_full,
              "unwritable": unwritable_folder}
    with tempfile.TemporaryDirectory() as name:
        faults[fault](cli, pathlib.Path(template), pathlib.Path(name))


main()
