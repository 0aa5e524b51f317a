import pathlib
import tempfile
import unittest
from xml.sax.saxutils import escape, quoteattr

import tool

LANGUAGES = ["de", "en", "es", "fr", "it", "ja", "ko", "pl", "pt_BR", "ru", "zh_CN", "zh_TW"]
SOURCE = "module/document/output_new.cc"


def table(*units):
    """A table of (key, source, target or None, note or None)."""
    body = ""
    for key, source, target, note in units:
        body += f"<trans-unit id={quoteattr(key)}><source>{escape(source)}</source>"
        body += f"<target>{escape(target)}</target>" if target is not None else ""
        body += f"<note>{escape(note)}</note>" if note is not None else ""
        body += "</trans-unit>"
    return ('<xliff version="1.2" xmlns="urn:oasis:names:tc:xliff:document:1.2"><file original="x"><body>'
            + body + "</body></file></xliff>")


def tree(source='report("Name ^1 is taken."_text);', key="Name ^1 is taken.", english=None, note=None, **languages):
    """A tree with one source file and a table for each language; languages: units that replace those of one."""
    files = {SOURCE: source, "backend/text/system_text.h": 'constexpr SystemText operator""_text(const char*);'}
    for language in LANGUAGES:
        target = None if language == "en" else "^1."
        units = languages.get(language, [(key, english or key, target, note)])
        files[f"stringtables/{language}/outnew.xlf"] = table(*units)
    return files


