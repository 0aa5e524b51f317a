"""Writes results with bindings/python/vexa_results.py, imports and shows them: a test of ctest. What needs pandas or matplotlib is
tried where they are installed.

usage: check_python.py SOURCES PROGRAM
"""

import datetime
import decimal
import json
import math
import pathlib
import subprocess
import sys
import tempfile

SOURCES = pathlib.Path(sys.argv[1])
sys.path.insert(0, str(SOURCES / "bindings" / "python"))
import vexa_results  # noqa: E402, which stands there

PROGRAM = sys.argv[2]
SQUARE = '<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"/>'


def demand(holds, complaint):
    if not holds:
        sys.exit(f"check_python: {complaint}")


def same(found, wanted):
    demand(found == wanted, f"found {found!r}, wanted {wanted!r}")


def run(*arguments):
    result = subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True, text=True, check=False)
    demand(result.returncode == 0 and not result.stderr, f"{arguments}: {result.returncode}: {result.stderr}")
    return result.stdout


class Case:
    """Results that are imported, with what the program prints of them."""

    def __init__(self, folder, name):
        self.results = vexa_results.Results(name)
        self._document = folder / f"{name}.vxv"
        self._file = folder / f"{name}.json"

    def imported(self):
        self.results.write(self._file)
        run("import", "--language", "en", self._document, self._file)
        return json.loads(run("show", "--json", self._document))

    def shown(self, item):
        return run("show", "--language", "en", self._document, "--item", item)


def check_plain(folder):
    case = Case(folder, "plain")
    with case.results.section("Means", command="Means") as means:
        means.table([["a", 1], ["b", None]], "Rows", rows=["x", "y"], columns=["name", "N"])
        means.table({"mean": [1.5, math.nan], "weight": [3, 2**60]}, "Columns", rows=[("Europe", "North"), ("Europe", "South")],
                    formats={"mean": "F8.2"}, roles={"weight": "count"}, footnotes=["Weighted."], caption="Below.")
        means.table([{"a": 1, "b": 2}, {"a": 3, "c": True}], "Records")
        means.table({"r1": {"u": decimal.Decimal("1.25"), "v": math.inf}, "r2": {"v": "text \ud800 \x00"}}, "Rows of dicts")
        means.table([[datetime.date(2026, 3, 5), datetime.datetime(2026, 3, 5, 10, 7, 9), datetime.timedelta(hours=30)]],
                    "Times", columns=["day", "moment", "span"])
    case.results.text("Two lines\nof text.")
    case.results.heading("Heading")
    case.results.chart(SQUARE, alternative_text="A square.", label="Square")
    document = case.imported()
    same([item["type"] for item in document["items"]], ["header", "text", "heading", "chart"])
    tables = document["items"][0]["items"]
    same(tables[0]["cells"], ["a", 1, "b", None])
    same(tables[1]["rows"][0]["categories"], [{"group": "Europe", "categories": ["North", "South"]}])
    same(tables[1]["cells"], [1.5, 3, None, str(2**60)])
    same(tables[1]["columns"][0]["categories"], [{"label": "mean", "format": "F8.2"}, {"label": "weight", "role": "count"}])
    same(tables[2]["cells"], [1, 2, None, 3, None, "True"])
    same(tables[3]["cells"], [1.25, "inf", None, "text ? \x00"])
    shown = case.shown(6)
    for text in ("05-Mar-2026", "05-Mar-2026 10:07:09", "30:00:00"):
        demand(text in shown, f"{text} is not in\n{shown}")
    refused = [lambda: case.results.table([[1, 2], [3]]), lambda: case.results.table({"a": [1], "b": [1, 2]}),
               lambda: case.results.table([[1]], rows=["a", "b"]), lambda: case.results.table([[1]], roles="sum"),
               lambda: case.results.chart(5)]
    for call in refused:
        try:
            call()
        except (ValueError, TypeError):
            continue
        demand(False, "a wrong call was taken")
    same(len(case.results.as_dict()["items"]), 4)


