#pragma once

#include <QtCore/QPoint>
#include <QtCore/QString>
#include <optional>
#include <vector>

#include "order/cquotedata.h"
#include "order/quotevalue.h"

namespace KV {

/// A level, or a button below the levels, that the keyboard stands on.
struct QuoteCursor
{
    bool ask = false;
    int level = 0;  ///< 0 is the best one
    int button = 0; ///< 0 for a level; from 1 the price types, then both cancel buttons

    bool operator==(const QuoteCursor &other) const
    {
        return ask == other.ask && level == other.level && button == other.button;
    }
};

/// What a ladder shows. Part of CQuotesGraphWidget, and not exported.
struct QuoteView
{
    int tradeType = 1;
    std::vector<CQuoteData> bids; ///< best first
    std::vector<CQuoteData> asks;
    double latest = quotevalue::noPrice;
    double change = quotevalue::noPrice;
    double previousClose = quotevalue::noPrice;
    double upperLimit = quotevalue::noPrice;
    double lowerLimit = quotevalue::noPrice;
    double tick = quotevalue::noPrice;
    qint64 buyOrders = 0; ///< pending
    qint64 sellOrders = 0;

    bool grey = false;                 ///< the quote is out of date, or the ladder disabled
    QString age;                       ///< why and for how long; empty while the quote is up to date
    std::optional<QPoint> mouse;       ///< while it rests on the ladder
    std::optional<QuoteCursor> cursor; ///< while the ladder has the keyboard
    bool framed = false;               ///< the keyboard has brought the focus here

    /// No values and no levels, as for another stock. What is not of the stock stays.
    void clearQuote();
    /// Null for a level that there is not, and for a button.
    const CQuoteData *level(const QuoteCursor &at) const;
};

} // namespace KV
