"""Writes a corpus for a fuzz target out of the transcripts: an input for each command of a name.

usage: transcript_corpus.py COMMAND AREA... FOLDER

COMMAND: "OUTPUT EXPORT". AREA: a folder of tests/transcripts. An input is a byte, which chooses the character set and, by
turns, one of the answers that the target knows, and what stands behind the command's name.
"""

import pathlib
import re
import shutil
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
import transcript_case

CHARACTER_SETS = ["UTF-8", "Shift_JIS", "windows-1252", "GB18030"]
TURNS = 8
FIRST = ord("0")  # is the first of the character sets and a digit, so that inputs can be read


def commands(case, name):
    """What stands behind the name in each such command of the case, as bytes."""
    section = case.section("input")
    syntax = section.content() if section else b""
    words = rb"\s+".join(re.escape(word.encode()) for word in name.split())
    pattern = re.compile(rb"^\s*" + words + rb"(?=[\s.])(.*?)\.[ \t\r]*$", re.IGNORECASE | re.MULTILINE | re.DOTALL)
    return [match.group(1) for match in pattern.finditer(syntax)]


def character_set(case):
    """The number of the set that the case is run in; none for one that the targets do not know."""
    found = re.search(r"--charset[ =](\S+)", case.text("options"))
    wanted = found.group(1).strip("'\"") if found else CHARACTER_SETS[0]
    return next((i for i, known in enumerate(CHARACTER_SETS) if known.lower() == wanted.lower()), None)


def main(name, areas, folder):
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    count = 0
    for area in areas:
        for path in sorted((ROOT / "tests" / "transcripts" / area).rglob("*.transcript")):
            case = transcript_case.read(path)
            number = character_set(case)
            for text in commands(case, name) if number is not None else []:
                first = FIRST + number + len(CHARACTER_SETS) * (count % TURNS)
                (folder / f"{path.parent.name}-{path.stem}-{count}").write_bytes(bytes([first]) + text)
                count += 1
    if count == 0:
        sys.exit(f"transcript_corpus.py: no transcript has {name}")


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2:-1], pathlib.Path(sys.argv[-1]))
