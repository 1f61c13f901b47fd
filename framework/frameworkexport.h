#pragma once

#include <QtCore/qglobal.h>

/// Marks what the framework exports besides the host contract: classes that tables, tests and benchmarks use directly.
#if defined(FRAMEWORK_STATIC)
#define FRAMEWORK_API
#elif defined(FRAMEWORK_LIBRARY)
#define FRAMEWORK_API Q_DECL_EXPORT
#else
#define FRAMEWORK_API Q_DECL_IMPORT
#endif
