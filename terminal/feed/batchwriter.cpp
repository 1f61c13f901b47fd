#include "feed/batchwriter.h"

#include <utility>

namespace feed {

namespace {

/// Replaces the value with this number in `values`, or appends it. `numberOf` reads the number of a value.
template <typename T, typename NumberOf>
void replaceOrAppend(std::vector<T> &values, std::vector<quint32> &places, const T &value, NumberOf numberOf)
{
    const auto number = static_cast<size_t>(numberOf(value));
    if (number >= places.size())
        places.resize(number + 1, 0);
    const size_t place = places[number];
    if (place < values.size() && numberOf(values[place]) == numberOf(value)) {
        values[place] = value;
        return;
    }
    places[number] = static_cast<quint32>(values.size());
    values.push_back(value);
}

} // namespace

void BatchWriter::putInstrument(const Instrument &instrument)
{
    replaceOrAppend(open.instruments, instrumentPlaces, instrument, [](const Instrument &i) { return i.index; });
}

void BatchWriter::putOrder(const OrderState &order)
{
    Q_ASSERT(order.entry <= total.orders);
    if (order.entry == total.orders)
        ++total.orders;
    ++total.updates;
    replaceOrAppend(open.orders, orderPlaces, order, [](const OrderState &o) { return o.entry; });
}

void BatchWriter::addDeal(const Deal &deal)
{
    Q_ASSERT(deal.entry == total.deals);
    ++total.deals;
    open.deals.push_back(deal);
}

void BatchWriter::putQuote(const QuoteSnapshot &quote)
{
    ++total.quotes;
    replaceOrAppend(open.quotes, quotePlaces, quote, [](const QuoteSnapshot &q) { return q.instrument; });
}

void BatchWriter::addMessage(FeedMessage message)
{
    ++(message.severity == FeedMessage::Severity::Warning ? total.warnings : total.errors);
    open.messages.push_back(std::move(message));
}

void BatchWriter::endBatch(bool failed)
{
    open.finished = true;
    open.failed = failed;
}

void BatchWriter::handOver(FeedBatch &emptied)
{
    open.counters = total;
    const qint64 time = open.time;
    std::swap(open, emptied);
    open.clear();
    open.time = time;
}

} // namespace feed
