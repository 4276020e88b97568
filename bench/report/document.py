"""The sections of a document that a run replaces; the words around them stay."""


def replace_section(document: str, section: str, body: str) -> str:
    begin, end = f"<!-- begin {section} -->\n", f"<!-- end {section} -->"
    before, found_begin, rest = document.partition(begin)
    _, found_end, after = rest.partition(end)
    if not found_begin or not found_end:
        raise ValueError(f"the document has no section between '{begin.strip()}' and '{end}'")
    return f"{before}{begin}\n{body.strip()}\n\n{end}{after}"
