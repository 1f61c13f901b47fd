#pragma once

#include <QtCore/QRect>

#include "uicontrolexport.h"

namespace KV {

/// Where the rows of a log are, in pixels of the widget. Knows no widget, no text, no colour.
/// Part of CHpfLogWidget, of no use by itself.
struct UICONTROL_API CLogLayout
{
    QSize size;
    int lineHeight = 20;
    int margin = 5; ///< left and right of the text

    /// Rows that fit; at least one.
    int pageLines() const;
    /// Above the first row, so that the rows stand in the middle; negative when not even one row fits.
    int topPad() const;
    int textWidth() const;
    /// Rows, whole or in part, that the widget shows.
    int shownRows() const;
    /// The row at a height, counted from the first one shown.
    int rowAt(int y) const;
    QRect rowRect(int row) const;
    /// Where rows are drawn: all but a strip above and below.
    QRect drawnArea() const;
};

} // namespace KV
