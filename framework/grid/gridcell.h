#pragma once

#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtGui/QRgb>

#include "grid/gridsource.h"

namespace ZB {

/// What a cell's state adds to its content.
enum GridDecor : quint8
{
    GridDecorSelected = 1,
    GridDecorFocused = 2, ///< together with selected: the grid has the focus
    GridDecorCurrent = 4,
    GridDecorOdd = 8,
    GridDecorHovered = 16
};

/// One cell as it was painted last.
struct GridCell
{
    /// Another cell stands here, on the pixels of this one.
    void forgetContent()
    {
        const QRect wasDrawn = drawn;
        const QRgb wasGround = ground;
        *this = GridCell();
        drawn = wasDrawn;
        ground = wasGround;
    }

    QString text;
    QString unit;
    QRgb color = 0;      ///< 0: the grid's own
    QRgb background = 0; ///< 0: the grid's own
    qint64 icon = 0;     ///< cache key of its pixmap; 0: none
    qint64 flashStart = 0;
    GridFlash flash = GridFlash::None;
    quint8 flashStep = 0; ///< as painted; 0: faded
    quint8 decor = 0;     ///< GridDecor
    bool known = false;   ///< the content above is the source's
    bool painted = false; ///< its pixels show the content above
    QRgb ground = 0;      ///< on all of its pixels but for `drawn` and the lines; 0: on not all of them, or not known
    QRect drawn;          ///< from the cell's corner
};

} // namespace ZB
