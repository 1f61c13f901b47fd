#include "table/tablearrangement.h"

#include <algorithm>
#include <functional>

namespace ZB {

namespace {

using Match = std::function<bool(const CBaseTableColumnSetting &, const TableColumnInfo &, int)>;

bool sameField(const CBaseTableColumnSetting &saved, const TableColumnInfo &info, int)
{
    return saved.fieldId >= 0 && saved.fieldId == info.fieldId;
}

bool sameName(const CBaseTableColumnSetting &saved, const TableColumnInfo &info, int)
{
    return saved.fieldId < 0 && info.fieldId < 0 && !saved.name.isEmpty() && saved.name == info.name;
}

bool sameNumber(const CBaseTableColumnSetting &saved, const TableColumnInfo &, int column)
{
    return saved.fieldId < 0 && saved.name.isEmpty() && saved.column == column;
}

/// The column of each saved one, -1 for none. Every column is taken once.
std::vector<int> matched(const QList<CBaseTableColumnSetting> &saved, const std::vector<TableColumnInfo> &columns)
{
    std::vector<int> columnOf(std::size_t(saved.size()), -1);
    std::vector<bool> taken(columns.size(), false);
    for (const Match &match : {Match(sameField), Match(sameName), Match(sameNumber)})
        for (std::size_t index = 0; index < columnOf.size(); ++index)
            for (std::size_t column = 0; column < columns.size() && columnOf[index] < 0; ++column)
                if (!taken[column] && match(saved[int(index)], columns[column], int(column))) {
                    columnOf[index] = int(column);
                    taken[column] = true;
                }
    return columnOf;
}

} // namespace

TableArrangement arranged(const QList<CBaseTableColumnSetting> &saved, const std::vector<TableColumnInfo> &columns)
{
    TableArrangement result;
    const std::vector<int> columnOf = matched(saved, columns);
    for (std::size_t index = 0; index < columnOf.size(); ++index) {
        if (columnOf[index] < 0)
            continue;
        const CBaseTableColumnSetting &setting = saved[int(index)];
        result.order.push_back(columnOf[index]);
        result.settings[columnOf[index]] = setting;
        result.columnOfSaved.emplace(setting.column, columnOf[index]);
    }
    for (int column = 0; column < int(columns.size()); ++column) {
        if (result.settings.count(column))
            continue;
        const auto neighbour = std::find(result.order.begin(), result.order.end(), column - 1);
        result.order.insert(neighbour == result.order.end() ? result.order.begin() : neighbour + 1, column);
    }
    return result;
}

int presentColumn(const TableArrangement &arrangement, int saved, int columnCount)
{
    if (arrangement.columnOfSaved.empty())
        return saved >= 0 && saved < columnCount ? saved : -1;
    const auto known = arrangement.columnOfSaved.find(saved);
    return known == arrangement.columnOfSaved.end() ? -1 : known->second;
}

CBaseTableFrameSetting arrangedFrame(const CBaseTableFrameSetting &saved, const TableArrangement &arrangement,
                                     int columnCount)
{
    const auto present = [&arrangement, columnCount](int column) {
        return presentColumn(arrangement, column, columnCount);
    };
    CBaseTableFrameSetting frame = saved;
    frame.sorts.clear();
    frame.marks.clear();
    for (const auto &[column, order] : saved.sorts)
        if (present(column) >= 0)
            frame.sorts.append({present(column), order});
    for (CTableRowMark mark : saved.marks) {
        mark.column = present(mark.column);
        if (mark.column >= 0)
            frame.marks.append(mark);
    }
    if (saved.filters) {
        frame.filters->clear();
        for (const CBaseTableColumnFilter &filter : *saved.filters)
            if (present(filter.column) >= 0)
                frame.filters->append({present(filter.column), filter.conditions});
    }
    frame.frozenColumns = std::clamp(saved.frozenColumns, 0, columnCount);
    return frame;
}

} // namespace ZB
