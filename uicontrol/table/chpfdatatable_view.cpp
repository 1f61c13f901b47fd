#include <QtCore/QPointer>
#include <algorithm>

#include "model/chpfdatamodel.h"
#include "model/chpfextradatamodel.h"
#include "model/modelrelease.h"
#include "pagemodel/chpfpagedatamodel.h"
#include "table/chpfdatatable.h"
#include "threads/poolwork.h"
#include "zb/cuiresource.h"
#include "zb/messagebox.h"

namespace KV {

using Base = ZB::CBaseHighPerformanceTable;

namespace {

constexpr int recountMilliseconds = 1000;

} // namespace

void CHpfDataTable::themeChanged()
{
    auto *resource = ZB::CUiResource::instance();
    const int itemHeight = resource->getSize(QStringLiteral("siz_standard_table_item_height"));
    setBackgroundColor(QStringLiteral("clr_table_background"), QStringLiteral("clr_table_number_background"));
    setSplitLine(QStringLiteral("clr_table_split_line"), 1, 1, QStringLiteral("clr_table_sort_split_line"),
                 QStringLiteral("clr_table_sort_noactive_split_line"));
    setHeaderHeight(resource->getSize(QStringLiteral("siz_standard_table_header_height")));
    setItemHeight(itemHeight);
    setHeaderTextInfo(QStringLiteral("clr_table_header_text"), QStringLiteral("fnt_table_text_default"));
    setNumberTextInfo(QStringLiteral("clr_table_text_default"), QStringLiteral("fnt_table_number_default"),
                      Qt::AlignHCenter | Qt::AlignVCenter);
    setSelectedBackground(QStringLiteral("clr_table_background_selected"),
                          QStringLiteral("clr_table_background_selected_no_focus"));
    setSelectedTextColor(QStringLiteral("clr_table_text_selected"));
    setStatInfo(QStringLiteral("clr_table_stat_border"), 0, itemHeight, QStringLiteral("clr_table_stat_background"),
                QStringLiteral("clr_table_stat_title_background"), QStringLiteral("clr_table_text_default"),
                QStringLiteral("fnt_table_stat_text_default"),
                resource->getSize(QStringLiteral("siz_standard_table_stat_text_margin")));
    setHeaderButtonColors(
        QStringLiteral("clr_table_column_header_nomal"), QStringLiteral("clr_table_column_header_hover"),
        QStringLiteral("clr_table_column_header_press"), QStringLiteral("clr_table_column_header_disable"));
    Base::themeChanged();
}

bool CHpfDataTable::exportData(QString path)
{
    const QPointer<CHpfDataTable> self(this); // the base lets events through while it writes
    if (!Base::exportData(path))
        return false;
    if (self)
        ZB::showInformation(this, QStringLiteral("数据导出"), QStringLiteral("数据导出成功"));
    return true;
}

ZB::CBaseTableSettingParam CHpfDataTable::getTableSetting()
{
    ZB::CBaseTableSettingParam setting = Base::getTableSetting();
    for (const AbsentColumn &absent : absentColumns) {
        // Behind the neighbour that it had, so that it finds its place again.
        const auto neighbour = std::find_if(setting.columns.begin(), setting.columns.end(),
                                            [&absent](const ZB::CBaseTableColumnSetting &column) {
                                                return column.fieldId >= 0 && column.fieldId == absent.leftFieldId;
                                            });
        const bool first = absent.leftFieldId < 0 || neighbour == setting.columns.end();
        setting.columns.insert(first ? setting.columns.begin() : neighbour + 1, absent.setting);
    }
    return setting;
}

void CHpfDataTable::setTableSetting(const ZB::CBaseTableSettingParam &setting)
{
    absentColumns.clear();
    int leftFieldId = -1;
    for (const ZB::CBaseTableColumnSetting &column : setting.columns) {
        if (column.fieldId >= 0 && getColumnIdByFileId(column.fieldId) < 0)
            absentColumns.append({leftFieldId, column});
        if (column.fieldId >= 0)
            leftFieldId = column.fieldId;
    }
    Base::setTableSetting(setting);
}

void CHpfDataTable::onTimer()
{
    Base::onTimer(); // takes the model's step
    takeTotal();
    recountExtraSums();
    tryFirstAdjustVisibleWidth();
}

void CHpfDataTable::updateTable()
{
    Base::updateTable();
    recountExtraSums(); // when they are others, the model wakes the table once more
    tryFirstAdjustVisibleWidth();
}

/// Sums of extra columns are the model's own business only while no row is left out by a filter. While one is under way
/// there is nothing to count yet.
void CHpfDataTable::recountExtraSums()
{
    if (!dataModel || !dataModel->getExtraDataModel()->hasStatistics() || dataModel->isPending())
        return;
    const auto filters = dataModel->columnFilters();
    const quint64 changes = dataModel->changeCount();
    const int extraRows = dataModel->getExtraDataModel()->keyCount();
    const bool others = dataModel->size() != countedRows || dataModel->allSize() != countedAllRows ||
                        extraRows != countedExtraRows || filters != countedFilters;
    // Two rows can change places at a filter without a trace in these numbers.
    const bool due = !filters.isEmpty() && changes != countedChanges &&
                     (!sinceRecount.isValid() || sinceRecount.elapsed() >= recountMilliseconds);
    if ((!others && !due) || (recounting && *recounting))
        return;
    countedChanges = changes;
    countedRows = dataModel->size();
    countedAllRows = dataModel->allSize();
    countedExtraRows = extraRows;
    countedFilters = filters;
    sinceRecount.start();
    recount();
}

/// Many rows are counted on a worker thread, which shows in the sums when it is through.
void CHpfDataTable::recount()
{
    constexpr int fewRows = 2000;
    if (dataModel->getExtraDataModel()->keyCount() <= fewRows)
        return dataModel->reCalcExStat();
    recounting = std::make_shared<std::atomic<bool>>(true);
    core::runInPool([model = dataModel, running = recounting]() mutable {
        model->reCalcExStat();
        *running = false;
        releaseModel(std::move(model));
    });
}

void CHpfDataTable::showEvent(QShowEvent *event)
{
    Base::showEvent(event);
    tryFirstAdjustVisibleWidth();
}

void CHpfDataTable::tryFirstAdjustVisibleWidth()
{
    // A filter that is under way is not waited for: the timer comes back.
    if (canFit() && !dataModel->isPending() && dataModel->size() > 0)
        fitFirst();
}

void CHpfDataTable::adjustVisibleWidth()
{
    if (canFit())
        fitFirst();
}

bool CHpfDataTable::canFit() const
{
    return !firstFitDone && isVisible() && dataModel && dataModel->allSize() > 0;
}

void CHpfDataTable::fitFirst()
{
    firstFitDone = true;
    fitVisibleColumns();
}

} // namespace KV
