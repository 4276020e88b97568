"""The frame around every page: what is at its top, and the contents beside it."""

from collections.abc import Iterator
from dataclasses import dataclass
from html import escape
from pathlib import PurePosixPath
from string import Template

from contents import Group
from links import relative
from markdown_page import Heading

REFERENCE = PurePosixPath("reference/index.html")
STYLE = PurePosixPath("site.css")
ICON = PurePosixPath("icon.svg")
_HOME = PurePosixPath("index.html")
_REFERENCE_TITLE = "Classes and functions"
_REFERENCE_BESIDE = "Reference"
# Of deeper headings there would be too many.
_DEEPEST = 2


@dataclass(frozen=True)
class Layout:
    template: Template
    groups: tuple[Group, ...]
    version: str

    def page(
        self, target: PurePosixPath, title: str, body: str, headings: tuple[Heading, ...] = ()
    ) -> str:
        return self.template.substitute(
            title=escape(title if target == _HOME else f"{title} · tqxml"),
            version=escape(self.version),
            style=relative(STYLE, target),
            icon=relative(ICON, target),
            home=relative(_HOME, target),
            guide=relative(PurePosixPath("guide.html"), target),
            reference=relative(REFERENCE, target),
            contents="\n".join(self._contents(target, headings)),
            body=body,
        )

    def _contents(self, target: PurePosixPath, headings: tuple[Heading, ...]) -> Iterator[str]:
        for group in self.groups:
            yield f"<h2>{escape(group.title)}</h2>\n<ul>"
            for page in group.pages:
                yield _item(page.target, escape(page.title), target, headings)
            if group.title == _REFERENCE_BESIDE:
                yield _item(REFERENCE, _REFERENCE_TITLE, target, headings)
            yield "</ul>"


def _item(
    page: PurePosixPath, title: str, target: PurePosixPath, headings: tuple[Heading, ...]
) -> str:
    link = f'<a href="{relative(page, target)}">{title}</a>'
    if page != target:
        return f"<li>{link}</li>"
    inner = "".join(
        f'<li><a href="#{heading.id}">{heading.html}</a></li>'
        for heading in headings
        if 1 < heading.level <= _DEEPEST
    )
    return f'<li class="here">{link}{f"<ul>{inner}</ul>" if inner else ""}</li>'
