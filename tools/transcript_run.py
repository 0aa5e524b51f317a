"""Runs one transcript in a scratch folder and compares, or blesses, what happened."""

import difflib
import json
import os
import pathlib
import re
import shlex
import shutil
import signal
import subprocess
import tempfile
import zipfile

import transcript_case

NOW = "2026-03-05T10:07:09"
# Programs under test may lay out what they print by the length of a path, so every scratch folder's path has the
# same length: it does not stand where the surroundings' TMPDIR points to.
SCRATCH_PARENT = "/tmp" if os.name == "posix" else None
LARGEST_OUTPUT = 8 * 1024 * 1024


class Outcome:
    """What one run did; texts with the scratch folder's path replaced by {DIR}."""

    def __init__(self):
        self.status = 0
        self.timed_out = False
        self.output = ""
        self.messages = ""
        self.trace = []  # one decoded value an event
        self.trace_error = ""
        self.produced = {}  # file name -> text, or None when it is not there
        self.unpacked = {}  # file name -> the entries of the archive as text, or None when it is no archive


# What follows the scratch folder in a path.
BEHIND_FOLDER = re.compile(r"(?<=\{DIR\})[^\s\"']*")


def with_slashes(text):
    """The text with slashes for backslashes in the paths below the scratch folder: a path that the system's own functions
    gave has its own separators, which are backslashes on Windows."""
    return BEHIND_FOLDER.sub(lambda match: match.group().replace("\\", "/"), text)


def map_texts(value, change):
    """A decoded JSON value with every text in it changed, keys too."""
    if isinstance(value, str):
        return change(value)
    if isinstance(value, list):
        return [map_texts(item, change) for item in value]
    if isinstance(value, dict):
        return {change(key): map_texts(item, change) for key, item in value.items()}
    return value


class Scratch:
    """The folder of one run, and how its path is written in a transcript."""

    def __init__(self):
        self.path = pathlib.Path(tempfile.mkdtemp(prefix="vexa-case-", dir=SCRATCH_PARENT)).resolve()
        self.native = str(self.path)
        self.backslashes = self.native.replace("/", "\\")
        # Wine shows this machine's root folder as the drive Z.
        self.forms = ["Z:" + self.backslashes, "Z:" + self.native, self.native, self.backslashes]

    def expand(self, text):
        return text.replace("{DIR}", self.native).replace("{BDIR}", self.backslashes)

    def hide(self, value):
        """The value (text, or a decoded JSON value) with {DIR} for the folder's path."""
        return map_texts(value, self.hide_in_text)

    def hide_in_text(self, text):
        for form in self.forms:
            text = text.replace(form, "{DIR}")
        return text

    def write(self, name, content):
        path = self.path / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)

    def write_section(self, name, section):
        """A fixture: text with the placeholders expanded, binary content as it is."""
        content = section.content()
        binary = section.words[-1:] == ["base64"]
        self.write(name, content if binary else self.expand(content.decode("utf-8")).encode("utf-8"))


def run(case, options):
    """options: command (list), time_limit (seconds), windows (bool). The scratch folder is gone afterwards."""
    scratch = Scratch()
    try:
        prepare(case, scratch)
        outcome = Outcome()
        execute(case, scratch, options, outcome)
        read_trace(scratch, outcome)
        for section in case.all("produced") + case.all("absent"):
            outcome.produced[section.words[0]] = read_produced(scratch, section)
        for section in case.all("unpacked"):
            outcome.unpacked[section.words[0]] = read_unpacked(scratch, section)
        return outcome
    finally:
        shutil.rmtree(scratch.path, ignore_errors=True)


def prepare(case, scratch):
    for section in case.all("file"):
        scratch.write_section(section.words[0], section)
    for name, file_name in (("input", "case.vxs"), ("answers", "answers.jsonl")):
        if case.section(name):
            scratch.write_section(file_name, case.section(name))


def words_of(text, scratch):
    """Arguments, split as a shell would line by line, then with the placeholders expanded."""
    return [scratch.expand(word) for line in text.splitlines() for word in shlex.split(line)]


def run_options(case):
    answers = ["--adapter", "script:answers.jsonl"] if case.section("answers") else []
    return ["run", "--now", NOW, "--trace", "trace.jsonl", *answers]


def command_line(case, scratch):
    if case.section("args"):
        return words_of(case.text("args"), scratch)
    return [*run_options(case), *words_of(case.text("options"), scratch), "case.vxs"]


