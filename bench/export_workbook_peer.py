#!/usr/bin/env python3
"""export_workbook_peer.py WAY COUNT: the tables of export_workbooks_bench.cc as a workbook, by openpyxl: `write-only`, as
it is fastest, or `normal`, with merged cells; or by `xlwt`, a binary one. Prints nanoseconds a table."""
import os
import sys
import tempfile
import time

from openpyxl import Workbook
from openpyxl.cell import WriteOnlyCell
from openpyxl.styles import Alignment, Border, Font, Side

from export_text_peer import COLUMNS, ROWS, measured

BOLD = Font(name="Arial", size=10, bold=True)
PLAIN = Font(name="Arial", size=9)
WRAPPED = Alignment(wrap_text=True, vertical="top")
LINES = Border(bottom=Side("thin", "808080"))


def text_of(cell):
    cell.font = PLAIN
    cell.alignment = WRAPPED
    cell.border = LINES
    return cell


def number_of(cell):
    cell.font = PLAIN
    cell.alignment = WRAPPED
    cell.border = LINES
    cell.number_format = "0.00"
    return cell


def write_only(study):
    book = Workbook(write_only=True)
    sheet = book.create_sheet("Output")
    for seed, values in enumerate(study):
        title = WriteOnlyCell(sheet, f"Measured values of study {seed}")
        title.font = BOLD
        sheet.append([title])
        sheet.append([None, text_of(WriteOnlyCell(sheet, "Statistic"))])
        headers = ["Variable", *(f"Statistic {column}" for column in range(COLUMNS))]
        sheet.append([text_of(WriteOnlyCell(sheet, header)) for header in headers])
        for row, line in enumerate(values):
            label = text_of(WriteOnlyCell(sheet, f"Variable {row}"))
            sheet.append([label, *(number_of(WriteOnlyCell(sheet, value)) for value in line)])
        sheet.append([])
    return book


def normal(study):
    book = Workbook()
    sheet = book.active
    top = 1
    for seed, values in enumerate(study):
        sheet.cell(top, 1, f"Measured values of study {seed}").font = BOLD
        sheet.merge_cells(start_row=top, start_column=1, end_row=top, end_column=COLUMNS + 1)
        text_of(sheet.cell(top + 1, 2, "Statistic"))
        sheet.merge_cells(start_row=top + 1, start_column=2, end_row=top + 1, end_column=COLUMNS + 1)
        text_of(sheet.cell(top + 2, 1, "Variable"))
        for column in range(COLUMNS):
            text_of(sheet.cell(top + 2, column + 2, f"Statistic {column}"))
        for row, line in enumerate(values):
            text_of(sheet.cell(top + 3 + row, 1, f"Variable {row}"))
            for column, value in enumerate(line):
                number_of(sheet.cell(top + 3 + row, column + 2, value))
        top += ROWS + 4
    return book


def binary(study):
    import xlwt
    book = xlwt.Workbook()
    sheet = book.add_sheet("Output")
    bold = xlwt.easyxf("font: name Arial, height 200, bold on")
    plain = "font: name Arial, height 180; align: wrap on, vert top; borders: bottom thin"
    text, number = xlwt.easyxf(plain), xlwt.easyxf(plain, num_format_str="0.00")
    top = 0
    for seed, values in enumerate(study):
        sheet.write_merge(top, top, 0, COLUMNS, f"Measured values of study {seed}", bold)
        sheet.write_merge(top + 1, top + 1, 1, COLUMNS, "Statistic", text)
        sheet.write(top + 2, 0, "Variable", text)
        for column in range(COLUMNS):
            sheet.write(top + 2, column + 1, f"Statistic {column}", text)
        for row, line in enumerate(values):
            sheet.write(top + 3 + row, 0, f"Variable {row}", text)
            for column, value in enumerate(line):
                sheet.write(top + 3 + row, column + 1, value, number)
        top += ROWS + 4
    return book


WAYS = {"write-only": write_only, "normal": normal, "xlwt": binary}


def main():
    study = [measured(seed) for seed in range(int(sys.argv[2]))]
    with tempfile.TemporaryDirectory() as folder:
        start = time.perf_counter_ns()
        book = WAYS[sys.argv[1]](study)
        book.save(os.path.join(folder, "book.xlsx"))
        print((time.perf_counter_ns() - start) / len(study))


main()
