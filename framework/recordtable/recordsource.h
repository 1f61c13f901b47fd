#pragma once

#include <QtCore/QStringList>
#include <functional>

#include "recordtable/recordrows.h"
#include "table/tablerows.h"
#include "zb/ctablecolumn.h"

namespace ZB {

/// Shows the rows that a table keeps itself to its grid. Cells are filled when they are first needed. GUI thread.
class RecordSource : public TableRows
{
public:
    /// Fills a due cell, by setCell().
    using ShowCell = std::function<void(int row, int column)>;
    /// The value behind a cell; an invalid one for none.
    using ValueOf = std::function<QVariant(int row, int column)>;

    RecordSource(ShowCell showCell, ValueOf valueOf);
    ~RecordSource() override;

    mutable RecordRows rows; ///< puts itself in order when it is read

    /// @name Columns
    /// @{
    int addColumn(const CTableColumn &column);
    void clearColumns();
    bool hasColumn(int column) const;
    CTableColumn &column(int column) { return columns[static_cast<std::size_t>(column)]; }
    const CTableColumn &column(int column) const { return columns[static_cast<std::size_t>(column)]; }
    void setStatistics(int column, const QString &text);
    bool hasStatistics() const;
    /// The columns that leave the table with a row; asked when rows are taken out.
    void setTakenColumns(std::function<std::vector<int>()> columns);
    /// @}

    /// @name Cells
    /// @{
    void setCell(RecordRow &row, int column, const QString &text, const QColor *color, const QString &unit);
    void markRow(RecordRow &row);
    void markCell(RecordRow &row, int column);
    /// The cell with its present content. Filling it may take the row away: hold the row for as long as the cell.
    const RecordCell &shownCell(RecordRow &row, int column) const;
    /// @}

    /// Rows came or went, or the order is another.
    void noteChange() { ++changes; }
    RecordRow *windowRow(int index) const;

    void touch() override;
    void setRowMarks(const QVector<CTableRowMark> &marks, std::vector<QColor> tints) override;
    void setPlainBackground(const QColor &background) override;
    QVariant::Type columnType(int column) const override;
    void fetchRows(qint64 first, int count, std::vector<HpfShownRow> &rows) const override;
    Row rowOfId(GridRowId id) const override;
    GridRowId idAt(qint64 row) const override;
    RowTaker allRows() const override;
    RowTaker rowsOfIds(std::vector<GridRowId> ids) const override;

    quint64 revision() const override;
    quint64 epoch() const override;
    qint64 rowCount() const override;
    void fetch(qint64 first, int count, GridWindow &window) override;
    void refetch(GridWindow &window) override;
    qint64 rowOf(GridRowId id) const override;
    void rowIds(qint64 first, qint64 count, std::vector<GridRowId> &ids) const override;
    void content(int windowRow, int column, GridContent &content) override;
    GridFlash flash(int windowRow, int column) override;
    int columnCount() const override;
    QString headerText(int column) const override;
    QString statisticsText(int column) const override;

private:
    RecordSortKey sortKey(const RecordRow &row, int column, bool descending) const;
    void show(RecordRow &row, int column) const;
    const QColor *markOf(const RecordRow &row) const;
    void takeWindow(GridWindow &window) const;
    Row copyOf(RecordRow &row) const;

    const ShowCell showCell;
    const ValueOf valueOf;
    std::function<std::vector<int>()> takenColumns;
    std::vector<CTableColumn> columns;
    QStringList statistics;
    QVector<CTableRowMark> marks;
    std::vector<QColor> markTints;
    std::vector<RecordRowPtr> window; ///< the rows of the last fetch
    mutable int showing = 0;          ///< cells are being filled: what is set in them is no news
    quint64 changes = 1;
    quint64 touches = 1;
};

} // namespace ZB
