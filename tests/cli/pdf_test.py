"""PDF files of calendars, made by the installed LibreOffice or by the program itself, and read by poppler's
programs."""

import calendar
import json
import os
import pathlib
import subprocess
import unittest

import openpyxl
import xlwt

from program import Program

MONTHS = list(calendar.month_name)[1:]
PARAMETERS = """[{kind} Calendar]
Output={output}
SheetName={kind}
FirstCellOfDay=B5
ColIntervalOfDay=1
RowIntervalOfDay=1
OutMonth=Y
FirstCellOfMonth=B2
OutYear=N
OutWeekday=N
OutHoliday=N
MonthLayout=3
ColIntervalOfMonth=9
RowIntervalOfMonth=10
"""


def pages_of(pdf):
    """The words of each page, joined with blanks."""
    text = subprocess.run(["pdftotext", pdf, "-"], text=True, capture_output=True, check=True,
                          timeout=60).stdout
    pages = [" ".join(page.split()) for page in text.split("\f")[:-1]]
    info = subprocess.run(["pdfinfo", pdf], text=True, capture_output=True, check=True,
                          timeout=60).stdout
    said = next(line.split()[1] for line in info.splitlines() if line.startswith("Pages:"))
    assert len(pages) == int(said), (len(pages), said)
    return pages


def producer_of(pdf):
    info = subprocess.run(["pdfinfo", pdf], text=True, capture_output=True, check=True,
                          timeout=60).stdout
    return next(line for line in info.splitlines() if line.startswith("Producer:"))


