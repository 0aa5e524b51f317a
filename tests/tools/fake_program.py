#!/usr/bin/env python3
"""Stands for the program under test: does what the lines of its syntax file say."""

import json
import pathlib
import sys
import time


def do(line, trace):
    """One line; the exit status to end with, or None to go on."""
    word, _, rest = line.partition(" ")
    if word == "say":
        print(rest)
    elif word == "complain":
        print(rest, file=sys.stderr)
    elif word == "event":
        trace.write(json.dumps({"event": rest, "path": str(pathlib.Path.cwd()).replace("/", "\\") + "\\x"}) + "\n")
    elif word == "text":
        event, _, text = rest.partition(" ")
        trace.write(json.dumps({"event": event, "text": text.replace("|", "\n")}) + "\n")
    elif word == "write":
        pathlib.Path(rest).write_text("content\n", encoding="utf-8")
    elif word == "pack":
        import zipfile  # here, as it takes longer to load than all the rest
        with zipfile.ZipFile(rest, "w") as archive:
            archive.writestr("in/one.xml", "<one/>")
            archive.writestr("two", b"\xff")
    elif word == "show":
        print(pathlib.Path(rest).read_text(encoding="utf-8"), end="")
    elif word == "arguments":
        print(*sys.argv[1:])
    elif word == "folder":
        print(pathlib.Path.cwd())
    elif word == "length":
        print(len(str(pathlib.Path.cwd())))
    elif word == "read":
        print(sys.stdin.read(), end="")
    elif word == "hang":
        time.sleep(60)
    elif word == "exit":
        return int(rest)
    return None


def main():
    with open("trace.jsonl", "w", encoding="utf-8") as trace:
        for line in pathlib.Path(sys.argv[-1]).read_text(encoding="utf-8").split("\n"):
            status = do(line, trace)
            if status is not None:
                sys.stdout.flush()
                return status
    return 0


if __name__ == "__main__":
    sys.exit(main())
