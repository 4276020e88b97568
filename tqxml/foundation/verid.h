#ifndef TQXML_FOUNDATION_VERID_H
#define TQXML_FOUNDATION_VERID_H

#include "tqxml/foundation/Export.h"

/// @file
/// The identification line of the library, for diagnostic tools: its name in 33 columns, one blank,
/// the release number, one blank, the build time (UTC) in parentheses, a line feed:
///
///     libtqxml                          1.0.0.0 (Sat Nov 21 08:33:05 2026)
///
/// Usable from C as well as from C++.

#ifdef __cplusplus
extern "C" {
#endif

/// Writes the line to `dst`, which must have room for 128 bytes. Returns the number of characters
/// written without the closing zero, as sprintf does.
TQXML_API int libtqxml_sprintf_verid(char* dst);

/// Writes the line to the standard output. Returns what printf does: the number of characters
/// written, or a negative number when that failed.
TQXML_API int libtqxml_print_verid(void);

#ifdef __cplusplus
}
#endif

#endif
