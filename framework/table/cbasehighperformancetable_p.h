#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>

#include "table/modelwakeup.h"
#include "table/tableshell.h"
#include "table/tablesource.h"
#include "zb/cbasehighperformancetable.h"

namespace ZB {

class PagingBar;

/// What a table over a model does beside what every table does: model, paging, pause, work that goes on.
class CBaseHighPerformanceTable::Private : public TableShell
{
public:
    Private(CBaseHighPerformanceTable *table, int tableId, int menuFlags);
    void shutDown();

    /// @name What every table asks of its family
    /// @{
    bool isShowing() const override;
    QVector<QPair<int, int>> currentSorts() const override;
    /// Asks for a sort by event 33. Who hears it may delete the table.
    void sortBy(int column, int order, bool adding) override;
    void sortFromMenu(int column, int order) override;
    void setSorts(const QVector<QPair<int, int>> &sorts) override;
    void clearSort() override;
    void openFilter(int column, const QRect &header) override;
    void takeFilter(int column, int type, QSet<QString> values) override;
    bool hasFilters() const override;
    QMap<int, FilterConditions> currentFilters() const override;
    bool restoreFilter(int column, const FilterConditions &conditions) override;
    void clearFilters() override;
    bool canPause() const override;
    bool isPaused() const override;
    void setPaused(bool paused) override;
    void updateStatistics() override;
    bool exportTo(const QString &path) override;
    CBaseTableSettingParam tableSetting() override;
    void applySetting(const CBaseTableSettingParam &setting) override;
    /// @}

    /// @name Model
    /// @{
    void install(const boost::shared_ptr<IBaseHpfTableModel> &shared, IBaseHpfTableModel *raw);
    void releaseModel();
    void initColumn(int column);
    /// @}

    /// @name What the model shows, brought to the grid
    /// @{
    void housekeep();
    void settle();
    bool waitForOrder();
    void updateMarks();
    void updateFollow();
    void updatePaging();
    void updateWork();
    void updateBadges();
    void askAgain();
    /// @}

    void connectGrid();
    void currentMoved(quint64 row);
    void activated(quint64 row, int column);
    void requestPage(int first, int perPage);
    bool isPaged() const;
    QString keyText(const IBaseHpfTableModel::Row &row) const;

    CBaseHighPerformanceTable *const q;
    boost::shared_ptr<IBaseHpfTableModel> shared; ///< empty for a model that its giver keeps
    IBaseHpfTableModel *model = nullptr;
    TableSource &source;
    ModelWakeUp wakeUp;
    PagingBar *const pagingBar;
    QTimer timer;

    QVector<QPair<int, int>> pagedSorts;
    int queryType = PagingNone;
    int total = 0;
    bool followsLastPage = false;
    bool requestingPage = false;       ///< the page event on its way comes from the paging bar
    GridRowId reportedRow = NoGridRow; ///< told by the last event 70
    int ticks = 0;
    QElapsedTimer workClock; ///< since the work of this number is pending
    quint64 workNumber = 0;

protected:
    void lookApplied(const PopupLook &around) override;
};

} // namespace ZB
