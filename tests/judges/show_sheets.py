#!/usr/bin/env python3
"""Prints what LibreOffice shows in the sheets of workbooks, as comma-separated values; nothing where it is not installed.

usage: show_sheets.py FOLDER FILE...
       show_sheets.py FOLDER FILE... --without SHEET   one sheet is left out

Sheets stand in the order of their names, each below a line with its name; FOLDER is for its files.
"""

import os
import pathlib
import subprocess
import sys

EVERY_SHEET = "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,true,false,false,-1"


def main():
    arguments = sys.argv[1:]
    without = None
    if "--without" in arguments:
        place = arguments.index("--without")
        without = arguments[place + 1]
        del arguments[place:place + 2]
    folder, files = arguments[0], arguments[1:]
    target = os.path.join(folder, "shown")
    try:
        subprocess.run(["soffice", "-env:UserInstallation=file://" + os.path.join(folder, "settings"), "--headless",
                        "--convert-to", EVERY_SHEET, "--outdir", target, *files],
                       check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=240)
    except FileNotFoundError:
        return
    for file in files:
        stem = os.path.splitext(os.path.basename(file))[0]
        for shown in sorted(pathlib.Path(target).glob(stem + "-*.csv")):
            name = shown.stem[len(stem) + 1:]
            if name != without:
                print(f"== {name}")
                print(shown.read_text(encoding="utf-8"), end="")


main()
