#include "log/clogrowpainter.h"

#include <QtGui/QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

namespace KV {

namespace {

bool sameMarks(const std::vector<LogRange> &a, const std::vector<LogRange> &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const LogRange &one, const LogRange &other) {
        return one.start == other.start && one.length == other.length;
    });
}

bool sameRow(const LogRow &a, const std::optional<LogRow> &b)
{
    return b && a.piece == b->piece && a.selected == b->selected && sameMarks(a.marks, b->marks);
}

bool showsPiece(const std::optional<LogRow> &row, const LogTextPtr &piece)
{
    return row && row->piece && row->piece == piece;
}

} // namespace

CLogRowPainter::CLogRowPainter() = default;

void CLogRowPainter::setLayout(const CLogLayout &layout)
{
    rowLayout = layout;
    forget();
}

void CLogRowPainter::setLook(const LogLook &newLook)
{
    look = newLook;
    forget();
}

void CLogRowPainter::forget()
{
    drawn.clear();
}

void CLogRowPainter::prepare(QPixmap &picture, std::vector<LogRow> rows, int offset)
{
    wanted = std::move(rows);
    if (drawn.size() != wanted.size() || textOffset != offset)
        drawn.clear();
    textOffset = offset;
    if (drawn.empty()) {
        picture.fill(look.background);
        drawn.resize(wanted.size());
        return;
    }
    if (const int moved = rowsMoved(rowLayout.lineHeight * picture.devicePixelRatioF()))
        moveRows(picture, moved);
}

void CLogRowPainter::paint(QPainter &painter, CLogTextPlaces &places)
{
    painter.setFont(places.font());
    glyphs.use({places.font(), look.text, look.background, look.match, rowLayout.lineHeight, baseline(places)},
               painter.device()->devicePixelRatioF());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (sameRow(wanted[i], drawn[i]))
            continue;
        drawRow(painter, wanted[i], rowLayout.rowRect(static_cast<int>(i)), places);
        drawn[i] = wanted[i];
    }
}

/// By how many rows what is drawn can be moved up to stand where it is wanted; negative: down. 0 where rows are no
/// whole number of pixels high.
int CLogRowPainter::rowsMoved(double rowPixels) const
{
    if (rowPixels != std::floor(rowPixels))
        return 0;
    for (std::size_t i = 1; i < wanted.size(); ++i) {
        if (showsPiece(drawn[i], wanted.front().piece))
            return static_cast<int>(i);
        if (showsPiece(drawn.front(), wanted[i].piece))
            return -static_cast<int>(i);
    }
    return 0;
}

/// Moves the rows in the picture and in what is known of it. Rows that the edge of the drawn area cuts were never drawn
/// whole, so they are forgotten.
void CLogRowPainter::moveRows(QPixmap &picture, int by)
{
    const double ratio = picture.devicePixelRatioF();
    const QRect firstRow = rowLayout.rowRect(0);
    const QRectF area = rowLayout.drawnArea() & QRect(firstRow.topLeft(), rowLayout.size);
    const QRectF pixels(area.topLeft() * ratio, area.size() * ratio);
    picture.scroll(0, qRound(-by * rowLayout.lineHeight * ratio), pixels.toRect());

    const int count = static_cast<int>(drawn.size());
    std::vector<std::optional<LogRow>> moved(drawn.size());
    for (int i = 0; i < count; ++i) {
        const int source = i + by;
        if (source >= 0 && source < count && isWhole(source) && isWhole(i))
            moved[static_cast<std::size_t>(i)] = std::move(drawn[static_cast<std::size_t>(source)]);
    }
    drawn = std::move(moved);
}

bool CLogRowPainter::isWhole(int row) const
{
    return rowLayout.drawnArea().contains(rowLayout.rowRect(row));
}

void CLogRowPainter::drawRow(QPainter &painter, const LogRow &row, const QRect &rect, CLogTextPlaces &places)
{
    const QRect area = rect & rowLayout.drawnArea();
    if (area.isEmpty())
        return;
    painter.setClipRect(area);
    painter.fillRect(area, look.background);
    if (!row.piece)
        return;
    drawText(painter, row, rect, places);
    if (row.selected)
        painter.fillRect(QRect(rect.left(), rect.top(), look.accentWidth, rect.height()), look.accent);
}

void CLogRowPainter::drawText(QPainter &painter, const LogRow &row, const QRect &rect, CLogTextPlaces &places)
{
    const int left = rowLayout.margin - textOffset;
    const int right = rowLayout.margin + rowLayout.textWidth();
    const LogSlice slice = places.slice(row.piece, -left, rect.width() - left);
    const int x = left + slice.x;
    const CLogGlyphPictures::Spans marks = marksOf(row, slice, x, places);
    if (!row.selected || look.selection == look.background) {
        if (const QImage *picture = glyphs.draw(slice.text, rect.width(), x, right, marks)) {
            painter.drawImage(rect.topLeft(), *picture);
            return;
        }
    }
    if (row.selected)
        painter.fillRect(QRect(left, rect.top(), places.width(row.piece), rect.height()), look.selection);
    for (const auto &[from, width] : marks)
        painter.fillRect(QRect(from, rect.top(), width, rect.height()), look.match);
    painter.setClipRect(QRect(0, rect.top(), right, rect.height()), Qt::IntersectClip);
    painter.setPen(look.text);
    painter.drawText(QPointF(x, rect.top() + baseline(places)), slice.text);
    painter.setClipRect(rect & rowLayout.drawnArea());
}

/// What is marked of a slice that starts at `x`.
CLogGlyphPictures::Spans CLogRowPainter::marksOf(const LogRow &row, const LogSlice &slice, int x,
                                                 CLogTextPlaces &places) const
{
    CLogGlyphPictures::Spans marks;
    for (const LogRange &mark : row.marks) {
        const int start = std::max(mark.start - slice.first, 0);
        const int end = std::min(mark.start + mark.length - slice.first, slice.text.size());
        if (start < end)
            for (const auto &[from, width] : places.spans(slice, {start, end - start}))
                marks.emplace_back(x + from, width);
    }
    return marks;
}

/// From a row's top.
int CLogRowPainter::baseline(CLogTextPlaces &places) const
{
    const QFontMetrics &metrics = places.measure().metrics();
    return (rowLayout.lineHeight - metrics.height()) / 2 + metrics.ascent();
}

} // namespace KV
