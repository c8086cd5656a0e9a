"""The comparison of two systems' workbooks sees what it is there to see."""

import pathlib
import shutil
import tempfile
import unittest
import zipfile

from check_two_systems import differences, plain

TEMPLATE = pathlib.Path(__file__).resolve().parents[2] / "data/template/Desk.xls"


class Differences(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="orrery-systems-"))
        self.addCleanup(shutil.rmtree, self.folder)

    def package(self, name, parts, date=(1980, 1, 1, 0, 0, 0), packing=zipfile.ZIP_DEFLATED):
        path = self.folder / name
        with zipfile.ZipFile(path, "w", packing) as package:
            for part, content in parts:
                package.writestr(zipfile.ZipInfo(part, date), content, packing)
        return path

    def found(self, here, there):
        return list(differences(str(here), str(there)))

    def test_times_and_packing_may_differ(self):
        parts = [("a.xml", "one"), ("b.xml", "two")]
        self.assertEqual(self.found(
            self.package("here", parts),
            self.package("there", parts, (2027, 5, 6, 7, 8, 10), zipfile.ZIP_STORED)), [])

    def test_content_order_and_number_of_parts_may_not(self):
        here = self.package("here", [("a.xml", "one"), ("b.xml", "two")])
        for parts in ([("a.xml", "one"), ("b.xml", "twe")], [("b.xml", "two"), ("a.xml", "one")],
                      [("a.xml", "one")], [("a.xml", "one"), ("c.xml", "two")]):
            self.assertEqual(len(self.found(here, self.package("there", parts))), 1, parts)

    def test_a_workbook_of_one_system_only(self):
        here = self.package("here", [("a.xml", "one")])
        self.assertEqual(len(self.found(here, self.folder / "none")), 1)
        self.assertEqual(self.found(self.folder / "no", self.folder / "none"), [])

    def test_streams_of_compound_files(self):
        same, other = self.folder / "same.xls", self.folder / "other.xls"
        shutil.copy(TEMPLATE, same)
        changed = bytearray(TEMPLATE.read_bytes())
        changed[600] ^= 1  # in the first sector, which is the workbook's
        other.write_bytes(changed)
        self.assertEqual(self.found(TEMPLATE, same), [])
        self.assertEqual(self.found(TEMPLATE, other), ["Workbook differs"])

    def test_what_programs_print(self):
        self.assertEqual(plain(b"\"Z:\\a\\b.xls\" is damaged.\r\n"), "\"Z:/a/b.xls\" is damaged.\n")


if __name__ == "__main__":
    unittest.main()
