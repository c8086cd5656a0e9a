"""What the command-line program does with special files and files that it cannot access."""

import os
import resource
import shutil
import socket
import subprocess
import unittest

from program import CLI, DATA, Program

NOBODY = 65534
NOT_REGULAR = "is not a regular file"


class Files(Program):
    """Every run ends within seconds, whatever files it gets."""

    def setUp(self):
        super().setUp()
        self.home.chmod(0o755)
        self.template = self.home / "Desk.xlsx"
        self.parameters = self.home / "Desk.ini"
        self.target = self.output / "2027Desk.xlsx"
        self.output.mkdir()
        for path in (self.template, self.parameters):
            shutil.copy(DATA / "template" / path.name, path)

    def run_quickly(self, *arguments, **options):
        options = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE} | options
        return subprocess.run([CLI, *map(str, arguments)], env=self.environment, cwd=self.home,
                              text=True, timeout=20, **options)

    def generate(self, *arguments, template=None, **options):
        return self.run_quickly("generate", template or self.template, 2027, "--engine", "builtin",
                                "--output-folder", self.output, *arguments, **options)

    def as_user(self):
        """Options to run as an ordinary user, because root has all permissions."""
        if os.getuid() != 0:
            return {}
        for folder, _, files in os.walk(self.home):
            for name in (folder, *(os.path.join(folder, file) for file in files)):
                os.chown(name, NOBODY, NOBODY)
        return {"user": NOBODY, "group": NOBODY, "extra_groups": []}

    def assert_reported(self, result, *parts):
        self.assertEqual(result.returncode, 1, result)
        self.assertEqual(result.stdout, "")
        self.assertEqual(result.stderr.count("Error!"), 1, result.stderr)
        for part in parts:
            self.assertIn(str(part), result.stderr)

    def assert_no_output(self):
        self.assertEqual(list(self.output.iterdir()), [])


class SpecialFiles(Files):
    def put_special_files(self, path):
        """Puts each kind of special file at the path, one after the other."""
        def pipe():
            os.mkfifo(path)

        def link_to_pipe():
            os.mkfifo(self.home / "pipe")
            path.symlink_to(self.home / "pipe")

        def device():
            path.symlink_to("/dev/zero")

        def folder():
            path.mkdir()

        def in_socket():
            with socket.socket(socket.AF_UNIX) as server:
                server.bind(str(path))

        for put in (pipe, link_to_pipe, device, folder, in_socket):
            with self.subTest(put.__name__):
                path.unlink(missing_ok=True)
                put()
                yield
                (path.rmdir if path.is_dir() else path.unlink)()

    def test_templates(self):
        for _ in self.put_special_files(self.template):
            self.assert_reported(self.generate(), NOT_REGULAR)
            self.assert_no_output()

    def test_parameter_files(self):
        for _ in self.put_special_files(self.parameters):
            self.assert_reported(self.generate(), NOT_REGULAR)
            self.assert_no_output()

    def test_settings_files(self):
        settings = self.home / "mine.ini"
        for _ in self.put_special_files(settings):
            self.assert_reported(self.generate("--settings", settings), NOT_REGULAR)
            self.assert_no_output()

    def test_holiday_files(self):
        holidays = self.home / "Own.txt"
        for _ in self.put_special_files(holidays):
            self.assert_reported(self.run_quickly("holidays", holidays, 2027), NOT_REGULAR)

    def test_outputs(self):
        for _ in self.put_special_files(self.target):
            before = self.target.lstat()
            self.assert_reported(self.generate(), self.target, NOT_REGULAR)
            self.assertEqual(self.target.lstat().st_ino, before.st_ino, "it was replaced")
            self.assertEqual(list(self.output.iterdir()), [self.target])

    def test_the_first_start_does_not_wait(self):
        data = self.home / ".local/share/orrery"
        for name in ("holiday/AAA.txt", "template/Desk.xlsx", "template/Desk.ini", "tips.txt"):
            (data / name).parent.mkdir(parents=True, exist_ok=True)
            os.mkfifo(data / name)
        result = self.run_quickly("templates")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertIn("Wall.xlsx\n", result.stdout)
        self.assertNotIn("Desk.xlsx\n", result.stdout)

    def test_a_link_to_nothing_is_replaced_by_the_calendar(self):
        self.target.symlink_to(self.home / "nowhere")
        self.assertEqual(self.generate().returncode, 0)
        self.assertFalse(self.target.is_symlink())
        self.assertGreater(self.target.stat().st_size, 0)
        self.assertFalse((self.home / "nowhere").exists())

    def test_enormous_text_files_are_not_read(self):
        holidays = self.home / "Own.txt"
        holidays.touch()
        for path, command in ((holidays, ("holidays", holidays, 2027)),
                              (self.parameters, ("parameters", self.template))):
            os.truncate(path, 1 << 30)
            self.assert_reported(self.run_quickly(*command), path, "larger than 16 MiB")
        most = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss # of all runs, in KiB
        self.assertLess(most, 1 << 19)


