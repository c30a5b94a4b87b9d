#pragma once

#include <QtGlobal>

// What a terminal may use of the plug-in is marked with this; everything else stays inside the library.
#ifdef TRADECHARTOBJECT_LIBRARY
#    define TRADECHARTOBJECT_EXPORT Q_DECL_EXPORT
#else
#    define TRADECHARTOBJECT_EXPORT Q_DECL_IMPORT
#endif
