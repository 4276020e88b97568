#ifndef TQXML_FOUNDATION_EXPORT_H
#define TQXML_FOUNDATION_EXPORT_H

/// Marks what libtqxml.so offers to its users; everything else stays hidden in the library.
#define TQXML_API __attribute__((visibility("default")))
/// Marks what a class that is offered keeps to itself. What its inline functions use cannot be.
#define TQXML_LOCAL __attribute__((visibility("hidden")))

#endif
