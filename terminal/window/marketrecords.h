#pragma once

#include <boost/shared_ptr.hpp>
#include <string>
#include <vector>

#include "feed/marketdata.h"

namespace kdservice {
class IData;
}

namespace refhost {
class PlainRecord;
class RecordType;
} // namespace refhost

namespace terminal {

/// Makes the records that tables show out of what a feed tells. A changed order gives a new record under the key of the
/// old one, so that a table never sees half a change; all orders, deals and quotes of an instrument share its one
/// record. One thread.
class MarketRecords
{
public:
    using Record = boost::shared_ptr<kdservice::IData>;

    MarketRecords();
    ~MarketRecords();

    /// Value of the enumeration "exchange", the largest int for an unknown one.
    static int exchangeValue(const std::string &exchange);
    static bool isFuturesExchange(const std::string &exchange);

    /// Has to come before the first order or deal of the instrument. A known instrument changes in place. The program's
    /// look-up of instruments by code knows it from then on.
    void takeInstrument(const feed::Instrument &instrument);
    /// Empty for orders, deals and quotes of an instrument that was never told. The key of a quote is the code of its
    /// instrument.
    Record orderRecord(const feed::OrderState &order) const;
    Record dealRecord(const feed::Deal &deal) const;
    Record quoteRecord(const feed::QuoteSnapshot &quote) const;
    /// The record of an instrument by its index; empty when unknown.
    Record instrumentRecord(int index) const;

private:
    struct Known
    {
        feed::Instrument instrument;
        boost::shared_ptr<refhost::PlainRecord> record;
        int exchange = 0; ///< exchangeValue()
    };
    const Known *find(int index) const;

    const refhost::RecordType *orderType;
    const refhost::RecordType *dealType;
    const refhost::RecordType *quoteType;
    const refhost::RecordType *instrumentType;
    std::vector<Known> instruments; ///< by the feed's index
};

} // namespace terminal
