#!/usr/bin/env python3
"""Checks the sources of the programs with clang: strict C++20, the build's warnings, all of them errors.

    scripts/clang.py BUILD_FOLDER [TEXT...]

Takes the sources and their options from the build folder's compile_commands.json; with texts, only those
whose paths contain one of them. Checks a build for Windows as such, with the headers of its cross compiler.
Writes no objects.
"""

import concurrent.futures
import functools
import json
import os
import pathlib
import shlex
import subprocess
import sys

SOURCES = pathlib.Path(__file__).resolve().parent.parent / "src"
CLANG = "clang++"


def output_of(*command):
    result = subprocess.run(command, stdin=subprocess.DEVNULL, capture_output=True, text=True,
                            check=True)
    return result.stdout + result.stderr


@functools.cache
def system_options(compiler):
    """The target of a compiler and its header folders, with clang's own in place of GCC's own."""
    log = output_of(compiler, "-E", "-v", "-x", "c++", os.devnull)
    folders = log.split("#include <...> search starts here:\n")[1].split("End of search list.")[0]
    folders = [os.path.normpath(folder.strip()) for folder in folders.splitlines()]
    intrinsics = os.path.join(output_of(CLANG, "-print-resource-dir").strip(), "include")
    options = ["--target=" + output_of(compiler, "-dumpmachine").strip(), "-nostdinc"]
    for folder in folders:
        if folder.endswith("/include-fixed"):
            continue
        own = "/lib/gcc/" in folder and folder.endswith("/include")
        options += ["-isystem", intrinsics if own else folder]
    return options


def kept_options(arguments):
    """The build's options that say what to compile and what to warn about."""
    kept = []
    arguments = iter(arguments)
    for argument in arguments:
        if argument in ("-I", "-isystem", "-D", "-include"):
            kept += [argument, next(arguments)]
        elif argument.startswith(("-I", "-isystem", "-D", "-W")):
            kept.append(argument)
    return kept


def command_for(entry):
    arguments = shlex.split(entry["command"])
    compiler = arguments[1] if arguments[0].endswith("ccache") else arguments[0]
    return [CLANG, *system_options(compiler), *kept_options(arguments), "-std=c++20",
            "-pedantic-errors", "-Werror", "-fsyntax-only", entry["file"]]


def entries_of(build, texts):
    """The programs' sources that the build compiles, each once, or the files that join them."""
    build = pathlib.Path(build).resolve()
    entries = json.loads((build / "compile_commands.json").read_text())
    own = {entry["file"]: entry for entry in entries
           if {SOURCES, build / "src"} & set(pathlib.Path(entry["file"]).parents)
           and entry["file"].endswith((".cpp", ".cxx"))
           and (not texts or any(text in entry["file"] for text in texts))}
    if not own:
        sys.exit(f"{build}: no such source of {SOURCES} is compiled there")
    return own.values()


def check(entry):
    return subprocess.run(command_for(entry), cwd=entry["directory"], capture_output=True,
                          text=True, check=False)


def main(build=None, *texts):
    if build is None:
        sys.exit(__doc__.strip())
    entries = entries_of(build, texts)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        refused = [result for result in pool.map(check, entries) if result.returncode != 0]
    for result in refused:
        print(result.stdout + result.stderr, end="")
    print(f"{build}: {len(entries)} files checked with clang")
    if refused:
        sys.exit(f"clang refuses {len(refused)} of the files")


if __name__ == "__main__":
    main(*sys.argv[1:])
