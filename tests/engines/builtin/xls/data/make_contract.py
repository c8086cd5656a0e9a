"""Makes contract.xls: the .xls workbook that the contract tests of all engines start from."""
import pathlib
import sys

import xlwt

target = sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).with_name("contract.xls")
workbook = xlwt.Workbook()
first = workbook.add_sheet("Sheet1")
first.write(0, 0, "first")
first.write(1, 1, 42)
workbook.add_sheet("Sheet2").write(0, 0, "second")
workbook.add_sheet("Third").write(2, 2, "third")
workbook.save(str(target))
