#!/usr/bin/env python3
"""Prints what is wrong with binary workbooks, one line each; nothing for a sound one.

usage: check_xls.py FILE...
       check_xls.py --before OLD --sheet NAME [--placed SAME --location {LASTROW|LASTCOLUMN|ROW,COLUMN}] NEW

A sound file: places that records name are where they should be, numbers of formats, fonts, texts and pictures exist, and
another reader (xlrd, where it is installed) takes it. With --before, everything of the old file is in the new one as it was,
but for the sheet NAME. With --placed, that has, besides what it had, what the first sheet of a workbook SAME has: below, to
the right, or from a cell (counted from 0) on; without, it is new or was replaced, and keeps its place.
"""

import argparse
import struct
import sys

from binary_workbook import BOF, CELLS, EOF, WITH_FORMULAS, Workbook, cells_of, merged_of

ROW, DBCELL, INDEX, DIMENSIONS, COLINFO = 0x208, 0xD7, 0x20B, 0x200, 0x7D
BOUNDSHEET, SST, EXTSST, FONT, FORMAT, XF = 0x85, 0xFC, 0xFF, 0x31, 0x41E, 0xE0
TABID, SUPBOOK, RECALCID, DRAWINGGROUP, DRAWING, OBJ, MERGED, BREAKS = 0x13D, 0x1AE, 0x1C1, 0xEB, 0xEC, 0x5D, 0xE5, 0x1B
# What an export may change where it stands.
MENDED_GLOBALS = {BOUNDSHEET, SST, EXTSST, TABID, SUPBOOK, RECALCID, DRAWINGGROUP}
ADDED_GLOBALS = {FONT, FORMAT, XF, BOUNDSHEET, SST, DRAWINGGROUP}
# Records about places: links with their tips, conditional formats with their rules, validations with their number.
OF_PLACES = {0x1B8, 0x800, 0x1B0, 0x1B1, 0x879, 0x87A, 0x87B, 0x1B2, 0x1BE}
OF_SHEET = CELLS | WITH_FORMULAS | {ROW, DBCELL, INDEX, DIMENSIONS, COLINFO, MERGED, DRAWING, OBJ, BREAKS}


