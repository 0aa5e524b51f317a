#!/usr/bin/env python3
"""Looks at exported pages as readers show them, and compares with pictures that somebody has looked at.

usage: check_pictures.py PROGRAM [--bless] [--keep FOLDER] [NAME...]      (build/release/bin/vexa; every picture without a name)

The pictures are tests/judges/pictures/*.png: HTML and REPORT in Chromium (light, dark, narrow, wide, printed), pages of PDF,
and a page of DOCX and a slide in LibreOffice. What differs is left in FOLDER (build/pictures): how it is now, and where it differs. --bless
writes the pictures anew; look at each before you commit it.

Pages are also spoilt in several ways, and each time that has to be found out; and with hinted letters they have to pass.

Ends with 77 and a line that says so where programs are missing, or fonts are others than those that the pictures were made with.
"""

import argparse
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
SYSTEM_PYTHON = "/usr/bin/python3"  # which has what Debian's packages hold

try:
    import compare_pictures
    from PIL import Image
except ImportError:
    if sys.executable == SYSTEM_PYTHON or not os.path.exists(SYSTEM_PYTHON):
        print("check_pictures: skipped, there is no PIL (Debian's python3-pil)")
        sys.exit(77)
    os.execv(SYSTEM_PYTHON, [SYSTEM_PYTHON, __file__, *sys.argv[1:]])

import browser

PICTURES = HERE / "pictures"
SAMPLE = PICTURES / "sample.json"
FONTS = PICTURES / "fonts.txt"
FAMILIES = ["sans-serif", "serif", "monospace", "system-ui", "Segoe UI", "Roboto", "Noto Sans", "Arial", "Times New Roman",
            "Courier New"]
STYLES = ["", ":bold", ":italic"]
DOTS = 64  # an inch, of paper

# Files: arguments of vexa export.
EXPORTS = {
    "page.html": ["INTERACTLAYERS=YES"],
    "report.html": ["--as", "report"],
    "own.html": ["--as", "report", "RESTYLE=NO"],
    "pages.pdf": [],
    "text.docx": [],
    "slides.pptx": [],
}

# Pictures: the file, and how it is shown.
VIEWS = {
    "html": ("page.html", {"width": 720, "height": 1060}),
    "html-print": ("page.html", {"print": 1}),
    "report-light": ("report.html", {"width": 1000, "height": 1000}),
    "report-dark": ("report.html", {"width": 1000, "height": 1000, "scheme": "dark"}),
    "report-own-dark": ("own.html", {"width": 1000, "height": 700, "scheme": "dark"}),
    "report-narrow": ("report.html", {"width": 375, "height": 1100}),
    "report-wide": ("report.html", {"width": 1600, "height": 600}),
    "report-print": ("report.html", {"print": 1}),
    "pdf-1": ("pages.pdf", {"paper": 1}),
    "pdf-2": ("pages.pdf", {"paper": 2}),
    "docx": ("text.docx", {"paper": 1}),
    "pptx": ("slides.pptx", {"paper": 3}),
}

# What may go wrong with a page: the picture, what is said of it, a text of the file, and what stands there instead.
SPOILS = [
    ("report-light", "no border around tables", "border:1px solid var(--line);border-radius:10px", "border:0"),
    ("report-light", "no line below headers", "border-bottom:2px solid var(--soft)", "border-bottom:0"),
    ("report-light", "faint texts in another grey", "--soft:#5c6670", "--soft:#8c96a0"),
    ("report-light", "wider columns", "padding:.28rem .7rem", "padding:.28rem 1rem"),
    ("report-light", "no chart", "<svg", "<svg hidden"),
    ("report-light", "numbers to the left", "text-align:right", "text-align:left"),
    ("report-light", "no mark of where the reader is", "box-shadow:inset 3px 0 var(--accent)", "box-shadow:none"),
    ("report-dark", "a light page", "--page:#14171a", "--page:#fbfbfa"),
    ("report-dark", "no borders in the dark", "--line:#353c43", "--line:#1b1f23"),
    ("report-narrow", "the outline beside the contents", "body{display:block}.head", ".head"),
    ("report-wide", "tables as wide as the window", "width:fit-content", "width:auto"),
    ("report-print", "the outline on paper", ".side,.skip,.theme,.choose{display:none}", ""),
    ("html", "no background of a cell", "background-color:#dff0e2", "background-color:#fff"),
    ("html", "no lines of tables", "border-collapse:collapse", "border:0;border-style:hidden!important;border-collapse:collapse"),
    ("html", "the warning without its edge", "border-left:.25em solid", "border-left:0 solid"),
    ("html-print", "lists of layers on paper", ".choose{display:none}", ""),
]

PROGRAMS = {"chromium": "chromium", "pdftoppm": "poppler-utils", "soffice": "libreoffice-writer", "fc-match": "fontconfig"}
SETTLED = ("document.fonts.ready.then(() => new Promise(done => requestAnimationFrame(() => requestAnimationFrame("
           "() => setTimeout(done, 150)))))")


def fonts():
    """The fonts that stand behind the names, one a line."""
    lines = []
    for family in FAMILIES:
        for style in STYLES:
            found = subprocess.run(["fc-match", "-f", "%{family[0]} %{style[0]} %{fontversion}", family + style],
                                   capture_output=True, text=True, check=True).stdout
            lines.append(f"{family}{style}: {found}\n")
    return "".join(lines)


def run(command, folder):
    finished = subprocess.run([str(part) for part in command], cwd=folder, stdin=subprocess.DEVNULL, capture_output=True,
                              text=True, check=False)
    if finished.returncode:
        sys.exit(f"check_pictures: {command[0]} failed\n{finished.stdout}{finished.stderr}")


