#!/usr/bin/env python3
"""modification_peer.py COUNT: the edits of modification_bench.cc on as many tables kept as XML. Prints nanoseconds a
table: of the edits alone, and with reading the XML before and writing it afterwards."""
import sys
import time
import xml.etree.ElementTree as ElementTree

ROWS, COLUMNS = 40, 8


def table(seed):
    made = ElementTree.Element("table", title=f"Measured values of study {seed}")
    head = ElementTree.SubElement(made, "columns")
    for column in range(COLUMNS):
        ElementTree.SubElement(head, "label", text=f"Statistic {column}", format="F8.2")
    random = (seed * 2654435761 + 1) & 0xFFFFFFFF
    for row in range(ROWS):
        line = ElementTree.SubElement(made, "row")
        ElementTree.SubElement(line, "label", text=f"Variable {row}")
        for _ in range(COLUMNS):
            random = (random * 1664525 + 1013904223) & 0xFFFFFFFF
            ElementTree.SubElement(line, "cell", value=repr((random >> 8) / 1000))
    return made


def restyle(made):
    for label in made.iter("label"):
        label.set("bold", "true")
        label.set("color", "#003060")
    for cell in made.iter("cell"):
        cell.set("italic", "false")
        cell.set("format", "COMMA12.1")
        if float(cell.get("value")) >= 12000:
            cell.set("background", "#ffe0a0")


def sort(made, column):
    rows = made.findall("row")
    for row in rows:
        made.remove(row)
    rows.sort(key=lambda row: float(row.findall("cell")[column].get("value")), reverse=True)
    made.extend(rows)


def main():
    texts = [ElementTree.tostring(table(seed)) for seed in range(int(sys.argv[1]))]
    start = time.process_time_ns()
    tables = [ElementTree.fromstring(text) for text in texts]
    read = time.process_time_ns()
    for each in tables:
        restyle(each)
        sort(each, 2)
    edited = time.process_time_ns()
    texts = [ElementTree.tostring(each) for each in tables]
    written = time.process_time_ns()
    print((edited - read) / len(tables), (written - start) / len(tables))


main()
