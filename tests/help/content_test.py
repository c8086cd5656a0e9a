"""The help explains every control with its key, every message, every key of the files and every
option, and its examples are correct."""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest

from help_pages import page_text, rows_of, text_of

CLI = os.environ["ORRERY_CLI"]
DATA = pathlib.Path(os.environ["ORRERY_SOURCE_DIR"]) / "data"

# The windows' captions; "&" stands before the mnemonic.
CAPTIONS = {
    "main": ["Template &File:", "O&pen", "&Year:", "Parameters:", "&Modify", "&Save", "&Generate",
             "Also as P&DF", "&Help", "&About", "E&xit", "Open Fo&lder", "Cancel", "&Copy the Shipped Templates"],
    "parameters": [
        "&Monthly Calendar", "&Yearly Calendar", "Output &Monthly Calendar",
        "Output &Yearly Calendar", "&Sheet Name:", "First Day of Week:", "First Cell of &Day:",
        "Col &Interval of Day:", "&Row Interval of Day:", "Output Name of &Weekday",
        "First Cell of Weekday:", "Weekday Name:", "Output Mo&nth", "First Cell of Month:",
        "Month Name:", "Output Y&ear", "First Cell of Year:", "Output &Holiday",
        "First Cell of Holiday:", "Multiple Holidays on the Same Day:", "Holiday Sample:",
        "Chan&ge", "OK", "&Cancel", "&Layout of Months:", "Col &Interval of Month:",
        "&Row Interval of Month:"],
    "holidays": ["Holiday &File:", "Holidays &List:", "&OK", "&Cancel", "Fi&nd:", "&Region:",
                 "Lan&guage:", "&Public", "&Bank", "&School", "Op&tional", "Obser&vance", "&Half",
                 "&All Rules:", "&Whole Rule:"],
    "import": ["&Dates:", "&Years:", "First &Events:", "&Passed Over:", "&Name of the List:",
               "&Replace the List of That Name", "&OK", "&Cancel"],
    "tips": ["Did you know...", "&Show Tips at Startup", "&Next Tip", "&Close"],
    "about": ["Email to:", "Web:"],
}

ENTRIES = {
    "parameters": ["Sunday", "Monday", "Overwrite", "Next Row", "Next Column", "1 x 12 Months",
                   "2 x 6 Months", "3 x 4 Months", "4 x 3 Months", "6 x 2 Months",
                   "12 x 1 Months"],
    "holidays": ["(Template)"],
}

MESSAGES = {
    "main": [
        "Please inupt a year.", "Please select a template.", "The parameters for ",
        " has been changed. Do you want to save the changes?"],
    "parameters": [
        "Please input sheet name.", "The first cell of day is not valid.",
        "The col interval of day should be 1 to 36.",
        "The row interval of day should be 1 to 10000.",
        "The first cell of weekday is not valid.", "Please select the name of weekdays.",
        "The first cell of month is not valid.", "Please select the name of months.",
        "The first cell of year is not valid.", "The first cell of holiday is not valid.",
        "Please select the layout of months.", "The col interval of month should be 1 to 36.",
        "The row interval of month should be 1 to 10000.",
        "The max col of day is greater than 256, "
        "please change the first cell of day or col interval of day.",
        "The max row of day is greater than 65536, "
        "please change the first cell of day or row interval of day.",
        "The max col of weekday is greater than 256, "
        "please change the first cell of weekday or col interval of day.",
        "The max col of holiday is greater than 256, "
        "please change the first cell of holiday or col interval of day.",
        "The max row of holiday is greater than 65536, "
        "please change the first cell of holiday or row interval of day.",
        "The max col of day is greater than 256, "
        "please change the first cell of day, col interval of day or col interval of month.",
        "The max row of day is greater than 65536, "
        "please change the first cell of day, row interval of day or row interval of month.",
        "The max col of weekday is greater than 256, "
        "please change the first cell of weekday, col interval of day or col interval of month.",
        "The max row of weekday is greater than 65536, "
        "please change the first cell of weekday or row interval of month.",
        "The max col of month is greater than 256, "
        "please change the first cell of month or col interval of month.",
        "The max row of month is greater than 65536, "
        "please change the first cell of month or row interval of month.",
        "The max col of holiday is greater than 256, "
        "please change the first cell of holiday, col interval of day or col interval of month.",
        "The max row of holiday is greater than 65536, "
        "please change the first cell of holiday, row interval of day or row interval of month."],
    "tips": [
        "That the tips.txt file was not found? Create a text file named tips.txt using NotePad "
        "with 1 tip per line. Then place it in the same directory as the application."],
    "troubleshooting": [
        "Error!", "Error Info:", "Failed to open the calendar file ",
        "Failed to save the calendar file.", "Failed to make the PDF file.", "The sheet ", " does not exist.",
        "Error in making monthly calendar.", "Error in making yearly calendar.",
        "Error in filling data(", "Out of memory", "File not found", "Path not found",
        "Path/file access error", "The executable file is invalid or corrupt",
        "A sharing violation occurred.",
        "This file type does not have a valid file association.",
        "The file could not be opened due to time out. Please try again in a moment.",
        "The file could not be opened because the DDE transaction failed. "
        "Please try again in a moment.",
        "The file could not be opened because the target application is busy. "
        "Please try again in a moment.",
        "No application is associated with this file type.",
        "The specified dynamic-link library was not found.",
        "An error occurred occurred whilst trying to open or print the selected file."],
}


