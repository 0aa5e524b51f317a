import pathlib
import shutil
import subprocess
import tempfile
import unittest

import tool

SOURCE = """
extern "C" void OUTFIRST() {}
extern "C" void OUTSECOND() {}
__attribute__((visibility("hidden"))) void inner() {}
"""


class CheckExports(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        (self.folder / "a.cc").write_text(SOURCE, encoding="utf-8")
        self.library = self.folder / "a.so"
        subprocess.run(["g++", "-shared", "-fPIC", "-o", self.library, self.folder / "a.cc"], check=True)

    def result(self, names):
        listing = self.folder / "exports.txt"
        listing.write_text(names, encoding="utf-8")
        return tool.run("check_exports", self.library, listing)

    def test_same_names(self):
        result = self.result("# entry functions\nOUTFIRST\n\nOUTSECOND\n")
        self.assertEqual(result.returncode, 0, result.stdout)

    def test_listed_but_not_exported(self):
        result = self.result("OUTFIRST\nOUTSECOND\nOUTTHIRD\n")
        self.assertEqual(result.returncode, 1)
        self.assertIn("OUTTHIRD is listed but not exported", result.stdout)

    def test_exported_but_not_listed(self):
        result = self.result("OUTFIRST\n")
        self.assertEqual(result.returncode, 1)
        self.assertIn("OUTSECOND is exported but not listed", result.stdout)

    def test_no_library(self):
        self.library.unlink()
        self.assertEqual(self.result("OUTFIRST\n").returncode, 1)


if __name__ == "__main__":
    unittest.main()
