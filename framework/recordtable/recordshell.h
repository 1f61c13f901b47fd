#pragma once

#include <QtCore/QTimer>

#include "recordtable/cellwidgets.h"
#include "recordtable/recordsource.h"
#include "table/tableshell.h"
#include "zb/cbasenormaltable.h"

namespace ZB {

/// What a table with rows of its own does beside what every table does.
class RecordShell : public TableShell
{
public:
    RecordShell(CBaseNormalTable *table, int tableId, int options);
    void shutDown();

    bool isShowing() const override;
    QVector<QPair<int, int>> currentSorts() const override;
    void sortBy(int column, int order, bool adding) override;
    void setSorts(const QVector<QPair<int, int>> &sorts) override;
    void clearSort() override;
    void openFilter(int column, const QRect &header) override;
    void takeFilter(int column, int type, QSet<QString> values) override;
    bool hasFilters() const override;
    QMap<int, FilterConditions> currentFilters() const override;
    void clearFilters() override;
    bool canPause() const override;
    bool isPaused() const override;
    void setPaused(bool paused) override;
    void updateStatistics() override;
    bool exportTo(const QString &path) override;
    CBaseTableSettingParam tableSetting() override;
    void applySetting(const CBaseTableSettingParam &setting) override;

    /// Something that is shown is different: the next frame shows it.
    void changed();
    void updateMarks();
    void applyOptions(int options);
    RecordRow *rowOf(int row) const { return source.rows.find(row); }
    int idOf(GridRowId row) const;

    void setTicking(bool on);

    CBaseNormalTable *const q;
    RecordSource &source;
    CellWidgets widgets;
    QList<int> filteredColumns;
    int building = -1;

private:
    void connectGrid();

    QTimer timer;
    int reportedRow = -1; ///< told by the last event 70
};

} // namespace ZB
