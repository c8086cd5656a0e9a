"""The packages for Windows: their content; that the programs run where they were unpacked or
installed; that an update keeps the user's files, and that uninstalling removes the rest."""

import os
import pathlib
import re
import shlex
import shutil
import struct
import subprocess
import tempfile
import time
import unittest
import zipfile

from support import display, run, wait_for_window

SOURCE = pathlib.Path(os.environ["ORRERY_SOURCE_DIR"])
BUILD = pathlib.Path(os.environ["ORRERY_BUILD_DIR"])
VERSION = os.environ["ORRERY_VERSION"]
MIB = 1 << 20
UNINSTALL_KEY = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Orrery"

# Libraries that every Windows since 10 has.
SYSTEM_LIBRARIES = {
    "advapi32", "bcrypt", "comctl32", "comdlg32", "crypt32", "dwmapi", "gdi32", "gdiplus", "imm32",
    "kernel32", "msimg32", "msvcrt", "ole32", "oleacc", "oleaut32", "rpcrt4", "shell32", "shlwapi",
    "user32", "usp10", "uuid", "uxtheme", "version", "winmm", "winspool.drv", "ws2_32"}


def delivered_files():
    """The files in both packages, as paths relative to their folder."""
    data = {path.relative_to(SOURCE).as_posix()
            for folder in ("holiday", "template") for path in (SOURCE / "data" / folder).iterdir()}
    return data | {"orrery.exe", "orrery-cli.exe", "orrery-pdf.dll", "orrery-ical.dll", "Orrery.chm",
                   "LICENSE.txt", "README.txt", "data/countries.tsv", "data/languages.ini", "data/orrery.ini", "data/tips.txt"}


def files_in(folder):
    return {path.relative_to(folder).as_posix() for path in folder.rglob("*") if path.is_file()}


def functions_of(program):
    """The table of functions of a 64-bit program: first address, end and unwind data of each."""
    data = program.read_bytes()
    headers = struct.unpack_from("<I", data, 0x3c)[0]
    sections, optional = (struct.unpack_from("<H", data, headers + place)[0] for place in (6, 20))
    for place in range(headers + 24 + optional, headers + 24 + optional + 40 * sections, 40):
        name, size, _, _, start = struct.unpack_from("<8sIIII", data, place)
        if name.rstrip(b"\0") == b".pdata":
            return list(struct.iter_unpack("<III", data[start:start + size]))
    return []


def make_packages(folder, *options):
    run(os.environ["ORRERY_CPACK"], "-B", str(folder), "--config",
        str(BUILD / "CPackConfig.cmake"), *options)


