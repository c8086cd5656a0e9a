"""The files for desktops are valid and name the installed files."""

import configparser
import os
import pathlib
import subprocess
import unittest
import xml.etree.ElementTree as ET

ID = os.environ["ORRERY_APP_ID"]
FOLDER = pathlib.Path(os.environ["ORRERY_BUILD_DIR"]) / "packaging/desktop"
ENTRY = FOLDER / f"{ID}.desktop"
METAINFO = FOLDER / f"{ID}.metainfo.xml"
MANUAL = pathlib.Path(os.environ["ORRERY_SOURCE_DIR"]) / "packaging/orrery.1"


def run(*command):
    return subprocess.run(command, text=True, capture_output=True, timeout=60)


class Desktop(unittest.TestCase):
    def test_the_menu_entry_is_valid(self):
        result = run("desktop-file-validate", ENTRY)
        self.assertEqual((result.returncode, result.stdout + result.stderr), (0, ""))

    def test_the_menu_entry_starts_the_window_with_workbooks(self):
        entry = configparser.ConfigParser(interpolation=None)
        entry.optionxform = str
        entry.read(ENTRY, encoding="utf-8")
        values = entry["Desktop Entry"]
        self.assertEqual(values["Exec"], "orrery %F")
        self.assertEqual(values["Icon"], ID)
        self.assertEqual(values["Categories"], "Office;Calendar;")

    def test_workbooks_stay_with_the_spreadsheet_program(self):
        self.assertNotIn("MimeType", ENTRY.read_text(encoding="utf-8"))

    def test_the_description_is_valid(self):
        result = run("appstreamcli", "validate", "--no-net", METAINFO)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        self.assertNotIn("W:", result.stdout)

    def test_the_description_names_the_entry_and_this_version(self):
        tree = ET.parse(METAINFO)
        self.assertEqual(tree.findtext("id"), ID)
        self.assertEqual(tree.findtext("launchable"), f"{ID}.desktop")
        self.assertEqual([release.get("version") for release in tree.iter("release")],
                         [os.environ["ORRERY_VERSION"]])
        self.assertEqual({binary.text for binary in tree.iter("binary")},
                         {"orrery", "orrery-cli"})
        self.assertEqual(
            {media.text for media in tree.iter("mediatype")},
            {"application/vnd.ms-excel",
             "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet"})

    def test_the_manual_page_renders_without_a_warning(self):
        result = run("groff", "-man", "-ww", "-Tutf8", "-P-cbou", MANUAL)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertIn("ORRERY(1)", result.stdout)


if __name__ == "__main__":
    unittest.main()
