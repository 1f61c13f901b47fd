#include <algorithm>
#include <utility>

#include "kdservice/typemanager.h"
#include "model/cfieldformat.h"
#include "model/fieldvalue.h"
#include "table/cdatatable.h"
#include "zb/ccombopushbutton.h"
#include "zb/cradiobuttongroup.h"

namespace KV {

namespace {

int alignmentOf(const kdservice::FieldDes &field)
{
    if (field.getProperty(2))
        return Qt::AlignLeft | Qt::AlignVCenter;
    if (field.getProperty(3))
        return Qt::AlignHCenter | Qt::AlignVCenter;
    return Qt::AlignRight | Qt::AlignVCenter;
}

/// What has no type of its own is shown, and sorted, as text.
QVariant::Type typeOf(kdservice::EXT_DATA_TYPE type)
{
    const QVariant::Type told = qtTypeOf(type);
    return told == QVariant::Invalid ? QVariant::String : told;
}

QString widestUnit(const kdservice::FieldDes &field)
{
    if (field.formatFlags.testFlag(utils::FormatPercent))
        return QStringLiteral("%");
    return field.formatFlags.testFlag(utils::FormatUnit) ? QStringLiteral("万") : QString();
}

} // namespace

void CDataTable::initColumns(const std::vector<int> &metaIds)
{
    clearColumns();
    fieldToColumn.clear();
    fieldOfColumn.clear();
    formats.clear();
    summedFields.clear();
    extraColumns.clear();
    columnFilters.clear();
    columnMetaIds = metaIds;
    forgetRows();
    for (kdservice::FieldDes *field : kdservice::TypeManager::instance()->getAllFields(metaIds, tradeType))
        if (field)
            addFieldColumn(*field);
}

void CDataTable::addFieldColumn(kdservice::FieldDes &field)
{
    ZB::CTableColumn column;
    column.header = kdservice::TypeManager::instance()->getFieldChsNameByType(&field, tradeType);
    column.fieldId = field.fieldId;
    column.type = typeOf(field.dataType);
    column.alignment = alignmentOf(field);
    column.bold = field.getProperty(11);
    column.filterable = field.getProperty(8);
    column.flashes = field.getProperty(6);
    column.unitSample = widestUnit(field);
    const int added = addColumn(column);
    mapField(field.fieldId, added);
    formats.resize(static_cast<std::size_t>(added) + 1);
    formats.back() = CFieldFormat(field, field.fieldId, tradeType);
    formats.back().rememberEnumTexts();
    boldKnown = false;
    if (field.getProperty(1))
        summedFields[field.fieldId] = &field;
}

int CDataTable::addExtraColumn(int id, const QString &header)
{
    ZB::CTableColumn column;
    column.header = header;
    const int added = addColumn(column);
    extraColumns.push_back({id, header, added});
    if (id >= 0)
        mapField(id, added);
    return added;
}

int CDataTable::rowForWidgets() const
{
    if (buildingRow() >= 0)
        return buildingRow();
    return showingRow >= 0 ? showingRow : lastAddedRow();
}

void CDataTable::addComboPushButton(int column, ZB::CComboPushButton *button)
{
    setCellWidget(rowForWidgets(), column, button);
}

void CDataTable::addRadioButtonGroup(int column, ZB::CRadioButtonGroup *group)
{
    setCellWidget(rowForWidgets(), column, group);
}

int CDataTable::fieldID2columnID(int field) const
{
    const auto found = fieldToColumn.find(field);
    return found == fieldToColumn.end() ? -1 : found->second;
}

int CDataTable::columnID2fieldID(int column) const
{
    const auto at = static_cast<std::size_t>(column);
    return column >= 0 && at < fieldOfColumn.size() ? fieldOfColumn[at] : -1;
}

/// The last column of a field counts, and of a column the last of its fields.
void CDataTable::mapField(int field, int column)
{
    fieldToColumn[field] = column;
    sumAnew();
    fieldOfColumn.assign(static_cast<std::size_t>(columnCount()), -1);
    for (const auto &[mapped, at] : fieldToColumn)
        fieldOfColumn[static_cast<std::size_t>(at)] = mapped;
}

std::vector<int> CDataTable::getMetaIDs(int metaId, kdservice::EVxTraderType type, const QSet<QString> &further) const
{
    std::set<int> ids{metaId};
    for (const QString &text : further) {
        bool isNumber = false;
        const int id = text.toInt(&isNumber);
        if (isNumber && !kdservice::TypeManager::instance()->getAllFields({id}, type).empty())
            ids.insert(id);
    }
    return {ids.begin(), ids.end()};
}

void CDataTable::resetTableColumnID(const QMap<int, int> &newIds, ZB::CBaseTableFrameSetting &frame,
                                    QList<ZB::CBaseTableColumnSetting> &columns) const
{
    const auto reset = [&newIds](auto &list, auto columnOf) {
        for (auto &entry : list)
            columnOf(entry) = newIds.value(columnOf(entry), -1);
        list.erase(std::remove_if(list.begin(), list.end(), [&](auto &entry) { return columnOf(entry) < 0; }),
                   list.end());
    };
    reset(columns, [](ZB::CBaseTableColumnSetting &entry) -> int & { return entry.column; });
    reset(frame.sorts, [](QPair<int, int> &entry) -> int & { return entry.first; });
    if (frame.filters)
        reset(*frame.filters, [](ZB::CBaseTableColumnFilter &entry) -> int & { return entry.column; });
    reset(frame.marks, [](ZB::CTableRowMark &entry) -> int & { return entry.column; });
}

void CDataTable::setTradeType(kdservice::EVxTraderType type)
{
    if (tradeType == type)
        return;
    const bool areFiltersNew = awaitsSettings();
    ZB::CBaseTableSettingParam setting = getTableSetting();
    if (!areFiltersNew)
        setting.frame.filters = QVector<ZB::CBaseTableColumnFilter>();
    const std::map<int, int> formerFields = fieldToColumn;
    const std::vector<ExtraColumn> formerExtra = extraColumns;
    const std::vector<int> metaIds = columnMetaIds;
    tradeType = type;
    boldColumns.clear();
    boldKnown = false;
    const auto formerFilters = std::exchange(customFilters, {});
    initColumns(metaIds);
    QMap<int, int> newIds = newColumnIds(formerFields);
    keepExtraColumns(formerExtra, newIds);
    keepCustomFilters(formerFilters, newIds);
    resetTableColumnID(newIds, setting.frame, setting.columns);
    setTableSetting(setting);
    settingsChanged();
    reFilterDatas();
}

QMap<int, int> CDataTable::newColumnIds(const std::map<int, int> &formerFields) const
{
    QMap<int, int> newIds;
    for (const auto &[field, column] : formerFields)
        if (const int present = fieldID2columnID(field); present >= 0)
            newIds[column] = present;
    return newIds;
}

/// A derived table may have added its own again.
void CDataTable::keepExtraColumns(const std::vector<ExtraColumn> &former, QMap<int, int> &newIds)
{
    for (const ExtraColumn &extra : former) {
        const auto present = std::find_if(extraColumns.begin(), extraColumns.end(), [&extra](const ExtraColumn &now) {
            return extra.id >= 0 ? now.id == extra.id : now.id < 0 && now.header == extra.header;
        });
        newIds[extra.column] = present == extraColumns.end() ? addExtraColumn(extra.id, extra.header) : present->column;
    }
}

/// Those that a derived table has set for the new columns count before the former ones.
void CDataTable::keepCustomFilters(const std::map<int, CustomFilter> &former, const QMap<int, int> &newIds)
{
    for (const auto &[column, filter] : former)
        if (column < 0 || newIds.contains(column))
            customFilters.emplace(newIds.value(column, column), filter);
}

ZB::CBaseTableSettingParam CDataTable::getTableSetting()
{
    return ZB::COddEvenRowTable::getTableSetting();
}

void CDataTable::setTableSetting(const ZB::CBaseTableSettingParam &setting)
{
    ZB::COddEvenRowTable::setTableSetting(setting);
}

} // namespace KV
