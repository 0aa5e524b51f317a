"""Writes results of Python programs in the form that `vexa import` reads: tables, charts and texts in sections.

One file, the standard library only; pandas and matplotlib are understood where they are used.

    import vexa_results

    results = vexa_results.Results("march")
    with results.section("Means", command="Means") as means:
        means.table(frame.groupby(["region", "sex"]).income.agg(["mean", "count"]), title="Income",
                    formats={"mean": "F8.2"}, roles={"count": "count"})
        means.chart(figure, alternative_text="Income rises to the north.")
    results.write("march.json")

and then: vexa import march.vxv march.json
"""

import base64
import contextlib
import datetime
import io
import itertools
import json
import math
import numbers
import pathlib

ROLES = ("mean", "count", "percent", "significance", "residual", "correlation", "median", "total")

_EPOCH = datetime.datetime(1970, 1, 1)
_LARGEST_WHOLE = 2**53  # beyond it, neighbours are one number
_FORMATS_OF_TIMES = {"date": "DATE11", "datetime": "DATETIME20", "time": "TIME8"}


class Section:
    """A place in the outline that takes items. `Results` is the topmost one."""

    def __init__(self, items):
        self._items = items

    @contextlib.contextmanager
    def section(self, label, command=None):
        """A header with items of its own; with a command it is a run of that command, which OUTPUT MODIFY can select."""
        header = _without_none({"type": "header", "label": _text(label), "command": command, "items": []})
        self._items.append(header)
        yield Section(header["items"])

    def table(self, data, title=None, *, rows=None, columns=None, caption=None, label=None, subtype=None, command=None,
              formats=None, roles=None, footnotes=None, look=None, corner=None):
        """Adds a table.

        data: a pandas frame or series (an index or columns of several levels become several dimensions where the
        levels have names and every combination is there, else nested groups), a dict of columns, a dict of rows that are dicts, a list of records that are
        dicts, or a list of rows. rows, columns: labels in the place of those of the data; a label that is a tuple is nested.
        formats: a display format such as "F8.2" for all, or a dict by column; roles: a dict by column, of ROLES.
        footnotes: texts below the table.
        """
        grid = _grid_of(data, rows, columns)
        item = {"type": "table", "label": _label(label), "command": command, "subtype": subtype,
                "title": _label(title), "caption": _label(caption), "look": look, "corner": _label(corner)}
        column_formats = [_of_column(formats, path) or time for path, time in zip(grid.columns, grid.time_formats())]
        column_roles = [_of_column(roles, path) for path in grid.columns]
        for role in column_roles:
            if role is not None and role not in ROLES:
                raise ValueError(f"there is no role {role!r}; roles are {', '.join(ROLES)}")
        item["rows"] = _dimensions(grid.rows, grid.row_names, None, None)
        item["columns"] = _dimensions(grid.columns, grid.column_names, column_formats, column_roles)
        item["cells"] = [_cell(value, wanted) for line in grid.cells for value, wanted in zip(line, column_formats)]
        if footnotes:
            item["footnotes"] = [_text(note) for note in footnotes]
        self._items.append(_without_none(item))

    def chart(self, picture, *, alternative_text=None, label=None, command=None, kind="chart"):
        """Adds a picture: a matplotlib figure or axes, anything that shows itself as SVG (`_repr_svg_`), the text of an SVG,
        the bytes of a PNG, or the path of a file with either. kind: chart or tree."""
        item = {"type": kind, "label": _label(label), "command": command, "alternativeText": _label(alternative_text)}
        content = _picture(picture)
        if content.startswith(b"\x89PNG"):
            item["png"] = base64.b64encode(content).decode("ascii")
        else:
            item["svg"] = content.decode("utf-8")
        self._items.append(_without_none(item))

    def text(self, text, *, label=None):
        """Adds a text; line breaks stay."""
        self._items.append(_without_none({"type": "text", "label": _label(label), "text": _text(text)}))

    def heading(self, text):
        """Adds a heading that is shown on the page."""
        self._items.append({"type": "heading", "text": _text(text)})

    def item(self, item):
        """Adds an item as it stands in the form, for what the other operations do not have."""
        self._items.append(item)


class Results(Section):
    """A whole document: a name, and items in their order."""

    def __init__(self, name=None):
        super().__init__([])
        self._name = name

    def as_dict(self):
        return _without_none({"vexaResults": 1, "name": self._name, "items": self._items})

    def dumps(self):
        """The results as a text of JSON."""
        return json.dumps(self.as_dict(), ensure_ascii=False, allow_nan=False, separators=(",", ":")) + "\n"

    def write(self, file):
        """Writes the results to a path."""
        pathlib.Path(file).write_text(self.dumps(), encoding="utf-8")


