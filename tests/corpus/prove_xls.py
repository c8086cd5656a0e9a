"""Edits every .xls workbook of a corpus and has the results judged by programs that are not ours.

Three stages: each workbook is saved unchanged and edited, and xlrd reads it; Apache POI,
LibreOffice and Gnumeric read all that was made, in batches; what each sees is compared. A program
that does not open the input, or sees in it what cannot be compared, does not judge the file; one
that fails on the output alone is a failure. What these programs do not show, xls_copies and
xls_structure judge.
"""

import multiprocessing
import multiprocessing.pool
import os
import traceback
from collections import Counter
from dataclasses import dataclass

import xls_embedded
import xls_office
import xls_structure
from plan import judge_refusals
from readers import Office, convert_all
from results import Case, feature_failures
from xls_book import Book
from xls_compound import CompoundFile, added, same_failures
from xls_copies import EditedBook, count_sheet
from xls_macros import EditedMacros
from xls_plan import make_plan
from xls_readers import Poi, xlrd_view
from xls_views import view_failures

_RECALCULATED = 10  # workbooks whose formulas are computed once more


@dataclass
class Made:
    """What other programs made of the workbooks, by path."""

    poi: Poi
    office: dict
    recalculated: dict
    gnumeric: dict


class WorkbookCase(Case):
    """One workbook of the corpus, saved unchanged and edited."""

    def _run(self):
        if self._drive("same", self.path, self.same) is not None:
            self.result.counted["saved unchanged"] += 1
            before, after = CompoundFile(self.path), CompoundFile(self.same)
            self.result.failures += same_failures(before, after)
            self.result.failures += [f"{path} was added" for path in added(before, after)]
        before = Book(self.path)
        plan = make_plan(before)
        output = self._edit(plan)
        if output is None and before.sheets[plan.model.index].has_pivot_table \
                and "copied" in self.result.failures[-1]:
            self.result.failures.pop()
            self.result.counted["not copied: sheets with a pivot table"] += 1
            plan = make_plan(before, copies=False)
            output = self._edit(plan)
        if output is not None:
            self.result.failures += judge_refusals(plan, output)
            self._judge(before, Book(self.edited), plan)

    def _edit(self, plan):
        plan.save(self.plan_path)
        return self._drive("edit", self.path, self.edited, self.plan_path)

    def _judge(self, before, after, plan):
        book = EditedBook(before, after, plan)
        macros = EditedMacros(before, after, book.first, book.copies)
        self.result.failures += macros.failures
        may_differ = {before.path, (), *macros.may_differ,
                      *xls_embedded.grown(before.file, after.file)}
        self.result.failures += same_failures(before.file, after.file, may_differ, macros.may_go)
        self.result.failures += [f"{'/'.join(path)!r} was added" for path in
                                 added(before.file, after.file)
                                 if not path[0].startswith("MBD") and path not in macros.added]
        self.result.failures += book.failures()
        self.result.failures += xls_structure.new_failures(before, after, book.first,
                                                           len(plan.sheets))
        grown = {what: book.copies * count for what, count in count_sheet(book.model).items()}
        self.result.failures += feature_failures(self.options.corpus, (self.path, self.edited),
                                                 grown, _MAY_GO)
        self._count(plan)
        self.result.counted["formula cells"] += len(book.model.formulas)
        self.result.edited, self.result.plan = self.edited, plan
        self._judge_by_xlrd(before, after, plan)

    def _judge_by_xlrd(self, before, after, plan):
        try:
            seen = xlrd_view(before)
        except Exception:  # of whatever kind: xlrd asserts, and overruns its buffers
            self.result.unjudged.append("xlrd")
            return
        self.result.failures += view_failures("xlrd", seen, xlrd_view(after), plan,
                                              before.sheets[plan.model.index])
        self.result.counted["judged by xlrd"] += 1


# Features that an edit rightly ends: of the container, of how cells and strings are stored, and of
# cells that were written over.
_MAY_GO = {"no_cells", "no_sst", "plain", "single_sheet", "grouped_tabs", "stream_in_mini_fat",
           "ole_problems", "ole_4096_sectors", "formulas", "shared_formulas", "bool_error_cells",
           "label_records", "rstring_records", "blank_cells", "no_dbcell", "array_formulas",
           "data_table_formulas", "cross_sheet_formulas", "formulas_external", "formulas_addin",
           "formulas_with_names", "formulas_with_ref_error", "same_sheet_3d_formulas",
           "sheet_range_formulas", "sst_count_wrong", "boundsheet_offset_wrong",
           "stream_trailing_data", "sst_string_split"}


def run_case(arguments):
    return WorkbookCase(*arguments).run()


