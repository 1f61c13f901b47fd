#include "grid/gridbody.h"

#include <QtCore/QHash>
#include <QtGui/QColor>
#include <QtGui/QPixmap>
#include <algorithm>

#include "grid/gridcanvas.h"
#include "grid/gridcellpainter.h"
#include "grid/gridselection.h"

namespace ZB {

namespace {

bool samePlaces(const std::vector<GridPlacedColumn> &a, const std::vector<GridPlacedColumn> &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const GridPlacedColumn &x, const GridPlacedColumn &y) {
        return x.column == y.column && x.left == y.left && x.width == y.width;
    });
}

} // namespace

GridBody::GridBody(GridCellPainter &painter) : cells(painter) {}

GridBody::~GridBody() = default;

void GridBody::invalidate()
{
    for (Slot &slot : slotStore) {
        slot.painted = false;
        for (GridCell &cell : slot.cells) {
            cell.painted = false;
            cell.ground = 0;
        }
    }
}

void GridBody::forget()
{
    for (Slot &slot : slotStore)
        slot = Slot();
    places.clear();
}

const GridCell *GridBody::cell(int windowRow, int column) const
{
    if (windowRow < 0 || windowRow >= static_cast<int>(places.size()) || column < 0)
        return nullptr;
    const Slot &slot = slotStore[static_cast<size_t>(places[static_cast<size_t>(windowRow)].slot)];
    if (column >= static_cast<int>(slot.cells.size()) || !slot.cells[static_cast<size_t>(column)].known)
        return nullptr;
    return &slot.cells[static_cast<size_t>(column)];
}

std::vector<QRect> GridBody::update(GridSource *source, const GridFrame &frame)
{
    const int columnCount = frame.geometry.columns.count();
    bool everything = layOut(frame, columnCount);
    everything = assignSlots(frame) || everything;
    flashing = false;
    std::vector<QRect> damage;
    const int count = source ? static_cast<int>(frame.window.rows.size()) : 0;
    for (int i = 0; i < count; ++i) {
        const QRect touched = updateRow(*source, frame, i);
        if (!touched.isEmpty())
            damage.push_back(touched & body);
    }
    epoch = source ? source->epoch() : 0;
    return everything ? std::vector<QRect>{body} : damage;
}

/// Fits the strip to the geometry. True when everything on the screen is elsewhere.
bool GridBody::layOut(const GridFrame &frame, int columnCount)
{
    const GridGeometry &geometry = frame.geometry;
    const QRect area = geometry.body();
    const int offset = static_cast<int>(frame.window.first * geometry.rowHeight - geometry.scrollY);
    std::vector<GridShownColumn> next = geometry.shownColumns();
    const size_t needed = std::max(
        {static_cast<size_t>(area.height() / geometry.rowHeight + 2), frame.window.rows.size(), slotStore.size()});
    const bool fits =
        strip.width() == std::max(1, area.width()) && rowHeight == geometry.rowHeight && slotStore.size() >= needed;
    bool moved = area != body || offset != topOffset;
    if (!fits || numberWidth != geometry.numberWidth || frozen != geometry.columns.frozen() ||
        !samePlaces(placed, geometry.columns.placed())) {
        if (!fits) {
            strip =
                QImage(std::max(1, area.width()), static_cast<int>(needed) * geometry.rowHeight, QImage::Format_RGB32);
            slotStore.resize(needed);
        }
        invalidate();
        moved = true;
    } else if (next != shown) {
        moveSideways(frame, next);
        moved = true;
    }
    if (next != shown || columnCount != knownColumns)
        forgetOutOfSight(next, static_cast<size_t>(columnCount));
    for (Slot &slot : slotStore)
        slot.cells.resize(static_cast<size_t>(columnCount));
    knownColumns = columnCount;
    shown = std::move(next);
    placed = geometry.columns.placed();
    frozen = geometry.columns.frozen();
    numberWidth = geometry.numberWidth;
    rowHeight = geometry.rowHeight;
    scrollX = geometry.scrollX;
    body = area;
    topOffset = offset;
    return moved;
}

