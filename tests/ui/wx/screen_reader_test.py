"""What a screen reader gets: every control of every window has a role and a name, and a field has
the name of the label beside it."""

import configparser
import unittest

from window_program import (SOURCE, Atspi, User, children, descendants, find, has, press, related,
                            shown, text_of, type_over, wait_for)

Role = Atspi.Role

# Roles of controls that a user works with or reads.
SPOKEN = {Role.PUSH_BUTTON, Role.CHECK_BOX, Role.TEXT, Role.COMBO_BOX, Role.TABLE,
          Role.SPIN_BUTTON, Role.PAGE_TAB, Role.PAGE_TAB_LIST, Role.LABEL, Role.PROGRESS_BAR,
          Role.ICON, Role.MENU_ITEM, Role.DIALOG, Role.FRAME, Role.ALERT}
# Roles of containers and decorations.
SILENT = {Role.FILLER, Role.PANEL, Role.SCROLL_PANE, Role.SCROLL_BAR, Role.SEPARATOR, Role.MENU,
          Role.TABLE_COLUMN_HEADER, Role.TABLE_CELL}

CELLS = ["First Cell of Weekday:", "Weekday Name:", "First Cell of Month:", "Month Name:",
         "First Cell of Year:", "First Cell of Holiday:", "Multiple Holidays on the Same Day:"]
FIELDS = {
    "Monthly Calendar": ["Sheet Name:", "First Day of Week:", "First Cell of Day:",
                         "Col Interval of Day:", "Row Interval of Day:"] + CELLS,
    "Yearly Calendar": ["Sheet Name:", "First Day of Week:", "First Cell of Day:",
                        "Col Interval of Day:", "Row Interval of Day:", "Layout of Months:",
                        "Col Interval of Month:", "Row Interval of Month:"] + CELLS,
}
CHOICES = {"First Day of Week:", "Layout of Months:", "Weekday Name:", "Month Name:",
           "Multiple Holidays on the Same Day:"}
# The keys in the shipped Desk.ini for the fields beside these labels.
KEYS = {"Sheet Name:": "SheetName", "First Cell of Day:": "FirstCellOfDay",
        "Col Interval of Day:": "ColIntervalOfDay", "Row Interval of Day:": "RowIntervalOfDay",
        "Col Interval of Month:": "ColIntervalOfMonth",
        "Row Interval of Month:": "RowIntervalOfMonth",
        "First Cell of Weekday:": "FirstCellOfWeekday", "First Cell of Month:": "FirstCellOfMonth",
        "First Cell of Year:": "FirstCellOfYear", "First Cell of Holiday:": "FirstCellOfHoliday"}
CHECKS = ["Output Name of Weekday", "Output Month", "Output Year", "Output Holiday"]


def labels_of(field):
    return [label.get_name() for label in related(field, Atspi.RelationType.LABELLED_BY)]


def with_role(window, *roles):
    return [part for part in shown(window) if part.get_role() in roles]


def names(window, role):
    return [part.get_name() for part in with_role(window, role)]


def fields(window):
    """Role and labels of the text boxes and drop-down lists, in Tab order."""
    return [(field.get_role(), labels_of(field))
            for field in with_role(window, Role.TEXT, Role.COMBO_BOX)]


