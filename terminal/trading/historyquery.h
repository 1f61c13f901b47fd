#pragma once

#include "trading/desktypes.h"

#include <QtCore/QString>
#include <string>
#include <vector>

namespace trading {

/// What of a desk's past is asked for. An empty list lets everything pass.
struct HistoryQuery
{
    enum class Kind
    {
        Orders,
        Deals
    };
    /// What rows can be ordered by. Each but Entry costs a pass over all that was found.
    enum class Sort
    {
        Entry,
        Code,
        Price,
        Quantity,
        Amount,
        Day
    };

    Kind kind = Kind::Orders;
    std::vector<std::string> accounts;
    std::vector<std::string> codes;
    std::vector<int> days;
    std::vector<char> sides;
    std::vector<char> offsets;
    std::vector<char> states; ///< orders only
    Sort sort = Sort::Entry;
    bool isDescending = true; ///< Entry: the newest first

    bool isFiltered() const;
    bool operator==(const HistoryQuery &other) const;
    bool operator!=(const HistoryQuery &other) const { return !(*this == other); }
};

/// What all rows that were found come to, on whatever page.
struct HistorySums
{
    qint64 quantity = 0;
    qint64 filled = 0;    ///< orders only
    qint64 cancelled = 0; ///< orders only
    Money amount = 0;
    Money charges = 0;
};

/// A run of rows, in order, and how many there are in all.
struct HistoryPage
{
    qint64 start = 0;
    qint64 total = 0;       ///< found so far
    bool isComplete = true; ///< false while the search goes on
    double progress = 1;    ///< of the search, 0 to 1
    bool hasSums = false;   ///< they come once all rows have been looked through
    HistorySums sums;
    QString problem; ///< for the user; the rows are then missing
    std::vector<PaperOrder> orders;
    std::vector<PaperDeal> deals;
};

/// The values that occur, in order.
struct HistoryChoices
{
    std::vector<std::string> accounts;
    std::vector<std::string> codes;
    std::vector<int> days;
};

} // namespace trading
