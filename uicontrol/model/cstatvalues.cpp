#include "model/cstatvalues.h"

#include <algorithm>
#include <cstring>

#include "kdservice/idata.h"
#include "model/cstatlayout.h"
#include "model/fieldvalue.h"
#include "model/recordsearch.h"

namespace KV {

namespace {

using Kind = CStatLayout::Kind;

/// Integers that count are never below zero, and doubles that count are never NaN: all bits set is free in both.
constexpr qint64 noValue = -1;

qint64 bitsOf(double value)
{
    qint64 bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

double doubleOf(qint64 bits)
{
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

} // namespace

CStatValues::CStatValues() = default;
CStatValues::~CStatValues() = default;

void CStatValues::layOut(const CStatLayout &newLayout)
{
    if (layout == &newLayout)
        return;
    layout = &newLayout;
    more.reset(newLayout.size() <= inPlace ? nullptr : new qint64[newLayout.size()]);
    std::fill_n(values(), newLayout.size(), noValue);
}

void CStatValues::take(const kdservice::IData &record, const CStatLayout &newLayout)
{
    layOut(newLayout);
    if (!layout->fields().empty())
        takeFields(record, 0);
}

void CStatValues::take(const kdservice::IData &record, const CStatLayout &newLayout,
                       const QMap<int, int> &fieldColumnMap)
{
    layOut(newLayout);
    if (layout->size() != 0 && !fieldColumnMap.isEmpty())
        takeMapped(record, fieldColumnMap, 0);
}

void CStatValues::takeFields(const kdservice::IData &record, int depth)
{
    CStatWalk own;
    for (const CStatWalk::Step &step : layout->walkOf(record.getFieldDes(), own).steps) {
        if (step.type != kdservice::ExtData) {
            store(step.slot, statisticValue(record, step.type, step.fieldId));
            continue;
        }
        const auto nested = depth < deepestNesting ? record.getIData(step.fieldId) : nullptr;
        if (nested)
            takeFields(*nested, depth + 1);
    }
}

void CStatValues::takeMapped(const kdservice::IData &record, const QMap<int, int> &fieldColumnMap, int depth)
{
    for (const auto &[id, field] : record.getFieldDes()) {
        if (field == nullptr)
            continue;
        if (field->dataType == kdservice::ExtData) {
            const auto nested = depth < deepestNesting ? record.getIData(id) : nullptr;
            if (nested)
                takeMapped(*nested, fieldColumnMap, depth + 1);
            continue;
        }
        const auto column = fieldColumnMap.find(id);
        const int slot = column == fieldColumnMap.end() ? -1 : layout->slotOfColumn(*column);
        if (slot >= 0)
            store(slot, statisticValue(record, field->dataType, id));
    }
}

void CStatValues::store(int slot, const FieldValue &value)
{
    if (value.type == kdservice::ExtInvalid)
        return;
    const bool isDouble = value.type == kdservice::ExtDouble;
    qint64 &place = values()[slot];
    if (layout->slot(slot).kind == Kind::Double)
        place = bitsOf(isDouble ? value.real : static_cast<double>(value.integer));
    else
        place = isDouble ? static_cast<qint64>(value.real) : value.integer;
}

QVariant CStatValues::value(int column) const
{
    const int slot = layout == nullptr ? -1 : layout->slotOfColumn(column);
    if (slot < 0 || values()[slot] == noValue)
        return QVariant();
    const qint64 stored = values()[slot];
    switch (layout->slot(slot).kind) {
    case Kind::Bool:
        return stored != 0;
    case Kind::Int:
        return static_cast<int>(stored);
    case Kind::Long:
        return stored;
    default:
        return doubleOf(stored);
    }
}

} // namespace KV