def calls_of(case, scratch):
    """The calls of the program in their order: what stands above their output, and their arguments. A single one has nothing
    above its output."""
    lines = case.text("calls").splitlines()
    if not lines:
        return [("", command_line(case, scratch))]
    calls = []
    for line in lines:
        words = words_of(line, scratch)
        calls.append((f"$ {line}\n", run_options(case) + words[1:] if words[:1] == ["run"] else words))
    return calls


def environment(case, scratch):
    """The surroundings of a run: those of this process, with everything that output may depend on fixed."""
    values = {key: value for key, value in os.environ.items() if key not in ("COLUMNS", "LINES", "LANGUAGE")}
    values.update(LC_ALL="C.UTF-8", TZ="UTC", TERM="dumb", HOME=scratch.native)
    for line in case.text("env").splitlines():
        key, _, value = line.partition("=")
        values[key] = scratch.expand(value)
    return values


def execute(case, scratch, options, outcome):
    """Runs the calls one after the other, up to the first that fails."""
    output, messages = [], []
    for title, arguments in calls_of(case, scratch):
        execute_call(case, scratch, options, arguments, outcome)
        output += [title, outcome.output]
        messages += [title, outcome.messages] if outcome.messages else []
        if outcome.status != 0 or outcome.timed_out:
            break
    outcome.output, outcome.messages = "".join(output), "".join(messages)


def execute_call(case, scratch, options, arguments, outcome):
    with tempfile.TemporaryFile() as stdin, tempfile.TemporaryFile() as stdout, tempfile.TemporaryFile() as stderr:
        stdin.write(scratch.expand(case.text("stdin")).encode("utf-8"))
        stdin.seek(0)
        process = subprocess.Popen([*options.command, *arguments], cwd=scratch.path, stdin=stdin,
                                   stdout=stdout, stderr=stderr, env=environment(case, scratch),
                                   start_new_session=True)
        try:
            outcome.status = process.wait(options.time_limit)
        except subprocess.TimeoutExpired:
            outcome.timed_out = True
        kill_group(process)
        outcome.output = read_stream(scratch, stdout)
        outcome.messages = read_stream(scratch, stderr)


def kill_group(process):
    """Ends whatever the case left running; it has its own process group."""
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except (AttributeError, OSError):
        process.kill()
    process.wait()


def read_stream(scratch, file):
    file.seek(0)
    text = file.read(LARGEST_OUTPUT).decode("utf-8", errors="backslashreplace")
    return transcript_case.normalised(scratch.hide(text.replace("\r\n", "\n")))


def read_trace(scratch, outcome):
    path = scratch.path / "trace.jsonl"
    if not path.is_file():
        return
    for number, line in enumerate(path.read_bytes().splitlines(), start=1):
        try:
            event = json.loads(line.decode("utf-8"))
            outcome.trace.append(scratch.hide(event))
            if not isinstance(event, dict) or "event" not in event:
                raise ValueError("is no object with an event")
        except ValueError as error:
            outcome.trace_error = f"line {number} of the trace cannot be read: {error}: {line[:200]!r}"
            return


def read_produced(scratch, section):
    path = scratch.path / section.words[0]
    if not path.is_file():
        return None
    text = path.read_bytes().decode("utf-8", errors="backslashreplace").replace("\r\n", "\n")
    return transcript_case.normalised(scratch.hide(text))


def read_unpacked(scratch, section):
    """Every entry of an archive, its name on a line '== name ==' above its text."""
    try:
        with zipfile.ZipFile(scratch.path / section.words[0]) as archive:
            entries = [(entry.filename, archive.read(entry)) for entry in archive.infolist()]
    except (OSError, zipfile.BadZipFile):
        return None
    texts = [f"== {name} ==\n" + transcript_case.normalised(content.decode("utf-8", errors="backslashreplace"))
             for name, content in entries]
    return transcript_case.normalised(scratch.hide("".join(texts)))


def actual_trace(section, outcome):
    """The lines of the events that the section compares: all, or those of the kinds in its header."""
    events = [event for event in outcome.trace if not section.words or event["event"] in section.words]
    return "".join(map(transcript_case.shown_event, events))


def expected_trace(case, section):
    """The section's lines in the form of actual_trace; the order of keys counts for nothing."""
    try:
        return "".join(map(transcript_case.shown_event, transcript_case.read_events(section.text)))
    except ValueError as error:
        raise transcript_case.FormError(f"{case.path}: trace: {error}") from error


