import contextlib
import io
import json
import pathlib
import sys
import tempfile
import unittest

import tool

EXAMPLES = tool.TOOLS.parent / "examples"
sys.path[:0] = [str(EXAMPLES), str(EXAMPLES / "data")]
import make_data
import make_results
from reports import figures
from reports.words import Name, Words

golden = tool.load("golden")


def shape(item):
    """What an item is in every language: types, commands, subtypes, numbers of categories and cells."""
    counts = [len(item.get(key, [])) for key in ("rows", "columns", "layers", "cells", "footnotes")]
    below = [shape(other) for other in item.get("items", item.get("views", []))]
    return item["type"], item.get("command"), item.get("subtype"), counts, below


class Examples(unittest.TestCase):
    def test_the_data_are_those_that_the_generator_makes(self):
        with tempfile.TemporaryDirectory() as folder:
            make_data.main([folder])
            for name in make_data.DATA:
                made = (pathlib.Path(folder) / f"{name}.csv").read_bytes()
                self.assertEqual((EXAMPLES / "data" / f"{name}.csv").read_bytes(), made, name)

    def test_results_are_the_same_in_both_languages_but_for_their_words(self):
        with tempfile.TemporaryDirectory() as folder:
            for language in ("en", "de"):
                complaints = io.StringIO()
                with contextlib.redirect_stderr(complaints):
                    status = make_results.main(["--language", language, f"{folder}/{language}"])
                self.assertEqual((status, complaints.getvalue()), (0, ""))
            for name in make_data.DATA:
                english, german = (json.loads(pathlib.Path(folder, language, f"{name}.json").read_text(encoding="utf-8"))
                                   for language in ("en", "de"))
                self.assertEqual([shape(item) for item in english["items"]], [shape(item) for item in german["items"]])
                self.assertNotEqual(english, german)

    def test_a_text_without_translation_is_told(self):
        say = Words("de")
        self.assertEqual(say("^1 by ^2", "Income", Name("X")), "Einkommen nach X")
        self.assertEqual(say("Nowhere said"), "Nowhere said")
        self.assertEqual(say.missing, {"Nowhere said"})


class Looks(unittest.TestCase):
    def test_the_page_shows_every_look_that_is_shipped(self):
        root = tool.TOOLS.parent
        page = (root / "docs" / "looks.md").read_text(encoding="utf-8")
        looks = sorted(path.stem for path in (root / "looks").glob("*.tlk"))
        self.assertGreaterEqual(len(looks), 6)
        for look in looks:
            self.assertIn(f"(pictures/look-{look}.png)", page)
            self.assertTrue((root / "docs" / "pictures" / f"look-{look}.png").read_bytes().startswith(b"\x89PNG"), look)


class Figures(unittest.TestCase):
    """Against values that tables of the distributions have."""

    def test_chi_square(self):
        value, freedom, probability = figures.chi_square([[10, 20], [20, 10]])
        self.assertAlmostEqual(value, 20 / 3)
        self.assertEqual(freedom, 1)
        self.assertAlmostEqual(probability, 0.009823, places=6)
        self.assertAlmostEqual(1 - figures.gamma_part(5 / 2, 11.070498 / 2), 0.05, places=6)
        self.assertEqual(figures.chi_square([[1, 0], [2, 0]]), (None, 0, None))

    def test_f(self):
        self.assertAlmostEqual(figures.f_probability(3.490295, 3, 12), 0.05, places=6)
        self.assertAlmostEqual(figures.f_probability(2.228139 ** 2, 1, 10), 0.05, places=6)

    def test_analysis_of_variance(self):
        between, within, above, below, f, _ = figures.analysis_of_variance([[1, 2, 3], [2, 3, 4], [3, 4, 5]])
        self.assertEqual((between, within, above, below, f), (6, 6, 2, 6, 3))

    def test_correlation(self):
        self.assertEqual(figures.correlation([(1, 2), (2, 4), (3, 6), (None, 1)]), (1, 0.0, 3))
        self.assertEqual(figures.correlation([(1, 2), (2, None)]), (None, None, 1))


class Golden(unittest.TestCase):
    def test_a_digest_tells_what_an_item_is_but_not_what_is_below(self):
        header = {"type": "header", "label": "a", "items": [{"type": "log"}]}
        self.assertEqual(golden.digest(header), golden.digest({"label": "a", "type": "header"}))
        self.assertNotEqual(golden.digest(header), golden.digest({**header, "visible": False}))

    def test_items_come_in_the_order_of_the_outline_with_their_commands(self):
        items = [{"type": "header", "command": "A", "items": [{"type": "model", "views": [{"type": "chart"}]}]}, {"type": "text"}]
        self.assertEqual([(item["type"], command) for item, command in golden.walk(items)],
                         [("header", "A"), ("model", "A"), ("chart", "A"), ("text", "")])

    def test_differences_fail_and_are_shown_until_they_are_blessed(self):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            tool.write_tree(root, {"en/a.txt": "one\ntwo\n"})
            printed = io.StringIO()
            with contextlib.redirect_stdout(printed):
                self.assertEqual(golden.compare(root, "en", {"a.txt": "one\nthree\n"}, False), (0, 1))
                self.assertEqual(golden.compare(root, "en", {"a.txt": "one\nthree\n"}, True), (1, 0))
                self.assertEqual(golden.compare(root, "en", {"a.txt": "one\nthree\n"}, False), (1, 0))
            self.assertIn("-two\n+three", printed.getvalue())
