#include <QtCore/QPointer>
#include <QtCore/QScopedValueRollback>
#include <algorithm>
#include <utility>

#include "grid/gridaccessible.h"
#include "grid/gridviewprivate.h"

namespace ZB {

namespace {

constexpr int fadeMilliseconds = GridCellPainter::flashMilliseconds / GridCellPainter::flashSteps;

std::vector<GridRowId> idsOf(const GridWindow &window)
{
    std::vector<GridRowId> ids;
    ids.reserve(window.rows.size());
    for (const GridRow &row : window.rows)
        ids.push_back(row.id);
    return ids;
}

} // namespace

void GridViewPrivate::requestFrame()
{
    if (q->isVisible())
        pacer.request();
}

void GridViewPrivate::sync()
{
    const QRegion damage = takeFrame();
    if (!damage.isEmpty())
        q->update(damage);
}

void GridViewPrivate::showFrame(bool forced)
{
    if (!forced && !q->isVisible())
        return; // shown with the next showEvent or paintEvent
    if (takingFrame)
        return; // the frame that is being taken asks for one more
    sync();
    pacer.done();
    const bool isTouched = layoutTouched || headerTouched || rowsTouched || overlayTouched;
    if (isTouched || (source && holds == 0 && source->revision() != seenRevision))
        requestFrame(); // who fills a cell may change others
    if (body.isFlashing() && q->isVisible())
        pacer.requestIn(fadeMilliseconds);
    const QPointer<GridView> guard(q);
    Q_EMIT q->frameShown();
    if (guard)
        announce();
    if (guard)
        announceCutNumbers();
}

/// Milliseconds.
qint64 GridViewPrivate::untilCutNumbers() const
{
    return std::max<qint64>(0, cutNumbersTold + cutNumbersMilliseconds - pacer.now());
}

void GridViewPrivate::announceCutNumbers()
{
    if (cutNumbers.isEmpty() || holds > 0) // a release is followed by a frame
        return;
    if (untilCutNumbers() > 0)
        return pacer.requestIn(static_cast<int>(untilCutNumbers()));
    cutNumbersTold = pacer.now();
    const QSet<int> columns = std::exchange(cutNumbers, {});
    Q_EMIT q->numbersCut(columns);
}

GridFrame GridViewPrivate::frameNow() const
{
    GridFrame frame{geometry, rows.window(), chooser.selection(), delegates};
    frame.currentRow = chooser.current().row;
    frame.currentColumn = chooser.current().column;
    frame.hoveredRow = hoveredRow;
    frame.hoveredColumn = hoveredColumn;
    frame.focused = headerState.focused;
    frame.searching = !cells.markedText().isEmpty();
    frame.oddEven = look.oddEvenRows;
    frame.firstNumber = firstNumber;
    frame.pixelRatio = ratio;
    frame.now = pacer.now();
    return frame;
}

void GridViewPrivate::updateRows()
{
    if (!source)
        return;
    rows.update(*source, geometry, holds > 0, chooser.current().row);
    if (holds == 0)
        chooser.follow();
}

QRegion GridViewPrivate::takeFrame()
{
    if (takingFrame)
        return QRegion();
    const QScopedValueRollback<bool> taking(takingFrame, true);
    if (!qFuzzyCompare(q->devicePixelRatioF(), ratio))
        applyLook();
    const quint64 revision = source ? source->revision() : 0;
    const bool news = revision != seenRevision;
    if (!news && !layoutTouched && !headerTouched && !rowsTouched && !overlayTouched && !body.isFlashing())
        return QRegion();
    seenRevision = holds > 0 ? seenRevision : revision; // what is held back comes with the release
    if (source && source->epoch() != seenEpoch) {
        seenEpoch = source->epoch();
        ensureColumns();
        layoutTouched = true;
    }
    bool whole = layoutTouched || overlayTouched;
    if (layoutTouched)
        layOut();
    if (news || layoutTouched) {
        const QSize size = geometry.size;
        const int numberWidth = geometry.numberWidth;
        const qint64 rowCount = geometry.rowCount;
        updateRows();
        if (geometry.rowCount != rowCount || layoutTouched)
            layOut();
        if (geometry.size != size || geometry.numberWidth != numberWidth) {
            updateRows();
            headerTouched = true;
            whole = true;
        }
        bars.update(geometry);
    }
    const int lit = headerState.focused && geometry.rowCount == 0 ? currentColumn() : -1;
    headerTouched = headerTouched || lit != headerState.current;
    headerState.current = lit;
    QRegion damage;
    if (layoutTouched || headerTouched) {
        headers.paintHeader(headerPicture, geometry, headerState, source);
        damage += toLogical(geometry.header());
    }
    if (const QRect drawn = updateStatistics(statisticsVisible && (news || layoutTouched || headerTouched));
        !drawn.isEmpty())
        damage += toLogical(drawn);
    layoutTouched = headerTouched = rowsTouched = overlayTouched =
        false; // who fills a cell may touch them for the next
    for (const QRect &rect : body.update(source, frameNow()))
        damage += toLogical(rect);
    cutNumbers.unite(body.takeCutNumbers());
    if (!cutNumbers.isEmpty() && q->isVisible())
        pacer.requestIn(static_cast<int>(untilCutNumbers()));
    if (!damage.isEmpty() || whole)
        ++frames;
    return whole ? QRegion(q->rect()) : damage;
}

/// Returns what was drawn of the statistics row, as a rectangle of the view. Its texts are asked for on news only: a
/// host may have to add up for them.
QRect GridViewPrivate::updateStatistics(bool ask)
{
    if (!ask)
        return QRect();
    const QRect row = geometry.statistics();
    const std::vector<GridShownColumn> shown = geometry.shownColumns();
    const bool isTitleOver = !statisticsTitle.isEmpty() && geometry.numberWidth == 0;
    const bool isOther = headerTouched || layoutTouched || shown != statisticsColumns ||
                         statisticsTexts.size() != geometry.columns.count() || statisticsPicture.size() != row.size();
    std::vector<GridShownColumn> changed;
    QRect drawn;
    while (statisticsTexts.size() > geometry.columns.count())
        statisticsTexts.removeLast();
    while (statisticsTexts.size() < geometry.columns.count())
        statisticsTexts.append(QString());
    for (const GridShownColumn &where : shown) {
        const QString text = source ? source->statisticsText(where.column) : QString();
        if (text == statisticsTexts[where.column])
            continue;
        statisticsTexts[where.column] = text;
        changed.push_back(where);
        drawn |= QRect(where.clipLeft, row.top(), where.clipRight - where.clipLeft, row.height());
    }
    if (!isOther && changed.empty())
        return QRect();
    statisticsColumns = shown;
    if (isOther || isTitleOver) {
        cutNumbers.unite(headers.paintStatistics(statisticsPicture, geometry, statisticsTexts, statisticsTitle));
        return row;
    }
    cutNumbers.unite(headers.repaintStatistics(statisticsPicture, geometry, changed, statisticsTexts));
    return drawn;
}

void GridViewPrivate::announce()
{
    const QPointer<GridView> guard(q);
    const GridRowId current = chooser.isCurrentShown() ? chooser.current().row : NoGridRow;
    const int column = chooser.current().column;
    std::vector<int> shownColumns = q->visibleColumns();
    const bool areColumnsOthers = told.columns != shownColumns;
    if (told.rowCount != geometry.rowCount || areColumnsOthers) {
        told.rowCount = geometry.rowCount;
        told.columns = std::move(shownColumns);
        GridAccessible::layoutChanged(q);
    }
    if (areColumnsOthers) {
        Q_EMIT q->visibleColumnsChanged();
        if (!guard)
            return;
    }
    if (told.current != current || told.column != column) {
        told.current = current;
        told.column = column;
        GridAccessible::focusMoved(q);
        Q_EMIT q->currentChanged(current, column);
        if (!guard)
            return;
    }
    if (told.selection != chooser.selection().serial()) {
        told.selection = chooser.selection().serial();
        GridAccessible::selectionMoved(q);
        Q_EMIT q->selectionChanged();
        if (!guard)
            return;
    }
    std::vector<GridRowId> ids = idsOf(rows.window());
    if (told.first != rows.window().first || told.rows != ids) {
        told.first = rows.window().first;
        told.rows = std::move(ids);
        Q_EMIT q->visibleRowsChanged();
        if (!guard)
            return;
    }
    if (told.unseen != rows.unseen()) {
        told.unseen = rows.unseen();
        Q_EMIT q->unseenRowsChanged(told.unseen);
        if (!guard)
            return;
    }
    const int wait = GridAccessible::frameShown(q);
    if (wait > 0 && q->isVisible())
        pacer.requestIn(wait);
}

} // namespace ZB
