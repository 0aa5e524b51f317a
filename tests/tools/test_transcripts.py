import pathlib
import shutil
import tempfile
import unittest
import unittest.mock

import tool

FAKE = pathlib.Path(__file__).resolve().parent / "fake_program.py"


class Transcripts(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)

    def run_cases(self, cases, *arguments):
        tool.write_tree(self.folder, cases)
        return tool.run("transcripts", "--program", FAKE, "--folder", self.folder, *arguments)

    def assert_passes(self, text, name="a.transcript"):
        result = self.run_cases({name: text})
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        self.assertEqual(result.stdout, "1 passed, 0 failed\n")

    def assert_fails(self, text, expected, *arguments, name="a.transcript"):
        result = self.run_cases({name: text}, *arguments)
        self.assertEqual(result.returncode, 1, result.stdout)
        self.assertIn(expected, result.stdout)
        self.assertEqual(result.stdout.splitlines()[-1], "0 passed, 1 failed")

    def test_output_and_messages(self):
        self.assert_passes("# Both.\n-- input --\nsay a\ncomplain b\n-- output --\na\n\n-- messages --\nb\n")

    def test_wrong_output_is_shown_as_a_difference(self):
        self.assert_fails("# One.\n-- input --\nsay new\n-- output --\nold\n", "-old\n+new")

    def test_an_empty_section_expects_nothing(self):
        self.assert_fails("# One.\n-- input --\nsay new\n-- output --\n", "+new")

    def test_trace_compares_every_event(self):
        event = '{"path":"{DIR}\\\\x","event":"%s"}\n'
        text = "# One.\n-- input --\nevent flush\nevent table\n-- trace%s --\n"
        self.assert_passes(text % "" + event % "flush" + event % "table")
        self.assert_fails(text % "" + event % "flush", '+{"event":"table"')
        self.assert_passes(text % " table request" + event % "table")

    def test_requests_stand_unescaped_below_their_events(self):
        text = "# One.\n-- input --\ntext modify <a b=\"c\">|  </a>\ntext export \ntext modify x |\n-- trace --\n"
        below = '{"event":"modify"}\n  <a b="c">\n    </a>\n{"event":"export","text":""}\n'
        self.assert_passes(text + below + '{"event":"modify","text":"x \\n"}\n')
        self.assert_fails(text + below.replace("  </a>", " </a>") + '{"event":"modify","text":"x \\n"}\n', "-   </a>")

    def test_trace_tells_numbers_from_truth(self):
        self.assert_fails('# One.\n-- input --\nevent flush\n-- trace --\n{"event":true}\n', '-{"event":true}')

    def test_a_line_separator_inside_a_text_is_no_line_end(self):
        self.assert_passes("# One.\n-- input --\nsay a\u2028b\n-- output --\na\u2028b\n")

    def test_files_placeholders_and_arguments(self):
        self.assert_passes("# One.\n-- options --\n--charset 'a b'\n-- file in/x.txt --\n{DIR}/y\n-- answers --\n{}\n"
                           "-- input --\narguments\nshow in/x.txt\nfolder\nsay {BDIR}\\z\n-- output --\n"
                           "run --now 2026-03-05T10:07:09 --trace trace.jsonl --adapter script:answers.jsonl"
                           " --charset a b case.vxs\n{DIR}/y\n{DIR}\n{DIR}\\z\n")

    def test_the_folder_has_a_path_of_fixed_length(self):
        text = f"# One.\n-- input --\nlength\n-- output --\n{len('/tmp/vexa-case-12345678')}\n"
        self.assert_passes(text)
        with unittest.mock.patch.dict("os.environ", TMPDIR=str(self.folder)):
            self.assert_passes(text)

    def test_base64(self):
        self.assert_passes("# One.\n-- file x base64 --\nw6QK\n-- input base64 --\nc2hvdyB4Cg==\n-- output --\nä\n")

    def test_args_and_stdin(self):
        self.assert_passes("# One.\n-- args --\ncheck other.vxs\n-- stdin --\nhello\n-- file other.vxs --\narguments\n"
                           "read\n-- output --\ncheck other.vxs\nhello\n")

    def test_calls_follow_each_other(self):
        self.assert_passes("# Two.\n-- calls --\nimport a one\nrun 'two'\n-- file one --\nsay 1\ncomplain c\n-- file two --\n"
                           "arguments\n-- output --\n$ import a one\n1\n$ run 'two'\nrun --now 2026-03-05T10:07:09 --trace "
                           "trace.jsonl two\n-- messages --\n$ import a one\nc\n")

    def test_the_first_call_that_fails_is_the_last(self):
        self.assert_passes("# One fails.\n-- calls --\nshow one\nshow two\n-- file one --\nexit 1\n-- output --\n$ show one\n",
                           name="bad-a.transcript")

    def test_calls_need_no_other_arguments(self):
        self.assert_fails("# Both.\n-- calls --\na\n-- args --\nb\n-- output --\n", "'calls' says all of the command lines")

    def test_produced_and_absent(self):
        self.assert_passes("# One.\n-- input --\nwrite a\n-- output --\n-- produced a --\ncontent\n-- absent b --\n")
        self.assert_fails("# One.\n-- input --\nwrite a\n-- output --\n-- produced b --\n", "b was not produced")
        self.assert_fails("# One.\n-- input --\nwrite a\n-- output --\n-- produced a --\nother\n", "-other\n+content")
        self.assert_fails("# One.\n-- input --\nwrite a\n-- output --\n-- absent a --\n", "a is there")

    def test_unpacked(self):
        packed = "# One.\n-- input --\npack a\n-- output --\n-- unpacked a --\n"
        self.assert_passes(packed + "== in/one.xml ==\n<one/>\n== two ==\n\\xff\n")
        self.assert_fails(packed + "== in/one.xml ==\n<other/>\n", "-<other/>\n+<one/>")
        self.assert_fails("# One.\n-- input --\nwrite a\n-- output --\n-- unpacked a --\n", "a is no archive")
        self.assert_fails("# One.\n-- input --\n-- output --\n-- unpacked a --\n", "a is no archive")

    def test_only_bad_cases_may_fail(self):
        failing = "# One.\n-- input --\ncomplain no\nexit 1\n-- messages --\nno\n"
        self.assert_passes(failing, name="bad-a.transcript")
        self.setUp()
        self.assert_fails(failing, "exited with status 1, expected status 0")
        self.setUp()
        self.assert_fails("# One.\n-- input --\nsay a\n-- output --\na\n", "status 0", name="bad-b.transcript")
        self.setUp()
        self.assert_fails("# One.\n-- status --\n2\n-- input --\nexit 2\n-- output --\n", "must fail")

    def test_another_status_must_be_the_one_that_is_given(self):
        self.assert_passes("# One.\n-- status --\n2\n-- input --\nexit 2\n-- output --\n", name="bad-a.transcript")
        self.assert_fails("# One.\n-- input --\nexit 2\n-- output --\n", "status 2", name="bad-a.transcript")

    def test_a_case_must_assert_something(self):
        self.assert_fails("# One.\n-- input --\nsay a\n", "would assert nothing")

    def test_a_case_must_say_what_it_shows(self):
        self.assert_fails("-- input --\nsay a\n-- output --\na\n", "must begin with lines")

    def test_an_unknown_section_is_refused(self):
        self.assert_fails("# One.\n-- input --\nsay a\n-- outptu --\na\n-- output --\n", "no such section")

    def test_what_windows_cannot_do_needs_a_reason(self):
        text = "# One.\n-- not on windows:%s --\n-- input --\nsay a\n-- output --\na\n"
        self.assert_passes(text % " a reason")
        self.assert_fails(text % "", "reads '-- not on windows: REASON --'")

    def test_nothing_is_blessed_from_windows(self):
        result = self.run_cases({"a.transcript": "# One.\n-- input --\nsay a\n-- output --\n"}, "--windows", "--bless")
        self.assertEqual(result.returncode, 2)
        self.assertTrue((self.folder / "a.transcript").read_text(encoding="utf-8").endswith("-- output --\n"))

    def test_a_program_that_hangs_is_killed(self):
        self.assert_fails("# One.\n-- input --\nhang\n-- output --\n", "time limit", "--time-limit", "1")

    def test_bless_rewrites_what_is_there(self):
        text = "# One.\n-- input --\nsay new\ncomplain c\nevent flush\n-- output --\nold\n-- trace --\n"
        self.assertEqual(self.run_cases({"a.transcript": text}, "--bless").returncode, 0)
        blessed = (self.folder / "a.transcript").read_text(encoding="utf-8")
        self.assertEqual(blessed, text.replace("old", "new") + '{"event":"flush","path":"{DIR}\\\\x"}\n')

    def test_bless_does_not_accept_a_crash_or_a_wrong_name(self):
        for line in ("exit 1", "hang"):
            text = f"# One.\n-- input --\n{line}\n-- output --\nold\n"
            self.assert_fails(text, "FAILED", "--bless", "--time-limit", "1")
            self.assertEqual((self.folder / "a.transcript").read_text(encoding="utf-8"), text)

    def test_filter(self):
        cases = {"x/a.transcript": "# One.\n-- input --\nsay a\n-- output --\na\n",
                 "y/b.transcript": "# One.\n-- input --\nsay a\n-- output --\nb\n"}
        self.assertEqual(self.run_cases(cases, "x/a").stdout, "1 passed, 0 failed\n")
        self.assertEqual(self.run_cases(cases).stdout.splitlines()[-1], "1 passed, 1 failed")

    def test_no_case_is_a_failure(self):
        self.assertEqual(self.run_cases({}).returncode, 1)

    def test_no_program_is_wrong_usage(self):
        self.assertEqual(tool.run("transcripts", "--program", self.folder / "none").returncode, 2)


if __name__ == "__main__":
    unittest.main()