class PdfTests:
    """What holds whoever makes the files. OPTIONS ask for them."""

    def setUp(self):
        super().setUp()
        self.addCleanup(self.assert_no_stray_process)

    def assert_no_stray_process(self):
        """No process has this test's home folder on its command line, as LibreOffice would."""
        for command in pathlib.Path("/proc").glob("[0-9]*/cmdline"):
            try:
                self.assertNotIn(os.fsencode(self.home), command.read_bytes())
            except OSError:
                pass  # the process has ended meanwhile

    def make_xlsx(self, hidden=(), areas=(), monthly="Y", yearly="Y"):
        """A template whose year sheet comes before the months, between two other sheets."""
        book = openpyxl.Workbook()
        book.remove(book.active)
        for name in ("Cover", "Yearly", "Monthly", "Remarks"):
            sheet = book.create_sheet(name)
            sheet["B1"] = f"This is {name}"
            sheet.oddFooter.center.text = "From the file &F"
            sheet.sheet_properties.pageSetUpPr = openpyxl.worksheet.properties.PageSetupProperties(
                fitToPage=True)
            if name in areas:
                sheet.print_area = areas[name]
            if name in hidden:
                sheet.sheet_state = "hidden"
        book.save(self.home / "Mine.xlsx")
        self.write_parameters(monthly, yearly)

    def make_xls(self):
        self.save_xls(("Cover", "Yearly", "Monthly", "Remarks"))
        self.write_parameters("Y", "Y")

    def make_protected_xls(self):
        """A protected template, to which no sheet can be added, with a sheet for each month."""
        months = ["Monthly", *(f"Monthly-{number}" for number in range(2, 13))]
        self.save_xls(("Cover", *months, "Remarks"), protected=True)
        self.write_parameters("Y", "N")

    def save_xls(self, names, protected=False):
        book = xlwt.Workbook()
        book.protect = protected
        for name in names:
            sheet = book.add_sheet(name)
            sheet.write(0, 1, f"This is {name}")
            sheet.set_fit_num_pages(1)
            sheet.header_str, sheet.footer_str = b"", b"From the file &F"
        book.save(str(self.home / "Mine.xls"))

    def write_parameters(self, monthly, yearly):
        (self.home / "Mine.ini").write_text(
            PARAMETERS.format(kind="Monthly", output=monthly)
            + PARAMETERS.format(kind="Yearly", output=yearly))

    def assert_calendar_pages(self, pages):
        self.assertEqual(len(pages), 13, pages)
        self.assertIn("This is Yearly", pages[0])
        self.assertRegex(pages[0], r"From the file 2027Mine\b")
        for name in MONTHS:
            self.assertIn(name, pages[0])
        self.assert_month_pages(pages[1:])

    def assert_month_pages(self, pages):
        self.assertEqual(len(pages), 12, pages)
        for month, (name, page) in enumerate(zip(MONTHS, pages), start=1):
            self.assertIn("This is Monthly", page)
            self.assertRegex(page, r"From the file 2027Mine\b")
            self.assertEqual([other for other in MONTHS if other in page], [name])
            days = range(1, calendar.monthrange(2027, month)[1] + 1)
            self.assertEqual(sorted(int(word) for word in page.split() if word.isdigit()),
                             list(days), page)

    def test_has_only_the_pages_of_the_months_and_of_the_year(self):
        for make, ending in ((self.make_xlsx, "xlsx"), (self.make_xls, "xls")):
            make()
            result = self.generate(f"Mine.{ending}", 2027, *self.OPTIONS)
            self.assertEqual((result.returncode, result.stderr), (0, ""))
            self.assertEqual(result.stdout, f"{self.output}/2027Mine.{ending}\n"
                                            f"{self.output}/2027Mine.pdf\n")
            self.assert_calendar_pages(pages_of(self.output / "2027Mine.pdf"))
            (self.output / "2027Mine.pdf").unlink()

    def test_every_year_has_one(self):
        result = self.generate("Desk.xls", "2027-2029", *self.OPTIONS, "--json")
        self.assertEqual(result.returncode, 0, result.stderr)
        years = range(2027, 2030)
        self.assertEqual(json.loads(result.stdout),
                         {"engine": "builtin", "reports": [],
                          "saved": [f"{self.output}/{year}Desk.xls" for year in years],
                          "pdf": [f"{self.output}/{year}Desk.pdf" for year in years]})
        for year in years:
            pages = pages_of(self.output / f"{year}Desk.pdf")
            self.assertEqual(len(pages), 13)
            for page in pages:
                self.assertIn(str(year), page)
        self.assertEqual(len(os.listdir(self.output)), 6, "nothing else is left")

    def test_an_earlier_one_is_replaced(self):
        self.output.mkdir()
        (self.output / "2027Desk.pdf").write_text("an earlier one")
        self.generate("Desk.xlsx", 2027, *self.OPTIONS)
        self.assertEqual(len(pages_of(self.output / "2027Desk.pdf")), 13)

    def test_an_open_workbook_is_printed(self):
        self.output.mkdir()
        lock = self.output / ".~lock.2027Desk.xlsx#"
        lock.write_text(",somebody,elsewhere,01.01.2027 12:00,file:///home/somebody;")
        result = self.generate("Desk.xlsx", 2027, *self.OPTIONS)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertEqual(len(pages_of(self.output / "2027Desk.pdf")), 13)
        self.assertTrue(lock.exists())

    def test_hidden_sheets_have_no_pages(self):
        self.make_xlsx(hidden=["Monthly", "Cover"])
        result = self.generate("Mine.xlsx", 2027, *self.OPTIONS)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        pages = pages_of(self.output / "2027Mine.pdf")
        self.assertEqual(len(pages), 1)
        self.assertTrue(pages[0].startswith("This is Yearly "))

    def test_print_areas_limit_only_the_pages_of_the_calendars(self):
        self.make_xlsx(areas={"Monthly": "B2:B8", "Remarks": "A1:C3"}, yearly="N")
        result = self.generate("Mine.xlsx", 2027, *self.OPTIONS)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        pages = pages_of(self.output / "2027Mine.pdf")
        self.assertEqual(len(pages), 12)
        for month, (name, page) in enumerate(zip(MONTHS, pages), start=1):
            weeks = calendar.Calendar(calendar.SUNDAY).monthdayscalendar(2027, month)[:4]
            sundays = [str(week[0]) for week in weeks if week[0] > 0]
            self.assertEqual(page, " ".join([name, *sundays, "From the file 2027Mine.xlsx"]))

    def test_a_workbook_with_protected_structure_is_printed(self):
        self.make_protected_xls()
        result = self.generate("Mine.xls", 2027, *self.OPTIONS)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assert_month_pages(pages_of(self.output / "2027Mine.pdf"))

    def test_without_a_page_there_is_none_and_one_report(self):
        for options in ({"hidden": ["Monthly", "Yearly"]}, {"monthly": "N", "yearly": "N"}):
            self.make_xlsx(**options)
            result = self.generate("Mine.xlsx", 2027, *self.OPTIONS)
            self.assertEqual(result.returncode, 1)
            self.assertEqual(result.stdout, f"{self.output}/2027Mine.xlsx\n")
            self.assertEqual(result.stderr,
                             "Error!\nError Info: Failed to make the PDF file.\nThe workbook has "
                             "no calendar sheet that can be seen. Switch a calendar on in the "
                             "parameters, and do not hide its sheet in the template.\n")
            self.assertEqual(os.listdir(self.output), ["2027Mine.xlsx"])

    def test_one_that_cannot_be_written_keeps_the_workbook(self):
        (self.output / "2027Desk.pdf").mkdir(parents=True)
        (self.output / "2027Desk.pdf/mine").touch()
        result = self.generate("Desk.xlsx", 2027, *self.OPTIONS)
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stdout, f"{self.output}/2027Desk.xlsx\n")
        self.assertIn("Failed to make the PDF file.\n", result.stderr)
        self.assertIn("2027Desk.pdf", result.stderr.splitlines()[2])
        self.assertEqual(sorted(os.listdir(self.output)), ["2027Desk.pdf", "2027Desk.xlsx"])


