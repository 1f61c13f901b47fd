#include "log/cloglayout.h"

#include <algorithm>

namespace KV {

namespace {

constexpr int strip = 2; ///< pixels kept free above and below the rows

} // namespace

int CLogLayout::pageLines() const
{
    return std::max(size.height() / lineHeight, 1);
}

int CLogLayout::topPad() const
{
    return (size.height() - pageLines() * lineHeight) / 2;
}

int CLogLayout::textWidth() const
{
    return size.width() - 2 * margin;
}

int CLogLayout::shownRows() const
{
    return std::max(size.height() - topPad(), 0) / lineHeight + 1;
}

int CLogLayout::rowAt(int y) const
{
    return (y - topPad()) / lineHeight;
}

QRect CLogLayout::rowRect(int row) const
{
    return {0, topPad() + row * lineHeight, size.width(), lineHeight};
}

QRect CLogLayout::drawnArea() const
{
    return {0, strip, size.width(), size.height() - 2 * strip};
}

} // namespace KV
