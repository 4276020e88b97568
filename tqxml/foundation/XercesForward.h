#ifndef TQXML_FOUNDATION_XERCESFORWARD_H
#define TQXML_FOUNDATION_XERCESFORWARD_H

/// The few parser types that public headers name by pointer, so that a user of the readers needs
/// no header of Xerces-C++. The namespace carries the version of Xerces; a build against another
/// one stops here, where the alias contradicts Xerces' own.
namespace xercesc_3_2 {
class DOMNamedNodeMap;
class DOMNode;
class ErrorHandler;
class MemBufInputSource;
class XercesDOMParser;
}  // namespace xercesc_3_2

namespace xercesc = xercesc_3_2;

#endif
