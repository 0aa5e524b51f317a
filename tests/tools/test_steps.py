import contextlib
import io
import pathlib
import shutil
import sys
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


class Together(unittest.TestCase):
    def test_each_step_is_counted_and_shown(self):
        tally = steps.Tally()
        count = "print('3 passed, 1 failed'); raise SystemExit(1)"
        entries = [("good", [sys.executable, "-c", "print('fine')"], None), ("bad", [sys.executable, "-c", "raise SystemExit(3)"], None),
                   ("counted", [sys.executable, "-c", count], steps.count_closing_line),
                   ("silent", [sys.executable, "-c", "print('2 passed, 0 failed'); raise SystemExit(1)"], steps.count_closing_line)]
        with contextlib.redirect_stdout(io.StringIO()) as output:
            steps.run_together(tally, entries)
        self.assertEqual((tally.passed, tally.failed), (1 + 3 + 2, 1 + 1 + 1))
        self.assertEqual(sorted(title for title, _ in tally.failures), ["bad", "counted", "silent"])
        self.assertIn("== good\nfine\n", output.getvalue())
        self.assertNotIn("3 passed", output.getvalue())


class Failures(unittest.TestCase):
    def test_the_end_of_what_failed_is_shown_once_more(self):
        tally = steps.Tally()
        program = "for number in range(100): print('line', number)\nprint('0 passed, 1 failed'); raise SystemExit(1)"
        with contextlib.redirect_stdout(io.StringIO()):
            steps.run(tally, "long", [sys.executable, "-c", program], steps.count_closing_line)
            steps.run(tally, "good", [sys.executable, "-c", "print('fine')"])
        shown = tally.failed_steps().splitlines()
        self.assertEqual(shown[0], "failed: long")
        self.assertEqual(shown[1:], [f"   line {number}" for number in range(100 - steps.REPEATED_LINES, 100)])


class Longest(unittest.TestCase):
    def test_steps_and_tests_stand_in_the_order_of_their_time(self):
        tally = steps.Tally()
        with contextlib.redirect_stdout(io.StringIO()):
            for seconds, title in ((2, "words"), (71, "build"), (0.2, "help"), (9, "tests")):
                tally.add(title, 1, 0, seconds)
        tally.began -= 82
        tally.tests = [(1.4, "release: b"), (6, "release: a"), (0.1, "release: c")]
        self.assertEqual(tally.longest().splitlines(),
                         ["took 82 s; longest:", "    71 s  build", "     9 s  tests", "     2 s  words",
                          "     6 s    test release: a", "     1 s    test release: b"])

    def test_no_more_are_named_than_can_be_taken_in(self):
        tally = steps.Tally()
        tally.durations = [(number + 1, f"step {number}") for number in range(30)]
        self.assertEqual(len(tally.longest().splitlines()), 1 + steps.LONGEST_SHOWN)

    def test_times_of_tests_come_from_the_results_of_ctest(self):
        folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, folder)
        (folder / "ctest.xml").write_text('<testsuite><testcase name="a" time="1.5"/><testcase name="b"/></testsuite>')
        self.assertEqual(steps.durations_of_tests(folder / "ctest.xml", "release"), [(1.5, "release: a"), (0.0, "release: b")])
        self.assertEqual(steps.durations_of_tests(folder / "none.xml", "release"), [])


if __name__ == "__main__":
    unittest.main()
