import unittest

import tool  # which says where the tools' own modules are
import transcript_run


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
