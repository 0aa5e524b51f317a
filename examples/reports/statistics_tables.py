"""The tables that several data sets share: counts, cross tables, averages, comparisons, correlations."""

from . import figures
from .tables import Category, Dimension, Group, notes, run, table
from .words import Name

SIGNIFICANT = 0.05


def rows_by(rows, *keys):
    """Lists of rows by the values of those columns."""
    groups = {}
    for row in rows:
        groups.setdefault(tuple(row[key] for key in keys), []).append(row)
    return groups


def known(rows, key):
    return [row[key] for row in rows if row[key] is not None]


def dimension(say, label, values, total=False):
    """A category for each of the values, of which words are translated and numbers are not."""
    members = [Category(value, say(value) if isinstance(value, str) and not value.isdigit() else str(value))
               for value in values]
    return Dimension(say(label), members + ([Category(None, say("Total"), role="total")] if total else []))


def statistics(say, *wanted):
    """wanted: (key, label, format), with a role where the label does not tell it."""
    return Dimension(say("Statistics"), [Category(key, say(label), format=form, **({"role": role[0]} if role else {}))
                                         for key, label, form, *role in wanted], labelHidden=True)


def frequency(say, label, values, counts):
    """How often each value is there: count, percent, percent of the valid ones, added up."""
    whole = sum(counts.values())
    valid = whole - counts.get(None, 0)
    members = [Group(say("Valid"), [Category(value, say(str(value)) if isinstance(value, str) else str(value))
                                    for value in values] + [Category("all", say("Total"), role="total")])]
    if counts.get(None):
        members.append(Category(None, say("Missing")))

    def value_of(row, column):
        count = valid if row == "all" else counts.get(row, 0)
        if column == "count":
            return count
        if column == "percent":
            return figures.percent(count, whole)
        if row is None:
            return None
        if column == "valid":
            return figures.percent(count, valid)
        if row == "all":
            return None
        return figures.percent(sum(counts.get(value, 0) for value in values[:values.index(row) + 1]), valid)

    return table(say(label), "Counts", [Dimension(say(label), members)],
                 [statistics(say, ("count", "Count", "F8.0", "count"), ("percent", "Percent", "F8.1", "percent"),
                             ("valid", "Valid Percent", "F8.1", "percent"),
                             ("added", "Cumulative Percent", "F8.1", "percent"))], value_of)


def cross_tables(say, rows, first, second):
    """first and second: (key, label, values). Counts and percentages of each combination, and whether they depend on each
    other."""
    (key, label, values), (by, by_label, by_values) = first, second
    counts = {pair: len(found) for pair, found in rows_by(rows, key, by).items()}
    matrix = [[counts.get((value, other), 0) for other in by_values] for value in values]
    expected = figures.expected_counts(matrix)

    def value_of(value, statistic, other):
        found = sum(matrix[i][j] for i in range(len(values)) for j in range(len(by_values))
                    if value in (None, values[i]) and other in (None, by_values[j]))
        if statistic == "count":
            return found
        if statistic == "percent":
            column = sum(line[j] for line in matrix for j in range(len(by_values)) if other in (None, by_values[j]))
            return figures.percent(found, column)
        if value is None or other is None:
            return None
        wanted = expected[values.index(value)][by_values.index(other)]
        return wanted if statistic == "expected" else (found - wanted) / wanted ** 0.5

    cross = table(say("^1 by ^2", label, by_label), "Cross Table",
                  [dimension(say, label, values, total=True),
                   statistics(say, ("count", "Count", "F8.0", "count"), ("expected", "Expected Count", "F8.1"),
                              ("percent", "Percent of Column", "F8.1", "percent"),
                              ("residual", "Standardized Residual", "F8.2", "residual"))],
                  [dimension(say, by_label, by_values, total=True)], value_of)
    return cross, chi_square_table(say, matrix, expected)


