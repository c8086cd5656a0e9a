#!/usr/bin/env python3
"""Edits every workbook of a corpus and has the results judged by programs that are not ours.

usage: prove.py xlsx|xls|bad --corpus FOLDER --driver [RUNNER] PROGRAM [--sample N] [--jobs N]
                [--only TEXT] [--keep DIR]

xlsx: each workbook is saved unchanged; its first worksheet is renamed, copied 11 times, and 400
cells are written into each of the twelve. xls: the same, and the results are judged by Apache POI,
xlrd, LibreOffice and Gnumeric. bad: each file gets one clear sentence, or a right result, in 2
seconds and 512 MiB. A sample has at least N workbooks and every feature of all. Where the corpus's
manifest says that a reader cannot judge a file, it does not judge it. Exit code 0: no failure; 1:
failures; 77: there is no corpus.
"""

import argparse
import csv
import multiprocessing
import os
import shutil
import sys
import tempfile
import time
import traceback

import bad_files
import integrity
import prove_xls
import readers
import validator
from edited import EditedWorkbook
from opc import Package
from plan import judge_refusals, make_plan
from results import Case, Result, feature_failures, report
from sample import sample
from workbook import workbook_failures

SKIPPED = 77


class WorkbookCase(Case):
    """One workbook of the corpus, saved unchanged and edited."""

    def _run(self):
        before = Package(self.path)
        if self._drive("same", self.path, self.same) is not None:
            self.result.counted["saved unchanged"] += 1
            self.result.failures += integrity.same_failures(before, Package(self.same))
        plan = make_plan(before, last_row=self.row["lo_to_xlsx"] != "yes")
        plan.save(self.plan_path)
        output = self._drive("edit", self.path, self.edited, self.plan_path)
        if output is None:
            return
        self.result.failures += judge_refusals(plan, output)
        self._judge(before, Package(self.edited), plan)

    def _judge(self, before, after, plan):
        for check in (integrity.package_failures, workbook_failures):
            self.result.failures += check(before, after, plan)
        if len(after.sheets) != len(before.sheets) + len(plan.sheets) - 1:
            return
        workbook = EditedWorkbook(before, after, plan)
        self.result.failures += workbook.failures()
        self.result.failures += workbook.workbook_name_failures()
        grown = {key: (len(plan.sheets) - 1) * workbook.counted[own]
                 for key, own in COUNTED.items()}
        self.result.failures += feature_failures(self.options.corpus, (self.path, self.edited),
                                                 grown, MAY_GO)
        self._count(plan)
        self.result.failures += validator.new_errors(self.path, self.edited, before, after, plan)
        self.result.counted["judged by the validator"] += 1
        self._read_back(before, plan)
        self.result.edited, self.result.plan = self.edited, plan
        self.result.merges = workbook.model_cells.merges
        self.result.has_pivots = workbook.counted["pivot tables"] > 0
        self.result.sheet_names = [sheet.name for sheet in after.sheets]

    def _read_back(self, before, plan):
        if self.row["py_opens"] != "yes":
            self.result.unjudged.append("openpyxl")
            return
        failures = readers.openpyxl_failures(self.path, self.edited, plan,
                                             before.tree(plan.model.part))
        if failures is None:
            self.result.unjudged.append("openpyxl (it shows no sheet of the input)")
            return
        self.result.failures += failures
        self.result.counted["judged by openpyxl"] += 1


# What the corpus's own counter calls what a sheet owns.
COUNTED = {"merged": "merges", "comments": "comments", "tables": "tables", "charts": "charts",
           "pictures": "pictures", "sheet_views": "views"}
# Features that an edit rightly ends: what describes the container and the encoding, the chain that
# is made anew (with what names a chain that is not there), the state of a workbook before it was
# written to, and cells that were written over.
MAY_GO = {"zip_data_descriptors", "zip_stored", "zip_dir_entries", "zip64_extra", "calc_chain",
          "no_sst", "no_cells", "plain", "single_sheet", "grouped_tabs", "digital_signature",
          "rows_without_r", "cells_without_r", "formulas", "shared_formulas", "error_cells",
          "bool_cells", "inline_strings", "sheet_part_number_gaps", "xml_no_declaration",
          "cross_sheet_formulas", "formulas_external", "iso_date_cells", "array_formulas",
          "cell_metadata_refs", "formulas_with_ref_error", "rich_text", "xml_bom", "xml_utf16",
          "xml_encoding_utf-16", "xml_encoding_utf-16be", "ct_override_without_part",
          "dangling_rel"}