class CheckTexts(unittest.TestCase):
    def result(self, files):
        with tempfile.TemporaryDirectory() as root:
            tool.write_tree(root, files)
            return tool.run("check_texts", root)

    def refused(self, files, *complaints):
        result = self.result(files)
        self.assertEqual(result.returncode, 1, result.stdout)
        for complaint in complaints:
            self.assertIn(complaint, result.stdout)

    def test_accepts_tables_that_fit(self):
        result = self.result(tree())
        self.assertEqual(result.returncode, 0, result.stdout)
        self.assertIn("1 texts in 1 tables, 12 languages, 0 complaints", result.stdout)

    def test_a_text_that_a_table_lacks(self):
        self.refused(tree(fr=[]), f"stringtables/fr/outnew.xlf: lacks 'Name ^1 is taken.' ({SOURCE}:1)")

    def test_a_text_that_nothing_uses(self):
        more = [("Name ^1 is taken.", "Name ^1 is taken.", "^1.", None), ("Old.", "Old.", "Alt.", None)]
        self.refused(tree(de=more), "stringtables/de/outnew.xlf: 'Old.' is used by nothing")

    def test_a_table_that_is_missing_or_that_nothing_uses(self):
        files = tree()
        del files["stringtables/ko/outnew.xlf"]
        files["stringtables/ko/other.xlf"] = table()
        self.refused(files, "stringtables/ko/outnew.xlf: ", "stringtables/ko/other.xlf: is no table that anything uses")

    def test_markers_that_are_missing_or_extra(self):
        for text in ["taken", "^1 ^2", "^2", "^1 ^1"]:
            with self.subTest(text=text):
                self.refused(tree(ja=[("Name ^1 is taken.", "Name ^1 is taken.", text, None)]), "the markers of")

    def test_markers_that_the_key_repeats(self):
        key = "Name ^1 is none: ^2 takes ^1."
        for text, wrong in [("^1 ^2", False), ("^1 ^2 ^1", False), ("^2 ^1 ^2", True), ("^1 ^1", True), ("^1 ^2 ^1 ^1", True)]:
            with self.subTest(text=text):
                result = self.result(tree(f'report("{key}"_text);', key, fr=[(key, key, text, None)]))
                self.assertEqual("stringtables/fr/outnew.xlf: the markers of" in result.stdout, wrong, result.stdout)

    def test_a_text_without_translation(self):
        for target in [None, ""]:
            with self.subTest(target=target):
                self.refused(tree(pl=[("Name ^1 is taken.", "Name ^1 is taken.", target, None)]), "is not translated")

    def test_a_sentence_left_in_english(self):
        for text, returncode in [("Choose another one.", 1), ("Viewer ^1 YES.", 0)]:
            with self.subTest(text=text):
                result = self.result(tree(f'report("{text}"_text);', text, ko=[(text, text, text, None)]))
                self.assertEqual(result.returncode, returncode, result.stdout)

    def test_an_english_text_that_differs_from_its_key(self):
        self.refused(tree(english="The name ^1 is taken."), "the English text of")

    def test_a_key_that_stands_for_a_sentence(self):
        source = 'report("Name ^1..."_text);'
        self.refused(tree(source, "Name ^1..."), "needs its whole sentence")
        self.assertEqual(self.result(tree(source, "Name ^1...", "The name ^1 is taken.")).returncode, 0)

    def test_a_help_text_in_one_language_only(self):
        unit = [("Name ^1 is taken.", "Name ^1 is taken.", "^1.", "Take another.")]
        self.refused(tree(it=unit), "has a help text in one")
        self.refused(tree(note="Take another.", it=[(*unit[0][:3], None)]), "has a help text in one")

    def test_a_source_that_is_not_the_english_text(self):
        self.refused(tree(ru=[("Name ^1 is taken.", "Name ^1.", "^1.", None)]), "is not the English text")

    def test_a_key_that_stands_twice(self):
        unit = ("Name ^1 is taken.", "Name ^1 is taken.", "^1.", None)
        self.refused(tree(es=[unit, unit]), "stands twice")

    def test_blanks_around_a_text(self):
        for text in [" ^1.", "^1. ", "\n  ^1.\n", "^1\n."]:
            with self.subTest(text=text):
                self.refused(tree(ja=[("Name ^1 is taken.", "Name ^1 is taken.", text, None)]), "blanks or line ends")

    def test_a_key_of_two_libraries(self):
        files = {}
        for folder, name, german in [("backend/session", "session", "ja"), ("backend/pivot", "pivotlog", "jawohl")]:
            files[f"{folder}/a.cc"] = 'show("yes, it is"_text);'
            for language in LANGUAGES:
                target = {"en": None, "de": german}.get(language, ".")
                files[f"stringtables/{language}/{name}.xlf"] = table(("yes, it is", "yes, it is", target, None))
        self.refused(files, "stringtables/de/pivotlog.xlf: 'yes, it is' is 'jawohl', but 'ja' in session")

    def test_update_keeps_what_is_used_and_drops_the_rest(self):
        files = tree('report("Name ^1 is taken."_text);\nreport("New."_text);',
                     en=[("Old.", "Old.", None, None), ("Name ^1 is taken.", "Name ^1 is taken.", None, "Help.")],
                     fr=[("Name ^1 is taken.", "stale", "Nom ^1 pris.", "Aide.")])
        files["stringtables/fr/outopen.xlf"] = table(("gone", "gone", "parti", None))
        with tempfile.TemporaryDirectory() as root:
            tool.write_tree(root, files)
            self.assertEqual(tool.run("check_texts", "--update", root).returncode, 0)
            french = (pathlib.Path(root) / "stringtables/fr/outnew.xlf").read_text(encoding="utf-8")
            self.assertFalse((pathlib.Path(root) / "stringtables/fr/outopen.xlf").exists())
            english = (pathlib.Path(root) / "stringtables/en/outnew.xlf").read_text(encoding="utf-8")
            listing = tool.run("check_texts", "--list", root).stdout
        self.assertNotIn("Old.", english)
        self.assertIn("<note>Help.</note>", english)
        self.assertLess(french.index("Nom ^1 pris."), french.index('id="New."'))
        self.assertIn("<source>Name ^1 is taken.</source>", french)
        self.assertEqual(listing, "== outnew (2)\nName ^1 is taken.\nNew.\n")

    def test_quotation_marks(self):
        key = 'Name "^1" is taken, so NAME=\'^1\' or "=" is.'
        source = 'report("Name \\"^1\\" is taken, so NAME=\'^1\' or \\"=\\" is."_text);'
        fits = {"de": '„^1“: "="', "fr": "l’un, «\u00a0^1\u00a0»\u00a0: \"=\"", "ja": "「^1」、「a」", "pt_BR": "“^1”", "pl": "„^1”"}
        units = {language: [(key, key, target, None)] for language, target in fits.items()}
        result = self.result(tree(source, key, **units))
        self.assertEqual(result.returncode, 0, result.stdout)
        for language, target, complaint in [
                ("de", '"^1"', "straight quotation marks"), ("de", "'^1'", "straight quotation marks"),
                ("de", '^1 "*"', "straight quotation marks"), ("de", "„^1”", "other than „“"), ("de", "“^1“", "other than „“"),
                ("de", "„^1", "not in pairs"), ("it", "l'un ^1", "other than «»"), ("ja", "“^1”", "other than 「」"),
                ("fr", "«^1»", "no-break space"), ("fr", "« ^1 »", "no-break space"), ("fr", "^1 : a", "no-break space"),
                ("fr", "^1?", "no-break space")]:
            with self.subTest(language=language, target=target):
                self.refused(tree(source, key, **{language: [(key, key, target, None)]}), complaint)

    def test_quotation_marks_of_a_help_text(self):
        unit = ("Name ^1 is taken.", "Name ^1 is taken.", "^1.")
        notes = {language: [(*unit, None if language == "en" else "so")] for language in LANGUAGES}
        notes["en"] = [("Name ^1 is taken.", "Name ^1 is taken.", None, 'As in "=".')]
        notes["ko"] = [(*unit, '"so"')]
        self.refused(tree(**notes), "stringtables/ko/outnew.xlf: 'Name ^1 is taken.' has straight quotation marks")

    def test_a_literal_that_should_be_marked(self):
        marked = 'report("Name ^1 is taken."_text); '
        for source in ['report("This is not marked.");', 'report("It goes " "on here");', 'f("lacks ^1");',
                       'BpString("Name", 1);', 'BpString label("Name", kTranslatable);', 'f(R"(a raw text)");']:
            with self.subTest(source=source):
                self.refused(tree(marked + source), "_text behind it")
        for source in ["// This is a comment.", "/* so is this */", '#include "a file.h"', 'f("OUTPUT NEW");',
                       'f("Output New");', 'f("<name/>");', "f('\"');", 'BpString("Name", 0);']:
            with self.subTest(source=source):
                self.assertEqual(self.result(tree(marked + "\n" + source)).returncode, 0)

    def test_pieces_and_escapes_of_a_literal(self):
        source = 'report("Name \\"^1\\" is "\n       "t\\u00e4ken."_text);'
        self.assertEqual(self.result(tree(source, 'Name "^1" is t\u00e4ken.')).returncode, 0)


if __name__ == "__main__":
    unittest.main()
