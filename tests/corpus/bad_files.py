"""Files that no engine can or should open: one clear sentence, quickly and in little memory."""

import multiprocessing.pool
import os
import resource
import signal
import subprocess
import time
from collections import Counter

import integrity
import xls_bad
from opc import Package

SECONDS = 2    # of processor time; four times as many with sanitizers and under Wine
PATIENCE = 60  # seconds until a process counts as hanging, on a busy machine
MEBIBYTES = 512


def _limits(seconds, limited):
    """What sets a process its limits before it starts: processor time, which other processes on the
    machine do not use up, and memory."""
    def set_limits():
        resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds + 1))
        if limited:
            size = MEBIBYTES * 1024 * 1024
            resource.setrlimit(resource.RLIMIT_AS, (size, size))
    return set_limits


def _takes_a_limit(driver):
    """Whether its memory can be limited: AddressSanitizer and Windows reserve more addresses than
    any limit leaves them."""
    with open(driver[-1], "rb") as file:
        program = file.read()
    return b"__asan_init" not in program and not program.startswith(b"MZ")


def _run(arguments, limited):
    """Exit code, message and seconds; no code if the process was ended at its limit of time."""
    begin = time.monotonic()
    try:
        done = subprocess.run(arguments, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              timeout=PATIENCE, check=False,
                              preexec_fn=_limits(SECONDS if limited else 4 * SECONDS, limited))
    except subprocess.TimeoutExpired:
        return None, b"", time.monotonic() - begin
    code = None if done.returncode in (-signal.SIGXCPU, -signal.SIGKILL) else done.returncode
    return code, done.stderr, time.monotonic() - begin


def sentence_failures(text):
    """A report to a person: one line, one sentence that ends, and no inner words."""
    try:
        line = text.decode("utf-8").rstrip("\r\n")
    except UnicodeDecodeError:
        yield "the message is not UTF-8"
        return
    if "\n" in line or "\r" in line:
        yield f"the message has several lines: {line[:200]!r}"
    if len(line) < 20 or not line.endswith("."):
        yield f"the message is no clear sentence: {line[:200]!r}"
    for word in ("std::", "exception", "assert", "basic_string", "vector", "bad_alloc"):
        if word in line:
            yield f"the message speaks of {word}: {line[:200]!r}"


# What a refusal has to say, by the kind of file in the manifest; one of these.
_DAMAGED = ("is damaged", "is not a workbook", "becomes too large", "is nested too deeply")
_SENTENCES = {"encrypted-xls": ("is protected by a password",),
              "encrypted-ooxml": ("is protected by a password",),
              "xlsb": ("is a binary workbook",), "not-a-workbook": ("is not a workbook",),
              "corrupt": _DAMAGED, "fuzz": _DAMAGED, "damaged-here": _DAMAGED}
_OLD = ("was saved by an old version",)


def kind_failures(row, message):
    """Whether a refusal says what is wrong with a file of that kind."""
    kind = row["kind"]
    sentences = _OLD if kind.startswith("old-") else _SENTENCES[kind]
    if not any(sentence in message for sentence in sentences):
        yield f"a file of kind {kind} gets the message {message!r}"


class Case:
    """One file, opened and saved; where that works, edited as well."""

    def __init__(self, options, row, result, limited):
        self.options, self.row, self.result, self.limited = options, row, result, limited
        self.path = os.path.join(options.corpus, row["file"])
        self.target = os.path.join(options.work, os.path.basename(self.path))
        self.saved = self.target + ".same"

    def run(self):
        if self._opens("same"):
            self.result.counted["opened"] += 1
            self._judge_opened()

    def _opens(self, verb, *arguments):
        """Whether the driver did it; else its message was judged."""
        code, message, seconds = _run([*self.options.driver, verb, self.path, self.target,
                                       *arguments], self.limited)
        self.result.seconds = max(self.result.seconds, seconds)
        if code is None:
            self._fail(f"{verb} took too long: it was ended after {seconds:.1f} s")
        if code in (0, None):
            return code == 0
        self.result.counted[f"{verb} refused"] += 1
        self.result.message = message.decode("utf-8", "replace").strip()
        if code != 1:
            self._fail(f"{verb} ended with {code}: {self.result.message[-300:]}")
            return False
        if os.path.exists(self.target):
            self._fail(f"{verb} was refused, and yet a file was written")
        self.result.failures += sentence_failures(message)
        if verb == "same":
            self.result.failures += kind_failures(self.row, self.result.message)
        return False

    def _fail(self, what):
        self.result.failures.append(what)

    def _judge_opened(self):
        """An opened file has to be one that other readers open as well, and the result right."""
        if xls_bad.is_biff8(self.path):
            self.result.failures += xls_bad.opened_failures(self.row, self.path, self.target)
            self._edit(xls_bad.first_sheet(self.target))
        elif self.row["py_opens"] != "yes" and self.row["lo_to_xlsx"] != "yes":
            self._fail("was opened, and no other reader opens it")
        elif self.row["format"] not in ("xlsx", "xlsm"):
            self._fail(f"was opened, and is {self.row['format']}")
        else:
            before = Package(self.path)
            self.result.failures += list(integrity.same_failures(before, Package(self.target)))
            if self._edit(before.sheets[0].name):
                self._judge_package(before)

    def _edit(self, sheet):
        """What was passed over when the file was only copied comes to light in an edit."""
        os.replace(self.target, self.saved)
        plan = self.target + ".tsv"
        with open(plan, "w", encoding="utf-8") as file:
            file.write(f"sheet\t{sheet}\nrename\tProof\ncopy\n"
                       "text\t1\t1\tProof\nnumber\t2\t2\t7\n")
        if not self._opens("edit", plan):
            return False
        self.result.counted["edited"] += 1
        if xls_bad.is_biff8(self.path):
            self.result.failures += xls_bad.edited_failures(self.saved, self.target)
            return False
        return True

    def _judge_package(self, before):
        after = Package(self.target)
        for check in (integrity.new_findings, integrity.relationship_failures):
            self.result.failures += check(before, after)


def prove(options, rows, make_result):
    limited = _takes_a_limit(options.driver)
    results = [make_result(row["file"]) for row in rows]
    with multiprocessing.pool.ThreadPool(options.jobs) as threads:
        threads.starmap(lambda row, result: Case(options, row, result, limited).run(),
                        list(zip(rows, results)))
    _print_messages(options, results)
    return results


def _print_messages(options, results):
    """Each message once, without the path, and for how many files it was given."""
    messages = Counter(result.message.replace(os.path.join(options.corpus, result.file), "FILE")
                       for result in results if result.message)
    for message, count in messages.most_common():
        print(f"{count:>4} x {message}")
