#!/usr/bin/env python3
"""Signals at any moment of saves and exports: no temporary file and no process stays behind, every file is the old or the
new one, and the exit status names a signal that was sent.

Usage: signals_test.py PROGRAM [--rounds N] [--seed N]
"""

import argparse
import json
import os
import pathlib
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

SIGNALS = (signal.SIGTERM, signal.SIGINT, signal.SIGHUP)
SECONDS = 120
CHARTS = 80  # more files at a time than anybody would set aside places for
TABLES = 40
SLOW_CHART = ("<svg xmlns='http://www.w3.org/2000/svg' width='2000' height='2000'><filter id='f' x='0' y='0' width='1' "
              "height='1'><feTurbulence baseFrequency='0.5' numOctaves='400'/></filter><rect width='2000' height='2000' "
              "filter='url(#f)'/></svg>")
CHART = "<svg xmlns='http://www.w3.org/2000/svg' width='300' height='200'><circle cx='150' cy='100' r='%d'/></svg>"
COMMANDS = (
    "OUTPUT SAVE NAME=big OUTFILE='saved.vxv'.",
    "OUTPUT SAVE NAME=big OUTFILE='protected.vxv' /PASSPROTECT PASSWORD='secret'.",
    "OUTPUT EXPORT NAME=big /HTML DOCUMENTFILE='a.htm' IMAGEFORMAT=PNG.",
    "OUTPUT EXPORT NAME=big /REPORT DOCUMENTFILE='report.htm'.",
    "OUTPUT EXPORT NAME=big /TEXT DOCUMENTFILE='a.txt'.",
    "OUTPUT EXPORT NAME=big /PDF DOCUMENTFILE='a.pdf'.",
    "OUTPUT EXPORT NAME=big /DOC DOCUMENTFILE='a.docx'.",
    "OUTPUT EXPORT NAME=big /DOC DOCUMENTFILE='a.rtf'.",
    "OUTPUT EXPORT NAME=big /PPT DOCUMENTFILE='a.pptx'.",
    "OUTPUT EXPORT NAME=big /XLSX DOCUMENTFILE='a.xlsx'.",
    "OUTPUT EXPORT NAME=big /XLSX DOCUMENTFILE='a.xlsx' OPERATION=MODIFYSHEET SHEET='again'.",
    "OUTPUT EXPORT NAME=big /XLS DOCUMENTFILE='a.xls'.",
    "OUTPUT EXPORT NAME=big /PNG IMAGEROOT='alone'.",
    "OUTPUT EXPORT NAME=big /EMF IMAGEROOT='vector'.",
)
# What does not depend on what was there before, nor on chance.
REPEATABLE = ("saved.vxv", "a.htm", "report.htm", "a.txt", "a.pdf", "a.docx", "a.rtf", "a.pptx", "a.xls", "alone1.png",
              "alone80.png", "vector80.emf")


def results():
    numbers = random.Random(3)
    tables = [{"type": "table", "title": f"Table {i}",
               "rows": [{"label": "Row", "categories": [f"row {row}" for row in range(40)]}],
               "columns": [{"label": "Column", "categories": [f"column {column}" for column in range(8)]}],
               "cells": [round(numbers.random() * 1e6, 3) for _ in range(320)]} for i in range(TABLES)]
    charts = [{"type": "chart", "label": f"Chart {i}", "svg": CHART % (i + 1)} for i in range(CHARTS)]
    return {"vexaResults": 1, "name": "big", "items": tables + charts}


def syntax(begin):
    """The commands again and again, from one of them on."""
    loop = COMMANDS[begin:] + COMMANDS[:begin]
    return "OUTPUT OPEN FILE='big.vxv' NAME=big.\n" + ("\n".join(loop) + "\n") * 100


def living(session):
    """The processes of a session that are no zombies."""
    found = []
    for entry in pathlib.Path("/proc").iterdir():
        if not entry.name.isdigit():
            continue
        try:
            fields = (entry / "stat").read_text(encoding="utf-8", errors="replace").rpartition(")")[2].split()
        except OSError:
            continue
        if int(fields[3]) == session and fields[0] not in "ZX":
            found.append(int(entry.name))
    return found


