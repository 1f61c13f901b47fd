#pragma once

#include <QtCore/QRect>
#include <QtGui/QImage>
#include <QtGui/QRgb>
#include <vector>

#include "frameworkexport.h"
#include "grid/gridtints.h"

namespace ZB {

/// One inked pixel of a shape, and how much of it is covered (1 to 255).
struct GridInk
{
    qint16 x;
    qint16 y;
    quint16 coverage;
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
    /// Colour through the ink of a shape whose origin is at (x, y). `extent` encloses the ink, seen from the origin.
    /// The tint's colour is mixed with whatever is there; where that is the tint's ground it costs least.
    void blendInk(int x, int y, const std::vector<GridInk> &ink, const QRect &extent, const GridTint &tint);
    /// The pixel at a point, or at the nearest one inside of the clip; 0 when nothing is.
    QRgb pixelNear(int x, int y) const;
    /// A picture of Format_ARGB32_Premultiplied over what is there.
    void blendPicture(int x, int y, const QImage &source);
    /// Moves the pixels of `area` sideways by `dx`; what is uncovered keeps its old pixels.
    void scrollSideways(const QRect &area, int dx);

private:
    QRgb *line(int y) { return reinterpret_cast<QRgb *>(bits + y * stride); }

    uchar *bits;
    qint64 stride;
    QRect whole;
    QRect bounds;
};

} // namespace ZB
