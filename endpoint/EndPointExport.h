#pragma once

#include <QtGlobal>

// The bus client is a shared library; everything not marked here stays inside it.
#ifdef ENDPOINT_LIBRARY
#    define ENDPOINT_EXPORT Q_DECL_EXPORT
#else
#    define ENDPOINT_EXPORT Q_DECL_IMPORT
#endif
