#!/usr/bin/env python3
"""check_memory.py PROGRAM: small documents with much in them never take more memory than docs/formats/document-file.md
promises, whatever is done with them, and where memory lacks the program says so and leaves nothing behind.

Each document is made here, packed as well as it goes, and is far smaller than a megabyte."""

import os
import pathlib
import resource
import shutil
import struct
import subprocess
import sys
import tempfile
import time
import unittest
import zipfile
import zlib

MOST_BYTES = 300_000_000
HEAD = '<?xml version="1.0" encoding="UTF-8"?>\n'
PROGRAM = ""


def table(dimensions, cells, attributes="", behind=""):
    """dimensions: (label, number of categories)."""
    text = f"<table {attributes}>"
    for label, count in dimensions:
        text += f'<dimension label="{label}">' + '<category label="1"/>' * count + "</dimension>"
    return text + behind + f"<cells>{cells}</cells></table>"


def numbers(count):
    return " ".join(["2"] * count)


def many_rows():
    return "table", table([("a", 420_000), ("b", 1)], numbers(420_000), 'rows="0" columns="1"')


def many_columns():
    return "table", table([("a", 2_000), ("b", 250)], numbers(500_000), 'rows="0" columns="1"')


def mostly_empty():
    return "table", table([("a", 990), ("b", 990)], "1", 'rows="0" columns="1"')


def long_layer_label():
    dimensions = [("a", 1), ("b", 1), ("L" * 30_000, 10_000)]
    return "table", table(dimensions, numbers(10_000), 'rows="0" columns="1" layers="2" printLayers="all"')


def long_footnote():
    note = "<footnote>" + "F o " * 8_000 + "</footnote>"
    extras = '<extras footnotes="1"/>'
    text = table([("a", 1), ("b", 1), ("c", 10_000)], " ".join(["2!1"] * 10_000),
                 'rows="0" columns="1" layers="2" printLayers="all"', note + extras)
    return "table", text


def many_footnotes(count=180_000):
    """One for each cell."""
    notes = "<footnote>n</footnote>" * count + "".join(f'<extras footnotes="{number + 1}"/>' for number in range(count))
    return "table", table([("a", count), ("b", 1)], " ".join(f"2!{number + 1}" for number in range(count)),
                          'rows="0" columns="1"', notes)


def long_text():
    """One text of 30 KB that stands in 30,000 cells."""
    return "table", table([("a", 3_000), ("b", 10)], " ".join(["#1"] * 30_000), 'rows="0" columns="1"',
                          "<text>" + "T x " * 7_500 + "</text>")


def wide_row():
    """The same in one row, whose texts together are 150 MB."""
    return "table", table([("a", 1), ("b", 5_000)], " ".join(["#1"] * 5_000), 'rows="0" columns="1"',
                          "<text>" + "T x " * 7_500 + "</text>")


def cell_of_lines(count):
    return "table", table([("a", 1), ("b", 1)], "#1", 'rows="0" columns="1"', "<text>" + "w\\0A" * count + "</text>")


def long_title():
    return "table", table([("a", 2), ("b", 2)], numbers(4), f'rows="0" columns="1" title="{"w" * 25_000_000}"')


def long_column_labels(others=300):
    """Three labels of 30 KB under each of many others, in a table of one row."""
    labels = "".join(f'<category label="{"C" * 30_000}{number}"/>' for number in range(3))
    text = table([("a", 1), ("b", others)], numbers(3 * others), 'rows="0" columns="1 2"',
                 f'<dimension label="c">{labels}</dimension>')
    return "table", text


def many_lines():
    return "log", "<log>" + "w\\0A" * 1_500_000 + "</log>"


def long_cell():
    return "table", table([("a", 1), ("b", 1)], "#1", 'rows="0" columns="1"', "<text>" + "w o " * 2_000_000 + "</text>")


