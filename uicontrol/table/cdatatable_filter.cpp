#include <algorithm>

#include "model/cfieldformat.h"
#include "model/recordsearch.h"
#include "table/cdatatable.h"

namespace KV {

bool CDataTable::passCustomFilters(const RecordPtr &record) const
{
    return std::all_of(customFilters.begin(), customFilters.end(), [&](const auto &entry) {
        return passFilter(record, entry.first, entry.second.type, entry.second.text);
    });
}

bool CDataTable::passColumnFilters(const RecordPtr &record) const
{
    return std::all_of(columnFilters.begin(), columnFilters.end(),
                       [&](const auto &entry) { return passFilterByCol(record, entry.first, entry.second); });
}

bool CDataTable::passData(const RecordPtr &record) const
{
    return passCustomFilters(record) && passColumnFilters(record);
}

bool CDataTable::passFilter(const RecordPtr &, int, int, QString) const
{
    return true;
}

bool CDataTable::passFilterByCol(const RecordPtr &record, int column, const ColumnFilter &filter) const
{
    const QSet<QString> &wanted = filter.second;
    if (column < 0 || wanted.isEmpty() || !columnFilterable(column))
        return true;
    QString text;
    if (!textOfColumn(record, column, text))
        return false;
    if (filter.first == ZB::FilterExact)
        return wanted.contains(text);
    // The box of this table lists every value, so that it asks for no other type.
    return filter.first == ZB::FilterContains &&
           std::any_of(wanted.begin(), wanted.end(), [&text](const QString &part) {
               return !part.isEmpty() && text.contains(part, Qt::CaseInsensitive);
           });
}

/// The text by which a column is filtered, empty for a record that does not have the field; false for a column that
/// shows no field.
bool CDataTable::textOfColumn(const RecordPtr &record, int column, QString &text) const
{
    const int field = record ? columnID2fieldID(column) : -1;
    if (field < 0)
        return false;
    const CFieldFormat *format = formatOfColumn(column);
    if (!format)
        return getDataByFieldID(record, field, text), true;
    RecordPtr nested;
    if (const kdservice::IData *holder = recordHolding(*record, field, nested))
        text = format->text(*holder);
    return true;
}

void CDataTable::onFilter(int column, int type, QString text)
{
    CustomFilter &filter = customFilters[column];
    filter.type = type;
    filter.text = text;
    reFilterDatas();
}

void CDataTable::onFilterTrigger(int column, int type, QSet<QString> &values)
{
    ZB::IBaseTable::onFilterTrigger(column, type, values);
}

void CDataTable::takeColumnFilter(int column, ZB::EFilterType type, const QSet<QString> &values)
{
    if (values.isEmpty())
        columnFilters.erase(column);
    else
        columnFilters[column] = {type, values};
    setColumnFiltered(column, !values.isEmpty());
    settingsChanged();
    filterColumn();
}

QMap<int, ZB::FilterConditions> CDataTable::filterConditions() const
{
    QMap<int, ZB::FilterConditions> conditions;
    for (const auto &[column, filter] : columnFilters)
        conditions[column] = {filter};
    return conditions;
}

void CDataTable::filterColumn()
{
    reFilterDatas();
}

/// A hook that filters anew itself has given all rows before this goes on.
void CDataTable::reFilterDatas()
{
    clearRows();
    forgetRows();
    rowToKey.reserve(records.size());
    const quint64 forgottenBefore = rowsForgotten;
    const auto mayPass = [this](const Entry &stored) {
        return !customFilters.empty() || passColumnFilters(stored.second.record);
    };
    forEachStored(mayPass, [this, forgottenBefore](Entry &stored, const RecordPtr &record) {
        const quint64 removalsBefore = removals;
        const auto passes = [&] { return customFilters.empty() || passData(record); }; // the others: mayPass
        if (rowsForgotten != forgottenBefore || !passes())
            return;
        Entry *const entry = stillStored(stored, record, removalsBefore);
        if (!entry || entry->second.row >= 0 || rowsForgotten != forgottenBefore)
            return;
        if (const int row = beginRow(record->hashKey()); row >= 0) {
            giveRow(*entry, row);
            showRow(record, row);
        }
        endRow();
    });
}

bool CDataTable::passAllBut(const RecordPtr &record, int column) const
{
    return passCustomFilters(record) && std::all_of(columnFilters.begin(), columnFilters.end(), [&](const auto &entry) {
               return entry.first == column || passFilterByCol(record, entry.first, entry.second);
           });
}

/// Offers the texts of all records that pass the other filters, so that every choice leaves something to see; numbers
/// in their own order.
void CDataTable::showFilterMenu(int column, QRect header)
{
    const CFieldFormat *format = formatOfColumn(column);
    if (!format || !columnFilterable(column))
        return;
    const int fieldId = format->fieldId();
    const kdservice::EXT_DATA_TYPE type = format->field()->dataType;
    const bool ofNumbers = type == kdservice::ExtInt || type == kdservice::ExtLong || type == kdservice::ExtDouble;
    std::map<QString, int> counts;
    std::map<QString, double> numbers;
    forEachStored(nullptr, [&](Entry &, const RecordPtr &record) {
        QString text;
        if (!passAllBut(record, column))
            return;
        getDataByFieldID(record, fieldId, text); // an empty text for a record that does not have the field
        ++counts[text];
        if (ofNumbers && numbers.count(text) == 0)
            numbers[text] = numberOf(*record, fieldId);
    });
    QVector<QPair<QString, int>> texts;
    for (const auto &[text, count] : counts)
        texts.append({text, count});
    if (ofNumbers)
        std::stable_sort(texts.begin(), texts.end(),
                         [&](const auto &a, const auto &b) { return numbers[a.first] < numbers[b.first]; });
    const auto own = columnFilters.find(column);
    openFilterBox(column, header, texts, own == columnFilters.end() ? ColumnFilter() : own->second);
}

} // namespace KV
