"""Makes contract.xlsx: the workbook that the contract tests of all engines start from."""
import datetime
import pathlib
import sys

import xlsxwriter

target = sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).with_name("contract.xlsx")
workbook = xlsxwriter.Workbook(str(target))
workbook.set_properties({"created": datetime.datetime(2026, 1, 1)})
first = workbook.add_worksheet("Sheet1")
first.write_string("A1", "first")
first.write_number("B2", 42)
workbook.add_worksheet("Sheet2").write_string("A1", "second")
workbook.add_worksheet("Third").write_string("C3", "third")
workbook.close()
