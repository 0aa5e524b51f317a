#!/usr/bin/env python3
"""Prints what is wrong with text documents of Office Open XML, one line each; nothing for a sound one.

usage: check_docx.py FILE...

Elements stand in the order of their schema, as far as ours are concerned; rows of tables fill their grids, and merged cells begin
somewhere; styles are there; bookmarks have names and numbers of their own, and links lead to them. Where python-docx is
installed, it reads the document as well, and says how many paragraphs and tables there are other than we find.
"""

import sys
import xml.etree.ElementTree
import zipfile

W = "{http://schemas.openxmlformats.org/wordprocessingml/2006/main}"

# What may stand in an element, in this order. Anything else is complained of.
ORDERS = {
    "pPr": "pStyle keepNext keepLines pageBreakBefore framePr widowControl numPr suppressLineNumbers pBdr shd tabs "
           "suppressAutoHyphens kinsoku wordWrap overflowPunct topLinePunct autoSpaceDE autoSpaceDN bidi adjustRightInd "
           "snapToGrid spacing ind contextualSpacing mirrorIndents suppressOverlap jc textDirection textAlignment "
           "textboxTightWrap outlineLvl divId cnfStyle rPr sectPr pPrChange",
    "rPr": "rStyle rFonts b bCs i iCs caps smallCaps strike dstrike outline shadow emboss imprint noProof snapToGrid vanish "
           "webHidden color spacing w kern position sz szCs highlight u effect bdr shd fitText vertAlign rtl cs em lang "
           "eastAsianLayout specVanish oMath",
    "tblPr": "tblStyle tblpPr tblOverlap bidiVisual tblStyleRowBandSize tblStyleColBandSize tblW jc tblCellSpacing tblInd "
             "tblBorders shd tblLayout tblCellMar tblLook tblCaption tblDescription",
    "tcPr": "cnfStyle tcW gridSpan hMerge vMerge tcBorders shd noWrap tcMar textDirection tcFitText vAlign hideMark",
    "tcBorders": "top start left bottom end right insideH insideV tl2br tr2bl",
    "tblBorders": "top start left bottom end right insideH insideV",
    "tcMar": "top start left bottom end right",
    "tblCellMar": "top start left bottom end right",
    "tbl": "tblPr tblGrid tr",
    "tc": "tcPr p",
    "sectPr": "headerReference footerReference footnotePr endnotePr type pgSz pgMar paperSrc pgBorders lnNumType pgNumType "
              "cols formProt vAlign noEndnote titlePg textDirection bidi rtlGutter docGrid",
    "body": "sdt p tbl sectPr",
    "style": "name aliases basedOn next link autoRedefine hidden uiPriority semiHidden unhideWhenUsed qFormat locked personal "
             "rsid pPr rPr tblPr trPr tcPr tblStylePr",
    "styles": "docDefaults latentStyles style",
    "docDefaults": "rPrDefault pPrDefault",
    "settings": "writeProtection view zoom defaultTabStop characterSpacingControl updateFields compat themeFontLang",
}
# These may stand there in any order, and again.
MIXED = {"body", "trPr"}


def plain(tag):
    return tag[len(W):] if tag.startswith(W) else tag


def check_orders(name, tree, complain):
    for element in tree.iter():
        order = ORDERS.get(plain(element.tag))
        if order is None:
            continue
        order = order.split()
        places = []
        for child in element:
            if plain(child.tag) not in order:
                complain(f"{name}: {plain(child.tag)} in {plain(element.tag)}")
            else:
                places.append(order.index(plain(child.tag)))
        if plain(element.tag) not in MIXED and places != sorted(places):
            complain(f"{name}: what stands in {plain(element.tag)} is not in its order: {[plain(each.tag) for each in element]}")


def number(element, path, default=None):
    found = element.find(path)
    return default if found is None else int(found.get(W + "val"))


