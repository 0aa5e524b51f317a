"""Charts as SVG with classes, so that a style sheet can change them: lines over time, bars, a tree."""

from html import escape

WIDTH, HEIGHT = 480, 270
LEFT, RIGHT, TOP, BOTTOM, KEY = 52, 12, 38, 28, 24
COLORS = ["#34506f", "#c0623a", "#4d8c6a", "#8a6aa8", "#b0973a", "#5a8fb0"]
STYLE = ("text { font-family: sans-serif; font-size: 12px; fill: #24384f } .title { font-size: 14px; font-weight: bold } "
         ".axis { stroke: #8fa3ba } .grid { stroke: #e1e7ee } .line { fill: none; stroke-width: 2 }")


def short(number):
    return f"{number:.1f}"


def nice_step(span, wanted=5):
    """1, 2 or 5 times a power of ten."""
    step = 1.0
    while step * wanted > span:
        step /= 10
    while step * wanted * 10 < span:
        step *= 10
    return next((step * factor for factor in (1, 2, 5, 10) if step * factor * wanted >= span), step)


class Sheet:
    """An SVG whose data coordinates go from x_range and y_range onto the paper. names: of the series, where there are several."""

    def __init__(self, title, x_range, y_range, names=()):
        self.x_range, self.y_range = x_range, y_range
        self.bottom = HEIGHT - BOTTOM - (KEY if len(names) > 1 else 0)
        self.parts = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" '
                      f'viewBox="0 0 {WIDTH} {HEIGHT}">', f"<style>{STYLE}</style>",
                      f'<rect class="paper" width="{WIDTH}" height="{HEIGHT}" fill="#ffffff"/>']
        self.label(4, 18, title, "title")
        if len(names) > 1:
            self.key(names)

    def x(self, value):
        least, greatest = self.x_range
        return LEFT + (value - least) / (greatest - least) * (WIDTH - LEFT - RIGHT)

    def y(self, value):
        least, greatest = self.y_range
        return self.bottom - (value - least) / (greatest - least) * (self.bottom - TOP)

    def add(self, part):
        self.parts.append(part)

    def label(self, x, y, text, css="label", anchor="start"):
        self.add(f'<text class="{css}" x="{short(x)}" y="{short(y)}" text-anchor="{anchor}">{escape(text)}</text>')

    def line(self, x1, y1, x2, y2, css):
        self.add(f'<line class="{css}" x1="{short(x1)}" y1="{short(y1)}" x2="{short(x2)}" y2="{short(y2)}"/>')

    def scale(self):
        """Lines and numbers of the y axis."""
        least, greatest = self.y_range
        step = nice_step(greatest - least)
        place = step * -int(-least // step)
        while place <= greatest + step / 1000:
            self.line(LEFT, self.y(place), WIDTH - RIGHT, self.y(place), "grid")
            self.label(LEFT - 6, self.y(place) + 4, f"{place:g}", "label", "end")
            place += step
        self.line(LEFT, self.bottom, WIDTH - RIGHT, self.bottom, "axis")

    def key(self, names):
        place = LEFT
        for number, name in enumerate(names):
            color = COLORS[number % len(COLORS)]
            self.add(f'<rect class="series{number + 1}" x="{short(place)}" y="{HEIGHT - 17}" width="10" height="10" '
                     f'fill="{color}"/>')
            self.label(place + 15, HEIGHT - 8, name)
            place += 34 + 6.5 * len(name)

    def svg(self):
        return "".join(self.parts) + "</svg>"


def bounds(values, from_zero):
    least, greatest = min(values), max(values)
    if from_zero:
        least = min(0, least)
    margin = (greatest - least or 1) * 0.06
    return (least if from_zero and least == 0 else least - margin), greatest + margin


def lines(title, places, series, from_zero=False):
    """series: name -> values, one a place, None where there is none; places: numbers."""
    known = [value for values in series.values() for value in values if value is not None]
    sheet = Sheet(title, (min(places), max(places)), bounds(known, from_zero), list(series))
    sheet.scale()
    step = max(1, len(places) // 8)
    for place in places[::step]:
        sheet.label(sheet.x(place), sheet.bottom + 17, f"{place}", "label", "middle")
    for number, values in enumerate(series.values()):
        points = " ".join(f"{short(sheet.x(place))},{short(sheet.y(value))}" for place, value in zip(places, values)
                          if value is not None)
        sheet.add(f'<polyline class="line series{number + 1}" fill="none" stroke-width="2" '
                  f'stroke="{COLORS[number % len(COLORS)]}" points="{points}"/>')
    return sheet.svg()


def bars(title, names, series):
    """series: name -> values, one a name."""
    heights = [value for values in series.values() for value in values]
    sheet = Sheet(title, (0, len(names)), bounds(heights, True), list(series))
    sheet.scale()
    width = 0.8 / len(series)
    for number, values in enumerate(series.values()):
        for place, value in enumerate(values):
            left, top = sheet.x(place + 0.1 + number * width), sheet.y(max(value, 0))
            sheet.add(f'<rect class="bar series{number + 1}" x="{short(left)}" y="{short(top)}" '
                      f'width="{short(sheet.x(width) - LEFT - 1)}" height="{short(abs(sheet.y(value) - sheet.y(0)))}" '
                      f'fill="{COLORS[number % len(COLORS)]}"/>')
    for place, name in enumerate(names):
        sheet.label(sheet.x(place + 0.5), sheet.bottom + 17, name, "label", "middle")
    return sheet.svg()


def tree(root, branches):
    """Boxes below a box: root a text, branches texts."""
    sheet = Sheet("", (0, 1), (0, 1))

    def box(middle, top, words):
        sheet.add(f'<rect class="node" x="{short(middle - 55)}" y="{top}" width="110" height="34" rx="4" fill="#edf2f7" '
                  f'stroke="#34506f"/>')
        sheet.label(middle, top + 21, words, "label", "middle")

    for number, words in enumerate(branches):
        middle = WIDTH * (number + 0.5) / len(branches)
        sheet.line(WIDTH / 2, 64, middle, 150, "axis")
        box(middle, 150, words)
    box(WIDTH / 2, 30, root)
    return sheet.svg()
