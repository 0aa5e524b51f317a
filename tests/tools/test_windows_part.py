import contextlib
import io
import os
import unittest
from unittest import mock

import tool  # which says where the tools' own modules are
import steps
import windows_part


class WithoutTools(unittest.TestCase):
    """What happens where mingw-w64 or Wine cannot be had."""

    def run_part(self, may_skip, environment):
        tally = steps.Tally()
        printed = io.StringIO()
        with mock.patch.object(windows_part, "missing_tools", lambda: ("Wine cannot be installed", "no network\n")), \
                mock.patch.dict(os.environ, environment), contextlib.redirect_stdout(printed):
            if "CI" not in environment:
                os.environ.pop("CI", None)
            windows_part.run(tally, may_skip)
        return tally, printed.getvalue()

    def test_a_developer_reads_one_line(self):
        tally, printed = self.run_part(True, {})
        self.assertEqual((tally.passed, tally.failed), (0, 0))
        self.assertEqual(printed.count("\n"), 1)
        self.assertIn("skipped, because Wine cannot be installed", printed)

    def test_continuous_integration_fails(self):
        for value in ("true", "1", "yes"):
            with self.subTest(CI=value):
                tally, printed = self.run_part(True, {"CI": value})
                self.assertEqual(tally.failed, 1)
                self.assertIn("no network", printed)

    def test_who_asks_for_windows_alone_sees_why_it_fails(self):
        tally, printed = self.run_part(False, {})
        self.assertEqual(tally.failed, 1)
        self.assertIn("no network", printed)


if __name__ == "__main__":
    unittest.main()