def check_strings(book, complain):
    if not book.texts:
        return
    for record in book.all(EXTSST):
        step = record.unpack("<H")[0]
        for i in range((len(record.content) - 2) // 8):
            at, inside = struct.unpack_from("<IH", record.content, 2 + 8 * i)
            if (at, inside) != book.texts.places[i * step]:
                complain(f"the index of texts: entry {i} is {(at, inside)}, the text stands at {book.texts.places[i * step]}")
    fonts = len(book.all(FONT))
    for text, runs in book.texts.texts:
        for begin, font in runs:
            if font - (font > 4) >= fonts or font == 4 or begin > len(text.encode("utf-16-le", "surrogatepass")) // 2:
                complain(f"the text {text!r} has a run that cannot be")


def check_formats(book, complain):
    fonts, codes = len(book.all(FONT)), {each.unpack("<H")[0] for each in book.all(FORMAT)}
    if len(codes) != len(book.all(FORMAT)):
        complain("a number format has two codes")
    for place, record in enumerate(book.all(XF)):
        font, code = record.unpack("<HH")
        if font == 4 or font - (font > 4) >= fonts:
            complain(f"format {place}: there is no font {font}")
        if code >= 164 and code not in codes:
            complain(f"format {place}: there is no number format {code}")


def check_index(name, records, complain):
    blocks = [each.at for each in records if each.id == DBCELL]
    columns = [each.at for each in records if each.id == 0x55]
    for index in (each for each in records if each.id == INDEX):
        named = list(struct.unpack_from("<%dI" % ((len(index.content) - 16) // 4), index.content, 16))
        if named != blocks:
            complain(f"{name}: the index names {named[:4]}, the blocks stand at {blocks[:4]}")
        place = index.unpack("<I", 12)[0]
        if columns and place not in (columns[0], 0):
            complain(f"{name}: the index says that columns stand at {place}, they are at {columns[0]}")
    for block in (each for each in records if each.id == DBCELL):
        rows = [each for each in records if each.id == ROW and each.at == block.at - block.unpack("<I")[0]]
        if not rows:
            complain(f"{name}: a block at {block.at} begins with no row")


def check_sheet(book, name, complain):
    records = book.sheets[name]
    if book.kinds[name][1] != 0:
        return
    check_index(name, records, complain)
    cells = cells_of(records, book.texts.texts if book.texts else [])
    order = [struct.unpack_from("<HH", each.content) for each in records if each.id in CELLS]
    if order != sorted(order):
        complain(f"{name}: cells are not in their order")
    formats = len(book.all(XF))
    for place, (form, _, _) in cells.items():
        if form >= formats:
            complain(f"{name}: there is no format {form}, which the cell {place} has")
    extent = [each for each in records if each.id == DIMENSIONS][0].unpack("<IIHH")
    if cells and (extent[1] <= max(cells)[0] or extent[3] <= max(each[1] for each in cells) or extent[0] > min(cells)[0]):
        complain(f"{name}: there are cells beyond the dimensions {extent}")
    covered = set()
    for first, last, left, right in merged_of(records):
        for row in range(first, last + 1):
            for column in range(left, right + 1):
                if (row, column) in covered:
                    complain(f"{name}: two merged ranges meet in {(row, column)}")
                covered.add((row, column))
    check_drawing(book, name, records, complain)


def split_drawing(data):
    at = 0
    while at < len(data):
        version, number, length = struct.unpack_from("<HHI", data, at)
        if at + 8 + length > len(data):
            raise ValueError("a record of the drawing is too long")
        yield version, number, data[at + 8:at + 8 + length]
        at += 8 + length


def find_drawing(data, wanted):
    for version, number, content in split_drawing(data):
        if number == wanted:
            yield version, content
        if version & 15 == 15:
            yield from find_drawing(content, wanted)


def check_drawing(book, name, records, complain):
    data = b"".join(each.content for each in records if each.id == DRAWING)
    if not data:
        return
    group = b"".join(each.content for each in book.all(DRAWINGGROUP))
    pictures = len(list(find_drawing(group, 0xF007)))
    clusters = [content for _, content in find_drawing(group, 0xF006)][0][16:]
    owners = [struct.unpack_from("<II", clusters, 8 * i) for i in range(len(clusters) // 8)]
    (head_version, head), = find_drawing(data, 0xF008)
    shapes = [struct.unpack_from("<I", content)[0] for _, content in find_drawing(data, 0xF00A)]
    if struct.unpack_from("<I", head)[0] != len(shapes) or len(set(shapes)) != len(shapes):
        complain(f"{name}: the drawing counts {struct.unpack_from('<I', head)[0]} shapes, there are {len(shapes)}")
    for shape in shapes:
        owner, used = owners[shape // 1024 - 1]
        if owner != head_version >> 4 or shape % 1024 >= used:
            complain(f"{name}: the shape {shape} has a number that is not its drawing's")
    for _, options in find_drawing(data, 0xF00B):
        for at in range(0, len(options) - 5, 6):
            number, value = struct.unpack_from("<HI", options, at)
            if number == 0x4104 and not 1 <= value <= pictures:
                complain(f"{name}: there is no picture {value}")
    objects = [each.unpack("<HHHH")[3] for each in records if each.id == OBJ]
    if len(set(objects)) != len(objects):
        complain(f"{name}: two objects have one number")


def check_by_reader(path, complain):
    try:
        import xlrd
    except ImportError:
        return
    try:
        xlrd.open_workbook(path, formatting_info=True)
    except Exception as problem:
        complain(f"xlrd: {problem}")


def same_globals(old, new, complain):
    """Records of the old globals are there in their order, those of a kind before all that were added."""
    added = iter(new.globals)
    for record in old.globals:
        for other in added:
            if other.id == record.id and (record.id in MENDED_GLOBALS or other.raw == record.raw):
                break
            if other.id not in ADDED_GLOBALS:
                complain(f"globals: a record {other.id:#x} is new or changed")
                return
        else:
            complain(f"globals: a record {record.id:#x} is gone")
            return
    for number in (FONT, FORMAT, XF):
        before, after = old.all(number), new.all(number)
        if [each.raw for each in before] != [each.raw for each in after[:len(before)]]:
            complain(f"globals: records {number:#x} have other numbers")
    if old.texts and old.texts.texts != new.texts.texts[:len(old.texts.texts)]:
        complain("globals: texts have other numbers")
    before, after = ([c for _, c in find_drawing(b"".join(r.content for r in b.all(DRAWINGGROUP)), 0xF007)] for b in (old, new))
    without_count = lambda entry: entry[:24] + entry[28:]
    if [without_count(each) for each in before] != [without_count(each) for each in after[:len(before)]]:
        complain("globals: pictures have changed")


def same_sheets(old, new, changed, complain):
    names = list(new.sheets)
    if names[:len(old.sheets)] != list(old.sheets) or (changed not in old.sheets and names[-1] != changed):
        complain(f"sheets: {list(old.sheets)} became {names}")
    for name, records in old.sheets.items():
        if new.kinds[name] != old.kinds[name]:
            complain(f"{name}: its kind or visibility has changed")
        if name == changed:
            continue
        others = new.sheets[name]
        # Places in the index move, all else stays.
        if [each.raw for each in records if each.id != INDEX] != [each.raw for each in others if each.id != INDEX]:
            complain(f"{name}: its records have changed")


def used(records, texts):
    """Rows and columns that values, merged cells and drawn objects cover; comments do not count."""
    covers = [(row + 1, column + 1) for (row, column), cell in cells_of(records, texts).items() if cell[1] != "blank"]
    covers += [(last + 1, right + 1) for _, last, _, right in merged_of(records)]
    kinds = [each.unpack("<HHH")[2] for each in records if each.id == OBJ]
    data = b"".join(each.content for each in records if each.id == DRAWING)
    anchors = [dict((number, content) for _, number, content in split_drawing(shape)) for _, shape in find_drawing(data, 0xF004)]
    shown = [each[0xF010] for each in anchors if 0xF011 in each]
    for kind, anchor in zip(kinds, shown):
        right, across, last, down = struct.unpack_from("<HHHH", anchor, 10)
        if kind != 0x19:
            covers.append((last + (down > 0), right + (across > 0)))
    return max((row for row, _ in covers), default=0), max((column for _, column in covers), default=0)


def begin_of(records, texts, location):
    if "," in location:
        return tuple(int(each) for each in location.split(","))
    rows, columns = used(records, texts)
    return (rows + (rows > 0), 0) if location == "LASTROW" else (0, columns + (columns > 0))


def shown_cell(cell):
    kind, value = cell[1:]
    return (kind, value[0], [begin for begin, _ in value[1]]) if kind == "text" else (kind, value)


def same_around(old, new, options, complain):
    name = options.sheet
    before, after, same = old.sheets[name], new.sheets[name], Workbook(options.placed)
    kept = [each.raw for each in before if each.id not in OF_SHEET | OF_PLACES]
    if kept != [each.raw for each in after if each.id not in OF_SHEET | OF_PLACES]:
        complain(f"{name}: a record that is no cell's has changed")
    old_texts = old.texts.texts if old.texts else []
    old_cells, new_cells = cells_of(before, old_texts), cells_of(after, new.texts.texts)
    first_row, first_column = begin_of(before, old_texts, options.location)
    placed_records = next(iter(same.sheets.values()))
    placed = {(row + first_row, column + first_column): cell
              for (row, column), cell in cells_of(placed_records, same.texts.texts if same.texts else []).items()}
    same_places(before, after, placed, lambda text: complain(f"{name}: {text}"))
    for place, cell in placed.items():
        if place not in new_cells or shown_cell(new_cells[place]) != shown_cell(cell):
            complain(f"{name}: the cell {place} should be {shown_cell(cell)} and is {new_cells.get(place)}")
    for place, cell in old_cells.items():
        found = new_cells.get(place)
        if place not in placed and found != cell and not is_moved_formula(cell, found) and not is_settled(cell, found):
            complain(f"{name}: the cell {place} was {cell} and is {found}")
    for place in new_cells:
        if place not in old_cells and place not in placed:
            complain(f"{name}: the cell {place} is new")
    moved = [(a + first_row, b + first_row, c + first_column, d + first_column) for a, b, c, d in merged_of(placed_records)]
    meets = lambda merged: any(merged[0] <= r <= merged[1] and merged[2] <= c <= merged[3] for r, c in placed)
    wanted = [each for each in merged_of(before) if not meets(each)] + moved
    if sorted(wanted) != sorted(merged_of(after)):
        complain(f"{name}: the merged ranges are {merged_of(after)}, not {wanted}")
    pieces = lambda records: [each.raw for each in records if each.id in (DRAWING, OBJ)]
    if pieces(before)[1:] != pieces(after)[1:len(pieces(before))]:
        complain(f"{name}: drawings have changed")
    if len(pieces(after)) != len(pieces(before)) + len(pieces(placed_records)):
        complain(f"{name}: pictures are missing")


def places_of(record):
    """The ranges that a link, a conditional format or a validation is about; nothing for other records."""
    content = record.content
    if record.id == 0x1B8:
        return [struct.unpack_from("<HHHH", content)]
    if record.id == 0x1B0:
        at = 12
    elif record.id == 0x1BE:
        at = 4
        for _ in range(4):
            at += 3 + struct.unpack_from("<H", content, at)[0] * (2 if content[at + 2] & 1 else 1)
        for _ in range(2):
            at += 4 + struct.unpack_from("<H", content, at)[0]
    else:
        return []
    count = struct.unpack_from("<H", content, at)[0]
    return [struct.unpack_from("<HHHH", content, at + 2 + 8 * i) for i in range(count)]


def places_by_kind(records):
    """The cells that links, conditional formats and validations are about, by kind of record."""
    found = {}
    for record in records:
        for first, last, left, right in places_of(record):
            cells = found.setdefault(record.id, {})
            for row in range(first, min(last, 999) + 1):
                for column in range(left, right + 1):
                    cells[row, column] = cells.get((row, column), 0) + 1
    return found


def same_places(before, after, placed, complain):
    """What is about places loses those that were written over, from the first to the last cell of each row, and no others."""
    rows = {}
    for row, column in placed:
        rows.setdefault(row, []).append(column)
    is_taken = lambda row, column: row in rows and min(rows[row]) <= column <= max(rows[row])
    had, has = places_by_kind(before), places_by_kind(after)
    for number, cells in had.items():
        wanted = {place: count for place, count in cells.items() if not is_taken(*place)}
        if wanted != has.get(number, {}):
            complain(f"records {number:#x} are about other places than {sorted(wanted)[:5]}: {sorted(has.get(number, {}))[:5]}")


def is_settled(cell, found):
    """Whether a formula of several cells has become the value that it had."""
    if found is None or cell[1] != "formula" or found[1] == "formula" or cell[0] != found[0]:
        return False
    tokens, result = cell[2][2], cell[2][0]
    is_one_of_several = tokens[2:3] in (b"\1", b"\2")
    return is_one_of_several and (found[1] != "number" or struct.pack("<d", found[2]) == result)


def is_moved_formula(cell, found):
    """Whether both share one formula, which is kept with another cell now."""
    return (found is not None and cell[1] == found[1] == "formula" and cell[:2] == found[:2] and cell[2][0] == found[2][0]
            and cell[2][2][2:3] == b"\1" == found[2][2][2:3])


def compare(options, complain):
    old, new = Workbook(options.before), Workbook(options.files[0])
    for path, content in old.file.streams.items():
        if path != "Workbook" and new.file.streams.get(path) != content:
            complain(f"the stream {path!r} has changed")
    if set(old.file.streams) != set(new.file.streams) or old.file.storages != new.file.storages:
        complain("there are other streams or storages")
    same_globals(old, new, complain)
    same_sheets(old, new, options.sheet, complain)
    if options.placed:
        same_around(old, new, options, complain)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--before")
    parser.add_argument("--sheet")
    parser.add_argument("--placed")
    parser.add_argument("--location")
    parser.add_argument("files", nargs="+")
    options = parser.parse_args()
    for path in options.files:
        complain = lambda text, path=path: print(f"{path}: {text}")
        try:
            book = Workbook(path)
            check_strings(book, complain)
            check_formats(book, complain)
            for name in book.sheets:
                check_sheet(book, name, complain)
            check_by_reader(path, complain)
            if options.before:
                compare(options, complain)
        except (AssertionError, ValueError, IndexError, KeyError, struct.error) as problem:
            complain(f"cannot be read: {type(problem).__name__} {problem}")


if __name__ == "__main__":
    main()
