#include "window/recordpanel.h"

#include "kv/cuserconfig.h"
#include "table/cdatatable.h"
#include "zb/cuiresource.h"

namespace terminal {

RecordPanel::RecordPanel(const QString &caption, const QString &unit, KV::CDataTable *table, QWidget *parent)
    : Panel(caption, parent), recordTable(table), rowUnit(unit)
{
    setContents(recordTable);
}

RecordPanel::~RecordPanel() = default;

void RecordPanel::refresh()
{
    const int shown = recordTable->rowCount();
    const int all = recordCount();
    QString text = shown == all ? QStringLiteral("%1 %2").arg(all).arg(rowUnit)
                                : QStringLiteral("筛选 %1 / %2 %3").arg(shown).arg(all).arg(rowUnit);
    if (const QString more = remark(); !more.isEmpty())
        text += QStringLiteral(" · ") + more;
    setSummary(text);
}

void RecordPanel::showNow()
{
    recordTable->updateSums();
    recordTable->updateTable();
    refresh();
}

int RecordPanel::recordCount() const
{
    return recordTable->size();
}

QString RecordPanel::remark() const
{
    return QString();
}

void RecordPanel::arrangeColumns(const std::vector<Column> &shown, int frozen)
{
    ZB::CBaseTableSettingParam setting;
    setting.frame.frozenColumns = frozen;
    std::vector<bool> isShown(static_cast<size_t>(recordTable->columnCount()));
    for (const Column &column : shown) {
        const int number = recordTable->fieldID2columnID(column.fieldId);
        if (number < 0)
            continue;
        isShown[static_cast<size_t>(number)] = true;
        recordTable->setColumnWidth(number, ZB::scaled(column.width));
        setting.columns.append({number, column.fieldId, QString(), column.width, true});
    }
    for (size_t number = 0; number < isShown.size(); ++number)
        recordTable->setColumnVisible(static_cast<int>(number), isShown[number]);
    // What the user has arranged comes back by itself, unless an arrangement is set before.
    const KV::CUserConfig *config = KV::getUserConfig();
    const QString path = QStringLiteral("table/%1/setting").arg(recordTable->tableId());
    if (!config || config->value(path).toString().isEmpty())
        recordTable->setTableSetting(setting);
}

} // namespace terminal
