#include "desk/desktexts.h"

#include "kdservice/typemanager.h"
#include "trading/ordercheck.h"
#include "trading/paperbroker.h"
#include "window/marketrecords.h"

namespace terminal::desktexts {

namespace {

QString enumeration(const char *name, char code)
{
    return kdservice::TypeManager::instance()->getEnumItemName(name, code, kdservice::TraderNone);
}

/// Orders and deals have these fields in common.
template <typename Entry>
QString traded(const Entry &entry)
{
    const bool isFuture = MarketRecords::isFuturesExchange(entry.exchange);
    const feed::Instrument instrument = trading::PaperBroker::instrumentByCode(entry.code, entry.exchange);
    QString what = QString::fromStdString(entry.code);
    if (!entry.name.empty())
        what += QLatin1Char(' ') + QString::fromStdString(entry.name);
    return QStringLiteral("%1 %2 %3 × %4 %5")
        .arg(operation(entry.side, entry.offset, isFuture), what, trading::priceText(entry.price, instrument))
        .arg(entry.quantity)
        .arg(unit(isFuture));
}

} // namespace

QString operation(feed::Side side, trading::Offset offset, bool isFuture)
{
    const QString direction = enumeration("direction", char(side));
    return isFuture ? direction + enumeration("offset", char(offset)) : direction;
}

QString unit(bool isFuture)
{
    return isFuture ? QStringLiteral("手") : QStringLiteral("股");
}

QString order(const trading::PaperOrder &order)
{
    return traded(order);
}

QString deal(const trading::PaperDeal &deal)
{
    return traded(deal);
}

QString status(feed::OrderStatus status)
{
    return enumeration("orderstatus", char(status));
}

} // namespace terminal::desktexts