def png(width, height):
    """A white picture of one bit a pixel."""
    def chunk(kind, content):
        return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))
    row = b"\0" + b"\xff" * ((width + 7) // 8)
    header = struct.pack(">IIBBBBB", width, height, 1, 0, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(row * height, 9)) +
            chunk(b"IEND", b""))


def svg_of_very_many_paths(count=400_000):
    return (b'<svg xmlns="http://www.w3.org/2000/svg" width="400" height="300">' + b'<path d="M0 0L9 9"/>' * count +
            b"</svg>")


def write_charts(path, form, picture, count=1, size=(400, 300)):
    """A document with pictures that say of themselves that they are small."""
    names = [f"items/{number:06}" for number in range(1, count + 1)]
    items = "".join(f'<item type="chart" entry="{name}.xml" picture="{name}.{form}"/>\n' for name in names)
    entries = {"manifest.xml": HEAD + '<vexaDocument format="2" type="VXV" dataModel="true" name="d">\n' + items +
                               "</vexaDocument>\n"}
    for name in names:
        entries |= {f"{name}.xml": HEAD + f'<chart width="{size[0]}" height="{size[1]}"/>', f"{name}.{form}": picture}
    with zipfile.ZipFile(path, "w") as archive:
        for name, content in entries.items():
            archive.writestr(zipfile.ZipInfo(name, (1980, 1, 1, 0, 0, 0)), content, zipfile.ZIP_DEFLATED, 9)


def write_document(path, kind, xml):
    entries = {"manifest.xml": f'<vexaDocument format="2" type="VXV" dataModel="true" name="d">\n'
                               f'<item type="{kind}" entry="items/000001.xml"/>\n</vexaDocument>\n',
               "items/000001.xml": xml}
    with zipfile.ZipFile(path, "w") as archive:
        for name, text in entries.items():
            entry = zipfile.ZipInfo(name, (1980, 1, 1, 0, 0, 0))
            entry.compress_type = zipfile.ZIP_DEFLATED
            archive.writestr(entry, HEAD + text, compresslevel=9)


def held_by(process):
    """Bytes that a process and those that it began take now, each page once; 0 of one that has ended."""
    try:
        lines = pathlib.Path(f"/proc/{process}/smaps_rollup").read_text(encoding="ascii").splitlines()
        below = pathlib.Path(f"/proc/{process}/task/{process}/children").read_text(encoding="ascii").split()
    except OSError:
        return 0
    own = sum(int(line.split()[1]) * 1024 for line in lines if line.startswith("Pss:"))
    return own + sum(map(held_by, below))


class Case(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)

    def document(self, make):
        path = self.folder / "d.vxv"
        write_document(path, *make())
        self.assertLess(path.stat().st_size, 1_000_000)
        return path

    def run_program(self, *arguments, limit=None, dropped=False, together=False):
        """Exit status, bytes that it took at most, and what was said; `dropped`: that goes nowhere, but for messages;
        `together`: bytes of all its processes together, as far as looking now and then shows."""
        output = self.folder / "said"
        with open(output, "wb") as said:
            process = subprocess.Popen([PROGRAM, *map(str, arguments)], cwd=self.folder, stderr=said,
                                       stdout=subprocess.DEVNULL if dropped else said,
                                       stdin=subprocess.DEVNULL, env=dict(os.environ, LC_ALL="C.UTF-8"),
                                       preexec_fn=limit and (lambda: resource.setrlimit(resource.RLIMIT_AS, (limit, limit))))
            most = 0
            ended, status, usage = os.wait4(process.pid, os.WNOHANG if together else 0)
            while ended == 0:
                most = max(most, held_by(process.pid))
                time.sleep(0.01)
                ended, status, usage = os.wait4(process.pid, os.WNOHANG)
            process.returncode = os.waitstatus_to_exitcode(status)
        text = output.read_text(encoding="utf-8", errors="replace")
        output.unlink()
        return process.returncode, max(most, usage.ru_maxrss * 1024), text


