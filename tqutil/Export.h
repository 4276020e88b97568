#ifndef TQUTIL_EXPORT_H
#define TQUTIL_EXPORT_H

/// Marks what libtqutil.so offers to its users; everything else stays hidden in the library.
#define TQUTIL_API __attribute__((visibility("default")))
/// Marks what a class that is offered keeps to itself. What its inline functions use cannot be.
#define TQUTIL_LOCAL __attribute__((visibility("hidden")))

#endif
