#pragma once

#include <QtCore/QMap>
#include <QtCore/QPair>
#include <QtCore/QVariant>
#include <QtCore/QVector>
#include <memory>

#include "zb/cbasewidget.h"
#include "zb/ctablecolumn.h"
#include "zb/etableflag.h"
#include "zb/ibasetable.h"

class QColor;

namespace ZB {

class RecordShell;

/// A table with rows of its own: thousands of rows, cells of text and widgets, a statistics row. It looks and works
/// like the table over a model.
///
/// Rows are addressed by row ids, columns by column ids; both count from 0 in the order in which they came. A row id
/// means the same row until that row is removed, wherever the row stands on the screen; no id is given twice before
/// clearRows(), which starts at 0 again. Ids of rows and columns that there are not are ignored, and answered with
/// nothing.
///
/// Cells can be filled before they are needed (setCellText) or when they are first seen: rows begin with all cells due,
/// and markRow() and markCell() make cells due again; showCell() is asked for a due cell before it is painted or read.
///
/// Threading: GUI thread. Changes show with the next frame; any number of them costs one.
///
/// Events it delivers: 33 (header sort click; first the order after the click, 0 for ascending, second the column), 69
/// (a row was double-clicked, or Enter pressed on it; first the column, second the row id), 70 (the current row
/// changed; first the column, second the row id or -1).
class HOST_API CBaseNormalTable : public CBaseWidget, public IBaseTable
{
    Q_OBJECT

public:
    /// options: bits of ETableMenu and ETableFlag in one word; the bit that both have asks for row numbers too.
    CBaseNormalTable(int tableId, QWidget *parent, int options);
    ~CBaseNormalTable() override;

    int tableId() const override;
    void addOptions(int options);
    int options() const;
    /// What stands in the middle of a table without rows; nothing unless set.
    void setEmptyText(const QString &text);

    /// @name Columns
    /// @{
    /// At the end; returns its id.
    int addColumn(const CTableColumn &column);
    /// Removes all rows too.
    void clearColumns();
    int columnCount() const;
    /// As it was added, with the changes made since by the functions below.
    CTableColumn column(int column) const;
    bool columnFilterable(int column) const override;
    void setColumnFilterable(int column, bool filterable);
    void setColumnBoldFont(int column, bool bold);
    void setColumnVisible(int column, bool visible);
    bool columnVisible(int column) const;
    /// Pixels at the present scale, above 0; the column follows later changes of the scale.
    void setColumnWidth(int column, int pixels);
    int columnWidth(int column) const;
    /// Makes the columns as wide as their header and the rows on the screen need, but for those whose width the user
    /// has chosen.
    void fitVisibleColumns();
    /// Columns at the left that do not scroll, counted on the screen.
    void setFrozenColumns(int count);
    /// The header's funnel is lit: a filter is on.
    void setColumnFiltered(int column, bool filtered);
    bool isColumnFiltered(int column) const;
    /// @}

    /// @name Rows
    /// @{
    /// A new row at the end; returns its id. Until endRow() it is the one being built. identity: what a row that comes
    /// back after clearRows() is known by, so that selection, current cell and place on the screen stay with it; 0 for
    /// none.
    int beginRow(quint64 identity = 0);
    void endRow();
    /// The row between beginRow() and endRow(), otherwise -1.
    int buildingRow() const;
    /// Many new rows at the end in one step; their ids in the same order.
    QVector<int> addRows(const QVector<quint64> &identities);
    /// False for a row that there is not.
    bool removeRow(int row);
    void clearRows();
    int rowCount() const;
    bool hasRow(int row) const;
    /// The ids of all rows, in the order on the screen.
    QVector<int> rows() const;
    /// The id given last, be its row gone or not; -1 before the first and after clearRows().
    int lastAddedRow() const;
    /// @}

    /// @name Cells
    /// @{
    /// color: null for the table's own; owned by the resource service. unit: drawn in a slot of its own behind the
    /// text.
    void setCellText(int row, int column, const QString &text, const QColor *color = nullptr,
                     const QString &unit = QString());
    /// Text and unit, as the cell shows them. A due cell is shown first (showCell()).
    QString cellText(int row, int column);
    /// Null for the table's own.
    const QColor *cellColor(int row, int column);
    /// The value behind a cell for sorts, sums and export, where cellValue() is not overridden.
    void setCellValue(int row, int column, const QVariant &value);
    /// Cells are due again; what they showed stays until then.
    void markRow(int row);
    void markCell(int row, int column);
    /// Puts a widget over a cell; the table owns it from then on, and deletes it with the row or when another one takes
    /// its place, and at once where there is no such cell. Null takes it away.
    void setCellWidget(int row, int column, QWidget *widget);
    QWidget *cellWidget(int row, int column) const;
    /// @}

    /// @name Statistics row; shown as soon as a column has a text there
    /// @{
    void setStatText(int column, const QString &text);
    QString statText(int column) const;
    void setStatColumnBoldFont(int column, bool bold);
    bool statColumnBoldFont(int column) const;
    /// A resource key.
    void setStatColorKey(int column, const QString &key);
    void setStatColumnAlignment(int column, int alignment);
    /// @}

    /// @name Order and selection
    /// @{
    /// Sort columns in falling weight with their order (0 ascending); none for the order in which rows came.
    void setSortColumns(const QVector<QPair<int, int>> &columns);
    QVector<QPair<int, int>> sortColumns() const;
    /// Brings rows that have changed to their places now, instead of with the next frame.
    void sortNow();
    QVector<int> selectedRows() const;
    int currentRow() const;
    void setCurrentRow(int row);
    void scrollToRow(int row);
    /// @}

    /// Shows all changes now, instead of with the next frame.
    virtual void updateTable();
    /// Called every 100 ms while the table is visible.
    virtual void onTimer();

    bool handleEvent(int event, int first, int second, QString text, void *data) override;
    void themeChanged() override;

protected:
    /// A due cell is needed: sets its text. Does nothing unless overridden.
    virtual void showCell(int row, int column);
    /// The value behind a cell; an invalid one for none. What setCellValue() stored unless overridden.
    virtual QVariant cellValue(int row, int column) const;
    /// The user asks for the filter box of a column; `header` is where its header stands in the table. Does nothing
    /// unless overridden.
    virtual void showFilterMenu(int column, QRect header);
    /// Takes the filters of all columns off: of those that setColumnFiltered() has marked, by onFilterTrigger() with an
    /// empty set, unless overridden.
    virtual void clearFilter();
    /// The filters that are part of the table's settings, by column; they come back through onFilterTrigger(), one
    /// condition of each column. None unless overridden.
    virtual QMap<int, FilterConditions> filterConditions() const;
    /// Whether the user's saved settings have yet to come back.
    bool awaitsSettings() const;
    /// For derived tables that keep part of the settings: it has changed; and, in the destructor, the last moment at
    /// which getTableSetting() can still tell it.
    void settingsChanged();
    void saveSettingsNow();

    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

    /// For the tables of the host's own library that are built on this one.
    RecordShell &shell() const { return *d; }

private:
    friend class RecordShell;
    std::unique_ptr<RecordShell> d;
};

} // namespace ZB
