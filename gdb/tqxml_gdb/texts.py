"""UString."""

from .memory import Invalid, Text, quoted

# UString::max_length.
MOST = 2**32 - 2


def text_of(ustring):
    """The text of a UString. Raises Invalid."""
    string = ustring["text_"]
    place = int(string["_M_dataplus"]["_M_p"])
    length = int(string["_M_string_length"])
    own_room = int(string["_M_local_buf"].address)
    room = 7 if place == own_room else int(string["_M_allocated_capacity"])
    if place == 0 or length > room or length > MOST:
        raise Invalid()
    return Text(place, length)


class UStringPrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        try:
            return quoted(text_of(self.value).string())
        except Invalid:
            return "<invalid>"
