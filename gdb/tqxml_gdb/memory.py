"""What the printers read of a program: words and texts, whose size and place they know themselves."""

import gdb

# No text that is shown is longer, whatever `set print elements` says.
MOST_UNITS = 1 << 20


class Invalid(Exception):
    """What is there cannot be what it should be: not made yet, gone, or overwritten."""


def word_size():
    return gdb.lookup_type("void").pointer().sizeof


def bytes_at(address, size):
    try:
        return bytes(gdb.selected_inferior().read_memory(address, size))
    except (gdb.error, OverflowError, ValueError):
        raise Invalid() from None


def unsigned_at(address, size):
    return int.from_bytes(bytes_at(address, size), "little")


def word_at(address, index=0):
    """The pointer or size at a place, counted in words from the address."""
    size = word_size()
    return unsigned_at(address + index * size, size)


def number_at(address):
    """A number of 32 bits with a sign."""
    return int.from_bytes(bytes_at(address, 4), "little", signed=True)


class Text:
    """UTF-16 in the program, of which no more is read than is shown."""

    def __init__(self, address, length):
        self.address = address
        self.length = length

    def limit(self):
        limit = gdb.parameter("print elements")
        return min(limit or MOST_UNITS, MOST_UNITS)

    def string(self):
        shown = min(self.length, self.limit())
        units = bytes_at(self.address, 2 * shown) if shown else b""
        return units.decode("utf-16-le", "replace") + ("..." if shown < self.length else "")


def text_up_to_zero(address):
    """A text of Xerces; the null pointer is the empty one."""
    if address == 0:
        return ""
    units = b""
    while len(units) < 2 * 4096:
        unit = bytes_at(address + len(units), 2)
        if unit == b"\0\0":
            return units.decode("utf-16-le", "replace")
        units += unit
    raise Invalid()


def printable(text):
    """The text with what the terminal cannot show by its number."""
    charset = gdb.host_charset() if hasattr(gdb, "host_charset") else "ascii"
    try:
        return text.encode(charset, "backslashreplace").decode(charset)
    except (LookupError, UnicodeError):
        return text.encode("ascii", "backslashreplace").decode("ascii")


def quoted(text):
    """Between quotation marks, with the escapes of C."""
    escapes = {'"': '\\"', "\\": "\\\\", "\n": "\\n", "\t": "\\t", "\r": "\\r"}
    units = (escapes.get(c, c if c >= " " else f"\\{ord(c):03o}") for c in text)
    return printable('"' + "".join(units) + '"')


def name(uri, local):
    """{URI}local, or just the local name."""
    return printable(f"{{{uri}}}{local}" if uri else local)