def controls_of(page):
    """Maps the caption of every control in a page's tables to its key, "" if it has none."""
    controls = {}
    for cells in rows_of(page):
        captions = [text_of(strong) for strong in cells[0].iter("strong")]
        keys = text_of(cells[1]).split(", ") if len(cells) > 2 else []
        for index, caption in enumerate(captions):
            controls[caption] = keys[index] if len(keys) == len(captions) else ""
    return controls


def rules_with_dates(page):
    """The rules on a page that have a date in 2027 beside them."""
    rules = {}
    for cells in rows_of(page):
        date = re.fullmatch(r"(\d+) (\w+)", text_of(cells[-1]))
        if date and "," in text_of(cells[0]):
            rules[text_of(cells[0])] = date.groups()
    return rules


class Content(unittest.TestCase):
    def test_every_control_is_explained_with_its_key(self):
        for page, captions in CAPTIONS.items():
            controls = controls_of(page)
            for caption in captions:
                plain = caption.replace("&", "").rstrip(":")
                self.assertIn(plain, controls, page)
                mark = caption.find("&")
                key = f"Alt+{caption[mark + 1].upper()}" if mark >= 0 else ""
                self.assertEqual(controls[plain], key, f"{page}: {plain}")

    def test_every_entry_of_a_fixed_list_is_named(self):
        for page, entries in ENTRIES.items():
            text = page_text(page)
            for entry in entries:
                self.assertIn(entry, text, page)

    def test_every_message_is_explained(self):
        for page, messages in MESSAGES.items():
            text = page_text(page)
            for message in messages:
                self.assertIn(message, text, page)

    def test_every_key_of_the_files_is_explained(self):
        codes = {text_of(code) for cells in rows_of("files") for code in cells[0].iter("code")}
        for name in ("orrery.ini", "template/Desk.ini"):
            text = (DATA / name).read_text(encoding="utf-8")
            keys = set(re.findall(r"^;?([A-Za-z]+)\d*=", text, re.MULTILINE))
            self.assertGreater(len(keys), 15)
            for key in keys - {"Count", "Holiday"}:
                self.assertIn(key, codes, name)
        self.assertIn("Holiday1", codes)
        self.assertIn("Count", page_text("files"))

    def test_every_command_and_option_is_explained(self):
        text = page_text("command-line")
        overview = subprocess.run([CLI, "--help"], text=True, capture_output=True).stdout
        commands = re.findall(r"^  ([a-z]+) {2,}", overview, re.MULTILINE)
        self.assertEqual(len(commands), 9)
        for command in commands:
            self.assertIn(f"orrery-cli {command}", text)
            about = subprocess.run([CLI, command, "--help"], text=True, capture_output=True).stdout
            for option in re.findall(r"--[a-z-]+", about):
                self.assertIn(option, text, command)

    def test_the_dates_beside_the_rules_are_true(self):
        for page in ("holiday-files", "more-rules"):
            with self.subTest(page=page):
                self.check_dates(rules_with_dates(page))

    def check_dates(self, rules):
        self.assertGreater(len(rules), 8)
        months = "January February March April May June July August September October " \
                 "November December".split()
        with tempfile.NamedTemporaryFile("w", suffix=".txt", encoding="utf-8") as file:
            file.write("\n".join(rules))
            file.flush()
            output = subprocess.run([CLI, "holidays", file.name, "2027"], text=True,
                                    capture_output=True, check=True).stdout
        computed = {name: date for date, name in
                    (line.split("\t") for line in output.splitlines())}
        for rule, (day, month) in rules.items():
            name = rule.split(",", 2)[2]
            expected = f"2027-{months.index(month) + 1:02}-{int(day):02}"
            self.assertEqual(computed.get(name), expected, rule)


if __name__ == "__main__":
    unittest.main()
