#pragma once

#include <QtCore/QPair>
#include <QtCore/QSet>
#include <QtCore/QVector>

#include "zb/cbasenormaltable.h"
#include "zb/efiltertype.h"

namespace ZB {

/// A table with everything that users expect around its rows: filter boxes, search, copying, export, settings that come
/// back. GUI thread.
class HOST_API CStandardTable : public CBaseNormalTable
{
    Q_OBJECT

public:
    CStandardTable(int tableId, QWidget *parent, int options);
    ~CStandardTable() override;

    /// Copies what is selected as tab-separated text.
    void copySelection(bool withHeader);
    /// Opens the search under the table; the user takes it from there.
    void openFind();
    /// The next cell (or the one before) whose text contains this, ignoring case, becomes the current one soon.
    void find(const QString &text, bool forward);

    bool exportData(QString path) override;
    CBaseTableSettingParam getTableSetting() override;
    void setTableSetting(const CBaseTableSettingParam &setting) override;

protected:
    /// Opens the filter box of a column under its header. texts: what it offers, in their order, with how often each
    /// occurs. What the user chooses comes by onFilterTrigger().
    void openFilterBox(int column, const QRect &header, const QVector<QPair<QString, int>> &texts,
                       const QPair<EFilterType, QSet<QString>> &present);
};

} // namespace ZB
