"""Numbers of tags and namespaces."""


def signed(value):
    """Of 32 bits; gdb takes the types of these numbers for such without a sign."""
    number = int(value) & 0xFFFFFFFF
    return number - (1 << 32) if number >= 1 << 31 else number
