#!/usr/bin/env python3
"""Exports the results of examples/data as HTML and REPORT, and has strict readers of HTML judge the pages.

usage: check_examples.py PROGRAM        (build/release/bin/vexa)

Prints what they complain of, a line each. tidy knows nothing of drawings and is given pages without them; where it is not
installed, a line says so.
"""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
PAGES = {
    "plain.html": [],
    "layers.html": ["INTERACTLAYERS=YES"],
    "bare.html": ["STYLING=NO", "NOTESCAPTIONS=NO", "LAYERS=ALL"],
    "beside.html": ["IMAGEFORMAT=PNG"],
    "report.html": ["--as", "report", "URL=('https://a.example/?b&c' 'More <reports>')"],
    "own.html": ["--as", "report", "RESTYLE=NO", "EXCLUDE=LOGS"],
}


def run(command, folder):
    subprocess.run([str(part) for part in command], cwd=folder, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                   stderr=subprocess.PIPE, check=True)


def tidy(path):
    """What tidy complains of in a page without its drawings."""
    text = re.sub(r"<svg.*?</svg>", '<img src="a.png" alt="a">', path.read_text(encoding="utf-8"), flags=re.DOTALL)
    finished = subprocess.run(["tidy", "-quiet", "-errors", "-utf8"], input=text.encode(), capture_output=True, check=False)
    return [f"tidy: {line}" for line in finished.stderr.decode(errors="replace").splitlines()]


def html5lib(path):
    finished = subprocess.run(["/usr/bin/python3", ROOT / "tests" / "judges" / "check_html.py", path], capture_output=True,
                              text=True, check=True)
    return finished.stdout.splitlines()


def check_language(program, language, pages, has_tidy):
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as name:
        folder = pathlib.Path(name)
        run([sys.executable, ROOT / "examples" / "make_results.py", "--language", language, "results"], folder)
        run([program, "import", "--language", language, "a.vxv", *sorted((folder / "results").glob("*.json"))], folder)
        complaints = []
        for page in pages:
            options = PAGES[page]
            if options[:1] == ["--as"]:
                run([program, "export", "--language", language, *options[:2], "a.vxv", page, *options[2:]], folder)
            else:
                run([program, "export", "--language", language, "a.vxv", page, *options], folder)
            found = html5lib(folder / page) + (tidy(folder / page) if has_tidy else [])
            complaints += [f"{language}, {page}: {each}" for each in found]
    return complaints


def main(arguments):
    program = pathlib.Path(arguments[0]).resolve()
    has_tidy = shutil.which("tidy") is not None
    if not has_tidy:
        print("check_examples: there is no tidy (tools/install-packages readers)")
    judged = {"en": list(PAGES), "de": ["plain.html", "report.html"]}
    complaints = [each for language, pages in judged.items() for each in check_language(program, language, pages, has_tidy)]
    print("\n".join(complaints + [f"check_examples: {sum(map(len, judged.values()))} pages, {len(complaints)} complaints"]))
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
