#include "plainmodel.h"

#include <algorithm>
#include <boost/multiprecision/cpp_bin_float.hpp>
#include <cmath>

namespace modeltest {

namespace {

/// Wide enough for every sum of the doubles in these tests.
using Exact =
    boost::multiprecision::number<boost::multiprecision::cpp_bin_float<2400, boost::multiprecision::digit_base_2>,
                                  boost::multiprecision::et_off>;

/// A number that orders records by a column, with whether there is none.
std::pair<long double, bool> numberOf(const Record &record, int column)
{
    static_assert(std::numeric_limits<long double>::digits >= 63, "holds every 64-bit integer");
    switch (column) {
    case Quantity:
        return {static_cast<long double>(record.quantity), record.quantity == noQuantity};
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

double PlainModel::realSumOf(int column) const
{
    if (!sums.contains(column))
        return noPrice;
    Exact sum = 0;
    double beyond = 0; ///< what infinities and NaN come to
    for (const Row &row : rows) {
        const auto [value, none] = numberOf(row.record, column);
        if (!passes(row.record))
            continue;
        if (!std::isfinite(value))
            beyond += static_cast<double>(value);
        else if (!none)
            sum += value;
    }
    if (beyond != 0)
        return beyond;
    const auto rounded = sum.convert_to<double>();
    return rounded == noPrice ? std::nextafter(noPrice, 0.0) : rounded;
}

qint64 PlainModel::integerSumOf(int column) const
{
    if (!sums.contains(column))
        return noQuantity;
    Exact sum = 0;
    for (const Row &row : rows) {
        const auto [value, none] = numberOf(row.record, column);
        if (!none && passes(row.record))
            sum += value;
    }
    const qint64 least = std::numeric_limits<qint64>::min();
    if (sum <= Exact(least))
        return least;
    return sum >= Exact(noQuantity) ? noQuantity - 1 : sum.convert_to<qint64>();
}

bool sameNumber(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

int choose(std::mt19937_64 &random, int limit)
{
    return static_cast<int>(random() % static_cast<quint64>(limit));
}

Record chosenRecord(const Choice &below)
{
    static const QString names[] = {"", "浦发银行", "贵州茅台", "600519", "600519A", "6005", "abc", "ABC"};
    static const double prices[] = {noPrice, noPrice, 0x1p30, -0x1p30, 1 + 1.0 / 1024, 0.1,     1e17,
                                    -1e17,   1e-200,  -1e300, 1e300,   -0.0,           -noPrice};
    static const double extremes[] = {std::nan(""), HUGE_VAL, -HUGE_VAL, std::nextafter(noPrice, 0.0)};
    static const qint64 quantities[] = {noQuantity,     noQuantity,  noQuantity - 1,
                                        noQuantity - 2, -noQuantity, std::numeric_limits<qint64>::min()};
    static const int statuses[] = {noStatus, noStatus, noStatus - 1, std::numeric_limits<int>::min()};
    const auto oneOf = [&below](const auto &values) { return values[below(static_cast<int>(std::size(values)))]; };
    Record record;
    record.quantity = below(10) == 0 ? oneOf(quantities) : below(9) - 4;
    record.status = below(10) == 0 ? oneOf(statuses) : below(5);
    record.price = below(8) == 0 ? oneOf(prices) : below(20) * 0.25 - 2;
    if (below(200) == 0)
        record.price = oneOf(extremes); // seldom: a sum with one in tells nothing of the other rows
    record.name = oneOf(names);
    return record;
}

} // namespace modeltest
