#pragma once

#include <QtCore/qglobal.h>

/// Marks what the library of form controls exports.
#if defined(FORMS_STATIC)
#define FORMS_API
#elif defined(FORMS_LIBRARY)
#define FORMS_API Q_DECL_EXPORT
#else
#define FORMS_API Q_DECL_IMPORT
#endif
