import contextlib
import io
import pathlib
import shutil
import tempfile
import unittest

import tool  # makes the modules of tools/ known
import steps

CTEST = """<testsuite><testcase name="first_test" status="{first}"/><testcase name="second_test" status="{second}"/>
<testcase name="corpus" status="run"/></testsuite>"""
FIRST = """<testsuites><testsuite><testcase name="a" status="run" result="completed"/>
<testcase name="b" status="run" result="completed"><failure message="wrong"/><failure message="twice"/></testcase>
<testcase name="c" status="run" result="skipped"><skipped message="not here"/></testcase>
<testcase name="d" status="notrun" result="suppressed"/></testsuite></testsuites>"""
SECOND = """<testsuites><testsuite><testcase name="e" status="run" result="completed"/>
<testcase name="f" status="run" result="completed"/></testsuite></testsuites>"""


class CountingCases(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)

    def count(self, first="run", second="run", **reports):
        tool.write_tree(self.folder, {f"{name}.xml": text for name, text in reports.items()})
        tool.write_tree(self.folder, {"ctest.xml": CTEST.format(first=first, second=second)})
        with contextlib.redirect_stdout(io.StringIO()) as output:
            counts = steps.ctest_counter(self.folder / "ctest.xml", self.folder)("", 0)
        return (*counts, output.getvalue().strip())

    def test_cases_are_counted_in_place_of_their_program(self):
        self.assertEqual(self.count(first_test=SECOND, second_test=SECOND), (5, 0, ""))

    def test_a_case_that_was_skipped_or_not_run_did_not_pass(self):
        self.assertEqual(self.count(first="fail", first_test=FIRST, second_test=SECOND), (4, 1, "2 skipped"))

    def test_a_program_that_fails_behind_its_cases_fails(self):
        self.assertEqual(self.count(second="fail", first_test=SECOND, second_test=SECOND), (5, 1, ""))

    def test_a_program_without_a_whole_report_fails(self):
        for second in ("run", "fail"):
            self.assertEqual(self.count(second=second, first_test=SECOND), (3, 1, ""))
            self.assertEqual(self.count(second=second, first_test=SECOND, second_test="<testsuites><tests"), (3, 1, ""))
            (self.folder / "second_test.xml").unlink()

    def test_names_may_hold_any_bytes(self):
        tool.write_tree(self.folder, {"first_test.xml": ""})
        (self.folder / "first_test.xml").write_bytes(SECOND.replace('"e"', '"caf\u00e9"').encode("latin-1"))
        self.assertEqual(self.count(second_test=SECOND), (5, 0, ""))

    def test_without_results_nothing_passed(self):
        self.assertEqual(steps.ctest_counter(self.folder / "none.xml", self.folder)("", 0), (0, 1))


if __name__ == "__main__":
    unittest.main()
