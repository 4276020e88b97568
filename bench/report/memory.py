"""The table that the program `memory` prints."""

import re
from collections.abc import Iterator
from dataclasses import dataclass


@dataclass(frozen=True)
class Memory:
    """The table, and what of it there are goals for."""

    markdown: str = ""
    stream_growth_kib: float | None = None
    write_peak: float | None = None


def parse(text: str) -> Memory:
    lines = [line for line in text.splitlines() if line.startswith("|")]
    return Memory("\n".join(lines))
