#pragma once

#include <QtCore/QRect>
#include <vector>

#include "frameworkexport.h"
#include "zb/ewidgetanchor.h"

namespace ZB {

/// One place of a widget list. Lengths run along the list, depths across it; pixels.
struct WidgetListItem
{
    int length = 0;  ///< of a fixed item; the least length of a stretching one
    int stretch = 0; ///< parts of the room left over; 0 for a fixed item
    int depth = 0;   ///< of the item, unless its anchor fills
    EWidgetAnchor anchor = AnchorFill;
    bool isSpace = false; ///< no widget: gets no spacing around it
};

/// Where the items of a widget list are. Knows no widget.
struct FRAMEWORK_API WidgetListLayout
{
    Qt::Orientation orientation = Qt::Horizontal;
    QMargins margins;
    int spacing = 0;
    std::vector<WidgetListItem> items;

    /// The rectangle of each item in a list of this size. Items that find no room have length 0 or lie outside.
    std::vector<QRect> place(QSize size) const;
    /// What the items need: their lengths with spacing and margins, the greatest depth with margins.
    QSize needed() const;

private:
    int gapBefore(std::size_t index) const;
    int neededLength() const;
    std::vector<int> lengths(int available) const;
};

} // namespace ZB
