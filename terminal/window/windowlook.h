#pragma once

#include <QtGui/QColor>
#include <QtGui/QFont>

namespace terminal {

/// Colours, fonts and lengths of the window's own parts (bars, titles, tabs): looked up when such a part is made and at
/// each theme or scale change. GUI thread.
struct WindowLook
{
    QFont font;
    QFont boldFont;
    QFont numberFont;
    QColor background;
    QColor bar; ///< bars and titles
    QColor hover;
    QColor pressed;
    QColor line;
    QColor text;
    QColor dimText;
    QColor accent;
    QColor error;
    int topBarHeight = 0;
    int titleHeight = 0;
    int statusBarHeight = 0;
    int gap = 0; ///< between the things in a bar

    static WindowLook fromResources();
};

} // namespace terminal
