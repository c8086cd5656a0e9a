"""Runs the program over one workbook and judges what it did; what others read, reopen.py judges."""

import os
import re
import shutil
from dataclasses import dataclass, field

import scratch
from limited_processes import Limits

YEAR = 2027
MEBIBYTES = 600
_SAVING_FAILED = ("Failed to save the calendar file.", "Failed to open the calendar file")
_QUOTED = re.compile(r'"[^"\n]*"')
_INNER_WORDS = ("Assertion", "terminate called", "std::", "exception", "basic_string", "bad_alloc",
                "vector::", "map::at", "runtime error:", "Sanitizer", "Out of memory")
_CONTROL = re.compile("[\x00-\x09\x0b-\x1f\x7f\x80-\x9f]")
_SANITIZER_CODE = 99


@dataclass
class Program:
    """What is run: a command, whether sanitizers look at it, and its limits where they are not the
    usual ones."""

    command: list
    is_sanitized: bool = False
    own_limits: object = None

    def limits(self):
        if self.own_limits:
            return self.own_limits
        if self.is_sanitized:
            return Limits(seconds=20, wall_seconds=200, addresses=0)
        return Limits()

    def environment(self):
        if not self.is_sanitized:
            return {}
        return {"ASAN_OPTIONS": f"exitcode={_SANITIZER_CODE}",
                "UBSAN_OPTIONS": f"halt_on_error=1:exitcode={_SANITIZER_CODE}:print_stacktrace=1"}


@dataclass
class Failure:
    """`kind` is the same for failures that may have one cause."""

    kind: str
    text: str


@dataclass
class Verdict:
    code: object = None    # exit code
    message: str = ""
    seconds: float = 0     # of processor time
    memory: float = 0      # MiB
    output: str = ""       # path of the calendar, where there is one
    failures: list = field(default_factory=list)


class Judge:
    """Runs a program in a scratch folder again and again; `processes` start it."""

    def __init__(self, program, place, processes):
        self.program, self.place, self.processes = program, place, processes
        self._run(["templates"])  # the first start fills the folders of the user

    def _run(self, arguments):
        return self.processes.run([*self.program.command, *arguments],
                                  self.place.place("current"),
                                  self.place.environment(**self.program.environment()),
                                  self.program.limits())

    def judge(self, path, parameters):
        """The verdict on one workbook; `parameters` is the text of its parameter file. The output
        stays where it is until the next workbook."""
        self.place.clear()
        template = self.place.place("template", os.path.basename(path))
        shutil.copyfile(path, template)
        with open(os.path.splitext(template)[0] + ".ini", "w", encoding="utf-8") as file:
            file.write(parameters)
        before = self.place.listing()
        ended = self._run(["generate", template, str(YEAR), "--engine", "builtin",
                           "--output-folder", self.place.output])
        message = ended.stderr.decode("utf-8", "replace")
        verdict = Verdict(ended.code, message, ended.cpu, ended.memory)
        made = self.place.made()
        verdict.failures += end_failures(ended, self.program)
        if ended.code in (0, 1, 2):
            verdict.failures += message_failures(ended)
        verdict.failures += change_failures(before, self.place.listing(), self.place.root, template)
        verdict.failures += output_failures(ended.code, message, made, os.path.basename(template))
        if ended.code in (0, 1) and made:
            verdict.output = os.path.join(self.place.output, made[0])
        return verdict


def end_failures(ended, program):
    """How the program ended, how long it took, and its memory."""
    if ended.hung:
        yield Failure("hang", f"was ended after {ended.wall:.0f} s, {ended.cpu:.1f} s of them busy")
    elif ended.signal == "SIGXCPU" or ended.cpu > program.limits().seconds:
        yield Failure("time", f"took {ended.cpu:.1f} s")
    elif ended.signal:
        yield Failure(f"signal {ended.signal}", _inner_line(ended))
    elif ended.code == _SANITIZER_CODE:
        yield Failure("sanitizer", _inner_line(ended))
    elif ended.code not in (0, 1, 2):
        yield Failure(f"exit code {ended.code}", _inner_line(ended))
    if ended.memory > MEBIBYTES and not program.is_sanitized:
        yield Failure("memory", f"took {ended.memory:.0f} MiB")


def _inner_line(ended):
    """What a crash left on standard error, shortened to what tells its place."""
    lines = ended.stderr.decode("utf-8", "replace").splitlines()
    told = [line.strip() for line in lines
            if any(word in line for word in _INNER_WORDS + (" in orrery::",))]
    return " | ".join(dict.fromkeys(told[:6])) or f"nothing was said: {lines[-1:]}"


def message_failures(ended):
    """With 1 there is at least one sentence; every line is one, and nothing but sentences. With 0
    there are warnings alone."""
    try:
        text = ended.stderr.decode("utf-8")
    except UnicodeDecodeError:
        yield Failure("message is not UTF-8", repr(ended.stderr[:200]))
        return
    lines = text.split("\n")
    if ended.code == 1 and not text.strip():
        yield Failure("no sentence", "exit code 1, and nothing is said")
    if ended.code == 0 and any(line and not (line.startswith("Warning: ") and line.endswith("."))
                               for line in lines):
        yield Failure("message with success", text[:300])
    if ended.code == 1 and any(line and not line.endswith((".", "!")) for line in lines):
        yield Failure("no sentence", text[:300])
    if '""' in text:
        yield Failure("empty name", text[:300])
    if _CONTROL.search(text):
        yield Failure("control characters in a message", repr(text[:300]))
    said = _QUOTED.sub("", text)  # names of files and sheets may be any words
    for word in _INNER_WORDS:
        if word in said:
            yield Failure(f"message speaks of {word}", text[:300])


def change_failures(before, after, root, template):
    """The template is unchanged, and nothing outside the output folder came, went or changed."""
    own = os.path.relpath(template, root)
    for path in scratch.changes(before, after):
        if path == own:
            yield Failure("template changed", f"{before.get(path)} became {after.get(path)}")
        else:
            yield Failure("change outside the output folder", path)


def output_failures(code, message, made, name):
    """One calendar with the exit code 0; none where opening or saving failed."""
    expected = f"{YEAR}{name}"
    others = [path for path in made if path != expected]
    if others and code in (0, 1, 2):
        yield Failure("leftover in the output folder", f"{others}")
    if code == 0 and expected not in made:
        yield Failure("no output", "exit code 0, and there is no calendar")
    failed = any(sentence in message for sentence in _SAVING_FAILED)
    if made and (code == 2 or (code == 1 and failed)):
        yield Failure("output after a failure", f"{made}: {message[:300]}")
