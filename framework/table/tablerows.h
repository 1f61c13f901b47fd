#pragma once

#include <QtCore/QVariant>
#include <QtCore/QVector>
#include <QtGui/QColor>
#include <vector>

#include "grid/gridsource.h"
#include "table/rowsnapshot.h"
#include "zb/ctablerowmark.h"

namespace ZB {

/// The rows of a table, whichever family it belongs to: what its grid shows, and what search, copying and export read.
/// GUI thread.
class TableRows : public GridSource
{
public:
    using Row = IBaseHpfTableModel::Row;

    /// Everything may look different: the next frame asks for all of it.
    virtual void touch() = 0;
    /// Rules for rows that stand out, each with the tint that it gives.
    virtual void setRowMarks(const QVector<CTableRowMark> &marks, std::vector<QColor> tints) = 0;
    /// The table's own background.
    virtual void setPlainBackground(const QColor &background) = 0;
    virtual QVariant::Type columnType(int column) const = 0;

    /// @name Rows as they are shown, which may be read on another thread
    /// @{
    virtual void fetchRows(qint64 first, int count, std::vector<HpfShownRow> &rows) const = 0;
    /// Empty for a row that has gone.
    virtual Row rowOfId(GridRowId id) const = 0;
    /// NoGridRow outside the rows.
    virtual GridRowId idAt(qint64 row) const = 0;
    /// For workers; what they are asked for when they are called is the present state.
    virtual RowTaker allRows() const = 0;
    virtual RowTaker rowsOfIds(std::vector<GridRowId> ids) const = 0;
    /// @}

    QString cellText(qint64 row, int column) const override;
};

} // namespace ZB
