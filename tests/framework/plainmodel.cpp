#include "plainmodel.h"

#include <algorithm>
#include <cmath>

namespace modeltest {

namespace {

/// A number that orders records by a column, with whether there is none.
std::pair<double, bool> numberOf(const Record &record, int column)
{
    switch (column) {
    case Quantity:
        return {static_cast<double>(record.quantity), record.quantity == noQuantity};
    case Status:
        return {record.status, record.status == noStatus};
    case Price:
        return {record.price, record.price == noPrice || std::isnan(record.price)};
    default:
        return {0, false};
    }
}

int compareColumn(const Record &a, const Record &b, int column, bool descending)
{
    int order = 0;
    if (column == ZB::IBaseHpfTableModel::SortCustom) {
        order = PlainModel::compareCustom(a, b);
    } else if (column == Name) {
        order = a.name.compare(b.name);
    } else {
        const auto [valueA, noneA] = numberOf(a, column);
        const auto [valueB, noneB] = numberOf(b, column);
        if (noneA || noneB)
            return int(noneA) - int(noneB);
        order = (valueA > valueB) - (valueA < valueB);
    }
    return descending ? -order : order;
}

QString join(const std::vector<std::string> &keys)
{
    QStringList list;
    for (const std::string &key : keys)
        list.append(QString::fromStdString(key));
    return list.join(QLatin1Char(' '));
}

} // namespace

int PlainModel::compareCustom(const Record &a, const Record &b)
{
    return a.name.size() - b.name.size();
}

void PlainModel::put(const std::string &key, const Record &record)
{
    const auto known = std::find_if(rows.begin(), rows.end(), [&](const Row &row) { return row.key == key; });
    if (known != rows.end())
        known->record = record;
    else
        rows.insert(append ? rows.end() : rows.begin(), Row{key, record});
}

void PlainModel::remove(const std::string &key)
{
    rows.erase(std::remove_if(rows.begin(), rows.end(), [&](const Row &row) { return row.key == key; }), rows.end());
}

bool PlainModel::passes(const Record &record) const
{
    for (auto it = filters.cbegin(); it != filters.cend(); ++it) {
        const QString text = shownText(record, it.key());
        for (const auto &[type, values] : it.value()) {
            bool met = false;
            for (const QString &value : values)
                met = met || (type == 0 ? text == value
                                        : type == 1 && !value.isEmpty() && text.toLower().contains(value.toLower()));
            if (!met)
                return false;
        }
    }
    return true;
}

int PlainModel::compare(const Record &a, const Record &b) const
{
    for (const auto &[column, order] : sort) {
        const int compared = compareColumn(a, b, column, order != 0);
        if (compared != 0)
            return compared;
    }
    return 0;
}

std::vector<PlainModel::Row> PlainModel::sorted() const
{
    std::vector<Row> result = rows;
    std::stable_sort(result.begin(), result.end(),
                     [this](const Row &a, const Row &b) { return compare(a.record, b.record) < 0; });
    return result;
}

QString PlainModel::shownKeys() const
{
    std::vector<std::string> keys;
    for (const Row &row : sorted()) {
        if (passes(row.record))
            keys.push_back(row.key);
    }
    return join(keys);
}

QString PlainModel::allKeys() const
{
    std::vector<std::string> keys;
    for (const Row &row : sorted())
        keys.push_back(row.key);
    return join(keys);
}

double PlainModel::sumOf(int column) const
{
    double sum = 0;
    for (const Row &row : rows) {
        const auto [value, none] = numberOf(row.record, column);
        if (passes(row.record) && (!none || std::isnan(value)))
            sum += value;
    }
    return sum;
}

int choose(std::mt19937_64 &random, int limit)
{
    return static_cast<int>(random() % static_cast<quint64>(limit));
}

Record chosenRecord(const Choice &below)
{
    static const QString names[] = {"", "浦发银行", "贵州茅台", "600519", "600519A", "6005", "abc", "ABC"};
    static const double prices[] = {noPrice, 0x1p30, -0x1p30, 1 + 1.0 / 1024};
    Record record;
    record.quantity = below(10) == 0 ? noQuantity : below(9) - 4;
    record.status = below(10) == 0 ? noStatus : below(5);
    record.price = below(8) == 0 ? prices[below(4)] : below(20) * 0.25 - 2;
    record.name = names[below(static_cast<int>(std::size(names)))];
    return record;
}

} // namespace modeltest
