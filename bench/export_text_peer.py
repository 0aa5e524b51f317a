#!/usr/bin/env python3
"""export_text_peer.py COUNT: the tables of export_pages_bench.cc as grids of characters, as scripts format them: every
cell a text, columns as wide as their widest, cells padded and joined. Prints nanoseconds a table."""
import sys
import time

ROWS, COLUMNS = 40, 8


def measured(seed):
    random = (seed * 2654435761 + 1) & 0xFFFFFFFF
    values = []
    for _ in range(ROWS):
        row = []
        for _ in range(COLUMNS):
            random = (random * 1664525 + 1013904223) & 0xFFFFFFFF
            row.append((random >> 8) / 1000)
        values.append(row)
    return values


def grid(headers, labels, values):
    rows = [[label, *(f"{value:.2f}" for value in row)] for label, row in zip(labels, values)]
    widths = [max(map(len, column)) for column in zip(headers, *rows)]
    rule = "+".join("-" * (width + 2) for width in widths)
    lines = [rule, "| " + " | ".join(text.center(width) for text, width in zip(headers, widths)) + " |", rule]
    for row in rows:
        cells = [row[0].ljust(widths[0]), *(text.rjust(width) for text, width in zip(row[1:], widths[1:]))]
        lines.append("| " + " | ".join(cells) + " |")
    lines.append(rule)
    return "\n".join(lines)


def main():
    study = [measured(seed) for seed in range(int(sys.argv[1]))]
    headers = ["Variable", *(f"Statistic {column}" for column in range(COLUMNS))]
    labels = [f"Variable {row}" for row in range(ROWS)]
    start = time.process_time_ns()
    parts = [f"Measured values of study {seed}\n" + grid(headers, labels, values) for seed, values in enumerate(study)]
    text = "\n\n".join(parts)
    with open("/dev/null", "w", encoding="utf-8") as file:
        file.write(text)
    print((time.process_time_ns() - start) / len(study))


if __name__ == "__main__":
    main()
