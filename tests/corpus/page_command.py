"""What the commands that compare pages have in common."""

import argparse
import faulthandler
import shutil
import tempfile

LONGEST_RUN = 500  # seconds; one that waits longer prints where, and ends


def run(check, description, prefix):
    """A command that compares pictures of pages: runs the check in a folder of its own."""
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument("--cli", required=True)
    parser.add_argument("--data", required=True)
    parser.add_argument("--year", type=int, default=2027)
    parser.add_argument("--keep", help="folder for the pictures of the pages, kept afterwards")
    options = parser.parse_args()
    faulthandler.dump_traceback_later(LONGEST_RUN, exit=True)
    work = tempfile.mkdtemp(prefix=prefix)
    try:
        failures = list(check(options, work))
    finally:
        shutil.rmtree(work, ignore_errors=True)
    for failure in failures:
        print(f"FAILED {failure}")
    print(f"{len(failures)} failures")
    return 1 if failures else 0
