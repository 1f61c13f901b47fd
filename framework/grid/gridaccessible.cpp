#include "grid/gridaccessible.h"

#include "grid/gridaccessiblecell.h"
#include "grid/gridview.h"
#include "grid/gridviewprivate.h"

namespace ZB {

namespace {

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    auto *view = qobject_cast<GridView *>(object);
    return view ? new GridAccessible(view) : nullptr;
}

} // namespace

GridAccessible::GridAccessible(GridView *view) : QAccessibleWidget(view, QAccessible::Table) {}

GridAccessible::~GridAccessible()
{
    for (const QAccessible::Id id : qAsConst(cells))
        QAccessible::deleteAccessibleInterface(id);
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

void *GridAccessible::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface *>(this)
                                               : QAccessibleWidget::interface_cast(type);
}

int GridAccessible::rowCount() const
{
    return static_cast<int>(view().rows.window().rows.size());
}

int GridAccessible::columnCount() const
{
    return static_cast<int>(view().geometry.columns.placed().size());
}

int GridAccessible::childCount() const
{
    return rowCount() * columnCount();
}

QAccessibleInterface *GridAccessible::child(int index) const
{
    const int columns = columnCount();
    return columns == 0 ? nullptr : cellAt(index / columns, index % columns);
}

QAccessibleInterface *GridAccessible::cellAt(int row, int column) const
{
    if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount())
        return nullptr;
    constexpr int mostColumns = 1 << 16;
    QAccessible::Id &id = cells[row * mostColumns + column];
    if (id == 0)
        id = QAccessible::registerAccessibleInterface(
            new GridAccessibleCell(static_cast<GridView *>(object()), row, column));
    return QAccessible::accessibleInterface(id);
}

int GridAccessible::indexOfChild(const QAccessibleInterface *child) const
{
    const auto *cell = dynamic_cast<const GridAccessibleCell *>(child);
    return cell ? cell->rowIndex() * columnCount() + cell->columnIndex() : -1;
}

QAccessibleInterface *GridAccessible::childAt(int x, int y) const
{
    const GridViewPrivate &grid = view();
    const GridHit hit = grid.geometry.hit(grid.toDevice(grid.q->mapFromGlobal(QPoint(x, y))));
    if (hit.area != GridArea::Cell)
        return nullptr;
    return cellAt(static_cast<int>(hit.row - grid.rows.window().first), grid.geometry.columns.placeOf(hit.column));
}

int GridAccessible::currentIndex() const
{
    const GridTarget &current = view().chooser.current();
    const int row = view().rows.indexOf(current.row);
    const int column = view().geometry.columns.placeOf(current.column);
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

QString GridAccessible::columnDescription(int column) const
{
    const GridViewPrivate &grid = view();
    return grid.source && column >= 0 && column < columnCount()
               ? grid.source->headerText(grid.geometry.columns.placed()[static_cast<size_t>(column)].column)
               : QString();
}

QString GridAccessible::rowDescription(int row) const
{
    return QString::number(view().firstNumber + view().rows.window().first + row);
}

bool GridAccessible::isRowSelected(int row) const
{
    const auto &rows = view().rows.window().rows;
    return row >= 0 && row < rowCount() && view().chooser.selection().isRowSelected(rows[static_cast<size_t>(row)].id);
}

QList<int> GridAccessible::selectedRows() const
{
    QList<int> selected;
    for (int row = 0; row < rowCount(); ++row)
        if (isRowSelected(row))
            selected.append(row);
    return selected;
}

int GridAccessible::selectedRowCount() const
{
    return selectedRows().size();
}

QList<QAccessibleInterface *> GridAccessible::selectedCells() const
{
    QList<QAccessibleInterface *> selected;
    for (int i = 0; i < childCount(); ++i)
        if (child(i)->state().selected)
            selected.append(child(i));
    return selected;
}

int GridAccessible::selectedCellCount() const
{
    return selectedCells().size();
}

bool GridAccessible::selectRow(int row)
{
    if (row < 0 || row >= rowCount())
        return false;
    const GridRowId id = view().rows.window().rows[static_cast<size_t>(row)].id;
    static_cast<GridView *>(object())->setCurrent(id, view().currentColumn());
    return true;
}

bool GridAccessible::unselectRow(int row)
{
    if (!isRowSelected(row))
        return false;
    static_cast<GridView *>(object())->clearSelection();
    return true;
}

} // namespace ZB
