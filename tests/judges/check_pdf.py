#!/usr/bin/env python3
"""Prints what is wrong with tagged PDF files, one line each; nothing for good ones, or without the readers that judge.

usage: check_pdf.py FILE...

qpdf reads the file whole. Then the structure is walked: every element knows its parent, header cells have a scope, figures
an alternative text, footnotes a name of their own, and what cells call their headers is there. Every piece of text belongs to
one element, which knows it, or is an artifact; every link belongs to an element.
"""

import collections
import shutil
import subprocess
import sys

try:
    import pikepdf
except ImportError:
    sys.exit(0)

TYPES = {"/Document", "/H1", "/H2", "/H3", "/H4", "/H5", "/H6", "/P", "/Table", "/Caption", "/THead", "/TBody", "/TR", "/TH",
         "/TD", "/Figure", "/L", "/LI", "/Lbl", "/LBody", "/Note", "/Reference", "/Link"}
CHILDREN = {"/Table": {"/Caption", "/THead", "/TBody"}, "/THead": {"/TR"}, "/TBody": {"/TR"}, "/TR": {"/TH", "/TD"},
            "/L": {"/LI"}, "/LI": {"/Lbl", "/LBody"}}
SHOWING = {"Tj", "TJ", "Do", "S", "f", "'", '"'}


class Judge:
    def __init__(self, pdf):
        self.pdf = pdf
        self.complaints = []
        self.owners = collections.Counter()  # (page, number) -> how many elements name that piece of content
        self.ids = {}
        self.wanted = []
        self.annotations = set()

    def say(self, text):
        self.complaints.append(text)

    def attribute(self, element, key):
        owned = element.get("/A")
        for each in owned if isinstance(owned, pikepdf.Array) else [owned] if owned is not None else []:
            if key in each:
                return each[key]
        return None

    def element(self, element, parent):
        kind = str(element.S)
        name = f"{kind} ({element.objgen[0]})"
        if kind not in TYPES:
            self.say(f"{name} is of no known type")
        if element.P.objgen != parent.objgen:
            self.say(f"{name} has another parent")
        if kind == "/TH" and str(self.attribute(element, "/Scope")) not in ("/Row", "/Column"):
            self.say(f"{name} has no scope")
        if kind == "/Figure" and not str(element.get("/Alt", "")):
            self.say(f"{name} has no alternative text")
        if kind == "/Note" and "/ID" not in element:
            self.say(f"{name} has no name")
        if "/ID" in element:
            if str(element.ID) in self.ids:
                self.say(f"{name} has the name of another element")
            self.ids[str(element.ID)] = element.objgen
        self.wanted += [(name, str(each)) for each in self.attribute(element, "/Headers") or []]
        self.kids(element, kind, name)

    def kids(self, element, kind, name):
        kids = element.get("/K", pikepdf.Array())
        for kid in kids if isinstance(kids, pikepdf.Array) else [kids]:
            if isinstance(kid, int):
                self.owners[(element.Pg.objgen, kid, element.objgen)] += 1
            elif kid.get("/Type") == "/MCR":
                self.owners[(kid.Pg.objgen, int(kid.MCID), element.objgen)] += 1
            elif kid.get("/Type") == "/OBJR":
                self.annotations.add((kid.Obj.objgen, element.objgen))
            else:
                if str(kid.S) not in CHILDREN.get(kind, TYPES):
                    self.say(f"{name} holds a {kid.S}")
                self.element(kid, element)

    def page(self, page, parents):
        label = f"page {page.index + 1}"
        owners = parents.get(int(page.obj.get("/StructParents", -1)))
        if owners is None:
            return self.say(f"{label} is not in the tree of parents")
        marked = []
        for operands, operator in pikepdf.parse_content_stream(page.obj):
            operator = str(operator)
            if operator in ("BDC", "BMC"):
                number = operands[1].get("/MCID") if operator == "BDC" and isinstance(operands[1], pikepdf.Dictionary) else None
                marked.append(str(operands[0]))
                if number is not None:
                    number = int(number)
                    one = owners[number].objgen if number < len(owners) else None
                    if self.owners.pop((page.obj.objgen, number, one), 0) != 1:
                        self.say(f"{label}: content {number} does not belong to one element that knows it")
            elif operator == "EMC":
                marked.pop()
            elif operator in SHOWING and not marked:
                self.say(f"{label}: {operator} stands outside of all content that is marked")
        if marked:
            self.say(f"{label}: marked content does not end")
        for link in page.obj.get("/Annots", []):
            owner = parents.get(int(link.StructParent))
            if owner is None or (link.objgen, owner.objgen) not in self.annotations:
                self.say(f"{label}: a link belongs to no element")
            if not str(link.get("/Contents", "")):
                self.say(f"{label}: a link says nothing")
            if link.Dest[0].objgen not in self.pages:
                self.say(f"{label}: a link leads nowhere")

    def judge(self):
        root = self.pdf.Root
        if not str(root.get("/Lang", "")):
            self.say("the file has no language")
        if not root.get("/MarkInfo", {}).get("/Marked", False):
            self.say("the file does not say that it is tagged")
        if not root.get("/ViewerPreferences", {}).get("/DisplayDocTitle", False) or not str(self.pdf.docinfo.get("/Title", "")):
            self.say("the title is not shown")
        tree = root.StructTreeRoot
        self.pages = {page.obj.objgen for page in self.pdf.pages}
        self.element(tree.K, tree)
        parents = dict(pikepdf.NumberTree(tree.ParentTree).items())
        for page in self.pdf.pages:
            self.page(page, parents)
        for (page, number, owner), count in self.owners.items():
            self.say(f"element {owner[0]} names content {number} of object {page[0]}, which is not there")
        for name, header in self.wanted:
            if header not in self.ids:
                self.say(f"{name} names a header {header} that is not there")
        if "/IDTree" in tree:
            named = {str(key): value.objgen for key, value in pikepdf.NameTree(tree.IDTree).items()}
            if named != self.ids:
                self.say("the tree of names is not that of the elements")
        elif self.ids:
            self.say("there is no tree of names")
        return self.complaints


for name in sys.argv[1:]:
    if shutil.which("qpdf"):
        check = subprocess.run(["qpdf", "--check", name], capture_output=True, text=True)
        if check.returncode != 0:
            print(check.stdout + check.stderr)
    with pikepdf.open(name) as opened:
        sys.setrecursionlimit(10000)
        print("".join(each + "\n" for each in Judge(opened).judge()), end="")
