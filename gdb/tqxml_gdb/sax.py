"""The handles of a SaxParser, and the counted records behind them."""

import gdb

from .memory import Invalid, Text, number_at, quoted, unsigned_at, word_at, word_size
from .tags import name_of_number

MOST_RECORDS = 1 << 20


class Record:
    """What an element's record and an attribute's have in common: two numbers behind so many
    pointers, the count of references and the tag."""

    def __init__(self, address, pointers):
        self.address = address
        self.numbers = address + pointers * word_size()
        if self.references() == 0 or self.references() > 1 << 30:
            raise Invalid()

    def references(self):
        return unsigned_at(self.numbers, 4)

    def name(self):
        return name_of_number(number_at(self.numbers + 4))

    def text_at(self, place):
        begin, end = word_at(place), word_at(place, 1)
        if begin > end or (end - begin) % 2:
            raise Invalid()
        return quoted(Text(begin, (end - begin) // 2).string())


class AttributeRecord(Record):
    # The pool; count and tag; the value, in three words; the attribute before.
    def __init__(self, address):
        super().__init__(address, 1)

    def value(self):
        return self.text_at(self.numbers + 8)

    def previous(self):
        return word_at(self.numbers + 8, 3)


class ElementRecord(Record):
    # Pool and parser; count and tag; three flags, the second of which is whether the element is
    # open; the text; the first and the last child; the next of the parent's children; the last
    # attribute, and the one that is to be given next.
    def __init__(self, address):
        super().__init__(address, 2)
        self.flags = self.numbers + 8
        self.text = self.flags + word_size()

    def is_open(self):
        return unsigned_at(self.flags + 1, 1) != 0

    def data(self):
        return self.text_at(self.text)

    def first_child(self):
        return word_at(self.text, 3)

    def next_sibling(self):
        return word_at(self.text, 5)

    def attributes(self):
        """In the order of the document."""
        found = []
        place = word_at(self.text, 6)
        while place and len(found) < MOST_RECORDS:
            found.append(AttributeRecord(place))
            place = found[-1].previous()
        return reversed(found)

    def children(self):
        """Those that have been read and not been given away."""
        place = self.first_child()
        for _ in range(MOST_RECORDS):
            if not place:
                return
            child = ElementRecord(place)
            yield child
            place = child.next_sibling()


class HandlePrinter:
    def __init__(self, value):
        self.record = int(value["record_"]["record_"])

    def to_string(self):
        if self.record == 0:
            return "nil"
        try:
            return self.shown()
        except Invalid:
            return "<invalid>"


class ElemPrinter(HandlePrinter):
    """The tag, and what has been read of the element and is still there."""

    def shown(self):
        record = ElementRecord(self.record)
        return record.name() + (" (open)" if record.is_open() else "")

    def children(self):
        if self.record == 0:
            return
        try:
            record = ElementRecord(self.record)
            for attribute in record.attributes():
                yield "@" + attribute.name(), attribute.value()
            if record.data() != '""':
                yield "data", record.data()
            for number, child in enumerate(record.children()):
                yield f"[{number}]", child.name()
        except (Invalid, gdb.error):
            return


class AttributePrinter(HandlePrinter):
    def shown(self):
        record = AttributeRecord(self.record)
        return f"{record.name()} = {record.value()}"
