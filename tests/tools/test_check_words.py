import tempfile
import unittest

import tool


class CheckWords(unittest.TestCase):
    def result(self, text, name="docs/a.md"):
        with tempfile.TemporaryDirectory() as root:
            tool.write_tree(root, {name: text})
            return tool.run("check_words", root)

    # The texts are put together here so that this file does not hold them.
    def test_refused(self):
        for text in [
            "see Part " + "2.1",
            "see " + "spec" + ".md",
            "see contracts" + ".md",
            "from .." + "/shared/x",
            "deb http://deb." + "debian.org/debian",
            "https://pypi" + ".org/simple",
            "cd /home" + "/someone/vexa",
            "cd /root" + "/vexa",
            "// TO" + "DO: later",
        ]:
            with self.subTest(text=text):
                result = self.result("first line\n" + text + "\n")
                self.assertEqual(result.returncode, 1)
                self.assertIn("docs/a.md:2: ", result.stdout)

    def test_accepted(self):
        for text in ["Part of it", "specific", "the root / of it", "a/home/x/", "'C:\\data\\home'", "shared"]:
            with self.subTest(text=text):
                self.assertEqual(self.result(text).returncode, 0)


if __name__ == "__main__":
    unittest.main()
