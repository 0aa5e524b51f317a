"""Results as `vexa import` reads them: items as dictionaries, and tables out of dimensions and a function of their keys."""

import itertools


class Category:
    """key: what the function of the cells gets. Settings (format, role, footnotes, hidden, ...) go into the result."""

    def __init__(self, key, label, **settings):
        self.key = key
        self.settings = settings
        self.label = label

    def keys(self):
        return [self.key]

    def result(self):
        return {"label": self.label, **self.settings} if self.settings else self.label


class Group:
    """Categories and groups below a label of their own."""

    def __init__(self, label, members):
        self.label = label
        self.members = members

    def keys(self):
        return [key for member in self.members for key in member.keys()]

    def result(self):
        return {"group": self.label, "categories": [member.result() for member in self.members]}


class Dimension:
    def __init__(self, label, members, **settings):
        self.label = label
        self.members = members
        self.settings = settings

    def keys(self):
        return [key for member in self.members for key in member.keys()]

    def result(self):
        return {"label": self.label, **self.settings, "categories": [member.result() for member in self.members]}


def rounded(value):
    """Numbers of a length that every machine computes alike; everything else as it is."""
    if isinstance(value, float):
        value = float(f"{value:.9g}")
        return int(value) if value == int(value) else value
    return value


def cell_result(value):
    if isinstance(value, dict):
        return {**value, "value": rounded(value["value"])} if "value" in value else value
    return rounded(value)


def table(title, subtype, rows, columns, value_of, layers=(), **settings):
    """value_of gets a key of every dimension: layers, rows, columns; None is an empty cell."""
    result = {"type": "table", "label": title, "subtype": subtype, "title": title, **settings}
    result["rows"] = [dimension.result() for dimension in rows]
    result["columns"] = [dimension.result() for dimension in columns]
    if layers:
        result["layers"] = [dimension.result() for dimension in layers]
    places = itertools.product(*(dimension.keys() for dimension in (*layers, *rows, *columns)))
    result["cells"] = [cell_result(value_of(*place)) for place in places]
    return result


def run(label, command, *items):
    """What one command left behind."""
    return {"type": "header", "label": label, "command": command, "items": [item for item in items if item]}


def section(label, *items):
    return {"type": "header", "label": label, "items": list(items)}


def heading(text):
    return {"type": "heading", "label": text, "text": text}


def text(label, content, **style):
    return {"type": "text", "label": label, "text": content, **({"style": style} if style else {})}


def log(content):
    return {"type": "log", "label": "Log", "text": content}


def notes(label, pairs):
    return {"type": "notes", "label": label, "visible": False,
            "lines": [{"level": 1, "label": name, "value": str(value)} for name, value in pairs]}


def chart(label, svg, description):
    return {"type": "chart", "label": label, "svg": svg, "alternativeText": description}
