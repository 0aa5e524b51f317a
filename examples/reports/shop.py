"""The shop: turnover by month, article, weekday and hour, and which orders come back."""

import datetime

from . import charts, figures
from .statistics_tables import averages, commented_run, correlations, cross_tables, dimension, rows_by
from .tables import Category, Dimension, Group, chart, heading, log, run, section, table, text
from .words import MONTHS, WEEKDAYS, Name

EPOCH = datetime.datetime(1970, 1, 1)
CATEGORIES = {"Kitchen": ["Pan", "Kettle", "Knife", "Bowl"], "Garden": ["Spade", "Hose", "Seeds", "Lantern"],
              "Office": ["Lamp", "Notebook", "Chair", "Shelf"], "Sports": ["Ball", "Mat", "Rucksack", "Tent"]}
GROUPS = {"channel": ("Channel", ["Web", "App", "Telephone", "Store"]),
          "customer": ("Customer", ["New", "Regular", "Business"]),
          "country": ("Destination", ["Inland", "Neighbours", "Overseas"]),
          "payment": ("Payment", ["Card", "Invoice", "Transfer"]), "category": ("Category", list(CATEGORIES)),
          "returned": ("Sent Back", ["Yes", "No"])}
DOLLARS = "DOLLAR12.2"


def read(rows):
    for row in rows:
        row["time"] = datetime.datetime.fromisoformat(row["time"])
        for key in ("quantity", "discount", "days", "stars"):
            row[key] = int(row[key]) if row[key] else None
        row["price"] = float(row["price"])
        row["turnover"] = round(row["quantity"] * row["price"] * (100 - row["discount"]) / 100, 2)
        row["month"] = row["time"].month
    return rows


def turnover(rows):
    return sum(row["turnover"] for row in rows) if rows else None


def month_table(say, month, rows):
    cells = rows_by(rows, "category", "article", "channel")
    channels = GROUPS["channel"][1]

    def value_of(place, channel):
        parts = [part for (category, article, where), part in cells.items()
                 if place in (None, article) and channel in (None, where)]
        return turnover([row for part in parts for row in part])

    articles = [Group(say(category), [Category(article, say(article)) for article in names])
                for category, names in CATEGORIES.items()]
    result = table(say("Turnover in ^1", MONTHS[month - 1]), "Turnover",
                   [Dimension(say("Article"), articles + [Category(None, say("Total"), role="total")])],
                   [Dimension(say("Channel"), [Category(channel, say(channel), format=DOLLARS) for channel in channels] +
                              [Category(None, say("Total"), format=DOLLARS, role="total")])], value_of)
    return result


def months_run(say, month, rows, data):
    first = min(row["time"] for row in rows)
    largest = sorted(rows, key=lambda row: (-row["turnover"], row["order"]))[:10]

    def value_of(number, key):
        row = largest[number]
        return {"time": (row["time"] - EPOCH).total_seconds(), "article": say(row["article"]), "turnover": row["turnover"],
                "discount": row["discount"]}[key]

    best = table(say("Largest Orders in ^1", MONTHS[month - 1]), "Largest Orders",
                 [Dimension(say("Order"), [Category(number, row["order"]) for number, row in enumerate(largest)])],
                 [Dimension(say("Order"), [Category("time", say("Time"), format="DATETIME20", width=120),
                                           Category("article", say("Article")),
                                           Category("turnover", say("Turnover"), format=DOLLARS),
                                           Category("discount", say("Discount"), format="PCT6.0", role="percent")],
                            labelHidden=True)], value_of)
    name = say("Turnover in ^1", MONTHS[month - 1])
    return commented_run(say, name, "Turnover", data, log(f"TURNOVER MONTH={first.year}-{month:02}."),
                         month_table(say, month, rows), best)


def overview_run(say, rows, data):
    by_month = rows_by(rows, "month", "category")
    title = say("Turnover by Month")
    months = list(range(1, 13))
    series = {say(category): [turnover(by_month.get((month, category), [])) for month in months] for category in CATEGORIES}
    cells = rows_by([{**row, "weekday": row["time"].weekday(), "part": row["time"].hour // 6} for row in rows], "weekday",
                    "part")
    week = table(say("Orders by Weekday and Hour"), "Weekdays",
                 [Dimension(say("Weekday"), [Category(number, say(name)) for number, name in enumerate(WEEKDAYS)])],
                 [Dimension(say("Hours"), [Category(part, f"{part * 6}:00 - {part * 6 + 6}:00", format="F8.0")
                                           for part in range(4)])], lambda day, part: len(cells.get((day, part), [])))
    return commented_run(say, title, "Overview", data, log("OVERVIEW."),
                         chart(title, charts.lines(title, months, series, from_zero=True), title), week)


def returns_run(say, by, rows, data):
    label, values = GROUPS[by]
    return commented_run(say, say("Sent Back by ^1", label), "Cross Tables", data, log(f"CROSS TABLES RETURNED BY {by.upper()}."),
                         *cross_tables(say, rows, ("returned", *GROUPS["returned"]), (by, label, values)))


def averages_run(say, key, label, by, rows, data):
    by_label, values = GROUPS[by]
    form = "DOLLAR10.2" if key == "turnover" else "F8.2"
    return commented_run(say, say("^1 by ^2", label, by_label), "Averages", data, log(f"AVERAGES {key.upper()} BY {by.upper()}."),
                         *averages(say, rows, (key, label), (by, by_label, values), form))


def regular_customers(say, rows):
    """A layer for each kind of customer: payment by channel, percent of the turnover."""
    cells = {place: turnover(part) for place, part in rows_by(rows, "customer", "payment", "channel").items()}
    whole = {kind: sum(value for (customer, *_), value in cells.items() if customer == kind) for kind in GROUPS["customer"][1]}
    payment, channel, customer = (dimension(say, *GROUPS[key]) for key in ("payment", "channel", "customer"))
    result = table(say("Payment by Channel, Percent of Turnover"), "Payments", [payment], [channel],
                   lambda kind, paid, where: figures.percent(cells.get((kind, paid, where), 0), whole[kind]), [customer])
    result["columns"][0]["categories"] = [{"label": label, "format": "PCT6.1", "role": "percent"}
                                          for label in result["columns"][0]["categories"]]
    return result


def report(say, rows):
    rows = read(rows)
    data = ("shop.csv", len(rows))
    by_month = rows_by(rows, "month")
    measures = [("quantity", "Quantity"), ("turnover", "Turnover"), ("discount", "Discount"), ("days", "Days of Delivery"),
                ("stars", "Stars")]
    return section(say("Shop"), heading(say("Orders of a Year")),
                   text(say("About the data"), say("^1 orders of one article each.", Name(len(rows)))),
                   overview_run(say, rows, data),
                   *(months_run(say, month, part, data) for (month,), part in sorted(by_month.items())),
                   *(returns_run(say, by, rows, data) for by in GROUPS if by != "returned"),
                   *(averages_run(say, key, label, by, rows, data) for key, label in (measures[1], measures[4])
                     for by in GROUPS),
                   run(say("Payments"), "Payments", log("PAYMENTS."), regular_customers(say, rows)),
                   run(say("Correlations"), "Correlations", log("CORRELATIONS ORDERS."),
                       correlations(say, say("Correlations of Orders"), rows, measures)))
