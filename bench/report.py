#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""report.py DATA FOLDER: writes performance.md and performance.svg from the figures of one run of bench/run."""
import os
import sys

import plot
from figures import Figures, load
from targets import targets

INTRODUCTION = """# Performance
The library beside others that do the same work on the same data, as `bench/run` measured it in one run; it writes this
page, and [the plot](performance.svg), from [its figures](performance.tsv). Implementations take turns of up to a dozen calls
in a row, with empty caches before each, as a program calls that works through photographs. Each result is checked
first: *off by* says how far it was from the work, and how far it may be. *(other work)* marks what a reader knows the
cost of and nobody has to equal. A time is that of the fastest call, the release of its result included; the median is
in brackets, then how many times as long as ours it took.

*Fresh*: blocks from 4 MiB on, and so all results, lie in memory that the system hands out anew. *Reused*: the allocator
gives out again what the call before released. *Plain loops* are the library's work in its plainest form, pass after
pass over whole pictures.

Memory is most of the work of large results, and a virtual machine that gives what is free back to its host within
seconds needs long to get it again. Calls in a row are spared that, and what is promised of work in one process is said
of them. *Call by call*, where a turn is one call and seconds of others lie between two, shows the other end; so does
*a second after the last*.
"""


def seconds_text(seconds):
    for unit, factor in (("s", 1), ("ms", 1e3), ("µs", 1e6), ("ns", 1e9)):
        if seconds * factor >= 1 or unit == "ns":
            return f"{three_digits(seconds * factor)} {unit}"
    return ""


def three_digits(number):
    if number >= 1000:
        return f"{number:,.0f}"
    return f"{number:.3g}" if number >= 1 else f"{number:.2g}"


def table(head, rows):
    return "\n".join("| " + " | ".join(row) + " |" for row in [head, ["---"] * len(head), *rows]) + "\n"


def kept_text(promise):
    kept = promise.is_kept()
    return "not measured" if kept is None else "yes" if kept else "**no**"


def promise_rows(all_promises, is_aim):
    return [[promise.about, promise.words, "–" if promise.value is None else three_digits(promise.value),
             kept_text(promise)] for promise in all_promises if promise.is_aim == is_aim]


def circumstances_text(line):
    if line.memory == "process":
        return line.size
    threads = f"{line.threads} thread" + "s" * (line.threads > 1)
    return f"{line.size}, {threads}, {line.memory}"


def difference_text(line):
    if line.role == "yardstick":
        return "(other work)"
    if line.role == "part" or line.memory == "process":
        return ""
    if line.difference == 0:
        return "equal"
    return f"{line.difference:.0e}, may be {line.tolerance:.0e}"


def cell(line, ours):
    text = f"{seconds_text(line.least)} ({seconds_text(line.median)})"
    if line.role not in ("ours", "part") and ours:
        text += f" × {three_digits(line.least / ours)}"
    if line.peak:
        text += f", {line.peak / 1e6:,.0f} MB"
    return text


def workload_table(lines):
    columns = list(dict.fromkeys(circumstances_text(line) for line in lines))
    ours = {circumstances_text(line): line.least for line in lines if line.role == "ours"}
    rows = []
    for name in dict.fromkeys(line.implementation for line in lines):
        of_name = {circumstances_text(line): line for line in lines if line.implementation == name}
        worst = max(of_name.values(), key=lambda line: line.difference)
        rows.append([name] + [cell(of_name[column], ours.get(column)) if column in of_name else ""
                              for column in columns] + [difference_text(worst)])
    head = ["", *columns, "off by"]
    if all(row[-1] == "" for row in rows):
        head, rows = head[:-1], [row[:-1] for row in rows]
    return table(head, rows)


def page(machine, lines):
    all_promises = promises(Figures(lines))
    parts = [INTRODUCTION, "## The machine\n" + table(["", ""], [list(fact) for fact in machine])]
    musts = [promise for promise in all_promises if not promise.is_aim]
    kept = sum(promise.is_kept() is True for promise in musts)
    parts.append(f"## What is promised\n{kept} of {len(musts)} hold.\n\n"
                 + table(["work", "promise", "measured", "holds"], promise_rows(all_promises, False)))
    parts.append("## What is aimed at\n" + table(["work", "aim", "measured", "reached"],
                                                 promise_rows(all_promises, True)))
    parts.append("## At one look\n![Times of all implementations as multiples of ours](performance.svg)\n")
    parts.append("## The figures")
    for workload in dict.fromkeys(line.workload for line in lines):
        parts.append(f"### {workload}\n" + workload_table([line for line in lines if line.workload == workload]))
    return "\n".join(parts)


def main(data, folder):
    machine, lines = load(data)
    with open(os.path.join(folder, "performance.md"), "w", encoding="utf-8") as markdown:
        markdown.write(page(machine, lines))
    with open(os.path.join(folder, "performance.svg"), "w", encoding="utf-8") as svg:
        svg.write(plot.drawn(lines))


main(*sys.argv[1:3])
