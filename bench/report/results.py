"""What a run of the benchmarks measured, out of the JSON that it writes."""

import json
import re
from collections.abc import Iterable
from dataclasses import dataclass
from pathlib import Path
from statistics import median
from typing import Any, NamedTuple

SIZES = ("300B", "3KiB", "64KiB", "1MiB", "16MiB")
US = "tqxml"

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
    """Medians over the repetitions of one benchmark, of processor time."""

    seconds: float
    bytes_per_second: float


class Results:
    """The benchmarks of one run, in the order in which they were registered."""

    def __init__(self, measured: dict[Name, Measured], context: dict[str, Any]) -> None:
        self.measured = measured
        self.context = context

    def seconds(self, name: Name) -> float | None:
        found = self.measured.get(name)
        return found.seconds if found else None

    def ratio(self, ours: Name, theirs: Name) -> float | None:
        """The time of the one divided by that of the other."""
        a, b = self.seconds(ours), self.seconds(theirs)
        return a / b if a and b else None

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


def read(*paths: Path) -> Results:
    """One run, which may have been made in parts."""
    parts = [json.loads(path.read_text(encoding="utf-8")) for path in paths]
    rows = [row for part in parts for row in part["benchmarks"]]
    return Results(_medians(rows), parts[0]["context"])


def _medians(rows: Iterable[dict[str, Any]]) -> dict[Name, Measured]:
    repetitions: dict[Name, list[dict[str, Any]]] = {}
    for row in rows:
        if row.get("run_type") != "iteration":
            continue
        if row.get("error_occurred"):
            raise ValueError(f"{row['run_name']} failed: {row.get('error_message')}")
        repetitions.setdefault(parse_name(row["run_name"]), []).append(row)
    ordered = sorted(repetitions.items(), key=lambda item: item[1][0].get("family_index", 0))
    return {name: _median(of_one) for name, of_one in ordered}


def _median(rows: list[dict[str, Any]]) -> Measured:
    return Measured(
        median(row["cpu_time"] * _SECONDS[row["time_unit"]] for row in rows),
        median(row.get("bytes_per_second", 0.0) for row in rows),
    )
