"""python3 -m unittest discover -s docs/site"""

import re
import tempfile
import unittest
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path, PurePosixPath
from string import Template
from typing import Any

import contents
from check import Site, judge
from layout import Layout
from links import Links
from markdown_page import heading_id, render
from reference_pages import joined_index, mended

ROOT = Path(__file__).parents[2]
DOCUMENT = PurePosixPath("docs/guide/a.md")


@contextmanager
def tree(**files: str) -> Iterator[Path]:
    """Files of a tree; a name has __ for each slash, and a single _ for the dot."""
    with tempfile.TemporaryDirectory() as folder:
        for name, text in files.items():
            path = Path(folder) / name.replace("__", "/").replace("_", ".")
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, "utf-8")
        yield Path(folder)


def pages_of(root: Path) -> dict[PurePosixPath, PurePosixPath]:
    return {page.source: page.target for group in contents.read(root) for page in group.pages}


class ContentsTest(unittest.TestCase):
    def test_pages_of_the_guide_come_in_the_order_of_its_links(self) -> None:
        guide = "# Guide\n[two](guide/b.md) [one](guide/a.md#part)"
        with tree(docs__guide_md=guide, docs__guide__a_md="# A", docs__guide__b_md="# B") as root:
            self.assertEqual(
                [str(page) for page in pages_of(root).values()],
                ["guide.html", "guide/b.html", "guide/a.html"],
            )

    def test_a_document_that_nobody_has_listed_is_a_page(self) -> None:
        with tree(docs__new_md="# New") as root:
            self.assertEqual(
                pages_of(root), {PurePosixPath("docs/new.md"): PurePosixPath("new.html")}
            )

    def test_a_readme_is_the_index_of_its_folder(self) -> None:
        self.assertEqual(str(contents.target_of(PurePosixPath("README.md"))), "index.html")
        target = contents.target_of(PurePosixPath("examples/README.md"))
        self.assertEqual(str(target), "examples/index.html")

    def test_a_document_without_a_title_is_refused(self) -> None:
        with tree(docs__new_md="text") as root, self.assertRaisesRegex(ValueError, "no title"):
            contents.read(root)


class PageTest(unittest.TestCase):
    def body(self, text: str, **files: str) -> tuple[str, Links]:
        with tree(docs__guide__a_md=text, **files) as root:
            links = Links(root, pages_of(root))
            return render(text, DOCUMENT, links).html, links

    def test_links_lead_from_page_to_page(self) -> None:
        html, _ = self.body("# A\n[b](../b.md#part)", docs__b_md="# B")
        self.assertIn('href="../b.html#part"', html)

    def test_a_link_to_a_file_that_is_no_page_brings_the_file_to_the_site(self) -> None:
        html, links = self.body("# A\n[code](../../src/x.h)", src__x_h="int x;")
        self.assertIn('href="../source/src/x.h.html"', html)
        self.assertEqual(links.files, {PurePosixPath("src/x.h")})

    def test_a_link_that_leads_nowhere_is_a_complaint(self) -> None:
        _, links = self.body("# A\n[gone](gone.md)")
        self.assertIn("there is no docs/guide/gone.md", links.complaints[0])

    def test_pictures_come_along(self) -> None:
        html, links = self.body("# A\n![x](../pictures/x.svg)", docs__pictures__x_svg="<svg/>")
        self.assertIn('src="../pictures/x.svg" alt="x"', html)
        self.assertEqual(links.pictures, {PurePosixPath("docs/pictures/x.svg")})

    def test_a_block_of_code_shows_the_file_that_it_is_from(self) -> None:
        text = "# A\n\n<!-- src/x.h [part] -->\n```cpp\nint x;\n```\n"
        html, _ = self.body(text, src__x_h="int x;")
        self.assertIn('<a href="../source/src/x.h.html">src/x.h</a>', html)
        self.assertNotIn("<!--", html)

    def test_code_is_escaped_whatever_its_language(self) -> None:
        for language in ("", "cpp", "console", "no-such-language"):
            html, _ = self.body(f"# A\n```{language}\na<b & c\n```\n")
            self.assertIn("&lt;", html)
            self.assertNotIn("a<b", html)

    def test_headings_are_named_as_repositories_name_them(self) -> None:
        used: set[str] = set()
        self.assertEqual(
            heading_id("What `next_child()` does, 64 bits", used), "what-next_child-does-64-bits"
        )
        self.assertEqual([heading_id("Two", used) for _ in range(2)], ["two", "two-1"])

    def test_the_contents_mark_the_page_and_list_its_headings(self) -> None:
        with tree(docs__a_md="# A", docs__b_md="# B") as root:
            groups = tuple(contents.read(root))
            links = Links(root, pages_of(root))
            body = render("# A\n## One `x`\n### Deeper", PurePosixPath("docs/a.md"), links)
        layout = Layout(Template("$contents"), groups, "1")
        page = layout.page(PurePosixPath("a.html"), "A", body.html, body.headings)
        self.assertIn(
            '<li class="here"><a href="a.html">A</a><ul><li><a href="#one-x">One '
            "<code>x</code></a></li></ul></li>",
            page,
        )
        self.assertIn('<li><a href="b.html">B</a></li>', page)
        self.assertNotIn("Deeper", page)


