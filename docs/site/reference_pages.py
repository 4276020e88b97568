"""Mends the pages that Doxygen has made for the layout of this site."""

import re
from pathlib import Path

# Folds away what is inherited, by a script that is not there.
_FOLDING = re.compile(r' onclick="[^"]*"|<img src="closed.png" alt="-"/>&#160;')
# In the line of sections below the title, which counts those that are private.
_SECTION = re.compile(r'<a href="#([\w-]+)">[^<]*</a>(?: &#124;\n)?')
# The folder of a header has a page with nothing in it.
_FOLDER = re.compile(r'<a class="el" href="dir_\w+\.html">([^<]*)</a>')
# Of a class that is left out: without a link, and followed by a line between.
_LEFT_OUT = re.compile(
    r'<tr class="memitem:">(?:(?!<a ).)*<b>.*</tr>\n<tr class="separator:">.*</tr>\n'
)
_CONTENTS = re.compile(r'(?<=<div class="contents">).*(?=</div><!-- contents -->)', re.DOTALL)
_NAMES = re.compile(r"<h3>.*</ul>", re.DOTALL)
_LINK = re.compile(r'(?:href|src)="([^"#]+)')


def mend(folder: Path, start: str) -> None:
    _join_index(folder)
    for page in folder.glob("*.html"):
        page.write_text(mended(page.read_text("utf-8")), "utf-8")
    _remove_what_nothing_leads_to(folder, start)


def mended(page: str) -> str:
    page = _FOLDER.sub(r"\1", _FOLDING.sub("", _LEFT_OUT.sub("", page)))
    return _SECTION.sub(lambda link: link[0] if f'id="{link[1]}"' in page else "", page)


def joined_index(pages: list[str]) -> str:
    """The first page, with the names of all."""
    contents = [match[0] for page in pages for match in _CONTENTS.finditer(page)]
    names = [match[0] for each in contents for match in _NAMES.finditer(each)]
    body = "\n".join(["<h1>Everything by name</h1>", *names]).replace("&#160;:&#160;", ": ")
    return _CONTENTS.sub(lambda _: body, pages[0])


def _join_index(folder: Path) -> None:
    """The list of names is a page for each letter, without a way from one to the next."""
    first = folder / "functions.html"
    pages = [first, *sorted(folder.glob("functions_?.html"))]
    first.write_text(joined_index([page.read_text("utf-8") for page in pages]), "utf-8")


def _remove_what_nothing_leads_to(folder: Path, start: str) -> None:
    """Doxygen brings lists, scripts and pictures that its own layout has a use for."""
    reached: set[str] = set()
    ahead = {start}
    while ahead:
        reached |= ahead
        texts = [(folder / name).read_text("utf-8") for name in ahead if name.endswith(".html")]
        links = {link for text in texts for link in _LINK.findall(text)}
        ahead = {link for link in links - reached if (folder / link).is_file()}
    for file in folder.iterdir():
        if file.name not in reached:
            file.unlink()
