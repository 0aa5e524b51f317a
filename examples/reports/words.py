"""Labels in the language of the reader: English as it stands in the sources, German out of german.tsv."""

import csv
import pathlib

MONTHS = ["January", "February", "March", "April", "May", "June", "July", "August", "September", "October", "November",
          "December"]
WEEKDAYS = ["Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"]


class Words:
    """say("^1 by ^2", "Income", "Region"): translates the text and its arguments and puts these into it. Names and numbers,
    which are the same in every language, come as Name."""

    def __init__(self, language):
        self._texts = None
        if language != "en":
            path = pathlib.Path(__file__).resolve().parent / "german.tsv"
            with open(path, encoding="utf-8", newline="") as file:
                self._texts = dict(csv.reader(file, delimiter="\t", quoting=csv.QUOTE_NONE))
        self.missing = set()  # what was asked for and has no translation

    def __call__(self, text, *arguments):
        said = self._translated(text)
        for number, argument in enumerate(arguments, start=1):
            said = said.replace(f"^{number}", self._translated(argument))
        return said

    def _translated(self, text):
        if isinstance(text, Name) or self._texts is None:
            return str(text)
        if text not in self._texts:
            self.missing.add(text)
        return self._texts.get(text, text)


class Name(str):
    """Is not translated."""
