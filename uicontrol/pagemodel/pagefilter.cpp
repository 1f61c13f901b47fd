#include "pagemodel/pagefilter.h"

#include "kdservice/cdealdetailv2.h"
#include "kdservice/corderdetailv2.h"

namespace KV {

namespace {

constexpr int marketOrders = 16202;
constexpr int ownOrders = 16204;
constexpr int marketDeals = 16203;
constexpr int ownDeals = 16207;
constexpr int noStatus = 255;

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

constexpr int rejectingType = -1; ///< none that the shared matcher knows

} // namespace

void PageFilter::setColumnFilters(const PageColumnFilters &filters)
{
    filterMap = filters;
    valueFilters.clear();
    for (auto it = filters.cbegin(); it != filters.cend(); ++it) {
        // The box of a paged table lists every text and never asks for all but some: other types let nothing pass.
        const int type = it.value().first;
        const bool isKnown = type == core::ValueFilter::exactType || type == core::ValueFilter::containsType;
        const core::ValueFilter filter(isKnown ? type : rejectingType, it.value().second);
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

bool PageFilter::isPassExFilter(const PageRow &row) const
{
    if (!isOrderType())
        return true;
    return passesStatus(status, row.order ? row.order->orderStatus() : noStatus) &&
           (codeSearch.empty() || isPassCodeSearch(row));
}

bool PageFilter::isPassCodeSearch(const PageRow &row) const
{
    if (isOrderType())
        return row.order && contains(row.order->codeText(), codeSearch);
    return isDealType() && row.deal && contains(row.deal->codeText(), codeSearch);
}

bool PageFilter::isPassAllFilter(const PageRow &row) const
{
    return isPassAllFilter(row, nullptr);
}

bool PageFilter::isPassAllFilter(const PageRow &row, Memory &memory) const
{
    return isPassAllFilter(row, &memory);
}

bool PageFilter::isPassAllFilter(const PageRow &row, Memory *memory) const
{
    for (auto it = valueFilters.cbegin(); it != valueFilters.cend(); ++it)
        if (!isPassColumnFilter(row, it.key(), it.value(), memory))
            return false;
    return isPassExFilter(row) && (codeSearch.empty() || isPassCodeSearch(row));
}

bool PageFilter::isPassColumnFilter(const PageRow &row, int column, const core::ValueFilter &values,
                                    Memory *memory) const
{
    boost::shared_ptr<kdservice::IData> keep;
    const kdservice::IData *part = columns->getFieldIDataPtr(*row.record, column, keep);
    if (!part)
        return testDataImpl(values, QString());
    const auto test = [&] { return testDataImpl(values, columns->format(column)->text(*part)); };
    if (!memory)
        return test();
    AnswersByValue<bool> &known = memory->try_emplace(column, *columns->field(column)).first->second;
    return known.answer(*part, columns->fieldIdOf(column), test);
}

} // namespace KV
