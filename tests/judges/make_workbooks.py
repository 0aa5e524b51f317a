#!/usr/bin/env python3
"""Makes binary workbooks with programs of others, for tests that change them, and prints their names.

usage: make_workbooks.py FOLDER

What a program that is not installed would make is left out.
"""

import datetime
import os
import pathlib
import struct
import subprocess
import sys
import tempfile
import zlib


def png(width, height):
    """A bitmap of one colour."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    rows = b"".join(b"\0" + b"\x30\x60\x90" * width for _ in range(height))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


def fill_rich(book):
    """Formulas of every kind, a chart, comments, validation, conditional formats, names, links, a filter, hidden sheets."""
    bold = book.add_format({"bold": 1, "font_color": "#3366AA", "bg_color": "#FFEECC", "border": 1})
    date = book.add_format({"num_format": "yyyy-mm-dd"})
    data = book.add_worksheet("Data")
    for i in range(60):
        data.write(i, 0, "row %d \u00e4\u20ac %s" % (i, "x" * (i % 7)), bold if i % 5 == 0 else None)
        data.write(i, 1, i * 1.37)
        data.write(i, 2, i)
        data.write_formula(i, 3, "=B%d*2+C%d" % (i + 1, i + 1))
        data.write_formula(i, 4, "=A%d&\"!\"" % (i + 1))
    data.write_datetime(2, 6, datetime.datetime(2020, 3, 4), date)
    data.merge_range("G5:I8", "merged", bold)
    data.write_array_formula("K1:K5", "{=B1:B5*2}")
    data.write_comment("A3", "A comment")
    data.write_comment("B4", "Another")
    data.data_validation("C1:C20", {"validate": "list", "source": ["1", "2", "3"]})
    data.conditional_format("B1:B60", {"type": "cell", "criteria": ">", "value": 30, "format": bold})
    data.freeze_panes(1, 1)
    data.autofilter("A1:E60")
    data.set_column("B:B", 20)
    data.set_row(3, 40)
    data.write_url("A50", "https://example.org/", string="link")
    chart = book.add_chart({"type": "column"})
    chart.add_series({"values": "=Data!$B$1:$B$20", "name": "Values"})
    data.insert_chart("M3", chart)
    sums = book.add_worksheet("Sums \u00fc")
    sums.write_formula("A1", "=SUM(Data!B1:B60)")
    sums.write_formula("A2", "=Data!D5")
    sums.write("C3", "text")
    book.add_worksheet("Hidden").hide()
    alone = book.add_chart({"type": "line"})
    alone.add_series({"values": "=Data!$C$1:$C$20"})
    book.add_chartsheet("Chart").set_chart(alone)
    book.define_name("Total", "=Data!$B$1:$B$60")
    book.define_name("'Sums \u00fc'!Local", "='Sums \u00fc'!$A$1")
    book.set_properties({"title": "March", "author": "Nobody"})


def fill_pictures(book, picture):
    data = book.add_worksheet("Data")
    data.write(0, 0, "two pictures")
    data.insert_image("C4", picture, {"description": "blue"})
    data.insert_image("H20", picture)
    data.set_landscape()
    data.set_h_pagebreaks([20, 40])
    other = book.add_worksheet("Other")
    other.insert_image("B2", picture)
    other.insert_textbox("E5", "a box of text")


def fill_large(book):
    """Texts that need many records, rows in many blocks."""
    data = book.add_worksheet("Data")
    for i in range(400):
        data.write(i * 3, 0, ("long \u20ac " if i % 3 == 0 else "long ") * (i % 60) + str(i))
        for column in range(1, 12):
            data.write(i * 3, column, i * column / 7)
    mixed = [book.add_format({"bold": 1}), "bold ", book.add_format({"italic": 1}), "and slanted " * 30]
    data.write_rich_string("N1", *mixed)


def fill_empty(book):
    book.add_worksheet("Data")


def fill_protected(book):
    book.add_worksheet("Data").write(0, 0, "locked")
    book.get_worksheet_by_name("Data").protect()
    book.add_worksheet("Free").write(0, 0, "free")


def with_libreoffice(folder):
    import xlsxwriter
    with tempfile.TemporaryDirectory() as work:
        picture = os.path.join(work, "picture.png")
        pathlib.Path(picture).write_bytes(png(120, 80))
        made = []
        for name, fill in (("rich", fill_rich), ("pictures", lambda book: fill_pictures(book, picture)), ("large", fill_large),
                           ("empty", fill_empty), ("protected", fill_protected)):
            made.append(os.path.join(work, name + ".xlsx"))
            with xlsxwriter.Workbook(made[-1]) as book:
                fill(book)
        subprocess.run(["soffice", "-env:UserInstallation=file://" + work + "/settings", "--headless", "--convert-to", "xls",
                        "--outdir", folder, *made], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=300)


def with_xlwt(folder):
    import xlwt
    for name, from_1904 in (("other", False), ("from1904", True)):
        book = xlwt.Workbook()
        book.dates_1904 = from_1904
        data = book.add_sheet("Data", cell_overwrite_ok=True)
        loud = xlwt.easyxf("font: bold on, color red; align: wrap on; borders: left thin; pattern: pattern solid, fore_color yellow")
        for row in range(70):
            data.write(row, 0, row / 3, loud if row % 2 else xlwt.Style.default_style)
            data.write(row, 1, "text %d" % row)
            data.write(row, 2, xlwt.Formula("A%d*2" % (row + 1)))
        data.write_merge(2, 4, 5, 7, "merged", loud)
        data.write(0, 9, datetime.date(2020, 3, 4), xlwt.easyxf(num_format_str="yyyy-mm-dd"))
        data.col(1).width = 5000
        book.add_sheet("Sums").write(0, 0, xlwt.Formula("SUM(Data!A1:A70)"))
        book.save(os.path.join(folder, name + ".xls"))


def main():
    folder = sys.argv[1]
    for maker in (with_libreoffice, with_xlwt):
        try:
            maker(folder)
        except (ImportError, FileNotFoundError):
            pass
    print("\n".join(sorted(name for name in os.listdir(folder) if name.endswith(".xls"))))


if __name__ == "__main__":
    main()
