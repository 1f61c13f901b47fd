#pragma once

#include "trading/historyadder.h"
#include "trading/historyquery.h"

#include <QtCore/QVariant>
#include <memory>

class QSqlQuery;

namespace trading {

/// Finds the rows of a desk file that a query asks for and reads pages of them, on a connection of its own that only
/// reads. What was found is kept as row numbers in a temporary table on the disk, so that memory holds no more than a
/// page, and any page is one look-up away however far behind it is. Without filters and in the order of entry nothing
/// has to be found: the n-th row has the number n. One thread; everything may wait for the disk.
class HistorySearch
{
public:
    /// The largest number of rows that are ordered by anything but their entry.
    static constexpr qint64 mostSorted = 1'000'000;

    HistorySearch();
    ~HistorySearch();
    HistorySearch(const HistorySearch &) = delete;
    HistorySearch &operator=(const HistorySearch &) = delete;

    /// The text tells what is wrong, empty for nothing.
    QString open(const QString &path);
    /// Forgets what was found for the query before.
    void begin(const HistoryQuery &query);
    /// Looks through the next rows, for some tens of milliseconds, or sorts some, for a tenth to a third of a second;
    /// nothing once isSummed().
    void step();
    /// All rows are found.
    bool isComplete() const { return complete; }
    /// They are added up too, or cannot be.
    bool isSummed() const { return complete && unsummed == 0; }
    /// Rows `start` and behind, at most `count`; with isComplete() false those found so far.
    HistoryPage page(qint64 start, int count);
    HistoryChoices choices();

private:
    bool isDirect() const { return !query.isFiltered() && query.sort == HistoryQuery::Sort::Entry; }
    const char *table() const { return query.kind == HistoryQuery::Kind::Orders ? "orders" : "deals"; }
    const char *tie() const { return query.isDescending ? "id" : "-id"; }
    qint64 lastRow();
    qint64 number(const QString &statement);
    bool run(QSqlQuery &prepared, const QString &statement, const QVariantList &values);
    bool scan(qint64 above, qint64 upTo);
    bool note(bool isGood, const QSqlQuery &asked);
    void sort();
    void addKeys();
    void takeSorted();
    QString condition(QVariantList &values) const;
    void readRows(QSqlQuery &rows, HistoryPage &page);

    QString connection;
    QString problem;
    HistoryQuery query;
    bool complete = true;
    qint64 top = 0;       ///< the highest row that the search has seen
    qint64 unscanned = 0; ///< rows up to this one are still to be looked through
    qint64 found = 0;
    qint64 keyed = 0;   ///< so many of them have their sort key in the tree
    QVariantList taken; ///< the key that was taken out of the tree last, and its tie; empty before
    HistoryAdder adder;
    qint64 unsummed = 0; ///< where nothing has to be found: rows up to this one are still to be added up
};

} // namespace trading
