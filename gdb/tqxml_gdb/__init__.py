"""Printers of gdb for texts, tags, trees and the handles of readers. They only read memory: no function
of the program is called, so that they also serve a core file."""

import gdb.printing

from . import dom, sax, tags, texts, trees

PRINTERS = {
    "Orn::UString": texts.UStringPrinter,
    "Orn::XmlTag": tags.XmlTagPrinter,
    "Orn::XmlTag::Id": tags.IdPrinter,
    "Orn::XmlDoc::Elem": trees.TreePrinter,
    "Orn::DomParser::Elem": dom.ElemPrinter,
    "Orn::DomParser::Attribute": dom.AttributePrinter,
    "Orn::SaxParser::Elem": sax.ElemPrinter,
    "Orn::SaxParser::Attribute": sax.AttributePrinter,
}


def register(objfile=None):
    printers = gdb.printing.RegexpCollectionPrettyPrinter("tqxml")
    for name, printer in PRINTERS.items():
        printers.add_printer(name, f"^{name}$", printer)
    gdb.printing.register_pretty_printer(objfile, printers, replace=True)
