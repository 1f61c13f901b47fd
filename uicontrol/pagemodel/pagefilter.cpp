#include "pagemodel/pagefilter.h"

#include <optional>

#include "kdservice/cdealdetailv2.h"
#include "kdservice/corderdetailv2.h"

namespace KV {

namespace {

constexpr int marketOrders = 16202;
constexpr int ownOrders = 16204;
constexpr int marketDeals = 16203;
constexpr int ownDeals = 16207;
constexpr int noStatus = 255;
constexpr std::size_t mostRemembered = 65536; ///< answers per column; beyond that every text is made

/// Status modes: all, open, filled, ended without a full fill.
bool passesStatus(int mode, int code)
{
    switch (mode) {
    case 0:
        return true;
    case 1:
        return (code >= 48 && code <= 52) || code == 55;
    case 2:
        return code == 56 || code == 86;
    case 3:
        return code == 53 || code == 54 || code == 57;
    default:
        return false;
    }
}

bool contains(const std::string &text, const std::string &part)
{
    return text.find(part) != std::string::npos;
}

/// Whether a field's text follows from its own value alone.
bool textFollowsFromValue(const kdservice::FieldDes &field)
{
    kdservice::FieldDes::iterator found;
    for (const kdservice::EDisplayFunc func :
         {kdservice::DisplayPrice, kdservice::DisplayOptionName, kdservice::DisplayInstrumentName})
        if (field.findFunc(func, found))
            return false;
    return true;
}

std::optional<qint64> rawInteger(const kdservice::IData &holder, const kdservice::FieldDes &field, int fieldId)
{
    switch (field.dataType) {
    case kdservice::ExtBool:
        return holder.getBool(fieldId);
    case kdservice::ExtInt:
    case kdservice::ExtChar:
        return holder.getInt(fieldId);
    case kdservice::ExtLong:
        return holder.getLong(fieldId);
    default:
        return std::nullopt;
    }
}

template <typename Key, typename Compute>
bool remembered(std::unordered_map<Key, bool> &answers, Key raw, Compute compute)
{
    const auto known = answers.find(raw);
    if (known != answers.end())
        return known->second;
    const bool passes = compute();
    if (answers.size() < mostRemembered)
        answers.emplace(std::move(raw), passes);
    return passes;
}

} // namespace

void PageFilter::setColumnFilters(const PageColumnFilters &filters)
{
    filterMap = filters;
    valueFilters.clear();
    for (auto it = filters.cbegin(); it != filters.cend(); ++it) {
        const core::ValueFilter filter(it.value().first, it.value().second);
        if (!filter.isEmpty())
            valueFilters.insert(it.key(), filter);
    }
}

void PageFilter::setCodeSearch(const QString &text)
{
    codeSearch = text.toStdString();
}

bool PageFilter::isOrderType() const
{
    return dataType == marketOrders || dataType == ownOrders;
}

bool PageFilter::isDealType() const
{
    return dataType == marketDeals || dataType == ownDeals;
}

bool PageFilter::passesExtra(const PageRow &row) const
{
    if (!isOrderType())
        return true;
    return passesStatus(status, row.order ? row.order->orderStatus() : noStatus) &&
           (codeSearch.empty() || passesCode(row));
}

bool PageFilter::passesCode(const PageRow &row) const
{
    if (isOrderType())
        return row.order && contains(row.order->codeText(), codeSearch);
    return isDealType() && row.deal && contains(row.deal->codeText(), codeSearch);
}

bool PageFilter::passesRest(const PageRow &row) const
{
    return passesExtra(row) && (codeSearch.empty() || passesCode(row));
}

bool PageFilter::passesAll(const PageRow &row) const
{
    for (auto it = valueFilters.cbegin(); it != valueFilters.cend(); ++it)
        if (!passesColumn(row, it.key(), it.value(), nullptr))
            return false;
    return passesRest(row);
}

bool PageFilter::passesAll(const PageRow &row, Memory &memory) const
{
    for (auto it = valueFilters.cbegin(); it != valueFilters.cend(); ++it)
        if (!passesColumn(row, it.key(), it.value(), &memory))
            return false;
    return passesRest(row);
}

bool PageFilter::passesColumn(const PageRow &row, int column, const core::ValueFilter &values, Memory *memory) const
{
    const kdservice::FieldDes *field = columns.field(column);
    boost::shared_ptr<kdservice::IData> keep;
    const kdservice::IData *holder = columns.holder(*row.record, column, keep);
    if (!field || !holder)
        return values.passes(QString());
    const auto compute = [&] { return values.passes(columns.format(column)->text(*holder)); };
    if (!memory || !textFollowsFromValue(*field))
        return compute();

    Memory::Column &known = memory->columns[column];
    const int fieldId = columns.fieldIdOf(column);
    if (field->dataType == kdservice::ExtString)
        return remembered(known.ofText, holder->getString(fieldId), compute);
    if (const std::optional<qint64> raw = rawInteger(*holder, *field, fieldId))
        return remembered(known.ofInteger, *raw, compute);
    return compute();
}

} // namespace KV
