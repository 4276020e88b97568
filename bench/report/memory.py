"""The table that the program `memory` prints."""

from dataclasses import dataclass

from markdown import table

_GROWTH, _TIMES = "growth, KiB", "times the document"
_STREAM = ("read_stream/tqxml", "256MiB over 64KiB")
_WRITING = ("write/tqxml", "16MiB")


@dataclass(frozen=True)
class Memory:
    """The table, and what of it there are goals for."""

    markdown: str = ""
    stream_growth_kib: float | None = None
    write_peak: float | None = None


def parse(text: str) -> Memory:
    lines = [_cells(line) for line in text.splitlines() if line.startswith("|")]
    if len(lines) < 3:
        raise ValueError("the program memory printed no table")
    head, rows = lines[0], lines[2:]
    return Memory(
        table(head, rows, left=2),
        _number(head, rows, _STREAM, _GROWTH),
        _number(head, rows, _WRITING, _TIMES),
    )


def _cells(line: str) -> list[str]:
    return [cell.strip() for cell in line.strip().strip("|").split("|")]


def _number(
    head: list[str], rows: list[list[str]], wanted: tuple[str, str], column: str
) -> float | None:
    """None for a row that is not there, as of a run that broke off."""
    for row in rows:
        if tuple(row[:2]) == wanted:
            return float(row[head.index(column)])
    return None
