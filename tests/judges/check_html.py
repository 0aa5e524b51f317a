#!/usr/bin/env python3
"""Prints what a strict reader of HTML complains of, one line each; nothing for a valid page, or without that reader.

usage: check_html.py FILE...
"""

import sys

try:
    import html5lib
except ImportError:
    sys.exit(0)

for name in sys.argv[1:]:
    parser = html5lib.HTMLParser(strict=False)
    with open(name, "rb") as page:
        tree = parser.parse(page.read(), override_encoding="utf-8")
    for (line, column), code, arguments in parser.errors:
        print(f"line {line}, column {column}: {html5lib.constants.E[code] % arguments}")
    ids = [element.get("id") for element in tree.iter() if element.get("id") is not None]
    for twice in sorted({each for each in ids if ids.count(each) > 1}):
        print(f"the id {twice} stands twice")
    links = [element.get("href") for element in tree.iter() if element.get("href", "").startswith("#")]
    for missing in sorted({each for each in links if each[1:] not in ids}):
        print(f"the link {missing} leads nowhere")