class _Grid:
    """A table as rows of cells, with a path of labels for each row and column, and the names of their levels."""

    def __init__(self, cells, rows, columns, row_names=(), column_names=()):
        self.cells = [list(line) for line in cells]
        self.rows = [_path(label) for label in _with_days(rows)]
        self.columns = [_path(label) for label in _with_days(columns)]
        self.row_names = list(row_names)
        self.column_names = list(column_names)
        if len(self.cells) != len(self.rows):
            raise ValueError(f"{len(self.cells)} rows of cells for {len(self.rows)} labels of rows")
        for line in self.cells:
            if len(line) != len(self.columns):
                raise ValueError(f"{len(line)} cells in a row for {len(self.columns)} labels of columns")

    def time_formats(self):
        """For each column the format of its times, where all that it holds are such."""
        return [_time_format([line[i] for line in self.cells]) for i in range(len(self.columns))]


def _grid_of(data, rows, columns):
    if hasattr(data, "to_frame") and not hasattr(data, "columns"):  # a series of pandas
        data = data.to_frame()
    if hasattr(data, "index") and hasattr(data, "columns"):
        cells = [[data.iat[i, j] for j in range(data.shape[1])] for i in range(data.shape[0])]
        grid = _Grid(cells, data.index.tolist() if rows is None else rows,
                     data.columns.tolist() if columns is None else columns, data.index.names, data.columns.names)
        return grid
    if isinstance(data, dict):
        return _grid_of_dict(data, rows, columns)
    lines = [line if isinstance(line, dict) else _as_list(line) for line in data]
    if lines and all(isinstance(line, dict) for line in lines):
        names = columns or list(dict.fromkeys(name for line in lines for name in line))
        lines = [[line.get(name) for name in names] for line in lines]
        return _Grid(lines, rows or range(1, len(lines) + 1), names)
    width = len(lines[0]) if lines else 0
    return _Grid(lines, rows or range(1, len(lines) + 1), columns or range(1, width + 1))


def _grid_of_dict(data, rows, columns):
    if all(isinstance(value, dict) for value in data.values()):  # a row each
        names = columns or list(dict.fromkeys(name for line in data.values() for name in line))
        return _Grid([[line.get(name) for name in names] for line in data.values()], rows or list(data), names)
    lists = [_as_list(value) for value in data.values()]
    height = max((len(values) for values in lists), default=0)
    if any(len(values) != height for values in lists):
        raise ValueError("the columns are not of one length")
    return _Grid(zip(*lists), rows or range(1, height + 1), columns or list(data))


def _as_list(values):
    if isinstance(values, (str, bytes)) or not hasattr(values, "__iter__"):
        return [values]
    return list(values)


def _with_days(labels):
    """Labels that are moments, all of them midnights, as days; of tuples each level for itself."""
    labels = list(labels)
    if labels and all(isinstance(label, tuple) and len(label) == len(labels[0]) for label in labels):
        return list(zip(*(_with_days(level) for level in zip(*labels)))) if labels[0] else labels
    if _time_format([label for label in labels if not isinstance(label, tuple)]) != _FORMATS_OF_TIMES["date"]:
        return labels
    return [_plain(label).date() if _kind_of_time(_plain(label)) == "datetime" and not _is_missing(label) else label
            for label in labels]


def _path(label):
    return tuple(_text(part) for part in label) if isinstance(label, tuple) else (_text(label),)


def _dimensions(paths, names, formats, roles):
    """The dimensions of one axis, by the path of labels of each of its lines."""
    depth = max((len(path) for path in paths), default=1)
    paths = [path + ("",) * (depth - len(path)) for path in paths]
    levels = [list(dict.fromkeys(path[level] for path in paths)) for level in range(depth)]
    extras = list(zip(formats or [None] * len(paths), roles or [None] * len(paths)))
    is_named = any(name is not None for name in names)
    is_product = is_named and depth > 1 and paths == list(itertools.product(*levels)) and _repeat(extras, len(levels[-1]))
    if not is_product:
        return [{"label": _name(names, None), "categories": _nested(paths, extras, 0)}]
    dimensions = [{"label": _name(names, level), "categories": labels} for level, labels in enumerate(levels)]
    dimensions[-1]["categories"] = [_category(label, *extra) for label, extra in zip(levels[-1], extras)]
    return dimensions


def _repeat(extras, period):
    return all(extra == extras[i % period] for i, extra in enumerate(extras))


def _name(names, level):
    if level is None:
        return " / ".join(_text(name) for name in names if name is not None)
    return _label(names[level]) or "" if level < len(names) else ""


