"""Looks at every page of the site in a browser, on a desktop and on a phone.

On the desktop the pages are opened as files, on the phone they come from a web server, so that both
ways are tried.
"""

from collections import Counter
from collections.abc import Iterator
from contextlib import contextmanager
from dataclasses import dataclass, field
from functools import partial
from http.server import SimpleHTTPRequestHandler, ThreadingHTTPServer
from pathlib import Path
from threading import Thread
from typing import Any
from urllib.parse import unquote, urldefrag

from webdriver import Browser, browser

_FACTS = (Path(__file__).parent / "page_facts.js").read_text("utf-8")
_OUTSIDE = ("https://", "mailto:")
_START = "index.html"


@dataclass(frozen=True)
class View:
    name: str
    width: int
    height: int
    phone: bool


DESKTOP = View("desktop", 1280, 800, False)
PHONE = View("phone", 390, 844, True)


@dataclass
class Site:
    """The pages as one view has shown them, by their paths."""

    base: str
    facts: dict[str, dict[str, Any]] = field(default_factory=dict)

    def path_of(self, address: str) -> str | None:
        """None for what is not in the site."""
        if not address.startswith(self.base):
            return None
        return unquote(address[len(self.base) :]) or _START


@dataclass
class Checked:
    complaints: list[str] = field(default_factory=list)
    pages: int = 0
    counts: Counter[str] = field(default_factory=Counter)

    def summary(self) -> str:
        counts = ", ".join(f"{number} {what}" for what, number in self.counts.items())
        return f"{self.pages} pages in 2 views, with {counts}"


def check(site: Path, screenshots: Path) -> Checked:
    checked = Checked()
    pages = sorted(path.relative_to(site).as_posix() for path in site.rglob("*.html"))
    checked.pages = len(pages)
    with browser() as one, _served(site) as address:
        for view, base in ((DESKTOP, f"{site.as_uri()}/"), (PHONE, address)):
            shown = Site(base)
            one.show(view.width, view.height, view.phone)
            for page in pages:
                shown.facts[page] = _look(one, base + page)
                one.picture(screenshots / view.name / f"{page}.png")
            checked.complaints += [f"{view.name}: {each}" for each in judge(site, shown)]
            checked.counts = _counts(shown)
    return checked


def judge(site: Path, shown: Site) -> Iterator[str]:
    """What is wrong with the pages."""
    if _START not in shown.facts:
        yield f"there is no {_START}"
        return
    for page, facts in shown.facts.items():
        yield from (f"{page}: {each}" for each in _faults_of_page(facts))
        for link in facts["links"]:
            yield from (f"{page}: {each}" for each in _faults_of_link(site, shown, link))
        for resource in facts["resources"]:
            if shown.path_of(resource) is None:
                yield f"{page}: takes {resource} from elsewhere"
    for page in sorted(set(shown.facts) - _reached(shown)):
        yield f"{page}: no link leads there"


def _look(one: Browser, address: str) -> dict[str, Any]:
    one.open(address)
    facts: dict[str, Any] = one.run(_FACTS)
    facts["console"] = one.messages()
    return facts


def _faults_of_page(facts: dict[str, Any]) -> Iterator[str]:
    for message in facts["console"]:
        yield f"the console has {message}"
    if not facts["title"] or not facts["text"]:
        yield "there is no title, or nothing to read"
    if facts["width"] > facts["window"]:
        by = "; ".join(facts["beyond"])
        yield f"is {facts['width']} wide in a window of {facts['window']}, by {by}"
    for image in facts["images"]:
        if not image["loaded"]:
            yield f"the picture {image['source']} is not shown"
        if not image["alternative"]:
            yield f"the picture {image['source']} has no text in its place"
    if facts["scripts"]:
        yield "there are scripts in it"


def _faults_of_link(site: Path, shown: Site, link: str) -> Iterator[str]:
    address, anchor = urldefrag(link)
    path = shown.path_of(address)
    if path is None:
        if not address.startswith(_OUTSIDE):
            yield f"the link to {link} leads out of the site"
    elif path in shown.facts:
        if anchor and unquote(anchor) not in shown.facts[path]["ids"]:
            yield f"there is no #{anchor} in {path}, to which it has a link"
    elif not (site / path).is_file():
        yield f"there is no {path}, to which it has a link"


def _reached(shown: Site) -> set[str]:
    reached: set[str] = set()
    ahead = {_START}
    while ahead:
        reached |= ahead
        links = (link for page in ahead for link in shown.facts[page]["links"])
        paths = {shown.path_of(urldefrag(link).url) for link in links}
        ahead = {path for path in paths if path in shown.facts} - reached
    return reached


def _counts(shown: Site) -> Counter[str]:
    counts: Counter[str] = Counter()
    for facts in shown.facts.values():
        counts["links"] += len(facts["links"])
        counts["of them to places inside of pages"] += sum("#" in link for link in facts["links"])
        counts["pictures"] += len(facts["images"])
    return counts


class _QuietHandler(SimpleHTTPRequestHandler):
    def log_message(self, format: str, *args: Any) -> None:
        pass


@contextmanager
def _served(site: Path) -> Iterator[str]:
    """The address of a web server that has the site, on this machine alone."""
    handler = partial(_QuietHandler, directory=str(site))
    with ThreadingHTTPServer(("127.0.0.1", 0), handler) as server:
        Thread(target=server.serve_forever, daemon=True).start()
        try:
            yield f"http://127.0.0.1:{server.server_port}/"
        finally:
            server.shutdown()
