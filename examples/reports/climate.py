"""Ten weather stations: months, years, trends, records, and what the stations have in common."""

import datetime

from . import charts, figures
from .statistics_tables import commented_run, correlations, dimension, known, rows_by, statistics
from .tables import Category, Dimension, Group, chart, heading, log, run, section, table, text
from .words import MONTHS, Name

EPOCH = datetime.date(1970, 1, 1)


def read(rows):
    for row in rows:
        for key in ("mean", "lowest", "highest", "rain"):
            row[key] = float(row[key]) if row[key] else None
        for key in ("elevation", "year", "month", "sun", "frost_days"):
            row[key] = int(row[key])
    return rows


def summary(rows):
    """The statistics of both tables of a station."""
    return {"mean": figures.mean(known(rows, "mean")), "least": min(known(rows, "lowest"), default=None),
            "most": max(known(rows, "highest"), default=None), "rain": figures.mean(known(rows, "rain")),
            "sun": figures.mean(known(rows, "sun")), "frost": figures.mean(known(rows, "frost_days"))}


def temperatures_and_weather(say):
    return Dimension(say("Statistics"), [
        Group(say("Temperature"), [Category("mean", say("Mean"), format="F8.1", role="mean"),
                                   Category("least", say("Minimum"), format="F8.1"),
                                   Category("most", say("Maximum"), format="F8.1")]),
        Group(say("Weather"), [Category("rain", say("Rain in mm"), format="F8.1"),
                               Category("sun", say("Hours of Sun"), format="F8.0"),
                               Category("frost", say("Days of Frost"), format="F8.1")])], labelHidden=True)


def months_table(say, station, rows):
    decades = {"1994 - 2003": range(1994, 2004), "2004 - 2013": range(2004, 2014), "2014 - 2023": range(2014, 2024)}
    found = {(decade, month): summary([row for row in rows if row["year"] in years and month in (None, row["month"])])
             for decade, years in decades.items() for month in (*range(1, 13), None)}
    members = [Category(month, say(name)) for month, name in enumerate(MONTHS, start=1)]
    return table(say("Months at ^1", station), "Months",
                 [Dimension(say("Month"), members + [Category(None, say("Whole Year"), role="total")])],
                 [temperatures_and_weather(say)], lambda decade, month, key: found[decade, month][key],
                 [Dimension(say("Years"), [Category(decade, decade) for decade in decades], shown=3)],
                 caption=say("Means of the months; minimum and maximum of the hours."))


def years_table(say, station, rows):
    found = {year: summary(part) for (year,), part in rows_by(rows, "year").items()}
    return table(say("Years at ^1", station), "Years", [dimension(say, "Year", sorted(found))],
                 [temperatures_and_weather(say)], lambda year, key: found[year][key])


def station_run(say, name, rows, data):
    station = Name(name)
    years = sorted({row["year"] for row in rows})
    by_year = rows_by(rows, "year")
    warm = [figures.mean(known(by_year[year,], "mean")) for year in years]
    rain = [sum(known([row for row in rows if row["month"] == month], "rain")) / len(years) for month in range(1, 13)]
    warm_title, rain_title = say("Mean Temperature at ^1", station), say("Rain at ^1 in mm", station)
    picture = chart(warm_title, charts.lines(warm_title, years, {say("Mean"): warm}), warm_title)
    bars = chart(rain_title, charts.bars(rain_title, [say(month)[:3] for month in MONTHS], {say("Rain in mm"): rain}),
                 rain_title)
    model = {"type": "model", "label": say("Years at ^1", station), "views": [picture, years_table(say, station, rows)],
             "printViews": "all"}
    return commented_run(say, say("Station ^1", station), "Climate", data, log(f"CLIMATE STATION={name}."),
                         months_table(say, station, rows), bars, model)


def trends_table(say, stations):
    def value_of(name, key):
        pairs = [(year, figures.mean(known(part, "mean"))) for (year,), part in rows_by(stations[name], "year").items()]
        if key == "slope":
            return figures.slope(pairs) * 10
        r, probability, count = figures.correlation(pairs)
        return {"r": r, "p": probability, "n": count}[key]

    return table(say("Trend of the Temperature"), "Trends", [dimension_of_names(say, stations)],
                 [statistics(say, ("slope", "Degrees in Ten Years", "F8.2"), ("r", "Correlation", "F8.3", "correlation"),
                             ("p", "Significance", "F8.3", "significance"), ("n", "N", "F8.0", "count"))], value_of)


def records_table(say, stations):
    def value_of(name, kind, what):
        key, best = ("lowest", min) if kind == "cold" else ("highest", max)
        row = best((row for row in stations[name] if row[key] is not None), key=lambda row: row[key])
        return row[key] if what == "value" else (datetime.date(row["year"], row["month"], 1) - EPOCH).days * 86400

    return table(say("Records"), "Records", [dimension_of_names(say, stations)],
                 [Dimension(say("Record"), [Category("cold", say("Coldest")), Category("warm", say("Warmest"))]),
                  Dimension(say("Statistics"), [Category("value", say("Temperature"), format="F8.1"),
                                                Category("month", say("Month from"), format="EDATE10", width=72)],
                            labelHidden=True)], value_of)


def dimension_of_names(say, stations):
    return Dimension(say("Station"), [Category(name, name) for name in stations])


def common_rows(rows, key):
    """A row a month, a column a station."""
    return [{row["station"]: row[key] for row in part} for part in rows_by(rows, "year", "month").values()]


def report(say, rows):
    rows = read(rows)
    stations = {name: part for (name,), part in rows_by(rows, "station").items()}
    measures = [(name, Name(name)) for name in stations]
    return section(say("Climate"), heading(say("Climate of Ten Stations")),
                   text(say("About the data"), say("Thirty years by month. A few months could not be measured.")),
                   *(station_run(say, name, part, ("climate.csv", len(part))) for name, part in stations.items()),
                   run(say("All stations"), "Climate Summary", log("CLIMATE SUMMARY."), trends_table(say, stations),
                       records_table(say, stations)),
                   run(say("Correlations"), "Correlations", log("CORRELATIONS STATIONS."),
                       correlations(say, say("Correlations of Temperature"), common_rows(rows, "mean"), measures),
                       correlations(say, say("Correlations of Rain"), common_rows(rows, "rain"), measures)))
