#include "pagemodel/pagestatistics.h"

#include <algorithm>
#include <boost/make_shared.hpp>
#include <cmath>
#include <limits>

#include "model/fieldvalue.h"

namespace KV {

void PageStatistics::setEnabled(int column, bool on, QVariant::Type type)
{
    sums.remove(column);
    if (on)
        enabled.insert(column);
    else
        enabled.remove(column);
    const bool isInteger = type == QVariant::Int || type == QVariant::LongLong;
    if (!on || (!isInteger && type != QVariant::Double))
        return;
    const auto sum = boost::make_shared<Sum>();
    sum->isReal = !isInteger;
    sums.insert(column, sum);
}

void PageStatistics::add(quint32 slot, const PageRows &rows, const PageColumns &columns)
{
    if (sums.isEmpty())
        return;
    const kdservice::IData &record = *rows[slot].record;
    for (auto it = sums.begin(); it != sums.end(); ++it) {
        Sum &sum = **it;
        sum.values.ensure(slot);
        count(sum, sum.values[slot], record, it.key(), columns);
    }
}

void PageStatistics::countColumn(int column, const std::vector<quint32> &slotList, const PageRows &rows,
                                 const PageColumns &columns)
{
    Sum &sum = *sums[column];
    for (const quint32 slot : slotList) {
        sum.values.ensure(slot);
        count(sum, sum.values[slot], *rows[slot].record, column, columns);
    }
}

void PageStatistics::count(Sum &sum, Counted &entry, const kdservice::IData &record, int column,
                           const PageColumns &columns)
{
    boost::shared_ptr<kdservice::IData> keep;
    const kdservice::IData *holder = columns.getFieldIDataPtr(record, column, keep);
    if (!holder)
        return;
    const int fieldId = columns.fieldIdOf(column);
    if (sum.isReal) {
        entry.real = holder->getDouble(fieldId);
        entry.counted = std::isfinite(entry.real) && !isAbsent(entry.real);
        if (entry.counted)
            sum.real.add(entry.real);
        return;
    }
    const bool is32Bit = columns.field(column)->dataType == kdservice::ExtInt;
    entry.integer = is32Bit ? holder->getInt(fieldId) : holder->getLong(fieldId);
    entry.counted =
        entry.integer != (is32Bit ? qint64(std::numeric_limits<int>::max()) : std::numeric_limits<qint64>::max());
    if (entry.counted)
        sum.integer.add(entry.integer);
}

void PageStatistics::remove(quint32 slot)
{
    for (const boost::shared_ptr<Sum> &sum : qAsConst(sums)) {
        if (slot >= sum->values.size())
            continue;
        Counted &entry = sum->values[slot];
        if (!entry.counted)
            continue;
        entry.counted = false;
        if (sum->isReal)
            sum->real.subtract(entry.real);
        else
            sum->integer.subtract(entry.integer);
    }
}

void PageStatistics::removeAll()
{
    for (const boost::shared_ptr<Sum> &sum : qAsConst(sums)) {
        sum->real.clear();
        sum->integer.clear();
        sum->values = core::SlotArray<Counted>();
    }
}

PageStatistics PageStatistics::emptied() const
{
    PageStatistics fresh;
    fresh.enabled = enabled;
    for (auto it = sums.cbegin(); it != sums.cend(); ++it) {
        const auto sum = boost::make_shared<Sum>();
        sum->isReal = (*it)->isReal;
        fresh.sums.insert(it.key(), sum);
    }
    return fresh;
}

int PageStatistics::sumInt(int column) const
{
    const auto sum = sums.value(column);
    if (!sum || sum->isReal)
        return std::numeric_limits<int>::max();
    return static_cast<int>(
        std::clamp<qint64>(sum->integer.value(), std::numeric_limits<int>::min(), std::numeric_limits<int>::max() - 1));
}

qint64 PageStatistics::sumLong(int column) const
{
    const auto sum = sums.value(column);
    return sum && !sum->isReal ? sum->integer.value() : std::numeric_limits<qint64>::max();
}

double PageStatistics::sumDouble(int column) const
{
    const auto sum = sums.value(column);
    return sum && sum->isReal ? sum->real.value() : std::numeric_limits<double>::max();
}

} // namespace KV