class SignalsTest(unittest.TestCase):
    program = ""
    rounds = 0
    seed = 0

    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp(prefix="vexa-signals-"))
        cls.addClassCleanup(shutil.rmtree, cls.folder, ignore_errors=True)
        (cls.folder / "big.json").write_text(json.dumps(results()), encoding="utf-8")
        cls.run_program("import", "big.vxv", "big.json")
        once = "OUTPUT OPEN FILE='big.vxv' NAME=big.\n" + "\n".join(COMMANDS) + "\n"
        (cls.folder / "once.vxs").write_text(once, encoding="utf-8")
        cls.run_program("run", "once.vxs")
        cls.expected = {name: (cls.folder / name).read_bytes() for name in REPEATABLE}

    @classmethod
    def run_program(cls, *words):
        subprocess.run([cls.program, *words], cwd=cls.folder, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, check=True, timeout=600)

    def start(self, begin):
        (self.folder / "loop.vxs").write_text(syntax(begin), encoding="utf-8")
        return subprocess.Popen([self.program, "run", "loop.vxs"], cwd=self.folder, stdin=subprocess.DEVNULL,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True)

    def wait(self, process):
        try:
            status = process.wait(SECONDS)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            process.wait()
            self.fail("the signals did not end the program")
        return status

    def nothing_stays(self, process, context):
        end = time.monotonic() + SECONDS  # a process that is told to end needs its moment
        while (left := living(process.pid)) and time.monotonic() < end:
            time.sleep(0.01)
        self.assertEqual(left, [], f"processes that stayed: {context}")
        names = [path.name for path in self.folder.iterdir() if path.name.startswith(".vexa-")]
        for name in names:
            (self.folder / name).unlink()
        self.assertEqual(names, [], f"files that stayed: {context}")

    def test_at_random_moments(self):
        chance = random.Random(self.seed)
        for number in range(self.rounds):
            begin = chance.randrange(len(COMMANDS))
            sent = [chance.choice(SIGNALS) for _ in range(chance.randint(1, 3))]
            to_group = [chance.random() < 0.5 for _ in sent]
            context = f"seed {self.seed}, round {number}, from command {begin}, signals {sent}, to the group {to_group}"
            process = self.start(begin)
            time.sleep(chance.random() * 0.8)
            for each, group in zip(sent, to_group):
                (os.killpg if group else os.kill)(process.pid, each)
                if chance.random() < 0.5:
                    time.sleep(chance.random() * 0.002)
            self.assertIn(self.wait(process), [-each for each in sent], context)
            self.nothing_stays(process, context)
            for name, content in self.expected.items():
                self.assertEqual((self.folder / name).read_bytes(), content, f"{name}: {context}")

    def test_what_draws_ends_with_the_program(self):
        """A chart that takes long is drawn by a process of its own, which a signal to the program alone does not reach."""
        items = {"items": [{"type": "chart", "svg": SLOW_CHART}]}
        (self.folder / "slow.json").write_text(json.dumps(items), encoding="utf-8")
        (self.folder / "slow.vxv").unlink(missing_ok=True)
        self.run_program("import", "slow.vxv", "slow.json")
        for each in SIGNALS:
            process = subprocess.Popen([self.program, "export", "slow.vxv", "slow.htm", "IMAGEFORMAT=PNG"], cwd=self.folder,
                                       stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                       start_new_session=True)
            end = time.monotonic() + SECONDS
            while (processes := len(living(process.pid))) < 2 and time.monotonic() < end:
                time.sleep(0.01)
            self.assertEqual(processes, 2, "the one that draws")
            os.kill(process.pid, each)
            self.assertEqual(self.wait(process), -each)
            self.nothing_stays(process, each)

    def test_by_timeout(self):
        """It signals the program and then the group that it is in."""
        if shutil.which("timeout") is None:
            self.skipTest("there is no timeout")
        for number in range(self.rounds // 3):
            (self.folder / "loop.vxs").write_text(syntax(number % len(COMMANDS)), encoding="utf-8")
            process = subprocess.Popen(["timeout", f"{0.15 + number % 10 * 0.05:.2f}", self.program, "run", "loop.vxs"],
                                       cwd=self.folder, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                       stderr=subprocess.DEVNULL, start_new_session=True)
            self.assertEqual(self.wait(process), 124)
            self.nothing_stays(process, f"round {number}")


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--rounds", type=int, default=12)
    parser.add_argument("--seed", type=int, default=random.randrange(1 << 30))
    chosen = parser.parse_args()
    SignalsTest.program = os.path.abspath(chosen.program)
    SignalsTest.rounds = chosen.rounds
    SignalsTest.seed = chosen.seed
    unittest.main(argv=sys.argv[:1])