/// The columns scroll: what stays in sight moves with its pixels.
void GridBody::moveSideways(const GridFrame &frame, const std::vector<GridShownColumn> &next)
{
    const QRect area = frame.geometry.scrolledArea();
    const auto dx = static_cast<int>(std::clamp<qint64>(scrollX - frame.geometry.scrollX, -area.width(), area.width()));
    GridCanvas canvas(strip);
    canvas.scrollSideways(QRect(area.left(), 0, area.width(), strip.height()), dx);
    const int uncoveredLeft = dx < 0 ? area.right() + 1 + dx : area.left();
    const int uncoveredRight = dx < 0 ? area.right() + 1 : area.left() + dx;
    for (const GridShownColumn &column : next) {
        if (column.frozen || column.clipLeft >= uncoveredRight || column.clipRight <= uncoveredLeft)
            continue;
        for (Slot &slot : slotStore) {
            GridCell &cell = slot.cells[static_cast<size_t>(column.column)];
            cell.painted = false;
            cell.ground = 0;
        }
    }
}

/// Cells out of sight are not kept up to date, so nothing may be known of them when they come back.
void GridBody::forgetOutOfSight(const std::vector<GridShownColumn> &next, size_t columnCount)
{
    std::vector<bool> inSight(columnCount, false);
    for (const GridShownColumn &column : next)
        inSight[static_cast<size_t>(column.column)] = true;
    for (Slot &slot : slotStore) {
        slot.cells.resize(columnCount);
        for (size_t i = 0; i < columnCount; ++i)
            if (!inSight[i])
                slot.cells[i] = GridCell();
    }
}

/// Gives every row of the window its slot: the one that it had, or a free one. True when a row stands elsewhere.
bool GridBody::assignSlots(const GridFrame &frame)
{
    const auto &rows = frame.window.rows;
    const bool sameRows = firstRow == frame.window.first &&
                          std::equal(places.begin(), places.end(), rows.begin(), rows.end(),
                                     [](const Place &place, const GridRow &row) { return place.row == row.id; });
    if (sameRows)
        return false;
    firstRow = frame.window.first;
    QHash<GridRowId, int> slotOfRow;
    for (const Place &place : places)
        slotOfRow.insert(place.row, place.slot + 1);
    std::vector<bool> taken(slotStore.size(), false);
    places.clear();
    for (const GridRow &row : rows) {
        const int slot = slotOfRow.take(row.id) - 1; // absent: 0
        places.push_back({row.id, slot});
        if (slot >= 0)
            taken[static_cast<size_t>(slot)] = true;
    }
    for (size_t i = 0; i < places.size(); ++i)
        if (places[i].slot < 0)
            places[i].slot = takeSlot(taken, rowDecor(frame, static_cast<int>(i)));
    return true;
}

/// A free one, which has the wanted ground if there is such a one.
int GridBody::takeSlot(std::vector<bool> &taken, quint8 decor)
{
    size_t found = slotStore.size();
    for (size_t i = 0; i < slotStore.size() && (found == slotStore.size() || slotStore[found].decor != decor); ++i)
        if (!taken[i] && (found == slotStore.size() || slotStore[i].decor == decor))
            found = i;
    taken[found] = true;
    slotStore[found].painted = false;
    for (GridCell &cell : slotStore[found].cells)
        cell.forgetContent();
    return static_cast<int>(found);
}

quint8 GridBody::rowDecor(const GridFrame &frame, int index) const
{
    const GridRowId id = frame.window.rows[static_cast<size_t>(index)].id;
    int decor = 0;
    if (frame.selection.isRowSelected(id))
        decor |= GridDecorSelected | (frame.focused ? GridDecorFocused : 0);
    if (frame.oddEven && ((frame.window.first + index) & 1))
        decor |= GridDecorOdd;
    return static_cast<quint8>(decor);
}

