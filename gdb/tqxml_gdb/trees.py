"""The element tree, XmlDoc::Elem."""

import gdb

from .memory import Invalid, unsigned_at, word_at
from .numbers import signed
from .tags import name_of_number

# A tree that is not made, or overwritten, may seem to have any number of children.
MOST_PARTS = 1 << 24


class TreePrinter:
    """The tag, and as its children the attributes, by their names, and the children by their place."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        try:
            check_vector(self.value["attrs"])
            check_vector(self.value["children"])
        except Invalid:
            return "<invalid>"
        return name_of_number(signed(self.value["tag"]))

    def children(self):
        try:
            yield from attributes(self.value["attrs"])
            yield from children(self.value["children"])
        except (Invalid, gdb.error):
            return


def check_vector(vector):
    begin, end, size = bounds(vector)
    if begin > end or (end - begin) % size or (end - begin) // size > MOST_PARTS:
        raise Invalid()
    # What is not there cannot be read.
    if begin:
        unsigned_at(begin, 1)
    if begin != end:
        unsigned_at(end - 1, 1)


def bounds(vector):
    impl = vector["_M_impl"]
    begin, end = impl["_M_start"], impl["_M_finish"]
    return int(begin), int(end), pointer_type(vector).target().sizeof


def pointer_type(vector):
    return vector["_M_impl"]["_M_start"].type.strip_typedefs()


def attributes(vector):
    check_vector(vector)
    begin, end, size = bounds(vector)
    for place in range(begin, end, size):
        attribute = gdb.Value(place).cast(pointer_type(vector)).dereference()
        yield "@" + name_of_number(signed(attribute["id"])), attribute["value"]


def children(vector):
    check_vector(vector)
    begin, end, size = bounds(vector)
    for number, place in enumerate(range(begin, end, size)):
        yield f"[{number}]", content(word_at(place))


def content(child):
    """The text or the element in a child, which is a variant of these: an index stands behind the
    larger of them."""
    kinds = [gdb.lookup_type("Orn::UString"), gdb.lookup_type("Orn::XmlDoc::Elem")]
    index = unsigned_at(child + max(kind.sizeof for kind in kinds), 1)
    if index >= len(kinds):
        raise Invalid()
    return gdb.Value(child).cast(kinds[index].pointer()).dereference()
