"""python3 -m unittest discover -s bench/report"""

import json
import tempfile
import unittest
from pathlib import Path
from typing import Any

import comparison
import machine
import memory
import results
import tables
from document import replace_section
from goals import Outcome, evaluate
from results import Measured, Name, Ratio, Results, parse_name


def row(name: str, cpu_time: float, speed: float = 0, **others: Any) -> dict[str, Any]:
    return {
        "name": name,
        "run_name": name,
        "cpu_time": cpu_time,
        "time_unit": "us",
        "bytes_per_second": speed,
        **others,
    }


def read_rounds(*rounds: list[dict[str, Any]]) -> Results:
    with tempfile.TemporaryDirectory() as folder:
        for number, rows in enumerate(rounds):
            of_round = Path(folder) / str(number)
            of_round.mkdir()
            for index, one in enumerate(rows):
                text = json.dumps({"context": {}, "benchmarks": [one]})
                (of_round / f"{index}.json").write_text(text, encoding="utf-8")
        return results.read(Path(folder))


def of_rounds(times: dict[str, tuple[float, ...]]) -> Results:
    """As if each had been about a million bytes."""
    return Results({parse_name(name): Measured(each, 1e6) for name, each in times.items()}, {})


def of_seconds(times: dict[str, float]) -> Results:
    return of_rounds({name: (each,) for name, each in times.items()})


def outcome(found: list[Outcome], job: str, against: str, column: str) -> Outcome:
    (one,) = [
        each for each in found if (each.job, each.against, each.column) == (job, against, column)
    ]
    return one


def measured(one: Outcome) -> float:
    assert one.measured
    return one.measured.median


class ReadingTest(unittest.TestCase):
    def test_takes_medians_of_the_rounds(self) -> None:
        run = read_rounds(*([row("write/tqxml/1MiB", us, 900 / us)] for us in (3, 1, 2)))
        name = Name("write", "tqxml", "1MiB")
        self.assertEqual(list(run.measured), [name])
        self.assertAlmostEqual(run.seconds(name) or 0, 2e-6)
        self.assertAlmostEqual(run.measured[name].bytes_per_second, 450)

    def test_compares_within_each_round(self) -> None:
        run = of_rounds({"write/tqxml/1MiB": (1, 20, 3), "write/qt/1MiB": (2, 10, 4)})
        ours, theirs = Name("write", "tqxml", "1MiB"), Name("write", "qt", "1MiB")
        self.assertEqual(run.ratio(ours, theirs), Ratio(0.75, 0.5, 2))

    def test_compares_in_the_rounds_that_have_both(self) -> None:
        run = of_rounds({"write/tqxml/16MiB": (2, 4), "write/tqxml/1MiB": (1, 1, 9)})
        longer, shorter = Name("write", "tqxml", "16MiB"), Name("write", "tqxml", "1MiB")
        self.assertEqual(run.ratio(longer, shorter), Ratio(3, 2, 4))

    def test_leaves_the_least_and_the_greatest_of_many_rounds_out_of_the_spread(self) -> None:
        run = of_rounds({"a/tqxml/1": (9, 1, 2, 3, 4, 5, 6, 7, 8), "b/tqxml/1": (1,) * 9})
        ratio = run.ratio(Name("a", "tqxml", "1"), Name("b", "tqxml", "1"))
        self.assertEqual(ratio, Ratio(5, 2, 8))

    def test_does_not_pass_over_errors(self) -> None:
        with self.assertRaisesRegex(ValueError, "write/qt/1MiB failed: out of ink"):
            read_rounds([row("write/qt/1MiB", 1, error_occurred=True, error_message="out of ink")])

    def test_knows_names_by_their_parts(self) -> None:
        self.assertEqual(parse_name("write/tqxml/1MiB/repeats:9"), Name("write", "tqxml", "1MiB"))
        self.assertEqual(parse_name("a/b/c/250"), Name("a", "b/c", "250"))
        self.assertEqual(str(Name("escape", "tqxml", "20%")), "escape/tqxml/20%")

    def test_sorts_this_library_first_and_sizes_by_size(self) -> None:
        names = ("w/qt/1MiB", "w/qt/3KiB", "w/tqxml/300B", "n/x/40", "n/x/5")
        run = of_seconds({name: 1 for name in names})
        self.assertEqual(run.contenders("w"), ["tqxml", "qt"])
        self.assertEqual(run.columns("w"), ["300B", "3KiB", "1MiB"])
        self.assertEqual(run.columns("n"), ["5", "40"])
        self.assertTrue(run.is_count("n"))
        self.assertFalse(run.is_count("w"))


