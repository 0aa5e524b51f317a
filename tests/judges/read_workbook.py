#!/usr/bin/env python3
"""Prints what other readers find in the first sheet of a workbook, one line each; nothing without these readers.

usage: read_workbook.py FILE

A cell is its place, `text`, `number` or `seconds`, its value (a text as JSON, a date or time in whole seconds) and, of a number,
the code of its format; a merged range stands behind `merged`. XLS is read by xlrd, everything else by openpyxl, which also
says how cells look.
"""

import datetime
import json
import sys

try:
    import openpyxl
    import xlrd
    from openpyxl.utils import get_column_letter
    from openpyxl.utils.datetime import to_excel
except ImportError:
    sys.exit(0)


SECONDS = 86400


def show(place, value, code, look=""):
    if isinstance(value, str):
        print(place, "text", json.dumps(value) + look)
    elif "yyyy" in code or "hh" in code:
        print(place, "seconds", f"{round(value * SECONDS)} {code}{look}")
    elif value is not None:
        print(place, "number", f"{value:.15g} {code}{look}")


def look_of(cell, merged):
    font, alignment, fill = cell.font, cell.alignment, cell.fill
    marks = "".join(mark for mark, on in (("b", font.b), ("i", font.i), ("u", font.u), ("w", alignment.wrap_text)) if on)
    ground = fill.fgColor.rgb[2:] if fill.fill_type == "solid" else "-"
    if cell.coordinate in merged:  # openpyxl gives the first cell the lines of the others
        lines = "merged"
    else:
        lines = " ".join(side.style or "-" for side in (cell.border.top, cell.border.right, cell.border.bottom, cell.border.left))
    return f" | {font.name} {font.sz:g} {marks} {font.color.rgb[2:]} {ground} {alignment.horizontal or 'general'} {lines}"


def number_of(value):
    if isinstance(value, datetime.timedelta):
        return value.total_seconds() / SECONDS
    if isinstance(value, (datetime.time, datetime.datetime)):
        return to_excel(value)
    return value


def read_new(name):
    sheet = openpyxl.load_workbook(name).worksheets[0]
    merged = {found.start_cell.coordinate for found in sheet.merged_cells.ranges}
    for row in sheet.iter_rows():
        for cell in row:
            value = cell.value if isinstance(cell.value, str) else number_of(cell.value)
            if value is not None:
                show(cell.coordinate, value, cell.number_format, look_of(cell, merged))
    return sorted((found.min_row - 1, found.min_col - 1, found.max_row, found.max_col) for found in sheet.merged_cells.ranges)


def read_old(name):
    book = xlrd.open_workbook(name, formatting_info=True)
    sheet = book.sheet_by_index(0)
    for row in range(sheet.nrows):
        for column in range(sheet.ncols):
            cell = sheet.cell(row, column)
            if cell.ctype in (xlrd.XL_CELL_TEXT, xlrd.XL_CELL_NUMBER, xlrd.XL_CELL_DATE):
                code = book.format_map[book.xf_list[cell.xf_index].format_key].format_str
                show(f"{get_column_letter(column + 1)}{row + 1}", cell.value, code)
    return sorted((top, left, bottom, right) for top, bottom, left, right in sheet.merged_cells)


path = sys.argv[1]
for top, left, bottom, right in read_old(path) if path.endswith(".xls") else read_new(path):
    print("merged", f"{get_column_letter(left + 1)}{top + 1}:{get_column_letter(right)}{bottom}")
