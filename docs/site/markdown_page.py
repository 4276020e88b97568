"""Makes HTML of a document in Markdown."""

import re
from collections.abc import Callable, Iterator, Sequence
from dataclasses import dataclass
from html import escape
from pathlib import PurePosixPath

from links import Links
from markdown_it import MarkdownIt
from markdown_it.token import Token
from pygments import highlight
from pygments.formatters import HtmlFormatter
from pygments.lexers import get_lexer_by_name
from pygments.util import ClassNotFound

# What a block of code is quoted from.
_QUOTED = re.compile(r"^<!-- (\S+?)(?: \[[^]]+\])? -->$")
_NOT_IN_IDS = re.compile(r"[^\w\- ]")
# The other ways in which the documents name the languages.
_LANGUAGES = {"def": "cpp", "console": "text", "": "text"}


@dataclass(frozen=True)
class Heading:
    level: int
    id: str
    html: str


@dataclass(frozen=True)
class Body:
    html: str
    headings: tuple[Heading, ...]


def render(text: str, source: PurePosixPath, links: Links) -> Body:
    markdown = MarkdownIt("commonmark", {"highlight": _highlighted}).enable("table")
    markdown.add_render_rule("table_open", _fixed('<div class="wide"><table>'))
    markdown.add_render_rule("table_close", _fixed("</table></div>"))
    markdown.add_render_rule("fence", _fence)
    tokens = markdown.parse(text)
    _send_links(tokens, source, links)
    _name_files(tokens, source, links)
    headings = tuple(_identify_headings(tokens))
    return Body(markdown.renderer.render(tokens, markdown.options, {}), headings)


def code(text: str, language: str) -> str:
    """A block of code."""
    return f'<pre class="code"><code>{_highlighted(text, language, "")}</code></pre>'


def heading_id(text: str, used: set[str]) -> str:
    """As browsers of repositories make them, so that links to headings work in both places."""
    plain = _NOT_IN_IDS.sub("", text.lower()).replace(" ", "-")
    number, unique = 0, plain
    while unique in used:
        number += 1
        unique = f"{plain}-{number}"
    used.add(unique)
    return unique


def _fixed(html: str) -> Callable[..., str]:
    return lambda *_: html


def _fence(_: object, tokens: Sequence[Token], index: int, *__: object) -> str:
    return code(tokens[index].content, tokens[index].info.strip())


def _highlighted(text: str, language: str, _: str) -> str:
    try:
        lexer = get_lexer_by_name(_LANGUAGES.get(language, language), stripnl=False)
    except ClassNotFound:
        return escape(text)
    return highlight(text, lexer, HtmlFormatter(nowrap=True))


def _send_links(tokens: Sequence[Token], source: PurePosixPath, links: Links) -> None:
    for token in _inline(tokens):
        for name in ("href", "src"):
            if (link := token.attrGet(name)) is not None:
                token.attrSet(name, links.from_page(source, str(link)))


def _inline(tokens: Sequence[Token]) -> list[Token]:
    return [child for token in tokens for child in token.children or ()]


def _name_files(tokens: Sequence[Token], source: PurePosixPath, links: Links) -> None:
    """Shows the comment above a block of code that names the file which it is from."""
    for comment, block in zip(tokens, tokens[1:]):
        quoted = _QUOTED.match(comment.content.strip()) if comment.type == "html_block" else None
        if quoted is None or block.type != "fence":
            continue
        link = links.to_file(source, PurePosixPath(quoted[1]))
        if link is not None:
            comment.content = f'<p class="file"><a href="{link}">{escape(quoted[1])}</a></p>\n'


def _identify_headings(tokens: Sequence[Token]) -> Iterator[Heading]:
    used: set[str] = set()
    for opening, inline in zip(tokens, tokens[1:]):
        if opening.type == "heading_open":
            id_ = heading_id(_plain(inline), used)
            opening.attrSet("id", id_)
            yield Heading(int(opening.tag[1:]), id_, _html_of_heading(inline))


def _plain(inline: Token) -> str:
    return "".join(token.content for token in inline.children or ())


def _html_of_heading(inline: Token) -> str:
    """Texts and code, as the contents need them."""
    return "".join(
        f"<code>{escape(token.content)}</code>"
        if token.type == "code_inline"
        else escape(token.content)
        for token in inline.children or ()
    )
