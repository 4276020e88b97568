"""Tables that read well as they are and as Markdown."""

from collections.abc import Sequence


def table(head: Sequence[str], rows: Sequence[Sequence[str]], left: int = 1) -> str:
    """The first `left` columns begin at the left, the others end at the right."""
    widths = [max(len(cell) for cell in column) for column in zip(head, *rows)]
    rule = [
        "-" * width if index < left else "-" * (width - 1) + ":"
        for index, width in enumerate(widths)
    ]
    return "\n".join(_line(cells, widths, left) for cells in (head, rule, *rows))


def _line(cells: Sequence[str], widths: Sequence[int], left: int) -> str:
    padded = (
        cell.ljust(width) if index < left else cell.rjust(width)
        for index, (cell, width) in enumerate(zip(cells, widths))
    )
    return f"| {' | '.join(padded)} |"
