import io
import sys
import unittest
import zipfile

import tool

systems = tool.load("compare_systems")

# Writes a document with what standard input holds, and another one with the working folder in it.
PROGRAM = """
import os, sys, zipfile
for name, text in (("a.vxv", sys.stdin.read()), ("b.vxv", os.getcwd())):
    with zipfile.ZipFile(name, "w") as archive:
        archive.writestr(zipfile.ZipInfo("items"), text)
"""


class Documents(unittest.TestCase):
    def documents(self, text, given=None):
        case = systems.written_case("a", "OUTPUT NEW.\n")
        case.sections.append(systems.transcript_case.Section("stdin", [], text))
        return systems.documents_of(case, [sys.executable, "-c", PROGRAM], given)

    def test_what_a_run_leaves_is_found_but_for_what_holds_paths(self):
        documents = self.documents("text")
        self.assertEqual(list(documents), ["a.vxv"])
        with zipfile.ZipFile(io.BytesIO(documents["a.vxv"])) as archive:
            self.assertEqual(archive.read("items"), b"text")

    def test_what_was_there_before_is_not_counted(self):
        written = self.documents("text")
        self.assertEqual(self.documents("text", {"a.vxv": written["a.vxv"], "c.vxv": b"old"}), {})

    def test_differences_are_told(self):
        self.assertEqual(systems.compared("x", {"a": b"1", "b": b"2"}, {"a": b"1", "b": b"2"}), [])
        self.assertEqual(systems.compared("x", {"a": b"1", "b": b"2"}, {"a": b"0", "c": b"3"}),
                         ["x: a is not the same", "x: b is on one system only", "x: c is on one system only"])


if __name__ == "__main__":
    unittest.main()