class Exports(Case):
    def check(self, make, formats):
        document = self.document(make)
        for form in formats:
            with self.subTest(format=form):
                target = self.folder / f"d.{form}"
                status, most, said = self.run_program("export", document, target)
                self.assertEqual(status, 0, said[-500:])
                self.assertLess(most, MOST_BYTES)
                target.unlink()

    def test_many_rows(self):
        self.check(many_rows, ["html", "txt", "pdf", "docx", "rtf", "pptx", "xlsx"])

    def test_many_columns(self):
        self.check(many_columns, ["docx", "pptx", "xls"])

    def test_mostly_empty(self):
        self.check(mostly_empty, ["txt", "docx", "xlsx"])

    def test_a_long_label_of_many_layers(self):
        self.check(long_layer_label, ["html", "txt", "docx", "xlsx"])

    def test_a_long_footnote_of_many_layers(self):
        self.check(long_footnote, ["mht", "rtf"])

    def test_many_footnotes(self):
        self.check(many_footnotes, ["xlsx", "pptx"])

    def test_many_lines(self):
        self.check(many_lines, ["pdf", "docx", "rtf", "pptx"])

    def test_a_row_of_very_long_texts(self):
        document = self.document(wide_row)
        status, most, said = self.run_program("export", document, self.folder / "d.txt", "ROWBORDER=''")
        self.assertEqual(status, 0, said[-500:])
        self.assertGreater((self.folder / "d.txt").stat().st_size, 150_000_000)
        self.assertLess(most, MOST_BYTES)

    def test_a_cell_of_very_many_lines(self):
        self.check(lambda: cell_of_lines(4_500_000), ["txt", "html", "docx", "rtf"])
        self.refuse(lambda: cell_of_lines(4_500_000), "pptx", "has too much text for one slide")
        self.refuse(lambda: cell_of_lines(6_000_000), "txt", "lines of text in its cells, and 5000000 are possible")

    def test_a_title_that_no_sheet_takes(self):
        for form in "xlsx", "xls":
            said = self.refuse(long_title, form, "has a text of 25000000 characters, and a cell takes 32767")
            self.assertLess(len(said), 2_000, "the whole title")

    def test_a_page_title_that_no_page_takes(self):
        title = "<pageTitle>" + "word " * 5_000_000 + "</pageTitle>"
        self.refuse(lambda: ("pageTitle", title), "pdf", "is a page title of 25000000 characters, and a page takes 100000")

    def test_line_ends_that_are_not_escaped(self):
        """They count as escaped ones do, three bytes each."""
        def title(count):
            return "pageTitle", "<pageTitle>" + "\n" * count + "</pageTitle>"
        self.check(lambda: title(10_000_000), ["html", "docx", "rtf", "txt"])
        document = self.document(lambda: title(30_000_000))
        status, most, said = self.run_program("show", document)
        self.assertEqual(status, 1)
        self.assertIn("would take more memory", said)
        self.assertLess(most, MOST_BYTES)

    def test_very_many_styles(self):
        count = 90_000
        styles = "".join(f'<style color="#{number:06x}"/>' for number in range(count))
        places = " ".join(f"{number}:{number + 1}" for number in range(count))
        text = table([("a", count), ("b", 1)], numbers(count), 'rows="0" columns="1"')
        text = text.replace("</table>", f"{styles}<cellStyles>{places}</cellStyles></table>")
        self.check(lambda: ("table", text), ["pptx"])

    def refuse(self, make, form, why):
        """What is said of a document that this format cannot hold."""
        document = self.document(make)
        status, most, said = self.run_program("export", document, self.folder / f"d.{form}")
        self.assertEqual(status, 1, said[-500:])
        self.assertIn(why, said)
        self.assertLess(most, MOST_BYTES)
        self.assertFalse((self.folder / f"d.{form}").exists())
        return said

    def test_a_cell_that_no_page_takes(self):
        document = self.document(long_cell)
        status, most, said = self.run_program("export", document, self.folder / "d.pdf")
        self.assertEqual(status, 1)
        self.assertIn("has a text of 8000000 characters", said)
        self.assertLess(most, MOST_BYTES)

    def test_long_column_labels(self):
        self.check(lambda: long_column_labels(4_000), ["html"])

    def test_pictures_that_are_drawn_at_once(self):
        """What all processes take together counts."""
        document = self.folder / "d.vxv"
        for form, picture in ("png", png(4_000, 4_000)), ("svg", svg_of_very_many_paths(60_000)):
            write_charts(document, form, picture, 6)
            self.assertLess(document.stat().st_size, 1_000_000)
            for target in "d.pdf", "d.png", "d.docx":
                with self.subTest(picture=form, target=target):
                    status, most, said = self.run_program("export", document, self.folder / target, together=True)
                    self.assertEqual((status, "memory" in said), (0, False), said[-500:])
                    self.assertLess(most, MOST_BYTES)

    def test_pictures_of_many_pixels(self):
        """What a poster needs is drawn, also where its file takes three bytes for each of 12 million pixels."""
        document = self.folder / "d.vxv"
        svg = b"<svg xmlns='http://www.w3.org/2000/svg' width='400' height='300'><circle cx='200' cy='150' r='90'/></svg>"
        write_charts(document, "svg", svg, 3, size=(1_500, 1_125))
        for target in "d.bmp", "d.png":
            with self.subTest(target=target):
                status, most, said = self.run_program("export", document, self.folder / target, "PERCENTSIZE=200", together=True)
                self.assertEqual((status, "memory" in said), (0, False), said[-500:])
                self.assertLess(most, MOST_BYTES)
        self.assertGreater((self.folder / "d3.bmp").stat().st_size, 36_000_000)

    def test_pictures_that_grow(self):
        """They are not drawn, and the document is exported without them; processes that draw count as well."""
        document = self.folder / "d.vxv"
        for form, picture in ("png", png(16_000, 16_000)), ("svg", svg_of_very_many_paths()):
            write_charts(document, form, picture)
            self.assertLess(document.stat().st_size, 1_000_000)
            for target in "d.pdf", "d.eps":
                with self.subTest(picture=form, target=target):
                    status, most, said = self.run_program("export", document, self.folder / target)
                    self.assertEqual(status, 0, said[-500:])
                    self.assertLess(most, MOST_BYTES)
                    self.assertRegex(said, "It has too many pixels|took more memory than a picture may take")


