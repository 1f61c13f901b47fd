#pragma once

#include <QtCore/QPointer>
#include <QtCore/QSet>
#include <QtWidgets/QWidget>
#include <boost/shared_ptr.hpp>
#include <functional>
#include <memory>
#include <vector>

#include "grid/gridcolumn.h"
#include "grid/gridlook.h"
#include "grid/gridrows.h"
#include "grid/gridsource.h"

namespace ZB {

class CBaseTableColumnWidgetDelegate;
class GridView;
class GridViewPrivate;

/// Selected cells: every row (in shown order) with every column (model columns in the order on the screen).
struct GridCells
{
    std::vector<GridRowId> rows;
    std::vector<int> columns;
};

/// Keeps the rows of a grid where they are for as long as it lives (while a menu is open). Contents go on changing.
class FRAMEWORK_API GridHold
{
public:
    GridHold() = default;
    explicit GridHold(GridView *view);
    ~GridHold();
    GridHold(GridHold &&other) noexcept;
    GridHold &operator=(GridHold &&other) noexcept;

private:
    void release();

    QPointer<GridView> view;
};

/// A self-painted grid over a GridSource: header, rows, row numbers, statistics row, scroll bars. What a frame costs
/// depends on what changed on the screen, never on the number of rows.
///
/// It is the part that every table owns as a child, and knows no model, menu or setting. It changes by itself what
/// belongs to looking (scrolling, selection, width and order of columns) and tells the table; everything else (sorting,
/// filters, menus, copying) it asks for by signals. While a mouse button is down, between the clicks of a double-click
/// and while a GridHold lives, no row moves.
///
/// GUI thread. Columns are model columns; lengths are device-independent pixels. Setters do nothing for columns that do
/// not exist. Receivers of signals may delete the view.
class FRAMEWORK_API GridView : public QWidget
{
    Q_OBJECT

public:
    explicit GridView(QWidget *parent = nullptr);
    ~GridView() override;

    /// @name Contents
    /// @{
    /// The source stays the caller's; null shows an empty grid. Columns of a new source start out as GridColumn() says;
    /// selection, current cell and sort marks are gone.
    void setSource(GridSource *source);
    GridSource *source() const;
    /// The source may have changed: shows it with the next frame, at most every 16 ms. Costs next to nothing when
    /// called often; wakes up by one posted event.
    void refresh();
    /// The same at once.
    void refreshNow();
    /// The number of frames that changed a pixel, since construction.
    quint64 frameCount() const;
    /// @}

    /// @name Columns
    /// @{
    /// As many as the source's columnCount() at the last refresh; GridColumn() for others. Valid until columns change.
    const GridColumn &column(int column) const;
    void setColumn(int column, const GridColumn &look);
    void setColumnWidth(int column, int width);
    void setColumnVisible(int column, bool visible);
    /// Every model column in the order on the screen, hidden ones included. Setting it: columns that are missing follow
    /// in their old order, repeated and unknown ones are ignored.
    std::vector<int> columnOrder() const;
    void setColumnOrder(const std::vector<int> &order);
    /// The visible columns in the order on the screen.
    std::vector<int> visibleColumns() const;
    /// How many columns at the left do not scroll sideways, counted in visible columns.
    int frozenColumns() const;
    void setFrozenColumns(int count);
    void setSortMarks(const GridSortMarks &marks);
    GridSortMarks sortMarks() const;
    /// An empty pointer takes the delegate away.
    void setColumnDelegate(int column, const boost::shared_ptr<CBaseTableColumnWidgetDelegate> &delegate);
    /// Makes a column as wide as its header and the rows on the screen need, from 3 characters to `maximumWidth` pixels
    /// at 100 %.
    void fitColumn(int column, int maximumWidth = 400);
    /// The same for many; the picture is made once for all of them.
    void fitColumns(const std::vector<int> &columns, int maximumWidth = 400);
    /// The same, but no column gets narrower.
    void widenColumns(const std::vector<int> &columns, int maximumWidth = 400);
    /// Whether the marks of sorts and filters leave too little room for the header's text.
    bool isHeaderCut(int column) const;
    /// Makes a column no wider than its header needs with its marks, and never narrower than it is.
    void widenForHeader(int column);
    /// @}

    /// @name Look
    /// @{
    void setLook(const GridLook &look);
    const GridLook &look() const;
    void setRowNumbersVisible(bool visible);
    bool rowNumbersVisible() const;
    /// The number that the first row carries, 1 at first (a page of a longer list begins elsewhere).
    void setFirstRowNumber(qint64 number);
    void setStatisticsVisible(bool visible);
    bool statisticsVisible() const;
    /// Stands at the left of the statistics row.
    void setStatisticsTitle(const QString &title);
    /// Stands in the middle while there are no rows.
    void setEmptyText(const QString &text);
    /// Lights up this text wherever a cell shows it, ignoring case; empty for none.
    void setMarkedText(const QString &text);
    /// @}

