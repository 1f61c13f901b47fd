#include "grid/gridaccessible.h"

#include <QtWidgets/QWidget>
#include <algorithm>
#include <limits>

#include "grid/gridaccessiblecell.h"
#include "grid/gridaccessibleheader.h"
#include "grid/gridview.h"
#include "grid/gridviewprivate.h"

namespace ZB {

namespace {

constexpr std::size_t mostKeptCells = 1 << 14; ///< more than any screen shows
constexpr int tellMilliseconds = 1000;

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    auto *view = qobject_cast<GridView *>(object);
    return view ? new GridAccessible(view) : nullptr;
}

} // namespace

GridAccessible::GridAccessible(GridView *view) : QAccessibleWidget(view, QAccessible::Table), cells(mostKeptCells) {}

GridAccessible::~GridAccessible()
{
    for (const QAccessible::Id id : cells.all())
        QAccessible::deleteAccessibleInterface(id);
    for (const auto &header : headers)
        QAccessible::deleteAccessibleInterface(header.second);
}

void GridAccessible::install()
{
    static const bool installed = (QAccessible::installFactory(makeInterface), true);
    Q_UNUSED(installed)
}

const GridViewPrivate &GridAccessible::view() const
{
    return GridViewPrivate::of(*static_cast<GridView *>(object()));
}

QString GridAccessible::text(QAccessible::Text type) const
{
    if (type == QAccessible::Description && rowCount() == 0)
        return view().emptyText;
    QString text = QAccessibleWidget::text(type);
    if (type == QAccessible::Name)
        for (const QWidget *around = view().q->parentWidget(); around && text.isEmpty();
             around = around->parentWidget())
            text = around->accessibleName();
    return text.isEmpty() && type == QAccessible::Name ? QStringLiteral("表格") : text;
}

void *GridAccessible::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface *>(this)
                                               : QAccessibleWidget::interface_cast(type);
}

int GridAccessible::rowCount() const
{
    const qint64 most = std::numeric_limits<int>::max() / std::max(columnCount(), 1) - 1; // the headers count, too
    return static_cast<int>(std::min(view().geometry.rowCount, most));
}

int GridAccessible::columnCount() const
{
    return static_cast<int>(view().geometry.columns.placed().size());
}

int GridAccessible::childCount() const
{
    return (rowCount() + 1) * columnCount();
}

QAccessibleInterface *GridAccessible::child(int index) const
{
    const int columns = columnCount();
    if (columns == 0 || index < 0)
        return nullptr;
    const int row = index / columns;
    return row == rowCount() ? header(index % columns) : cellAt(row, index % columns);
}

/// NoGridRow for rows that there are not.
quint64 GridAccessible::idOf(int row) const
{
    const GridRowId onScreen = view().rows.idAt(row);
    std::vector<GridRowId> ids;
    if (onScreen == NoGridRow && row >= 0 && row < rowCount() && view().source)
        view().source->rowIds(row, 1, ids);
    return ids.empty() ? onScreen : ids.front();
}

QAccessibleInterface *GridAccessible::cellAt(int row, int column) const
{
    if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount())
        return nullptr;
    return cellOf(idOf(row), view().geometry.columns.placed()[static_cast<size_t>(column)].column);
}

QAccessibleInterface *GridAccessible::cellOf(quint64 rowId, int modelColumn) const
{
    if (rowId == NoGridRow)
        return nullptr;
    const std::pair<quint64, int> key(rowId, modelColumn);
    if (const auto known = cells.find(key))
        return QAccessible::accessibleInterface(*known);
    auto *cell = new GridAccessibleCell(static_cast<GridView *>(object()), rowId, modelColumn);
    if (const auto oldest = cells.add(key, QAccessible::registerAccessibleInterface(cell)))
        QAccessible::deleteAccessibleInterface(*oldest);
    return cell;
}

QAccessibleInterface *GridAccessible::header(int column) const
{
    if (column < 0 || column >= columnCount())
        return nullptr;
    const int modelColumn = view().geometry.columns.placed()[static_cast<size_t>(column)].column;
    const auto known = headers.find(modelColumn);
    if (known != headers.end())
        return QAccessible::accessibleInterface(known->second);
    auto *made = new GridAccessibleHeader(static_cast<GridView *>(object()), modelColumn);
    headers.emplace(modelColumn, QAccessible::registerAccessibleInterface(made));
    return made;
}

