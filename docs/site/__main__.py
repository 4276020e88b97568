"""Makes the site and checks it; tools/site calls it."""

import argparse
import sys
from pathlib import Path

import build
import check


def main() -> int:
    arguments = _parser().parse_args()
    return int(arguments.command(arguments))


def _parser() -> argparse.ArgumentParser:
    parser = argparse.ArgumentParser(prog="docs/site", description=__doc__)
    commands = parser.add_subparsers(required=True)

    making = commands.add_parser("build", help="the site, of the documents and the headers")
    making.add_argument("root", type=Path, help="the root of the source tree")
    making.add_argument("site", type=Path, help="the folder to put it into, which is made anew")
    making.set_defaults(command=make)

    checking = commands.add_parser("check", help="the pages and links of a site, in a browser")
    checking.add_argument("site", type=Path, help="the folder of the site")
    checking.add_argument("screenshots", type=Path, help="the folder for pictures of the pages")
    checking.set_defaults(command=look)
    return parser


def make(arguments: argparse.Namespace) -> int:
    made = build.build(arguments.root.resolve(), arguments.site.resolve())
    return _end(made.complaints, f"{made.pages} pages of documents and files, and the reference")


def look(arguments: argparse.Namespace) -> int:
    checked = check.check(arguments.site.resolve(), arguments.screenshots.resolve())
    return _end(checked.complaints, checked.summary())


def _end(complaints: list[str], summary: str) -> int:
    for complaint in complaints:
        print(complaint)
    print(f"{summary}: {len(complaints)} complaints")
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
