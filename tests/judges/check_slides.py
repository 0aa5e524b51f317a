#!/usr/bin/env python3
"""Shows a presentation with a program for presentations, and prints what is on its pages: one line a slide, its words divided by
blanks. Prints nothing without that program.

usage: check_slides.py FILE
"""

import os
import shutil
import subprocess
import sys
import tempfile

if shutil.which("soffice") is None or shutil.which("pdftotext") is None:
    print("soffice or pdftotext is not installed: no slide is shown", file=sys.stderr)
    sys.exit(0)

with tempfile.TemporaryDirectory() as folder:
    for form in ("pdf", "odp"):
        subprocess.run(["soffice", f"-env:UserInstallation=file://{folder}/profile", "--headless", "--convert-to", form,
                        "--outdir", folder, sys.argv[1]], check=True, capture_output=True, timeout=120)
    name = os.path.splitext(os.path.basename(sys.argv[1]))[0]
    if not os.path.getsize(f"{folder}/{name}.odp"):
        print("there is no presentation of the program's own form")
    text = subprocess.run(["pdftotext", "-layout", f"{folder}/{name}.pdf", "-"], check=True, capture_output=True).stdout.decode()
    for page in text.split("\f")[:-1]:
        print(" ".join(page.split()))
