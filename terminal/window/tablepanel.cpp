#include "window/tablepanel.h"

#include "kv/cuserconfig.h"
#include "model/chpfdatamodel.h"
#include "table/chpfdatatable.h"
#include "zb/cuiresource.h"
#include "zb/numberformat.h"

namespace terminal {

namespace {

QString grouped(int count)
{
    return ZB::formatLonglongNumber(count, 0, utils::FormatGroupDigits);
}

} // namespace

TablePanel::TablePanel(const QString &caption, int tableId, int metaId, QWidget *parent)
    : TablePanel(caption, new KV::CHpfDataTable(tableId, metaId, nullptr, kdservice::TraderStock, /* paged */ false),
                 parent)
{
}

TablePanel::TablePanel(const QString &caption, KV::CHpfDataTable *table, QWidget *parent)
    : Panel(caption, parent), dataTable(table)
{
    dataTable->getDataModel()->setFieldColors(true);
    setContents(dataTable);
    TablePanel::refresh();
}

TablePanel::~TablePanel() = default;

void TablePanel::take(const FeedPump::Records &records)
{
    dataTable->updateDatas(records, /* redraw */ false);
}

bool TablePanel::isSettled() const
{
    return true;
}

int TablePanel::shownCount() const
{
    return dataTable->count();
}

int TablePanel::allCount() const
{
    return dataTable->getDataModel()->allSize();
}

void TablePanel::refresh()
{
    const int shown = shownCount();
    const int all = allCount();
    if (shown == all)
        setSummary(QStringLiteral("%1 笔").arg(grouped(all)));
    else
        setSummary(QStringLiteral("筛选 %1 / %2 笔").arg(grouped(shown), grouped(all)));
}

void TablePanel::showNow()
{
    dataTable->updateTable();
}

void TablePanel::arrangeColumns(const std::vector<Column> &shown, int frozen)
{
    ZB::CBaseTableSettingParam setting;
    setting.frame.frozenColumns = frozen;
    std::vector<bool> isShown(static_cast<size_t>(dataTable->getDataModel()->columnCount()));
    for (const Column &column : shown) {
        const int number = dataTable->getColumnIdByFileId(column.fieldId);
        if (number < 0)
            continue;
        isShown[static_cast<size_t>(number)] = true;
        dataTable->setColumnWidth(number, ZB::scaled(column.width));
        setting.columns.append({number, column.fieldId, QString(), column.width, true});
    }
    for (size_t number = 0; number < isShown.size(); ++number)
        dataTable->setColumnVisible(static_cast<int>(number), isShown[number]);
    // What the user has arranged comes back by itself, unless an arrangement is set before.
    const KV::CUserConfig *config = KV::getUserConfig();
    const QString path = QStringLiteral("table/%1/setting").arg(dataTable->tableId());
    if (!config || config->value(path).toString().isEmpty())
        dataTable->setTableSetting(setting);
}

} // namespace terminal
