# SPDX-License-Identifier: Apache-2.0
"""The figures of one run of bench/run."""
import collections

Line = collections.namedtuple("Line", "workload size threads memory implementation role difference tolerance rounds least "
                                      "median peak")


def load(path):
    """Returns the facts about the machine as pairs, and the lines of figures."""
    machine, lines = [], []
    with open(path, encoding="utf-8") as data:
        for row in data:
            if row.startswith("# "):
                machine.append(tuple(row[2:].strip().split(": ", 1)))
                continue
            cells = row.rstrip("\n").split("\t")
            lines.append(Line(cells[0], cells[1], int(cells[2]), *cells[3:6], *map(float, cells[6:8]), int(cells[8]),
                              *map(float, cells[9:11]), float(cells[11]) if len(cells) > 11 else 0.0))
    return machine, lines


class Figures:
    """Least seconds and peak memory by workload and implementation. A figure that was not measured is None."""

    def __init__(self, lines):
        self._lines = lines

    def lines(self, workload, implementations=("",), **where):
        """Returns the lines of the implementations whose names begin with one of `implementations`."""
        return [line for line in self._lines if line.workload == workload
                and line.implementation.startswith(tuple(implementations))
                and all(getattr(line, name) == value for name, value in where.items())]

    def sizes(self, workload):
        return list(dict.fromkeys(line.size for line in self.lines(workload)))

    def seconds(self, workload, implementations, **where):
        """Returns the seconds of the fastest implementation, by default for the first size on one thread."""
        where.setdefault("size", next(iter(self.sizes(workload)), None))
        if "memory" not in where:
            where = {"memory": "fresh", "threads": 1, **where}
        return min((line.least for line in self.lines(workload, implementations, **where) if line.role != "part"),
                   default=None)

    def ratio(self, workload, implementations, others, **where):
        """Returns the time of the implementations divided by that of the others."""
        return quotient(self.seconds(workload, implementations, **where), self.seconds(workload, others, **where))

    def peak(self, workload, implementation, size):
        return max((line.peak for line in self.lines(workload, [implementation], size=size) if line.peak), default=None)


def quotient(a, b):
    return None if a is None or not b else a / b