def prove(options, rows):
    for folder in ("same", "edited", "plans", "poi"):
        os.makedirs(os.path.join(options.work, folder), exist_ok=True)
    with multiprocessing.Pool(options.jobs) as pool:
        results = pool.map(run_case, [(options, row) for row in rows], chunksize=1)
        judged = [result for result in results if result.edited]
        if options.without_office or not judged:
            return results
        made = read_all(options, judged)
        found = pool.map(judge_result, [(options, made, result) for result in judged],
                         chunksize=1)
    for result, (failures, unjudged, counted) in zip(judged, found):
        result.failures += failures
        result.unjudged += unjudged
        result.counted.update(counted)
    return results


def read_all(options, judged):
    """Has every program read the inputs and the edited workbooks. Some of them use one processor
    alone, and are run side by side."""
    inputs = [os.path.join(options.corpus, result.file) for result in judged]
    edited = [result.edited for result in judged]
    with multiprocessing.pool.ThreadPool(options.jobs) as threads:
        poi = threads.apply_async(read_with_poi, (options, inputs + edited))
        recalculated = threads.apply_async(recalculate, (options, judged))
        poi, recalculated = poi.get(), recalculated.get()
    return Made(
        poi, convert_all(options, inputs, "office-input") | convert_all(options, edited, "office"),
        recalculated,
        xls_office.gnumeric_convert(inputs, os.path.join(options.work, "gnumeric-input"),
                                    options.jobs)
        | xls_office.gnumeric_convert(edited, os.path.join(options.work, "gnumeric"),
                                      options.jobs))


def read_with_poi(options, paths):
    poi = Poi(os.path.join(options.work, "poi"))
    poi.read(paths)
    return poi


def recalculate(options, judged):
    """Has LibreOffice compute every formula of some edited workbooks."""
    paths = [result.edited for result in judged
             if result.counted["formula cells"]][:_RECALCULATED]
    if not paths:  # LibreOffice waits where it is given nothing to convert
        return {}
    profile = xls_office.recalculating_profile(options.work)
    return Office(options.work, profile).convert(
        paths, os.path.join(options.work, "recalculated"))


def judge_result(arguments):
    """In a worker: what the programs see in one workbook."""
    options, made, result = arguments
    judges = Judges(options, made, result)
    for judge in (judges.poi, judges.office, judges.gnumeric):
        try:
            judge()
        except Exception:
            judges.failures.append(f"the check itself broke: {traceback.format_exc(limit=-4)}")
    return judges.failures, judges.unjudged, judges.counted


class Judges:
    """The programs that judge one workbook."""

    def __init__(self, options, made, result):
        self.made, self.result, self.plan = made, result, result.plan
        self.before = Book(os.path.join(options.corpus, result.file))
        self.after = Book(result.edited)
        self.model = self.before.sheets[self.plan.model.index]
        self.failures, self.unjudged, self.counted = [], [], Counter()

    def _compare(self, program, before, after, renders_all=True, unjudged=frozenset()):
        """`before` and `after` are views, or None where the program does not open the file."""
        if before is None:
            self.unjudged.append(program)
        elif after is None:
            self.failures.append(f"{program} opens the input and not the edited workbook")
        else:
            self.failures += view_failures(program, before, after, self.plan, self.model,
                                           renders_all, unjudged)
            self.counted[f"judged by {program}"] = 1

    def poi(self):
        before, _ = self.made.poi.view(self.before.file.path)
        after, why = self.made.poi.view(self.after.file.path)
        if before and why:
            self.failures.append(f"Apache POI says: {why}")
        self._compare("Apache POI", before, after)

    def _view(self, made, path, view):
        return view(made[path]) if made.get(path) else None

    def office(self):
        before, after = (self._view(self.made.office, book.file.path, xls_office.office_view)
                         for book in (self.before, self.after))
        pivots = self.model.has_pivot_table
        # It sets the cells that are linked to controls when it opens a workbook.
        self._compare("LibreOffice", before, after, not pivots, self.model.linked_cells)
        if pivots:
            self.unjudged.append("LibreOffice (values; it lays out pivot tables anew)")
        again = self.made.recalculated.get(self.after.file.path)
        if again and after:
            seen, computed = (xls_office.stored_values(path) for path in
                              (self.made.office[self.after.file.path], again))
            wrong = [key for key, value in computed.items() if seen.get(key) != value]
            if wrong:
                self.failures.append(f"LibreOffice shows {seen.get(wrong[0])} in {wrong[0]}, and "
                                     f"computes {computed[wrong[0]]} ({len(wrong)} cells)")
            self.counted["formulas computed again"] = len(computed)

    def gnumeric(self):
        before, after = (self._view(self.made.gnumeric, book.file.path, xls_office.gnumeric_view)
                         for book in (self.before, self.after))
        self._compare("Gnumeric", before, after)
