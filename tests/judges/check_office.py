#!/usr/bin/env python3
"""Prints what is wrong with packages of Office Open XML, one line each; nothing for a sound one.

usage: check_office.py FILE...

Every part is XML that can be read and has a content type; relations have ids of their own, known targets and are all used;
slides, shapes, masters and layouts have numbers of their own.
"""

import posixpath
import re
import sys
import xml.etree.ElementTree
import zipfile

RELATIONS = "{http://schemas.openxmlformats.org/package/2006/relationships}Relationship"
USED = "{http://schemas.openxmlformats.org/officeDocument/2006/relationships}"
TYPES = "{http://schemas.openxmlformats.org/package/2006/content-types}"
# Parts that others find by the type of their relation, without naming it.
FOUND_BY_TYPE = re.compile(r"/(slideMaster|slideLayout|notesMaster|notesSlide|slide|theme|presProps|viewProps|tableStyles|styles|"
                           r"settings|fontTable|webSettings|numbering|footnotes|endnotes|sharedStrings|vbaProject|calcChain)$")


def source_of(name):
    folder, file = posixpath.split(name)
    return posixpath.join(posixpath.dirname(folder), file[:-len(".rels")])


def check_relations(package, names, complain):
    for name in sorted(each for each in names if each.endswith(".rels")):
        source = source_of(name)
        if source and source not in names:
            complain(f"{name}: there is no {source}")
            continue
        text = package.read(source).decode("utf-8") if source else ""
        ids = []
        for relation in xml.etree.ElementTree.fromstring(package.read(name)).iter(RELATIONS):
            ids.append(relation.get("Id"))
            target = relation.get("Target")
            if relation.get("TargetMode") != "External":
                whole = posixpath.normpath(posixpath.join(posixpath.dirname(source), target)).lstrip("/")
                if whole not in names:
                    complain(f"{name}: {target} is not there")
            if source and not FOUND_BY_TYPE.search(relation.get("Type")) and f'"{relation.get("Id")}"' not in text:
                complain(f"{name}: nothing uses {relation.get('Id')}, {target}")
        if len(set(ids)) != len(ids):
            complain(f"{name}: an id stands twice")
        for used in re.findall(r' r:(?:id|embed|link)="([^"]*)"', text):
            if used not in ids:
                complain(f"{source}: there is no relation {used}")


def check_types(package, names, complain):
    types = xml.etree.ElementTree.fromstring(package.read("[Content_Types].xml"))
    extensions = {each.get("Extension") for each in types.iter(TYPES + "Default")}
    parts = [each.get("PartName").lstrip("/") for each in types.iter(TYPES + "Override")]
    if len(set(parts)) != len(parts):
        complain("a part has two content types")
    for name in sorted(set(parts) - set(names)):
        complain(f"[Content_Types].xml: there is no {name}")
    for name in names:
        extension = name.rsplit(".", 1)[-1]
        if name != "[Content_Types].xml" and name not in parts and extension not in extensions:
            complain(f"{name} has no content type")
        if name not in parts and extension == "xml" and name != "[Content_Types].xml":
            complain(f"{name} has only the content type of any XML")


def check_numbers(name, tree, complain):
    for path in (".//{*}cNvPr", ".//{*}docPr", ".//{*}sldId", ".//{*}sldLayoutId", ".//{*}sldMasterId"):
        ids = [each.get("id") for each in tree.iterfind(path)]
        for twice in sorted({each for each in ids if ids.count(each) > 1}):
            complain(f"{name}: the number {twice} stands twice")


def check(file):
    complaints = []
    with zipfile.ZipFile(file) as package:
        names = package.namelist()
        if len(set(names)) != len(names):
            complaints.append("a part stands twice")
        if package.testzip() is not None:
            complaints.append("the archive is damaged")
        for name in names:
            if name.endswith((".xml", ".rels")):
                try:
                    check_numbers(name, xml.etree.ElementTree.fromstring(package.read(name)), complaints.append)
                except xml.etree.ElementTree.ParseError as problem:
                    complaints.append(f"{name}: {problem}")
        check_relations(package, names, complaints.append)
        check_types(package, names, complaints.append)
    return complaints


for argument in sys.argv[1:]:
    for complaint in check(argument):
        print(complaint)
