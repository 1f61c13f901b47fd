#include <boost/thread/lock_guard.hpp>
#include <limits>

#include "model/extracell.h"
#include "model/fieldvalue.h"
#include "zb/ibasehpftabledata.h"

namespace KV {

namespace {

using Lock = boost::lock_guard<boost::mutex>;

/// False for values that sums leave out.
bool numberOf(const QVariant &value, double &number)
{
    switch (value.type()) {
    case QVariant::Int:
        number = value.toInt();
        return value.toInt() != std::numeric_limits<int>::max();
    case QVariant::LongLong:
        number = static_cast<double>(value.toLongLong());
        return value.toLongLong() != std::numeric_limits<qint64>::max();
    default: {
        bool isNumber = false;
        number = value.toDouble(&isNumber);
        return isNumber && !isAbsent(number);
    }
    }
}

} // namespace

void CHpfExtraDataModel::publishStatistics()
{
    summed.store(statistics.size(), std::memory_order_relaxed);
}

/// Takes a cell into its column's sum, with its value if that is a number.
void CHpfExtraDataModel::count(Cell &cell)
{
    const auto accumulator = statistics.constFind(cell.column);
    if (accumulator == statistics.constEnd())
        return;
    cell.memberOf = (*accumulator)->generation;
    double number = 0;
    if (numberOf(cell.value, number))
        (*accumulator)->sum.add(number);
}

bool CHpfExtraDataModel::isMember(const Cell &cell) const
{
    const auto accumulator = statistics.constFind(cell.column);
    return accumulator != statistics.constEnd() && cell.memberOf == (*accumulator)->generation;
}

/// Takes a cell's value, which is about to change or to go, out of its column's sum.
void CHpfExtraDataModel::discount(const Cell &cell)
{
    double number = 0;
    if (isMember(cell) && numberOf(cell.value, number))
        statistics.value(cell.column)->sum.subtract(number);
}

bool CHpfExtraDataModel::isLeftOut(const Cell &cell) const
{
    const auto accumulator = statistics.constFind(cell.column);
    return accumulator != statistics.constEnd() && (*accumulator)->judged && !isMember(cell);
}

void CHpfExtraDataModel::setColumnStatEnable(int column, bool enable)
{
    {
        const Lock lock(mutex);
        statistics.remove(column);
        if (enable) {
            auto accumulator = std::make_shared<Accumulator>();
            accumulator->generation = ++generation;
            statistics.insert(column, accumulator);
        }
        publishStatistics();
    }
    notify();
}

bool CHpfExtraDataModel::columnStatEnable(int column) const
{
    const Lock lock(mutex);
    return statistics.contains(column);
}

double CHpfExtraDataModel::getStatData(int column) const
{
    const Lock lock(mutex);
    const auto accumulator = statistics.constFind(column);
    return accumulator == statistics.constEnd() ? std::numeric_limits<double>::max() : (*accumulator)->sum.value();
}

void CHpfExtraDataModel::reCalcStatOnFilter(const QList<boost::shared_ptr<ZB::IBaseHpfTableData>> &rows)
{
    // A row's lock comes before this model's, so the keys are taken first.
    QVector<QString> keys;
    keys.reserve(rows.size());
    for (const auto &row : rows)
        if (row)
            keys.append(row->qsKey());

    const Lock lock(mutex);
    for (const auto &accumulator : qAsConst(statistics)) {
        accumulator->sum.clear();
        accumulator->generation = ++generation;
        accumulator->judged = true;
    }
    for (const QString &key : qAsConst(keys)) {
        const auto cells = values.find(key);
        if (cells == values.end())
            continue;
        for (Cell &cell : *cells)
            if (!isMember(cell))
                count(cell);
    }
}

QStringList CHpfExtraDataModel::keys() const
{
    const Lock lock(mutex);
    return values.keys();
}

int CHpfExtraDataModel::keyCount() const
{
    const Lock lock(mutex);
    return values.size();
}

void CHpfExtraDataModel::clear()
{
    {
        const Lock lock(mutex);
        statistics.clear();
        publishStatistics();
    }
    notify();
}

void CHpfExtraDataModel::clearColumn()
{
    {
        const Lock lock(mutex);
        columns.clear();
        values.clear();
        statistics.clear();
        publishColumns();
        publishStatistics();
    }
    notify();
}

} // namespace KV
