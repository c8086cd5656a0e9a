#!/usr/bin/env python3
"""Checks the sources' includes against the links between CMake's libraries.

usage: floors.py --sources FOLDER --floors FILE

A source includes only headers of its own folder and of folders with whose libraries its own is
linked, directly or indirectly; folders without a library belong to another system. No two files
include each other, directly or indirectly. A library has at most 15 sources, `util`, whose
sources are independent, at most 25. Exit code 0 if all of this holds, else 1.
"""

import argparse
import pathlib
import re
import sys

MAX_SOURCES = {"orrery_util": 25}
DEFAULT_MAX_SOURCES = 15
_INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.M)
_SYSTEM = re.compile(r"_(posix|windows|gtk|wx)$")


def read_floors(text):
    """Returns the folders below each folder, and the number of sources of each target."""
    folders, links, sizes = {}, {}, {}
    for line in text.splitlines():
        target, folder, count, *linked = line.split()
        folders[target] = folder
        links[target] = linked
        sizes[target] = int(count)
    below = {}
    for target, folder in folders.items():
        below.setdefault(folder, set()).update(
            folders[one] for one in reachable(target, links) if one in folders)
    return below, sizes


def reachable(start, links):
    found, rest = set(), [start]
    while rest:
        for one in links.get(rest.pop(), ()):
            if one not in found:
                found.add(one)
                rest.append(one)
    return found


def read_includes(sources):
    """Returns the includes of each source file, by its path relative to the folder."""
    paths = [path for path in sources.rglob("*") if path.suffix in (".h", ".cpp")]
    return {path.relative_to(sources).as_posix():
            _INCLUDE.findall(path.read_text(encoding="utf-8")) for path in paths}


def folder_of(path):
    return path.rpartition("/")[0]


def unit_of(path):
    """The unit of a file: a header and its sources for all systems form one unit."""
    return _SYSTEM.sub("", path.rpartition(".")[0])


def upward_includes(includes, below):
    """Yields includes that no link allows."""
    for path, included in sorted(includes.items()):
        if folder_of(path) not in below:
            continue
        allowed = below[folder_of(path)] | {folder_of(path)}
        for header in included:
            if header in includes and folder_of(header) not in allowed:
                yield f"{path} includes {header}, which its library is not linked with"
            if header not in includes and "/" in header:
                yield f"{path} includes {header}, which does not exist"


def cycles(includes):
    """Yields sets of files that include each other."""
    units = {}
    for path, included in includes.items():
        units.setdefault(unit_of(path), set()).update(
            unit_of(header) for header in included if header in includes)
    for unit in units:
        units[unit].discard(unit)
    cycle_of = {}
    for unit in sorted(units):
        members = frozenset(one for one in reachable(unit, units) | {unit}
                           if unit in reachable(one, units))
        if members and unit in members and members not in cycle_of.values():
            cycle_of[unit] = members
            yield "these include each other: " + ", ".join(sorted(members))


def problems(sources, floors):
    below, sizes = read_floors(floors)
    includes = read_includes(sources)
    yield from upward_includes(includes, below)
    yield from cycles(includes)
    for target, count in sorted(sizes.items()):
        maximum = MAX_SOURCES.get(target, DEFAULT_MAX_SOURCES)
        if count > maximum:
            yield f"{target} has {count} sources; the maximum is {maximum}"
    if not includes or not below:
        yield "there are no sources to check"


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--sources", required=True, type=pathlib.Path)
    parser.add_argument("--floors", required=True, type=pathlib.Path)
    options = parser.parse_args()
    found = list(problems(options.sources, options.floors.read_text(encoding="utf-8")))
    for problem in found:
        print(f"FAILED {problem}")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