def check_pandas(folder):
    import numpy
    import pandas

    case = Case(folder, "frames")
    frame = pandas.DataFrame({"region": ["N", "N", "S", "S"], "sex": ["f", "m", "f", "m"], "income": [1.5, 2.5, 3.0, None],
                              "when": pandas.to_datetime(["2026-03-05", None, "2026-03-06", "2026-03-07"]),
                              "whole": pandas.array([1, None, 3, 4], dtype="Int64"), "kind": pandas.Categorical(list("abab"))})
    case.results.table(frame, "Frame")
    grouped = frame.groupby(["region", "sex"]).income.agg(["mean", "count"])
    case.results.table(grouped, "Nested rows", formats={"mean": "F8.1"})
    case.results.table(grouped.iloc[:3], "Not every combination")
    case.results.table(grouped.unstack(), "Nested columns", formats="F8.2")
    case.results.table(frame.income, "Series")
    case.results.table(pandas.DataFrame(numpy.float32([[0.5, 2]]), index=["r"], columns=["c", "c"]), "Doubled labels")
    case.results.table(pandas.DataFrame(columns=["a"]), "Without rows")
    days = pandas.date_range("2026-03-05", periods=2)
    case.results.table(pandas.DataFrame({"v": [1, 2]}, index=days), "Days")
    hours = pandas.MultiIndex.from_product([days, pandas.date_range("2026-03-05", periods=2, freq="6h")], names=["d", "h"])
    case.results.table(pandas.DataFrame({"v": range(4)}, index=hours), "Days and hours")
    tables = case.imported()["items"]
    same(tables[0]["cells"][:6], ["N", "f", 1.5, 1772668800, 1, "a"])
    same(tables[0]["cells"][9:11], [None, None])
    same(tables[0]["columns"][0]["categories"][3], {"label": "when", "format": "DATE11"})
    same([row["label"] for row in tables[1]["rows"]], ["region", "sex"])
    same([row["categories"] for row in tables[1]["rows"]], [["N", "S"], ["f", "m"]])
    same(tables[1]["cells"], [1.5, 1, 2.5, 1, 3, 1, None, 0])
    same(tables[2]["rows"], [{"label": "region / sex", "categories": [{"group": "N", "categories": ["f", "m"]},
                                                                     {"group": "S", "categories": ["f"]}]}])
    same([column.get("label") for column in tables[3]["columns"]], [None, "sex"])
    same(tables[3]["cells"], [1.5, 2.5, 1, 1, 3, None, 1, 0])
    demand("2.50" in case.shown(4), "a format of all columns is not shown")
    same(tables[5]["cells"], [0.5, 2])
    same(tables[7]["rows"][0]["categories"], ["2026-03-05", "2026-03-06"])
    same([row["categories"] for row in tables[8]["rows"]],
         [["2026-03-05", "2026-03-06"], ["2026-03-05 00:00:00", "2026-03-05 06:00:00"]])


def check_matplotlib(folder):
    import matplotlib

    matplotlib.use("Agg")
    from matplotlib import pyplot

    figure, axes = pyplot.subplots(figsize=(3, 2))
    axes.plot([1, 2, 3], [1, 4, 9])
    axes.set_title("Growth")
    case = Case(folder, "figures")
    case.results.chart(figure, alternative_text="A curve.", label="Growth")
    case.results.chart(axes)
    png = folder / "figure.png"
    figure.savefig(png)
    case.results.chart(png)
    items = case.imported()["items"]
    demand("Growth</text>" in items[0]["svg"], "letters are no letters")
    same(items[0]["svg"], items[1]["svg"])
    demand("png" in items[2], "no PNG")
    run("export", folder / "figures.vxv", folder / "figures.png")
    demand((folder / "figures3.png").is_file(), "the pictures cannot be drawn")


def main():
    with tempfile.TemporaryDirectory(prefix="vexa-python-") as name:
        folder = pathlib.Path(name)
        check_plain(folder)
        for module, check in (("pandas", check_pandas), ("matplotlib", check_matplotlib)):
            try:
                __import__(module)
            except ImportError:
                print(f"{module} is not installed, and was not tried")
                continue
            check(folder)
        print("done")


if __name__ == "__main__":
    main()
