#include "window/columnsbutton.h"

#include <algorithm>
#include <utility>

#include "account/caccountlistcolumnsettingwidget.h"
#include "table/cdatatable.h"

namespace terminal {

ColumnsButton::ColumnsButton(KV::CDataTable &shownTable, const std::vector<int> &shownFields, int locked,
                             QWidget *parent)
    : BarButton(parent), table(shownTable),
      settings(new KV::CAccountListColumnSettingWidget(shownTable.tableId(), this))
{
    setText(QStringLiteral("列设置"));
    setToolTip(QStringLiteral("显示、隐藏、锁定列，调整列的顺序"));
    setOpensMenu(true);
    settings->setDefaultColumns(defaultColumns(shownFields, locked));
    if (settings->columns() != KV::accountListColumns(table.getTableSetting()))
        arrange(settings->columns());
    connect(this, &BarButton::clicked, this, &ColumnsButton::openSettings);
    connect(settings, &KV::CAccountListColumnSettingWidget::sigColumnsChanged, this, &ColumnsButton::arrange);
}

/// What the user has arranged in the header since then is kept too.
ColumnsButton::~ColumnsButton()
{
    settings->setColumns(KV::accountListColumns(table.getTableSetting()));
}

QVector<KV::CAccountListColumn> ColumnsButton::defaultColumns(const std::vector<int> &shownFields, int locked) const
{
    QVector<KV::CAccountListColumn> columns = KV::accountListColumns(table.getTableSetting());
    const auto placeOf = [&shownFields](const KV::CAccountListColumn &column) {
        return std::find(shownFields.begin(), shownFields.end(), column.fieldId) - shownFields.begin();
    };
    std::sort(columns.begin(), columns.end(), [&placeOf](const auto &left, const auto &right) {
        return std::make_pair(placeOf(left), left.column) < std::make_pair(placeOf(right), right.column);
    });
    for (KV::CAccountListColumn &column : columns) {
        column.visible = placeOf(column) < static_cast<std::ptrdiff_t>(shownFields.size());
        column.locked = placeOf(column) < locked;
    }
    return columns;
}

/// Users arrange columns in the table's header too: the popup starts from what there is.
void ColumnsButton::openSettings()
{
    settings->setColumns(KV::accountListColumns(table.getTableSetting()));
    settings->showAt(QRect(mapToGlobal(QPoint(0, 0)), size()));
}

void ColumnsButton::arrange(const QVector<KV::CAccountListColumn> &columns)
{
    ZB::CBaseTableSettingParam setting = table.getTableSetting();
    KV::arrangeColumns(setting, columns);
    table.setTableSetting(setting);
}

} // namespace terminal
