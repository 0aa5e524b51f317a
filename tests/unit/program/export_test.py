#!/usr/bin/env python3
"""Exports as users have them: at a terminal, interrupted, through links, into folders that take nothing.

Usage: export_test.py PROGRAM
"""

import json
import os
import pathlib
import pty
import re
import select
import signal
import stat
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM = os.path.abspath(sys.argv.pop(1))
SECONDS = 120
CHART = "<svg xmlns='http://www.w3.org/2000/svg' width='600' height='400'><circle cx='300' cy='200' r='%d'/></svg>"


class Terminal:
    """The program at a terminal of its own."""

    def __init__(self, folder, *arguments):
        self.process, self.terminal = pty.fork()
        if self.process == 0:
            os.chdir(folder)
            os.environ.update(LC_ALL="C.UTF-8", TERM="xterm")
            os.execv(PROGRAM, [PROGRAM, *arguments])
        self.shown = ""

    def read(self):
        """Something more of what is shown; false at the end."""
        if not select.select([self.terminal], [], [], SECONDS)[0]:
            os.kill(self.process, signal.SIGKILL)
            raise AssertionError(f"nothing more was shown behind {self.shown!r}")
        try:
            piece = os.read(self.terminal, 65536)
        except OSError:
            piece = b""
        self.shown += piece.decode("utf-8", "replace")
        return bool(piece)

    def expect(self, pattern):
        while not re.search(pattern, self.shown):
            if not self.read():
                raise AssertionError(f"the program ended before {pattern!r}: {self.shown!r}")

    def type(self, text):
        os.write(self.terminal, text.encode())

    def status(self):
        """Of a program that ended by itself; below 0 the signal that ended it."""
        while self.read():
            pass
        os.close(self.terminal)
        return os.waitstatus_to_exitcode(os.waitpid(self.process, 0)[1])


class ExportTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def document(self, name, items):
        (self.folder / "results.json").write_text(json.dumps({"items": items}), encoding="utf-8")
        self.assertEqual(self.run_program("import", name, "results.json").returncode, 0)

    def run_program(self, command, *arguments):
        return subprocess.run([PROGRAM, command, "--language", "en", *arguments], cwd=self.folder, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, check=False)

    def charts(self, count):
        """Pictures that have to be drawn, which takes its time."""
        self.document("charts.vxv", [{"type": "chart", "label": f"Chart {i}", "svg": CHART % (i % 200)} for i in range(count)])

    def let_time_pass(self, terminal):
        """Amid an export of many files, however fast the machine is: progress is shown of what takes longer than a moment."""
        end = time.monotonic() + SECONDS
        while len(list(self.folder.glob(".vexa-*"))) < 5:
            self.assertLess(time.monotonic(), end, "nothing is exported")
            time.sleep(0.001)
        os.kill(terminal.process, signal.SIGSTOP)
        time.sleep(0.7)
        os.kill(terminal.process, signal.SIGCONT)

    def names(self):
        return sorted(path.name for path in self.folder.iterdir() if path.name not in ("results.json", "charts.vxv", "a.vxv"))

    def test_letters_of_a_picture_before_any_other_text(self):
        """What draws it has no thread that reads what fonts there are, and does not wait for one."""
        letters = "<svg xmlns='http://www.w3.org/2000/svg' width='40' height='20'><text x='3' y='9'>T</text></svg>"
        self.document("a.vxv", [{"type": "chart", "svg": letters}])
        for _ in range(12):
            finished = self.run_program("export", "--quiet", "a.vxv", "a.pdf")
            self.assertEqual((finished.returncode, finished.stderr), (0, ""))

    def test_a_long_export_shows_its_progress_and_takes_it_away(self):
        self.charts(200)
        terminal = Terminal(self.folder, "export", "--language", "en", "charts.vxv", "a.htm", "IMAGEFORMAT=PNG", "PRINT=NEVER")
        self.let_time_pass(terminal)
        terminal.expect(r"\rExporting: item \d+ of 200")
        self.assertEqual(terminal.status(), 0)
        self.assertRegex(terminal.shown, r"\r +\r$")
        self.assertEqual(len(self.names()), 201)

    def test_no_progress_where_there_is_no_terminal(self):
        self.charts(60)
        finished = self.run_program("export", "charts.vxv", "a.htm", "IMAGEFORMAT=PNG", "PRINT=NEVER")
        self.assertEqual((finished.stdout, finished.stderr), ("", ""))

    def test_an_interrupt_leaves_the_old_files_and_no_others(self):
        self.charts(400)
        for name in ("a.htm", "a1.png"):
            (self.folder / name).write_text("old", encoding="utf-8")
        terminal = Terminal(self.folder, "export", "--language", "en", "charts.vxv", "a.htm", "IMAGEFORMAT=PNG")
        self.let_time_pass(terminal)
        terminal.expect(r"Exporting: item \d+ of 400")
        terminal.type("\x03")
        self.assertEqual(terminal.status(), -signal.SIGINT)
        self.assertEqual(self.names(), ["a.htm", "a1.png"])
        for name in ("a.htm", "a1.png"):
            self.assertEqual((self.folder / name).read_text(encoding="utf-8"), "old")

    def test_a_link_is_followed_and_rights_stay(self):
        self.document("a.vxv", [{"type": "text", "text": "new"}])
        for name in ("real.htm", "real.txt"):
            (self.folder / name).write_text("old", encoding="utf-8")
            (self.folder / name).chmod(0o640)
            link = self.folder / name.replace("real", "link")
            link.symlink_to(name)
            self.assertEqual(self.run_program("export", "a.vxv", link.name).returncode, 0)
            self.assertTrue(link.is_symlink())
            self.assertIn("new", (self.folder / name).read_text(encoding="utf-8"))
            self.assertEqual(stat.S_IMODE((self.folder / name).stat().st_mode), 0o640)

    def test_a_folder_that_takes_no_file_is_an_error(self):
        self.document("a.vxv", [{"type": "text", "text": "new"}])
        folder = self.folder / "closed"
        folder.mkdir()
        (folder / "a.htm").write_text("old", encoding="utf-8")
        folder.chmod(0o555)
        self.addCleanup(folder.chmod, 0o755)
        # Nothing is closed to the system's owner but places that are no real folders.
        file = folder / "a.htm" if os.geteuid() != 0 else pathlib.Path("/proc/a.htm")
        finished = self.run_program("export", "a.vxv", str(file))
        self.assertEqual(finished.returncode, 1)
        self.assertIn(f"warning: The file {file} cannot be written: ", finished.stderr)
        self.assertIn("is not a valid file name.", finished.stderr)
        self.assertEqual((folder / "a.htm").read_text(encoding="utf-8"), "old")
        self.assertEqual([path.name for path in folder.iterdir()], ["a.htm"])


if __name__ == "__main__":
    unittest.main()
