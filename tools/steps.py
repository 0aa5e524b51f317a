"""Steps of the test run: each runs a command, shows what it prints, and says how many tests passed and failed."""

import concurrent.futures
import os
import pathlib
import re
import shutil
import subprocess
import sys
import time
import xml.etree.ElementTree

import repository

SANITIZER_SETTINGS = {
    "ASAN_OPTIONS": "detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1",
    "ASAN_SYMBOLIZER_PATH": "/usr/lib/llvm-14/bin/llvm-symbolizer",
    "LSAN_OPTIONS": f"suppressions={repository.ROOT / 'tools' / 'leaks_of_libraries.txt'}:print_suppressions=0",
    "UBSAN_OPTIONS": "print_stacktrace=1",
}
CLOSING_COUNT = re.compile(r"^(\d+) passed, (\d+) failed$")


LONGEST_SHOWN = 8
REPEATED_LINES = 40  # of what a step that failed printed last
WORTH_SHOWING = 1.0  # seconds


class Tally:
    """Counts over all steps, and what time they took."""

    def __init__(self):
        self.began = time.monotonic()
        self.passed = 0
        self.failed = 0
        self.failures = []  # (title, what it printed) of the steps that failed
        self.durations = []  # (seconds, title) of every step
        self.tests = []  # the same of single tests in the steps

    def add(self, title, passed, failed, seconds, printed=""):
        self.passed += passed
        self.failed += failed
        if failed:
            self.failures.append((title, printed))
        self.durations.append((seconds, title))
        print(f"   {title}: {passed} ok, {failed} not ok ({seconds:.0f} s)", flush=True)

    def failed_steps(self):
        """What failed and the last of what it printed, once more: the end of a long run is often all that is kept of it."""
        lines = []
        for title, printed in self.failures:
            last = [line for line in printed.splitlines() if not CLOSING_COUNT.match(line)][-REPEATED_LINES:]
            lines += [f"failed: {title}", *(f"   {line}" for line in last)]
        return "\n".join(lines)

    def longest(self):
        """The steps and the single tests that took longest, as lines."""
        lines = [f"took {time.monotonic() - self.began:.0f} s; longest:"]
        for durations, mark in ((self.durations, ""), (self.tests, "  test ")):
            shown = [entry for entry in sorted(durations, reverse=True)[:LONGEST_SHOWN] if entry[0] >= WORTH_SHOWING]
            lines += [f"{seconds:6.0f} s  {mark}{title}" for seconds, title in shown]
        return "\n".join(lines)


def run(tally, title, command, count=None, environment=None):
    """Runs one step. count(output, status) gives (passed, failed); without it the step counts as one test. A step that
    exits with a failure always has at least one failed test. environment: variables beside those of this process."""
    print(f"== {title}", flush=True)
    start = time.monotonic()
    lines = []
    with subprocess.Popen(command, cwd=repository.ROOT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL,
                          text=True, errors="replace", env={**surroundings(), **(environment or {})}) as process:
        for line in process.stdout:
            lines.append(line)
            # The closing count of a step is kept for the end of everything: there is one such line.
            if not CLOSING_COUNT.match(line):
                sys.stdout.write(line)
                sys.stdout.flush()
        status = process.wait()
    passed, failed = count("".join(lines), status) if count else (int(status == 0), int(status != 0))
    if status != 0 and failed == 0:
        failed = 1
    tally.add(title, passed, failed, time.monotonic() - start, "".join(lines))
    return status == 0 and failed == 0


def run_together(tally, entries, jobs=2):
    """Runs steps that do not need each other, `jobs` at a time, and shows each when it has ended. entries: (title, command,
    count), as for run."""
    def execute(entry):
        start = time.monotonic()
        result = subprocess.run(entry[1], cwd=repository.ROOT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                stdin=subprocess.DEVNULL, text=True, errors="replace", env=surroundings(), check=False)
        return entry, result, time.monotonic() - start

    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        for done in concurrent.futures.as_completed([pool.submit(execute, entry) for entry in entries]):
            (title, _, count), result, seconds = done.result()
            print(f"== {title}")
            print("".join(line for line in result.stdout.splitlines(keepends=True) if not CLOSING_COUNT.match(line)), end="")
            passed, failed = count(result.stdout, result.returncode) if count else \
                (int(result.returncode == 0), int(result.returncode != 0))
            tally.add(title, passed, failed or int(result.returncode != 0), seconds, result.stdout)


