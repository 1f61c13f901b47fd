#include "recordtable/recordshell.h"
#include "zb/cuiresource.h"

namespace ZB {

int CBaseNormalTable::addColumn(const CTableColumn &column)
{
    const int id = d->source.addColumn(column);
    TableShell::Column known;
    known.info.name = column.header;
    known.info.fieldId = column.fieldId;
    known.info.offered = column.inList;
    known.info.defaultWidth = column.width;
    known.info.defaultVisible = column.visible;
    d->columns.push_back(known);
    GridColumn shown;
    shown.width = scaled(column.width);
    shown.visible = column.visible;
    shown.bold = column.bold;
    shown.filterable = column.filterable;
    shown.alignment = Qt::Alignment(column.alignment);
    shown.statisticsAlignment = Qt::Alignment(column.alignment);
    shown.unitSample = column.unitSample;
    d->grid->setColumn(id, shown);
    d->updateNumeric(id);
    d->changed();
    return id;
}

void CBaseNormalTable::clearColumns()
{
    d->widgets.clear();
    d->source.clearColumns();
    d->columns.clear();
    d->filteredColumns.clear();
    d->building = -1;
    d->grid->setSource(nullptr); // column looks are the grid's
    d->grid->setSource(&d->source);
    d->updateMarks();
    d->updateStatistics();
    d->changed();
}

int CBaseNormalTable::columnCount() const
{
    return d->source.columnCount();
}

CTableColumn CBaseNormalTable::column(int column) const
{
    if (!d->source.hasColumn(column))
        return CTableColumn();
    CTableColumn known = d->source.column(column);
    const GridColumn shown = d->grid->column(column);
    known.bold = shown.bold;
    known.filterable = shown.filterable;
    known.visible = shown.visible;
    return known;
}

bool CBaseNormalTable::columnFilterable(int column) const
{
    return d->hasColumn(column) && d->grid->column(column).filterable;
}

void CBaseNormalTable::setColumnFilterable(int column, bool filterable)
{
    d->changeColumn(column, [filterable](GridColumn &shown) { shown.filterable = filterable; });
}

void CBaseNormalTable::setColumnBoldFont(int column, bool bold)
{
    d->changeColumn(column, [bold](GridColumn &shown) { shown.bold = bold; });
}

void CBaseNormalTable::setColumnVisible(int column, bool visible)
{
    d->setColumnVisible(column, visible);
}

bool CBaseNormalTable::columnVisible(int column) const
{
    return d->hasColumn(column) && d->grid->column(column).visible;
}

void CBaseNormalTable::setColumnWidth(int column, int pixels)
{
    d->setColumnWidth(column, pixels);
}

int CBaseNormalTable::columnWidth(int column) const
{
    return d->hasColumn(column) ? d->grid->column(column).width : 0;
}

void CBaseNormalTable::fitVisibleColumns()
{
    d->fitVisibleColumns();
}

void CBaseNormalTable::setFrozenColumns(int count)
{
    d->grid->setFrozenColumns(count);
}

void CBaseNormalTable::setColumnFiltered(int column, bool filtered)
{
    if (!d->hasColumn(column) || isColumnFiltered(column) == filtered)
        return;
    if (filtered)
        d->filteredColumns.append(column);
    else
        d->filteredColumns.removeAll(column);
    d->updateMarks();
}

bool CBaseNormalTable::isColumnFiltered(int column) const
{
    return d->filteredColumns.contains(column);
}

void CBaseNormalTable::setStatText(int column, const QString &text)
{
    if (!d->hasColumn(column) || d->source.statisticsText(column) == text)
        return;
    d->source.setStatistics(column, text);
    d->updateStatistics();
    d->grid->refresh();
}

QString CBaseNormalTable::statText(int column) const
{
    return d->source.statisticsText(column);
}

void CBaseNormalTable::setStatColumnBoldFont(int column, bool bold)
{
    d->changeColumn(column, [bold](GridColumn &shown) { shown.statisticsBold = bold; });
}

bool CBaseNormalTable::statColumnBoldFont(int column) const
{
    return d->hasColumn(column) && d->grid->column(column).statisticsBold;
}

void CBaseNormalTable::setStatColorKey(int column, const QString &key)
{
    d->changeColumn(column,
                    [&key](GridColumn &shown) { shown.statisticsColor = CUiResource::instance()->getColor(key); });
}

void CBaseNormalTable::setStatColumnAlignment(int column, int alignment)
{
    d->changeColumn(column, [alignment](GridColumn &shown) { shown.statisticsAlignment = Qt::Alignment(alignment); });
}

} // namespace ZB
