"""Workbooks of other programs, as they come to be in the folders of users: charts, names, comments, macros and all."""

import pathlib
import subprocess
import zipfile

import openpyxl
import openpyxl.chart
import openpyxl.comments
import openpyxl.formatting.rule
import openpyxl.worksheet.datavalidation
import openpyxl.worksheet.table
import xlsxwriter
from openpyxl.workbook.defined_name import DefinedName


def by_openpyxl(path):
    book = openpyxl.Workbook()
    sheet = book.active
    sheet.title = "Data"
    for row in range(1, 21):
        sheet.append([f"Name {row}", row * 1.5, row, f"=B{row}*2"])
    sheet.merge_cells("F1:H3")
    sheet["F1"] = "merged"
    sheet.column_dimensions["A"].width = 30
    sheet.row_dimensions[2].height = 40
    sheet["B2"].comment = openpyxl.comments.Comment("a remark", "somebody")
    validation = openpyxl.worksheet.datavalidation.DataValidation(type="list", formula1='"a,b,c"')
    validation.add("C1:C20")
    sheet.add_data_validation(validation)
    sheet.conditional_formatting.add(
        "B1:B20", openpyxl.formatting.rule.ColorScaleRule(start_type="min", start_color="FFAA0000", end_type="max",
                                                          end_color="FF00AA00"))
    sheet["A5"].hyperlink = "https://example.org/?a=1&b=2"
    sheet.auto_filter.ref = "A1:D20"
    sheet.freeze_panes = "B2"
    sheet.print_title_rows = "1:1"
    chart = openpyxl.chart.BarChart()
    chart.add_data(openpyxl.chart.Reference(sheet, min_col=2, min_row=1, max_row=20))
    sheet.add_chart(chart, "J2")
    other = book.create_sheet("Other")
    other.append(["key", "value"])
    for row in range(1, 6):
        other.append([f"k{row}", row])
    other.add_table(openpyxl.worksheet.table.Table(displayName="Keys", ref="A1:B6"))
    book.create_chartsheet("Chart").add_chart(openpyxl.chart.LineChart())
    book.defined_names.append(DefinedName("Everything", attr_text="Data!$A$1:$D$20"))
    book.properties.title = "Of others"
    book.save(path)


def by_xlsxwriter(path, macros=None):
    book = xlsxwriter.Workbook(path)
    sheet = book.add_worksheet("Data")
    bold = book.add_format({"bold": True, "bg_color": "#FFFF00", "border": 1})
    sheet.write_row(0, 0, ["name", "x", "y"], bold)
    for row in range(1, 30):
        sheet.write(row, 0, f"n{row}")
        sheet.write(row, 1, row / 7)
        sheet.write_formula(row, 2, f"=B{row + 1}*2", None, row / 7 * 2)
    sheet.write_rich_string("E1", "plain ", bold, "bold", " plain")
    sheet.write_array_formula("E3:E5", "{=B2:B4*2}", None, 1)
    sheet.write_dynamic_array_formula("F3:F5", "=SORT(B2:B4)")
    sheet.write_comment("A1", "a remark")
    sheet.data_validation("B2:B30", {"validate": "decimal", "criteria": ">", "value": 0})
    sheet.conditional_format("B2:B30", {"type": "data_bar", "data_bar_2010": True})
    sheet.add_sparkline("G2", {"range": "Data!B2:B10"})
    sheet.add_table("I2:K5", {"name": "Small", "columns": [{"header": "a"}, {"header": "b"}, {"header": "c"}]})
    sheet.set_column("A:A", 20)
    sheet.set_row(3, 30)
    sheet.set_h_pagebreaks([10, 20])
    sheet.insert_textbox("M2", "a box")
    sheet.set_header("&Ccentre")
    chart = book.add_chart({"type": "line"})
    chart.add_series({"values": "=Data!$B$2:$B$30"})
    sheet.insert_chart("M10", chart)
    second = book.add_worksheet("Second & <third>")
    second.write("B2", 42)
    second.protect("secret")
    second.insert_button("D4", {"macro": "nothing", "caption": "push"})
    hidden = book.add_worksheet("Hidden")
    hidden.hide()
    book.define_name("Total", "=Data!$B$2:$B$30")
    book.set_properties({"title": "By a writer"})
    book.set_custom_property("number", 3)
    if macros is not None:
        book.add_vba_project(macros)
    book.close()


