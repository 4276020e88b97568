"""Has Doxygen make the reference of the public headers."""

import subprocess
import tempfile
from pathlib import Path

import reference_pages
from layout import REFERENCE, Layout

_DOXYFILE = Path(__file__).parent / "Doxyfile"
_BODY = "<!-- body -->"


def build(root: Path, site: Path, layout: Layout) -> list[str]:
    """Gives the complaints of Doxygen, of which each is a fault of the headers."""
    with tempfile.TemporaryDirectory() as folder:
        header, footer = _frame(layout, Path(folder))
        settings = {
            "OUTPUT_DIRECTORY": site,
            "HTML_OUTPUT": REFERENCE.parent,
            "HTML_HEADER": header,
            "HTML_FOOTER": footer,
            "PROJECT_NUMBER": layout.version,
        }
        complaints = _run(root, [f'{name} = "{value}"' for name, value in settings.items()])
    reference_pages.mend(site / REFERENCE.parent, REFERENCE.name)
    return complaints


def _frame(layout: Layout, folder: Path) -> tuple[Path, Path]:
    # Doxygen puts the title in, and closes one division that the header opens.
    page = layout.page(REFERENCE, "$title", f'<div id="reference">{_BODY}')
    before, _, after = page.partition(_BODY)
    header, footer = folder / "header.html", folder / "footer.html"
    header.write_text(before, "utf-8")
    footer.write_text(after, "utf-8")
    return header, footer


def _run(root: Path, settings: list[str]) -> list[str]:
    run = subprocess.run(
        ["doxygen", "-"],
        cwd=root,
        input="\n".join([_DOXYFILE.read_text("utf-8"), *settings, ""]),
        capture_output=True,
        text=True,
        check=False,
    )
    complaints = run.stderr.strip().splitlines()
    if run.returncode != 0 and not complaints:
        complaints = [f"doxygen ended with {run.returncode}"]
    return complaints
