"""The part of the test run that builds for Windows and runs the result under Wine."""

import os
import subprocess

import repository
import steps

FOLDER = "build/windows/bin"


def missing_tools():
    """Gets everything that has to come from outside; what could not be got, in words, or nothing."""
    for command, what in ((["tools/install-packages", "windows"], "mingw-w64 and Wine cannot be installed"),
                          (["tools/build-windows-libraries", "--fetch"], "the sources of its libraries cannot be fetched")):
        result = subprocess.run(command, cwd=repository.ROOT, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT, text=True, errors="replace", check=False)
        if result.returncode != 0:
            return what, result.stdout
    return None, ""


def run(tally, may_skip):
    """may_skip: pass over everything, with a line that says so, where the tools cannot be had."""
    missing, said = missing_tools()
    if missing and may_skip and not os.environ.get("CI"):
        print(f"== windows: skipped, because {missing} (tools/run_tests windows shows why)", flush=True)
        return
    if missing:
        print(f"== windows: {missing}\n{said}", flush=True)
        tally.add(f"windows: {missing}", 0, 1, 0)
        return
    if not steps.run(tally, "windows: build", ["tools/build-windows"]):
        return
    steps.run(tally, "windows: exported names", ["tools/check_exports", f"{FOLDER}/vexaoutput.dll"])
    steps.run(tally, "windows: needed libraries", ["tools/check_imports"])
    steps.run_ctest(tally, "windows: unit tests", "windows", "Z:")
    steps.run(tally, "windows: transcripts", ["tools/transcripts", "--windows", "--program", f"{FOLDER}/vexa.exe"],
              steps.count_closing_line)
    if steps.run(tally, "windows: the program of this system", ["tools/build", "release", "vexa", "vexa_output"]):
        steps.run(tally, "windows: the same documents as on this system", ["tools/compare_systems"], steps.count_closing_line)
