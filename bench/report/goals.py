"""What this library wants to reach, and whether it did."""

from collections.abc import Iterator
from dataclasses import dataclass

from memory import Memory
from results import SIZES, US, Name, Results

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

# The time for a byte at the last size over that at the one before.
LINEAR = 1.15
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

STREAM_GROWTH_KIB = 256.0
WRITE_PEAK = 3.6


@dataclass(frozen=True)
class Outcome:
    job: str
    against: str
    column: str
    goal: float
    measured: float | None
    unit: str = ""

    @property
    def met(self) -> bool:
        return self.measured is not None and self.measured <= self.goal


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
        ours = results.measured.get(Name(job, US, longer))
        before = results.measured.get(Name(job, US, shorter))
        growth = None
        if ours and before and ours.bytes_per_second:
            growth = before.bytes_per_second / ours.bytes_per_second
        yield Outcome(job, f"a byte at {shorter}", longer, LINEAR, growth)


def _counted(results: Results) -> Iterator[Outcome]:
    for job in COUNTED_JOBS:
        ours = [each for each in results.contenders(job) if "xerces" not in each]
        if not ours:
            yield Outcome(job, "", "", COUNTED, None)
        for contender in ours:
            yield from _steps(results, job, contender)


def _steps(results: Results, job: str, contender: str) -> Iterator[Outcome]:
    columns = results.columns(job)
    for fewer, more in zip(columns, columns[1:]):
        ratio = results.ratio(Name(job, contender, more), Name(job, contender, fewer))
        limit = int(more) / int(fewer) * COUNTED
        yield Outcome(f"{job}/{contender}", f"the time for {fewer}", more, limit, ratio)


def _memory(memory: Memory) -> Iterator[Outcome]:
    growth, peak = memory.stream_growth_kib, memory.write_peak
    yield Outcome("read_stream memory", "64KiB", "256MiB", STREAM_GROWTH_KIB, growth, "KiB more")
    yield Outcome("write memory", "the document", "16MiB", WRITE_PEAK, peak, "times")
