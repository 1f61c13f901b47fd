#include "pagemodel/pagesortkeys.h"

#include <cmath>
#include <limits>
#include <utility>

#include "kdservice/corderdetailv2.h"
#include "model/fieldvalue.h"
#include "pagemodel/pagecolumns.h"

namespace KV {

namespace {

using State = PageSortKey::State;

void setInteger(PageSortKey &key, qint64 value, qint64 absent)
{
    key.state = value == absent ? State::Empty : State::Integer;
    key.integer = value;
}

void setReal(PageSortKey &key, double value)
{
    key.state = std::isnan(value) || isAbsent(value) ? State::Empty : State::Real;
    key.real = value;
}

} // namespace

void PageSortKeys::capture(quint32 slot, const PageColumns &columns)
{
    if (column < 0)
        return;
    const PageRow &row = rows[slot];
    keys.ensure(slot);
    PageSortKey &key = keys[slot];
    if (key.keyKept)
        keptKeys.erase(slot);
    key = PageSortKey();
    key.record = row.record.get();
    key.entrySequence = row.entrySequence;
    key.kind = row.order ? PageSortKey::Kind::Order : row.deal ? PageSortKey::Kind::Deal : PageSortKey::Kind::Other;
    if (column == codeColumn && row.order)
        return setText(key, slot, row.order->codeText());
    boost::shared_ptr<kdservice::IData> keep;
    const kdservice::IData *holder = columns.getFieldIDataPtr(*row.record, column, keep);
    if (!holder)
        return;
    const int fieldId = columns.fieldIdOf(column);
    switch (columns.field(column)->dataType) {
    case kdservice::ExtBool:
        setInteger(key, holder->getBool(fieldId) ? 1 : 0, std::numeric_limits<int>::max());
        break;
    case kdservice::ExtInt:
    case kdservice::ExtChar:
        setInteger(key, holder->getInt(fieldId), std::numeric_limits<int>::max());
        break;
    case kdservice::ExtLong:
        setInteger(key, holder->getLong(fieldId), std::numeric_limits<qint64>::max());
        break;
    case kdservice::ExtDouble:
        setReal(key, holder->getDouble(fieldId));
        break;
    case kdservice::ExtString:
        setText(key, slot, holder->getString(fieldId));
        break;
    default:
        break;
    }
}

void PageSortKeys::setText(PageSortKey &key, quint32 slot, std::string text)
{
    key.state = State::Text;
    texts.ensure(slot);
    texts[slot] = std::move(text);
}

void PageSortKeys::forgetRecord(quint32 slot)
{
    if (contains(slot))
        keys[slot].record = nullptr;
}

void PageSortKeys::keepKey(quint32 slot)
{
    if (!contains(slot) || keys[slot].keyKept)
        return;
    keys[slot].keyKept = true;
    keptKeys.emplace(slot, rows.key(slot));
}

std::string_view PageSortKeys::keyText(quint32 slot) const
{
    return keys[slot].keyKept ? std::string_view(keptKeys.at(slot)) : rows.keyView(slot);
}

void PageSortKeys::swap(PageSortKeys &other)
{
    std::swap(column, other.column);
    std::swap(codeColumn, other.codeColumn);
    std::swap(keys, other.keys);
    std::swap(texts, other.texts);
    keptKeys.swap(other.keptKeys);
}

} // namespace KV