class WindowsPackage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = pathlib.Path(tempfile.mkdtemp(prefix="orrery-windows-"))
        cls.addClassCleanup(shutil.rmtree, cls.scratch)
        make_packages(cls.scratch)
        cls.zip = cls.scratch / f"orrery-{VERSION}-windows.zip"
        cls.setup = cls.scratch / f"orrery-{VERSION}-windows-setup.exe"
        cls.prefix = cls.scratch / "wine"
        cls.environment = {**os.environ, "ORRERY_WINEPREFIX": str(cls.prefix)}
        cls.environment.pop("DISPLAY", None)
        cls.addClassCleanup(cls.end_windows)
        local = cls.windows("cmd", "/c", "echo %LOCALAPPDATA%").stdout.strip()
        cls.home = cls.path_of(local) / "Programs/Orrery"
        roaming = cls.windows("cmd", "/c", "echo %APPDATA%").stdout.strip()
        cls.menu = cls.path_of(roaming) / "Microsoft/Windows/Start Menu/Programs/Orrery"

    @classmethod
    def end_windows(cls):
        """Ends all processes in the Windows of this test, and in no other."""
        run("wineserver", "--kill", check=False, env={**os.environ, "WINEPREFIX": str(cls.prefix)})
        run("wineserver", "--wait", env={**os.environ, "WINEPREFIX": str(cls.prefix)})

    @classmethod
    def command(cls, *arguments):
        return [str(SOURCE / "scripts/windows/wine.sh"), *map(str, arguments)]

    @classmethod
    def windows(cls, *arguments, check=True):
        return run(*cls.command(*arguments), check=check, env=cls.environment)

    @classmethod
    def path_of(cls, windows_path):
        drive, path = windows_path.split(":", 1)
        return cls.prefix / f"drive_{drive.lower()}" / path.replace("\\", "/").strip("/")

    def registry(self, key=UNINSTALL_KEY):
        """The values of a key by name; None if there is no such key."""
        answer = self.windows("reg", "query", key, check=False)
        if answer.returncode != 0:
            return None
        return dict(re.findall(r"^    (\S+)    REG_\w+    (.*?)\r?$", answer.stdout, re.M))

    def wait_until(self, what, condition):
        for _ in range(300):
            if condition():
                return
            time.sleep(0.1)
        self.fail(f"After 30 seconds: {what}")

    def generate(self, folder):
        """Generates a calendar with the program in the folder, as a user would."""
        result = self.windows(folder / "orrery-cli.exe", "generate", "Desk.xls", "2027")
        saved = self.path_of(result.stdout.strip())
        self.assertEqual(saved, folder / "output/2027Desk.xls")
        self.assertGreater(saved.stat().st_size, 10_000)

    def generate_pdf(self, folder):
        """Makes a PDF, with the library beside the program and the fonts of Windows."""
        self.windows(folder / "orrery-cli.exe", "generate", "Desk.xlsx", "2027", "--pdf-by", "builtin")
        pdf = (folder / "output/2027Desk.pdf").read_bytes()
        self.assertTrue(pdf.startswith(b"%PDF-"))
        self.assertIn(b"/Count 13", pdf)
        self.assertIn(b"/FontFile2", pdf)

    def uninstall(self):
        """Uninstalls the program silently, as Windows does, and waits until that is done."""
        program, *options = shlex.split(self.registry()["QuietUninstallString"].replace("\\", "/"))
        self.assertEqual(options, ["/S"])
        self.windows(program, *options)
        self.wait_until("the program is still registered", lambda: self.registry() is None)
        place = self.path_of(program)
        self.wait_until(f"{place} is still there", lambda: not place.exists())

    def test_1_the_zip_contains_one_folder_with_all_files(self):
        with zipfile.ZipFile(self.zip) as archive:
            names = {name for name in archive.namelist() if not name.endswith("/")}
            self.assertEqual(names, {f"Orrery/{name}" for name in delivered_files()})
            self.assertLessEqual(archive.getinfo("Orrery/orrery.exe").file_size, 9 * MIB)
            for name in names:
                if name.startswith("Orrery/data/"):
                    self.assertEqual(archive.read(name),
                                     (SOURCE / name.removeprefix("Orrery/")).read_bytes(), name)
            licence = archive.read("Orrery/LICENSE.txt").decode("ascii")
            self.assertIn(VERSION, archive.read("Orrery/README.txt").decode("ascii"))
        self.assertLessEqual(self.zip.stat().st_size, 6 * MIB)
        for notice in ("wxWindows Library Licence", "Eric Biggers",
                       "Jean-loup Gailly and Mark Adler", "Henry Schreiner", "Mbed TLS Contributors",
                       "Keith Packard", "Eric Busboom", "GCC Runtime Library Exception", "mingw-w64 project",
                       "The Orrery developers"):
            self.assertIn(notice, licence)

    def test_2_the_programs_are_64_bit_and_need_only_windows(self):
        unpacked = self.unpack("imports")
        for program in (*unpacked.glob("orrery*.exe"), *unpacked.glob("*.dll"), self.setup):
            headers = run(os.environ["ORRERY_OBJDUMP"], "-p", str(program)).stdout
            self.assertIn("file format pei-x86-64", headers, program)
            libraries = {name.lower().removesuffix(".dll")
                         for name in re.findall(r"DLL Name: (\S+)", headers)}
            self.assertIn("kernel32", libraries)
            self.assertEqual(libraries - SYSTEM_LIBRARIES, set(), program)

    def test_2_exceptions_find_every_function(self):
        unpacked = self.unpack("functions")
        for program in (*unpacked.glob("orrery*.exe"), *unpacked.glob("*.dll")):
            # The linker leaves empty entries for second copies of inline functions; they come first.
            functions = [entry for entry in functions_of(program) if entry[:2] != (0, 0)]
            self.assertGreater(len(functions), 500, program)
            end_before = 0
            for start, end, unwind in functions:
                self.assertLessEqual(end_before, start, program)
                self.assertLess(start, end, program)
                self.assertNotEqual(unwind, 0, program)
                end_before = end

    def unpack(self, name):
        folder = self.prefix / "drive_c" / name
        with zipfile.ZipFile(self.zip) as archive:
            archive.extractall(folder)
        return folder / "Orrery"

    def test_3_the_zip_runs_where_it_was_unpacked(self):
        unpacked = self.unpack("Where I unpack")
        self.generate(unpacked)
        self.generate_pdf(unpacked)
        self.assertEqual((unpacked / "template/Wall.xlsx").read_bytes(),
                         (SOURCE / "data/template/Wall.xlsx").read_bytes())
        self.assertTrue((unpacked / "orrery.ini").is_file())

    def test_4_it_installs_updates_and_uninstalls(self):
        self.install_an_earlier_version()
        own = self.use_it()
        self.check_refusal_while_it_runs()

        self.windows(self.setup, "/S")
        self.check_installation()
        self.windows(self.setup, "/S")  # a second time
        self.check_installation()
        self.check_kept(own)
        self.generate(self.home)

        self.assertIn("orrery", self.registry_text())
        self.uninstall()
        self.assertEqual(files_in(self.home), set(own))
        self.check_kept(own)
        self.check_nothing_else_is_left()

    def install_an_earlier_version(self):
        """Installs a version with a file that the current version does not have."""
        folder = self.scratch / "earlier"
        (folder / "more").mkdir(parents=True)
        (folder / "more/forgotten.txt").write_text("of the earlier version")
        make_packages(folder, "-G", "NSIS", "-D", "CPACK_PACKAGE_VERSION=0.0.1",
                      "-D", "CPACK_PACKAGE_FILE_NAME=earlier",
                      "-D", f"CPACK_INSTALLED_DIRECTORIES={folder / 'more'};data/more")
        self.windows(folder / "earlier-setup.exe", "/S")
        self.assertEqual(self.registry()["DisplayVersion"], "0.0.1")
        self.assertTrue((self.home / "data/more/forgotten.txt").is_file())

    def use_it(self):
        """Generates a calendar, changes a template, returns the user's files with their bytes."""
        self.generate(self.home)
        (self.home / "template/Mine.xls").write_bytes(b"a template of my own")
        with open(self.home / "orrery.ini", "ab") as settings:
            settings.write(b"\r\n; mine\r\n")
        own = {name for name in files_in(self.home)
               if name.split("/")[0] in ("template", "output", "holiday", "orrery.ini", "tips.txt")}
        self.assertIn("output/2027Desk.xls", own)
        return {name: (self.home / name).read_bytes() for name in own}

    def check_kept(self, own):
        changes = [name for name, content in own.items()
                   if name != "output/2027Desk.xls" and (self.home / name).read_bytes() != content]
        self.assertEqual(changes, [])

    def check_refusal_while_it_runs(self):
        self.end_windows()  # its desktop is tied to the display on which it started
        with display() as name:
            environment = {**self.environment, "DISPLAY": name}
            program = subprocess.Popen(self.command(self.home / "orrery.exe"), env=environment,
                                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            try:
                wait_for_window("^Orrery$", environment, program)
                wait_for_window("^Tip of the Day$", environment, program)
                files = files_in(self.home)
                refused = self.windows(self.setup, "/S", check=False)
                self.assertEqual(refused.returncode, 2)
                self.windows(self.home / "uninstall.exe", "/S", rf"_?={self.registry()['InstallLocation']}",
                             check=False)
                self.assertEqual(files_in(self.home), files)
                self.assertEqual(self.registry()["DisplayVersion"], "0.0.1")
            finally:
                program.terminate()
                program.wait(30)
                self.end_windows()

    def check_installation(self):
        delivered = delivered_files() | {"uninstall.exe"}
        found = files_in(self.home)
        self.assertEqual(delivered - found, set())
        self.assertFalse((self.home / "data/more").exists(), "the earlier version's files are gone")

        entry = self.registry()
        location = entry["InstallLocation"]
        self.assertEqual(self.path_of(location), self.home)
        self.assertEqual((entry["DisplayName"], entry["DisplayVersion"], entry["Publisher"]),
                         ("Orrery", VERSION, "The Orrery developers"))
        self.assertEqual(entry["DisplayIcon"], location + r"\orrery.exe")
        self.assertEqual(entry["UninstallString"], f'"{location}\\uninstall.exe"')
        self.assertEqual((entry["NoModify"], entry["NoRepair"]), ("0x1", "0x1"))
        size = sum((self.home / name).stat().st_size for name in delivered) / 1024
        self.assertLess(abs(int(entry["EstimatedSize"], 16) - size), 0.1 * size)

        targets = {"Orrery.lnk": "orrery.exe", "Orrery Help.lnk": "Orrery.chm"}
        self.assertEqual(files_in(self.menu), set(targets))
        for link, target in targets.items():
            self.assertIn(f"{location}\\{target}".encode(),
                          (self.menu / link).read_bytes())

    def registry_text(self):
        """The user's whole registry in lower case."""
        self.windows("reg", "export", "HKCU", r"C:\user.reg", "/y")
        return (self.prefix / "drive_c/user.reg").read_text("utf-16").lower()

    def check_nothing_else_is_left(self):
        self.assertFalse(self.menu.exists())
        self.assertNotIn("orrery", self.registry_text())

    def test_5_unused_it_leaves_no_folder(self):
        chosen = self.prefix / "drive_c/Chosen/ByMe"
        self.windows(self.setup, "/S", r"/D=C:\Chosen\ByMe")
        self.assertEqual(files_in(chosen), delivered_files() | {"uninstall.exe"})
        self.assertEqual(self.path_of(self.registry()["InstallLocation"]), chosen)
        self.uninstall()
        self.wait_until(f"{chosen} is still there", lambda: not chosen.exists())


if __name__ == "__main__":
    unittest.main()