def with_pivot_table(path):
    """The parts of a pivot table beside a sheet, as small as they can be."""
    book = xlsxwriter.Workbook(path)
    for name in ("Data", "Pivot"):
        sheet = book.add_worksheet(name)
        sheet.write_row(0, 0, ["region", "sales"])
        sheet.write_row(1, 0, ["north", 3])
    book.close()
    with zipfile.ZipFile(path) as archive:
        parts = {name: archive.read(name) for name in archive.namelist()}
    main = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
    relations = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
    package = "http://schemas.openxmlformats.org/package/2006/relationships"

    def relation(kind, target, number="rId1"):
        return f'<Relationship Id="{number}" Type="{relations}/{kind}" Target="{target}"/>'

    def related(*each):
        return f'<Relationships xmlns="{package}">{"".join(each)}</Relationships>'.encode()

    parts["xl/pivotCache/pivotCacheDefinition1.xml"] = (
        f'<pivotCacheDefinition xmlns="{main}" xmlns:r="{relations}" r:id="rId1" recordCount="1"><cacheSource '
        'type="worksheet"><worksheetSource ref="A1:B2" sheet="Data"/></cacheSource><cacheFields count="2">'
        '<cacheField name="region" numFmtId="0"><sharedItems count="1"><s v="north"/></sharedItems></cacheField>'
        '<cacheField name="sales" numFmtId="0"><sharedItems containsSemiMixedTypes="0" containsString="0" '
        'containsNumber="1" containsInteger="1" minValue="3" maxValue="3"/></cacheField></cacheFields>'
        '</pivotCacheDefinition>').encode()
    parts["xl/pivotCache/_rels/pivotCacheDefinition1.xml.rels"] = related(
        relation("pivotCacheRecords", "pivotCacheRecords1.xml"))
    parts["xl/pivotCache/pivotCacheRecords1.xml"] = (
        f'<pivotCacheRecords xmlns="{main}" count="1"><r><x v="0"/><n v="3"/></r></pivotCacheRecords>').encode()
    parts["xl/pivotTables/pivotTable1.xml"] = (
        f'<pivotTableDefinition xmlns="{main}" name="P" cacheId="1" dataCaption="Values"><location ref="D3:E5" '
        'firstHeaderRow="1" firstDataRow="1" firstDataCol="1"/><pivotFields count="2"><pivotField axis="axisRow" '
        'showAll="0"><items count="2"><item x="0"/><item t="default"/></items></pivotField><pivotField '
        'dataField="1" showAll="0"/></pivotFields><rowFields count="1"><field x="0"/></rowFields><dataFields '
        'count="1"><dataField name="Sum" fld="1"/></dataFields></pivotTableDefinition>').encode()
    parts["xl/pivotTables/_rels/pivotTable1.xml.rels"] = related(
        relation("pivotCacheDefinition", "../pivotCache/pivotCacheDefinition1.xml"))
    parts["xl/worksheets/_rels/sheet2.xml.rels"] = related(relation("pivotTable", "../pivotTables/pivotTable1.xml"))
    parts["xl/_rels/workbook.xml.rels"] = parts["xl/_rels/workbook.xml.rels"].replace(
        b"</Relationships>",
        relation("pivotCacheDefinition", "pivotCache/pivotCacheDefinition1.xml", "rId90").encode() + b"</Relationships>")
    parts["xl/workbook.xml"] = parts["xl/workbook.xml"].replace(
        b"</workbook>", b'<pivotCaches><pivotCache cacheId="1" r:id="rId90"/></pivotCaches></workbook>')
    kinds = {"pivotCache/pivotCacheDefinition1": "pivotCacheDefinition", "pivotCache/pivotCacheRecords1":
             "pivotCacheRecords", "pivotTables/pivotTable1": "pivotTable"}
    parts["[Content_Types].xml"] = parts["[Content_Types].xml"].replace(b"</Types>", "".join(
        f'<Override PartName="/xl/{part}.xml" ContentType="application/vnd.openxmlformats-officedocument.'
        f'spreadsheetml.{kind}+xml"/>' for part, kind in kinds.items()).encode() + b"</Types>")
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as archive:
        for name, content in parts.items():
            archive.writestr(name, content)


def with_prefixes(path, of):
    """The same workbook in the words of a producer that gives every element a prefix, and no numbers to cells."""
    import re
    main = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
    with zipfile.ZipFile(of) as archive, zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as out:
        for name in archive.namelist():
            text = archive.read(name)
            if f'xmlns="{main}"'.encode() in text and name.endswith(".xml"):
                words = text.decode()
                words = re.sub(r"<(/?)(?=[A-Za-z])(?![A-Za-z0-9]+:)", r"<\1x:", words)
                words = words.replace(f'xmlns="{main}"', f'xmlns:x="{main}"')
                if "worksheets/" in name:
                    words = re.sub(r'(<x:row) r="\d+"', r"\1", words) if "contiguous" in str(path) else words
                text = words.encode()
            out.writestr(name, text)


def by_libreoffice(path, of, folder):
    """The workbook as LibreOffice writes it; False where it is not there."""
    try:
        subprocess.run(["soffice", f"-env:UserInstallation=file://{folder}/profile", "--headless", "--convert-to", "xlsx",
                        "--outdir", f"{folder}/converted", str(of)], check=True, capture_output=True,
                       timeout=120)
    except (OSError, subprocess.SubprocessError):
        return False
    (pathlib.Path(folder) / "converted" / (pathlib.Path(of).stem + ".xlsx")).rename(path)
    return True