    /// @name Scrolling
    /// @{
    void setFollow(GridFollow follow);
    GridFollow follow() const;
    /// Whether the view is at the edge that it follows; true when it follows none.
    bool isAtFollowedEdge() const;
    void scrollToFollowedEdge();
    /// Rows that have come at the followed edge since the view left it; 0 while it is there.
    qint64 unseenRows() const;
    /// Scrolls as little as needed, or with the row in the middle. Nothing for rows that are not shown.
    void scrollTo(GridRowId row, bool center = false);
    void scrollToRow(qint64 row, bool center = false);
    void scrollToColumn(int column);
    /// The first row on the screen (one that is cut off included) and how many are whole on it.
    qint64 firstVisibleRow() const;
    int visibleRowCount() const;
    /// @}

    /// @name Current cell and selection; rows are ids, so both stay on their records
    /// @{
    GridRowId currentRow() const;
    int currentColumn() const;
    /// Selects the row as well, like a click does. NoGridRow: no current row, nothing selected.
    void setCurrent(GridRowId row, int column);
    void selectAll();
    void clearSelection();
    void selectRows(const std::vector<GridRowId> &rows);
    bool isRowSelected(GridRowId row) const;
    /// Selected rows that are shown, in shown order. Costs O(k log k) for k selected rows.
    std::vector<GridRowId> selectedRows() const;
    /// The selected rows with all visible columns, or, where cells are selected, those: block by block, in the order of
    /// selecting. Blocks may share cells.
    std::vector<GridCells> selectedCells() const;
    /// What a copy takes: the smallest table that holds every selected cell, each row and each column once.
    GridCells selectedTable() const;
    /// Which cells of selectedTable() are selected, as it is now and for any thread. Empty when all of them are.
    std::function<bool(GridRowId row, int column)> selectedTableCells() const;
    bool hasSelection() const;
    /// @}

    /// Where a cell is, in the view's coordinates; empty when it is not on the screen.
    QRect cellRect(GridRowId row, int column) const;
    /// The same with what is cut off or under frozen columns; empty when the row is not on the screen.
    QRect wholeCellRect(GridRowId row, int column) const;
    QRect headerRect(int column) const;
    /// The cell at a position, as what is painted there tells: NoGridRow and -1 outside the rows.
    std::pair<GridRowId, int> cellAt(const QPoint &position) const;

    QSize sizeHint() const override;

Q_SIGNALS:
    /// A header asks for a sort. Control: by a further column. By key: Ctrl+Shift+S and, for a further one,
    /// Ctrl+Shift+D.
    void headerClicked(int column, Qt::KeyboardModifiers modifiers);
    /// The funnel of a header, or Alt+Down in a column. `header`: where its header is.
    void filterRequested(int column, const QRect &header);
    /// By the user; the view has done it already.
    void columnMoved(int column, int place);
    void columnResized(int column, int width);
    /// A right press or the menu key: row and column at the press, NoGridRow and -1 beside the rows. The table opens
    /// the menu in the slot, or keeps a GridHold until it has closed.
    void contextMenuRequested(quint64 row, int column, const QPoint &globalPosition);
    /// A right press on a header, or Alt+Up in its column.
    void headerMenuRequested(int column, const QPoint &globalPosition);
    void clicked(quint64 row, int column);
    /// A double-click (with the row and column of its first press) or the enter key.
    void activated(quint64 row, int column);
    /// The current cell is another one, or its row is no longer (or again) shown: NoGridRow then.
    void currentChanged(quint64 row, int column);
    void selectionChanged();
    /// Ctrl+C, with Shift for the header too.
    void copyRequested(bool withHeader);
    /// Rows on the screen are others than before (scrolled, resized, another order).
    void visibleRowsChanged();
    void unseenRowsChanged(qint64 count);
    /// Columns were shown, hidden or moved.
    void visibleColumnsChanged();
    /// Numbers that do not fit their columns have come on the screen, the statistics row included, and stand there as
    /// "###". Not more often than once a second, and not while rows are held.
    void numbersCut(const QSet<int> &columns);
    /// The pictures are up to date, and what changed in them is about to be repainted: for what stands over cells.
    void frameShown();

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void changeEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    friend class GridHold;
    friend class GridViewPrivate;
    std::unique_ptr<GridViewPrivate> d;
};

} // namespace ZB
