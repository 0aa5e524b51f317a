"""One transcript as a value: its description, its sections in order, and how it is read and written."""

import base64
import json
import pathlib
import re

HEADER = re.compile(r"^-- ([a-z]+)((?: [^ ]+)*) --$")

# Sections that may be there once, and those that may be there once for each file name.
SINGLE = ("options", "args", "calls", "env", "stdin", "input", "answers", "status", "trace", "output", "messages", "not")
FOR_A_FILE = ("file", "produced", "unpacked", "absent")
ASSERTING = ("trace", "output", "messages")


class FormError(Exception):
    """The transcript itself is wrong; the text says where and how."""


class Section:
    """name, words after it in the header, and the text below it (ends in one line end, or is empty)."""

    def __init__(self, name, words, text=""):
        self.name = name
        self.words = words
        self.text = text

    def header(self):
        return f"-- {' '.join([self.name] + self.words)} --\n"

    def content(self):
        """The bytes that the section stands for."""
        if self.words[-1:] == ["base64"]:
            return base64.b64decode(self.text)
        return self.text.encode("utf-8")


# Events whose text is a request, or the answer to one: it stands below the event's own line as it goes over the wire,
# each of its lines behind two blanks.
WITH_TEXT_BELOW = ("modify", "modifyReply", "export", "exportReply")
BELOW = "  "
# What a line cannot show, so that a text with it stays in quotes; also blanks at a line's end and empty lines.
NOT_SHOWN = re.compile(r"[\x00-\x09\x0b-\x1f\x7f\x85\u2028\u2029]| (\n|$)|^\n|\n(\n|$)")


def shown_event(event):
    """The lines of one decoded event of a trace."""
    def compact(value):
        return json.dumps(value, ensure_ascii=False, separators=(",", ":")) + "\n"

    text = event.get("text") if isinstance(event, dict) and event.get("event") in WITH_TEXT_BELOW else None
    if not isinstance(text, str) or not text or NOT_SHOWN.search(text):
        return compact(event)
    own = compact({key: value for key, value in event.items() if key != "text"})
    return own + "".join(f"{BELOW}{line}\n" for line in text.split("\n"))


def read_events(text):
    """The decoded events of a trace. Throws ValueError, which names the line."""
    events, below = [], False
    for line in filter(None, text.split("\n")):
        if line.startswith(BELOW) and events and isinstance(events[-1], dict):
            events[-1]["text"] = events[-1]["text"] + "\n" + line[len(BELOW):] if below else line[len(BELOW):]
            below = True
            continue
        try:
            events.append(json.loads(line))
        except ValueError as error:
            raise ValueError(f"{error}: {line}") from error
        below = False
    return events


class Case:
    """path, description (the lines at the top, as they stand) and sections (in order)."""

    def __init__(self, path, description, sections):
        self.path = pathlib.Path(path)
        self.description = description
        self.sections = sections

    @property
    def is_bad(self):
        return self.path.name.startswith("bad-")

    def section(self, name):
        return next((section for section in self.sections if section.name == name), None)

    def all(self, name):
        return [section for section in self.sections if section.name == name]

    def text(self, name):
        section = self.section(name)
        return section.text if section else ""

    def status(self):
        """The exit status that is expected: 0, or 1 for a bad-* case, unless the case says another one."""
        section = self.section("status")
        return int(section.text) if section else int(self.is_bad)

    def differs_on_windows(self):
        """True when the case says why Windows cannot do the same."""
        return self.section("not") is not None

    def write(self):
        body = "".join(section.header() + section.text for section in self.sections)
        self.path.write_text(self.description + body, encoding="utf-8")


def normalised(text):
    """Without line ends at the end but one."""
    text = text.rstrip("\n")
    return text + "\n" if text else ""


def read(path):
    """The case in a file. Throws FormError."""
    try:
        lines = pathlib.Path(path).read_text(encoding="utf-8").split("\n")
    except UnicodeDecodeError as error:
        raise FormError(f"{path} is not UTF-8: {error}") from error
    start = next((i for i, line in enumerate(lines) if HEADER.match(line)), len(lines))
    description = [line for line in lines[:start] if line.strip()]
    if not description or not all(line.startswith("# ") for line in description):
        raise FormError(f"{path} must begin with lines '# ...' that say what it shows")
    case = Case(path, normalised("\n".join(description)), read_sections(lines[start:]))
    check(case)
    return case


def read_sections(lines):
    sections, texts = [], []
    for line in lines:
        match = HEADER.match(line)
        if match:
            sections.append(Section(match.group(1), match.group(2).split()))
            texts.append([])
        else:
            texts[-1].append(line)
    for section, text in zip(sections, texts):
        section.text = normalised("\n".join(text))
    return sections


def check(case):
    """Throws FormError when the sections do not make a case."""
    for section in case.sections:
        check_section(case, section)
    keys = [(section.name, section.words[:1] if section.name in FOR_A_FILE else []) for section in case.sections]
    doubled = next((key for key in keys if keys.count(key) > 1), None)
    if doubled:
        raise FormError(f"{case.path}: section '{' '.join([doubled[0]] + doubled[1])}' is there twice")
    if not any(case.section(name) for name in ("input", "args", "calls")):
        raise FormError(f"{case.path}: has neither 'input' nor 'args' nor 'calls', so nothing would run")
    if case.section("calls") and (case.section("args") or case.section("options")):
        raise FormError(f"{case.path}: 'calls' says all of the command lines, so 'args' and 'options' do not count")
    if not any(case.section(name) for name in ASSERTING):
        raise FormError(f"{case.path}: has none of {', '.join(ASSERTING)}, so it would assert nothing")
    if (case.status() != 0) != case.is_bad:
        raise FormError(f"{case.path}: status {case.status()}, but bad-* cases, and no others, must fail")


def check_section(case, section):
    def refuse(text):
        raise FormError(f"{case.path}: {section.header().strip()}: {text}")

    if section.name not in SINGLE + FOR_A_FILE:
        refuse("there is no such section")
    if section.name in FOR_A_FILE:
        if not section.words or section.words[1:] not in ([], ["base64"]):
            refuse("needs a file name, and perhaps base64 after it")
    elif section.name == "input":
        if section.words not in ([], ["base64"]):
            refuse("takes nothing but base64")
    elif section.name == "not":
        if section.words[:2] != ["on", "windows:"] or len(section.words) < 3 or section.text:
            refuse("reads '-- not on windows: REASON --', with nothing below it")
    elif section.name != "trace" and section.words:
        refuse("takes no words")
    if section.name == "status" and not re.fullmatch(r"[0-9]+\n", section.text):
        refuse("needs a number")
