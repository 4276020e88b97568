"""The names of tags as the program's own vocabularies have them, for when the registry cannot be found."""

import re

import gdb

from .memory import Invalid, name, text_up_to_zero
from .numbers import signed

# As gdb lists a table that a source file has made of a vocabulary.
TABLE = re.compile(r"Orn::VocabularyEntry (?:const )?([\w:]+)\s*\[\d*\];", re.MULTILINE)
NAMESPACE = 0

_known = None


def name_of_number(number):
    """{URI}name, or None."""
    global _known
    if _known is None:
        _known = all_names()
    return _known.get(number)


def all_names():
    names = {}
    for table in tables():
        try:
            names.update(names_in(table))
        except (Invalid, gdb.error):
            # Not in memory yet.
            continue
    return names


def tables():
    listed = gdb.execute("info variables -q -n -t Orn::VocabularyEntry", to_string=True)
    for variable in sorted(set(TABLE.findall(listed))):
        for symbol in gdb.lookup_static_symbols(variable):
            yield symbol.value()


def names_in(table):
    first, last = table.type.range()
    entries = [table[place] for place in range(first, last + 1)]
    uris = {0: ""}
    for entry in entries:
        if int(entry["kind"]) == NAMESPACE:
            uris[signed(entry["number"])] = text_up_to_zero(int(entry["text"]))
    return {
        signed(entry["number"]): name(uris[signed(entry["ns"])], text_up_to_zero(int(entry["text"])))
        for entry in entries
        if int(entry["kind"]) != NAMESPACE and signed(entry["ns"]) in uris
    }


def forget(_event):
    global _known
    _known = None


# Another library may bring another vocabulary, and a program that has just started its texts.
for event in ("new_objfile", "clear_objfiles", "stop"):
    getattr(gdb.events, event).connect(forget)
