"""Renders what the benchmarks measured; tools/bench calls it."""

import argparse
import sys
from pathlib import Path

import comparison
import machine
import memory
import results
from document import replace_section
from goals import Outcome, evaluate
from markdown import table
from tables import all_tables, goals_table

_RATIOS = (
    "Speeds are in MB/s (a million bytes of UTF-8 a second of processor time). In brackets is this "
    "library's time divided by that of the row: below 1 this library is the faster."
)


def main() -> int:
    arguments = _parser().parse_args()
    return int(arguments.command(arguments))


def _parser() -> argparse.ArgumentParser:
    parser = argparse.ArgumentParser(prog="bench/report", description=__doc__)
    commands = parser.add_subparsers(required=True)

    tables = commands.add_parser("tables", help="the tables of a part of the benchmarks")
    tables.add_argument("rounds", type=Path, help="the folder of what was measured")
    tables.set_defaults(command=show_tables)

    whole = commands.add_parser("document", help="all tables, shown and put into a document")
    whole.add_argument("rounds", type=Path, help="the folder of what was measured")
    whole.add_argument("--memory", type=Path, required=True, help="what the program memory printed")
    whole.add_argument("--build", type=Path, required=True, help="the folder of the build")
    whole.add_argument("--sysroot", type=Path, default=Path("/"), help="where its libraries are")
    whole.add_argument("--command-line", required=True, help="what the reader is to type")
    whole.add_argument("--section", required=True, help="the section of the document to replace")
    whole.add_argument("--document", type=Path, required=True)
    whole.set_defaults(command=write_document)

    compare = commands.add_parser("compare", help="two builds, measured in turn")
    compare.add_argument("ours", type=Path, help="the folder of what was measured")
    compare.add_argument("theirs", type=Path, help="the same of the other build")
    compare.set_defaults(command=compare_builds)
    return parser


def show_tables(arguments: argparse.Namespace) -> int:
    run = results.read(arguments.rounds)
    measured = [each for each in evaluate(run, memory.Memory()) if each.measured is not None]
    print("\n\n".join([_RATIOS, *all_tables(run), *([goals_table(measured)] if measured else [])]))
    return 0


def write_document(arguments: argparse.Namespace) -> int:
    """Fails when a goal is missed."""
    run = results.read(arguments.rounds)
    used = memory.parse(arguments.memory.read_text(encoding="utf-8"))
    outcomes = evaluate(run, used)
    facts = machine.describe(run.context, arguments.build, arguments.sysroot)
    parts = [
        table(["Command", f"`{arguments.command_line}`"], list(facts), left=2),
        _goals(outcomes),
        _RATIOS,
        *all_tables(run),
        f"### Memory\n\n{used.markdown}",
    ]
    body = "\n\n".join(parts)
    print(body)
    text = arguments.document.read_text(encoding="utf-8")
    arguments.document.write_text(replace_section(text, arguments.section, body), encoding="utf-8")
    return 0 if all(outcome.met for outcome in outcomes) else 1


def _goals(outcomes: list[Outcome]) -> str:
    met = sum(outcome.met for outcome in outcomes)
    uncertain = sum(not outcome.certain for outcome in outcomes)
    return (
        f"### Goals\n\n{met} of {len(outcomes)} are met. For {uncertain}, which have a question "
        f"mark, more rounds might tell otherwise.\n\n{goals_table(outcomes)}"
    )


def compare_builds(arguments: argparse.Namespace) -> int:
    """Fails when a benchmark became slower."""
    found = comparison.changes(results.read(arguments.ours), results.read(arguments.theirs))
    slower = sum(change.verdict == "SLOWER" for change in found)
    print(comparison.comparison_table(found))
    print(f"\n{len(found)} benchmarks, {slower} of them slower")
    return 0 if found and slower == 0 else 1


if __name__ == "__main__":
    sys.exit(main())
