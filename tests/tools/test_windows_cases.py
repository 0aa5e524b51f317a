import pathlib
import unittest

import tool  # which says where the tools' own modules are
import transcript_case
import transcript_run


def case(*sections):
    """A case of the sections, each with one line of text."""
    return transcript_case.Case(pathlib.Path("a.transcript"), "", [transcript_case.Section(name, [], text + "\n")
                                                                  for name, text in sections])


class NeedsFrontEnd(unittest.TestCase):
    def test_what_sends_requests_and_names_nothing_that_answers(self):
        for sections in ([("input", "OUTPUT NEW.")], [("input", "STB PRINT.\n output  name x."), ("options", "--local-mode yes")],
                         [("args", "run -"), ("stdin", "OUTPUT DISPLAY.")], [("args", "password")]):
            self.assertTrue(case(*sections).needs_front_end(), sections)

    def test_what_is_answered_otherwise_or_sends_nothing(self):
        for sections in ([("input", "OUTPUT NEW."), ("answers", "{}")], [("input", "OUTPUT NEW."), ("options", "--adapter none")],
                         [("input", "STB PRINT.")], [("input", "OUTPUT COMMENT TEXT='OUTPUT NEW'.")], [("args", "run a.vxs")],
                         [("args", "run --adapter script:a.jsonl a.vxs")], [("args", "check a.vxs")],
                         [("args", "help OUTPUT NEW")], [("args", "--version")]):
            self.assertFalse(case(*sections).needs_front_end(), sections)


class CommandLine(unittest.TestCase):
    def test_what_sends_nothing_says_so_on_windows(self):
        for sections, line in (([("input", "STB PRINT.")], "run --now 2026-03-05T10:07:09 --trace trace.jsonl --adapter none case.vxs"),
                               ([("args", "run -")], "run --adapter none -"), ([("args", "check a.vxs")], "check a.vxs"),
                               ([("args", "run --adapter=none -")], "run --adapter=none -")):
            scratch = transcript_run.Scratch()
            scratch.path.rmdir()
            self.assertEqual(" ".join(transcript_run.command_line(case(*sections), scratch, True)),
                             line.replace("2026-03-05T10:07:09", transcript_run.NOW))


class WithSlashes(unittest.TestCase):
    def test_only_the_paths_of_the_folder_change(self):
        for before, after in (("{DIR}\\a\\b c\\d", "{DIR}/a/b c\\d"), ("\\x {DIR}\\a", "\\x {DIR}/a"),
                              ("'{DIR}\\a'\\b", "'{DIR}/a'\\b"), ("c:\\a", "c:\\a")):
            self.assertEqual(transcript_run.with_slashes(before), after)


class Scratch(unittest.TestCase):
    def test_the_folder_is_hidden_in_every_form(self):
        scratch = transcript_run.Scratch()
        scratch.path.rmdir()
        for prefix in ("", "Z:"):
            for path in (scratch.native, scratch.backslashes):
                self.assertEqual(scratch.hide({"file": [f"{prefix}{path}|x"]}), {"file": ["{DIR}|x"]})


if __name__ == "__main__":
    unittest.main()
