#!/usr/bin/env python3
"""What the program says when nobody takes what it prints, or the disk does not.

Usage: standard_output_test.py PROGRAM
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

PROGRAM = os.path.abspath(sys.argv.pop(1))


class StandardOutputTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        (self.folder / "a.json").write_text('{"items": [{"type": "text", "text": "x"}]}', encoding="ascii")
        (self.folder / "a.vxs").write_text("OUTPUT NEW NAME=a.\nECHO 'x'.\nOUTPUT SAVE NAME=a OUTFILE='b.vxv'.\n", encoding="ascii")
        self.assertEqual(self.said("import", "a.vxv", "a.json", output=subprocess.DEVNULL), (0, ""))

    def said(self, *words, output):
        done = subprocess.run([PROGRAM, *words], cwd=self.folder, stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.PIPE,
                              text=True, timeout=120, check=False, env={**os.environ, "LC_ALL": "C.UTF-8", "LANGUAGE": "en"})
        return done.returncode, done.stderr

    def said_to_nobody(self, *words):
        """To a pipe whose reader has gone."""
        reading, writing = os.pipe()
        os.close(reading)
        try:
            return self.said(*words, output=writing)
        finally:
            os.close(writing)

    def test_a_reader_that_has_seen_enough_is_no_failure_to_complain_of(self):
        for words in (["help"], ["help", "OUTPUT", "SAVE"], ["--help"], ["--version"], ["manual"], ["completion", "bash"],
                      ["show", "a.vxv"], ["show", "--json", "a.vxv"], ["show", "a.vxv", "--item", "1"]):
            self.assertEqual(self.said_to_nobody(*words), (2, ""), words)

    def test_work_whose_report_is_lost_says_so(self):
        lost = "Standard output could not be written completely, because its reader has gone."
        for words, made in (["run", "a.vxs"], "b.vxv"), (["import", "c.vxv", "a.json"], "c.vxv"), (["export", "a.vxv", "a.txt"], "a.txt"):
            status, said = self.said_to_nobody(*words)
            self.assertEqual(status, 2, words)
            self.assertIn(lost, said, words)
            self.assertNotIn("disk", said, words)
            self.assertTrue((self.folder / made).exists(), words)

    def test_a_disk_that_is_full_is_told(self):
        with open("/dev/full", "wb") as full:
            for words in ["help"], ["show", "a.vxv"], ["run", "a.vxs"]:
                status, said = self.said(*words, output=full)
                self.assertEqual(status, 2, words)
                self.assertIn("Is the disk full?", said, words)


if __name__ == "__main__":
    unittest.main()