quint8 GridBody::cellDecor(const GridFrame &frame, int index, int column, quint8 ofRow) const
{
    const GridRowId id = frame.window.rows[static_cast<size_t>(index)].id;
    int decor = ofRow;
    if (frame.selection.hasBlocks() && frame.selection.isCellSelected(id, column))
        decor |= GridDecorSelected | (frame.focused ? GridDecorFocused : 0);
    if ((frame.focused || frame.searching) && id == frame.currentRow && column == frame.currentColumn)
        decor |= GridDecorCurrent;
    if (id == frame.hoveredRow && column == frame.hoveredColumn)
        decor |= GridDecorHovered;
    return static_cast<quint8>(decor);
}

/// Returns what was drawn, as a rectangle of the view.
QRect GridBody::updateRow(GridSource &source, const GridFrame &frame, int index)
{
    const GridRow &row = frame.window.rows[static_cast<size_t>(index)];
    Slot &slot = slotStore[static_cast<size_t>(places[static_cast<size_t>(index)].slot)];
    const quint8 decor = rowDecor(frame, index);
    const qint64 number = frame.firstNumber + frame.window.first + index;
    const bool askAgain = slot.row.version != row.version || slot.row.id != row.id || epoch != source.epoch();
    const QRect whole = frame.geometry.rowRect(frame.window.first + index);
    QRect touched;
    if (!slot.painted || slot.number != number || slot.decor != decor) {
        slot.number = number;
        slot.decor = decor;
        paintMargins(frame, index, decor);
        touched = whole;
    }
    for (const GridShownColumn &column : shown) {
        GridCell &cell = slot.cells[static_cast<size_t>(column.column)];
        const quint8 wanted = cellDecor(frame, index, column.column, decor);
        if (cell.decor != wanted) {
            cell.decor = wanted;
            cell.painted = false;
        }
        if (updateCell(source, frame, index, askAgain, column))
            touched |= QRect(column.clipLeft, whole.top(), column.clipRight - column.clipLeft, whole.height());
    }
    slot.row = row;
    slot.painted = true;
    return touched;
}

/// True when the cell was drawn.
bool GridBody::updateCell(GridSource &source, const GridFrame &frame, int index, bool askAgain,
                          const GridShownColumn &where)
{
    Slot &slot = slotStore[static_cast<size_t>(places[static_cast<size_t>(index)].slot)];
    GridCell &cell = slot.cells[static_cast<size_t>(where.column)];
    if (askAgain || !cell.known)
        ask(source, index, where.column, cell, frame.now);
    const quint8 step = GridCellPainter::flashStep(cell, frame.now);
    cell.painted = cell.painted && step == cell.flashStep;
    cell.flashStep = step;
    if (step == 0)
        cell.flash = GridFlash::None;
    else
        flashing = true;
    if (cell.painted)
        return false;
    paintCell(frame, index, where, cell);
    cell.painted = true;
    return true;
}

void GridBody::ask(GridSource &source, int index, int column, GridCell &cell, qint64 now)
{
    GridContent content;
    source.content(index, column, content);
    const QRgb color = content.color ? content.color->rgba() : 0;
    const QRgb background = content.background ? content.background->rgba() : 0;
    const qint64 icon = cells.keepIcon(content.icon);
    const bool sameText = cell.text == content.text && cell.unit == content.unit;
    if (cell.known && sameText && cell.color == color && cell.background == background && cell.icon == icon)
        return;
    if (cell.known && !sameText && epoch == source.epoch()) {
        cell.flash = source.flash(index, column);
        cell.flashStart = now;
    }
    cell.text = content.text;
    cell.unit = content.unit;
    cell.color = color;
    cell.background = background;
    cell.icon = icon;
    cell.known = true;
    cell.painted = false;
}

} // namespace ZB