class Studio:
    """Takes the pictures, in a folder of its own."""

    def __init__(self, program, folder):
        self.folder = folder
        shutil.copy(SAMPLE, folder / "sample.json")
        run([program, "import", "--language", "en", "a.vxv", "sample.json"], folder)
        for file, options in EXPORTS.items():
            as_format = options[:2] if options[:1] == ["--as"] else []
            run([program, "export", "--language", "en", "--quiet", *as_format, "a.vxv", file, *options[len(as_format):]], folder)

    def take(self, chromium, view, file=None):
        """The picture of a view, of another file than its own where one is given."""
        own, how = VIEWS[view]
        path = self.folder / (file or own)
        if "paper" in how:
            return self._page(self._as_pdf(path), how["paper"])
        if "print" not in how:
            return self._window(chromium, path, how)
        page = chromium.open(path)
        page.paper(self.folder / "print.pdf")
        page.close()
        return self._page(self.folder / "print.pdf", how["print"])

    def _window(self, chromium, path, how):
        page = chromium.open(path, **how)
        page.ask("Runtime.evaluate", expression=SETTLED, awaitPromise=True)
        target = self.folder / "window.png"
        page.picture(target, whole=False)
        page.close()
        return Image.open(target).convert("RGB")

    def _page(self, path, number):
        run(["pdftoppm", "-r", DOTS, "-png", "-f", number, "-singlefile", path, "page"], self.folder)
        return Image.open(self.folder / "page.png").convert("RGB")

    def _as_pdf(self, path):
        if path.suffix == ".pdf":
            return path
        made = self.folder / "office" / f"{path.stem}.pdf"
        if not made.exists():
            profile = (self.folder / "profile").as_uri()
            run(["soffice", f"-env:UserInstallation={profile}", "--headless", "--convert-to", "pdf", "--outdir", made.parent,
                 path], self.folder)
        return made

    def spoil(self, view, text, other):
        """The name of a copy of the view's file in which a text is another."""
        file = VIEWS[view][0]
        content = (self.folder / file).read_text(encoding="utf-8")
        if text not in content:
            sys.exit(f"check_pictures: {file} has no {text} that could be spoilt; mend SPOILS")
        (self.folder / f"spoilt-{file}").write_text(content.replace(text, other), encoding="utf-8")
        return f"spoilt-{file}"


class Judge:
    def __init__(self, keep):
        self.keep = keep
        self.failures = []
        self.passed = 0

    def expect(self, name, ok, complaint):
        if ok:
            self.passed += 1
        else:
            self.failures.append(f"{name}: {complaint}")

    def look(self, name, picture, how=""):
        """Compares with the picture of that name."""
        difference = compare_pictures.compare(picture, Image.open(PICTURES / f"{name}.png"))
        self.expect(name, not difference.reason, f"{how}{difference.reason}; see {self.keep}")
        if difference.reason:
            self.keep.mkdir(parents=True, exist_ok=True)
            picture.save(self.keep / f"{name}.now.png")
            if difference.picture:
                difference.picture.save(self.keep / f"{name}.difference.png")


def judge(studio, names, keep):
    result = Judge(keep)
    with browser.Browser() as chromium:
        for name in names:
            result.look(name, studio.take(chromium, name))
        for view, what, text, other in SPOILS:
            if view not in names:
                continue
            spoilt = studio.take(chromium, view, studio.spoil(view, text, other))
            difference = compare_pictures.compare(spoilt, Image.open(PICTURES / f"{view}.png"))
            result.expect(view, difference.reason, f"passes although spoilt: {what}")
    with browser.Browser(hinting="full") as chromium:
        for name in names:
            if "width" in VIEWS[name][1]:
                result.look(name, studio.take(chromium, name), "with hinted letters ")
    return result


def bless(studio, names):
    with browser.Browser() as chromium:
        for name in names:
            path = PICTURES / f"{name}.png"
            compare_pictures.write_small(studio.take(chromium, name), path)
            print(f"{path.relative_to(HERE.parent.parent)}: {path.stat().st_size} bytes")
    FONTS.write_text(fonts(), encoding="utf-8")


def why_not(blessing):
    """Why pictures cannot be compared here; empty when they can."""
    for program, package in PROGRAMS.items():
        if shutil.which(program) is None:
            return f"there is no {program} (Debian's {package}; tools/install-packages readers)"
    if not blessing and fonts() != FONTS.read_text(encoding="utf-8"):
        return f"the fonts are others than those that the pictures were made with, which {FONTS.relative_to(HERE)} names"
    return ""


def main(arguments):
    parser = argparse.ArgumentParser(description="Compares exported pages with pictures of them.")
    parser.add_argument("program")
    parser.add_argument("--bless", action="store_true")
    parser.add_argument("--keep", default=str(HERE.parent.parent / "build" / "pictures"))
    parser.add_argument("names", nargs="*", metavar="NAME", help=", ".join(VIEWS))
    options = parser.parse_intermixed_args(arguments)
    unknown = [name for name in options.names if name not in VIEWS]
    if unknown:
        parser.error(f"there is no picture {unknown[0]}; there are {', '.join(VIEWS)}")
    reason = why_not(options.bless)
    if reason:
        print(f"check_pictures: skipped, {reason}")
        return 1 if options.bless else 77
    names = [name for name in VIEWS if not options.names or name in options.names]
    with tempfile.TemporaryDirectory(prefix="vexa-pictures-", ignore_cleanup_errors=True) as folder:
        studio = Studio(pathlib.Path(options.program).resolve(), pathlib.Path(folder))
        if options.bless:
            bless(studio, names)
            return 0
        result = judge(studio, names, pathlib.Path(options.keep))
    for failure in result.failures:
        print(failure)
    print(f"{result.passed} as expected, {len(result.failures)} not")
    return 1 if result.failures else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
