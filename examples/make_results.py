#!/usr/bin/env python3
"""Makes tables and charts of the data sets in examples/data, in the form that `vexa import` reads.

usage: examples/make_results.py [--language en|de] [FOLDER]     (the working folder without one)

Writes survey.json, climate.json, harvest.json, trial.json and shop.json. For a document of all of them:

    examples/make_results.py results
    vexa import results.vxv results/*.json
"""

import argparse
import csv
import json
import pathlib
import sys

from reports import climate, harvest, shop, survey, trial
from reports.words import Words

HERE = pathlib.Path(__file__).resolve().parent
REPORTS = {"survey": survey, "climate": climate, "harvest": harvest, "trial": trial, "shop": shop}


def results(name, say):
    """The results of one data set."""
    with open(HERE / "data" / f"{name}.csv", encoding="utf-8", newline="") as file:
        rows = list(csv.DictReader(file))
    return {"vexaResults": 1, "name": "results", "items": [REPORTS[name].report(say, rows)]}


def main(arguments):
    parser = argparse.ArgumentParser(description="Makes tables and charts of the data sets in examples/data.")
    parser.add_argument("--language", choices=["en", "de"], default="en", help="of titles and labels (en)")
    parser.add_argument("folder", nargs="?", default=".", help="where the five files go (the working folder)")
    options = parser.parse_args(arguments)
    folder = pathlib.Path(options.folder)
    folder.mkdir(parents=True, exist_ok=True)
    say = Words(options.language)
    for name in REPORTS:
        text = json.dumps(results(name, say), ensure_ascii=False, separators=(",", ":"))
        (folder / f"{name}.json").write_text(text + "\n", encoding="utf-8")
    for text in sorted(say.missing):
        print(f"make_results: no translation of \"{text}\"", file=sys.stderr)
    return 1 if say.missing else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
