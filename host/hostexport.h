#pragma once

#include <QtCore/qglobal.h>

/// Marks what the host provides and the library of controls imports. A host that is linked statically defines
/// HOST_STATIC; a library that implements a share of the contract defines HOST_LIBRARY while it is compiled.
#if defined(HOST_STATIC)
#define HOST_API
#elif defined(HOST_LIBRARY)
#define HOST_API Q_DECL_EXPORT
#else
#define HOST_API Q_DECL_IMPORT
#endif
