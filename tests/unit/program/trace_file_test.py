#!/usr/bin/env python3
"""Where a trace may go, what becomes of one that is there, and who sees passwords in it.

Usage: trace_file_test.py PROGRAM
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import threading
import unittest

PROGRAM = os.path.abspath(sys.argv.pop(1))
EARLIER = '{"event":"flush"}\n'
PROTECTED = "OUTPUT NEW NAME=a.\nOUTPUT SAVE NAME=a OUTFILE='a.vxv' /PASSPROTECT PASSWORD='topsecret'.\n"


class TraceFileTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.write("case.vxs", "ECHO 'run'.\nOUTPUT NEW NAME=a.\nOUTPUT COMMENT TEXT='x'.\n")

    def write(self, name, text):
        (self.folder / name).write_text(text, encoding="utf-8")

    def read(self, name):
        return (self.folder / name).read_text(encoding="utf-8")

    def run_program(self, *words, **streams):
        streams = {"stdin": subprocess.DEVNULL, "stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **streams}
        return subprocess.run([PROGRAM, "run", "--language", "en", *words], cwd=self.folder, text=True, timeout=120,
                              check=False, **streams)

    def test_a_run_that_fails_at_once_leaves_an_earlier_trace(self):
        self.write("utf16.vxs", "x")
        (self.folder / "utf16.vxs").write_bytes("ECHO 'x'.\n".encode("utf-16"))
        failing = (["missing.vxs"], ["--charset", "no-such", "case.vxs"], ["--adapter", "script:missing.jsonl", "case.vxs"],
                   ["--installation", "missing", "case.vxs"], ["utf16.vxs"], ["--no-such-option", "case.vxs"], ["."])
        for words in failing:
            self.write("t.jsonl", EARLIER)
            self.assertEqual(self.run_program("--trace", "t.jsonl", *words).returncode, 2, words)
            self.assertEqual(self.read("t.jsonl"), EARLIER, words)
            self.assertEqual(self.run_program("--trace", "new.jsonl", *words).returncode, 2, words)
            self.assertFalse((self.folder / "new.jsonl").exists(), words)

    def test_a_run_replaces_an_earlier_trace_even_by_an_empty_one(self):
        self.write("t.jsonl", EARLIER * 1000)
        self.assertEqual(self.run_program("--trace", "t.jsonl", "case.vxs").returncode, 0)
        self.assertTrue(self.read("t.jsonl").startswith('{"event":"command"'))
        self.write("silent.vxs", "* Nothing but a comment.\n")
        self.assertEqual(self.run_program("--trace", "t.jsonl", "silent.vxs").returncode, 0)
        self.assertEqual(self.read("t.jsonl"), "")
        self.assertEqual(self.run_program("--trace", "t.jsonl", "case.vxs", "missing.vxs").returncode, 2)
        self.assertIn('"name":"OUTPUT NEW"', self.read("t.jsonl"))

    def test_no_input_is_replaced_by_whatever_name(self):
        self.write("empty.vxs", "")
        self.write("answers.jsonl", EARLIER)
        (self.folder / "sub").mkdir()
        os.symlink("empty.vxs", self.folder / "link.jsonl")
        os.link(self.folder / "empty.vxs", self.folder / "hard.jsonl")
        names = ["empty.vxs", "./empty.vxs", "sub/../empty.vxs", "link.jsonl", "hard.jsonl", str(self.folder / "empty.vxs")]
        for name in names:
            finished = self.run_program("--trace", name, "empty.vxs")
            self.assertEqual((finished.returncode, self.read("empty.vxs")), (2, ""), name)
            self.assertIn("would replace a file that this run reads", finished.stderr)
        self.assertEqual(self.run_program("--trace", "sub/../answers.jsonl", "--adapter", "script:answers.jsonl",
                                          "case.vxs").returncode, 2)
        self.assertEqual(self.read("answers.jsonl"), EARLIER)
        with open(self.folder / "empty.vxs", encoding="utf-8") as typed:
            self.assertEqual(self.run_program("--trace", "empty.vxs", "-", stdin=typed).returncode, 2)

    def test_no_command_replaces_the_open_trace(self):
        os.symlink("t.jsonl", self.folder / "link")
        self.write("over.vxs", "OUTPUT NEW NAME=a.\nOUTPUT COMMENT TEXT='x'.\n"
                   "OUTPUT SAVE NAME=a OUTFILE='t.jsonl'.\nOUTPUT SAVE NAME=a OUTFILE='link'.\n"
                   "OUTPUT EXPORT NAME=a /TEXT DOCUMENTFILE='./t.jsonl'.\nOUTPUT EXPORT NAME=a /HTML DOCUMENTFILE='link'.\n"
                   "OUTPUT EXPORT NAME=a /XLSX DOCUMENTFILE='t.xlsx'.\n")
        finished = self.run_program("--trace", "t.jsonl", "over.vxs")
        self.assertEqual(finished.returncode, 1)
        self.assertIn(f"over.vxs:3: error: The file {self.folder}/t.jsonl is the trace of this run, and is not replaced.",
                      finished.stderr)
        self.assertIn(f"over.vxs:4: error: The file {self.folder}/link is the trace of this run", finished.stderr)
        self.assertIn("over.vxs:5: warning: The file", finished.stderr)
        self.assertEqual(finished.stderr.count("cannot be written: it is the trace of this run"), 2)
        self.assertTrue((self.folder / "link").is_symlink())
        self.assertEqual([line.startswith('{"event":') for line in self.read("t.jsonl").splitlines()].count(False), 0)
        self.assertTrue((self.folder / "t.xlsx").exists())
        # What is no trace of this run is nobody's concern.
        self.write("case.vxs", "OUTPUT NEW NAME=a.\nOUTPUT COMMENT TEXT='x'.\nOUTPUT EXPORT /TEXT DOCUMENTFILE='t.jsonl'.\n")
        self.assertEqual(self.run_program("case.vxs").returncode, 0)

    def test_passwords_are_seen_by_the_user_alone(self):
        self.write("case.vxs", PROTECTED)
        self.assertEqual(self.run_program("--trace", "t.jsonl", "case.vxs").returncode, 0)
        self.assertIn('"password":"topsecret"', self.read("t.jsonl"))
        for name in ("-", "/dev/stdout"):
            finished = self.run_program("--trace", name, "case.vxs")
            self.assertEqual(finished.returncode, 0)
            self.assertNotIn("topsecret", finished.stdout)
            self.assertIn('"password":"***"', finished.stdout)
            self.assertIn("topsecret", self.run_program("--trace", name, "--trace-passwords", "case.vxs").stdout)
        with open(self.folder / "out.txt", "w", encoding="utf-8") as out:
            self.assertEqual(self.run_program("--trace", "/dev/stdout", "case.vxs", stdout=out).returncode, 0)
        self.assertEqual([line for line in self.read("out.txt").splitlines() if not line.startswith("{")], [])
        self.assertNotIn("topsecret", self.read("out.txt"))

    def test_what_messages_say_of_passwords_is_masked_too(self):
        self.write("case.vxs", "OUTPUT NEW NAME=a.\nOUTPUT SAVE NAME=a OUTFILE='a.vxv'\n"
                   "  /PASSPROTECT password = 'it''s much too long' ENCRYPTEDPW=NO.\n")
        finished = self.run_program("--trace", "-", "case.vxs", stderr=subprocess.DEVNULL)
        self.assertEqual(finished.returncode, 1)
        self.assertIn('"arguments":["***"]', finished.stdout)
        self.assertNotIn("too long", finished.stdout)

    def test_a_file_of_somebody_else_gets_no_passwords(self):
        if os.geteuid() != 0:
            self.skipTest("only the superuser can give files away")
        self.write("case.vxs", PROTECTED)
        self.write("t.jsonl", EARLIER)
        os.chown(self.folder / "t.jsonl", 12345, 12345)
        self.assertEqual(self.run_program("--trace", "t.jsonl", "case.vxs").returncode, 0)
        self.assertIn('"password":"***"', self.read("t.jsonl"))
        self.assertEqual((self.folder / "t.jsonl").stat().st_uid, 12345)

    def test_pipes_and_devices(self):
        os.mkfifo(self.folder / "pipe")
        got = []
        reader = threading.Thread(target=lambda: got.append(self.read("pipe")), daemon=True)
        reader.start()
        self.assertEqual(self.run_program("--trace", "pipe", "case.vxs").returncode, 0)
        reader.join(120)
        self.assertIn('"name":"OUTPUT NEW"', got[0])
        finished = self.run_program("--trace", "/dev/full", "case.vxs")
        self.assertEqual(finished.returncode, 2)
        self.assertIn("The trace /dev/full could not be written: No space left on device.", finished.stderr)
        self.assertEqual(self.run_program("--trace", "/dev/null", "case.vxs").returncode, 0)
        finished = self.run_program("--trace", "/dev/stderr", "case.vxs")
        self.assertIn('"name":"OUTPUT NEW"', finished.stderr)
        with open(self.folder / "messages", "w", encoding="utf-8") as messages:
            self.assertEqual(self.run_program("--trace", "messages", "case.vxs", stderr=messages).returncode, 2)
        self.assertIn("would replace the messages of this run", self.read("messages"))

    def test_folders_and_what_may_not_be_written(self):
        finished = self.run_program("--trace", ".", "case.vxs")
        self.assertEqual(finished.returncode, 2)
        self.assertIn("The trace . cannot be written: Is a directory.", finished.stderr)
        self.assertEqual(self.run_program("--trace", "missing/t.jsonl", "case.vxs").returncode, 2)
        closed = self.folder / "closed"
        closed.mkdir()
        (closed / "t.jsonl").write_text(EARLIER, encoding="utf-8")
        closed.chmod(0o555)
        self.addCleanup(closed.chmod, 0o755)
        self.assertEqual(self.run_program("--trace", "closed/t.jsonl", "case.vxs").returncode, 0, "it is written in its place")
        if os.geteuid() != 0:
            finished = self.run_program("--trace", "closed/new.jsonl", "case.vxs")
            self.assertEqual(finished.returncode, 2)
            self.assertIn("Permission denied", finished.stderr)


if __name__ == "__main__":
    unittest.main()
