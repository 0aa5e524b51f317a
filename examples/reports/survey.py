"""The survey: who was asked, what depends on what, and who earns how much."""

from . import charts
from .statistics_tables import (averages, commented_run, correlations, cross_tables, frequency, known, rows_by)
from .tables import chart, heading, log, run, section, text
from .words import Name

GROUPS = {"region": ("Region", ["North", "South", "East", "West"]), "place": ("Place", ["City", "Town", "Village"]),
          "sex": ("Sex", ["Female", "Male"]), "ages": ("Age Group", ["18 to 29", "30 to 44", "45 to 64", "65 and older"]),
          "education": ("Education", ["Primary", "Secondary", "Vocational", "University"]),
          "works": ("Employed", ["Yes", "No"]), "travel": ("Means of Travel", ["Car", "Bicycle", "Train or bus", "On foot"]),
          "satisfaction": ("Satisfaction", [1, 2, 3, 4, 5]), "health": ("Health", [1, 2, 3, 4, 5]),
          "children": ("Children", [0, 1, 2, 3])}
MEASURES = [("income", "Income"), ("hours", "Working Hours"), ("satisfaction", "Satisfaction"), ("health", "Health"),
            ("age", "Age")]


def age_group(age):
    labels = GROUPS["ages"][1]
    return labels[(age >= 30) + (age >= 45) + (age >= 65)]


def group(key):
    return (key, *GROUPS[key])


def read(rows):
    for row in rows:
        for key in ("age", "hours", "income", "satisfaction", "health", "children"):
            row[key] = int(row[key]) if row[key] else None
        row["ages"] = age_group(row["age"])
    return rows


def frequencies(say, rows, data):
    for key, (label, values) in GROUPS.items():
        counts = {value: len(found) for (value,), found in rows_by(rows, key).items()}
        title = say("^1 of the Persons Asked", label)
        names = [say(value) if isinstance(value, str) else str(value) for value in values]
        picture = charts.bars(title, names, {say("Count"): [counts.get(value, 0) for value in values]})
        yield commented_run(say, title, "Counts", data, log(f"COUNTS {key.upper()}."),
                            frequency(say, label, values, counts), chart(title, picture, title))


def dependences(say, rows, data):
    for key in ("education", "works", "travel", "satisfaction", "health", "children"):
        for by in ("region", "place", "sex", "ages"):
            answered = [row for row in rows if row[key] is not None]
            missing = len(rows) - len(answered)
            warning = {"type": "warning", "label": say("Warning"), "level": 2,
                       "text": say("^1 cases without an answer are left out.", Name(missing))} if missing else None
            yield commented_run(say, say("^1 by ^2", GROUPS[key][0], GROUPS[by][0]), "Cross Tables", data,
                                log(f"CROSS TABLES {key.upper()} BY {by.upper()}."), warning,
                                *cross_tables(say, answered, group(key), group(by)))


def means(say, rows, data):
    for key, label in MEASURES:
        for by in ("region", "place", "sex", "ages", "education", "travel"):
            report, variance = averages(say, rows, (key, label), group(by))
            yield commented_run(say, say("^1 by ^2", label, GROUPS[by][0]), "Averages", data,
                                log(f"AVERAGES {key.upper()} BY {by.upper()}."), report, variance)


def report(say, rows):
    rows = read(rows)
    data = ("survey.csv", len(rows))
    employed = [row for row in rows if row["works"] == "Yes"]
    return section(say("Survey"), heading(say("Survey of ^1 Persons", Name(len(rows)))),
                   text(say("About the data"), say("Persons of 18 and more years in four regions, asked at home.")),
                   *frequencies(say, rows, data), *dependences(say, rows, data), *means(say, rows, data),
                   run(say("Correlations"), "Correlations", log("CORRELATIONS ALL."),
                       correlations(say, say("Correlations, Everybody"), rows, MEASURES),
                       correlations(say, say("Correlations, Employed Persons"), employed, MEASURES)),
                   {"type": "tree", "label": say("Who Was Asked"), "svg": charts.tree(
                       say("^1 persons", Name(len(known(rows, "age")))),
                       [f"{say(value)}: {sum(row['region'] == value for row in rows)}" for value in GROUPS["region"][1]]),
                    "alternativeText": say("Number of persons by region")})
