#include "desk/historyfilters.h"

#include <algorithm>

#include "filter/valuefilter.h"
#include "kdservice/typemanager.h"
#include "records/fieldids.h"

namespace terminal {

namespace {

using namespace refhost;

QVector<QPair<QString, QVariant>> enumeration(const char *name)
{
    QVector<QPair<QString, QVariant>> all;
    for (int code = 0; code < 128; ++code) {
        const QString text = kdservice::TypeManager::instance()->getEnumItemName(name, code, kdservice::TraderStock);
        if (!text.isEmpty())
            all.append({text, code});
    }
    return all;
}

std::string textOf(const QVariant &value)
{
    return value.toString().toStdString();
}

int numberOf(const QVariant &value)
{
    return value.toInt();
}

char codeOf(const QVariant &value)
{
    return char(value.toInt());
}

} // namespace

bool HistoryFilters::canFilter(int field)
{
    static constexpr int fields[] = {OrderDay,       DealDay,       OrderCode,   DealCode,   OrderAccount, DealAccount,
                                     OrderDirection, DealDirection, OrderOffset, DealOffset, OrderStatus};
    return std::find(std::begin(fields), std::end(fields), field) != std::end(fields);
}

void HistoryFilters::set(int field, ZB::EFilterType type, const QSet<QString> &values)
{
    if (values.isEmpty())
        filters.remove(field);
    else
        filters[field] = {type, values};
}

QVector<HistoryFilters::Choice> HistoryFilters::choicesOf(int field) const
{
    QVector<Choice> all;
    const auto texts = [&all](const std::vector<std::string> &values) {
        for (const std::string &value : values)
            all.append({QString::fromStdString(value), QString::fromStdString(value)});
    };
    switch (field) {
    case OrderAccount:
    case DealAccount:
        texts(choices.accounts);
        return all;
    case OrderCode:
    case DealCode:
        texts(choices.codes);
        return all;
    case OrderDay:
    case DealDay:
        for (const int day : choices.days)
            all.append({QString::number(day), day});
        return all;
    case OrderDirection:
    case DealDirection:
        return enumeration("direction");
    case OrderOffset:
    case DealOffset:
        return enumeration("offset");
    case OrderStatus:
        return enumeration("orderstatus");
    default:
        return all;
    }
}

QStringList HistoryFilters::menu(int field) const
{
    QStringList items;
    for (const Choice &choice : choicesOf(field))
        items += choice.first;
    const Filter present = filters.value(field);
    for (const QString &chosen : present.second)
        if (present.first == ZB::FilterExact && !items.contains(chosen))
            items += chosen;
    return items;
}

QVariantList HistoryFilters::passing(int field, const Filter &filter) const
{
    const core::ValueFilter texts(filter.first, filter.second);
    QVariantList values;
    for (const Choice &choice : choicesOf(field))
        if (texts.passes(choice.first))
            values += choice.second;
    return values;
}

void HistoryFilters::putInto(trading::HistoryQuery &query) const
{
    for (auto filter = filters.constBegin(); filter != filters.constEnd(); ++filter) {
        const QVariantList values = passing(filter.key(), *filter);
        const auto fill = [&values](auto &list, const auto &valueOf) {
            for (const QVariant &value : values)
                list.push_back(valueOf(value));
            if (list.empty())
                list.push_back({});
        };
        switch (filter.key()) {
        case OrderAccount:
        case DealAccount:
            fill(query.accounts, textOf);
            break;
        case OrderCode:
        case DealCode:
            fill(query.codes, textOf);
            break;
        case OrderDay:
        case DealDay:
            fill(query.days, numberOf);
            break;
        case OrderDirection:
        case DealDirection:
            fill(query.sides, codeOf);
            break;
        case OrderOffset:
        case DealOffset:
            fill(query.offsets, codeOf);
            break;
        default:
            fill(query.states, codeOf);
        }
    }
}

} // namespace terminal
