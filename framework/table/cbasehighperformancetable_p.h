#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <vector>

#include "grid/gridview.h"
#include "popups/popupframe.h"
#include "table/modelwakeup.h"
#include "table/settingstore.h"
#include "table/tablearrangement.h"
#include "table/tablecommand.h"
#include "table/tablefind.h"
#include "table/tablelook.h"
#include "table/tableoverlay.h"
#include "table/tablesource.h"
#include "table/tabletransfer.h"
#include "zb/cbasehighperformancetable.h"

class QMenu;

namespace ZB {

class ColumnPopup;
class FindBar;
class PagingBar;

/// Ties the parts of the table together: source and grid, settings, menus, search, transfers.
class CBaseHighPerformanceTable::Private
{
public:
    enum class WidthOrigin
    {
        Default,
        Fitted,
        Program,
        User
    };

    /// What the table knows of a column beside what the grid shows.
    struct Column
    {
        TableColumnInfo info;
        WidthOrigin width = WidthOrigin::Default;
    };

    Private(CBaseHighPerformanceTable *table, int tableId, int menuFlags);
    void shutDown();

    /// @name Model and columns
    /// @{
    void install(const boost::shared_ptr<IBaseHpfTableModel> &shared, IBaseHpfTableModel *raw);
    void releaseModel();
    void initColumn(int column);
    bool hasColumn(int column) const;
    template <typename Change>
    void changeColumn(int column, Change change);
    std::vector<TableColumnInfo> columnInfos() const;
    void updateNumeric(int column);
    /// @}

    /// @name What the model shows, brought to the grid
    /// @{
    void housekeep();
    void settle();
    void updateMarks();
    void widenForHeader(int column);
    void updateFollow();
    void updatePaging();
    void updateStatistics();
    void updateWork();
    void updateBadges();
    /// @}

    /// @name User actions
    /// @{
    void connectGrid();
    void sortClicked(int column, Qt::KeyboardModifiers modifiers);
    void sortBy(int column, int order, bool adding);
    void applySort(int column, int order);
    void openFilter(int column, const QRect &header);
    void currentMoved(quint64 row);
    void activated(quint64 row, int column);
    void requestPage(int first, int rows);
    void sortFromMenu(int column, int order);
    void dropSort();
    void run(TableCommand command);
    bool isOffered(const TableCommandEntry &entry) const;
    void openRowMenu(quint64 row, int column, const QPoint &position);
    void openHeaderMenu(int column, const QPoint &position);
    QMenu *newMenu();
    void addCommands(QMenu *menu, GridRowId row, int column);
    void addValueFilter(QMenu *menu, GridRowId row, int column);
    void openColumns(bool freezing);
    void fillColumns(ColumnPopup *popup);
    void connectColumns(ColumnPopup *popup);
    void orderOffered(const std::vector<int> &offered);
    void resetColumns();
    void openMarks();
    void askExport();
    void fitAll();
    void closePopup();
    QRect popupAnchor() const;
    /// @}

    /// @name Settings
    /// @{
    QList<CBaseTableColumnSetting> columnSettings() const;
    TableArrangement applyArrangement(const QList<CBaseTableColumnSetting> &saved);
    void restoreNow();
    void saveSoon();
    void applyMarks();
    /// @}

    void lookChanged();
    void applyLook();
    QVector<QPair<int, int>> currentSorts() const;
    std::vector<ExportColumn> exportColumns(const std::vector<int> &columns) const;
    bool isPaged() const;
    QString keyText(const IBaseHpfTableModel::Row &row) const;

    CBaseHighPerformanceTable *const q;
    const int id;
    const int menuFlags;
    int flags = 0;

    boost::shared_ptr<IBaseHpfTableModel> shared; ///< empty for a model that its giver keeps
    IBaseHpfTableModel *model = nullptr;
    TableSource source;
    ModelWakeUp wakeUp;
    GridView *const grid;
    FindBar *const findBar;
    PagingBar *const pagingBar;
    TableOverlay overlay;
    TableFind search;
    TableTransfer transfer;
    SettingStore store;
    QTimer timer;

    std::vector<Column> columns;
    TableLook look;
    bool lookStale = false;
    double appliedScale = 0.0;    ///< the scale that the widths in the grid are at; 0 before the first look
    CBaseTableFrameSetting frame; ///< sorts and frozen columns live in model and grid
    QMap<QString, QList<CBaseTableColumnSetting>> columnSets;
    bool restorePending = false;
    QVector<QPair<int, int>> pagedSorts;
    bool addingSort = false; ///< the sort event on its way comes from a click with Ctrl
    int queryType = PagingNone;
    int total = 0;
    bool followsLastPage = false;
    GridRowId reportedRow = NoGridRow; ///< told by the last event 70
    int ticks = 0;
    QElapsedTimer workClock; ///< since work is pending
    QPointer<PopupFrame> popup;
};

template <typename Change>
void CBaseHighPerformanceTable::Private::changeColumn(int column, Change change)
{
    if (!hasColumn(column))
        return;
    GridColumn shown = grid->column(column);
    change(shown);
    grid->setColumn(column, shown);
}

} // namespace ZB
