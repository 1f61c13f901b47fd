#pragma once

#include <QtCore/QRect>
#include <QtGui/QImage>
#include <QtGui/QRgb>
#include <algorithm>
#include <vector>

#include "frameworkexport.h"
#include "grid/gridtints.h"

namespace ZB {

/// The inked pixels of a shape, line by line; places are seen from its origin.
struct GridShape
{
    struct Dot
    {
        qint16 x;
        quint16 coverage; ///< 1 to 255
    };
    struct Line
    {
        int y;
        int dots; ///< how many of them, behind those of the lines above
    };

    std::vector<Line> lines;
    std::vector<Dot> dots;
    QRect extent; ///< encloses the ink
};

/// Plain drawing into a 32-bit opaque picture: rectangles, shapes, pictures, all cut to a clip. What a grid draws
/// thousands of times per frame; for anything else there is QPainter.
///
/// The picture is the caller's, Format_RGB32, and is used by nobody else while the canvas lives. Device pixels.
class FRAMEWORK_API GridCanvas
{
public:
    explicit GridCanvas(QImage &picture);

    QRect clip() const { return bounds; }
    /// Cuts everything to `rect` (and to the picture).
    void setClip(const QRect &rect);

    void fill(const QRect &rect, QRgb color);
    /// A frame of one pixel along the inside of `rect`.
    void frame(const QRect &rect, QRgb color);
    /// Colour through the ink of a shape whose origin is at (x, y). The tint's colour is mixed with whatever is there;
    /// where that is the tint's ground it costs least.
    void blendShape(int x, int y, const GridShape &shape, const GridTint &tint);
    /// The pixel at a point, or at the nearest one inside of the clip; 0 when nothing is.
    QRgb pixelNear(int x, int y) const;
    /// A picture of Format_ARGB32_Premultiplied over what is there.
    void blendPicture(int x, int y, const QImage &source);
    /// Moves the pixels of `area` sideways by `dx`; what is uncovered keeps its old pixels.
    void scrollSideways(const QRect &area, int dx);

    /// Encloses what was drawn since the beginning or since forgetDrawn().
    QRect drawn() const { return drawnEnd.x() > drawnBegin.x() ? QRect(drawnBegin, drawnEnd - QPoint(1, 1)) : QRect(); }
    void forgetDrawn();

private:
    void blendCut(int x, int y, const GridShape &shape, const GridTint &tint);
    QRgb *line(int y) { return reinterpret_cast<QRgb *>(bits + y * stride); }
    void noteDrawn(const QRect &area)
    {
        drawnBegin = {std::min(drawnBegin.x(), area.left()), std::min(drawnBegin.y(), area.top())};
        drawnEnd = {std::max(drawnEnd.x(), area.right() + 1), std::max(drawnEnd.y(), area.bottom() + 1)};
    }

    uchar *bits;
    qint64 stride;
    QRect whole;
    QRect bounds;
    QPoint drawnBegin;
    QPoint drawnEnd; ///< right of and below the last pixel
};

} // namespace ZB
