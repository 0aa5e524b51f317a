"""Runs the program on commands and command lines that it complains of, hostile ones too, and compares every line that it writes
to standard error with the schema: a test of ctest.

usage: diagnostics_test.py PROGRAM SCHEMA
"""

import json
import pathlib
import subprocess
import sys
import tempfile

try:
    import jsonschema
except ImportError:
    jsonschema = None

SYNTAX = b"""OUTPUT NEW NAME=a.
OUTPUT NWE.
OUTPUT SAVE OUTFILE='/nowhere/a.vxv' NAME=a.
OUTPUT NEW NMAE=b.
OUTPUT ACTIVATE NAME='\x1b[31mred\x07 \xe2\x80\xae \xc3\xa9'.
OUTPUT ACTIVATE NAME='\xff\xfe'.
OUTPUT COMMENT TEXT='x' COLOR=nocolour.
OUTPUT DISPLAY.
ECHO 'seen'.
"""
# What is wrong with a file as a text, and what of one command belongs to another: each message has its whole place. The places
# are those of the messages, in their order.
PLACES = [
    (b"OUTPUT\xc2\xa0DISPLAY.\n", [(1, 7)]),
    (b"* \xe6\xbc\xa2.\n\tOUTPUT COMMENT TEXT=\xe2\x80\x9cx\xe2\x80\x9d.\n", [(2, 22)]),
    (b"OUTPUT NEW NAME=a. OUTPUT DISPLAY.\n", [(1, 20), (1, 20)]),
    (b"OUTPUT COMMENT TEXT='x'\nOUTPUT DISPLAY.\n", [(2, 1), (2, 1)]),
    (b"\n* caf\xe9.\n", [(2, 6)]),
    ("OUTPUT DISPLAY.".encode("utf-16"), [(1, 1)]),
    ("OUTPUT DISPLAY.".encode("utf-32-be"), [(1, 1)]),
    (b"ECHO 'a'.\n  INSERT FILE='not there.vxs'.\n", [(2, 15)]),
    (b"  CD 'not there'.\n", [(1, 6)]),
    (b"  OUTPUT ACTIVATE NAME=b.\n", [(1, 3)]),
    (b"OUTPUT NEW\x00 NAME=\x01\xed\xa0\x80\xff.\n", None),
    (bytes(range(1, 256)) + b".\n", None),
]
# Command lines, the exit status, and the codes that must be among those of the messages.
CASES = [
    (["run", "case.vxs"], 1, {"syntax", "command", "refused-value"}),
    (["run", "--quiet", "case.vxs"], 1, {"syntax", "command"}),
    (["run", "--language", "ja", "case.vxs"], 1, {"syntax", "command"}),
    (["check", "case.vxs"], 1, {"syntax"}),
    (["run", "missing.vxs"], 2, {"program"}),
    (["run", "--charset", "\x1b]0;x\x07", "case.vxs"], 2, {"program"}),
    (["run", "--nonsense"], 2, {"usage"}),
    (["import", "a.vxv", "missing.json"], 2, {"program"}),
    (["import", "a.vxv", "broken.json"], 1, {"program"}),
    (["show", "missing.vxv"], 2, {"program"}),
    (["export", "missing.vxv", "a.html"], 2, {"program"}),
]
HINTS = {"Did you mean LOCK?": "OUTPUT OPEN FILE='a.vxv' LOKC=NO.\n", "Did you mean NAME?": "OUTPUT NEW NMAE=b.\n"}


def demand(holds, complaint):
    if not holds:
        sys.exit(complaint)


def lines_of(program, arguments, folder):
    result = subprocess.run([program, arguments[0], "--diagnostics", "json", *arguments[1:]], cwd=folder,
                            stdin=subprocess.DEVNULL, capture_output=True, check=False)
    messages = []
    for line in result.stderr.split(b"\n")[:-1]:
        demand(all(32 <= byte < 127 for byte in line), f"{arguments}: not ASCII: {line}")
        messages.append(json.loads(line))
    demand(result.stderr.endswith(b"\n"), f"{arguments}: the last line does not end")
    return result, messages


def check_case(program, schema, folder, case):
    arguments, status, codes = case
    result, messages = lines_of(program, arguments, folder)
    demand(result.returncode == status, f"{arguments}: exit status {result.returncode}: {result.stderr}")
    found = {message["code"] for message in messages}
    demand(codes <= found, f"{arguments}: no {codes - found} among {found}")
    demand("--quiet" not in arguments or not result.stdout, f"{arguments}: printed {result.stdout}")
    for message in messages:
        if jsonschema:
            jsonschema.validate(message, schema)
        demand(message["hint"] is None or message["text"].endswith(message["hint"]), f"{message}")


def check_places(program, folder):
    for hint, syntax in HINTS.items():
        (folder / "place.vxs").write_text("* One.\n" + syntax, encoding="utf-8")
        _, messages = lines_of(program, ["run", "place.vxs"], folder)
        demand(len(messages) == 1, f"{messages}")
        message = messages[0]
        demand((message["file"], message["line"], message["hint"]) == ("place.vxs", 2, hint), f"{message}")
        demand(message["column"] == syntax.index("LOKC" if "LOKC" in syntax else "NMAE") + 1, f"{message}")


def check_whole_places(program, schema, folder):
    for syntax, places in PLACES:
        (folder / "place.vxs").write_bytes(syntax)
        _, messages = lines_of(program, ["run", "place.vxs"], folder)
        for message in messages:
            if jsonschema:
                jsonschema.validate(message, schema)
            demand(message["file"] == "place.vxs" and message["line"] and message["column"], f"{syntax}: {message}")
        found = [(message["line"], message["column"]) for message in messages]
        demand(messages and places in (None, found), f"{syntax}: {found}: {messages}")


def check_imports(program, folder):
    (folder / "latin.csv").write_bytes(b"a,b\nx,\xe9\n")
    for name, line in (("latin.csv", 2), ("broken.json", 1)):
        _, messages = lines_of(program, ["import", "a.vxv", name], folder)
        message = messages[-1]
        demand((message["file"], message["line"]) == (name, line) and message["column"], f"{message}")
        demand(not message["text"].startswith(name), f"{message}")


def main(program, schema):
    with tempfile.TemporaryDirectory(prefix="vexa-diagnostics-") as name:
        folder = pathlib.Path(name)
        (folder / "case.vxs").write_bytes(SYNTAX)
        (folder / "broken.json").write_text("{")
        for case in CASES:
            check_case(program, json.loads(pathlib.Path(schema).read_text(encoding="utf-8")), folder, case)
        check_places(program, folder)
        check_whole_places(program, json.loads(pathlib.Path(schema).read_text(encoding="utf-8")), folder)
        check_imports(program, folder)
    if jsonschema is None:
        print("the schema was not compared, because python3-jsonschema is not installed")


if __name__ == "__main__":
    main(*sys.argv[1:])
