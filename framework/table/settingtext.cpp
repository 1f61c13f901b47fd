#include "table/settingtext.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <algorithm>
#include <limits>
#include <set>

#include "table/filterconditions.h"

namespace ZB {

namespace {

constexpr int maximumWidth = 4000;

QJsonArray columnsToJson(const QList<CBaseTableColumnSetting> &columns)
{
    QJsonArray list;
    for (const CBaseTableColumnSetting &column : columns)
        list.append(QJsonObject{{QStringLiteral("column"), column.column},
                                {QStringLiteral("field"), column.fieldId},
                                {QStringLiteral("name"), column.name},
                                {QStringLiteral("width"), column.width},
                                {QStringLiteral("visible"), column.visible}});
    return list;
}

QList<CBaseTableColumnSetting> columnsFromJson(const QJsonValue &value)
{
    QList<CBaseTableColumnSetting> columns;
    for (const QJsonValue &each : value.toArray()) {
        const QJsonObject object = each.toObject();
        if (object.isEmpty())
            continue;
        CBaseTableColumnSetting column;
        column.column = object[QStringLiteral("column")].toInt(-1);
        column.fieldId = object[QStringLiteral("field")].toInt(-1);
        column.name = object[QStringLiteral("name")].toString();
        column.width = std::clamp(object[QStringLiteral("width")].toInt(), 0, maximumWidth);
        column.visible = object[QStringLiteral("visible")].toBool(true);
        columns.append(column);
    }
    return columns;
}

/// A column filter is its column and its conditions, each of them its type and its texts.
QJsonArray filtersToJson(const QVector<CBaseTableColumnFilter> &filters)
{
    QJsonArray list;
    for (const CBaseTableColumnFilter &filter : filters) {
        QJsonArray conditions;
        for (const FilterCondition &condition : filter.conditions) {
            QStringList texts = condition.second.values();
            texts.sort();
            conditions.append(QJsonArray{condition.first, QJsonArray::fromStringList(texts)});
        }
        list.append(QJsonArray{filter.column, conditions});
    }
    return list;
}

std::optional<FilterCondition> conditionFromJson(const QJsonArray &pair)
{
    const int type = pair.size() == 2 ? pair[0].toInt(-1) : -1;
    if (!isFilterType(type) || !pair[1].isArray())
        return std::nullopt;
    FilterCondition condition(EFilterType(type), {});
    for (const QJsonValue &text : pair[1].toArray()) {
        if (!text.isString())
            return std::nullopt;
        condition.second.insert(text.toString());
    }
    if (condition.second.isEmpty() && type != FilterExact)
        return std::nullopt;
    return condition;
}

/// Empty where one of the conditions is damaged: the others alone would be another filter.
FilterConditions conditionsFromJson(const QJsonArray &list)
{
    FilterConditions conditions;
    for (const QJsonValue &each : list) {
        const auto condition = conditionFromJson(each.toArray());
        if (!condition)
            return {};
        conditions.append(*condition);
    }
    return plainConditions(conditions);
}

QVector<CBaseTableColumnFilter> filtersFromJson(const QJsonArray &list)
{
    QVector<CBaseTableColumnFilter> filters;
    std::set<int> columns;
    for (const QJsonValue &each : list) {
        const QJsonArray pair = each.toArray();
        CBaseTableColumnFilter filter{pair[0].toInt(-1), conditionsFromJson(pair[1].toArray())};
        if (filter.column >= 0 && !filter.conditions.isEmpty() && columns.insert(filter.column).second)
            filters.append(filter);
    }
    return filters;
}

int charactersOf(const CBaseTableColumnFilter &filter)
{
    constexpr int around = 3; // quotes and a comma
    qint64 characters = 0;
    for (const FilterCondition &condition : filter.conditions)
        for (const QString &text : condition.second)
            characters += text.size() + around;
    return int(std::min<qint64>(characters, std::numeric_limits<int>::max()));
}

QJsonObject frameToJson(const CBaseTableFrameSetting &frame)
{
    QJsonArray sorts;
    for (const auto &[column, order] : frame.sorts)
        sorts.append(QJsonArray{column, order});
    QJsonArray marks;
    for (const CTableRowMark &mark : frame.marks)
        marks.append(QJsonArray{mark.column, mark.threshold, mark.colorKey});
    QJsonObject object{{QStringLiteral("sorts"), sorts},
                       {QStringLiteral("marks"), marks},
                       {QStringLiteral("frozen"), frame.frozenColumns},
                       {QStringLiteral("numbers"), frame.showRowNumbers},
                       {QStringLiteral("statistics"), frame.showStatistics},
                       {QStringLiteral("set"), frame.columnSet}};
    if (frame.filters)
        object.insert(QStringLiteral("filters"), filtersToJson(keptFilters(*frame.filters)));
    return object;
}

CBaseTableFrameSetting frameFromJson(const QJsonObject &object)
{
    CBaseTableFrameSetting frame;
    for (const QJsonValue &each : object[QStringLiteral("sorts")].toArray()) {
        const QJsonArray sort = each.toArray();
        if (sort.size() == 2 && sort[0].toInt(-1) >= 0)
            frame.sorts.append({sort[0].toInt(), sort[1].toInt() ? 1 : 0});
    }
    for (const QJsonValue &each : object[QStringLiteral("marks")].toArray()) {
        const QJsonArray mark = each.toArray();
        if (mark.size() == 3 && mark[0].toInt(-1) >= 0 && mark[1].toDouble() > 0)
            frame.marks.append({mark[0].toInt(), mark[1].toDouble(), mark[2].toString()});
    }
    if (const QJsonValue filters = object[QStringLiteral("filters")]; filters.isArray())
        frame.filters = filtersFromJson(filters.toArray());
    frame.frozenColumns = std::max(0, object[QStringLiteral("frozen")].toInt());
    frame.showRowNumbers = object[QStringLiteral("numbers")].toBool(true);
    frame.showStatistics = object[QStringLiteral("statistics")].toBool(true);
    frame.columnSet = object[QStringLiteral("set")].toString();
    return frame;
}

} // namespace

QVector<CBaseTableColumnFilter> keptFilters(const QVector<CBaseTableColumnFilter> &filters)
{
    QVector<CBaseTableColumnFilter> kept;
    int left = maximumFilterCharacters;
    for (const CBaseTableColumnFilter &filter : filters) {
        const int characters = charactersOf(filter);
        if (characters > left)
            continue;
        left -= characters;
        kept.append(filter);
    }
    return kept;
}

QString settingText(const CBaseTableSettingParam &setting)
{
    QJsonObject sets;
    for (auto set = setting.columnSets.begin(); set != setting.columnSets.end(); ++set)
        sets.insert(set.key(), columnsToJson(set.value()));
    const QJsonObject whole{{QStringLiteral("frame"), frameToJson(setting.frame)},
                            {QStringLiteral("columns"), columnsToJson(setting.columns)},
                            {QStringLiteral("sets"), sets}};
    return QString::fromUtf8(QJsonDocument(whole).toJson(QJsonDocument::Compact));
}

std::optional<CBaseTableSettingParam> settingFromText(const QString &text)
{
    const QJsonObject whole = QJsonDocument::fromJson(text.toUtf8()).object();
    if (!whole[QStringLiteral("columns")].isArray())
        return std::nullopt;
    CBaseTableSettingParam setting;
    setting.frame = frameFromJson(whole[QStringLiteral("frame")].toObject());
    setting.columns = columnsFromJson(whole[QStringLiteral("columns")]);
    const QJsonObject sets = whole[QStringLiteral("sets")].toObject();
    for (auto set = sets.begin(); set != sets.end(); ++set)
        setting.columnSets.insert(set.key(), columnsFromJson(set.value()));
    return setting;
}

} // namespace ZB
