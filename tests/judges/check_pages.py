#!/usr/bin/env python3
"""Uses exported pages as a reader does: in a browser, with mouse and keys, on paper, in the dark, on a telephone.

usage: check_pages.py PROGRAM        (build/release/bin/vexa)

Ends with 77 and a line that says so where there is no Chromium.
"""

import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
import browser

DOT = "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg=="
TELEPHONE = 375


def layered_table():
    return {"type": "table", "label": "Income", "title": "Income by region", "caption": "Weighted.",
            "rows": [{"label": "Region", "categories": [{"group": "Europe", "categories": ["North", "South"]},
                                                        {"label": "Total", "footnotes": [1]}]}],
            "columns": [{"label": "", "categories": [{"label": "Mean", "format": "F8.2"}, "N"]}],
            "layers": [{"label": "Sex", "categories": ["Female", "Male"], "shown": 2},
                       {"label": "Year", "categories": ["2025", "2026"]}],
            "cells": list(range(24)), "footnotes": ["Without abroad."]}


def marked_table():
    """A number with a mark between numbers without, and one right of it."""
    return {"type": "table", "label": "Marks", "rows": [{"label": "R", "categories": ["a", "b"]}],
            "columns": [{"label": "", "categories": ["x", "y"]}],
            "cells": [{"value": 1.25, "format": "F8.2", "footnotes": [1, 2]}, 3, {"value": 1.25, "format": "F8.2"}, 4],
            "footnotes": ["One.", "Two."]}


def limited_table():
    """Columns that have a least and a greatest width, and one with a width of its own."""
    return {"type": "table", "label": "Limits", "minColumnWidth": 90, "maxColumnWidth": 120,
            "rows": [{"label": "R", "categories": ["a"]}],
            "columns": [{"label": "", "categories": ["x", "y", {"label": "z", "width": 40}]}],
            "cells": [1, "a text that is wider than a column of this table may be", 3]}


def long_table():
    return {"type": "table", "label": "Long", "rows": [{"label": "Row", "categories": [f"Row {i}" for i in range(120)]}],
            "columns": [{"label": "", "categories": ["Value"]}], "cells": list(range(120))}


def wide_table():
    return {"type": "table", "label": "Wide", "title": "A title that is longer than a telephone is wide, so that it has to be broken",
            "rows": [{"label": "Row", "categories": ["a"]}],
            "columns": [{"label": "", "categories": [f"Column {i}" for i in range(40)]}], "cells": list(range(40))}


RESULTS = {"vexaResults": 1, "name": "March", "items": [
    {"type": "header", "label": "Means", "items": [
        {"type": "heading", "text": "About the means"},
        layered_table(),
        {"type": "chart", "label": "Curve", "alternativeText": "It rises.",
         "svg": "<svg xmlns='http://www.w3.org/2000/svg' width='800' height='300'><path d='M0 300L800 0' stroke='#226'/></svg>"}]},
    {"type": "header", "label": "Counts", "items": [
        {"type": "warning", "level": 2, "text": "No file /" + "folder" * 60},
        {"type": "text", "text": "\u05e9\u05dc\u05d5\u05dd."},
        marked_table(), limited_table(), {"type": "log", "text": "COUNTS " + "x" * 300 + "."}, wide_table(), long_table(),
        {"type": "chart", "label": "Dot", "png": DOT, "alternativeText": "A dot"}]}]}

# What is shown of elements, by their texts.
SHOWN = "[...document.querySelectorAll(%s)].filter(e => e.offsetParent !== null).map(e => %s)"
CURRENT = "document.activeElement.closest('li')?.querySelector('a').textContent"