def surroundings():
    return {**os.environ, **SANITIZER_SETTINGS}


def count_closing_line(output, _status):
    """For programs that end with a line 'N passed, N failed'."""
    matches = [CLOSING_COUNT.match(line) for line in output.splitlines()]
    counts = [match for match in matches if match]
    return (int(counts[-1].group(1)), int(counts[-1].group(2))) if counts else (0, 1)


def count_unittest(output, _status):
    """For python's unittest."""
    ran = re.search(r"^Ran (\d+) tests?", output, re.MULTILINE)
    if not ran:
        return 0, 1
    failed = sum(int(number) for number in re.findall(r"(?:failures|errors)=(\d+)", output))
    skipped = sum(int(number) for number in re.findall(r"skipped=(\d+)", output))
    return int(ran.group(1)) - failed - skipped, failed


def states_of_cases(report):
    """Of each case in the report of a test program: run, fail, notrun or disabled. A report that breaks off is a failure."""
    try:
        # Names of cases may hold bytes that are no UTF-8.
        text = report.read_bytes().decode("utf-8", errors="replace")
        cases = list(xml.etree.ElementTree.fromstring(text).iter("testcase"))
    except xml.etree.ElementTree.ParseError:
        return ["fail"]
    return ["fail" if case.find("failure") is not None else "notrun" if case.get("result") == "skipped"
            else "disabled" if case.get("status") == "notrun" else "run" for case in cases]


def states_of_test(test, reports):
    """The same of one test of ctest, with the cases in its place where it is a program that has reported them."""
    name, state = test.get("name"), test.get("status")
    report = pathlib.Path(reports) / f"{name}.xml"
    if not report.is_file():
        return ["fail" if name.endswith("_test") and state == "run" else state]
    states = states_of_cases(report)
    return states if state == "run" or "fail" in states else states + [state]  # it failed behind its last case


def ctest_counter(path, reports):
    """For ctest, which writes its results to path, and test programs, which write theirs into the folder reports; a test
    that was skipped or not run did not pass."""
    def count(_output, _status):
        try:
            suite = xml.etree.ElementTree.parse(path).getroot()
        except (OSError, xml.etree.ElementTree.ParseError):
            return 0, 1
        states = [state for test in suite.iter("testcase") for state in states_of_test(test, reports)]
        skipped = sum(state in ("notrun", "disabled") for state in states)
        if skipped:
            print(f"   {skipped} skipped")
        failed = sum(state == "fail" for state in states)
        return len(states) - skipped - failed, failed
    return count


def durations_of_tests(path, title):
    """(seconds, name) of each test that ctest wrote to path."""
    try:
        suite = xml.etree.ElementTree.parse(path).getroot()
    except (OSError, xml.etree.ElementTree.ParseError):
        return []
    return [(float(test.get("time") or 0), f"{title}: {test.get('name')}") for test in suite.iter("testcase")]


def run_ctest(tally, title, preset, drive=""):
    """The tests of a build, counted case by case. drive: what stands before paths of this machine where they run."""
    results = repository.ROOT / "build" / preset / "results"
    shutil.rmtree(results, ignore_errors=True)
    results.mkdir()
    whole = results / "ctest.xml"
    left_out = "^(counted-apart|readers|thorough)$" if os.environ.get("VEXA_QUICK") else "^counted-apart$"
    # Some tests wait more than they work.
    at_once = ["--parallel", "3"] if os.environ.get("VEXA_QUICK") else []
    run(tally, title,
        ["ctest", "--preset", preset, "--label-exclude", left_out, "--progress", "--output-junit", str(whole), *at_once],
        ctest_counter(whole, results), {"GTEST_OUTPUT": f"xml:{drive}{results}/", "GTEST_BRIEF": "1"})
    tally.tests += durations_of_tests(whole, preset)
