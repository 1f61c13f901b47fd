#include <algorithm>
#include <boost/thread/lock_guard.hpp>
#include <limits>

#include "model/extracell.h"
#include "model/fieldvalue.h"
#include "zb/ibasehpftabledata.h"

namespace KV {

namespace {

using Lock = boost::lock_guard<boost::mutex>;

constexpr int rowsPerPiece = 1024; ///< counted under one lock: a third of a millisecond

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
    if (accumulator == statistics.constEnd())
        return std::numeric_limits<double>::max();
    return (*accumulator)->told.value_or((*accumulator)->sum.value());
}

void CHpfExtraDataModel::reCalcStatOnFilter(const QList<boost::shared_ptr<ZB::IBaseHpfTableData>> &rows)
{
    // A row's lock comes before this model's, so the keys are taken first.
    QVector<QString> keys;
    keys.reserve(rows.size());
    for (const auto &row : rows)
        if (row)
            keys.append(row->qsKey());

    const unsigned run = beginRecount();
    bool goesOn = true;
    for (int first = 0; first < keys.size() && goesOn; first += rowsPerPiece)
        goesOn = countSome(run, keys, first);
    endRecount(run);
}

/// The sums of before are told until the new ones are whole.
unsigned CHpfExtraDataModel::beginRecount()
{
    const Lock lock(mutex);
    for (const auto &accumulator : qAsConst(statistics)) {
        if (!accumulator->told)
            accumulator->told = accumulator->sum.value();
        accumulator->sum.clear();
        accumulator->generation = ++generation;
        accumulator->judged = true;
    }
    return ++recounts;
}

/// A sum that was begun anew meanwhile counts for itself.
bool CHpfExtraDataModel::isBeingCounted(int column) const
{
    const auto accumulator = statistics.constFind(column);
    return accumulator != statistics.constEnd() && (*accumulator)->told;
}

/// False when another count has begun: it counts all that this one would.
bool CHpfExtraDataModel::countSome(unsigned run, const QVector<QString> &keys, int first)
{
    const Lock lock(mutex);
    if (run != recounts)
        return false;
    const int end = std::min(keys.size(), first + rowsPerPiece);
    for (int i = first; i < end; ++i) {
        const auto cells = values.find(keys[i]);
        if (cells == values.end())
            continue;
        for (Cell &cell : *cells)
            if (isBeingCounted(cell.column) && !isMember(cell))
                count(cell);
    }
    return true;
}

void CHpfExtraDataModel::endRecount(unsigned run)
{
    {
        const Lock lock(mutex);
        if (run != recounts)
            return;
        for (const auto &accumulator : qAsConst(statistics))
            accumulator->told.reset();
    }
    notify();
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