def check_table(name, table, complain):
    widths = [int(each.get(W + "w")) for each in table.iter(W + "gridCol")]
    if not 1 <= len(widths) <= 63:
        complain(f"{name}: a table of {len(widths)} columns")
    above = {}
    headers_end = False
    for row in table.findall(W + "tr"):
        is_header = row.find(f"{W}trPr/{W}tblHeader") is not None
        if is_header and headers_end:
            complain(f"{name}: a header row below others")
        headers_end = headers_end or not is_header
        column = 0
        begun = {}
        for cell in row.findall(W + "tc"):
            span = number(cell, f"{W}tcPr/{W}gridSpan", 1)
            if int(cell.find(f"{W}tcPr/{W}tcW").get(W + "w")) != sum(widths[column:column + span]):
                complain(f"{name}: a cell is not as wide as its columns")
            merge = cell.find(f"{W}tcPr/{W}vMerge")
            if merge is not None:
                begun[column] = span
                if merge.get(W + "val") != "restart":
                    if above.get(column) != span:
                        complain(f"{name}: a merged cell goes on that did not begin")
                    if any(cell.iter(W + "t")):
                        complain(f"{name}: a merged cell has a text where it goes on")
            if cell.find(W + "p") is None:
                complain(f"{name}: a cell without a paragraph")
            column += span
        if column != len(widths):
            complain(f"{name}: a row of {column} columns in a table of {len(widths)}")
        above = begun


def check_names(name, tree, styles, complain):
    for kind in ("pStyle", "rStyle", "tblStyle"):
        for used in sorted({each.get(W + "val") for each in tree.iter(W + kind)} - styles):
            complain(f"{name}: there is no style {used}")
    bookmarks = [each.get(W + "name") for each in tree.iter(W + "bookmarkStart")]
    ids = [each.get(W + "id") for each in tree.iter(W + "bookmarkStart")]
    if len(set(bookmarks)) != len(bookmarks) or len(set(ids)) != len(ids):
        complain(f"{name}: a bookmark stands twice")
    if ids != [each.get(W + "id") for each in tree.iter(W + "bookmarkEnd")]:
        complain(f"{name}: a bookmark does not end")
    for link in tree.iter(W + "hyperlink"):
        if link.get(W + "anchor") not in bookmarks:
            complain(f"{name}: the link {link.get(W + 'anchor')} leads nowhere")
    kinds = [each.get(W + "fldCharType") for each in tree.iter(W + "fldChar")]
    if kinds.count("begin") != kinds.count("end") or kinds.count("begin") != kinds.count("separate"):
        complain(f"{name}: a field does not end")


def check_body(name, body, complain):
    children = list(body)
    for one, other in zip(children, children[1:]):
        if plain(one.tag) == "tbl" == plain(other.tag):
            complain(f"{name}: two tables touch")
    if plain(children[-1].tag) != "sectPr" or plain(children[-2].tag) != "p":
        complain(f"{name}: it does not end with a paragraph and its section")


def check_with_library(file, tree, complain):
    try:
        import docx
    except ImportError:
        return
    document = docx.Document(file)
    body = tree.find(W + "body")
    if len(document.paragraphs) != len(body.findall(W + "p")) or len(document.tables) != len(body.findall(W + "tbl")):
        complain("python-docx finds other paragraphs or tables")
    for table in document.tables:
        for row in table.rows:
            for cell in row.cells:
                cell.text  # raises where cells do not fit their grid
    for section in document.sections:
        if section.page_width is None or section.footer.paragraphs[0].style.name != "Footer":
            complain("a section without a page or a foot")


def check(file):
    complaints = []
    complain = complaints.append
    with zipfile.ZipFile(file) as package:
        parts = {name: xml.etree.ElementTree.fromstring(package.read(name)) for name in package.namelist()
                 if name.startswith("word/") and name.endswith(".xml")}
    styles = {each.get(W + "styleId") for each in parts["word/styles.xml"].iter(W + "style")}
    for style in parts["word/styles.xml"].iter(W + "style"):
        base = style.find(W + "basedOn")
        if base is not None and base.get(W + "val") not in styles:
            complain(f"there is no style {base.get(W + 'val')}")
    for name, tree in sorted(parts.items()):
        check_orders(name, tree, complain)
        check_names(name, tree, styles, complain)
        for table in tree.iter(W + "tbl"):
            check_table(name, table, complain)
    check_body("word/document.xml", parts["word/document.xml"].find(W + "body"), complain)
    check_with_library(file, parts["word/document.xml"], complain)
    return complaints


for argument in sys.argv[1:]:
    for complaint in check(argument):
        print(complaint)
