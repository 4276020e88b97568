"""Which documents of the tree are pages of the site, in which order, and where they go."""

import re
from dataclasses import dataclass
from pathlib import Path, PurePosixPath

# A document belongs to the first pattern that names it.
_GROUPS: tuple[tuple[str, tuple[str, ...]], ...] = (
    ("Start", ("README.md",)),
    (
        "Guide",
        ("docs/guide.md", "docs/guide/*.md", "docs/vocabulary-tool.md", "examples/README.md"),
    ),
    (
        "Reference",
        ("docs/messages.md", "docs/behaviour.md", "SECURITY.md", "docs/performance.md"),
    ),
    (
        "Project",
        ("docs/design.md", "docs/building.md", "docs/*.md", "*/README.md", "*.md"),
    ),
)
# The pages of the guide come in the order of the links in it.
_ORDERED_BY = PurePosixPath("docs/guide.md")

_TITLE = re.compile(r"^# +(.*)$", re.MULTILINE)
_LINK = re.compile(r"\]\(([^)#]+\.md)")


@dataclass(frozen=True)
class Page:
    """A document, by its path in the tree, and what becomes of it, by its path in the site."""

    source: PurePosixPath
    target: PurePosixPath
    title: str


@dataclass(frozen=True)
class Group:
    title: str
    pages: tuple[Page, ...]


def read(root: Path) -> list[Group]:
    ordered = _linked(root, _ORDERED_BY)
    seen: set[PurePosixPath] = set()
    groups = []
    for title, patterns in _GROUPS:
        pages = []
        for pattern in patterns:
            found = {PurePosixPath(path.relative_to(root)) for path in root.glob(pattern)} - seen
            pages += [_page(root, source) for source in _sorted(found, ordered)]
            seen |= found
        groups.append(Group(title, tuple(pages)))
    return groups


def target_of(source: PurePosixPath) -> PurePosixPath:
    """README.md becomes the index of its folder, and what is in docs/ goes to the top."""
    if source.parts[0] == "docs":
        source = PurePosixPath(*source.parts[1:])
    name = "index" if source.stem == "README" else source.stem.lower()
    return source.with_name(f"{name}.html")


def _linked(root: Path, source: PurePosixPath) -> list[PurePosixPath]:
    path = root / source
    text = path.read_text("utf-8") if path.exists() else ""
    return [source.parent / link for link in _LINK.findall(text)]


def _sorted(found: set[PurePosixPath], ordered: list[PurePosixPath]) -> list[PurePosixPath]:
    place = {source: number for number, source in reversed(list(enumerate(ordered)))}
    return sorted(found, key=lambda source: (place.get(source, len(ordered)), source))


def _page(root: Path, source: PurePosixPath) -> Page:
    title = _TITLE.search((root / source).read_text("utf-8"))
    if title is None:
        raise ValueError(f"{source} has no title: a line that begins with '# '")
    return Page(source, target_of(source), title[1].strip())
