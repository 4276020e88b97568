"""The tables of one run."""

from collections.abc import Iterator

from goals import Floor, Outcome
from markdown import table
from results import US, Name, Results

_TITLES = {
    "write": "Writing a document to UTF-8",
    "escape": "Escaping 1 MiB of text, by the share of characters to escape",
    "utf8_ascii": "UTF-16 to UTF-8, ASCII",
    "utf8_mixed": "UTF-16 to UTF-8, several scripts",
    "read_whole": "Reading a document in memory",
    "read_stream": "Reading a stream, 1024 bytes at a time",
    "namespaces": "Growth with the number of namespaces",
    "attributes": "Growth with the number of attributes on one element",
    "children": "Growth with the number of children under one parent",
}
_TREES = "tree_"
_TREES_TITLE = "Element trees"
NOT_MEASURED = "not measured"


def all_tables(results: Results) -> Iterator[str]:
    """Each with its heading."""
    trees = [job for job in results.jobs() if job.startswith(_TREES)]
    for job in results.jobs():
        if job in trees:
            if job == trees[0]:
                yield _titled(_TREES_TITLE, _trees_table(results, trees))
        elif results.is_count(job):
            yield _titled(_TITLES.get(job, job), _count_table(results, job))
        else:
            yield _titled(_TITLES.get(job, job), _job_table(results, job))


def _titled(title: str, body: str) -> str:
    return f"### {title}\n\n{body}"


def _job_table(results: Results, job: str) -> str:
    columns = results.columns(job)
    rows = [
        [contender, *(_speed_and_ratio(results, Name(job, contender, each)) for each in columns)]
        for contender in results.contenders(job)
    ]
    ours = [_time(results, Name(job, US, column)) for column in columns]
    if any(ours):
        rows.insert(1, [f"{US}, time", *ours])
    return table([f"`{job}`", *columns], rows)


def _speed_and_ratio(results: Results, name: Name) -> str:
    ratio = results.ratio(Name(name.job, US, name.column), name)
    if ratio is None or name.contender == US:
        return _speed(results, name)
    return f"{_speed(results, name)} ({significant(ratio.median)})"


def _speed(results: Results, name: Name) -> str:
    found = results.measured.get(name)
    return significant(found.bytes_per_second / 1e6) if found else ""


def _time(results: Results, name: Name) -> str:
    seconds = results.seconds(name)
    return duration(seconds) if seconds else ""


def _trees_table(results: Results, jobs: list[str]) -> str:
    columns = results.columns(jobs[0])
    rows = [[job, *(_speed(results, Name(job, US, each)) for each in columns)] for job in jobs]
    return table(["", *columns], rows)


def _count_table(results: Results, job: str) -> str:
    columns = results.columns(job)
    rows = []
    for contender in results.contenders(job):
        names = [Name(job, contender, column) for column in columns]
        rows.append([contender, *_times_and_growth(results, names)])
    return table([f"`{job}`", *columns], rows)


def _times_and_growth(results: Results, names: list[Name]) -> Iterator[str]:
    yield _time(results, names[0])
    for before, name in zip(names, names[1:]):
        growth = results.ratio(name, before)
        yield _time(results, name) + (f" (× {growth.median:.2f})" if growth else "")


def goals_table(outcomes: list[Outcome]) -> str:
    rows = [
        [
            outcome.job,
            outcome.against,
            outcome.column,
            _amount(outcome.goal, outcome.unit),
            _amount(outcome.measured.median if outcome.measured else None, outcome.unit),
            _spread(outcome),
            _floor(outcome.floor),
            ("met" if outcome.met else "MISSED") + ("" if outcome.certain else "?"),
        ]
        for outcome in outcomes
    ]
    titles = ["job", "against", "", "at most", "measured", "spread", "floor", "goal"]
    return table(titles, rows, left=3)


def _spread(outcome: Outcome) -> str:
    ratio = outcome.measured
    if ratio is None or ratio.lower == ratio.upper:
        return ""
    return f"{significant(ratio.lower)} to {significant(ratio.upper)}"


def _floor(floor: Floor | None) -> str:
    return f"{floor.contender} {significant(floor.measured)}" if floor else ""


def _amount(number: float | None, unit: str) -> str:
    if number is None:
        return NOT_MEASURED
    return f"{significant(number)} {unit}".rstrip()


def significant(number: float) -> str:
    """Three digits, without an exponent."""
    decimals = 2 if number < 10 else 1 if number < 100 else 0
    return f"{number:.{decimals}f}"


def duration(seconds: float) -> str:
    for factor, unit in ((1e9, "ns"), (1e6, "µs"), (1e3, "ms")):
        if seconds * factor < 1000:
            return f"{significant(seconds * factor)} {unit}"
    return f"{significant(seconds)} s"
