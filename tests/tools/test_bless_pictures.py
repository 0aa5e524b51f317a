import os
import pathlib
import subprocess
import sys
import unittest

import tool

ROOT = tool.TOOLS.parent
SCRIPT = "tests/judges/check_pictures.py"


def what_make_would_run(*arguments):
    """The words of the last recipe; nothing is run. This may be within a make of its own."""
    environment = {name: value for name, value in os.environ.items() if not name.startswith(("MAKE", "MFLAGS"))}
    done = subprocess.run(["make", "--no-print-directory", "-n", "bless-pictures", *arguments], cwd=ROOT, env=environment,
                          capture_output=True, text=True, check=True)
    return done.stdout.splitlines()[-1].split()


class BlessPictures(unittest.TestCase):
    def refused(self, *arguments):
        """What the script says of a name that no picture has."""
        done = subprocess.run([sys.executable, str(ROOT / SCRIPT), "no-program", *arguments], capture_output=True, text=True,
                              check=False)
        if done.returncode == 77:
            self.skipTest(done.stdout.strip())
        self.assertEqual(done.returncode, 2, done.stdout + done.stderr)
        self.assertIn("there is no picture reprot", done.stderr)
        return done.stderr

    def test_make_names_the_pictures_that_are_taken_anew(self):
        command = [SCRIPT, "build/release/bin/vexa", "--bless"]
        self.assertEqual(what_make_would_run(), command)
        self.assertEqual(what_make_would_run("NAME="), command)
        self.assertEqual(what_make_would_run("NAME=report-dark"), [*command, "report-dark"])
        self.assertEqual(what_make_would_run("NAME=html pdf-1"), [*command, "html", "pdf-1"])

    def test_a_name_that_no_picture_has_takes_none(self):
        fonts = ROOT / "tests" / "judges" / "pictures" / "fonts.txt"
        before = fonts.stat().st_mtime_ns
        self.refused("--bless", "html", "reprot")
        self.assertEqual(fonts.stat().st_mtime_ns, before)

    def test_every_picture_has_a_name(self):
        pictures = sorted(path.stem for path in pathlib.Path(ROOT, "tests", "judges", "pictures").glob("*.png"))
        named = self.refused("reprot").rpartition("there are ")[2].strip().split(", ")
        self.assertEqual(sorted(named), pictures)


if __name__ == "__main__":
    unittest.main()
