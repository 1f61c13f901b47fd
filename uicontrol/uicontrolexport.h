#pragma once

#include <QtCore/qglobal.h>

/// Marks what the library of controls exports.
#if defined(UICONTROL_STATIC)
#define UICONTROL_API
#elif defined(UICONTROL_LIBRARY)
#define UICONTROL_API Q_DECL_EXPORT
#else
#define UICONTROL_API Q_DECL_IMPORT
#endif
