#ifndef TQUTIL_EXPORT_H
#define TQUTIL_EXPORT_H

/// Marks what libtqutil.so offers to its users; everything else stays hidden in the library.
#define TQUTIL_API __attribute__((visibility("default")))

#endif
