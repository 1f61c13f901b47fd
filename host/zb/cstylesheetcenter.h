#pragma once

#include <QtCore/QString>

#include "hostexport.h"

namespace ZB {

/// Kinds of stock widgets that controls ask for by number.
enum EControlType : int
{
    ControlTree = 14 ///< a tree without a frame, for a widget that draws one around it
};

/// Style sheets for the few stock Qt widgets in use. GUI thread.
class HOST_API CStyleSheetCenter
{
public:
    /// The sheet of a kind of widget ("QMenu", "QLineEdit" ...) in the present theme and scale; empty for an unknown
    /// kind.
    static QString getStyle(const QString &widgetKind);
    static QString getStyle(EControlType type);
};

} // namespace ZB
