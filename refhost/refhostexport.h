#pragma once

#include <QtCore/qglobal.h>

/// Marks what the reference host offers besides the contract: making records, registering types, switching themes,
/// filling look-ups.
#if defined(REFHOST_STATIC)
#define REFHOST_API
#elif defined(REFHOST_LIBRARY)
#define REFHOST_API Q_DECL_EXPORT
#else
#define REFHOST_API Q_DECL_IMPORT
#endif
