#pragma once

#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtGui/QPixmap>

namespace KV {

/// Colours, font and images of the column list, looked up once per theme and scale.
struct AccountColumnLook
{
    QFont font;
    QColor background;
    QColor border;
    QColor text;
    QColor dimText;
    QColor hover;
    QColor selected;
    QColor accent;
    QColor fill; ///< of a checked box
    QColor onFill;
    QColor disabledFill; ///< of the checked box of a locked column
    QPixmap locked;
    QPixmap unlocked;

    static AccountColumnLook fromResources();
};

} // namespace KV
