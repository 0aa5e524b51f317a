#!/usr/bin/env python3
"""Prints values and styles of the cells of binary workbooks as xlrd reads them; nothing where it is not installed.

usage: show_xls_styles.py FILE...
"""

import sys

try:
    import xlrd
except ImportError:
    sys.exit(0)


def place(row, column):
    return xlrd.colname(column) + str(row + 1)


def color_of(book, number):
    rgb = book.colour_map.get(number)
    return "" if rgb in (None, (0, 0, 0)) else "%02X%02X%02X" % rgb


def style_of(book, sheet, row, column):
    form = book.xf_list[sheet.cell_xf_index(row, column)]
    font = book.font_list[form.font_index]
    words = [word for word, is_so in (("bold", font.bold), ("italic", font.italic), ("underlined", font.underlined)) if is_so]
    words.append(color_of(book, font.colour_index))
    if form.background.fill_pattern == 1:
        words.append("on " + color_of(book, form.background.pattern_colour_index))
    if font.name != "Arial":
        words += [font.name, "%g" % (font.height / 20)]
    for begin, number in sheet.rich_text_runlist_map.get((row, column), []):
        words.append("raised from %d" % begin if book.font_list[number].escapement == 1 else "another font from %d" % begin)
    return " ".join(word for word in words if word)


for path in sys.argv[1:]:
    book = xlrd.open_workbook(path, formatting_info=True)
    for sheet in book.sheets():
        print(f"{sheet.name}: {sheet.nrows} rows, {sheet.ncols} columns")
        for row in range(sheet.nrows):
            for column in range(sheet.ncols):
                cell = sheet.cell(row, column)
                if cell.value == "":
                    continue
                code = book.format_map[book.xf_list[cell.xf_index].format_key].format_str
                shown = cell.value if cell.ctype == 1 else f"{cell.value} {code}"
                print(f"{place(row, column)} {shown} | {style_of(book, sheet, row, column)}")
        for first, last, left, right in sheet.merged_cells:
            print(f"merged {place(first, left)}:{place(last - 1, right - 1)}")
