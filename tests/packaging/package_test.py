"""The Debian package: its metadata and content; that it installs, runs and can be removed."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

from support import display, run, wait_for_window

SOURCE = pathlib.Path(os.environ["ORRERY_SOURCE_DIR"])
VERSION = os.environ["ORRERY_VERSION"]
ID = os.environ["ORRERY_APP_ID"]
PDF = os.environ["ORRERY_PDF"]  # the library that writes PDF files; empty if not built
ICAL = os.environ["ORRERY_ICAL"]  # the library that reads iCalendar files; empty if not built
LIBREOFFICE = os.environ["ORRERY_LIBREOFFICE"]  # the library that drives it; empty if not built
AS_ROOT = [] if os.geteuid() == 0 else ["sudo", "-n"]
ICON_CACHE = pathlib.Path("/usr/share/icons/hicolor/icon-theme.cache")


def installed():
    status = run("dpkg-query", "-W", "-f=${db:Status-Status}", "orrery", check=False)
    return status.returncode == 0 and status.stdout != "not-installed"


def purge():
    if installed():
        run(*AS_ROOT, "dpkg", "--purge", "orrery")


def make_package(folder):
    """Makes the package of the build tree in the folder."""
    run(os.environ["ORRERY_CPACK"], "-G", "DEB", "-B", str(folder), "--config",
        os.path.join(os.environ["ORRERY_BUILD_DIR"], "CPackConfig.cmake"))
    [package] = folder.glob("*.deb")
    return package


class Package(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = pathlib.Path(tempfile.mkdtemp(prefix="orrery-package-"))
        cls.addClassCleanup(shutil.rmtree, cls.scratch)
        cls.package = make_package(cls.scratch)
        purge()  # left by an interrupted test
        cls.addClassCleanup(purge)

    def new_user(self, name):
        """The environment of a user who never started the program."""
        home = self.scratch / name
        home.mkdir()
        return {"HOME": str(home), "PATH": "/usr/bin:/bin", "LANG": "C.UTF-8",
                "NO_AT_BRIDGE": "1"}

    def test_1_the_package_has_its_metadata(self):
        architecture = run("dpkg", "--print-architecture").stdout.strip()
        self.assertEqual(self.package.name, f"orrery_{VERSION}_{architecture}.deb")
        field = {name: run("dpkg-deb", "-f", self.package, name).stdout.strip()
                 for name in ("Package", "Version", "Section", "Maintainer", "Depends",
                              "Suggests", "Description", "Homepage")}
        self.assertEqual((field["Package"], field["Version"], field["Section"]),
                         ("orrery", VERSION, "utils"))
        self.assertRegex(field["Maintainer"], r"^[^<>]+ <[^<> ]+@[^<> ]+>$")
        self.assertRegex(field["Homepage"], r"^https://")
        self.assertRegex(field["Depends"], r"libwxgtk3\.2-1 \(>= 3\.2")
        for library in ("libc6", "libstdc++6", "zlib1g", "libgtk-3-0"):
            self.assertRegex(field["Depends"], rf"\b{re.escape(library)}\b")
        if ICAL:
            self.assertRegex(field["Depends"], r"\blibical3\b")
        self.assertNotIn("-dev", field["Depends"])
        self.assertNotRegex(field["Depends"], "libreoffice|libuno|ure")
        self.assertEqual(field["Suggests"], "libreoffice-calc" if LIBREOFFICE else "")
        self.assertGreater(len(field["Description"].splitlines()), 3)

    def test_2_the_package_runs_nothing_and_has_no_settings_of_its_own(self):
        control = self.scratch / "control"
        run("dpkg-deb", "-e", self.package, control)
        self.assertEqual({path.name for path in control.iterdir()}, {"control", "md5sums"})

    def test_3_lintian_finds_nothing(self):
        result = run("lintian", "--no-cfg", "--fail-on", "error,warning", "--allow-root",
                     self.package, check=False)
        self.assertEqual((result.returncode, result.stdout), (0, ""))

    def test_4_it_installs_runs_and_can_be_removed(self):
        opener = self.opener_of_workbooks()
        run(*AS_ROOT, "dpkg", "-i", self.package)
        self.assertEqual(self.opener_of_workbooks(), opener)
        files = [pathlib.Path(line) for line in run("dpkg", "-L", "orrery").stdout.splitlines()]
        files = [path for path in files if path.is_file()]
        self.check_files(files)
        self.check_command_line()
        self.check_window()

        purge()
        self.assertEqual([path for path in files if path.exists()], [])
        for folder in ("/usr/share/orrery", "/usr/share/doc/orrery"):
            self.assertFalse(pathlib.Path(folder).exists())
        self.assertFalse(installed())
        self.assertNotIn(ID.encode(), ICON_CACHE.read_bytes())

    def opener_of_workbooks(self):
        """The desktop's program for workbooks, which opens finished calendars."""
        return run("xdg-mime", "query", "default", "application/vnd.ms-excel").stdout

    def check_files(self, files):
        names = {str(path) for path in files}
        expected = {"/usr/bin/orrery", "/usr/bin/orrery-cli", "/usr/share/orrery/orrery.ini",
                    "/usr/share/orrery/help/index.html", "/usr/share/doc/orrery/copyright",
                    "/usr/share/doc/orrery/notices.txt",
                    "/usr/share/doc/orrery/changelog.gz", "/usr/share/man/man1/orrery.1.gz",
                    f"/usr/share/applications/{ID}.desktop",
                    f"/usr/share/metainfo/{ID}.metainfo.xml",
                    f"/usr/share/icons/hicolor/scalable/apps/{ID}.svg"}
        expected |= {f"/usr/share/icons/hicolor/{size}x{size}/apps/{ID}.png"
                     for size in (16, 24, 32, 48, 64, 128, 256, 512)}
        expected |= {f"/usr/{library}" for library in (PDF, ICAL, LIBREOFFICE) if library}
        expected |= {f"/usr/share/orrery/template/{path.name}"
                     for path in (SOURCE / "data/template").iterdir()}
        self.assertLessEqual(expected, names)
        for path in files:
            self.assertEqual(path.stat().st_uid, 0, path)
            self.assertEqual(path.stat().st_mode & 0o022, 0, path)
        # The package that owns the icon cache has a trigger that updates it.
        self.assertIn(ID.encode(), ICON_CACHE.read_bytes())
        run("desktop-file-validate", f"/usr/share/applications/{ID}.desktop")

    def check_command_line(self):
        user = self.new_user("command line")
        result = run("/usr/bin/orrery-cli", "generate", "Desk.xls", "2027", env=user)
        self.assertEqual(result.stderr, "")
        saved = pathlib.Path(result.stdout.rstrip("\n"))
        self.assertEqual(saved.name, "2027Desk.xls")
        self.assertGreater(saved.stat().st_size, 10_000)
        if PDF:
            result = run("/usr/bin/orrery-cli", "generate", "Desk.xls", "2028", "--pdf-by", "builtin",
                         env=user)
            self.assertEqual(result.stderr, "")
            self.assertEqual([pathlib.Path(line).name for line in result.stdout.splitlines()],
                             ["2028Desk.xls", "2028Desk.pdf"])
        if LIBREOFFICE:
            result = run("/usr/bin/orrery-cli", "generate", "Desk.xlsx", "2027", "--pdf",
                         "--engine", "libreoffice", env=user)
            self.assertEqual(result.stderr, "")
            self.assertEqual([pathlib.Path(line).name for line in result.stdout.splitlines()],
                             ["2027Desk.xlsx", "2027Desk.pdf"])
        page = run("man", "orrery", env=user).stdout
        self.assertIn("fill your own Excel templates", page)

    def check_window(self):
        user = self.new_user("window")
        with display() as name:
            user["DISPLAY"] = name
            program = subprocess.Popen(["/usr/bin/orrery"], env=user, stdout=subprocess.DEVNULL,
                                       stderr=subprocess.DEVNULL)
            try:
                wait_for_window("^Orrery$", user, program)
                wait_for_window("^Tip of the Day$", user, program)
            finally:
                program.terminate()
                program.wait(30)
        data = pathlib.Path(user["HOME"]) / ".local/share/orrery"
        for name in ("template/Desk.xls", "holiday/Germany.txt", "tips.txt"):
            self.assertTrue((data / name).is_file(), f"the first start brings {name}")


if __name__ == "__main__":
    unittest.main()
