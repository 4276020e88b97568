"""What this library wants to reach, and whether it did."""

from collections.abc import Callable, Iterator
from dataclasses import dataclass
from functools import partial

from memory import Memory
from results import SIZES, US, Name, Ratio, Results

# Not those that show a limit.
_NO_PEERS = (US, "by_hand", "copy")
BEST_PEER = "*"


@dataclass(frozen=True)
class Goal:
    """For each column the most that our time may be, divided by the time of somebody else."""

    job: str
    against: str
    limits: dict[str, float]
    # The same, unless a job is measured by another one.
    other_job: str = ""


def _sizes(limit: float, **others: float) -> dict[str, float]:
    """The limit for every size, but for those named (as in `at_300B`)."""
    return {size: others.get(f"at_{size}", limit) for size in SIZES}


RATIOS = (
    Goal("write", BEST_PEER, _sizes(0.60, at_300B=0.80)),
    Goal("write", "by_hand", _sizes(1.5)),
    Goal("escape", "libxml2", {"0%": 0.33, "1%": 0.33, "20%": 1.0}),
    Goal("utf8_ascii", "icu", _sizes(0.25, at_300B=0.40)),
    Goal("utf8_mixed", "icu", _sizes(1.0)),
    Goal("read_whole", "xerces", _sizes(1.0, at_300B=1.03, at_3KiB=1.03)),
    Goal("read_stream", "xerces", _sizes(1.0, at_300B=1.05)),
    Goal("tree_from_stream", "xerces", _sizes(0.5, at_300B=0.7), other_job="read_whole"),
    Goal("tree_to_document", US, _sizes(1.2, at_300B=1.3), other_job="write"),
)

# The time for a byte at the last size over that at the one before. Of whoever does the least that
# the job takes, the same is shown beside it, and does not change the goal.
LINEAR = 1.15
LINEAR_FLOORS = {"write": "by_hand", "read_whole": "xerces", "read_stream": "xerces"}
LINEAR_JOBS = (
    "write",
    "read_whole",
    "read_stream",
    "tree_from_stream",
    "tree_from_dom",
    "tree_to_document",
    "tree_compare",
    "tree_copy",
)

# For numbers of things: the factor that the time may grow by, divided by that of the number.
COUNTED = 1.25
COUNTED_JOBS = ("namespaces", "attributes", "children")
# Readers cannot help growing as Xerces does, and so may grow by that much more than it.
OVER_FLOOR = 1.1

STREAM_GROWTH_KIB = 256.0
WRITE_PEAK = 3.6


@dataclass(frozen=True)
class Floor:
    """What was measured of somebody else, whom this library cannot do without or get below."""

    contender: str
    measured: float


@dataclass(frozen=True)
class Outcome:
    job: str
    against: str
    column: str
    goal: float
    measured: Ratio | None
    unit: str = ""
    floor: Floor | None = None

    @property
    def met(self) -> bool:
        return self.measured is not None and self.measured.median <= self.goal

    @property
    def certain(self) -> bool:
        """Would more rounds not change it?"""
        ratio = self.measured
        return ratio is None or not ratio.lower <= self.goal < ratio.upper


def evaluate(results: Results, memory: Memory) -> list[Outcome]:
    return [*_ratios(results), *_linear(results), *_counted(results), *_memory(memory)]


def _ratios(results: Results) -> Iterator[Outcome]:
    for goal in RATIOS:
        for column, limit in goal.limits.items():
            job = goal.other_job or goal.job
            other = goal.against
            if other == BEST_PEER:
                other = _best_peer(results, job, column)
            ratio = results.ratio(Name(goal.job, US, column), Name(job, other, column))
            against = f"{job}/{other}" if goal.other_job else other
            yield Outcome(goal.job, against, column, limit, ratio)


def _best_peer(results: Results, job: str, column: str) -> str:
    def seconds(contender: str) -> float:
        return results.seconds(Name(job, contender, column)) or float("inf")

    peers = [each for each in results.contenders(job) if each not in _NO_PEERS]
    return min(peers, key=seconds, default="the best peer")


def _linear(results: Results) -> Iterator[Outcome]:
    shorter, longer = SIZES[-2:]
    for job in LINEAR_JOBS:
        ours = _growth_for_a_byte(results, job, US)
        floor = _floor(LINEAR_FLOORS.get(job, ""), partial(_growth_for_a_byte, results, job))
        yield Outcome(job, f"a byte at {shorter}", longer, LINEAR, ours, floor=floor)


def _growth_for_a_byte(results: Results, job: str, contender: str) -> Ratio | None:
    shorter, longer = (Name(job, contender, size) for size in SIZES[-2:])
    growth = results.ratio(longer, shorter)
    if growth is None:
        return None
    return growth * (results.measured[shorter].bytes / results.measured[longer].bytes)


def _floor(contender: str, measure: Callable[[str], Ratio | None]) -> Floor | None:
    """None as well if it was not measured."""
    measured = measure(contender)
    return None if measured is None else Floor(contender, measured.median)


def _counted(results: Results) -> Iterator[Outcome]:
    for job in COUNTED_JOBS:
        ours = [each for each in results.contenders(job) if each.startswith(US)]
        if not ours:
            yield Outcome(job, "", "", COUNTED, None)
        for contender in ours:
            yield from _steps(results, job, contender)


def _steps(results: Results, job: str, contender: str) -> Iterator[Outcome]:
    columns = results.columns(job)
    for fewer, more in zip(columns, columns[1:]):
        growth = partial(_growth, results, job, fewer, more)
        goal = int(more) / int(fewer) * COUNTED
        against = f"the time for {fewer}"
        floor = _floor(contender.replace(US, "xerces", 1), growth)
        if floor:
            against += f" ({goal:.2f}, or {OVER_FLOOR:.2f} × the floor)"
            goal = max(goal, OVER_FLOOR * floor.measured)
        yield Outcome(f"{job}/{contender}", against, more, goal, growth(contender), floor=floor)


def _growth(results: Results, job: str, fewer: str, more: str, contender: str) -> Ratio | None:
    return results.ratio(Name(job, contender, more), Name(job, contender, fewer))


def _memory(memory: Memory) -> Iterator[Outcome]:
    growth, peak = _counted_once(memory.stream_growth_kib), _counted_once(memory.write_peak)
    yield Outcome("read_stream memory", "64KiB", "256MiB", STREAM_GROWTH_KIB, growth, "KiB more")
    yield Outcome("write memory", "the document", "16MiB", WRITE_PEAK, peak, "times")


def _counted_once(number: float | None) -> Ratio | None:
    return None if number is None else Ratio(number, number, number)