class OtherWork(Case):
    def test_a_table_that_is_shown_changed_and_saved(self):
        for make in many_rows, many_columns:
            document = self.document(make)
            syntax = self.folder / "work.vxs"
            syntax.write_text(f"OUTPUT OPEN FILE='{document}' LOCK=NO NAME=d.\n"
                              "OUTPUT MODIFY NAME=d\n  /SELECT TABLES\n"
                              "  /TABLE TLOOK='banded' TRANSPOSE=YES FORMAT='F8.1'\n"
                              "  /TABLECELLS SELECT=[BODY] STYLE=BOLD.\n"
                              f"OUTPUT SAVE NAME=d OUTFILE='{self.folder}/saved.vxv'.\n", encoding="utf-8")
            for arguments in ["show", document, "--item", "1"], ["show", document, "--json"], ["run", syntax]:
                with self.subTest(document=make.__name__, arguments=arguments[2:]):
                    status, most, said = self.run_program(*arguments)
                    self.assertEqual(status, 0, said[-500:])
                    self.assertLess(most, MOST_BYTES)

    def test_a_long_text_that_is_shown(self):
        for make in long_text, long_column_labels:
            document = self.document(make)
            for arguments in ["show", document, "--item", "1"], ["show", document, "--json"]:
                with self.subTest(document=make.__name__, arguments=arguments[2:]):
                    status, most, said = self.run_program(*arguments, dropped=True)
                    self.assertEqual((status, said), (0, ""))
                    self.assertLess(most, MOST_BYTES)

    def test_a_long_text_that_is_sorted_by_and_saved(self):
        document = self.document(long_text)
        syntax = self.folder / "work.vxs"
        opened = f"OUTPUT OPEN FILE='{document}' LOCK=NO NAME=d.\n"
        syntax.write_text(opened + "OUTPUT MODIFY NAME=d\n  /SELECT TABLES\n"
                          "  /TABLE SORT(COLPOSITION=1) SORTDIRECTION=DESCENDING.\n"
                          f"OUTPUT SAVE NAME=d OUTFILE='{self.folder}/saved.vxv'.\n", encoding="utf-8")
        status, most, said = self.run_program("run", syntax)
        self.assertEqual(status, 0, said)
        self.assertLess(most, MOST_BYTES)
        syntax.write_text(opened + f"OUTPUT SAVE NAME=d OUTFILE='{self.folder}/flat.vxv' STOREMODEL=NO.\n",
                          encoding="utf-8")
        status, most, said = self.run_program("run", syntax)
        self.assertEqual(status, 1)
        self.assertIn("more than 64,000,000 bytes of text", said)
        self.assertLess(most, MOST_BYTES)
        self.assertFalse((self.folder / "flat.vxv").exists())

    def test_a_table_that_nobody_can_print(self):
        document = self.document(lambda: ("table", table([("a", 3_000), ("b", 1_400)], "1", 'rows="0" columns="1"')))
        status, most, said = self.run_program("export", document, self.folder / "d.html")
        self.assertEqual(status, 1)
        self.assertIn("it has 4205802 places", said)
        self.assertLess(most, MOST_BYTES)
        self.assertEqual([path.name for path in self.folder.iterdir()], ["d.vxv"])

    def test_a_long_csv_that_is_imported(self):
        csv = self.folder / "rows.csv"
        csv.write_text("a,b\n" + "1,2\n" * 240_000, encoding="ascii")
        status, most, said = self.run_program("import", self.folder / "rows.vxv", csv)
        self.assertEqual(status, 0, said)
        self.assertLess(most, MOST_BYTES)


