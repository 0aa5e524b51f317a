"""Statistics of lists of numbers; every probability is that of a test's value or a greater one."""

import math

STEPS = 300
SMALL = 1e-300


def mean(values):
    return math.fsum(values) / len(values) if values else None


def deviation(values):
    if len(values) < 2:
        return None
    middle = mean(values)
    return math.sqrt(math.fsum((value - middle) ** 2 for value in values) / (len(values) - 1))


def median(values):
    if not values:
        return None
    ordered = sorted(values)
    half = len(ordered) // 2
    return ordered[half] if len(ordered) % 2 else (ordered[half - 1] + ordered[half]) / 2


def percent(part, whole):
    return 100.0 * part / whole if whole else None


def correlation(pairs):
    """Coefficient, probability and number of the pairs where both are there."""
    pairs = [(x, y) for x, y in pairs if x is not None and y is not None]
    count = len(pairs)
    if count < 3:
        return None, None, count
    x_mean, y_mean = mean([x for x, _ in pairs]), mean([y for _, y in pairs])
    products = math.fsum((x - x_mean) * (y - y_mean) for x, y in pairs)
    squares = math.fsum((x - x_mean) ** 2 for x, _ in pairs) * math.fsum((y - y_mean) ** 2 for _, y in pairs)
    if squares == 0:
        return None, None, count
    r = max(-1.0, min(1.0, products / math.sqrt(squares)))
    if abs(r) >= 1:
        return r, 0.0, count
    return r, f_probability(r * r * (count - 2) / (1 - r * r), 1, count - 2), count


def slope(pairs):
    """Rise of y for each 1 of x."""
    x_mean, y_mean = mean([x for x, _ in pairs]), mean([y for _, y in pairs])
    return math.fsum((x - x_mean) * (y - y_mean) for x, y in pairs) / math.fsum((x - x_mean) ** 2 for x, _ in pairs)


def analysis_of_variance(groups):
    """Sums of squares between and within the groups, degrees of freedom, F and its probability."""
    groups = [group for group in groups if group]
    everything = [value for group in groups for value in group]
    middle = mean(everything)
    between = math.fsum(len(group) * (mean(group) - middle) ** 2 for group in groups)
    within = math.fsum((value - mean(group)) ** 2 for group in groups for value in group)
    above, below = len(groups) - 1, len(everything) - len(groups)
    if above < 1 or below < 1 or within == 0:
        return between, within, above, below, None, None
    f = between / above / (within / below)
    return between, within, above, below, f, f_probability(f, above, below)


def expected_counts(table):
    """Of each cell, were rows and columns independent."""
    rows = [sum(row) for row in table]
    columns = [sum(column) for column in zip(*table)]
    whole = sum(rows)
    return [[row * column / whole for column in columns] for row in rows]


def chi_square(table):
    """Value, degrees of freedom, probability; without rows and columns that are empty."""
    table = [row for row in table if sum(row)]
    table = list(zip(*(column for column in zip(*table) if sum(column))))
    freedom = (len(table) - 1) * (len(table[0]) - 1) if table else 0
    if freedom < 1:
        return None, freedom, None
    value = math.fsum((count - wanted) ** 2 / wanted for row, expected in zip(table, expected_counts(table))
                      for count, wanted in zip(row, expected))
    return value, freedom, 1 - gamma_part(freedom / 2, value / 2)


def gamma_part(a, x):
    """The part of the gamma function's integral that lies below x."""
    if x <= 0:
        return 0.0
    front = math.exp(-x + a * math.log(x) - math.lgamma(a))
    if x < a + 1:
        term = total = 1 / a
        for step in range(1, STEPS):
            term *= x / (a + step)
            total += term
        return total * front
    b = x + 1 - a
    c, d = 1 / SMALL, 1 / b
    fraction = d
    for step in range(1, STEPS):
        factor = -step * (step - a)
        b += 2
        d = 1 / (factor * d + b or SMALL)
        c = b + factor / c or SMALL
        fraction *= d * c
    return 1 - front * fraction


def beta_part(a, b, x):
    """The part of the beta function's integral that lies below x."""
    if x <= 0 or x >= 1:
        return 0.0 if x <= 0 else 1.0
    if x > (a + 1) / (a + b + 2):
        return 1 - beta_part(b, a, 1 - x)
    front = math.exp(math.lgamma(a + b) - math.lgamma(a) - math.lgamma(b) + a * math.log(x) + b * math.log(1 - x))
    c, d = 1.0, 1 / (1 - (a + b) * x / (a + 1) or SMALL)
    fraction = d
    for m in range(1, STEPS):
        even = m * (b - m) * x / ((a + 2 * m - 1) * (a + 2 * m))
        odd = -(a + m) * (a + b + m) * x / ((a + 2 * m) * (a + 2 * m + 1))
        for factor in (even, odd):
            d = 1 / (1 + factor * d or SMALL)
            c = 1 + factor / c or SMALL
            fraction *= d * c
    return front * fraction / a


def f_probability(f, above, below):
    return beta_part(below / 2, above / 2, below / (below + above * f))
