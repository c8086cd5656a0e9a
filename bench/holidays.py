"""Times the holidays of a year and writes the section of docs/performance.md about it; see holidays.sh.

usage: holidays.py HOLIDAYS_BENCH DOCUMENT

Leaves with 1 if a file is outside of the limit.
"""
import datetime
import pathlib
import statistics
import subprocess
import sys

from document import replace_section
from machine import machine

FOLDER = pathlib.Path(__file__).resolve().parent.parent / "data" / "holiday"
LIMIT_US = 1000
SHOWN = 8


def main():
    bench, document = sys.argv[1:]
    printed = subprocess.run([bench, FOLDER], check=True, capture_output=True, text=True).stdout
    files = [(name, int(rules), float(median), float(longest))
             for name, rules, median, longest in (line.split("\t") for line in printed.splitlines())]
    files.sort(key=lambda file: -file[3])
    lines = [f"| {name} | {rules} | {median:.0f} µs | "
             + (f"{longest:.0f} µs |" if longest <= LIMIT_US else f"**{longest:.0f} µs** |")
             for name, rules, median, longest in files[:SHOWN]]
    typical = statistics.median(file[2] for file in files)
    section = "\n".join([
        "## The holidays of a year", "",
        f"The slowest of {len(files)} files, all kinds of days, in the region that takes longest:", "",
        "| file | rules | a year, median | the slowest year from 2000 to 2050 |",
        "| --- | ---: | ---: | ---: |", *lines, "",
        f"- The median of all files is {typical:.0f} µs for a year. The limit is {LIMIT_US:,} µs.",
        f"- Measured on {datetime.date.today()} on {machine()}.", "",
        "`bench/holidays.sh` measures again and writes this section.", ""])
    print(section)
    replace_section(pathlib.Path(document), "holidays", section)
    return 1 if files[0][3] > LIMIT_US else 0


if __name__ == "__main__":
    sys.exit(main())