def judge_office(arguments):
    """Stage two, in a worker: what LibreOffice made of one file."""
    result, resaved = arguments
    try:
        if resaved is None:
            return ["LibreOffice does not open the edited workbook"]
        return list(readers.office_failures(resaved, result.plan, result.sheet_names,
                                            result.merges, result.has_pivots))
    except Exception:
        return [f"the check itself broke: {traceback.format_exc(limit=-4)}"]


def run_case(arguments):
    return WorkbookCase(*arguments).run()


def prove_workbooks(options, rows):
    for folder in ("same", "edited", "plans", "office"):
        os.makedirs(os.path.join(options.work, folder), exist_ok=True)
    with multiprocessing.Pool(options.jobs) as pool:
        results = pool.map(run_case, [(options, row) for row in rows], chunksize=1)
        if options.without_office:
            return results
        lo = {row["file"]: row["lo_to_xlsx"] for row in rows}
        judged = [result for result in results if result.edited and lo[result.file] == "yes"]
        for result in results:
            if lo[result.file] != "yes":
                result.unjudged.append("LibreOffice")
        resaved = readers.convert_all(options, [result.edited for result in judged], "office")
        found = pool.map(judge_office, [(result, resaved[result.edited]) for result in judged],
                         chunksize=1)
    for result, failures in zip(judged, found):
        result.failures += failures
        result.counted["judged by LibreOffice"] += 1
        if result.has_pivots:
            result.unjudged.append("LibreOffice (values; it lays out pivot tables anew)")
    return results


def corpus_is_absent(folder):
    """Says loudly that there is nothing to prove with; the exit code then."""
    print("*" * 78)
    print(f"*** NO CORPUS at {folder}: nothing was proved with real workbooks.")
    print("*" * 78)
    required = os.environ.get("CI") or os.environ.get("ORRERY_REQUIRE_CORPUS")
    return 1 if required else SKIPPED


def read_options():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("suite", choices=("xlsx", "xls", "bad"))
    parser.add_argument("--corpus", required=True)
    parser.add_argument("--driver", required=True, nargs="+",
                        help="the program, after what runs it where it is not of this system")
    parser.add_argument("--sample", type=int, help="at least so many files instead of all")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--only", default="", help="files whose names contain this text")
    parser.add_argument("--without-office", action="store_true",
                        help="other programs judge nothing; for builds whose results are the same")
    parser.add_argument("--keep", help="folder for the workbooks made, kept afterwards")
    return parser.parse_args()


def main():
    options = read_options()
    manifest = os.path.join(options.corpus, "MANIFEST.tsv")
    if not os.path.exists(manifest):
        return corpus_is_absent(options.corpus)
    with open(manifest, encoding="utf-8") as file:
        rows = [row for row in csv.DictReader(file, delimiter="\t")
                if row["file"].startswith(options.suite + "/") and options.only in row["file"]]
    if options.sample:
        rows = sample(rows, options.sample)
    begin = time.monotonic()
    options.work = options.keep or tempfile.mkdtemp(prefix="orrery-corpus-")
    os.makedirs(options.work, exist_ok=True)
    try:
        if options.suite == "xlsx":
            validator.install()
            results = prove_workbooks(options, rows)
        elif options.suite == "xls":
            results = prove_xls.prove(options, rows)
        else:
            results = bad_files.prove(options, rows, Result)
    finally:
        if not options.keep:
            shutil.rmtree(options.work, ignore_errors=True)
    failed = report(results)
    if options.keep:
        with open(os.path.join(options.keep, "failures.txt"), "w", encoding="utf-8") as file:
            file.writelines(f"{result.file}: {failure}\n" for result in results
                            for failure in result.failures)
    print(f"{'time':<40}{time.monotonic() - begin:>9.1f}s")
    if not results:
        print("FAILED the manifest lists no such files")
    return 1 if failed or not results else 0


if __name__ == "__main__":
    sys.exit(main())
