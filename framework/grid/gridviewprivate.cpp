#include "grid/gridviewprivate.h"

#include <QtCore/QTimer>
#include <algorithm>
#include <cmath>

namespace ZB {

namespace {

constexpr int edgeReach = 4;
constexpr int funnelWidth = 18;
constexpr int fewestDigits = 4; ///< so that the columns do not move with the first rows

} // namespace

GridViewPrivate::GridViewPrivate(GridView *view)
    : q(view), pacer([this] { showFrame(false); }), bars(view,
                                                         [this](qint64 x, qint64 y) {
                                                             scrollTo(x, y);
                                                             announce();
                                                         }),
      cutNumbersTold(-cutNumbersMilliseconds)
{
}

void GridViewPrivate::touchSource()
{
    body.forget();
    numberDigits = 0;
    seenRevision = source ? ~source->revision() : 0;
    seenEpoch = source ? ~source->epoch() : 0;
    statisticsTexts.clear();
    touchLayout();
}

void GridViewPrivate::touchLayout()
{
    layoutTouched = true;
    headerTouched = true;
    requestFrame();
}

void GridViewPrivate::touchColumns()
{
    body.invalidate();
    touchLayout();
}

void GridViewPrivate::touchHeader()
{
    headerTouched = true;
    requestFrame();
}

void GridViewPrivate::touchRows()
{
    rowsTouched = true;
    requestFrame();
}

void GridViewPrivate::touchOverlay()
{
    overlayTouched = true;
    requestFrame();
}

void GridViewPrivate::release()
{
    if (--holds == 0)
        requestFrame();
}

void GridViewPrivate::applyLook()
{
    ratio = q->devicePixelRatioF();
    const int before = geometry.rowHeight;
    const auto device = [this](double pixels) { return static_cast<int>(std::lround(pixels * ratio)); };
    geometry.headerHeight = device(look.headerHeight);
    geometry.rowHeight = std::max(1 + look.horizontalLine, device(look.rowHeight));
    geometry.edge = device(edgeReach * look.scale);
    geometry.funnel = device(funnelWidth * look.scale);
    geometry.columns.setPixelRatio(ratio);
    geometry.scrollY = geometry.scrollY / before * geometry.rowHeight; // the same row stays on top
    cells.setLook(look, ratio);
    touchColumns();
}

void GridViewPrivate::ensureColumns()
{
    if (source && source->columnCount() != geometry.columns.count())
        geometry.columns.resize(source->columnCount());
}

void GridViewPrivate::scrollTo(qint64 x, qint64 y)
{
    if (takingFrame) { // a cell is being filled: the frame goes on with the rows that it has
        QTimer::singleShot(0, q, [this, x, y] { scrollTo(x, y); });
        return;
    }
    const qint64 dx = x - geometry.scrollX;
    const qint64 dy = y - geometry.scrollY;
    if (source && source->revision() != seenRevision) // or the view would run away from rows that moved meanwhile
        rows.update(*source, geometry, false, chooser.current().row);
    rows.scrollTo(source, geometry, geometry.scrollX + dx, geometry.scrollY + dy);
    bars.update(geometry);
    chooser.follow();
    headerTouched = headerTouched || dx != 0;
    touchRows();
}

void GridViewPrivate::showCell(const GridTarget &cell)
{
    if (cell.place < 0)
        return;
    const qint64 x = geometry.columns.placeOf(cell.column) < 0 ? geometry.scrollX : geometry.scrollXFor(cell.column);
    scrollTo(x, geometry.scrollYFor(cell.place, false));
}

void GridViewPrivate::showColumn(int column)
{
    sync();
    if (geometry.columns.placeOf(column) >= 0)
        scrollTo(geometry.scrollXFor(column), geometry.scrollY);
    sync();
}

QPoint GridViewPrivate::toDevice(const QPoint &point) const
{
    return QPoint(static_cast<int>(std::floor(point.x() * ratio)), static_cast<int>(std::floor(point.y() * ratio)));
}

QRect GridViewPrivate::toLogical(const QRect &rect) const
{
    return QRectF(rect.x() / ratio, rect.y() / ratio, rect.width() / ratio, rect.height() / ratio).toAlignedRect();
}

GridTarget GridViewPrivate::targetAt(const GridHit &hit) const
{
    return hit.row < 0 ? GridTarget()
                       : GridTarget{rows.idAt(hit.row), hit.row, hit.column < 0 ? currentColumn() : hit.column};
}

int GridViewPrivate::currentColumn() const
{
    const int column = chooser.current().column;
    if (geometry.columns.placeOf(column) >= 0)
        return column;
    return geometry.columns.placed().empty() ? -1 : geometry.columns.placed().front().column;
}

/// Room for one digit too many stays: a filter would move all columns, and its removal move them back.
int GridViewPrivate::wantedNumberWidth()
{
    if (!numbersVisible)
        return numberDigits = 0;
    const qint64 last = firstNumber + std::max<qint64>(0, geometry.rowCount - 1);
    const int digits = std::max<int>(fewestDigits, QString::number(last).size());
    if (digits > numberDigits || digits < numberDigits - 1)
        numberDigits = digits;
    return cells.numberWidth(numberDigits);
}

void GridViewPrivate::layOut()
{
    geometry.numberWidth = wantedNumberWidth();
    geometry.statisticsHeight = statisticsVisible ? static_cast<int>(std::lround(look.statisticsHeight * ratio)) : 0;
    const QSize whole(static_cast<int>(std::lround(q->width() * ratio)),
                      static_cast<int>(std::lround(q->height() * ratio)));
    bars.layOut(geometry, whole, ratio);
}

void GridViewPrivate::fit(int column, int maximumWidth, bool mayNarrow)
{
    if (!source || geometry.columns.placeOf(column) < 0)
        return;
    GridColumn wanted = geometry.columns.at(column);
    int width = headers.wantedWidth(source->headerText(column), geometry, headerState, column);
    const auto count = static_cast<int>(rows.window().rows.size());
    GridCell cell;
    for (int i = 0; i < count; ++i) {
        GridContent content;
        source->content(i, column, content);
        cell.text = content.text;
        cell.unit = content.unit;
        cell.icon = cells.keepIcon(content.icon);
        width = std::max(width, cells.wantedWidth(cell, wanted));
    }
    if (statisticsVisible)
        width = std::max(width, headers.wantedStatisticWidth(source->statisticsText(column), wanted));
    cell = GridCell();
    cell.text = QStringLiteral("000");
    const int narrowest = cells.wantedWidth(cell, wanted);
    const int widest = std::max(narrowest, static_cast<int>(std::lround(maximumWidth * look.scale * ratio)));
    const int fitting = static_cast<int>(std::ceil(std::clamp(width, narrowest, widest) / ratio));
    wanted.width = mayNarrow ? fitting : std::max(wanted.width, fitting);
    if (!geometry.columns.set(column, wanted))
        return;
    cutNumbers.remove(column); // what does not fit now either is noted as it is drawn
    touchLayout();
}

QString GridViewPrivate::toolTipAt(const QPoint &point)
{
    const GridHit hit = geometry.hit(toDevice(point));
    if (!source || hit.column < 0)
        return QString();
    if (hit.area == GridArea::Header || hit.area == GridArea::HeaderFunnel) {
        const QString text = source->headerText(hit.column);
        return headers.isCut(text, geometry, headerState, hit.column) ? text : QString();
    }
    GridCell cell;
    cell.text = hit.area == GridArea::Statistics ? statisticsTexts.value(hit.column) : QString();
    QString tip;
    if (hit.area == GridArea::Cell) {
        const int index = static_cast<int>(hit.row - rows.window().first);
        const GridCell *shown = body.cell(index, hit.column);
        if (!shown)
            return QString();
        cell = *shown;
        tip = source->tip(index, hit.column);
    }
    if (!cells.isCut(geometry.cellRect(0, hit.column), cell, geometry.columns.at(hit.column)))
        return tip;
    const QString whole = cell.text + cell.unit;
    return tip.isEmpty() ? whole : whole + QLatin1Char('\n') + tip;
}

qint64 GridViewPrivate::placeOfRow(GridRowId row) const
{
    const int index = rows.indexOf(row);
    if (index >= 0)
        return rows.window().first + index;
    return source ? source->rowOf(row) : -1;
}

} // namespace ZB
