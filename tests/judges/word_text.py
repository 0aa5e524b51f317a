#!/usr/bin/env python3
"""Prints what a word processor reads in text documents, as plain text; nothing without LibreOffice.

usage: word_text.py FILE...

Each file's text stands below a line with its name.
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile

office = shutil.which("soffice")
if office is None:
    sys.exit(0)

with tempfile.TemporaryDirectory() as folder:
    for name in sys.argv[1:]:
        file = pathlib.Path(name).resolve()
        subprocess.run([office, f"-env:UserInstallation=file://{folder}/profile", "--headless", "--convert-to",
                        "txt:Text (encoded):UTF8", "--outdir", folder, str(file)],
                       check=False, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=120)
        text = pathlib.Path(folder) / (file.stem + ".txt")
        print(f"== {file.name}")
        print(text.read_text(encoding="utf-8-sig") if text.is_file() else "(not read)")
        text.unlink(missing_ok=True)