class GoalsTest(unittest.TestCase):
    def test_compares_with_the_best_peer_and_not_with_limits(self) -> None:
        run = of_seconds(
            {
                "write/tqxml/1MiB": 3,
                "write/by_hand/1MiB": 1,
                "write/copy/1MiB": 0.1,
                "write/qt/1MiB": 9,
                "write/pugixml/1MiB": 6,
            }
        )
        found = evaluate(run, memory.Memory())
        best = outcome(found, "write", "pugixml", "1MiB")
        self.assertEqual((measured(best), best.goal, best.met), (0.5, 0.6, True))
        limit = outcome(found, "write", "by_hand", "1MiB")
        self.assertEqual((measured(limit), limit.met), (3, False))

    def test_says_when_more_rounds_might_tell_otherwise(self) -> None:
        def verdict(*rounds: float) -> str:
            times = {"write/tqxml/1MiB": rounds, "write/by_hand/1MiB": (1,) * len(rounds)}
            found = evaluate(of_rounds(times), memory.Memory())
            return tables.goals_table([outcome(found, "write", "by_hand", "1MiB")])

        self.assertIn("| 1.40 to 1.60 |       | MISSED? |", verdict(1.4, 1.6, 1.55))
        self.assertIn("| 1.40 to 1.60 |       | met? |", verdict(1.4, 1.6, 1.45))
        self.assertIn("| 1.40 to 1.49 |       |  met |", verdict(1.4, 1.49, 1.45))

    def test_measures_trees_by_other_jobs(self) -> None:
        run = of_seconds({"tree_from_stream/tqxml/300B": 6, "read_whole/xerces/300B": 10})
        found = evaluate(run, memory.Memory())
        one = outcome(found, "tree_from_stream", "read_whole/xerces", "300B")
        self.assertEqual((measured(one), one.goal), (0.6, 0.7))

    def test_compares_times_for_a_byte(self) -> None:
        run = of_seconds({"write/tqxml/1MiB": 1, "write/tqxml/16MiB": 1.1})
        found = evaluate(run, memory.Memory())
        one = outcome(found, "write", "a byte at 1MiB", "16MiB")
        self.assertAlmostEqual(measured(one), 1.1)
        self.assertTrue(one.met)

    def test_lets_time_grow_with_numbers_and_little_more(self) -> None:
        times = {"250": 1.0, "1000": 4.9, "4000": 30.0}
        run = of_seconds({f"namespaces/tqxml/{count}": time for count, time in times.items()})
        found = evaluate(run, memory.Memory())
        first = outcome(found, "namespaces/tqxml", "the time for 250", "1000")
        second = outcome(found, "namespaces/tqxml", "the time for 1000", "4000")
        self.assertEqual((first.goal, first.met, second.met), (5, True, False))

    def test_shows_who_else_takes_longer_for_a_byte_and_keeps_the_goal(self) -> None:
        times = {"read_whole/tqxml": 1.3, "read_whole/xerces": 1.3, "tree_copy/tqxml": 1.0}
        run = of_seconds(
            {f"{name}/1MiB": 1.0 for name in times}
            | {f"{name}/16MiB": time for name, time in times.items()}
        )
        found = evaluate(run, memory.Memory())
        one = outcome(found, "read_whole", "a byte at 1MiB", "16MiB")
        self.assertEqual((one.goal, one.met), (1.15, False))
        self.assertIn("| xerces 1.30 | MISSED |", tables.goals_table([one]))
        other = outcome(found, "tree_copy", "a byte at 1MiB", "16MiB")
        self.assertIsNone(other.floor)

    def test_lets_readers_grow_as_xerces_and_little_more(self) -> None:
        def step(ours: float, theirs: float) -> Outcome:
            times = {"tqxml_read_whole": ours, "xerces_read_whole": theirs, "tqxml_write": ours}
            run = of_seconds(
                {f"attributes/{name}/2500": 1.0 for name in times}
                | {f"attributes/{name}/10000": time for name, time in times.items()}
            )
            found = evaluate(run, memory.Memory())
            writing = outcome(found, "attributes/tqxml_write", "the time for 2500", "10000")
            self.assertEqual((writing.goal, writing.floor), (5, None))
            against = "the time for 2500 (5.00, or 1.10 × the floor)"
            return outcome(found, "attributes/tqxml_read_whole", against, "10000")

        self.assertEqual([step(5, 4).goal, step(5, 4).met, step(5.1, 4).met], [5, True, False])
        self.assertEqual([step(17.5, 16).met, step(17.7, 16).met], [True, False])
        self.assertIn("| xerces_read_whole 16.0 |", tables.goals_table([step(17, 16)]))

    def test_a_goal_that_was_not_measured_is_not_met(self) -> None:
        found = evaluate(of_seconds({}), memory.Memory())
        self.assertFalse(any(each.met for each in found))
        self.assertIn("children", [each.job for each in found])
        self.assertIn(tables.NOT_MEASURED, tables.goals_table(found))


