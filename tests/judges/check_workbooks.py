#!/usr/bin/env python3
"""Exports into workbooks of other programs and compares: what the export has nothing to do with stays byte for byte, what
it changes still loads, and everything that was in the sheet is there.

usage: check_workbooks.py PROGRAM
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile
import warnings
import xml.etree.ElementTree
import zipfile

try:
    import openpyxl
    import workbook_corpus
except ImportError as missing:
    # The packages of the system belong to its own interpreter.
    if sys.executable != "/usr/bin/python3" and os.path.exists("/usr/bin/python3"):
        os.execv("/usr/bin/python3", ["/usr/bin/python3", *sys.argv])
    print(f"skipped: {missing}")
    sys.exit(77)
warnings.simplefilter("ignore")  # of what openpyxl does not know

MAIN = "{http://schemas.openxmlformats.org/spreadsheetml/2006/main}"
RELATIONS = "{http://schemas.openxmlformats.org/package/2006/relationships}"
# The order of what stands in a worksheet.
ORDER = """sheetPr dimension sheetViews sheetFormatPr cols sheetData sheetCalcPr sheetProtection protectedRanges scenarios
autoFilter sortState dataConsolidate customSheetViews mergeCells phoneticPr conditionalFormatting dataValidations hyperlinks
printOptions pageMargins pageSetup headerFooter rowBreaks colBreaks customProperties cellWatches ignoredErrors smartTags
drawing legacyDrawing legacyDrawingHF drawingHF picture oleObjects controls webPublishItems tableParts extLst""".split()
RESULTS = """{"vexaResults": 1, "name": "march", "items": [
  {"type": "table", "title": "Income & <more>", "rows": [{"label": "Region", "categories": [
     {"group": "Europe", "categories": ["North", "South"]}, {"label": "Total", "footnotes": [1]}]}],
   "columns": [{"label": "", "labelHidden": true, "categories": [{"label": "Mean", "format": "F8.2"}, {"label": "N", "format": "COMMA8.0"}]}],
   "cells": [1.5, 12000, 2.25, 14, {"value": 1.9, "bold": true}, 26], "footnotes": ["Without abroad."]},
  {"type": "chart", "svg": "<svg xmlns='http://www.w3.org/2000/svg' width='200' height='100'><rect width='150' height='90' fill='#47a'/></svg>",
   "alternativeText": "Rises."}]}"""
# Parts that every change of a workbook may touch.
LIST = {"[Content_Types].xml", "xl/workbook.xml", "xl/_rels/workbook.xml.rels", "xl/styles.xml", "xl/sharedStrings.xml"}

failures = 0


def complain(where, what):
    global failures
    failures += 1
    print(f"{where}: {what}")


def contents(path):
    with zipfile.ZipFile(path) as archive:
        if archive.testzip() is not None:
            complain(path, "the archive is damaged")
        return {name: archive.read(name) for name in archive.namelist()}


def cells(sheet):
    return {cell.coordinate: cell.value for row in sheet.iter_rows() for cell in row if cell.value is not None}


def check_parts(where, parts):
    """Every relation leads to a part, every part has a type, and sheets have their elements in order."""
    types = xml.etree.ElementTree.fromstring(parts["[Content_Types].xml"])
    named = {each.get("PartName") for each in types if each.get("PartName")}
    extensions = {each.get("Extension").lower() for each in types if each.get("Extension")}
    for part in sorted(named):
        if part[1:] not in parts:
            complain(where, f"the type of {part}, which is not there")
    for name, content in parts.items():
        if "/" + name not in named and name.rsplit(".")[-1].lower() not in extensions and name[0] != "[":
            complain(where, f"{name} has no type")
        if name.endswith(".rels"):
            folder = pathlib.PurePosixPath(name).parent.parent
            for each in xml.etree.ElementTree.fromstring(content):
                target = each.get("Target")
                if each.get("TargetMode") != "External" and not target.startswith("#"):
                    path = os.path.normpath(target[1:] if target.startswith("/") else str(folder / target))
                    if path not in parts:
                        complain(where, f"{name} leads to {target}, which is not there")
        elif name.startswith("xl/worksheets/") and name.endswith(".xml"):
            root = xml.etree.ElementTree.fromstring(content)
            ranks = [ORDER.index(each.tag[len(MAIN):]) for each in root if each.tag.startswith(MAIN)]
            if ranks != sorted(ranks):
                complain(where, f"{name} has its elements out of order: {[each.tag[len(MAIN):] for each in root]}")
            rows = [int(each.get("r")) for each in root.iter(MAIN + "row") if each.get("r")]
            if rows != sorted(set(rows)):
                complain(where, f"{name} has rows out of order")
            places = [each.get("r") for each in root.iter(MAIN + "c") if each.get("r")]
            if len(places) != len(set(places)):
                complain(where, f"{name} has a cell twice")


class Workbook:
    """One workbook, and what comes out of exports into it."""

    def __init__(self, program, path):
        self.program, self.path = program, path
        self.before = contents(path)

    def export(self, document, options, suffix):
        target = self.path.with_name(self.path.stem + suffix + self.path.suffix)
        target.write_bytes(self.path.read_bytes())
        kind = self.path.suffix[1:].upper()
        script = target.with_suffix(".vxs")
        script.write_text(f"OUTPUT OPEN FILE='{document}' NAME=a.\nOUTPUT EXPORT NAME=a /{kind} "
                          f"DOCUMENTFILE='{target}' {options}.\n")
        run = subprocess.run([self.program, "run", script], capture_output=True, text=True)
        return target, run

    def check(self, document, options, suffix, touched, kept):
        where = f"{self.path.name} {options}"
        target, run = self.export(document, options, suffix)
        if run.returncode != 0 or "error" in run.stderr:
            complain(where, run.stdout + run.stderr)
            return
        after = contents(target)
        check_parts(where, after)
        for name, content in self.before.items():
            may = name in LIST or any(re.fullmatch(pattern, name) for pattern in touched)
            if name not in after and not may:
                complain(where, f"{name} is lost")
            elif not may and after[name] != content:
                complain(where, f"{name} was changed")
        old = openpyxl.load_workbook(self.path, keep_vba=True)
        new = openpyxl.load_workbook(target, keep_vba=True)
        for name in old.sheetnames:
            if not hasattr(old[name], "iter_rows"):
                continue
            had, has = cells(old[name]), cells(new[name])
            lost = {place for place in had if has.get(place) != had[place]} if name in kept else set()
            if lost:
                complain(where, f"{name} lost {sorted(lost)[:5]}")
        return new


def check_workbook(program, path, document, sheet, other_drawing):
    workbook = Workbook(program, path)
    names = openpyxl.load_workbook(path, keep_vba=True).sheetnames
    app = r"docProps/app\.xml"
    workbook.check(document, "OPERATION=CREATESHEET SHEET='New'", "-new", [app], names)
    own = [r"xl/worksheets/sheet1\.xml", r"xl/worksheets/_rels/sheet1\.xml\.rels", other_drawing, r"xl/calcChain\.xml"]
    for location in ("LASTROW", "LASTCOLUMN"):
        new = workbook.check(document, f"OPERATION=MODIFYSHEET SHEET='{sheet}' LOCATION={location}", "-" + location.lower(),
                             own, names)
        if new is not None and "Income & <more>" not in cells(new[sheet]).values():
            complain(path.name, f"{location}: nothing was written")
    workbook.check(document, f"OPERATION=MODIFYSHEET SHEET='{sheet}' LOCATION=STARTCELL('B2')", "-over", own, names[1:])
    workbook.check(document, f"OPERATION=CREATESHEET SHEET='{sheet.upper()}'", "-replaced",
                   own + [r"xl/(drawings|charts|tables|printerSettings)/.*", r"xl/comments.*", r"xl/vmlDrawing.*",
                          r"xl/media/.*"], names[1:])


def check_pivot_table(program, path, document):
    """A pivot table is left whole: over it nothing is written, beside it there is."""
    workbook = Workbook(program, path)
    target, _ = workbook.export(document, "OPERATION=MODIFYSHEET SHEET='Pivot' LOCATION=STARTCELL('E5')", "-refused")
    if target.read_bytes() != path.read_bytes():
        complain(target.name, "the workbook was changed, though the export stands on its pivot table")
    workbook.check(document, "OPERATION=MODIFYSHEET SHEET='Pivot' LOCATION=STARTCELL('F3')", "-beside",
                   [r"xl/worksheets/sheet2\.xml", r"xl/worksheets/_rels/sheet2\.xml\.rels", r"xl/calcChain\.xml"], [])


def check_extensions(program, path, document):
    """Sparklines, newer formats and links go where they are written over, and stay elsewhere."""
    target, _ = Workbook(program, path).export(
        document, "OPERATION=MODIFYSHEET SHEET='Data' LOCATION=STARTCELL('A2')", "-extensions")
    sheet = contents(target)["xl/worksheets/sheet1.xml"].decode()
    found = re.findall(r"<xm:sqref>([^<]*)</xm:sqref>", sheet)
    # The export stands on A2 to C8; rows that it has no cells in keep what they have.
    if "G2" not in found or not any(re.fullmatch(r"B\d+:B30", each) for each in found) or "B2:B30" in found:
        complain(target.name, f"extensions are about {found}")


def check_new(program, folder, document):
    """A new workbook of each kind loads with what the document has."""
    for kind in ("xlsx", "xlsm"):
        path = folder / f"own.{kind}"
        subprocess.run([program, "export", document, path, "SHEET='Own'"], check=True, capture_output=True)
        check_parts(path.name, contents(path))
        book = openpyxl.load_workbook(path, keep_vba=True)
        sheet = book["Own"]
        found = [book.properties.title, len(sheet._images), *cells(sheet).values()]
        expected = ["march", 1, "Income & <more>", "Region", "Mean", "N", "Europe", "North", 1.5, 12000, "South", 2.25, 14,
                    "Total[a]", 1.9, 26, "[a] Without abroad."]
        if [str(each).replace(" ", "") for each in found] != [str(each).replace(" ", "") for each in expected]:
            complain(path.name, f"{found} in the place of {expected}")
        formats = {cell.number_format for row in sheet.iter_rows() for cell in row if isinstance(cell.value, (int, float))}
        if formats != {"0.00", "#,##0"}:
            complain(path.name, f"numbers are shown as {formats}")
    with zipfile.ZipFile(folder / "own.xlsm") as archive:
        (folder / "vbaProject.bin").write_bytes(archive.read("xl/vbaProject.bin"))


def check_in_office(path, folder):
    """What LibreOffice shows of the first sheet."""
    try:
        subprocess.run(["soffice", f"-env:UserInstallation=file://{folder}/profile", "--headless", "--convert-to",
                        "csv:Text - txt - csv (StarCalc):44,34,76,1,,1033,false,true",
                        "--outdir", str(folder / "shown"), str(path)], check=True, capture_output=True, timeout=120)
    except (OSError, subprocess.SubprocessError):
        return
    shown = (folder / "shown" / f"{path.stem}.csv").read_text()
    for text in ("Income & <more>", "North,1.50,\"12,000\"", "[a] Without abroad."):
        if text not in shown:
            complain(path.name, f"LibreOffice does not show {text} in {shown}")


def main():
    program = os.path.abspath(sys.argv[1])
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        (folder / "results.json").write_text(RESULTS)
        document = folder / "results.vxv"
        subprocess.run([program, "import", document, folder / "results.json"], check=True, capture_output=True)
        drawing = r"xl/drawings/(_rels/)?drawing1\.xml(\.rels)?"
        workbook_corpus.by_openpyxl(folder / "openpyxl.xlsx")
        check_new(program, folder, document)
        workbook_corpus.by_xlsxwriter(folder / "writer.xlsx")
        workbook_corpus.by_xlsxwriter(folder / "macros.xlsm", folder / "vbaProject.bin")
        workbook_corpus.with_pivot_table(folder / "pivot.xlsx")
        workbook_corpus.with_prefixes(folder / "prefixes.xlsx", folder / "openpyxl.xlsx")
        workbook_corpus.with_prefixes(folder / "contiguous.xlsx", folder / "openpyxl.xlsx")
        found = ["openpyxl.xlsx", "writer.xlsx", "macros.xlsm", "pivot.xlsx", "prefixes.xlsx", "contiguous.xlsx"]
        if workbook_corpus.by_libreoffice(folder / "office.xlsx", folder / "writer.xlsx", folder):
            found.append("office.xlsx")
        for each in found:
            check_workbook(program, folder / each, document, "Data", drawing)
        check_pivot_table(program, folder / "pivot.xlsx", document)
        check_extensions(program, folder / "writer.xlsx", document)
        for each in ("openpyxl", "writer", "pivot"):
            check_in_office(folder / f"{each}-lastrow.xlsx", folder)
    print(f"check_workbooks: {len(found)} workbooks, {failures} complaints")
    sys.exit(1 if failures else 0)


main()
