#include "grid/gridcanvas.h"

#include <algorithm>
#include <cstring>

namespace ZB {

namespace {

/// What is left of a colour under something that covers `coverage` of 255.
QRgb dimmed(QRgb color, quint32 coverage)
{
    return mixColors(color, 0, static_cast<int>(coverage)) & 0x00ffffffu;
}

} // namespace

GridCanvas::GridCanvas(QImage &picture)
    : bits(picture.bits()), stride(picture.bytesPerLine()), whole(picture.rect()), bounds(picture.rect())
{
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

void GridCanvas::blendInk(int x, int y, const std::vector<GridInk> &ink, const QRect &extent, const GridTint &tint)
{
    const QRect area = extent.translated(x, y);
    const bool uncut = bounds.contains(area);
    if (!uncut && !bounds.intersects(area))
        return;
    uchar *origin = bits + y * stride + static_cast<qint64>(x) * 4;
    for (const GridInk &dot : ink) {
        if (!uncut && !bounds.contains(x + dot.x, y + dot.y))
            continue;
        QRgb &target = *reinterpret_cast<QRgb *>(origin + dot.y * stride + dot.x * 4);
        target = target == tint.ground ? tint.mixed[dot.coverage] : mixColors(target, tint.color, dot.coverage);
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
