"""Has Doxygen make the reference of the public headers."""

import re
import subprocess
import tempfile
from pathlib import Path

from layout import REFERENCE, Layout

_DOXYFILE = Path(__file__).parent / "Doxyfile"
_BODY = "<!-- body -->"
# Folds away what is inherited, by a script that is not there.
_FOLDING = re.compile(r' onclick="[^"]*"|<img src="closed.png" alt="-"/>&#160;')
# In the line of sections below the title, which counts those that are private.
_SECTION = re.compile(r'<a href="#([\w-]+)">[^<]*</a>(?: &#124;\n)?')
_LINK = re.compile(r'(?:href|src)="([^"#]+)')


def build(root: Path, site: Path, layout: Layout) -> list[str]:
    """Gives the complaints of Doxygen, of which each is a fault of the headers."""
    # Doxygen closes one division that the header opens.
    body = f'<div id="reference">{_BODY}'
    before, _, after = layout.page(REFERENCE, "$title", body).partition(_BODY)
    with tempfile.TemporaryDirectory() as folder:
        header, footer = Path(folder) / "header.html", Path(folder) / "footer.html"
        header.write_text(before, "utf-8")
        footer.write_text(after, "utf-8")
        settings = {
            "OUTPUT_DIRECTORY": site,
            "HTML_OUTPUT": REFERENCE.parent,
            "HTML_HEADER": header,
            "HTML_FOOTER": footer,
            "PROJECT_NUMBER": layout.version,
        }
        lines = [f'{name} = "{value}"' for name, value in settings.items()]
        run = subprocess.run(
            ["doxygen", "-"],
            cwd=root,
            input=_DOXYFILE.read_text("utf-8") + "\n".join(lines) + "\n",
            capture_output=True,
            text=True,
            check=False,
        )
    complaints = run.stderr.strip().splitlines()
    if run.returncode != 0 and not complaints:
        complaints = [f"doxygen ended with {run.returncode}"]
    for page in (site / REFERENCE.parent).glob("*.html"):
        page.write_text(_mended(page.read_text("utf-8")), "utf-8")
    _remove_what_nothing_leads_to(site / REFERENCE.parent)
    return complaints


def _mended(page: str) -> str:
    return _SECTION.sub(
        lambda link: link[0] if f'id="{link[1]}"' in page else "", _FOLDING.sub("", page)
    )


def _remove_what_nothing_leads_to(folder: Path) -> None:
    """Doxygen brings lists, scripts and pictures that its own layout has a use for."""
    reached: set[str] = set()
    ahead = {REFERENCE.name}
    while ahead:
        reached |= ahead
        texts = [(folder / name).read_text("utf-8") for name in ahead if name.endswith(".html")]
        links = {link for text in texts for link in _LINK.findall(text)}
        ahead = {link for link in links - reached if (folder / link).is_file()}
    for file in folder.iterdir():
        if file.name not in reached:
            file.unlink()
