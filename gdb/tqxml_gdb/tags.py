"""XmlTag, and the names of the numbers that stand for tags."""

import gdb

from . import vocabularies
from .memory import Invalid, name, number_at, word_at, word_size
from .numbers import signed
from .texts import text_of

# Places in a Registry, in words: its members, of the standard library, have so many.
NAMESPACES_WORDS = 7
TAGS_WORDS = 10
BY_SMALL_NUMBER = NAMESPACES_WORDS + TAGS_WORDS
BY_OTHER_NUMBER = BY_SMALL_NUMBER + 3
# In a table of the standard library.
FIRST_NODE = 2
MOST_NODES = 1 << 20


def name_of_tag(tag):
    """{URI}name of an XmlTag. Raises Invalid."""
    return name(text_of(tag["ns_"]).string(), text_of(tag["simple_name_"]).string())


def name_of_number(number):
    """{URI}name, as far as there is one with that number in the registry, or, without the symbols of
    the library, in a vocabulary of the program."""
    if number == 0:
        return "no tag"
    try:
        tag = registered_tag(number)
        known = name_of_tag(tag) if tag is not None else None
    except (Invalid, gdb.error):
        known = vocabularies.name_of_number(number)
    return known or f"tag {number}"


def registered_tag(number):
    registry = address_of_registry()
    if not registry:
        return None
    place = small_entry(registry, number) or other_entry(registry, number)
    if not place:
        return None
    return gdb.Value(place).cast(gdb.lookup_type("Orn::XmlTag").pointer()).dereference()


def address_of_registry():
    """Null when nothing has used it yet. Raises gdb.error without the symbols of the library."""
    # As a bare number: of what type it is only the library's own debug information knows.
    pointer = gdb.parse_and_eval("(char*)&'Orn::Registry::existing'")
    return word_at(int(pointer))


def small_entry(registry, number):
    begin = word_at(registry, BY_SMALL_NUMBER)
    end = word_at(registry, BY_SMALL_NUMBER + 1)
    if number < 0 or number >= (end - begin) // word_size():
        return 0
    return word_at(begin, number)


def other_entry(registry, number):
    node = word_at(registry, BY_OTHER_NUMBER + FIRST_NODE)
    for _ in range(MOST_NODES):
        if not node:
            break
        # The next node; the number, in a word of its own; the entry.
        if number_at(node + word_size()) == number:
            return word_at(node, 2)
        node = word_at(node)
    return 0


class XmlTagPrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        try:
            return name_of_tag(self.value)
        except Invalid:
            return "<invalid>"


class IdPrinter:
    """A number that stands for a tag."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        number = signed(self.value)
        tag = name_of_number(number)
        return tag if tag == f"tag {number}" else f"{number} {tag}"
