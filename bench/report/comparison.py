"""Two builds of the library that were measured in turn, round by round."""

from collections.abc import Sequence
from dataclasses import dataclass
from statistics import median

from markdown import table
from results import Measured, Name, Results
from tables import duration

# What is less than this may come from how the code happens to lie in memory.
NOISE = 0.05


@dataclass(frozen=True)
class Change:
    """The time of this build divided by that of the other: the median of the rounds, and all of
    them but the least and the greatest."""

    name: Name
    seconds: float
    ratio: float
    lower: float
    upper: float

    @property
    def verdict(self) -> str:
        if self.ratio > 1 + NOISE and self.lower > 1:
            return "SLOWER"
        if self.ratio < 1 - NOISE and self.upper < 1:
            return "faster"
        return ""


def changes(ours: Results, theirs: Results) -> list[Change]:
    """The worst first."""
    common = [name for name in ours.measured if name in theirs.measured]
    return sorted(
        (_change(name, ours.measured[name], theirs.measured[name]) for name in common),
        key=lambda change: change.ratio,
        reverse=True,
    )


def _change(name: Name, ours: Measured, theirs: Measured) -> Change:
    ratios = sorted(a / b for a, b in zip(ours.rounds, theirs.rounds, strict=True))
    inner = ratios[1:-1] or ratios
    return Change(name, ours.seconds, median(ratios), inner[0], inner[-1])


def comparison_table(all_changes: Sequence[Change]) -> str:
    rows = [
        [
            str(change.name),
            duration(change.seconds),
            f"{change.ratio:.3f}",
            f"{change.lower:.3f} to {change.upper:.3f}",
            change.verdict,
        ]
        for change in all_changes
    ]
    return table(["benchmark", "time", "ratio", "spread", ""], rows)