class Pages(unittest.TestCase):
    program = None

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory(prefix="vexa-pages-", ignore_cleanup_errors=True)
        cls.path = pathlib.Path(cls.folder.name)
        (cls.path / "a.json").write_text(json.dumps(RESULTS), encoding="utf-8")
        cls.vexa("import", "a.vxv", "a.json")
        cls.vexa("export", "a.vxv", "plain.html", "INTERACTLAYERS=YES")
        cls.vexa("export", "--as", "report", "a.vxv", "report.html")
        cls.vexa("export", "--as", "report", "a.vxv", "own.html", "RESTYLE=NO")
        cls.vexa("export", "a.vxv", "packed.mht")
        cls.browser = browser.Browser()

    @classmethod
    def tearDownClass(cls):
        cls.browser.__exit__()
        cls.folder.cleanup()

    @classmethod
    def vexa(cls, command, *arguments):
        subprocess.run([cls.program, command, "--language", "en", *arguments], cwd=cls.path, stdin=subprocess.DEVNULL,
                       stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, check=True)

    def open(self, name, **how):
        page = self.browser.open(self.path / name, **how)
        self.addCleanup(page.close)
        self.addCleanup(lambda: self.assertEqual(page.errors(), []))
        return page

    def shown(self, page, selector, what="e.textContent"):
        return page.value(SHOWN % (json.dumps(selector), what))

    # HTML

    def test_a_list_switches_layers(self):
        page = self.open("plain.html")
        layers = ".pivot .layer caption div:last-child"
        self.assertEqual(self.shown(page, layers), ["Sex: Male, Year: 2025"])
        page.value("document.querySelectorAll('.pivot select')[0].focus()")
        page.press("ArrowUp")
        self.assertEqual(self.shown(page, layers), ["Sex: Female, Year: 2025"])
        page.value("document.querySelectorAll('.pivot select')[1].focus()")
        page.press("ArrowDown")
        self.assertEqual(self.shown(page, layers), ["Sex: Female, Year: 2026"])

    def test_a_list_opens_by_a_click_and_takes_keys(self):
        page = self.open("plain.html")
        page.click(".pivot select")
        page.press("ArrowUp")
        page.press("Enter")
        self.assertEqual(self.shown(page, ".pivot .layer caption div:last-child"), ["Sex: Female, Year: 2025"])

    def test_without_script_every_layer_is_shown(self):
        page = self.open("plain.html", scripts=False)
        self.assertEqual(len(self.shown(page, ".pivot .layer table")), 4)
        self.assertEqual(self.shown(page, "select"), [])

    def test_a_footnote_leads_there_and_back(self):
        page = self.open("plain.html", height=300)
        page.click(".layer:not([hidden]) tbody sup a")
        self.assertEqual(page.value("document.querySelector(':target').textContent").split(), ["a", "Without", "abroad."])
        page.click(":target a")
        self.assertEqual(page.value("document.querySelector(':target').closest('tr').textContent.slice(0, 5)"), "Total")

    def test_numbers_stand_below_each_other_with_marks_and_without(self):
        for name in ("plain.html", "report.html", "own.html"):
            page = self.open(name)
            ends = page.value(
                "[...document.querySelectorAll('td')].filter(e => e.firstChild?.data === '1.25').map(e => {"
                "const range = document.createRange(); range.selectNode(e.firstChild);"
                "return range.getBoundingClientRect().right; })")
            self.assertEqual(len(ends), 2)
            self.assertAlmostEqual(ends[0], ends[1], delta=0.5)
            beside = page.value(
                "(sup => { const range = document.createRange(); range.selectNode(sup.closest('td').nextSibling.firstChild);"
                "return [sup.getBoundingClientRect().right, range.getBoundingClientRect().left]; })"
                "(document.querySelector('td sup.beside'))")
            self.assertLess(beside[0], beside[1], name)

    def test_columns_keep_to_their_widths(self):
        for name in ("plain.html", "report.html", "own.html"):
            page = self.open(name, width=1900)
            widths = page.value("[...document.querySelector('table[style]').querySelectorAll('td')].map("
                                "e => e.getBoundingClientRect().width * .75)")
            self.assertAlmostEqual(widths[0], 90, delta=20)
            self.assertAlmostEqual(widths[1], 120, delta=20)
            self.assertAlmostEqual(widths[2], 40, delta=20)

    # REPORT

    def test_keys_move_in_the_outline(self):
        page = self.open("report.html")
        page.value("document.querySelector('.side input').focus()")
        page.press("Tab")
        self.assertEqual(page.value(CURRENT), "Means")
        for key, there in [("ArrowDown", "About the means"), ("ArrowDown", "Income"), ("ArrowUp", "About the means"),
                           ("ArrowLeft", "Means"), ("End", "Dot"), ("Home", "Means"), ("ArrowRight", "About the means")]:
            page.press(key)
            self.assertEqual(page.value(CURRENT), there, key)

    def test_keys_fold_the_outline(self):
        page = self.open("report.html")
        page.value("document.querySelector('.side li').focus()")
        page.press("ArrowLeft")
        self.assertEqual(self.shown(page, ".side a"), ["Means", "Counts", "Marks", "Limits", "Wide", "Long", "Dot"])
        page.press("ArrowDown")
        self.assertEqual(page.value(CURRENT), "Counts")
        page.press("ArrowUp")
        page.press("ArrowRight")
        self.assertEqual(len(self.shown(page, ".side a")), 10)

    def test_a_click_folds_the_outline(self):
        page = self.open("report.html")
        page.click(".side .fold")
        self.assertEqual(len(self.shown(page, ".side a")), 7)
        page.click(".side .fold")
        self.assertEqual(len(self.shown(page, ".side a")), 10)

    def test_enter_goes_to_the_item(self):
        page = self.open("report.html")
        page.value("document.documentElement.style.scrollBehavior = 'auto'; document.querySelector('.side li').focus()")
        page.press("End")
        page.press("Enter")
        self.assertEqual(page.value("document.querySelector(':target img').alt"), "A dot")
        top = page.place(":target")[1]
        self.assertTrue(0 <= top < 700, top)

    def test_the_search_narrows_the_outline(self):
        page = self.open("report.html")
        page.click(".side input")
        page.type("CURVE")
        self.assertEqual(self.shown(page, ".side a"), ["Means", "Curve"])
        page.press("ArrowDown")
        self.assertEqual(page.value(CURRENT), "Means")
        page.click(".side input")
        page.type(" nowhere")
        self.assertEqual(self.shown(page, ".side a"), [])
        self.assertEqual(self.shown(page, ".side .empty"), ["Nothing found"])
        page.press("Escape")
        self.assertEqual(len(self.shown(page, ".side a")), 10)

    def test_without_script_the_report_is_a_list_and_its_contents(self):
        page = self.open("report.html", scripts=False)
        self.assertEqual(len(self.shown(page, ".side a")), 10)
        self.assertEqual(self.shown(page, "button, input"), [])
        self.assertEqual(len(self.shown(page, ".main table")), 5)

    def test_a_button_turns_light_and_dark(self):
        brightness = "getComputedStyle(document.body).backgroundColor.match(/\\d+/g).slice(0, 3).every(c => c > 127)"
        for scheme, is_light in (("light", True), ("dark", False)):
            page = self.open("report.html", scheme=scheme)
            self.assertEqual(page.value(brightness), is_light)
            page.click(".theme")
            self.assertEqual(page.value(brightness), not is_light)

    # Both

    def test_paper_has_the_contents_alone(self):
        page = self.open("report.html", media="print", scheme="dark")
        self.assertEqual(self.shown(page, ".side, .theme"), [])
        self.assertEqual(page.value("getComputedStyle(document.body).backgroundColor"), "rgb(255, 255, 255)")
        page = self.open("plain.html", media="print")
        self.assertEqual(self.shown(page, "select"), [])

    def test_header_rows_are_repeated_on_paper(self):
        for name in ("plain.html", "report.html"):
            page = self.open(name)
            paper = self.path / "paper.pdf"
            page.paper(paper)
            text = subprocess.run(["pdftotext", "-layout", str(paper), "-"], capture_output=True, text=True, check=True).stdout
            pages = [each for each in text.split("\f") if "Row 6" in each or "Row 11" in each]
            self.assertGreater(len(pages), 1, name)
            for each in pages:
                self.assertIn("Value", each, name)

    def test_a_narrow_window_scrolls_tables_and_not_the_page(self):
        for name in ("plain.html", "report.html", "own.html"):
            for width in (TELEPHONE, 900, 1900):
                page = self.open(name, width=width)
                self.assertLessEqual(page.value("document.documentElement.scrollWidth"), width, name)
                wide = page.value("[...document.querySelectorAll('.table')].some(e => e.scrollWidth > e.clientWidth)")
                self.assertTrue(wide, name)
                narrow = page.value("[...document.querySelectorAll('.table')].filter(e => e.scrollWidth > e.clientWidth).length")
                # On a telephone that with limits may be too wide as well.
                self.assertIn(narrow, (1, 2) if width == TELEPHONE else (1,), f"{name} at {width}: only what is wider scrolls")

    def test_a_text_from_right_to_left_ends_on_the_left(self):
        place = ("(i => { const node = [...document.querySelectorAll('.text')].map(e => e.firstChild).find(n => n.data.endsWith('.'));"
                 " const range = document.createRange(); range.setStart(node, i(node)); range.setEnd(node, i(node) + 1);"
                 " return range.getBoundingClientRect().left; })")
        for name in ("plain.html", "report.html"):
            page = self.open(name)
            self.assertLess(page.value(place + "(n => n.length - 1)"), page.value(place + "(n => 0)"), name)

    def test_the_outline_stands_at_the_side_and_above_on_a_telephone(self):
        page = self.open("report.html")
        self.assertLess(page.place(".side")[0] + page.place(".side")[2], page.place(".main")[0] + 1)
        page.resize(TELEPHONE, 700)
        self.assertLess(page.place(".side")[1] + page.place(".side")[3], page.place(".main")[1] + 1)

    def test_a_packed_report_shows_its_pictures(self):
        page = self.open("packed.mht")
        self.assertEqual(page.value("[...document.images].map(i => [i.alt, i.complete && i.naturalWidth])"), [["A dot", 1]])
        self.assertEqual(len(self.shown(page, ".main svg[role=img]", "1")), 1)


def main(arguments):
    if not browser.is_installed():
        print("check_pages: skipped, there is no chromium (tools/install-packages readers)")
        return 77
    Pages.program = str(pathlib.Path(arguments[0]).resolve())
    suite = unittest.defaultTestLoader.loadTestsFromTestCase(Pages)
    return 0 if unittest.TextTestRunner(verbosity=1).run(suite).wasSuccessful() else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
