import pathlib
import subprocess
import tempfile
import unittest

import tool

CHECKS = "-*,modernize-use-nullptr,readability-redundant-*,google-explicit-constructor,performance-for-range-copy"
FILES = {
    "own.h": "#include <string>\nstruct Own {\n    Own(int number) : value(number) {}\n    int value;\n};\n"
             "template <typename T> T* none() { return 0; }\n",
    "own.cc": "#include \"own.h\"\n#include <vector>\nnamespace std {\ntemplate <> struct hash<Own> { Own* last = 0; };\n}\n"
              "extern \"C\" int* nothing() { return 0; }\n"
              "int sum(const std::vector<std::string>& words) {\n    int sum = 0;\n"
              "    for (std::string word : words) sum += static_cast<int>(word.size());\n"
              "    std::string empty = \"\";\n"
              "    return sum + (none<int>() == nullptr) + static_cast<int>(empty.size());\n}\n",
}


class OwnFiles(unittest.TestCase):
    """The plugin takes no finding away, and does narrow the walk."""

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.root = pathlib.Path(folder.name)
        tool.write_tree(cls.root, FILES)
        cls.plugin = tool.load("tidy").plugin()

    def findings(self, *options):
        result = subprocess.run(["clang-tidy-14", "--quiet", f"--checks={CHECKS}", *options, str(self.root / "own.cc"), "--",
                                 "-std=c++20"], cwd=self.root, capture_output=True, text=True, check=True)
        return [line for line in result.stdout.splitlines() if ": warning: " in line]

    def test_all_findings_in_our_files_stay(self):
        filter_own = f"--header-filter={self.root}/"
        scoped = self.findings(filter_own, *self.plugin)
        self.assertEqual(scoped, self.findings(filter_own))
        self.assertEqual([len([line for line in scoped if name in line]) for name in ("own.h:", "own.cc:")], [2, 4])

    def test_the_headers_of_the_system_are_not_walked_through(self):
        def in_the_system(*options):
            lines = self.findings("--header-filter=.*", "--system-headers", *options)
            return [line for line in lines if line.startswith("/usr/")]

        self.assertNotEqual(in_the_system(), [])
        self.assertEqual(in_the_system(*self.plugin), [])


if __name__ == "__main__":
    unittest.main()
