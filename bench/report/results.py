"""What the benchmarks measured in several rounds, out of the JSON that they write."""

import json
import re
from collections.abc import Iterable
from dataclasses import dataclass
from pathlib import Path
from statistics import median
from typing import Any, NamedTuple

SIZES = ("300B", "3KiB", "64KiB", "1MiB", "16MiB")
US = "tqxml"

# Of so few the least and the greatest tell about the median as well.
_FEW_ROUNDS = 7

_SECONDS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}
# What Google Benchmark appends to the names that it was given.
_APPENDED = re.compile(r"/(min_time|min_warmup_time|iterations|repeats):.*$")


class Name(NamedTuple):
    """A benchmark is called job/contender/column; the column is a size, a number or a share."""

    job: str
    contender: str
    column: str

    def __str__(self) -> str:
        return "/".join(part for part in self if part)


def parse_name(text: str) -> Name:
    job, _, rest = _APPENDED.sub("", text).partition("/")
    contender, _, column = rest.rpartition("/")
    return Name(job, contender, column)


@dataclass(frozen=True)
class Measured:
    """The processor time of one benchmark in each round, and how many bytes it is about."""

    rounds: tuple[float, ...]
    bytes: float

    @property
    def seconds(self) -> float:
        return median(self.rounds)

    @property
    def bytes_per_second(self) -> float:
        return self.bytes / self.seconds


@dataclass(frozen=True)
class Ratio:
    """A median of several rounds, and between what it would be if there were more of them (with a
    probability of some 95 %): for nine rounds between all but the least and the greatest."""

    median: float
    lower: float
    upper: float

    def __mul__(self, factor: float) -> "Ratio":
        return Ratio(self.median * factor, self.lower * factor, self.upper * factor)


class Results:
    """The benchmarks in the order in which they were registered."""

    def __init__(self, measured: dict[Name, Measured], context: dict[str, Any]) -> None:
        self.measured = measured
        self.context = context

    def seconds(self, name: Name) -> float | None:
        found = self.measured.get(name)
        return found.seconds if found else None

    def ratio(self, ours: Name, theirs: Name) -> Ratio | None:
        """The time of the one divided by that of the other: the median of the rounds that have
        both, so that a slow phase of the machine, which meets both, does not count."""
        a, b = self.measured.get(ours), self.measured.get(theirs)
        if not a or not b:
            return None
        ratios = sorted(x / y for x, y in zip(a.rounds, b.rounds))
        inner = ratios[1:-1] if len(ratios) > _FEW_ROUNDS else ratios
        return Ratio(median(ratios), inner[0], inner[-1])

    def jobs(self) -> list[str]:
        return _distinct(name.job for name in self.measured)

    def contenders(self, job: str) -> list[str]:
        """This library first, the others as they come."""
        found = _distinct(name.contender for name in self.measured if name.job == job)
        return sorted(found, key=lambda contender: contender != US)

    def columns(self, job: str) -> list[str]:
        """In ascending order."""
        found = _distinct(name.column for name in self.measured if name.job == job)
        return sorted(found, key=_rank)

    def is_count(self, job: str) -> bool:
        """Is the job done for several numbers of things, rather than sizes of documents?"""
        return all(name.column.isdigit() for name in self.measured if name.job == job)


def _distinct(texts: Iterable[str]) -> list[str]:
    return list(dict.fromkeys(texts))


def _rank(column: str) -> int:
    if column in SIZES:
        return SIZES.index(column)
    number = re.match(r"\d+", column)
    return int(number[0]) if number else 0


def read(folder: Path) -> Results:
    """Below the folder each round has one of its own, and there each benchmark a file."""
    parts = [json.loads(path.read_text(encoding="utf-8")) for path in sorted(folder.glob("*/*"))]
    rows = [row for part in parts for row in part["benchmarks"]]
    return Results(_measured(rows), parts[0]["context"])


def _measured(rows: Iterable[dict[str, Any]]) -> dict[Name, Measured]:
    found: dict[Name, list[dict[str, Any]]] = {}
    for row in rows:
        if row.get("error_occurred"):
            raise ValueError(f"{row['run_name']} failed: {row.get('error_message')}")
        found.setdefault(parse_name(row["run_name"]), []).append(row)
    return {name: _one_measured(of_one) for name, of_one in found.items()}


def _one_measured(rows: list[dict[str, Any]]) -> Measured:
    times = tuple(row["cpu_time"] * _SECONDS[row["time_unit"]] for row in rows)
    return Measured(times, rows[0].get("bytes_per_second", 0.0) * times[0])