def same_trace(expected, actual, plain=str):
    def events(text):
        return [json.dumps(map_texts(event, plain), sort_keys=True) for event in transcript_case.read_events(text)]

    return events(expected) == events(actual)


def difference(name, expected, actual):
    lines = difflib.unified_diff(expected.split("\n"), actual.split("\n"), f"{name} expected", name, lineterm="")
    return "\n".join(lines)


def status_complaint(case, outcome):
    """What is wrong with how the run ended, or nothing."""
    if outcome.status == case.status():
        return []
    if outcome.status < 0:
        ended = f"was killed by signal {signal.Signals(-outcome.status).name}"
    else:
        ended = f"exited with status {outcome.status}"
    return [f"the program {ended}, expected status {case.status()}"]


def hopeless(case, outcome):
    """Complaints that no blessing can repair."""
    complaints = []
    if outcome.timed_out:
        complaints.append("the time limit was reached and the program killed")
    elif outcome.status < 0 or (outcome.status != 0) != case.is_bad:
        complaints += status_complaint(case, outcome)
    if outcome.trace_error:
        complaints.append(outcome.trace_error)
    if complaints and outcome.messages and not case.section("messages"):
        complaints.append("messages:\n" + outcome.messages.rstrip("\n"))
    return complaints


def produced_complaints(case, outcome):
    complaints = []
    for section in case.all("produced"):
        actual = outcome.produced[section.words[0]]
        if actual is None:
            complaints.append(f"{section.words[0]} was not produced")
        elif section.text and section.text != actual:
            complaints.append(difference(section.words[0], section.text, actual))
    complaints += [f"{section.words[0]} is there" for section in case.all("absent")
                   if outcome.produced[section.words[0]] is not None]
    return complaints


def unpacked_complaints(case, outcome):
    complaints = []
    for section in case.all("unpacked"):
        actual = outcome.unpacked[section.words[0]]
        if actual is None:
            complaints.append(f"{section.words[0]} is no archive")
        elif section.text != actual:
            complaints.append(difference(section.words[0], section.text, actual))
    return complaints


def compare(case, outcome, windows=False):
    """Complaints; none when everything is as the case says. windows: separators of paths count for nothing."""
    plain = with_slashes if windows else str
    complaints = hopeless(case, outcome) or status_complaint(case, outcome)
    trace = case.section("trace")
    if trace:
        expected, actual = expected_trace(case, trace), actual_trace(trace, outcome)
        if not same_trace(expected, actual, plain):
            complaints.append(difference("trace", expected, actual))
    for name, actual in (("output", outcome.output), ("messages", outcome.messages)):
        section = case.section(name)
        if section and plain(section.text) != plain(actual):
            complaints.append(difference(name, section.text, actual))
    return complaints + produced_complaints(case, outcome) + unpacked_complaints(case, outcome)


def refuse_headers(case, name, text):
    """A text with a line that reads like a section's header cannot stand in a transcript."""
    if any(transcript_case.HEADER.match(line) for line in text.splitlines()):
        raise transcript_case.FormError(f"{case.path}: {name} holds a line like a section's header")
    return text


def bless(case, outcome):
    """Rewrites the expectations that the case has; complaints when what happened must not be blessed."""
    complaints = hopeless(case, outcome)
    if complaints:
        return complaints
    for section in case.sections:
        bless_section(case, section, outcome)
    case.write()
    return compare(case, outcome)


def bless_section(case, section, outcome):
    if section.name == "trace":
        bless_trace(case, section, outcome)
    elif section.name in ("output", "messages"):
        section.text = refuse_headers(case, section.name, getattr(outcome, section.name))
    elif section.name == "produced" and section.text and outcome.produced[section.words[0]] is not None:
        section.text = refuse_headers(case, section.words[0], outcome.produced[section.words[0]])
    elif section.name == "unpacked" and outcome.unpacked[section.words[0]] is not None:
        section.text = refuse_headers(case, section.words[0], outcome.unpacked[section.words[0]])
    elif section.name == "status":
        section.text = f"{outcome.status}\n"


def bless_trace(case, section, outcome):
    """Leaves a trace that holds already as it was written."""
    actual = actual_trace(section, outcome)
    try:
        holds = same_trace(expected_trace(case, section), actual)
    except transcript_case.FormError:
        holds = False
    if not holds:
        section.text = actual
