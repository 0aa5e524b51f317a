import pathlib
import tempfile
import unittest
import unittest.mock

import tool


class Unproven(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        self.tool = tool.load("check_headers")

    def unproven(self, files, built=None):
        tool.write_tree(self.root, files)
        headers = [name for name in files if name.endswith(".h")]
        sources = set(files) - set(headers)
        with unittest.mock.patch.object(self.tool.includes_first, "__defaults__", (self.root,)):
            return self.tool.unproven(headers, sources, sources if built is None else built)

    def test_the_first_include_of_the_own_source_is_proven(self):
        own = '// Text.\n\n#include "backend/a.h"\n\n#include <string>\n'
        self.assertEqual(self.unproven({"backend/a.h": "", "backend/a.cc": own}), ([], []))

    def test_a_source_that_begins_with_another_include_is_complained_about(self):
        for text in ('#include <string>\n#include "backend/a.h"\n', '#include "backend/b.h"\n', "int a;\n"):
            rest, complaints = self.unproven({"backend/a.h": "", "backend/a.cc": text})
            self.assertEqual(len(complaints), 1, text)

    def test_headers_of_sources_of_another_system_are_compiled(self):
        files = {"backend/a.h": "", "backend/a.cc": '#include "backend/a.h"\n'}
        self.assertEqual(self.unproven(files, set()), (["backend/a.h"], []))

    def test_headers_without_a_source_that_is_built_alone_are_compiled(self):
        files = {"backend/only.h": "", "tests/unit/a.h": "", "tests/unit/a.cc": '#include "tests/unit/a.h"\n',
                 "bench/b.h": "", "bench/b.cc": '#include "bench/b.h"\n'}
        self.assertEqual(self.unproven(files), (["backend/only.h", "tests/unit/a.h", "bench/b.h"], []))


if __name__ == "__main__":
    unittest.main()
