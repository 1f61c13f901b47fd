#include "grid/gridcanvas.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace ZB {

namespace {

/// What is left of a colour under something that covers `coverage` of 255.
QRgb dimmed(QRgb color, quint32 coverage)
{
    return mixColors(color, 0, static_cast<int>(coverage)) & 0x00ffffffu;
}

/// Returns the end.
inline const GridShape::Dot *blendDots(QRgb *origin, const GridShape::Dot *dot, const GridShape::Dot *end,
                                       const GridTint &tint)
{
    const QRgb ground = tint.ground; // the pixels could be the tint's, as far as the compiler knows
    const QRgb *const mixed = tint.mixed.data();
    for (; dot != end; ++dot) {
        QRgb &target = origin[dot->x];
        target = target == ground ? mixed[dot->coverage] : mixColors(target, tint.color, dot->coverage);
    }
    return end;
}

} // namespace

GridCanvas::GridCanvas(QImage &picture)
    : bits(picture.bits()), stride(picture.bytesPerLine()), whole(picture.rect()), bounds(picture.rect())
{
    forgetDrawn();
}

void GridCanvas::forgetDrawn()
{
    drawnBegin = {std::numeric_limits<int>::max(), std::numeric_limits<int>::max()};
    drawnEnd = {std::numeric_limits<int>::min(), std::numeric_limits<int>::min()};
}

void GridCanvas::setClip(const QRect &rect)
{
    bounds = rect & whole;
}

void GridCanvas::fill(const QRect &rect, QRgb color)
{
    const QRect area = rect & bounds;
    if (area.isEmpty())
        return;
    noteDrawn(area);
    color |= 0xff000000u;
    for (int y = area.top(); y <= area.bottom(); ++y)
        std::fill_n(line(y) + area.left(), area.width(), color);
}

void GridCanvas::frame(const QRect &rect, QRgb color)
{
    fill(QRect(rect.left(), rect.top(), rect.width(), 1), color);
    fill(QRect(rect.left(), rect.bottom(), rect.width(), 1), color);
    fill(QRect(rect.left(), rect.top(), 1, rect.height()), color);
    fill(QRect(rect.right(), rect.top(), 1, rect.height()), color);
}

void GridCanvas::blendShape(int x, int y, const GridShape &shape, const GridTint &tint)
{
    const QRect area = shape.extent.translated(x, y);
    const QRect inside = area & bounds;
    if (inside.isEmpty())
        return;
    noteDrawn(inside);
    const GridShape::Dot *dot = shape.dots.data();
    if (inside != area)
        return blendCut(x, y, shape, tint);
    uchar *const origin = bits + y * stride + static_cast<qint64>(x) * 4;
    for (const GridShape::Line &inked : shape.lines)
        dot = blendDots(reinterpret_cast<QRgb *>(origin + inked.y * stride), dot, dot + inked.dots, tint);
}

void GridCanvas::blendCut(int x, int y, const GridShape &shape, const GridTint &tint)
{
    const GridShape::Dot *next = shape.dots.data();
    for (const GridShape::Line &inked : shape.lines) {
        const GridShape::Dot *dot = next;
        const GridShape::Dot *end = next += inked.dots;
        if (y + inked.y < bounds.top() || y + inked.y > bounds.bottom())
            continue;
        while (dot != end && x + dot->x < bounds.left())
            ++dot;
        while (end != dot && x + (end - 1)->x > bounds.right())
            --end;
        blendDots(line(y + inked.y) + x, dot, end, tint);
    }
}

QRgb GridCanvas::pixelNear(int x, int y) const
{
    if (bounds.isEmpty())
        return 0;
    x = std::clamp(x, bounds.left(), bounds.right());
    y = std::clamp(y, bounds.top(), bounds.bottom());
    return reinterpret_cast<const QRgb *>(bits + y * stride)[x];
}

void GridCanvas::blendPicture(int x, int y, const QImage &source)
{
    Q_ASSERT(source.isNull() || source.format() == QImage::Format_ARGB32_Premultiplied);
    const QRect area = QRect(QPoint(x, y), source.size()) & bounds;
    if (area.isEmpty())
        return;
    noteDrawn(area);
    for (int row = area.top(); row <= area.bottom(); ++row) {
        const auto *from = reinterpret_cast<const QRgb *>(source.constScanLine(row - y)) + (area.left() - x);
        QRgb *target = line(row) + area.left();
        for (int left = area.width(); left > 0; --left, ++from, ++target)
            *target = 0xff000000u | ((*from & 0x00ffffffu) + dimmed(*target, *from >> 24));
    }
}

void GridCanvas::scrollSideways(const QRect &area, int dx)
{
    const QRect inside = area & whole;
    const int kept = inside.width() - std::abs(dx);
    if (dx == 0 || kept <= 0)
        return;
    const int from = dx > 0 ? inside.left() : inside.left() - dx;
    for (int y = inside.top(); y <= inside.bottom(); ++y)
        std::memmove(line(y) + from + dx, line(y) + from, static_cast<size_t>(kept) * sizeof(QRgb));
}

} // namespace ZB