class WhereMemoryLacks(Case):
    """Less and less memory, from enough to so little that the document cannot be opened."""

    def check(self, arguments, target=None):
        outcomes = set()
        for megabytes in range(80, 481, 100):
            status, _, said = self.run_program(*arguments, limit=megabytes << 20)
            outcomes.add(status)
            self.assertIn(status, (0, 1, 2), f"{megabytes} MB: {said}")
            self.assertNotRegex(said, "std::|bad_alloc|terminate|GLib")
            if status != 0:
                self.assertRegex(said, "memory|cannot be loaded")
            left = sorted(path.name for path in self.folder.iterdir() if path.name != "d.vxv")
            self.assertEqual(left, [target] if target and status == 0 else [], f"{megabytes} MB: {said}")
            if target and status == 0:
                (self.folder / target).unlink()
        self.assertGreater(len(outcomes), 1, "neither enough nor too little memory was tried")

    def test_exports(self):
        document = self.document(many_columns)
        for form in "html", "pdf", "docx", "xlsx":
            with self.subTest(format=form):
                self.check(["export", document, self.folder / f"d.{form}"], f"d.{form}")

    def test_showing(self):
        self.check(["show", self.document(many_columns), "--json"])

    def test_saving(self):
        document = self.document(many_columns)
        with tempfile.NamedTemporaryFile("w", suffix=".vxs", encoding="utf-8") as syntax:
            syntax.write(f"OUTPUT OPEN FILE='{document}' LOCK=NO NAME=d.\n"
                         "OUTPUT MODIFY NAME=d\n  /SELECT TABLES\n  /TABLE TRANSPOSE=YES.\n"
                         f"OUTPUT SAVE NAME=d OUTFILE='{self.folder}/saved.vxv'.\n")
            syntax.flush()
            self.check(["run", syntax.name], "saved.vxv")


if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    unittest.main()