class TablesTest(unittest.TestCase):
    def test_shows_speed_and_ratio(self) -> None:
        run = of_seconds({"write/qt/1MiB": 0.01, "write/tqxml/1MiB": 0.004})
        self.assertEqual(
            list(tables.all_tables(run)),
            [
                "### Writing a document to UTF-8\n\n"
                "| `write`     |       1MiB |\n"
                "| ----------- | ---------: |\n"
                "| tqxml       |        250 |\n"
                "| tqxml, time |    4.00 ms |\n"
                "| qt          | 100 (0.40) |"
            ],
        )

    def test_shows_growth(self) -> None:
        run = of_seconds({"children/write/100": 1e-6, "children/write/400": 4e-6})
        (text,) = tables.all_tables(run)
        self.assertIn("| write      | 1.00 µs | 4.00 µs (× 4.00) |", text)

    def test_has_one_table_for_all_trees(self) -> None:
        run = of_seconds({"tree_copy/tqxml/1MiB": 0.01, "tree_compare/tqxml/1MiB": 0.02})
        (text,) = tables.all_tables(run)
        self.assertIn("| tree_copy    |  100 |\n| tree_compare | 50.0 |", text)

    def test_leaves_a_blank_for_what_a_contender_cannot_do(self) -> None:
        run = of_seconds({"w/tqxml/1MiB": 1, "w/tqxml/300B": 1, "w/qt/1MiB": 1})
        (text,) = tables.all_tables(run)
        self.assertIn("| qt          |        | 1.00 (1.00) |", text)


class MemoryTest(unittest.TestCase):
    TABLE = """\
| memory | document | before, KiB | peak, KiB | growth, KiB | times the document |
|---|--:|--:|--:|--:|--:|
| read_stream/tqxml | 64KiB | 9000 | 9100 | 100 | 1.56 |
| read_stream/tqxml | 256MiB over 64KiB | | | 40 | |
| read_stream/xerces | 256MiB over 64KiB | | | 8 | |
| write/tqxml | 14MiB | 9000 | 59000 | 50000 | 3.40 |
| write/tqxml | 16MiB | 9000 | 69000 | 60000 | 3.50 |
"""

    def test_finds_what_there_are_goals_for(self) -> None:
        found = memory.parse(self.TABLE)
        self.assertEqual((found.stream_growth_kib, found.write_peak), (40, 3.5))
        self.assertIn("|          40 |", found.markdown)
        outcomes = evaluate(of_seconds({}), found)
        self.assertTrue(outcome(outcomes, "write memory", "the document", "16MiB").met)

    def test_misses_what_is_not_there(self) -> None:
        found = memory.parse("".join(self.TABLE.splitlines(keepends=True)[:3]))
        self.assertIsNone(found.stream_growth_kib)
        with self.assertRaises(ValueError):
            memory.parse("FAILED: run_memory\n")


