"""The installed window program for a new user with empty folders and a keyboard."""

import calendar
import configparser
import datetime
import os
import re
import shutil
import subprocess
import unittest

import openpyxl
import xlrd

from window_program import (SOURCE, Atspi, User, Program, find, has, press, type_over, wait_for,
                            xdotool)

SHIPPED = SOURCE / "data"
# Known warnings about the desktop's buses.
CHATTER = re.compile(r"(dbind|dconf)-WARNING")


def read_xlsx(workbook, sheet):
    """Returns a function that reads the value at row and column, both from 1."""
    cells = openpyxl.load_workbook(workbook)[sheet]
    return lambda row, column: cells.cell(row, column).value


def read_xls(workbook, sheet):
    cells = xlrd.open_workbook(workbook).sheet_by_name(sheet)

    def value(row, column):
        is_there = row <= cells.nrows and column <= cells.ncols
        return cells.cell_value(row - 1, column - 1) if is_there else None
    return value


def names(folder):
    return sorted(path.name for path in folder.iterdir())


class NewUser(unittest.TestCase):
    def setUp(self):
        self.user = User(self)

    def assert_ended_well(self, program: Program):
        self.assertEqual(program.exit_code(), 0)
        said = program.errors.read_text().splitlines()
        self.assertEqual([line for line in said if line and not CHATTER.search(line)], [])

    def assert_is_calendar(self, value, year, month):
        """Checks a sheet of the shipped desk calendar: names above, weeks of four rows below."""
        self.assertEqual(value(2, 2), calendar.month_name[month])
        self.assertEqual(value(2, 7), year)
        self.assertEqual([value(4, 2 + day) for day in range(7)],
                         ["Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday",
                          "Saturday"])
        first = datetime.date(year, month, 1).isoweekday() % 7  # Sunday is 0
        days = calendar.monthrange(year, month)[1]
        expected = {(6 + 4 * (place // 7), 2 + place % 7): place - first + 1
                    for place in range(first, first + days)}
        for row in range(6, 27, 4):
            for column in range(2, 9):
                self.assertEqual(value(row, column) or None, expected.get((row, column)),
                                 (month, row, column))

    def wait_for_opened(self, workbook):
        """Waits until the finished workbook is opened."""
        wait_for(f"{workbook.name} on the desktop", self.user.opened)
        self.assertEqual(self.user.opened(), [str(workbook)])

    def test_makes_a_calendar(self):
        program = self.user.start()
        program.start_work()
        for folder in ("template", "holiday"):
            self.assertEqual(names(self.user.data / folder), names(SHIPPED / folder))
        self.assertTrue(self.user.settings.is_file())

        press("alt+f", "Down", "Down")  # Desk.xls, Desk.xlsx
        type_over("alt+y", "2031")
        press("alt+g")
        workbook = self.user.data / "output/2031Desk.xlsx"
        self.wait_for_opened(workbook)
        for month in range(1, 13):
            sheet = read_xlsx(workbook, calendar.month_name[month])
            self.assert_is_calendar(sheet, 2031, month)
        status = f"Saved as {workbook} by the built-in engine"
        wait_for("status line", lambda: find(program.main_window(), status))
        press("alt+x")
        self.assert_ended_well(program)

    @unittest.skipUnless(os.environ["ORRERY_PLUGIN"], "this build leaves LibreOffice out")
    def test_makes_a_pdf_with_libreoffice(self):
        self.make_pdf(os.environ["ORRERY_PLUGIN"])

    @unittest.skipUnless(os.environ["ORRERY_PDF"], "this build makes no PDF files of its own")
    def test_makes_a_pdf_without_libreoffice(self):
        self.make_pdf(os.environ["ORRERY_PDF"])

    def make_pdf(self, library):
        program = self.user.start_beside(library)
        main = program.start_work()
        box = find(main, "Also as PDF")
        self.assertTrue(has(box, Atspi.StateType.SHOWING))
        self.assertFalse(has(box, Atspi.StateType.CHECKED))
        press("alt+f", "Down")  # Desk.xls
        press("alt+d")
        wait_for("tick", lambda: has(box, Atspi.StateType.CHECKED))
        type_over("alt+y", "2031")
        press("alt+g")
        workbook = self.user.data / "output/2031Desk.xls"
        status = f"Saved by the built-in engine as {workbook} and 2031Desk.pdf"
        wait_for("status line", lambda: find(program.main_window(), status))
        pages = subprocess.run(["pdftotext", workbook.with_suffix(".pdf"), "-"], text=True,
                               capture_output=True, check=True).stdout.split("\f")[:-1]
        self.assertEqual(len(pages), 13)
        press("alt+x")
        self.assert_ended_well(program)

    def test_the_window_manager_closes_the_program(self):
        program = self.user.start()
        program.start_work()
        press("alt+F4")
        self.assert_ended_well(program)

    def test_a_template_on_the_command_line_is_copied_and_chosen(self):
        mine = self.user.folder / "Mine.xls"
        shutil.copy(SHIPPED / "template/Desk.xls", mine)
        shutil.copy(SHIPPED / "template/Desk.ini", mine.with_suffix(".ini"))
        program = self.user.without_tips().start(mine)
        copy = self.user.data / "template/Mine.xls"
        wait_for("copy of the template", copy.exists)
        main = program.main_window()
        wait_for("choice of the template", lambda: find(main, "Mine.xls"))
        self.assertEqual(names(copy.parent), ["Mine.ini", "Mine.xls"])
        self.assertEqual(copy.read_bytes(), mine.read_bytes())

        type_over("alt+y", "2024")
        press("alt+g")
        workbook = self.user.data / "output/2024Mine.xls"
        self.wait_for_opened(workbook)
        self.assert_is_calendar(read_xls(workbook, "February"), 2024, 2)
        program.main_window()
        press("alt+x")
        self.assert_ended_well(program)

    def test_a_file_that_is_no_template_is_refused(self):
        note = self.user.folder / "note.txt"
        note.write_text("not a workbook")
        program = self.user.without_tips().start(note)
        program.message_box('Error!\nError Info: "note.txt" is no template. '
                            "Drop Excel workbooks (.xls or .xlsx).")
        press("Return")
        program.main_window()
        self.assertEqual(names(self.user.data / "template"), [])
        press("alt+x")
        self.assert_ended_well(program)

    def test_size_and_place_are_remembered(self):
        self.user.without_tips()
        program = self.user.start()
        exit_button = find(program.main_window(), "Exit")
        main = program.main_window()
        pages = wait_for("page", lambda: self.find_anew(main, "There is no template to show."))
        right = self.right_edge(pages)
        exit_edge = self.right_edge(exit_button)
        width, height = self.size()
        larger = (width + 180, height + 90)
        xdotool("windowsize", xdotool("getactivewindow"), *larger)
        wait_for("larger window", lambda: self.right_edge(pages) == right + 180)
        self.assertEqual(self.right_edge(exit_button), exit_edge)
        self.assertEqual(self.size(), larger)
        xdotool("windowmove", "--sync", xdotool("getactivewindow"), 700, 900)
        place = self.place()
        press("alt+x")
        self.assert_ended_well(program)

        again = self.user.start()
        again.main_window()
        wait_for("window of the same size", lambda: self.size() == larger)
        wait_for("window in the same place", lambda: self.place() == place)
        press("alt+x")
        self.assert_ended_well(again)

    @staticmethod
    def geometry(*keys):
        lines = xdotool("getactivewindow", "getwindowgeometry", "--shell").splitlines()
        values = dict(line.split("=") for line in lines)
        return tuple(int(values[key]) for key in keys)

    def size(self):
        return self.geometry("WIDTH", "HEIGHT")

    def place(self):
        return self.geometry("X", "Y")

    @staticmethod
    def find_anew(window, name):
        """The control that has that name now: names that were read before are kept otherwise."""
        window.clear_cache()
        return find(window, name)

    @staticmethod
    def right_edge(control):
        place = Atspi.Component.get_extents(control, Atspi.CoordType.WINDOW)
        return place.x + place.width

    def test_tips_are_switched_off_permanently(self):
        program = self.user.start()
        program.active_window("Tip of the Day")
        self.assertEqual(self.show_tips(), "Y")
        press("alt+s")
        wait_for("note in the settings", lambda: self.show_tips() == "N")
        press("Escape")
        program.main_window()
        press("alt+x")
        self.assert_ended_well(program)

        again = self.user.start()
        again.main_window()
        press("alt+x")  # a tip would block the key
        self.assert_ended_well(again)

    def show_tips(self):
        settings = configparser.ConfigParser(interpolation=None, strict=False)
        settings.read(self.user.settings, encoding="utf-8-sig")
        return settings["Environment"]["ShowTips"]


if __name__ == "__main__":
    unittest.main()
