"""Where the links of a document lead on the site."""

import os.path
from dataclasses import dataclass, field
from pathlib import Path, PurePosixPath
from urllib.parse import unquote

_PICTURES = PurePosixPath("docs/pictures")
_FILES = PurePosixPath("source")


@dataclass
class Links:
    """Knows the pages, and collects the other files of the tree that the site must have."""

    root: Path
    pages: dict[PurePosixPath, PurePosixPath]
    complaints: list[str] = field(default_factory=list)
    files: set[PurePosixPath] = field(default_factory=set)
    pictures: set[PurePosixPath] = field(default_factory=set)

    def from_page(self, source: PurePosixPath, link: str) -> str:
        """A link of the document `source`, as its page must have it."""
        if _is_external(link):
            return link
        path, mark, heading = link.partition("#")
        if not path:
            return link
        wanted = PurePosixPath(os.path.normpath(source.parent / unquote(path)))
        if wanted.parts[0] == ".." or not (self.root / wanted).exists():
            self.complaints.append(f"{source}: there is no {wanted}, to which it has a link")
            return link
        return relative(self._target(wanted), self.pages[source]) + mark + heading

    def to_file(self, source: PurePosixPath, file: PurePosixPath) -> str | None:
        """A link from the document to a file of the tree; None when there is no such file."""
        if not (self.root / file).is_file():
            return None
        return relative(self._target(file), self.pages[source])

    def _target(self, wanted: PurePosixPath) -> PurePosixPath:
        if wanted in self.pages:
            return self.pages[wanted]
        if wanted.parent == _PICTURES:
            self.pictures.add(wanted)
            return picture_target(wanted)
        self.files.add(wanted)
        return file_target(wanted)


def file_target(file: PurePosixPath) -> PurePosixPath:
    """The page that shows a file of the tree."""
    return _FILES / file.with_name(f"{file.name}.html")


def picture_target(picture: PurePosixPath) -> PurePosixPath:
    return picture.relative_to("docs")


def relative(target: PurePosixPath, page: PurePosixPath) -> str:
    return PurePosixPath(os.path.relpath(target, page.parent)).as_posix()


def _is_external(link: str) -> bool:
    return link.startswith(("http://", "https://", "mailto:"))