int GridAccessible::indexOfChild(const QAccessibleInterface *child) const
{
    if (const auto *header = dynamic_cast<const GridAccessibleHeader *>(child))
        return header->isValid() ? rowCount() * columnCount() + header->columnIndex() : -1;
    const auto *cell = dynamic_cast<const GridAccessibleCell *>(child);
    return cell && cell->isValid() ? cell->rowIndex() * columnCount() + cell->columnIndex() : -1;
}

QAccessibleInterface *GridAccessible::childAt(int x, int y) const
{
    const GridViewPrivate &grid = view();
    const GridHit hit = grid.geometry.hit(grid.toDevice(grid.q->mapFromGlobal(QPoint(x, y))));
    const int place = grid.geometry.columns.placeOf(hit.column);
    switch (hit.area) {
    case GridArea::Cell:
        return cellAt(static_cast<int>(hit.row), place);
    case GridArea::Header:
    case GridArea::HeaderEdge:
    case GridArea::HeaderFunnel:
        return header(place);
    default:
        return nullptr;
    }
}

/// -1 without a current row, or while it is not shown.
int GridAccessible::currentRow() const
{
    const GridRowId id = view().chooser.current().row;
    const qint64 row = id == NoGridRow ? -1 : view().placeOfRow(id);
    return row < rowCount() ? static_cast<int>(row) : -1;
}

int GridAccessible::currentIndex() const
{
    const int row = currentRow();
    const int column = view().geometry.columns.placeOf(view().chooser.current().column);
    return row < 0 || column < 0 ? -1 : row * columnCount() + column;
}

QAccessibleInterface *GridAccessible::focusChild() const
{
    const int index = currentIndex();
    return index < 0 ? nullptr : child(index);
}

void GridAccessible::focusMoved(GridView *view)
{
    if (!QAccessible::isActive())
        return;
    const auto *table = dynamic_cast<const GridAccessible *>(QAccessible::queryAccessibleInterface(view));
    if (!table || table->currentIndex() < 0)
        return;
    QAccessibleEvent event(view, QAccessible::Focus);
    event.setChild(table->currentIndex());
    QAccessible::updateAccessibility(&event);
}

void GridAccessible::selectionMoved(GridView *view)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent event(view, QAccessible::SelectionWithin);
    QAccessible::updateAccessibility(&event);
}

int GridAccessible::frameShown(GridView *view)
{
    if (!view->hasFocus() || !QAccessible::isActive())
        return 0;
    auto *table = dynamic_cast<GridAccessible *>(QAccessible::queryAccessibleInterface(view));
    return table ? table->tellCurrentText() : 0;
}

/// Another current cell has been told already, and is being read.
int GridAccessible::tellCurrentText()
{
    const GridTarget &current = view().chooser.current();
    const QAccessibleInterface *cell = focusChild();
    const QString text = cell ? cell->text(QAccessible::Name) : QString();
    if (told.row != current.row || told.column != current.column) {
        told = {current.row, current.column, text, {}};
        told.since.start();
    }
    if (!cell || text == told.text)
        return 0;
    const auto wait = static_cast<int>(tellMilliseconds - told.since.elapsed());
    if (wait > 0)
        return wait;
    told.text = text;
    told.since.restart();
    QAccessibleEvent event(object(), QAccessible::NameChanged);
    event.setChild(currentIndex());
    QAccessible::updateAccessibility(&event);
    return 0;
}

void GridAccessible::layoutChanged(GridView *view)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleTableModelChangeEvent event(view, QAccessibleTableModelChangeEvent::ModelReset);
    QAccessible::updateAccessibility(&event);
}

QString GridAccessible::columnDescription(int column) const
{
    const GridViewPrivate &grid = view();
    return grid.source && column >= 0 && column < columnCount()
               ? grid.source->headerText(grid.geometry.columns.placed()[static_cast<size_t>(column)].column)
               : QString();
}

QString GridAccessible::rowDescription(int row) const
{
    return row >= 0 && row < rowCount() ? QString::number(view().firstNumber + row) : QString();
}

} // namespace ZB
