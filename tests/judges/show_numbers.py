#!/usr/bin/env python3
"""Prints how a spreadsheet program shows numbers, one line each; nothing where there is no such program.

usage: show_numbers.py FILE FOLDER

Each line of FILE is a number, a tab and the code of its format; empty for General. FOLDER is a place for files in between.
"""

import csv
import os
import shutil
import subprocess
import sys

try:
    import openpyxl
except ImportError:
    sys.exit(0)
if shutil.which("soffice") is None:
    sys.exit(0)

file, folder = sys.argv[1:]
book = openpyxl.Workbook()
sheet = book.active
with open(file, encoding="utf-8") as lines:
    for row, line in enumerate(lines, 1):
        number, code = line.rstrip("\n").split("\t")
        cell = sheet.cell(row, 1, float(number))
        cell.number_format = code or "General"
path = os.path.join(folder, "numbers.xlsx")
book.save(path)
form = "csv:Text - txt - csv (StarCalc):9,34,76"  # tabs, quotes, UTF-8
profile = "-env:UserInstallation=file://" + os.path.join(folder, "profile")
subprocess.run(["soffice", profile, "--headless", "--convert-to", form, "--outdir", folder, path],
               check=True, timeout=240, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
with open(os.path.join(folder, "numbers.csv"), encoding="utf-8", newline="") as shown:
    for row in csv.reader(shown, delimiter="\t"):
        print(row[0])
