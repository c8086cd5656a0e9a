#!/usr/bin/env python3
"""Looks at the includes of the programs' sources, against the links that CMake knows.

usage: floors.py --sources FOLDER --floors FILE

A source includes headers of its own folder, and of folders whose libraries its own is linked with,
directly or through others; folders without a library are of another system. No two files include each other, directly or through others. A library has
at most 25 sources. Exit code 0: so it is; 1: else.
"""

import argparse
import pathlib
import re
import sys

MOST_SOURCES = 25
_INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.M)
_SYSTEM = re.compile(r"_(posix|windows|gtk|wx)$")


def read_floors(text):
    """Of each folder the folders that its targets are linked with, and its largest target."""
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
    """Of each file below the folder, by its path from there, the files that it includes."""
    paths = [path for path in sources.rglob("*") if path.suffix in (".h", ".cpp")]
    return {path.relative_to(sources).as_posix():
            _INCLUDE.findall(path.read_text(encoding="utf-8")) for path in paths}


def folder_of(path):
    return path.rpartition("/")[0]


def unit_of(path):
    """A header and the sources of all systems that belong to it are one."""
    return _SYSTEM.sub("", path.rpartition(".")[0])


def upward(includes, below):
    """Includes that no link allows."""
    for path, included in sorted(includes.items()):
        if folder_of(path) not in below:
            continue
        allowed = below[folder_of(path)] | {folder_of(path)}
        for header in included:
            if header in includes and folder_of(header) not in allowed:
                yield f"{path} includes {header}, which its library is not linked with"
            if header not in includes and "/" in header:
                yield f"{path} includes {header}, which is not there"


def circles(includes):
    """Sets of files that include each other."""
    units = {}
    for path, included in includes.items():
        units.setdefault(unit_of(path), set()).update(
            unit_of(header) for header in included if header in includes)
    for unit in units:
        units[unit].discard(unit)
    circle_of = {}
    for unit in sorted(units):
        around = frozenset(one for one in reachable(unit, units) | {unit}
                           if unit in reachable(one, units))
        if around and unit in around and around not in circle_of.values():
            circle_of[unit] = around
            yield "these include each other: " + ", ".join(sorted(around))


def problems(sources, floors):
    below, sizes = read_floors(floors)
    includes = read_includes(sources)
    yield from upward(includes, below)
    yield from circles(includes)
    for target, count in sorted(sizes.items()):
        if count > MOST_SOURCES:
            yield f"{target} has {count} sources; {MOST_SOURCES} are the most"
    if not includes or not below:
        yield "there is nothing to look at"


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
