#include "recordtable/recordshell.h"

namespace ZB {

int CBaseNormalTable::beginRow(quint64 identity)
{
    const RecordRow *row = d->source.rows.add(identity);
    d->building = row ? row->id : -1;
    return d->building;
}

void CBaseNormalTable::endRow()
{
    d->building = -1;
    d->changed();
}

int CBaseNormalTable::buildingRow() const
{
    return d->building;
}

QVector<int> CBaseNormalTable::addRows(const QVector<quint64> &identities)
{
    QVector<int> ids;
    ids.reserve(identities.size());
    for (const quint64 identity : identities)
        if (const RecordRow *row = d->source.rows.add(identity))
            ids.append(row->id);
    d->changed();
    return ids;
}

bool CBaseNormalTable::removeRow(int row)
{
    const RecordRow *found = d->source.rows.peek(row);
    if (!found)
        return false;
    d->widgets.removeRow(found->gridId);
    d->source.rows.remove(row);
    d->changed();
    return true;
}

void CBaseNormalTable::clearRows()
{
    d->widgets.clear();
    d->source.rows.clear();
    d->building = -1;
    d->changed();
}

int CBaseNormalTable::rowCount() const
{
    return d->source.rows.count();
}

bool CBaseNormalTable::hasRow(int row) const
{
    return d->source.rows.peek(row) != nullptr;
}

QVector<int> CBaseNormalTable::rows() const
{
    QVector<int> ids;
    for (const RecordRow *row : d->source.rows.shown())
        ids.append(row->id);
    return ids;
}

int CBaseNormalTable::lastAddedRow() const
{
    return d->source.rows.lastId();
}

void CBaseNormalTable::setCellText(int row, int column, const QString &text, const QColor *color, const QString &unit)
{
    RecordRow *found = d->rowOf(row);
    if (!found || !d->source.hasColumn(column))
        return;
    d->source.setCell(*found, column, text, color, unit);
    d->grid->refresh();
}

QString CBaseNormalTable::cellText(int row, int column)
{
    RecordRow *found = d->rowOf(row);
    if (!found || !d->source.hasColumn(column))
        return QString();
    const RecordRowPtr keep = found->shared_from_this();
    const RecordCell &cell = d->source.shownCell(*found, column);
    return cell.text + cell.unit;
}

const QColor *CBaseNormalTable::cellColor(int row, int column)
{
    RecordRow *found = d->rowOf(row);
    if (!found || !d->source.hasColumn(column))
        return nullptr;
    const RecordRowPtr keep = found->shared_from_this();
    return d->source.shownCell(*found, column).color;
}

void CBaseNormalTable::setCellValue(int row, int column, const QVariant &value)
{
    RecordRow *found = d->rowOf(row);
    if (!found || !d->source.hasColumn(column))
        return;
    found->cell(column).value = value;
    if (d->source.rows.sortsBy(column))
        d->source.rows.touch(*found);
    d->changed();
}

void CBaseNormalTable::markRow(int row)
{
    RecordRow *found = d->source.rows.peek(row);
    if (!found)
        return;
    d->source.markRow(*found);
    d->changed();
}

void CBaseNormalTable::markCell(int row, int column)
{
    RecordRows &rows = d->source.rows;
    if (!rows.isKnown(row) && !rows.sortsBy(column))
        return; // nobody has seen what is in the cell
    RecordRow *found = d->source.hasColumn(column) ? rows.peek(row) : nullptr;
    if (!found)
        return;
    d->source.markCell(*found, column);
    d->changed();
}

void CBaseNormalTable::setCellWidget(int row, int column, QWidget *widget)
{
    const RecordRow *found = d->rowOf(row);
    if (found && d->source.hasColumn(column))
        d->widgets.set(found->gridId, column, widget);
    else
        delete widget;
}

QWidget *CBaseNormalTable::cellWidget(int row, int column) const
{
    const RecordRow *found = d->rowOf(row);
    return found ? d->widgets.at(found->gridId, column) : nullptr;
}

} // namespace ZB
