#include "zb/cstandardtable.h"

#include "popups/filterpopup.h"
#include "recordtable/knowntexts.h"
#include "recordtable/recordshell.h"

namespace ZB {

CStandardTable::CStandardTable(int tableId, QWidget *parent, int options) : CBaseNormalTable(tableId, parent, options)
{
}

CStandardTable::~CStandardTable() = default;

void CStandardTable::copySelection(bool withHeader)
{
    shell().copySelection(withHeader);
}

void CStandardTable::openFind()
{
    shell().search.open();
}

void CStandardTable::find(const QString &text, bool forward)
{
    shell().search.find(text, forward, false);
}

bool CStandardTable::exportData(QString path)
{
    RecordShell &table = shell();
    if (!table.isShowing() || path.isEmpty())
        return false;
    table.restoreNow();
    return table.transfer.exportTo(path, table.exportColumns(table.grid->visibleColumns()), table.rows->allRows());
}

CBaseTableSettingParam CStandardTable::getTableSetting()
{
    return shell().shellSetting();
}

void CStandardTable::setTableSetting(const CBaseTableSettingParam &setting)
{
    shell().applyShellSetting(setting);
    if (shell().frame.sorts != sortColumns())
        setSortColumns(shell().frame.sorts);
}

void CStandardTable::openFilterBox(int column, const QRect &header, const QVector<QPair<QString, int>> &texts,
                                   const QPair<EFilterType, QSet<QString>> &present)
{
    RecordShell &table = shell();
    if (!columnFilterable(column))
        return;
    std::vector<DistinctTexts::Value> values;
    for (const auto &[text, count] : texts)
        values.push_back({text, count});
    table.closePopup();
    const FilterConditions conditions = present.second.isEmpty() ? FilterConditions() : FilterConditions{present};
    auto *box = new FilterPopup(column, table.source.headerText(column), conditions,
                                std::make_unique<KnownTexts>(std::move(values)), this);
    table.popup = box;
    connect(box, &FilterPopup::chosen, this,
            [this, column](int type, QSet<QString> chosen) { onFilterTrigger(column, type, chosen); });
    box->showAt(QRect(mapToGlobal(header.topLeft()), header.size()));
    box->setFocus();
}

} // namespace ZB
