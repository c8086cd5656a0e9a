#!/usr/bin/env python3
"""Runs clang-tidy over a source, unless it has passed before with the same text, headers and options.

    scripts/tidy.py BUILD_FOLDER SOURCE [OPTION...]

Takes the source's compiler command from the build folder's compile_commands.json and gives the options to
clang-tidy. What passed is remembered in $XDG_CACHE_HOME/orrery/tidy for all checkouts of the project.
"""

import hashlib
import json
import os
import pathlib
import shlex
import subprocess
import sys

PROJECT = pathlib.Path(__file__).resolve().parent.parent
CACHE = pathlib.Path(os.environ.get("XDG_CACHE_HOME") or pathlib.Path.home() / ".cache") / "orrery/tidy"
KEPT = 16  # of the states in which a source passed


def command_for(build, source):
    entries = json.loads((build / "compile_commands.json").read_text())
    for entry in entries:
        if pathlib.Path(entry["directory"], entry["file"]) == source:
            return entry["directory"], shlex.split(entry["command"])
    sys.exit(f"{source} is not compiled in {build}")


def files_of(directory, command):
    """The source and all headers that it includes, those of the system too."""
    compiler = 1 if command[0].endswith("ccache") else 0
    arguments = iter(command[compiler + 1:])
    options = []
    for argument in arguments:
        if argument == "-o":
            next(arguments)
        elif argument != "-c":
            options.append(argument)
    rule = subprocess.run(["clang++", *options, "-w", "-M", "-MT", "files"], cwd=directory, check=True,
                          stdin=subprocess.DEVNULL, capture_output=True, text=True).stdout
    return shlex.split(rule.replace("\\\n", " "))[1:]


def state_of(build, source, options):
    """A hash of all that clang-tidy's answer follows from; where the checkout lies does not count."""
    directory, command = command_for(build, source)
    version = subprocess.run(["clang-tidy", "--version"], check=True, capture_output=True).stdout
    parts = [version, (PROJECT / ".clang-tidy").read_bytes(), *(option.encode() for option in options),
             *(argument.encode() for argument in command)]
    for file in files_of(directory, command):
        parts += [file.encode(), pathlib.Path(directory, file).read_bytes()]
    state = hashlib.sha256()
    for part in parts:
        part = part.replace(os.fsencode(PROJECT), b"")
        state.update(b"%d " % len(part) + part)
    return state.hexdigest()


def main(build=None, source=None, *options):
    if source is None:
        sys.exit(__doc__.strip())
    build, source = pathlib.Path(build).resolve(), pathlib.Path(source).resolve()
    state = state_of(build, source, options)
    memory = CACHE / str(source.relative_to(PROJECT)).replace("/", "_")
    passed = memory.read_text().split() if memory.exists() else []
    if state not in passed:
        subprocess.run(["clang-tidy", "--quiet", *options, "-p", str(build), str(source)], cwd=PROJECT,
                       check=True)
    CACHE.mkdir(parents=True, exist_ok=True)
    passed = [state] + [other for other in passed if other != state]
    unfinished = memory.with_name(f"{memory.name}.{os.getpid()}")
    unfinished.write_text("\n".join(passed[:KEPT]) + "\n")
    unfinished.replace(memory)


if __name__ == "__main__":
    try:
        main(*sys.argv[1:])
    except subprocess.CalledProcessError as error:
        print(error.stderr or "", end="", file=sys.stderr)
        sys.exit(error.returncode)