class Permissions(Files):
    def test_an_unreadable_file_is_not_reported_as_missing(self):
        for path in (self.template, self.parameters):
            for command in ("generate", "parameters", "check"):
                with self.subTest(path.name, command=command):
                    user = self.as_user()
                    path.chmod(0)
                    arguments = (2027,) if command == "generate" else ()
                    self.assert_reported(self.run_quickly(command, self.template, *arguments,
                                                          **user),
                                         path, "Permission denied")
                    path.chmod(0o644)
        self.assert_no_output()

    def test_an_unreadable_template_folder_is_not_empty(self):
        folder = self.home / "mine"
        folder.mkdir()
        user = self.as_user()
        folder.chmod(0o300)
        self.assert_reported(self.run_quickly("templates", "--template-folder", folder, **user),
                             "Permission denied")
        folder.chmod(0o755)

    def test_a_template_of_a_folder_that_cannot_be_entered(self):
        folder = self.home / "mine"
        folder.mkdir()
        template = shutil.copy(self.template, folder)
        user = self.as_user()
        folder.chmod(0)
        self.assert_reported(self.generate(template=template, **user), template,
                             "Permission denied")
        folder.chmod(0o755)

    def test_inaccessible_settings_count_as_missing(self):
        hidden = self.home / "hidden"
        hidden.mkdir()
        user = self.as_user()
        hidden.chmod(0)
        self.environment["HOME"] = str(hidden)
        result = self.generate(**user)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        hidden.chmod(0o755)

    def test_an_output_marked_read_only_stays(self):
        self.target.write_text("the user's own")
        for user in (self.as_user(), {}):
            self.target.chmod(0o444)
            self.assert_reported(self.generate(**user), self.target, "cannot be written")
            self.assertEqual(self.target.read_text(), "the user's own")


class Limits(Files):
    def test_a_limit_on_the_size_of_files_is_named(self):
        def limit():
            resource.setrlimit(resource.RLIMIT_FSIZE, (2048, 2048))

        shutil.copy(DATA / "template/Desk.xls", self.home)
        for name in ("Desk.xlsx", "Desk.xls"):
            with self.subTest(name):
                result = self.generate(template=self.home / name, preexec_fn=limit)
                self.assert_reported(result, f"2027{name}", "limit on the size of files")
                self.assert_no_output()

    def test_names_that_become_too_long(self):
        template = self.home / ("n" * 250 + ".xlsx")
        shutil.copy(self.template, template)
        self.assert_reported(self.generate(template=template), "File name too long")
        self.assert_no_output()

    def test_a_current_folder_that_is_gone(self):
        result = self.run_quickly("parameters", "Desk.xlsx", preexec_fn=self.remove_current_folder)
        self.assert_reported(result, '"the current folder" was not found')

    def remove_current_folder(self):
        lost = self.home / "lost"
        lost.mkdir()
        os.chdir(lost)
        lost.rmdir()


class Streams(Files):
    def test_output_that_cannot_be_written(self):
        for command in (["--version"], ["--help"], ["easter", 2027]):
            with self.subTest(command), open("/dev/full", "w") as full:
                result = self.run_quickly(*command, stdout=full)
                self.assertEqual(result.returncode, 1)
                self.assertIn("Standard output", result.stderr)

    def test_a_closed_output_cannot_be_written(self):
        result = self.run_quickly("easter", 2027, preexec_fn=lambda: os.close(1))
        self.assertEqual(result.returncode, 1)
        self.assertIn("Standard output", result.stderr)

    def test_no_report_goes_into_a_file_when_all_streams_are_closed(self):
        self.parameters.write_text("[Monthly Calendar]\nSheetName=None\n")
        self.generate()
        expected = self.target.read_bytes()
        result = self.generate(preexec_fn=lambda: [os.close(stream) for stream in range(3)])
        self.assertEqual(result.returncode, 1)
        self.assertEqual(self.target.read_bytes(), expected)


if __name__ == "__main__":
    unittest.main()
