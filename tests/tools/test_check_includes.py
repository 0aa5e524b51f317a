import tempfile
import unittest

import tool

HEADERS = {
    "backend/text/utf8.h": "#pragma once\n",
    "backend/platform/clock.h": "#pragma once\n",
    "backend/pivot/output_log.h": "#pragma once\n",
    "backend/syntax/parser.h": "#pragma once\n",
    "module/frame/run.h": "#pragma once\n",
    "module/modify/driver.h": "#pragma once\n",
    "frontend/document/document.h": "#pragma once\n",
    "frontend/store/container.h": "#pragma once\n",
    "apps/vexa/program.h": "#pragma once\n",
}


class CheckIncludes(unittest.TestCase):
    def complaints(self, path, line):
        with tempfile.TemporaryDirectory() as root:
            tool.write_tree(root, {**HEADERS, path: line + "\n"})
            result = tool.run("check_includes", root)
        lines = result.stdout.splitlines()[:-1]
        self.assertEqual(result.returncode, 1 if lines else 0, result.stdout + result.stderr)
        return lines

    def test_allowed_arrows(self):
        for path, target in [
            ("backend/platform/a.cc", "backend/text/utf8.h"),
            ("backend/tables/formats/a.cc", "backend/text/utf8.h"),
            ("backend/pivot/a.cc", "backend/platform/clock.h"),
            ("backend/session/a.cc", "backend/syntax/parser.h"),
            ("module/frame/a.cc", "backend/syntax/parser.h"),
            ("module/document/a.cc", "module/frame/run.h"),
            ("module/exports/a.cc", "module/modify/driver.h"),
            ("frontend/controller/a.cc", "frontend/store/container.h"),
            ("frontend/store/a.cc", "frontend/document/document.h"),
            ("apps/vexa/a.cc", "frontend/document/document.h"),
            ("tests/unit/store/a.cc", "apps/vexa/program.h"),
        ]:
            with self.subTest(path=path, target=target):
                self.assertEqual(self.complaints(path, f'#include "{target}"'), [])

    def test_forbidden_arrows(self):
        for path, target in [
            ("backend/text/a.cc", "backend/platform/clock.h"),
            ("backend/tables/formats/a.cc", "backend/platform/clock.h"),
            ("backend/platform/a.cc", "backend/pivot/output_log.h"),
            ("backend/pivot/a.cc", "backend/syntax/parser.h"),
            ("backend/session/a.cc", "module/frame/run.h"),
            ("backend/adapter/a.cc", "frontend/document/document.h"),
            ("module/frame/a.cc", "module/modify/driver.h"),
            ("module/document/a.cc", "module/modify/driver.h"),
            ("module/document/a.cc", "frontend/document/document.h"),
            ("frontend/document/a.cc", "frontend/store/container.h"),
            ("frontend/export/a.cc", "frontend/store/container.h"),
            ("frontend/controller/a.cc", "backend/syntax/parser.h"),
            ("frontend/controller/a.cc", "module/frame/run.h"),
            ("module/frame/a.cc", "apps/vexa/program.h"),
        ]:
            with self.subTest(path=path, target=target):
                self.assertEqual(len(self.complaints(path, f'  # include "{target}"')), 1)

    def test_names_file_and_line(self):
        complaints = self.complaints("module/frame/a.cc", '\n#include "module/modify/driver.h"')
        self.assertEqual(complaints, ['module/frame/a.cc:2: module/frame may not include "module/modify/driver.h"'])

    def test_path_must_start_at_the_root(self):
        self.assertIn("not written from the root", self.complaints("module/frame/a.cc", '#include "run.h"')[0])

    def test_angle_brackets_hide_nothing(self):
        self.assertEqual(len(self.complaints("module/frame/a.cc", "#include <module/modify/driver.h>")), 1)

    def test_folder_without_arrows(self):
        complaints = self.complaints("backend/extra/a.cc", '#include "backend/platform/clock.h"')
        self.assertIn("not in the table", complaints[0])


if __name__ == "__main__":
    unittest.main()
