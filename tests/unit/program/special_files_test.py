#!/usr/bin/env python3
"""Saves and exports over files that are special, in folders that are and on disks that are full.

Usage: special_files_test.py PROGRAM
"""

import json
import os
import pathlib
import resource
import struct
import subprocess
import sys
import tempfile
import unittest

PROGRAM = os.path.abspath(sys.argv.pop(1))
IS_ROOT = os.geteuid() == 0
USER = 12345  # of nobody, in a group of nobody
ACCESS_LIST = "system.posix_acl_access"
DEFAULT_LIST = "system.posix_acl_default"
NEEDS_ROOT = unittest.skipUnless(IS_ROOT, "only the superuser can make files of others")


def access_list(owner, user, group, mask, others):
    """A list as the system keeps it, with one further user."""
    no_one = 0xFFFFFFFF
    entries = ((1, owner, no_one), (2, user, USER), (4, group, no_one), (16, mask, no_one), (32, others, no_one))
    return struct.pack("<I", 2) + b"".join(struct.pack("<HHI", *entry) for entry in entries)


class SpecialFilesTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name).resolve()
        self.folder.chmod(0o777)
        (self.folder / "more.json").write_text(json.dumps({"items": [{"type": "text", "text": "x"}]}), encoding="utf-8")
        self.make("a.vxv")

    def make(self, name, text="old"):
        (self.folder / "made.json").write_text(json.dumps({"items": [{"type": "text", "text": text}]}), encoding="utf-8")
        self.assertEqual(self.run_program("import", name, "made.json").returncode, 0)
        return self.folder / name

    def run_program(self, *words, user=0, limit=None, text=""):
        def prepare():
            if limit is not None:
                resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))
            if user:
                os.setgroups([])
                os.setgid(user)
                os.setuid(user)
        return subprocess.run([PROGRAM, *words], cwd=self.folder, input=text, capture_output=True, text=True, timeout=120,
                              check=False, preexec_fn=prepare, env={**os.environ, "LC_ALL": "C.UTF-8", "LANGUAGE": ""})

    def add(self, name="a.vxv", **how):
        """Adds something to a document."""
        return self.run_program("import", name, "more.json", **how)

    def items(self, name="a.vxv"):
        shown = self.run_program("show", name)
        self.assertEqual(shown.returncode, 0, shown.stderr)
        return len(shown.stdout.splitlines())

    def no_temporary_file(self):
        self.assertEqual([str(path) for path in self.folder.rglob(".vexa-*")], [])

    def test_what_a_file_has_is_kept(self):
        file = self.folder / "a.vxv"
        file.chmod(0o604)
        try:
            os.setxattr(file, "user.origin", b"kept")
        except OSError:
            self.skipTest("this disk keeps no attributes")
        if IS_ROOT:
            os.chown(file, USER, USER + 1)
        before = file.stat()
        done = self.add()
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        now = file.stat()
        self.assertEqual((now.st_mode, now.st_uid, now.st_gid), (before.st_mode, before.st_uid, before.st_gid))
        self.assertEqual(os.getxattr(file, "user.origin"), b"kept")

    @NEEDS_ROOT
    def test_what_cannot_be_kept_is_said_and_never_wider(self):
        file = self.folder / "a.vxv"
        os.chown(file, USER + 1, USER + 2)
        file.chmod(0o666 & ~0o020)
        done = self.add(user=USER)
        self.assertEqual(done.returncode, 0)
        self.assertIn("The file a.vxv has not kept its owner, group or permissions", done.stderr)
        now = file.stat()
        self.assertEqual((now.st_uid, now.st_gid, now.st_mode & 0o777), (USER, USER, 0o646))
        os.chown(file, USER + 1, USER + 2)
        file.chmod(0o662)  # group and others get what both had: to write, and not to read
        self.assertEqual(self.add(user=USER).returncode, 2, "what cannot be read cannot be added to")
        page = self.folder / "a.htm"
        page.write_text("old", encoding="utf-8")
        os.chown(page, USER + 1, USER + 2)
        page.chmod(0o662)
        file.chmod(0o666)
        done = self.run_program("export", "a.vxv", "a.htm", user=USER)
        self.assertEqual(done.returncode, 0)
        self.assertIn(f"The file {page} has not kept its owner", done.stderr)
        self.assertEqual(page.stat().st_mode & 0o777, 0o622)

    def test_lists_of_further_users(self):
        file = self.folder / "a.vxv"
        given = access_list(6, 4, 0, 4, 0)
        try:
            os.setxattr(file, ACCESS_LIST, given)
        except OSError:
            self.skipTest("this disk keeps no lists")
        done = self.add()
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertEqual(os.getxattr(file, ACCESS_LIST), given)
        # What the folder gives to new files is not given to one that takes the place of another.
        inner = self.folder / "inner"
        inner.mkdir()
        file = self.make("inner/b.vxv")
        file.chmod(0o640)
        os.setxattr(inner, DEFAULT_LIST, access_list(7, 7, 7, 7, 0))
        done = self.add("inner/b.vxv")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertNotIn(ACCESS_LIST, os.listxattr(file))
        self.assertEqual(file.stat().st_mode & 0o777, 0o640)

    def test_links(self):
        inner = self.folder / "inner"
        inner.mkdir()
        os.rename(self.folder / "a.vxv", inner / "a.vxv")
        os.symlink("inner/a.vxv", self.folder / "a.vxv")
        self.assertEqual(self.add().returncode, 0)
        self.assertTrue((self.folder / "a.vxv").is_symlink())
        self.assertEqual(self.items("inner/a.vxv"), 2)
        os.symlink("nothing.vxv", self.folder / "to-nothing.vxv")
        self.assertEqual(self.add("to-nothing.vxv").returncode, 0)
        self.assertEqual(self.items("nothing.vxv"), 1)
        os.link(inner / "a.vxv", self.folder / "hard.vxv")
        done = self.add("hard.vxv")
        self.assertEqual(done.returncode, 0)
        self.assertIn("The file hard.vxv was replaced by a new one. Under its other names (hard links) the old one stays",
                      done.stderr)
        self.assertEqual((self.items("hard.vxv"), self.items("inner/a.vxv")), (3, 2))
        for name in ("x.txt", "y.txt"):
            (self.folder / name).unlink(missing_ok=True)
        (self.folder / "x.txt").write_text("old", encoding="utf-8")
        os.link(self.folder / "x.txt", self.folder / "y.txt")
        done = self.run_program("export", "a.vxv", "x.txt")
        self.assertIn(f"The file {self.folder}/x.txt was replaced by a new one.", done.stderr)
        self.assertEqual((self.folder / "y.txt").read_text(encoding="utf-8"), "old")
        os.symlink("loop", self.folder / "loop")
        self.assertEqual(self.run_program("export", "a.vxv", "loop").returncode, 2)

    @NEEDS_ROOT
    def test_a_file_that_may_not_be_written_stays(self):
        for name in ("a.vxv", "a.txt"):
            file = self.folder / name
            if name == "a.txt":
                file.write_text("old", encoding="utf-8")
            os.chown(file, USER, USER)
            file.chmod(0o444)
            before = file.read_bytes()
            done = self.add(user=USER) if name == "a.vxv" else self.run_program("export", "a.vxv", name, user=USER)
            self.assertIn(done.returncode, (1, 2))
            self.assertNotEqual(done.stderr, "")
            self.assertEqual(file.read_bytes(), before)
        self.no_temporary_file()

    @NEEDS_ROOT
    def test_a_file_of_somebody_else_in_a_sticky_folder_stays(self):
        sticky = self.folder / "sticky"
        sticky.mkdir()
        file = self.make("sticky/b.vxv")
        page = sticky / "b.txt"
        page.write_text("old", encoding="utf-8")
        for each in (file, page):
            each.chmod(0o666)
        sticky.chmod(0o1777)
        before = file.read_bytes()
        done = self.add("sticky/b.vxv", user=USER)
        self.assertEqual(done.returncode, 2)
        self.assertIn("could not be saved to sticky/b.vxv (Operation not permitted); what was there before is unchanged",
                      done.stderr)
        done = self.run_program("export", "a.vxv", "sticky/b.txt", user=USER)
        self.assertEqual(done.returncode, 1)
        self.assertIn(f"The file {page} cannot be written: Operation not permitted", done.stderr)
        self.assertEqual((file.read_bytes(), page.read_text(encoding="utf-8")), (before, "old"))
        self.no_temporary_file()

    def test_a_file_that_others_change_between(self):
        theirs = self.make("theirs.vxv", "theirs")
        # The pipes let the test step in between the commands.
        for name in ("first.vxs", "second.vxs"):
            os.mkfifo(self.folder / name)
        (self.folder / "run.vxs").write_text(
            "OUTPUT OPEN FILE='a.vxv' NAME=a LOCK=NO.\nOUTPUT COMMENT TEXT='mine'.\nINSERT FILE='first.vxs'.\n"
            "OUTPUT SAVE NAME=a OUTFILE='a.vxv'.\nINSERT FILE='second.vxs'.\nOUTPUT SAVE NAME=a OUTFILE='a.vxv'.\n",
            encoding="utf-8")
        file = self.folder / "a.vxv"
        steps = {
            "written": (lambda: file.write_bytes(theirs.read_bytes()), 1, "was changed by another program"),
            "deleted": (file.unlink, 0, ""),
            "a folder": (lambda: (file.unlink(), file.mkdir()), 1, "is a folder. Name a file in it."),
        }
        for name, (step, status, said) in steps.items():
            if file.is_dir():
                file.rmdir()
            file.unlink(missing_ok=True)
            self.make("a.vxv")
            with subprocess.Popen([PROGRAM, "run", "--language", "en", "run.vxs"], cwd=self.folder, stdin=subprocess.DEVNULL,
                                  stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True) as process:
                with open(self.folder / "first.vxs", "w", encoding="utf-8") as pipe:
                    pipe.write("* Nothing.\n")
                    step()
                with open(self.folder / "second.vxs", "w", encoding="utf-8") as pipe:
                    pipe.write("* Nothing.\n")
                    if name == "written":
                        self.assertEqual(file.read_bytes(), theirs.read_bytes(), "theirs is not replaced at once")
                messages = process.communicate(timeout=120)[1]
            self.assertEqual(process.returncode, status, (name, messages))
            self.assertIn(said, messages, name)
            if name != "a folder":
                self.assertEqual(self.items(), 3, name)  # a command that is repeated means it

    def test_a_disk_that_is_full(self):
        large = "".join(chr(33 + i * 7919 % 90) for i in range(30000))
        items = [{"type": "text", "text": large[i:] + large[:i]} for i in range(60)]
        items += [{"type": "table", "title": f"T {i}", "rows": [{"label": "r", "categories": [f"r{j}" for j in range(300)]}],
                   "columns": [{"label": "c", "categories": ["a", "b"]}], "cells": [i * j / 7 for j in range(600)]}
                  for i in range(20)]
        (self.folder / "large.json").write_text(json.dumps({"items": items}), encoding="utf-8")
        self.assertEqual(self.run_program("import", "large.vxv", "large.json").returncode, 0)
        before = (self.folder / "a.vxv").read_bytes()
        done = self.run_program("import", "a.vxv", "large.json", limit=40000)
        self.assertEqual(done.returncode, 2)
        self.assertIn("could not be saved to a.vxv (File too large); what was there before is unchanged", done.stderr)
        self.assertEqual((self.folder / "a.vxv").read_bytes(), before)
        for extension in ("htm", "mht", "txt", "pdf", "docx", "rtf", "pptx", "xlsx", "xlsm", "xls"):
            file = self.folder / f"full.{extension}"
            done = self.run_program("export", "large.vxv", file.name, limit=20000)
            self.assertEqual(done.returncode, 1, extension)
            self.assertIn(f"The file {file} cannot be written: File too large", done.stderr, extension)
            self.assertFalse(file.exists(), extension)
        self.no_temporary_file()


if __name__ == "__main__":
    unittest.main()