class ReferencePagesTest(unittest.TestCase):
    def test_the_pages_of_the_letters_become_one(self) -> None:
        page = '<div class="contents">intro {}</div><!-- contents --><ul>others</ul>'
        a, b = "<h3>a</h3><ul>add</ul>", "<h3>b</h3><ul>byte</ul>"
        joined = joined_index([page.format(a), page.format(b)])
        body = f"<h1>Everything by name</h1>\n{a}\n{b}"
        self.assertEqual(joined, page.replace("intro {}", body))

    def test_links_to_sections_and_folders_that_are_not_there_go(self) -> None:
        links = '<a href="#here">H</a> &#124;\n<a href="#gone">G</a>'
        page = mended(f'{links}<h2 id="here"></h2><a class="el" href="dir_1.html">tqxml</a>')
        self.assertEqual(page, '<a href="#here">H</a> &#124;\n<h2 id="here"></h2>tqxml')

    def test_a_class_that_is_left_out_is_not_listed(self) -> None:
        row = '<tr class="memitem:"><td>{}</td></tr>\n<tr class="separator:"><td></td></tr>\n'
        shown = row.format('<a href="a.html">A</a>')
        self.assertEqual(mended(shown + row.format("<b>Ref</b>") + shown), shown + shown)

    def test_nothing_calls_a_script(self) -> None:
        self.assertEqual(mended("""<td onclick="toggle('x')">all</td>"""), "<td>all</td>")


class CheckTest(unittest.TestCase):
    def facts(self, **others: Any) -> dict[str, Any]:
        return {
            "title": "A",
            "text": 1,
            "width": 390,
            "window": 390,
            "beyond": [],
            "ids": [],
            "links": [],
            "resources": [],
            "images": [],
            "scripts": 0,
            "console": [],
            **others,
        }

    def faults(self, index: dict[str, Any], **others: dict[str, Any]) -> list[str]:
        pages = {"index.html": index, **{f"{name}.html": facts for name, facts in others.items()}}
        return list(judge(Path("/nowhere"), Site("file:///site/", pages)))

    def test_a_site_in_order_has_no_faults(self) -> None:
        link = "file:///site/a.html#there"
        index = self.facts(links=[link, "https://example.org/"])
        self.assertEqual(self.faults(index, a=self.facts(ids=["there"])), [])

    def test_each_fault_is_found(self) -> None:
        cases: dict[str, dict[str, Any]] = {
            "there is no gone.html": {"links": ["file:///site/gone.html"]},
            "there is no #gone in index.html": {"links": ["file:///site/index.html#gone"]},
            "leads out of the site": {"links": ["file:///etc/passwd"]},
            "from elsewhere": {"resources": ["https://example.org/font.css"]},
            "the console has severe: x": {"console": ["severe: x"]},
            "no title": {"title": ""},
            "nothing to read": {"text": 0},
            "is 400 wide in a window of 390, by table": {"width": 400, "beyond": ["table"]},
            "is not shown": {"images": [{"source": "x", "alternative": "x", "loaded": False}]},
            "no text in its place": {
                "images": [{"source": "x", "alternative": "", "loaded": True}]
            },
            "there are scripts": {"scripts": 1},
        }
        for fault, facts in cases.items():
            with self.subTest(fault):
                (found,) = self.faults(self.facts(**facts))
                self.assertIn(fault, found)

    def test_a_page_that_no_link_leads_to_is_a_fault(self) -> None:
        self.assertEqual(self.faults(self.facts(), a=self.facts()), ["a.html: no link leads there"])

    def test_a_site_without_a_first_page_is_a_fault(self) -> None:
        self.assertEqual(
            list(judge(Path("/nowhere"), Site("file:///site/"))), ["there is no index.html"]
        )


class HeadersTest(unittest.TestCase):
    def test_each_installed_header_is_in_the_reference_or_left_out_by_name(self) -> None:
        installed = set()
        for folder in ("tqutil", "tqxml"):
            lists = (ROOT / folder / "CMakeLists.txt").read_text("utf-8")
            installed |= set(re.findall(r"^ +(tq\w+/\S+\.h)\)?$", lists, re.MULTILINE))
        doxyfile = (ROOT / "docs/site/Doxyfile").read_text("utf-8")
        shown = set(re.findall(r"tq\w+/\S+\.h", doxyfile))
        left_out = {
            "tqutil/Export.h",
            "tqxml/foundation/Export.h",
            "tqxml/foundation/Ref.h",
            "tqxml/foundation/TextBuffer.h",
            "tqxml/foundation/XercesForward.h",
            "tqxml/writer/NamespaceTable.h",
            "tqxml/writer/OpenElements.h",
        }
        self.assertEqual(shown | left_out, installed)


if __name__ == "__main__":
    unittest.main()
