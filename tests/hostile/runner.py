"""Judges many workbooks side by side and sums up what became of them."""

import multiprocessing
import multiprocessing.util
import os
import shlex
import shutil
import tempfile
import time
import traceback
from collections import Counter, defaultdict
from dataclasses import dataclass, field

import reopen
from judge import Failure, Judge
from limited_processes import Processes, limit_own_memory
from scratch import Scratch
from slow_readers import SlowReaders


@dataclass
class Outcome:
    """What became of one workbook."""

    name: str
    told: str = ""
    kinds: list = field(default_factory=list)
    code: object = None
    seconds: float = 0
    memory: float = 0
    message: str = ""
    readers: list = field(default_factory=list)   # those that judged the output
    failures: list = field(default_factory=list)


class Worker:
    """One process's own judge, in a scratch folder of its own."""

    current = None

    def __init__(self, program, folder, kept, slow_end):
        place = Scratch(tempfile.mkdtemp(prefix="scratch-", dir=folder))
        self.processes = Processes(place.place("printed"))
        self.judge = Judge(program, place, self.processes)
        self.folder, self.kept = tempfile.mkdtemp(prefix="inputs-", dir=folder), kept
        self.slow_readers = None
        if slow_end:
            self.slow_readers = SlowReaders(self.folder, self.processes, slow_end)
            multiprocessing.util.Finalize(self, self.slow_readers.close, exitpriority=10)
        limit_own_memory()

    @classmethod
    def start(cls, *arguments):
        cls.current = cls(*arguments)

    def outcome(self, case, number):
        """Judges a case: something with file_name, data, parameters, mutations and told()."""
        path = os.path.join(self.folder, case.file_name)
        with open(path, "wb") as file:
            file.write(case.data)
        verdict = self.judge.judge(path, case.parameters)
        outcome = Outcome(case.file_name, case.told(), [name for name, _ in case.mutations],
                          verdict.code, verdict.seconds, verdict.memory, verdict.message,
                          failures=list(verdict.failures))
        if verdict.output:
            failures, outcome.readers = reopen.reader_failures(path, verdict.output)
            outcome.failures += failures
            if self.slow_readers:
                failures, readers = self.slow_readers.failures(number, path, verdict.output)
                outcome.failures += failures
                outcome.readers += readers
        if outcome.failures:
            self._keep_finding(path, case.parameters, outcome)
        os.remove(path)
        return outcome

    def _keep_finding(self, path, parameters, outcome):
        keep_finding(self.kept, path, parameters, outcome, self.judge.program)


def keep_finding(folder, path, parameters, outcome, program):
    """Leaves a failing workbook, its parameters, and how to see it again."""
    os.makedirs(folder, exist_ok=True)
    place = os.path.join(folder, outcome.name)
    shutil.copyfile(path, place)
    stem = os.path.splitext(place)[0]
    with open(stem + ".ini", "w", encoding="utf-8") as file:
        file.write(parameters)
    command = [*program.command, "generate", place, "2027", "--engine", "builtin",
               "--output-folder", "/tmp/hostile"]
    with open(stem + ".txt", "w", encoding="utf-8", errors="backslashreplace") as file:
        file.write(f"{outcome.told}\n\nulimit -v 8000000; HOME=/tmp XDG_CONFIG_HOME=/tmp/hostile "
                   f"XDG_DATA_HOME=/tmp/hostile timeout 20 {shlex.join(command)}\n\n")
        for failure in outcome.failures:
            file.write(f"{failure.kind}: {failure.text}\n")
        file.write(f"\nexit code {outcome.code}\n{outcome.message}\n")


def judge_case(arguments):
    """In a worker: makes the case (`make(argument)`) and judges it."""
    make, argument, number = arguments
    name = str(argument)
    try:
        return Worker.current.outcome(make(argument), number)
    except Exception:  # what breaks the harness is a failure too
        return Outcome(name, "", ["harness"], failures=[
            Failure("the harness itself broke", traceback.format_exc(limit=-4))])


def judge_all(program, make, arguments, folder, kept, jobs=2, slow_seconds=0):
    """The outcomes of all cases, in the order of their arguments. The readers that take long judge
    as well for that many seconds."""
    slow_end = time.monotonic() + slow_seconds if slow_seconds else 0
    with multiprocessing.Pool(jobs, Worker.start, (program, folder, kept, slow_end)) as pool:
        outcomes = pool.map(judge_case, [(make, argument, number)
                                         for number, argument in enumerate(arguments)],
                            chunksize=1)  # some take far longer than others
        pool.close()
        pool.join()
    return outcomes


def failing(outcomes):
    return [outcome for outcome in outcomes if outcome.failures]


def print_failures(outcomes, shown=3):
    """Every kind of failure with its count and a few cases."""
    by_kind = defaultdict(list)
    for outcome in outcomes:
        for kind, failure in {failure.kind: failure for failure in outcome.failures}.items():
            by_kind[kind].append((outcome, failure))
    for kind, found in sorted(by_kind.items(), key=lambda item: -len(item[1])):
        print(f"FAILED {kind}: {len(found)} workbooks")
        for outcome, failure in found[:shown]:
            print(f"    {outcome.name}\n        {outcome.told[:200]}\n"
                  f"        {failure.text[:300]}")


def print_table(outcomes):
    """For each kind of mutation, how the runs ended in which it took part."""
    rows = defaultdict(Counter)
    for outcome in outcomes:
        for kind in dict.fromkeys([*outcome.kinds, "all"]):
            rows[kind]["cases"] += 1
            rows[kind][outcome.code if outcome.code in (0, 1, 2) else "else"] += 1
            rows[kind]["failures"] += bool(outcome.failures)
    print(f"{'mutation':<32}{'cases':>7}{'exit 0':>8}{'exit 1':>8}{'exit 2':>8}{'else':>6}"
          f"{'failures':>10}")
    for kind, row in sorted(rows.items(), key=lambda item: (item[0] == "all", item[0])):
        print(f"{kind:<32}{row['cases']:>7}{row[0]:>8}{row[1]:>8}{row[2]:>8}{row['else']:>6}"
              f"{row['failures']:>10}")
    judged = Counter(name for outcome in outcomes for name in outcome.readers)
    print("outputs judged by " + ", ".join(f"{name} {count}"
                                           for name, count in sorted(judged.items())))
    for what, unit in (("seconds", "s"), ("memory", "MiB")):
        most = max(outcomes, key=lambda outcome: getattr(outcome, what), default=None)
        if most:
            print(f"most {what}: {getattr(most, what):.2f} {unit}, {most.name}")
