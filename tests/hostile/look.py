#!/usr/bin/env python3
"""Looks at workbooks whose look is hostile, and judges how the program ends.

usage: look.py --cli PROGRAM [--sanitized] [--full] [--keep DIR]

Each look ends with a picture or with a sentence, within its seconds and its memory, and tells what
it leaves out. Without --full the workbooks have a tenth of their size. Exit code 0: no failure.
"""

import argparse
import json
import os
import shutil
import sys
import tempfile
from dataclasses import dataclass

import look_xls
import look_xlsx
from judge import Failure, Program, end_failures, message_failures
from limited_processes import Limits, Processes
from scratch import Scratch

_FAIR_SECONDS = 1
_FAIR_MEBIBYTES = 300
_SANITIZED_TIMES = 80  # that build is not optimized, either
_SMALL = 10  # the part of the size where not all is run


@dataclass(frozen=True)
class Look:
    """A workbook and what is expected of it. `is_amount` says whether a part of `count` is the same
    but smaller, `told` is a word of what is left out at the full size."""

    module: object
    name: str
    count: int
    is_amount: bool = True
    told: str = ""
    seconds: float = _FAIR_SECONDS
    mebibytes: int = _FAIR_MEBIBYTES

    def make(self, is_full):
        count = self.count if is_full or not self.is_amount else max(1, self.count // _SMALL)
        return getattr(self.module, self.name)(count)

    @property
    def file_name(self):
        return self.name + (".xls" if self.module is look_xls else ".xlsx")


def _xlsx(name, count, **more):
    return Look(look_xlsx, name, count, **more)


def _xls(name, count):
    return Look(look_xls, name, count, is_amount=False)


# More than a second: what is shown is itself large (100,000 cells with a look of their own, 20 MB
# of text), or the evaluator works until its limit of steps.
_LARGE, _EVALUATED = 4, 2
LOOKS = (
    _xlsx("no_such_style", 4_000_000_000, is_amount=False),
    _xlsx("no_such_parts_of_styles", 4_294_967_295, is_amount=False),
    _xlsx("styles", 100_000, seconds=_LARGE),
    _xlsx("long_number_format", 65_536),
    _xlsx("number_format_of_dates", 65_536),
    _xlsx("number_format_of_fractions", 32_000),
    _xlsx("number_format_of_sections", 8_000),
    _xlsx("number_format_of_blanks", 32_768),
    _xlsx("palette", 100_000),
    _xlsx("damaged_theme", 10_000),
    _xlsx("merge_of_all_rows", 1_048_576, is_amount=False, told="merged cells"),
    _xlsx("overlapping_merges", 100_000, told="merged cells"),
    _xlsx("nested_merges_of_the_sheet", 20_000, told="merged cells"),
    _xlsx("sizes", 16_384, is_amount=False),
    _xlsx("default_sizes", 400, is_amount=False, seconds=_LARGE),
    _xlsx("text_in_a_narrow_column", 32_767),
    _xlsx("rich_text", 100_000),
    _xlsx("rotated_texts", 200, seconds=_LARGE),
    _xlsx("page_of_no_size", 999_999),
    _xlsx("print_areas", 1_000),
    _xlsx("print_titles", 100),
    _xlsx("page_breaks", 50_000),
    _xlsx("long_footer", 20_000),
    _xlsx("deep_formula", 10_000),
    _xlsx("deep_formula_within_limits", 2_000),
    _xlsx("long_formula", 1_000_000, told="formula"),
    _xlsx("chain_of_cells", 100_000, seconds=_LARGE),
    _xlsx("chain_upwards", 100_000, seconds=_LARGE),
    _xlsx("circle_of_cells", 100_000, seconds=_LARGE),
    _xlsx("sums_of_all_before", 20_000, seconds=_EVALUATED),
    _xlsx("expensive_cells", 1_000, told="formulas", seconds=_EVALUATED),
    _xlsx("large_texts", 60),
    _xlsx("names_in_a_circle", 20_000),
    _xlsx("names_that_double", 60, is_amount=False),
    _xlsx("expensive_condition", 2_000, seconds=_EVALUATED),
    _xlsx("conditions", 100_000, told="conditional format"),
    _xlsx("conditions_of_all_cells", 2_000, seconds=_EVALUATED),
    _xlsx("ranges_of_a_condition", 20_000),
    _xlsx("scales", 600),
    _xlsx("shapes", 100_000, told="drawing"),
    _xlsx("shapes_of_one_group", 1_000_000, told="drawing"),
    _xlsx("nested_groups", 1_000, told="drawing"),
    _xlsx("huge_drawing", 1 << 62, is_amount=False),
    _xlsx("shape_of_many_points", 300_000),
    _xlsx("large_png", 100_000, is_amount=False, told="picture"),
    _xlsx("large_jpeg", 65_535, is_amount=False, told="picture"),
    _xlsx("packed_picture", 200_000_000),
    _xlsx("packed_vectors", 60_000_000),
    _xlsx("metafile", 1_000_000),
    _xlsx("chart_of_points", 1_000_000),
    _xlsx("chart_of_extremes", 100),
    _xlsx("sparklines", 100_000),
    _xls("no_such_shared_text", 0x7FFFFFFF),
    _xls("no_such_style", 0xFFF0),
    _xls("no_such_font", 0xFFFF),
    _xls("no_such_number_format", 0xFFFF),
    _xls("no_such_parent", 0xFFFF),
    _xls("no_such_colors", 0xFFFF),
    _xls("long_palette", 0xFFFF),
    _xls("lying_count_of_texts", 0xFFFFFFFF),
    _xls("lying_font_name", 0xFF),
    _xls("lying_format", 0xFFFF),
    _xls("merges_of_all", 1_000),
    _xls("fonts", 20_000),
    _xls("lying_drawing", 0xFFFFFFFF),
    _xls("short_drawing", 10),
    _xls("nested_drawing", 1_000),
    _xls("huge_anchor", 0xFFFF),
)


def _limits(look, is_sanitized):
    if is_sanitized:
        return Limits(seconds=int(look.seconds * _SANITIZED_TIMES), wall_seconds=300, addresses=0)
    return Limits(seconds=30, wall_seconds=300)


def _picture_failures(look, ended, is_full):
    """What is wrong with the object that is printed."""
    try:
        shown = json.loads(ended.stdout) if len(ended.stdout) < 1 << 20 else None
    except ValueError as error:
        yield Failure("no JSON", str(error))
        return
    if shown is None:  # only the beginning is kept
        return
    left_out = " ".join(item["what"] for item in shown["leftOut"])
    if is_full and look.told and look.told not in left_out:
        yield Failure("not told", f"{look.told} is not among what is left out: {left_out[:200]}")


def judge(look, program, processes, place, is_full):
    """What the program took, and the failures."""
    place.clear()
    path = place.place("template", look.file_name)
    with open(path, "wb") as file:
        file.write(look.make(is_full))
    ended = processes.run([*program.command, "look", path, "--json", "--svg",
                           place.place("output", "look.svg")], place.place("current"),
                          place.environment(**program.environment()),
                          _limits(look, program.is_sanitized))
    failures = list(end_failures(ended, program))
    if ended.code in (0, 1):
        failures += message_failures(ended)
    if ended.code == 0:
        failures += _picture_failures(look, ended, is_full)
    if not program.is_sanitized and ended.cpu > look.seconds:
        failures.append(Failure("time", f"took {ended.cpu:.1f} s of {look.seconds}"))
    if not program.is_sanitized and ended.memory > look.mebibytes:
        failures.append(Failure("memory", f"took {ended.memory:.0f} MiB"))
    return ended, failures, path


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--cli", required=True)
    parser.add_argument("--sanitized", action="store_true", help="the program has sanitizers")
    parser.add_argument("--full", action="store_true", help="workbooks of the full size")
    parser.add_argument("--keep", default="", help="folder for the workbooks that fail")
    parser.add_argument("names", nargs="*", help="only these")
    options = parser.parse_args()
    program = Program([os.path.abspath(options.cli)], options.sanitized, Limits(
        seconds=240 if options.sanitized else 60, wall_seconds=300,
        addresses=0 if options.sanitized else 4 << 30))
    work = tempfile.mkdtemp(prefix="orrery-hostile-look-")
    failed = 0
    try:
        place = Scratch(work)
        processes = Processes(place.place("printed"))
        for look in LOOKS:
            if options.names and look.name not in options.names:
                continue
            ended, failures, path = judge(look, program, processes, place, options.full)
            failed += bool(failures)
            print(f"{'FAILED' if failures else 'ok':7}{look.file_name:40}{ended.cpu:6.2f} s"
                  f"{ended.memory:6.0f} MiB  {ended.code}",
                  "; ".join(f"{one.kind}: {one.text}" for one in failures), flush=True)
            if failures and options.keep:
                os.makedirs(options.keep, exist_ok=True)
                shutil.copy(path, options.keep)
        processes.close()
    finally:
        shutil.rmtree(work, ignore_errors=True)
    print(f"{failed} of {len(LOOKS)} looks fail")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
