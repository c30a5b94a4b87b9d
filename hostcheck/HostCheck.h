// The host checker, libtradechartobject-check: a terminal loads it in the place of libtradechartobject, by
// another file name and nothing else. It makes the same overlays, stands between them and the terminal, and
// tells in words what the terminal does against docs/host-interface.md. Its reports go to stderr and, when
// TRADECHARTOBJECT_CHECK_REPORT names a file, to its end.
//
// What is declared here is for a terminal's own tests; a terminal that only loads the checker needs none of
// it.
#pragma once

#include <QtGlobal>

/// Ends the check as the end of the program would, with overlays that are still there as not ended, and
/// begins another one. Returns the summary: "no rule broken ..." or a line with count and id for each rule
/// that was broken. The text stays until the next call. To be resolved by its name; on the user-interface
/// thread.
extern "C" Q_DECL_EXPORT const char *EndHostCheck();
