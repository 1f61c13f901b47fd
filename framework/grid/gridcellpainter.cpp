#include "grid/gridcellpainter.h"

#include <QtGui/QPixmap>
#include <algorithm>
#include <cmath>

#include "grid/gridcanvas.h"

namespace ZB {

namespace {

constexpr int strongestFlash = 90; ///< of 255
constexpr int iconGap = 4;
constexpr int unitGap = 2;

bool isAbsent(const QString &text)
{
    return text.size() == 1 && text.at(0) == QLatin1Char('-');
}

QRgb strongerLine(const GridLook &look)
{
    return mixColors(look.line.rgb(), look.dimText.rgb(), 128);
}

} // namespace

bool haveLikeCells(const GridColumn &a, const GridColumn &b)
{
    return cellFont(a) == cellFont(b) && a.numeric == b.numeric && a.alignment == b.alignment &&
           a.unitSample == b.unitSample;
}

GridFont cellFont(const GridColumn &column)
{
    if (column.numeric)
        return column.bold ? GridFont::NumberBold : GridFont::Number;
    return column.bold ? GridFont::TextBold : GridFont::Text;
}

GridCellPainter::GridCellPainter() = default;

void GridCellPainter::setLook(const GridLook &look, double pixelRatio)
{
    colors = look;
    ratio = pixelRatio;
    texts.setLook(look, pixelRatio);
    icons.clear();
}

int GridCellPainter::devicePixels(int pixels) const
{
    return static_cast<int>(std::lround(pixels * ratio));
}

qint64 GridCellPainter::keepIcon(const QPixmap *icon)
{
    if (!icon || icon->isNull())
        return 0;
    const qint64 key = icon->cacheKey();
    if (!icons.contains(key)) {
        QImage image = icon->toImage();
        const QSize size = (QSizeF(image.size()) * (ratio / icon->devicePixelRatio())).toSize();
        if (size != image.size())
            image = image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        icons.insert(key, image.convertToFormat(QImage::Format_ARGB32_Premultiplied));
    }
    return key;
}

quint8 GridCellPainter::flashStep(const GridCell &cell, qint64 now)
{
    if (cell.flash == GridFlash::None)
        return 0;
    const qint64 left = flashMilliseconds - std::clamp<qint64>(now - cell.flashStart, 0, flashMilliseconds);
    return static_cast<quint8>((left * flashSteps + flashMilliseconds - 1) / flashMilliseconds);
}

QRgb GridCellPainter::rowBackground(quint8 decor) const
{
    if (decor & GridDecorSelected)
        return ((decor & GridDecorFocused) ? colors.selected : colors.selectedNoFocus).rgb();
    return ((decor & GridDecorOdd) ? colors.oddBackground : colors.background).rgb();
}

QRgb GridCellPainter::background(const GridCell &cell) const
{
    const bool own = cell.background != 0 && !(cell.decor & GridDecorSelected);
    const QRgb ground = own ? mixColors(rowBackground(cell.decor), cell.background, qAlpha(cell.background))
                            : rowBackground(cell.decor);
    if (cell.flashStep == 0)
        return ground;
    const QColor &flash = cell.flash == GridFlash::Rise   ? colors.rise
                          : cell.flash == GridFlash::Fall ? colors.fall
                                                          : colors.equal;
    return mixColors(ground, flash.rgb(), strongestFlash * cell.flashStep / flashSteps);
}

QRgb GridCellPainter::textColor(const GridCell &cell) const
{
    if (isAbsent(cell.text))
        return colors.dimText.rgb();
    const QRgb own = cell.color ? cell.color : colors.text.rgb();
    return (cell.decor & GridDecorSelected) && own == colors.text.rgb() ? colors.selectedText.rgb() : own;
}

QRect GridCellPainter::inside(const QRect &rect) const
{
    return rect.adjusted(0, 0, -colors.verticalLine, -colors.horizontalLine);
}

void GridCellPainter::paintBackground(GridCanvas &canvas, const QRect &rect, QRgb ground, bool frozenEdge)
{
    const QRect content = inside(rect);
    canvas.fill(content, ground);
    const QRgb side = frozenEdge ? strongerLine(colors) : colors.line.rgb();
    canvas.fill(QRect(content.right() + 1, rect.top(), colors.verticalLine, rect.height()), side);
    canvas.fill(QRect(rect.left(), content.bottom() + 1, content.width(), colors.horizontalLine), colors.line.rgb());
}

int GridCellPainter::iconWidth(const GridCell &cell) const
{
    const auto icon = icons.constFind(cell.icon);
    return icon == icons.constEnd() ? 0 : icon->width() + devicePixels(iconGap);
}

QRect GridCellPainter::textRect(const QRect &rect, const GridCell &cell, const GridColumn &column) const
{
    const int margin = devicePixels(colors.margin);
    return inside(rect).adjusted(margin + iconWidth(cell), 0, -margin - unitSlot(column), 0);
}

int GridCellPainter::unitSlot(const GridColumn &column) const
{
    return column.unitSample.isEmpty() ? 0 : texts.width(column.unitSample, cellFont(column)) + devicePixels(unitGap);
}

bool GridCellPainter::paintContent(GridCanvas &canvas, const QRect &rect, const GridCell &cell,
                                   const GridColumn &column)
{
    const QRect room = textRect(rect, cell, column);
    const auto icon = icons.constFind(cell.icon);
    if (icon != icons.constEnd())
        canvas.blendPicture(room.left() - iconWidth(cell), rect.top() + (rect.height() - icon->height()) / 2, *icon);

    const bool ownSlot = !column.unitSample.isEmpty();
    const QString text = ownSlot || cell.unit.isEmpty() ? cell.text : cell.text + cell.unit;
    if (text.isEmpty())
        return false;
    const GridFont font = cellFont(column);
    const GridPlacedText placed =
        texts.place(room, text, font, column.alignment, column.numeric ? GridCut::Hashes : GridCut::Ellipsis);
    if (!marked.isEmpty())
        paintMarks(canvas, inside(rect), text, placed, font);
    texts.draw(canvas, placed, text, font, textColor(cell));
    if (ownSlot && !cell.unit.isEmpty() && !placed.cut) {
        const int gap = devicePixels(unitGap);
        const QRect slot(room.right() + 1 + gap, room.top(), texts.width(column.unitSample, font), room.height());
        texts.draw(canvas, slot, cell.unit, font, Qt::AlignLeft, GridCut::Ellipsis, textColor(cell));
    }
    return placed.cut;
}

void GridCellPainter::paintMarks(GridCanvas &canvas, const QRect &rect, const QString &text,
                                 const GridPlacedText &placed, GridFont font)
{
    int at = text.indexOf(marked, 0, Qt::CaseInsensitive);
    if (at < 0)
        return;
    if (!placed.simple || placed.count == 0) {
        canvas.fill(rect, colors.hit.rgb());
        return;
    }
    const GlyphStore &glyphs = texts.glyphs(font);
    const QRect lines(0, placed.baseline - glyphs.ascent(), 0, glyphs.height());
    for (; at >= 0; at = text.indexOf(marked, at + marked.size(), Qt::CaseInsensitive)) {
        const int begin = std::min(at, placed.count);
        const int end = std::min(at + marked.size(), placed.count);
        const int left = placed.x + glyphs.width(text.left(begin));
        // A match in the part that is cut off lights up the ellipsis.
        const int right =
            begin == placed.count ? left + glyphs.width(placed.tail) : placed.x + glyphs.width(text.left(end));
        canvas.fill(QRect(left, lines.top(), right - left, lines.height()), colors.hit.rgb());
    }
}

void GridCellPainter::paintFrame(GridCanvas &canvas, const QRect &rect, const GridCell &cell)
{
    if (cell.decor & GridDecorCurrent)
        canvas.frame(inside(rect), colors.accent.rgb());
}

void GridCellPainter::paintNumber(GridCanvas &canvas, const QRect &rect, qint64 number, quint8 decor)
{
    const QRect content = inside(rect);
    canvas.fill(rect, colors.line.rgb());
    canvas.fill(content, (decor & GridDecorSelected) ? rowBackground(decor) : colors.numberBackground.rgb());
    const int margin = devicePixels(colors.margin) / 2;
    texts.draw(canvas, content.adjusted(margin, 0, -margin, 0), QString::number(number), GridFont::RowNumber,
               colors.rowNumberAlignment, GridCut::Hashes, colors.rowNumberText.rgb());
}

void GridCellPainter::paintRest(GridCanvas &canvas, const QRect &rect, quint8 decor)
{
    canvas.fill(rect, rowBackground(decor));
    canvas.fill(QRect(rect.left(), rect.bottom() + 1 - colors.horizontalLine, rect.width(), colors.horizontalLine),
                colors.line.rgb());
}

bool GridCellPainter::isCut(const QRect &rect, const GridCell &cell, const GridColumn &column)
{
    const QString text = column.unitSample.isEmpty() ? cell.text + cell.unit : cell.text;
    return texts.place(textRect(rect, cell, column), text, cellFont(column), column.alignment, GridCut::Ellipsis).cut;
}

int GridCellPainter::wantedWidth(const GridCell &cell, const GridColumn &column) const
{
    const QString text = column.unitSample.isEmpty() ? cell.text + cell.unit : cell.text;
    const QRect nothing(0, 0, 0, 0);
    return texts.width(text, cellFont(column)) + nothing.width() - textRect(nothing, cell, column).width();
}

int GridCellPainter::numberWidth(int digits) const
{
    const int margin = devicePixels(colors.margin) / 2;
    return digits * texts.glyphs(GridFont::RowNumber).advance(QLatin1Char('0')) + 2 * margin + colors.verticalLine;
}

} // namespace ZB
