#include <QtCore/QPointer>

#include "model/chpfdatamodel.h"
#include "table/chpfdatatable.h"
#include "zb/cuiresource.h"
#include "zb/messagebox.h"

namespace KV {

using Base = ZB::CBaseHighPerformanceTable;

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

void CHpfDataTable::clearFilter()
{
    if (dataModel)
        dataModel->clearFilter();
    Base::clearFilter();
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

QStringList CHpfDataTable::getMenuItems(int column)
{
    QStringList items = Base::getMenuItems(column);
    if (!dataModel)
        return items;
    const auto filters = dataModel->columnFilters();
    const auto filter = filters.constFind(column);
    if (filter == filters.constEnd() || filter->first != ZB::FilterExact)
        return items;
    QStringList unseen = (filter->second - QSet<QString>(items.begin(), items.end())).values();
    unseen.sort();
    return items + unseen;
}

ZB::CBaseTableSettingParam CHpfDataTable::getTableSetting()
{
    ZB::CBaseTableSettingParam setting = Base::getTableSetting();
    setting.columns += absentColumns;
    return setting;
}

void CHpfDataTable::setTableSetting(const ZB::CBaseTableSettingParam &setting)
{
    ZB::CBaseTableSettingParam present = setting;
    present.columns.clear();
    absentColumns.clear();
    for (ZB::CBaseTableColumnSetting column : setting.columns) {
        const bool isField = column.fieldId >= 0;
        if (isField)
            column.column = getColumnIdByFileId(column.fieldId);
        if (isField && column.column < 0)
            absentColumns.append(column);
        else
            present.columns.append(column);
    }
    Base::setTableSetting(present);
}

void CHpfDataTable::onTimer()
{
    if (dataModel)
        dataModel->onTimer();
    Base::onTimer();
    tryFirstAdjustVisibleWidth();
}

void CHpfDataTable::updateTable()
{
    if (dataModel && dataModel->updated())
        dataModel->reCalcExStat();
    Base::updateTable();
    tryFirstAdjustVisibleWidth();
}

void CHpfDataTable::showEvent(QShowEvent *event)
{
    Base::showEvent(event);
    tryFirstAdjustVisibleWidth();
}

void CHpfDataTable::tryFirstAdjustVisibleWidth()
{
    fitOnce(dataModel && dataModel->size() > 0);
}

void CHpfDataTable::adjustVisibleWidth()
{
    fitOnce(dataModel && dataModel->allSize() > 0);
}

void CHpfDataTable::fitOnce(bool hasRows)
{
    if (firstFitDone || !hasRows || !isVisible())
        return;
    firstFitDone = true;
    fitVisibleColumns();
}

} // namespace KV
