"""The handles of a DomParser. They point into the tree of Xerces-C++, whose objects are recognised by
their virtual tables, so that nothing is made of what is something else."""

import re

import gdb

from .memory import Invalid, Text, name, quoted, text_up_to_zero, word_at
from .numbers import signed
from .tags import name_of_number

VTABLE = re.compile(r"vtable for xercesc_3_2::(\w+)")

# Places in these objects, in words: namespace URI and local name.
NAMES = {"DOMElementNSImpl": (18, 19), "DOMAttrNSImpl": (14, 15)}
# The first child of an attribute; in a text the next one and the buffer, in that the text and its
# length.
FIRST_CHILD_OF_ATTRIBUTE = 9
NEXT_OF_TEXT = 7
BUFFER_OF_TEXT = 8
MOST_TEXTS = 1 << 10


def class_of(node):
    """Empty for what is no object of Xerces-C++ 3.2."""
    symbol = gdb.execute(f"info symbol {word_at(node):#x}", to_string=True)
    found = VTABLE.match(symbol)
    return found.group(1) if found else ""


def name_of_node(node):
    """{URI}name. Raises Invalid."""
    places = NAMES.get(class_of(node))
    if places is None:
        raise Invalid()
    uri, local = (text_up_to_zero(word_at(node, place)) for place in places)
    return name(uri, local)


def value_of_attribute(node):
    value = ""
    text = word_at(node, FIRST_CHILD_OF_ATTRIBUTE)
    for _ in range(MOST_TEXTS):
        if text == 0:
            break
        if class_of(text) != "DOMTextImpl":
            raise Invalid()
        buffer = word_at(text, BUFFER_OF_TEXT)
        value += Text(word_at(buffer), word_at(buffer, 1)).string()
        text = word_at(text, NEXT_OF_TEXT)
    return quoted(value)


class HandlePrinter:
    def __init__(self, value):
        self.node = int(value["node"])
        self.tag = signed(value["tag_id"])

    def to_string(self):
        if self.node == 0:
            return "nil"
        try:
            return self.shown()
        except Invalid:
            return "<invalid>"

    def name(self):
        """What the document says, or else what the handle remembers."""
        try:
            return name_of_node(self.node)
        except Invalid:
            # A release of Xerces-C++ that is not known here has its names in other places.
            if self.tag == 0 or not self.is_readable():
                raise
            return name_of_number(self.tag)

    def is_readable(self):
        word_at(word_at(self.node))
        return True


class ElemPrinter(HandlePrinter):
    def shown(self):
        return self.name()


class AttributePrinter(HandlePrinter):
    def shown(self):
        return f"{self.name()} = {value_of_attribute(self.node)}"
