import pathlib
import tempfile
import unittest

import tool  # makes the modules of tools/ known
from result_cache import ResultCache, make_dependencies


class Results(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        tool.write_tree(self.root, {"a.cc": "one\n", "a.h": "two\n"})
        self.inputs = [str(self.root / "a.cc"), str(self.root / "a.h")]

    def cache(self, settings="s"):
        return ResultCache(self.root / "results", settings)

    def test_a_pass_is_kept_until_something_changes(self):
        self.assertFalse(self.cache().passed("a.cc"))
        self.cache().remember("a.cc", self.inputs, "g++ a.cc")
        self.assertTrue(self.cache().passed("a.cc", "g++ a.cc"))
        self.assertFalse(self.cache().passed("a.cc", "g++ -O2 a.cc"))
        self.assertFalse(self.cache("other").passed("a.cc", "g++ a.cc"))
        (self.root / "a.h").write_text("changed\n", encoding="utf-8")
        self.assertFalse(self.cache().passed("a.cc", "g++ a.cc"))

    def test_a_file_that_is_gone_is_a_change(self):
        self.cache().remember("a.cc", self.inputs)
        (self.root / "a.h").unlink()
        self.assertFalse(self.cache().passed("a.cc"))

    def test_dependencies_of_a_rule(self):
        self.assertEqual(make_dependencies("a.o: a.cc \\\n a.h b.h\n"), ["a.cc", "a.h", "b.h"])


if __name__ == "__main__":
    unittest.main()
