#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""report.py DATA FOLDER: writes performance.md and performance.svg from the figures of one run of bench/run."""
import os
import sys

import plot
from figures import Figures, load
from targets import targets

INTRODUCTION = """# Performance
This page compares the library with other libraries that do the same work on the same data. `bench/run` measures
everything in one run and writes this page, [the plot](performance.svg) and [the figures](performance.tsv).

Read a ratio, not a time: machines differ and are noisy, but all implementations of one table ran in turns in one
process. A cell holds the time of the fastest call including the release of its result, the median in brackets, and
after × how many times as long as ours the implementation took. *Off by* is the largest difference from the expected
result, and how large it may be; a larger one ends the benchmark. *(other work)* marks a yardstick: something whose cost
a reader knows, such as copying the data.

*Fresh*: results lie in memory that the kernel has just handed out, as for a program that keeps its results. *Reused*:
the allocator returns memory that an earlier call released. An implementation makes up to a dozen calls in a row, each
with empty caches, as a program does that processes many photographs. *Call by call*: a turn is one call, and other
implementations run for seconds in between. *A second after the last*: the machine idles in between. The latter two
matter on virtual machines that return free memory to their host, because getting it back takes longer than the work.
*Scalar loops* is the library's own reference code without SIMD, one pass over the whole picture after the other.
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


def met_text(target):
    met = target.is_met()
    return "not measured" if met is None else "yes" if met else "**no**"


def target_rows(all_targets, is_goal):
    return [[target.about, target.words, "–" if target.value is None else three_digits(target.value),
             met_text(target)] for target in all_targets if target.is_goal == is_goal]


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
    all_targets = targets(Figures(lines))
    parts = [INTRODUCTION, "## The machine\n" + table(["", ""], [list(fact) for fact in machine])]
    required = [target for target in all_targets if not target.is_goal]
    met = sum(target.is_met() is True for target in required)
    parts.append(f"## Targets\n{met} of {len(required)} are met.\n\n"
                 + table(["work", "target", "measured", "met"], target_rows(all_targets, False)))
    parts.append("## Goals beyond the targets\n" + table(["work", "goal", "measured", "met"],
                                                         target_rows(all_targets, True)))
    parts.append("## Overview\n![Times of all implementations as multiples of ours](performance.svg)\n")
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
