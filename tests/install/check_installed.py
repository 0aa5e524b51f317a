"""Installs a build into a folder, moves the folder, and tries what is in it: a test of ctest.

usage: check_installed.py BUILD VERSION
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

# Makes a document, writes into it, saves it, and lists what is open; a message and a table in German.
SYNTAX = """OUTPUT NEW NAME=report.
OUTPUT COMMENT TEXT='moved' COLOR=teal.
OUTPUT SAVE OUTFILE='report.vxv'.
OUTPUT DISPLAY.
"""
EXPECTED = ["Kommentar", "moved", "teal", "report"]
LIBRARIES = ["lib/libvexabackend.so", "lib/vexaoutput.so", "lib/vexadrawing.so"]


def run(command, **options):
    """What the command prints. A command that fails ends the test."""
    result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False, **options)
    if result.returncode != 0:
        sys.exit(f"{command}: exit status {result.returncode}\n{result.stdout}")
    return result.stdout


def demand(holds, complaint):
    if not holds:
        sys.exit(complaint)


def check_binary(file):
    """Finds its libraries from where it stands itself, and keeps nothing writable that need not be."""
    dynamic = run(["readelf", "-dlW", str(file)])
    needs_ours = "[libvexabackend.so]" in dynamic
    demand(("Library runpath: [$ORIGIN/../lib]" in dynamic) or not needs_ours, f"{file}: looks elsewhere\n{dynamic}")
    symbols = run(["readelf", "-W", "--dyn-syms", str(file)])
    # The address sanitizer watches the stack in a way of its own.
    demand("__stack_chk_fail" in symbols or "__asan_init" in symbols, f"{file}: does not check its stack")
    demand("NOW" in dynamic and "GNU_RELRO" in dynamic, f"{file}: is not bound when it is loaded\n{dynamic}")


def check_drawing(program, work, environment):
    """The library that draws is found when it is needed, and is no burden for every start before."""
    needed = run(["readelf", "-dW", program])
    for library in ("libcairo", "librsvg", "libqpdf", "libpango"):
        demand(library not in needed, f"the program itself needs {library}")
    (work / "square.svg").write_text('<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"><rect width="9" height="9"/></svg>')
    run([program, "import", "square.vxv", "square.svg"], cwd=work, env=environment)
    run([program, "export", "square.vxv", "square.png"], cwd=work, env=environment)
    demand((work / "square1.png").read_bytes().startswith(b"\x89PNG"), "no picture was drawn")
    run([program, "export", "square.vxv", "square.pdf"], cwd=work, env=environment)
    demand((work / "square.pdf").read_bytes().startswith(b"%PDF"), "no PDF was written")


def check_moved(root, version):
    environment = {key: value for key, value in os.environ.items() if not key.startswith("LD_")}
    program = root / "bin" / "vexa"
    demand(run([program, "--version"], env=environment).strip() == f"vexa {version}", "--version is another one")
    work = root / "work"
    work.mkdir()
    (work / "case.vxs").write_text(SYNTAX, encoding="utf-8")
    printed = run([program, "run", "--language", "de", "case.vxs"], cwd=work, env=environment)
    for text in EXPECTED:
        demand(text in printed, f"{text!r} is not in what was printed:\n{printed}")
    demand((work / "report.vxv").is_file(), "nothing was saved")
    demand((root / "lang" / "statistic-roles.xml").is_file(), "no words for statistics are installed")
    demand(any((root / "Looks").iterdir()), "no looks are installed")
    check_drawing(program, work, environment)
    for name in ["bin/vexa", *LIBRARIES]:
        check_binary(root / name)


def main(build, version):
    folder = pathlib.Path(tempfile.mkdtemp(prefix="vexa-installed-"))
    try:
        run(["cmake", "--install", build, "--prefix", str(folder / "first")])
        (folder / "first").rename(folder / "second place")
        check_moved(folder / "second place", version)
    finally:
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    main(*sys.argv[1:])
