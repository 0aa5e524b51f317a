"""Runs check_r.R, imports and shows what it wrote: a test of ctest. Where R is not installed, a line says so.

usage: check_r.py SOURCES PROGRAM
"""

import json
import pathlib
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent


def demand(holds, complaint):
    if not holds:
        sys.exit(f"check_r: {complaint}")


def same(found, wanted):
    demand(found == wanted, f"found {found!r}, wanted {wanted!r}")


def run(*arguments):
    result = subprocess.run([*map(str, arguments)], capture_output=True, text=True, check=False)
    demand(result.returncode == 0, f"{arguments}: {result.returncode}: {result.stdout}{result.stderr}")
    return result.stdout


def check_tables(frames):
    frame, one, three, flat, matrix, vector, empty, inner, summary = frames
    cells = [frame["cells"][i:i + 9] for i in range(0, 45, 9)]
    same(cells[0], ["N", "f", 20, 1.5, 1772668800, "b", "TRUE", 1772705229, 108000])
    same([row[3] for row in cells[2:]], [None, 0.1 + 0.2, 1e-20])
    same(cells[2][6], None)
    same(frame["caption"], "Caf\u00e9 \"x\" \\ \u6f22")
    same(frame["columns"][0]["categories"][2:5], [{"label": "age", "role": "mean"}, {"label": "income", "format": "F8.2"},
                                                 {"label": "when", "format": "DATE11"}])
    same((one["rows"][0]["categories"], one["cells"]), (["N", "S"], [2, 3]))
    same([axis["label"] for axis in three["rows"] + three["columns"]], ["region", "sex", "kind"])
    same(three["cells"], [0, 1, 1, 0, 0, 1, 2, 0])
    same([axis["label"] for axis in flat["rows"] + flat["columns"]], ["kind", "region", "sex"])
    same(flat["cells"], [0, 1, 0, 2, 1, 0, 1, 0])
    same(matrix["cells"], [1, "Inf", 2, None])
    same((vector["rows"][0]["categories"], vector["cells"]), (["x", "y"], [1, 2]))
    same(empty.get("cells", []), [])
    same((inner["columns"][0]["categories"], inner["cells"]), (["sex", "age.mean", "age.n"], ["f", 35, 2, "m", 109 / 3, 3]))
    same((summary["rows"][0]["categories"], summary["cells"]),
         (["Min.", "1st Qu.", "Median", "Mean", "3rd Qu.", "Max."], [1, 1.5, 2, 3, 4, 6]))


def main(sources, program):
    if not shutil.which("Rscript"):
        print("R is not installed, and was not tried")
        return
    with tempfile.TemporaryDirectory(prefix="vexa-r-") as name:
        folder = pathlib.Path(name)
        run("Rscript", "--vanilla", HERE / "check_r.R", pathlib.Path(sources) / "bindings" / "r" / "vexa.R", folder)
        document = folder / "r.vxv"
        run(program, "import", document, folder / "r.json")
        items = json.loads(run(program, "show", "--json", document))["items"]
        check_tables(items[0]["items"])
        same([item["type"] for item in items], ["header", "header", "header", "chart", "chart", "heading", "text"])
        model, coefficients = items[1]["items"]
        same(coefficients["rows"][0]["categories"], ["(Intercept)", "sexm", "regionS"])
        demand(abs(coefficients["cells"][0] - 28) < 1e-6, coefficients["cells"])
        same(model["columns"][0]["categories"][0], {"label": "R Square", "format": "F8.3"})
        same(items[2]["label"], "Logit")
        demand(items[3]["svg"].startswith("<?xml") and "png" in items[4], "the pictures are others")
        same(items[6]["text"], "Two lines\nof text.\a")
        shown = run(program, "show", "--language", "en", document, "--item", 2)
        for text in ("05-Mar-2026 10:07:09", "30:00:00", "0.30"):
            demand(text in shown, f"{text} is not in\n{shown}")


if __name__ == "__main__":
    main(*sys.argv[1:])