@unittest.skipUnless(os.environ["ORRERY_LIBREOFFICE"] == "1", "the build does without LibreOffice")
class OfficePdf(PdfTests, Program):
    OPTIONS = ["--pdf"]

    def test_a_workbook_that_libreoffice_wrote_has_the_same_pages(self):
        self.make_xlsx()
        result = self.generate("Mine.xlsx", 2027, "--pdf", "--engine", "libreoffice")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assert_calendar_pages(pages_of(self.output / "2027Mine.pdf"))

    def test_its_other_name_is_office(self):
        result = self.generate("Desk.xlsx", 2027, "--pdf-by", "office")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertIn("LibreOffice", producer_of(self.output / "2027Desk.pdf"))

    def test_without_it_libreoffice_is_not_started(self):
        result = self.generate("Desk.xlsx", 2027)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(os.listdir(self.output), ["2027Desk.xlsx"])
        self.assertFalse((self.home / ".cache").exists(), "the folder of LibreOffice's profiles")


@unittest.skipUnless(os.environ["ORRERY_PDF"] == "1", "the build does without PDF files of its own")
class OwnPdf(PdfTests, Program):
    OPTIONS = ["--pdf-by", "builtin"]

    def test_libreoffice_is_not_started(self):
        result = self.generate("Desk.xlsx", 2027, *self.OPTIONS)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertFalse((self.home / ".cache/orrery").exists(), "the folder of LibreOffice's profiles")
        self.assertNotIn("LibreOffice", producer_of(self.output / "2027Desk.pdf"))

    def test_pages_are_numbered_through_all_sheets(self):
        self.generate("Family.xlsx", 2027, *self.OPTIONS)
        for number, page in enumerate(pages_of(self.output / "2027Family.pdf"), start=1):
            self.assertIn(f"{number} of 4", page)

    def test_the_same_calendar_gives_the_same_file(self):
        files = []
        for _ in range(2):
            self.generate("Wall.xlsx", 2027, *self.OPTIONS)
            files.append((self.output / "2027Wall.pdf").read_bytes())
        self.assertEqual(*files)


if __name__ == "__main__":
    unittest.main()