def chi_square_table(say, matrix, expected):
    value, freedom, probability = figures.chi_square(matrix)
    least = min(min(line) for line in expected)
    few = sum(count < 5 for line in expected for count in line)
    whole = sum(map(sum, matrix))
    footnote = say("^1 cells have an expected count below 5; the least is ^2.", Name(few), Name(f"{least:.2f}"))
    cells = {("square", "value"): {"value": value, "footnotes": [1]}, ("square", "df"): freedom,
             ("square", "p"): probability, ("valid", "value"): {"value": whole, "format": "F8.0"}}
    return table(say("Chi-Square Tests"), "Chi Square Tests",
                 [Dimension(say("Test"), [Category("square", say("Chi-Square of Independence")),
                                          Category("valid", say("Valid Cases"))], labelHidden=True)],
                 [statistics(say, ("value", "Value", "F8.3"), ("df", "df", "F8.0"),
                             ("p", "Significance", "F8.3", "significance"))],
                 lambda row, column: cells.get((row, column)), footnotes=[footnote])


def averages(say, rows, measure, by, number_format="F10.2"):
    """measure: (key, label); by: (key, label, values). The report, and the analysis of variance of the groups."""
    (key, label), (by_key, by_label, values) = measure, by
    found = {value: known([row for row in rows if value is None or row[by_key] == value], key) for value in (*values, None)}
    functions = {"mean": figures.mean, "n": len, "sd": figures.deviation, "median": figures.median,
                 "least": lambda numbers: min(numbers, default=None), "most": lambda numbers: max(numbers, default=None)}
    report = table(say("^1 by ^2", label, by_label), "Report", [dimension(say, by_label, values, total=True)],
                   [statistics(say, ("mean", "Mean", number_format, "mean"), ("n", "N", "F8.0", "count"),
                               ("sd", "Std. Deviation", "F10.3"), ("median", "Median", number_format, "median"),
                               ("least", "Minimum", number_format), ("most", "Maximum", number_format))],
                   lambda value, statistic: functions[statistic](found[value]))
    return report, variance_table(say, label, [found[value] for value in values])


def variance_table(say, label, groups):
    between, within, above, below, f, probability = figures.analysis_of_variance(groups)
    cells = {"between": [between, above, between / max(above, 1), f, probability],
             "within": [within, below, within / max(below, 1)], "total": [between + within, above + below]}
    columns = ["squares", "df", "square", "f", "p"]

    def value_of(row, column):
        place = columns.index(column)
        return cells[row][place] if place < len(cells[row]) else None

    return table(say("Analysis of Variance of ^1", label), "Analysis of Variance",
                 [Dimension(say("Source"), [Category("between", say("Between Groups")), Category("within", say("Within Groups")),
                                            Category("total", say("Total"), role="total")], labelHidden=True)],
                 [statistics(say, ("squares", "Sum of Squares", "F12.2"), ("df", "df", "F8.0"),
                             ("square", "Mean Square", "F12.2", "none"), ("f", "F", "F8.3"),
                             ("p", "Significance", "F8.3", "significance"))], value_of)


def correlations(say, title, rows, measures):
    """measures: (key, label). Coefficients with their significance; those that are significant bear a footnote."""
    results = {(a, b): figures.correlation([(row[a], row[b]) for row in rows]) for a, _ in measures for b, _ in measures
               if a != b}

    def value_of(a, statistic, b):
        if a == b:
            return {"r": 1, "n": len(known(rows, a))}.get(statistic)
        r, probability, count = results[a, b]
        if statistic == "r":
            marked = probability is not None and probability < SIGNIFICANT
            return {"value": r, "footnotes": [1]} if marked else r
        return probability if statistic == "p" else count

    return table(title, "Correlations",
                 [dimension_of_measures(say, measures),
                  statistics(say, ("r", "Correlation", "F8.3", "correlation"), ("p", "Significance", "F8.3", "significance"),
                             ("n", "N", "F8.0", "count"))], [dimension_of_measures(say, measures)], value_of,
                 footnotes=[say("Significant at the level of 0.05.")])


def dimension_of_measures(say, measures):
    return Dimension(say("Measures"), [Category(key, say(label)) for key, label in measures], labelHidden=True)


def run_notes(say, file, rows, syntax):
    return notes(say("Notes"), [(say("Data"), file), (say("Cases"), rows), (say("Syntax"), syntax)])


def commented_run(say, label, command, data, *items):
    """A run with its notes in front. data: (file, number of cases)."""
    return run(label, command, run_notes(say, *data, command.upper()), *items)
