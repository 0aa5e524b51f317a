"""The clinical trial: who was treated how, what changed from visit to visit, and what went wrong."""

from . import charts, figures
from .statistics_tables import (averages, commented_run, correlations, cross_tables, dimension, known, rows_by, variance_table)
from .tables import Category, Dimension, Group, chart, heading, log, run, section, table, text
from .words import Name

ARMS = ["Placebo", "Low dose", "High dose"]
VISITS = ["Screening", "Start", "Week 4", "Week 8", "Week 16", "Week 24"]
SITES = ["A", "B", "C", "D"]
MEASURES = [("systolic", "Systolic Pressure"), ("diastolic", "Diastolic Pressure"), ("pulse", "Pulse"), ("pain", "Pain"),
            ("weight", "Weight")]


def read(rows):
    for row in rows:
        for key in ("systolic", "diastolic", "pulse", "pain", "weight", "taken"):
            row[key] = float(row[key]) if row[key] else None
        row["age"] = int(row["age"])
        row["event"] = row["adverse"] or "None"
    return rows


def visits_table(say, title, measure, rows):
    """Means and deviations: visits by arms."""
    found = {place: known(part, measure) for place, part in rows_by(rows, "visit", "arm").items()}
    for visit in VISITS:
        found[visit, None] = [value for arm in ARMS for value in found.get((visit, arm), [])]
    functions = {"mean": figures.mean, "sd": figures.deviation, "n": len}
    return table(title, "Visits", [Dimension(say("Visit"), [
        Group(say("Before Treatment"), [Category(visit, say(visit)) for visit in VISITS[:2]]),
        Group(say("Under Treatment"), [Category(visit, say(visit)) for visit in VISITS[2:]])])],
                 [dimension(say, "Arm", ARMS, total=True),
                  Dimension(say("Statistics"), [Category("mean", say("Mean"), format="F8.1", role="mean"),
                                                Category("sd", say("Std. Deviation"), format="F8.2"),
                                                Category("n", say("N"), format="F8.0", role="count")], labelHidden=True)],
                 lambda visit, arm, key: functions[key](found.get((visit, arm), [])))


def change_table(say, measure, label, rows):
    """Each patient's change since the start, with the comparison of the arms."""
    starts = {row["patient"]: row[measure] for row in rows if row["visit"] == "Start"}
    changes = {place: [row[measure] - starts[row["patient"]] for row in part if row["patient"] in starts]
               for place, part in rows_by(rows, "visit", "arm").items()}

    def value_of(visit, column):
        groups = [changes.get((visit, arm), []) for arm in ARMS]
        return figures.analysis_of_variance(groups)[5] if column == "p" else figures.mean(groups[ARMS.index(column)])

    members = [Group(say("Mean Change"), [Category(arm, say(arm), format="F8.2", role="mean") for arm in ARMS]),
               Category("p", say("Significance"), format="F8.4", role="significance")]
    return table(say("Change of ^1 since the Start", label), "Change", [dimension(say, "Visit", VISITS[2:])],
                 [Dimension(say("Statistics"), members, labelHidden=True)], value_of,
                 footnotes=[say("The arms are compared by an analysis of variance.")])


def measure_run(say, measure, label, rows, data):
    found = rows_by(rows, "visit", "arm")
    title = say("^1 by Visit", label)
    series = {say(arm): [figures.mean(known(found.get((visit, arm), []), measure)) for visit in VISITS] for arm in ARMS}
    last = [known(found.get(("Week 24", arm), []), measure) for arm in ARMS]
    return commented_run(say, say(label), "Visits", data, log(f"VISITS {measure.upper()}."),
                         visits_table(say, title, measure, rows), change_table(say, measure, label, rows),
                         variance_table(say, label, last),
                         chart(title, charts.lines(title, [-2, 0, 4, 8, 16, 24], series), title))


def site_run(say, site, rows, data):
    return commented_run(say, say("Site ^1", Name(site)), "Sites", data, log(f"SITES SITE={site}."),
                         *(visits_table(say, say("^1 at Site ^2", label, Name(site)), measure, rows)
                           for measure, label in MEASURES))


def events_run(say, rows, data):
    treated = [row for row in rows if row["visit"] in VISITS[2:]]
    arm, event = ("arm", "Arm", ARMS), ("event", "Event", ["Headache", "Dizziness", "Nausea", "Rash", "None"])
    return commented_run(say, say("Adverse Events"), "Cross Tables", data, log("CROSS TABLES EVENT BY ARM."),
                         *cross_tables(say, treated, event, arm),
                         *cross_tables(say, treated, event, ("sex", "Sex", ["Female", "Male"])))


def flow_grid(say, rows):
    """How many patients came to each visit: a plain grid."""
    counts = {place: len(part) for place, part in rows_by(rows, "arm", "visit").items()}
    lines = [[say("Arm"), *(say(visit) for visit in VISITS)]]
    lines += [[say(arm), *(str(counts.get((arm, visit), 0)) for visit in VISITS)] for arm in ARMS]
    return {"type": "grid", "label": say("Patients at Each Visit"), "title": say("Patients at Each Visit"), "headerRows": 1,
            "headerColumns": 1, "rows": lines}


def report(say, rows):
    rows = read(rows)
    data = ("trial.csv", len(rows))
    first = [row for row in rows if row["visit"] == "Screening"]
    by_site = rows_by(rows, "site")
    return section(say("Trial"), {"type": "pageTitle", "label": say("Page Title"), "text": say("Trial of a Drug")},
                   heading(say("Trial of a Drug against High Pressure")),
                   text(say("About the data"), say("Two doses and a placebo at four sites; six visits each patient.")),
                   run(say("Patients"), "Averages", log("AVERAGES AGE BY ARM."), flow_grid(say, rows),
                       *averages(say, first, ("age", "Age"), ("arm", "Arm", ARMS))),
                   *(measure_run(say, measure, label, rows, data) for measure, label in MEASURES),
                   *(site_run(say, site, by_site[site,], data) for site in SITES),
                   events_run(say, rows, data),
                   run(say("Correlations"), "Correlations", log("CORRELATIONS MEASURES BY ARM."),
                       *(correlations(say, say("Correlations, ^1", arm), [row for row in rows if row["arm"] == arm], MEASURES)
                         for arm in ARMS)))
