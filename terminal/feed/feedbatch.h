#pragma once

#include "feed/marketdata.h"

#include <string>
#include <vector>

namespace feed {

/// Something that the user must be told about the data.
struct FeedMessage
{
    enum class Severity
    {
        Warning,
        Error,
        Fatal
    };

    Severity severity = Severity::Error;
    std::string file;   ///< path, empty when no file is concerned
    qint64 line = 0;    ///< from 1, 0 when no line is concerned
    int column = 0;     ///< number of the field in its line, from 1, 0 when no column is concerned
    std::string header; ///< name of that column
    std::string text;   ///< what is wrong, without the place

    /// The place and the text in one line: `file 第 2 行 第 3 列“OrderQty”：“x1”不是整数`.
    std::string toText() const;
};

/// Totals since the start of the feed.
struct FeedCounters
{
    qint64 records = 0;    ///< distinct rows taken in: lines of files, events of a simulation
    qint64 duplicates = 0; ///< rows that stood in more than one file
    qint64 orders = 0;
    qint64 deals = 0;
    qint64 quotes = 0;
    qint64 updates = 0; ///< changes of orders, new orders included, before coalescing
    qint64 errors = 0;
    qint64 warnings = 0;
    qint64 bytesRead = 0; ///< of the files as they stand on the disk
    qint64 bytesTotal = 0;
};

/// What has changed since the batch before. An order and a quote stand at most once, with their latest values, in order
/// of their first change; a new order is told by its `entry`, which is the number of orders seen before. Instruments
/// come no later than the first thing that refers to them, and again when something about them changes.
struct FeedBatch
{
    std::vector<Instrument> instruments;
    std::vector<OrderState> orders;
    std::vector<Deal> deals;
    std::vector<QuoteSnapshot> quotes;
    std::vector<FeedMessage> messages;
    FeedCounters counters;
    qint64 time = absent<qint64>; ///< the feed's clock: recorded or simulated time of the last event
    bool finished = false;        ///< nothing comes after this batch
    bool failed = false;          ///< the feed ended because its data cannot be used

    bool isEmpty() const;
    /// Number of entries, by which a feed limits its batches.
    size_t size() const;
    /// Makes it empty and keeps its memory.
    void clear();
};

} // namespace feed
