"""The modules of tests/corpus that read workbooks, for the modules of this folder."""

import os
import sys

sys.path.append(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "corpus"))

import opc  # noqa: E402,F401
import package_findings  # noqa: E402,F401
import readers  # noqa: E402,F401  which keeps openpyxl from reading pictures
import validator as xlsx_validator  # noqa: E402,F401
import xls_book as biff  # noqa: E402,F401
import xls_compound  # noqa: E402,F401