class ScreenReader(unittest.TestCase):
    def setUp(self):
        self.user = User(self)
        self.program = self.user.start()

    def assert_speaks(self, window):
        """Checks all controls, also hidden ones. Empty labels show nothing and need no name."""
        self.assertNotEqual(window.get_name(), "")
        for part in [window, *descendants(window)]:
            role = part.get_role()
            about = (window.get_name(), part.get_role_name(), part.get_name())
            self.assertNotEqual(part.get_role_name(), "", about)
            self.assertIn(role, SPOKEN | SILENT, about)
            is_empty = role == Role.LABEL and not text_of(part)
            is_sign = role == Role.ICON and window.get_role() == Role.ALERT  # known already
            if role in SPOKEN and not is_empty and not is_sign:
                self.assertTrue(part.get_name().strip() or "".join(labels_of(part)).strip(), about)

    def choose_first_template(self):
        main = self.program.start_work()
        press("alt+f", "Down")
        wait_for("choice of the template",
                 lambda: has(find(main, "Modify"), Atspi.StateType.SENSITIVE))
        return main

    def test_tip(self):
        tip = self.program.active_window("Tip of the Day")
        self.assert_speaks(tip)
        self.assertEqual(tip.get_role(), Role.DIALOG)
        self.assertEqual(names(tip, Role.CHECK_BOX), ["Show Tips at Startup"])
        self.assertEqual(names(tip, Role.PUSH_BUTTON), ["Next Tip", "Close"])
        self.assertIn("Did you know...", names(tip, Role.LABEL))

    def test_main_window(self):
        main = self.program.start_work()
        self.assert_speaks(main)
        self.assertEqual(main.get_role(), Role.FRAME)
        self.assertEqual(fields(main), [(Role.COMBO_BOX, ["Template File:"]),
                                        (Role.TEXT, ["Year:"])])
        self.assertEqual(names(main, Role.SPIN_BUTTON), ["Year, step"])
        self.assertEqual(names(main, Role.PUSH_BUTTON),
                         ["Open", "Modify", "Save", "Generate", "Help", "About", "Exit"])
        progress = [part.get_name() for part in descendants(main)
                    if part.get_role() == Role.PROGRESS_BAR]
        self.assertEqual(progress, ["Progress"])

    def test_status_after_a_run(self):
        main = self.choose_first_template()
        type_over("alt+y", "2027")
        press("alt+g")
        button = wait_for("button that opens the folder", lambda: find(main, "Open Folder"))
        wait_for("end of the run", lambda: has(button, Atspi.StateType.SHOWING))
        workbook = self.user.data / "output/2027Desk.xls"
        self.assertIn(f"Saved as {workbook} by the built-in engine", names(main, Role.LABEL))
        self.assert_speaks(main)

    def test_parameters(self):
        self.choose_first_template()
        press("alt+m")
        dialog = self.program.active_window("Modify Parameters")
        self.assert_speaks(dialog)
        self.assertEqual(dialog.get_role(), Role.DIALOG)
        self.assertEqual(names(dialog, Role.PAGE_TAB), list(FIELDS))
        self.assertEqual(names(dialog, Role.PUSH_BUTTON),
                         ["Sheet Name, list", "Change", "OK", "Cancel", "Propose"])
        self.assert_is_page(dialog, "Monthly Calendar")
        press("alt+y")
        wait_for("yearly page", lambda: has(find(dialog, "Output Yearly Calendar"),
                                            Atspi.StateType.SHOWING))
        self.assert_speaks(dialog)
        self.assert_is_page(dialog, "Yearly Calendar")

    def test_model_sheet(self):
        self.choose_first_template()
        press("alt+m")
        dialog = self.program.active_window("Modify Parameters")

        def speaks(text):
            return lambda: any(part.get_name() == text for part in shown(dialog))
        press("alt+d", "F6")
        wait_for("the first cell", speaks("A1, empty"))
        press(*["Down"] * 5, "Right")
        wait_for("the first day", speaks("B6, empty, first cell of day"))
        press("Right")
        wait_for("the second day", speaks("C6, empty, second column of days"))
        press("Return", "F6")
        wait_for("the field", lambda: "C6" in map(text_of, with_role(dialog, Role.TEXT)))

    def assert_is_page(self, dialog, page):
        expected = [(Role.COMBO_BOX if label in CHOICES else Role.TEXT, [label])
                    for label in FIELDS[page]]
        self.assertEqual(fields(dialog), expected)
        self.assertEqual(names(dialog, Role.CHECK_BOX), [f"Output {page}", *CHECKS, "Preview"])
        stepped = [label[:-1] + ", step" for label in FIELDS[page] if "Interval" in label]
        self.assertEqual(names(dialog, Role.SPIN_BUTTON), stepped)
        # With the label of another field, the reader would say the wrong text.
        shipped = configparser.ConfigParser(interpolation=None)
        shipped.read(SOURCE / "data/template/Desk.ini", encoding="utf-8-sig")
        texts = {labels_of(text)[0]: text_of(text) for text in with_role(dialog, Role.TEXT)}
        self.assertEqual(texts, {label: shipped[page][KEYS[label]] for label in texts})
        self.assertIn("Holiday Sample:", names(dialog, Role.LABEL))

    def test_holidays(self):
        self.choose_first_template()
        press("alt+m")
        self.program.active_window("Modify Parameters")
        press("alt+g")
        dialog = self.program.active_window("Holiday")
        self.assert_speaks(dialog)
        self.assertEqual(dialog.get_role(), Role.DIALOG)
        self.assertEqual(fields(dialog), [(Role.COMBO_BOX, ["Holiday File:"]),
                                          (Role.TEXT, ["Find:"]), (Role.TEXT, ["Whole Rule:"])])
        tables = with_role(dialog, Role.TABLE)
        self.assertEqual([labels_of(table) for table in tables],
                         [["Holidays List:"], ["All Rules:"]])
        plain, words = ([cell.get_name() for cell in children(table)
                         if cell.get_role() == Role.TABLE_CELL] for table in tables)
        self.assertEqual(plain[:3], ["0101", "", "New Year's Day"])
        self.assertEqual([*words[:2], words[3]], ["New Year's Day", "1 January", "Public"])
        self.assertEqual(text_of(with_role(dialog, Role.TEXT)[1]), "New Year's Day: 1 January")
        self.assertEqual(names(dialog, Role.PUSH_BUTTON),
                         ["OK", "Cancel", "Add Files...", "Add Day...", "Edit...", "Remove", "Country..."])
        press("alt+y")
        day = self.program.active_window("Add Own Day")
        self.assert_speaks(day)
        self.assertEqual(fields(day),
                         [(Role.TEXT, ["Name:"]), (Role.COMBO_BOX, ["Kind:"]),
                          (Role.TEXT, ["Day:"]), (Role.COMBO_BOX, ["Month:"])])
        self.assertIn("Next: Fri 1 January", " ".join(names(day, Role.LABEL)))

    def test_holidays_to_choose_from(self):
        self.program.start_work()
        (self.user.data / "holiday/Zoo.txt").write_text(
            "# Language: de\n# Regions: BY Bayern\n0101,DAY,Neujahr\n> name en New Year's Day\n"
            "0106,FIXED,Epiphanias\n> only in BY; kind bank\n", encoding="utf-8")
        press("alt+f", "Down")
        wait_for("choice of the template",
                 lambda: has(find(self.program.active_window("Orrery"), "Modify"),
                             Atspi.StateType.SENSITIVE))
        press("alt+m")
        self.program.active_window("Modify Parameters")
        press("alt+g")
        dialog = self.program.active_window("Holiday")
        press("alt+f", "End")
        wait_for("region", lambda: "Region:" in names(dialog, Role.LABEL))
        self.assert_speaks(dialog)
        self.assertEqual(fields(dialog),
                         [(Role.COMBO_BOX, ["Holiday File:"]), (Role.TEXT, ["Find:"]),
                          (Role.COMBO_BOX, ["Region:"]), (Role.COMBO_BOX, ["Language:"]),
                          (Role.TEXT, ["Whole Rule:"])])
        self.assertEqual(names(dialog, Role.CHECK_BOX), ["Public", "Bank"])
        press("alt+a", "Down")
        wait_for("the second rule", lambda: "Epiphanias: 6 January; only in Bayern"
                 in map(text_of, with_role(dialog, Role.TEXT)))

    def test_about(self):
        self.program.start_work()
        press("alt+a")
        about = self.program.active_window("About Orrery")
        self.assert_speaks(about)
        self.assertEqual(about.get_role(), Role.DIALOG)
        links = {tuple(labels_of(button)): button.get_name()
                 for button in with_role(about, Role.PUSH_BUTTON)}
        self.assertEqual(set(links), {("Email to:",), ("Web:",), ()})
        self.assertIn("@", links[("Email to:",)])
        self.assertRegex(links[("Web:",)], "^https://")
        self.assertEqual(links[()], "Close")
        self.assertEqual(names(about, Role.ICON), ["Logo"])

    def test_message(self):
        self.choose_first_template()
        press("alt+y", "ctrl+a", "Delete", "alt+g")
        box = self.program.message_box("Please inupt a year.")
        self.assert_speaks(box)
        self.assertEqual(box.get_role(), Role.ALERT)
        self.assertEqual(names(box, Role.PUSH_BUTTON), ["OK"])

    def test_question(self):
        self.program.start_work()
        (self.user.data / "template/Desk.ini").unlink()  # so that there is something to save
        press("alt+f", "Down", "Down")
        box = self.program.message_box("The parameters for Desk.xls has been changed.\n"
                                       "Do you want to save the changes?")
        self.assert_speaks(box)
        self.assertEqual(box.get_role(), Role.ALERT)
        self.assertEqual(sorted(names(box, Role.PUSH_BUTTON)), ["No", "Yes"])


if __name__ == "__main__":
    unittest.main()
