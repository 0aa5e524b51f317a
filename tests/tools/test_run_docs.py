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
        status, printed, _ = self.run_page("<!-- needs: false -->\n" + PAGE.replace("two\n$", "three\n$"))
        self.assertEqual(status, 0)
        self.assertIn("left out, because this fails: false", printed)


if __name__ == "__main__":
    unittest.main()
