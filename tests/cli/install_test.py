"""An installed program finds the files that were installed with it."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

SOURCE = pathlib.Path(os.environ["ORRERY_SOURCE_DIR"])
WINDOW = os.environ["ORRERY_WINDOW"] == "ON"  # the build has the window program
PDF = os.environ["ORRERY_PDF"]  # the library that writes PDF files; empty if not built
ICAL = os.environ["ORRERY_ICAL"]  # the library that reads iCalendar files; empty if not built
LIBREOFFICE = os.environ["ORRERY_LIBREOFFICE"]  # the library that drives it; empty if not built


def window_files():
    app = os.environ["ORRERY_APP_ID"]
    icons = "share/icons/hicolor"
    files = {"bin/orrery", "share/man/man1/orrery.1.gz", f"share/applications/{app}.desktop",
             f"share/metainfo/{app}.metainfo.xml", f"{icons}/scalable/apps/{app}.svg",
             "share/orrery/help/style.css"}
    files |= {f"{icons}/{size}x{size}/apps/{app}.png"
              for size in (16, 24, 32, 48, 64, 128, 256, 512)}
    files |= {f"share/orrery/help/{page.stem}.html" for page in (SOURCE / "docs/help").glob("*.md")}
    files |= {f"share/orrery/help/images/{picture.name}"
              for picture in (SOURCE / "docs/images/window").glob("*.png")}
    return files


class Install(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = pathlib.Path(tempfile.mkdtemp(prefix="orrery-install-"))
        cls.prefix = cls.scratch / "usr"
        subprocess.run([os.environ["ORRERY_CMAKE"], "--install", os.environ["ORRERY_BUILD_DIR"],
                        "--prefix", cls.prefix], check=True, capture_output=True, timeout=120)

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.scratch)

    def test_layout(self):
        installed = {path.relative_to(self.prefix).as_posix()
                     for path in self.prefix.rglob("*") if path.is_file()}
        expected = {"bin/orrery-cli", "share/man/man1/orrery-cli.1.gz",
                    "share/bash-completion/completions/orrery-cli",
                    "share/orrery/countries.tsv", "share/orrery/languages.ini", "share/orrery/orrery.ini", "share/orrery/tips.txt",
                    "share/doc/orrery/copyright", "share/doc/orrery/notices.txt",
                    "share/doc/orrery/README.md", "share/doc/orrery/CHANGELOG.md",
                    "share/doc/orrery/changelog.gz"}
        if WINDOW:
            expected |= window_files()
        expected |= {library for library in (PDF, ICAL, LIBREOFFICE) if library}
        for folder in ("holiday", "template"):
            files = sorted((SOURCE / "data" / folder).iterdir())
            self.assertNotEqual(files, [])
            expected |= {f"share/orrery/{folder}/{path.name}" for path in files}
        self.assertEqual(installed, expected)

    def test_the_installed_program_works_for_a_new_user(self):
        home = self.scratch / "home"
        home.mkdir()
        result = subprocess.run([self.prefix / "bin/orrery-cli", "generate", "Desk.xlsx", "2027"],
                                env={"HOME": str(home)}, text=True, capture_output=True,
                                timeout=120)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertTrue(pathlib.Path(result.stdout.rstrip("\n")).is_file())

    @unittest.skipUnless(PDF, "the build does without PDF files of its own")
    def test_the_installed_program_makes_a_pdf(self):
        home = self.scratch / "home of a printer"
        home.mkdir()
        command = [self.prefix / "bin/orrery-cli", "generate", "Desk.xlsx", "2027", "--pdf-by", "builtin"]
        environment = {"HOME": str(home), "PATH": os.environ["PATH"],
                       "ASAN_OPTIONS": "detect_leaks=0"}  # the font library keeps what it read
        result = subprocess.run(command, env=environment, text=True, capture_output=True, timeout=120)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        pdf = pathlib.Path(result.stdout.splitlines()[1])
        self.assertTrue(pdf.read_bytes().startswith(b"%PDF-"))

        library = self.prefix / PDF
        hidden = library.rename(library.with_suffix(".hidden"))
        self.addCleanup(hidden.rename, library)
        result = subprocess.run(command, env=environment, text=True, capture_output=True, timeout=120)
        self.assertEqual((result.returncode, result.stdout), (1, ""))
        self.assertIn("A PDF by Orrery itself needs a library of Orrery", result.stderr)

    @unittest.skipUnless(LIBREOFFICE, "the build does without LibreOffice")
    def test_the_installed_program_finds_its_library(self):
        home = self.scratch / "home of an office"
        home.mkdir()
        command = [self.prefix / "bin/orrery-cli", "generate", "Desk.xlsx", "2027", "--engine",
                   "libreoffice"]
        environment = {"HOME": str(home), "PATH": os.environ["PATH"]}
        result = subprocess.run(command, env=environment, text=True, capture_output=True,
                                timeout=120)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertTrue(pathlib.Path(result.stdout.rstrip("\n")).is_file())

        library = self.prefix / LIBREOFFICE
        hidden = library.rename(library.with_suffix(".hidden"))
        self.addCleanup(hidden.rename, library)
        result = subprocess.run(command, env=environment, text=True, capture_output=True,
                                timeout=120)
        self.assertEqual((result.returncode, result.stdout), (1, ""))
        self.assertIn('The engine "libreoffice" is not available here;', result.stderr)

    @unittest.skipUnless(LIBREOFFICE, "the build loads no libraries later")
    def test_exceptions_have_one_code_for_the_program_and_its_libraries(self):
        program = self.prefix / "bin/orrery-cli"
        dynamic = subprocess.run(["readelf", "-W", "--dynamic", program], check=True, text=True,
                                 capture_output=True).stdout
        if "libstdc++" in dynamic:
            return  # all have that
        symbols = subprocess.run(["nm", "-D", "--defined-only", program], check=True, text=True,
                                 capture_output=True).stdout
        exported = {line.split()[-1] for line in symbols.splitlines()}
        self.assertLessEqual({"__cxa_throw", "__cxa_rethrow", "__cxa_begin_catch",
                              "__cxa_end_catch", "__cxa_get_globals", "__gxx_personality_v0",
                              "_ZNSt3_V215system_categoryEv", "_ZNSt3_V216generic_categoryEv"},
                             exported)

    def test_the_data_comes_from_the_installation(self):
        template = self.prefix / "share/orrery/template/Only here.xlsx"
        shutil.copy(self.prefix / "share/orrery/template/Desk.xlsx", template)
        self.addCleanup(template.unlink)
        home = self.scratch / "other home"
        result = subprocess.run([self.prefix / "bin/orrery-cli", "templates"],
                                env={"HOME": str(home)}, text=True, capture_output=True,
                                timeout=120)
        self.assertIn("Only here.xlsx\n", result.stdout)


if __name__ == "__main__":
    unittest.main()