def _nested(paths, extras, level):
    """The categories of neighbours that share what stands before `level`."""
    if paths and level + 1 == len(paths[0]):
        return [_category(path[level], *extra) for path, extra in zip(paths, extras)]
    categories = []
    numbered = list(zip(paths, extras))
    for label, group in itertools.groupby(numbered, key=lambda entry: entry[0][level]):
        members = list(group)
        inner = _nested([path for path, _ in members], [extra for _, extra in members], level + 1)
        categories.append({"group": label, "categories": inner})
    return categories


def _category(label, wanted, role):
    if wanted is None and role is None:
        return label
    return _without_none({"label": label, "format": wanted, "role": role})


def _of_column(wishes, path):
    """What is wished for a column: by its whole label, else by its innermost one."""
    if wishes is None or isinstance(wishes, str):
        return wishes
    by_text = {_path(key): value for key, value in wishes.items()}
    return by_text.get(path) or by_text.get(path[-1:])


def _is_missing(value):
    if value is None:
        return True
    try:
        return bool(value != value)  # NaN and NaT are not themselves
    except (TypeError, ValueError):  # NA of pandas does not say whether it is itself
        return True


def _kind_of_time(value):
    """date, datetime or time; None for what is no time."""
    if isinstance(value, datetime.datetime):
        return "datetime"
    if isinstance(value, datetime.date):
        return "date"
    return "time" if isinstance(value, (datetime.timedelta, datetime.time)) else None


def _seconds(value):
    if isinstance(value, datetime.datetime):
        return (value.replace(tzinfo=None) - _EPOCH).total_seconds()
    if isinstance(value, datetime.date):
        return (datetime.datetime(value.year, value.month, value.day) - _EPOCH).total_seconds()
    if isinstance(value, datetime.time):
        return value.hour * 3600 + value.minute * 60 + value.second
    return value.total_seconds()


def _time_format(values):
    kinds = {_kind_of_time(_plain(value)) for value in values if not _is_missing(value)}
    if kinds == {"datetime"} and all(_is_missing(value) or _seconds(_plain(value)) % 86400 == 0 for value in values):
        return _FORMATS_OF_TIMES["date"]
    return _FORMATS_OF_TIMES.get(kinds.pop()) if len(kinds) == 1 else None


def _plain(value):
    """Numbers and times of numpy as those of Python."""
    if type(value).__module__ == "numpy" and hasattr(value, "item"):
        if value.dtype.kind == "M":
            return value.astype("datetime64[us]").item()
        return value.astype("timedelta64[us]").item() if value.dtype.kind == "m" else value.item()
    return value


def _cell(value, column_format):
    value = _plain(value)
    if _is_missing(value):
        return None
    kind = _kind_of_time(value)
    if kind:
        seconds = _number(_seconds(value))
        return seconds if column_format else {"value": seconds, "format": _FORMATS_OF_TIMES[kind]}
    if isinstance(value, bool) or not isinstance(value, (numbers.Number, str)) or isinstance(value, complex):
        return _text(value)
    return _text(value) if isinstance(value, str) else _number(value)


def _number(value):
    """A number that JSON has; a text for any other."""
    if isinstance(value, numbers.Integral):
        return int(value) if abs(int(value)) <= _LARGEST_WHOLE else str(int(value))
    value = float(value)
    if not math.isfinite(value):
        return str(value)
    return int(value) if value.is_integer() and abs(value) <= _LARGEST_WHOLE and str(value) != "-0.0" else value


def _text(value):
    # What is no character, such as half of a pair, cannot be written as UTF-8.
    return str(value).encode("utf-8", errors="replace").decode("utf-8")


def _label(value):
    return None if value is None else _text(value)


def _picture(picture):
    """The bytes of an SVG or a PNG."""
    if isinstance(picture, (bytes, bytearray)):
        return bytes(picture)
    if isinstance(picture, pathlib.Path):
        return picture.read_bytes()
    if isinstance(picture, str):
        return picture.encode("utf-8") if "<svg" in picture else pathlib.Path(picture).read_bytes()
    figure = picture.get_figure() if hasattr(picture, "get_figure") and not hasattr(picture, "savefig") else picture
    if hasattr(figure, "savefig"):
        return _drawn_by_matplotlib(figure)
    if hasattr(picture, "_repr_svg_"):
        return picture._repr_svg_().encode("utf-8")
    raise TypeError(f"a {type(picture).__name__} is no picture: give a figure, an SVG, a PNG or the path of one")


def _drawn_by_matplotlib(figure):
    import matplotlib  # which made the figure

    drawn = io.BytesIO()
    # Letters stay letters, and the same figure gives the same bytes.
    with matplotlib.rc_context({"svg.hashsalt": "vexa", "svg.fonttype": "none"}):
        figure.savefig(drawn, format="svg", metadata={"Date": None})
    return drawn.getvalue()


def _without_none(entries):
    return {key: value for key, value in entries.items() if value is not None}
