"""Makes the site: a page for each document and for each file that they link to, and the reference."""

import re
import shutil
from dataclasses import dataclass
from pathlib import Path, PurePosixPath
from string import Template

import contents
import reference
from layout import ICON, STYLE, Layout
from links import Links, file_target, picture_target
from markdown_page import code, render

_HERE = Path(__file__).parent
_VERSION = re.compile(r"^ *VERSION (\S+)$", re.MULTILINE)
_LANGUAGES = {".cpp": "cpp", ".h": "cpp", ".def": "cpp", ".txt": "cmake", ".cmake": "cmake"}


@dataclass(frozen=True)
class Made:
    pages: int
    complaints: list[str]


def build(root: Path, site: Path) -> Made:
    shutil.rmtree(site, ignore_errors=True)
    site.mkdir(parents=True)
    for asset in (STYLE, ICON):
        shutil.copy(_HERE / asset, site / asset)
    groups = contents.read(root)
    documents = [page for group in groups for page in group.pages]
    template = Template((_HERE / "page.html").read_text("utf-8"))
    layout = Layout(template, tuple(groups), _version(root))
    links = Links(root, {page.source: page.target for page in documents})
    for page in documents:
        body = render((root / page.source).read_text("utf-8"), page.source, links)
        _write(site, page.target, layout.page(page.target, page.title, body.html, body.headings))
    for file in sorted(links.files):
        target = file_target(file)
        _write(site, target, layout.page(target, str(file), _shown(root / file, file)))
    for picture in sorted(links.pictures):
        _copy(root / picture, site / picture_target(picture))
    complaints = links.complaints + reference.build(root, site, layout)
    return Made(len(documents) + len(links.files), complaints)


def _version(root: Path) -> str:
    found = _VERSION.search((root / "CMakeLists.txt").read_text("utf-8"))
    if found is None:
        raise ValueError("CMakeLists.txt names no version")
    return found[1]


def _shown(path: Path, file: PurePosixPath) -> str:
    title = f"<h1><code>{'/<wbr>'.join(file.parts)}</code></h1>\n"
    if path.is_dir():
        names = sorted(each.name + "/" * each.is_dir() for each in path.iterdir())
        return title + code("\n".join(names), "text")
    return title + code(path.read_text("utf-8"), _LANGUAGES.get(file.suffix, "text"))


def _write(site: Path, target: PurePosixPath, text: str) -> None:
    path = site / target
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, "utf-8")


def _copy(source: Path, target: Path) -> None:
    target.parent.mkdir(parents=True, exist_ok=True)
    shutil.copy(source, target)
