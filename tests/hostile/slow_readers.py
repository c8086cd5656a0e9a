"""LibreOffice, Gnumeric and the Open XML validator: whether they open what the program made of what
they opened.

They are given hostile files: one that hangs, crashes or takes too much memory on a file does not
judge it.
"""

import os
import select
import shutil
import signal
import subprocess
import sys
import tempfile
import time

from corpus_modules import xlsx_validator
from judge import Failure
from limited_processes import Limits

_READER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "office_reader.py")
_SECONDS, _LONGEST_START = 20, 90
_GIBIBYTE = 1 << 30
_NOT_OPENED = ("Package ", "Exception ")  # kinds of what ends its reading


class Office:
    """A LibreOffice that opens one workbook after the other. It is started when it is first asked,
    and again when it has been ended."""

    name = "LibreOffice"

    def __init__(self, folder):
        self.folder, self.process, self.ended = folder, None, 0

    def close(self):
        """Ends LibreOffice and what it started."""
        if self.process:
            os.killpg(self.process.pid, signal.SIGKILL)
            self.process.wait()
            self.process.stdin.close()
            self.process.stdout.close()
            shutil.rmtree(self.profile, ignore_errors=True)
            self.process = None

    def _start(self):
        self.profile = tempfile.mkdtemp(prefix="office-", dir=self.folder)
        self.process = subprocess.Popen(
            [sys.executable, "-B", _READER, self.profile], stdin=subprocess.PIPE,
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, start_new_session=True,
            preexec_fn=_without_own_limits)
        if self._answer(_LONGEST_START) != "ready":
            self.close()
            raise RuntimeError("LibreOffice does not start")

    def _answer(self, seconds):
        """Its next line; None where none comes in time, or it has ended."""
        ready, _, _ = select.select([self.process.stdout], [], [], seconds)
        return self.process.stdout.readline().decode().strip() or None if ready else None

    def sheets(self, path):
        """How many sheets it shows, 0 where it does not open the file, None where it gave up."""
        if self.process is None:
            self._start()
        try:
            self.process.stdin.write(path.encode() + b"\n")
            self.process.stdin.flush()
            answer = self._answer(_SECONDS)
        except BrokenPipeError:
            answer = None
        if answer is None:
            self.close()
            self.ended += 1
            return None
        return 0 if answer == "no" else int(answer)


def _without_own_limits():
    import resource
    resource.setrlimit(resource.RLIMIT_AS, (6 * _GIBIBYTE, 6 * _GIBIBYTE))


class Gnumeric:
    """Gnumeric's converter, once for each workbook."""

    name = "Gnumeric"

    def __init__(self, folder, processes):
        self.folder, self.processes = folder, processes
        self.limits = Limits(seconds=_SECONDS, wall_seconds=3 * _SECONDS, addresses=4 * _GIBIBYTE)

    def close(self):
        pass

    def sheets(self, path):
        """1 where it opens the file, 0 where it does not, None where it gave up."""
        target = os.path.join(self.folder, "converted.csv")
        ended = self.processes.run(
            ["/usr/bin/ssconvert", "--export-type=Gnumeric_stf:stf_csv", path, target], self.folder,
            {"PATH": os.environ["PATH"], "HOME": self.folder, "LC_ALL": "C.UTF-8"}, self.limits)
        if ended.code is None or ended.hung:
            return None
        opened = ended.code == 0 and os.path.exists(target)
        if os.path.exists(target):
            os.remove(target)
        return int(opened)


class Validator:
    """The Open XML validator, which has to be installed (scripts/packages.sh). What it finds in a
    package that it opens is damage of the mutation; that it opens it counts."""

    name = "Open XML validator"

    def close(self):
        pass

    def sheets(self, path):
        """1 where it opens the file, 0 where it does not, None where it gave up."""
        if not path.endswith(".xlsx"):
            return None
        try:
            found = xlsx_validator.errors(path, _SECONDS)
        except (RuntimeError, ValueError, subprocess.TimeoutExpired):
            return None
        return int(not any(kind.startswith(_NOT_OPENED) for _, kind in found))


class SlowReaders:
    """Asks LibreOffice about every output, the others about some, until a time is over."""

    def __init__(self, folder, processes, end):
        self.end = end
        self.readers = [(Office(folder), 1), (Gnumeric(folder, processes), 3), (Validator(), 7)]

    def close(self):
        for reader, _ in self.readers:
            reader.close()

    def failures(self, number, before, after):
        """(failures, names of the readers that judged) for the case of that number."""
        failures, judged = [], []
        for reader, share in self.readers:
            if number % share or time.monotonic() > self.end:
                continue
            known = reader.sheets(before)
            found = reader.sheets(after) if known else None
            if found is None:
                continue
            judged.append(reader.name)
            if not found:
                failures.append(Failure(f"{reader.name} does not open the output", after))
            elif found < known:
                failures.append(Failure(f"{reader.name} does not show every sheet",
                                        f"{known} became {found}"))
        return failures, judged
