#ifndef TQUTIL_EXPORT_H
#define TQUTIL_EXPORT_H

// What includes other headers than tqxml/foundation/verid.h, which is for C too, comes by here.
#if __cplusplus < 201703L
#error "tqutil and tqxml need C++17 or later: compile with -std=c++17"
#endif

/// Marks what libtqutil.so offers to its users; everything else stays hidden in the library.
#define TQUTIL_API __attribute__((visibility("default")))
/// Marks what a class that is offered keeps to itself. What its inline functions use cannot be.
#define TQUTIL_LOCAL __attribute__((visibility("hidden")))

#endif
