#include "trading/historyadder.h"

#include <QtCore/QVariant>
#include <QtSql/QSqlQuery>
#include <algorithm>
#include <limits>

namespace trading {

namespace {

void addTo(qint64 &sum, qint64 more)
{
    constexpr qint64 largest = std::numeric_limits<qint64>::max();
    const qint64 added = std::max<qint64>(0, more); // no desk writes less
    sum = added > largest - sum ? largest : sum + added;
}

} // namespace

void HistoryAdder::begin(HistoryQuery::Kind newKind)
{
    kind = newKind;
    total = {};
}

bool HistoryAdder::addRows(QSqlQuery &query, qint64 above, qint64 upTo)
{
    return add(query, QStringLiteral("%1 WHERE id > ? AND id <= ?"), above, upTo);
}

bool HistoryAdder::addFound(QSqlQuery &query, qint64 above, qint64 upTo)
{
    return add(query, QStringLiteral("temp.found JOIN %1 ON id = row WHERE place > ? AND place <= ?"), above, upTo);
}

bool HistoryAdder::add(QSqlQuery &query, const QString &source, qint64 above, qint64 upTo)
{
    const bool isOrders = kind == HistoryQuery::Kind::Orders;
    const QString ofOrders = isOrders ? QStringLiteral("sum(filled), sum(cancelled)") : QStringLiteral("0, 0");
    const QString rows = source.arg(isOrders ? QStringLiteral("orders") : QStringLiteral("deals"));
    query.setForwardOnly(true);
    if (!query.prepare(QStringLiteral("SELECT sum(quantity), %1, sum(amount),"
                                      " sum(commission + stamp_duty + transfer_fee) FROM %2")
                           .arg(ofOrders, rows)))
        return false;
    query.bindValue(0, above);
    query.bindValue(1, upTo);
    if (!query.exec() || !query.next())
        return false;
    int column = 0;
    for (qint64 *sum : {&total.quantity, &total.filled, &total.cancelled, &total.amount, &total.charges})
        addTo(*sum, query.value(column++).toLongLong());
    return true;
}

} // namespace trading
