#ifndef TQXML_FOUNDATION_XERCESSTART_H
#define TQXML_FOUNDATION_XERCESSTART_H

namespace Orn {

/// Initialises Xerces-C++ for a reader, with Xerces' own defaults, unless another reader has done
/// so. Called while the library is loaded, since that is not safe between threads. Returns whether
/// it succeeded. A failure that Xerces reports is written to the standard error stream, so that the
/// library still loads. Xerces is never terminated: other parts of the process may be using it.
bool start_xerces();

/// Raises RuntimeException UNABLE_TO_INITIALIZE_XERCES unless `initialized_ok`.
void check_xerces_started(bool initialized_ok);

}  // namespace Orn

#endif
