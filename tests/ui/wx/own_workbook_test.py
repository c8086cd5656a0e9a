"""A workbook that somebody laid out in LibreOffice becomes a calendar: dropped on the window with the
mouse, then two clicks and no typing. ORRERY_WALK_PICTURES: folder for pictures of the walk."""

import calendar
import os
import pathlib
import subprocess
import unittest

import gi
import openpyxl

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, GLib, Gtk  # noqa: E402  (after the version)

from window_program import SOURCE, Atspi, State, User, descendants, find, has, wait_for, xdotool

MOST_CLICKS = 3
SHEET = "Garden club"
PICTURES = os.environ.get("ORRERY_WALK_PICTURES")


def make_in_libreoffice(folder):
    """Saves the workbook as .xlsx."""
    source = SOURCE / "tests/ui/wx/own_workbook.fods"
    subprocess.run(["soffice", f"-env:UserInstallation={(folder / 'office').as_uri()}", "--headless",
                    "--convert-to", "xlsx", "--outdir", folder, source], check=True,
                   capture_output=True, timeout=120)
    return (folder / source.name).with_suffix(".xlsx").rename(folder / "Garden.xlsx")


class FileManager:
    """A window with one file that can be dragged out of it."""

    PLACE = (20, 20)

    def __init__(self, path):
        self.window = Gtk.Window(title="Files", type=Gtk.WindowType.POPUP)  # where it is put
        label = Gtk.EventBox()
        label.add(Gtk.Label(label=path.name))
        label.drag_source_set(Gdk.ModifierType.BUTTON1_MASK, [], Gdk.DragAction.COPY)
        label.drag_source_add_uri_targets()
        label.connect("drag-data-get",
                      lambda _widget, _context, data, *_: data.set_uris([path.as_uri()]))
        self.window.add(label)
        self.window.set_default_size(120, 60)
        self.window.move(*self.PLACE)
        self.window.show_all()
        self.work()

    @staticmethod
    def work(seconds=0.1):
        """Handles what comes from the display."""
        GLib.timeout_add(int(seconds * 1000), Gtk.main_quit)
        Gtk.main()

    def drag_to(self, x, y):
        begin = [place + 30 for place in self.PLACE]
        xdotool("mousemove", *begin)
        xdotool("mousedown", 1)
        for step in range(1, 9):
            xdotool("mousemove", *(int(a + (b - a) * step / 8) for a, b in zip(begin, (x, y))))
            self.work()
        xdotool("mouseup", 1)
        self.work(0.5)

    def close(self):
        self.window.destroy()
        self.work()


class OwnWorkbook(unittest.TestCase):
    def setUp(self):
        self.user = User(self)
        self.clicks = 0

    @staticmethod
    def middle_of(control):
        place = Atspi.Component.get_extents(control, Atspi.CoordType.SCREEN)
        return place.x + place.width // 2, place.y + place.height // 2

    def click(self, window, name):
        window.clear_cache()
        control = wait_for(name, lambda: find(window, name))
        wait_for(f"{name} on the screen", lambda: has(control, State.SHOWING))
        xdotool("mousemove", *self.middle_of(control))
        xdotool("click", 1)
        self.clicks += 1

    @staticmethod
    def picture(name):
        if PICTURES:
            path = pathlib.Path(PICTURES) / f"{name}.png"
            subprocess.run(["import", "-frame", "-window", xdotool("getactivewindow"), path],
                           check=True)

    def test_is_a_calendar_after_two_clicks(self):
        workbook = make_in_libreoffice(self.user.folder)
        program = self.user.start()
        main = program.start_work()
        files = FileManager(workbook)
        files.drag_to(*self.middle_of(main))
        files.close()

        window = program.main_window()
        found = wait_for("what was found", lambda: self.label(window, "Orrery found"))
        self.assertIn(f"a month grid on '{SHEET}'", found)
        self.picture("walk-dropped")
        self.click(window, "Use this")
        wait_for("no more question", lambda: not self.label(window, "Orrery found"))
        wait_for("pages", lambda: self.label(window, "January, page 1 of 12"))
        self.picture("walk-pages")
        self.click(window, "Generate")
        calendars = self.user.data / "output"
        wait_for("the calendar on the desktop", self.user.opened)
        self.picture("walk-saved")
        (saved,) = calendars.iterdir()
        self.assertEqual(self.user.opened(), [str(saved)])
        self.assertLessEqual(self.clicks, MOST_CLICKS)
        self.check(saved, int(saved.name[:4]))

    @staticmethod
    def label(window, beginning):
        """The text on the screen that begins with these words."""
        window.clear_cache()
        for part in [window, *descendants(window)]:
            name = part.get_name() or ""
            if name.startswith(beginning) and has(part, State.SHOWING):
                return " ".join(name.split())
        return None

    def check(self, path, year):
        """Every month has its days below their weekdays, and the colours of the template."""
        book = openpyxl.load_workbook(path)
        self.assertEqual(book.sheetnames, list(calendar.month_name)[1:])
        for month, sheet in enumerate(book, start=1):
            self.assertEqual(sheet["B2"].value, calendar.month_name[month])
            self.assertEqual(sheet["G2"].value, year)
            self.assertEqual(sheet["B2"].fill.fgColor.rgb, "FF2E5D3B")
            self.assertEqual([cell.value for cell in sheet["B3:H3"][0]], list(calendar.day_name))
            weeks = calendar.Calendar(calendar.MONDAY).monthdayscalendar(year, month)
            for row, week in zip(range(4, 16, 2), weeks + [[0] * 7] * (6 - len(weeks))):
                shown = [cell.value or 0 for cell in sheet[f"B{row}:H{row}"][0]]
                self.assertEqual(shown, week, (month, row))


if __name__ == "__main__":
    unittest.main()
