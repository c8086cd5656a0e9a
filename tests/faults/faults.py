"""What is left behind when a run is disturbed: never a half-written workbook, never a lost one.

usage: faults.py ORRERY_CLI TEMPLATE kill|disk-full|unwritable
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

YEAR = "2027"


def generate(cli, template, output):
    return [cli, "generate", str(template), YEAR, "--output-folder", str(output)]


def as_root(*command):
    prefix = [] if os.getuid() == 0 else ["sudo"]
    subprocess.run(prefix + list(command), check=True)


def check(condition, message):
    if not condition:
        sys.exit(f"FAILED: {message}")


def is_whole(path):
    """An output is absent, empty (the run proves first that it can be written), or complete."""
    if not path.exists() or path.stat().st_size == 0:
        return True
    return len(openpyxl.load_workbook(path).sheetnames) >= 12


def big_template(template, folder):
    """The template with a large picture-like part more, so that saving takes a while."""
    workbook = openpyxl.load_workbook(template)
    sheet = workbook.create_sheet("Weight")
    chance = random.Random(1)
    for row in range(1, 4001):
        for column in range(1, 21):
            sheet.cell(row, column).value = chance.random()
    target = folder / template.name
    workbook.save(target)
    target.with_suffix(".ini").write_bytes(template.with_suffix(".ini").read_bytes())
    return target


def kill_during_save(cli, template, folder):
    heavy = big_template(template, folder)
    output = folder / "output"
    target = output / f"{YEAR}{heavy.name}"
    start = time.perf_counter()
    subprocess.run(generate(cli, heavy, output), check=True, stdout=subprocess.DEVNULL)
    whole = time.perf_counter() - start
    untouched = heavy.read_bytes()
    chance = random.Random(2)
    killed = 0
    for _ in range(50):
        process = subprocess.Popen(generate(cli, heavy, output), stdout=subprocess.DEVNULL)
        time.sleep(chance.uniform(0, whole))
        if process.poll() is None:
            killed += 1
            process.send_signal(signal.SIGKILL)
        process.wait()
        check(is_whole(target), "a half-written workbook stands under the output's name")
        check(heavy.read_bytes() == untouched, "the template was changed")
    check(killed >= 20, f"only {killed} of 50 runs were killed: the loop proves too little")
    subprocess.run(generate(cli, heavy, output), check=True, stdout=subprocess.DEVNULL)
    check(is_whole(target) and target.stat().st_size > 0, "the next run did not succeed")
    print(f"{killed} of 50 runs killed, every output whole")


def failing_run(cli, template, output, **options):
    done = subprocess.run(generate(cli, template, output), capture_output=True, text=True,
                          **options)
    check(done.returncode == 1, f"exit code {done.returncode}, not 1")
    check(done.stdout == "", "a path was printed although nothing was saved")
    check(done.stderr.startswith("Error!\nError Info: "), f"unexpected report: {done.stderr!r}")
    check("terminate" not in done.stderr, "the program ended by a signal")
    return done.stderr


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
    cli, template, fault = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3]
    faults = {"kill": kill_during_save, "disk-full": disk_full, "unwritable": unwritable_folder}
    with tempfile.TemporaryDirectory() as name:
        faults[fault](cli, template, pathlib.Path(name))


main()
