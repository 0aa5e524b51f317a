import contextlib
import io
import pathlib
import shutil
import tempfile
import unittest
import unittest.mock

import tool

run_docs = tool.load("run_docs")

PAGE = """# Page

<!-- file: a.txt -->
```
one
two
```

```console
$ cat a.txt
one
two
$ seq 5 | \\
  head -n 4
1
...
4
```
"""


class RunDocs(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)

    def run_page(self, text, *options):
        page = self.folder / "page.md"
        page.write_text(text, encoding="utf-8")
        with contextlib.redirect_stdout(io.StringIO()) as output:
            status = run_docs.main([*options, "--keep", str(self.folder / "run"), str(page)])
        return status, output.getvalue(), page.read_text(encoding="utf-8")

    def test_a_page_that_is_right_passes(self):
        status, printed, page = self.run_page(PAGE)
        self.assertEqual((status, printed, page), (0, "1 passed, 0 failed\n", PAGE))

    def test_other_output_fails(self):
        for wrong in (PAGE.replace("two\n$", "2\n$"), PAGE.replace("4\n```", "5\n```"), PAGE.replace("...\n4", "4")):
            status, printed, _ = self.run_page(wrong)
            self.assertEqual(status, 1, wrong)
            self.assertIn("0 passed, 1 failed", printed)

    def test_a_command_that_fails_in_silence_fails(self):
        self.assertEqual(self.run_page("```console\n$ false\n```\n")[0], 1)

    def test_a_page_is_the_same_within_make(self):
        page = "```console\n$ printf 'all:\\n\\t@echo made\\n' > Makefile\n$ make -j 2\nmade\n```\n"
        inherited = {"MAKELEVEL": "1", "MAKEFLAGS": "w -j1 --jobserver-auth=3,4", "MFLAGS": "-w"}
        with unittest.mock.patch.dict(run_docs.os.environ, inherited):
            self.assertEqual(self.run_page(page)[:2], (0, "1 passed, 0 failed\n"))

    def test_blessing_writes_what_happens(self):
        _, _, page = self.run_page(PAGE.replace("two\n$", "three\n$"), "--bless")
        self.assertEqual(page, PAGE)

    def test_what_a_page_needs_and_lacks_leaves_it_out(self):
        status, printed, _ = self.run_page("<!-- needs: false -->\n\n" + PAGE.replace("two\n$", "three\n$"))
        self.assertEqual(status, 0)
        self.assertIn("page.md: the page is left out, because this fails: false\n0 passed", printed)

    def test_what_a_block_needs_and_lacks_leaves_it_out(self):
        block = "<!-- needs: {} -->\n```console\n$ echo a >> made\n$ echo b\nnot b\n```\n"
        page = 2 * block.format("false") + PAGE + "```console\n$ ls\na.txt\n```\n"
        said = "page.md: what needs it is left out, because this fails: false\n1 passed, 0 failed\n"
        self.assertEqual(self.run_page(page)[:2], (0, said))
        self.assertEqual(self.run_page(page.replace("needs: false", "needs: true"))[0], 1)
        self.assertEqual(self.run_page(page, "--bless")[2], page)

    def test_a_file_that_a_block_lacks_is_not_written(self):
        page = "<!-- needs: false -->\n<!-- file: b.txt -->\n```\nb\n```\n\n```console\n$ ls\n```\n"
        self.assertEqual(self.run_page(page)[0], 0)
        self.assertEqual(self.run_page(page.replace("false", "true"))[0], 1)

    def test_what_is_no_page_fails_and_says_why(self):
        for page, reason in [("```console\n$ true\n", "a block does not end"),
                             ("```console\nprinted\n$ true\n```\n", "begins with one, not with: printed"),
                             ("<!-- file: a -->\n\n```console\n$ true\n```\n", "right below the name of the file a")]:
            status, printed, _ = self.run_page(page)
            self.assertEqual(status, 1)
            self.assertIn(reason, printed)

    def test_what_takes_too_long_fails_with_all_that_it_started(self):
        with unittest.mock.patch.object(run_docs, "TIME_LIMIT", 0.5):
            status, printed, _ = self.run_page("```console\n$ sleep 60 | cat\n```\n")
        self.assertEqual(status, 1)
        self.assertIn("is not ready after 0.5 s", printed)

    def test_the_home_is_empty(self):
        self.assertEqual(self.run_page("```console\n$ ls -A ~\n$ ls\n```\n")[0], 0)


if __name__ == "__main__":
    unittest.main()
