#pragma once

#include "trading/historyquery.h"

#include <QtCore/QString>

class QSqlQuery;

namespace trading {

/// Adds up rows of a desk file, piece by piece. A sum that no number holds stays at the largest one; of a single piece
/// it is an error. One thread; each call waits for the disk.
class HistoryAdder
{
public:
    void begin(HistoryQuery::Kind kind);
    /// The rows numbered above `above` up to `upTo`. `query` is of the file's connection. False when they cannot be
    /// read; its last error says why.
    bool addRows(QSqlQuery &query, qint64 above, qint64 upTo);
    /// The same for rows that the temporary table "found" names, by their places in it.
    bool addFound(QSqlQuery &query, qint64 above, qint64 upTo);
    const HistorySums &sums() const { return total; }

private:
    bool add(QSqlQuery &query, const QString &source, qint64 above, qint64 upTo);

    HistoryQuery::Kind kind = HistoryQuery::Kind::Orders;
    HistorySums total;
};

} // namespace trading
