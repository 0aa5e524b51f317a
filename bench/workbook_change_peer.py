#!/usr/bin/env python3
"""workbook_change_peer.py FILE COPY: adds three cells below what the first sheet of a workbook has, by openpyxl, and saves
it as another one."""
import sys

import openpyxl

book = openpyxl.load_workbook(sys.argv[1])
sheet = book.worksheets[0]
below = sheet.max_row + 2
sheet.cell(below, 1, "Report")
for column, value in enumerate((1.5, 12)):
    sheet.cell(below + 1, column + 1, value)
book.save(sys.argv[2])
