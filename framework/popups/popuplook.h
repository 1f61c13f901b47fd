#pragma once

#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QFont>

#include "frameworkexport.h"

namespace ZB {

/// Colours and fonts of what opens over a table and stands around it: looked up once when such a part is made and at
/// each theme or scale change. GUI thread.
struct FRAMEWORK_API PopupLook
{
    QFont font;
    QFont numberFont;
    QColor background;
    QColor raised; ///< strips and badges, which stand out from the rows
    QColor border;
    QColor text;
    QColor dimText;
    QColor hover;
    QColor pressed;
    QColor accent;
    QColor accentText; ///< on the accent
    QColor selected;   ///< ground of the current row of a list
    QColor link;       ///< the accent as a colour of texts
    QColor warning;    ///< frame of a field whose text leads nowhere

    static PopupLook fromResources();

    /// Style sheet for the stock widgets in it: the host's, and what tells titles, second texts and failures.
    QString sheet() const;
};

/// A colour between two, `share` thousandths of the way to the second.
FRAMEWORK_API QColor mixed(const QColor &from, const QColor &to, int share);

} // namespace ZB