class MachineTest(unittest.TestCase):
    def test_names_the_libraries_that_were_compiled_in(self) -> None:
        told = {
            "usr/lib/x86_64-linux-gnu/pkgconfig/Qt6Core.pc": "Name: Qt6 Core\nVersion: 6.4.2\n",
            "usr/lib/x86_64-linux-gnu/pkgconfig/expat.pc": "Version: 2.5.0\n",
            "usr/include/rapidxml/rapidxml.hpp": "// A word\n// Version 1.13\n// Another\n",
        }
        commands = [{"file": f"/src/bench/contenders/{name}.cpp"} for name in ("qt", "rapidxml")]
        with tempfile.TemporaryDirectory() as folder:
            for place, text in told.items():
                path = Path(folder) / place
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(text, encoding="utf-8")
            found = list(machine.versions(commands, Path(folder)))
        self.assertEqual(found, ["RapidXML 1.13", "Qt 6.4.2"])


class DocumentTest(unittest.TestCase):
    def test_replaces_one_section_and_nothing_else(self) -> None:
        text = "a\n<!-- begin x -->\nold\n<!-- end x -->\nb\n<!-- begin y -->\n<!-- end y -->\n"
        once = replace_section(text, "x", "new\n")
        self.assertEqual(
            once,
            "a\n<!-- begin x -->\n\nnew\n\n<!-- end x -->\nb\n<!-- begin y -->\n<!-- end y -->\n",
        )
        self.assertEqual(replace_section(once, "x", "new"), once)

    def test_needs_the_section(self) -> None:
        with self.assertRaises(ValueError):
            replace_section("<!-- begin x -->\n", "x", "new")


class ComparisonTest(unittest.TestCase):
    def verdict(self, ours: list[float], theirs: list[float]) -> str:
        (change,) = comparison.changes(
            of_rounds({"write/tqxml/1MiB": tuple(ours)}),
            of_rounds({"write/tqxml/1MiB": tuple(theirs)}),
        )
        return change.verdict

    def test_sees_what_became_slower_or_faster(self) -> None:
        self.assertEqual(self.verdict([1.2, 1.3, 1.25], [1, 1, 1]), "SLOWER")
        self.assertEqual(self.verdict([1, 1, 1], [1.2, 1.3, 1.25]), "faster")

    def test_passes_over_noise(self) -> None:
        self.assertEqual(self.verdict([1.03, 1.04, 1.03], [1, 1, 1]), "")
        self.assertEqual(self.verdict([0.7, 1.1, 1.2, 0.8, 1.2], [1, 1, 1, 1, 1]), "")
        self.assertEqual(self.verdict([0.7, 1.1, 1.2, 1.2, 9], [1, 1, 1, 1, 1]), "SLOWER")

    def test_compares_round_by_round(self) -> None:
        self.assertEqual(self.verdict([1, 2, 3], [1, 2, 3]), "")

    def test_shows_the_worst_first_and_only_what_both_have(self) -> None:
        ours = of_seconds({"a/tqxml/1": 1, "b/tqxml/1": 2, "new/tqxml/1": 1})
        found = comparison.changes(ours, of_seconds({"a/tqxml/1": 1, "b/tqxml/1": 1}))
        self.assertEqual([change.name.job for change in found], ["b", "a"])
        self.assertIn("| b/tqxml/1 | 2.00 s | 2.000 |", comparison.comparison_table(found))


if __name__ == "__main__":
    unittest.main()
