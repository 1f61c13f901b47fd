#pragma once

#include <QtCore/QDate>
#include <string>
#include <vector>

#include "feed/instrumentrules.h"
#include "trading/paperbroker.h"

/// Markets and orders as the tests of paper trading write them down.
namespace tradingtest {

/// A moment in China.
inline qint64 at(int day, int hour, int minute, int second = 0)
{
    const QDate date(day / 10000, day / 100 % 100, day % 100);
    return (QDate(1970, 1, 1).daysTo(date) * 86400 + hour * 3600 + minute * 60 + second) * 1000 - feed::chinaOffset;
}

constexpr int monday = 20240318;
constexpr int tuesday = 20240319;
constexpr int friday = 20240322;
constexpr int nextMonday = 20240325;

inline feed::Instrument stock(int index, const char *code, double previousClose = 10)
{
    feed::Instrument instrument = *feed::stockInstrument(code);
    instrument.index = index;
    instrument.name = "测试";
    instrument.previousClose = previousClose;
    instrument.upperLimit = previousClose * 1.1;
    instrument.lowerLimit = previousClose * 0.9;
    return instrument;
}

inline feed::Instrument future(int index, const char *code, const char *exchange = "")
{
    feed::Instrument instrument = *feed::futureInstrument(code, exchange);
    instrument.index = index;
    return instrument;
}

using Levels = std::vector<std::pair<double, qint64>>;

inline feed::QuoteSnapshot quote(int instrument, qint64 time, const Levels &bids, const Levels &asks,
                                 double last = feed::absent<double>)
{
    feed::QuoteSnapshot result;
    result.instrument = instrument;
    result.time = time;
    result.phase = feed::TradingPhase::Continuous;
    result.last = last;
    for (size_t i = 0; i < bids.size(); ++i)
        result.bids[i] = {bids[i].first, bids[i].second, 1};
    for (size_t i = 0; i < asks.size(); ++i)
        result.asks[i] = {asks[i].first, asks[i].second, 1};
    return result;
}

inline feed::Deal deal(int instrument, qint64 time, double price, qint64 quantity, feed::DealKind kind)
{
    feed::Deal result;
    result.instrument = instrument;
    result.time = time;
    result.price = price;
    result.quantity = quantity;
    result.kind = kind;
    return result;
}

inline trading::Account stockAccount(const char *id = "S1", trading::Money money = 1'000'000 * trading::yuan)
{
    trading::Account account;
    account.id = id;
    account.name = "股票";
    account.initial = money;
    return account;
}

inline trading::Account futureAccount(const char *id = "F1", trading::Money money = 1'000'000 * trading::yuan)
{
    trading::Account account = stockAccount(id, money);
    account.kind = trading::AccountKind::Future;
    return account;
}

/// Sends and confirms. The number of the order; 0 when it was refused.
inline qint64 send(trading::PaperBroker &broker, const trading::OrderRequest &request)
{
    const trading::PaperBroker::Answer answer = broker.submit(request);
    broker.confirm(answer.order);
    return answer.order;
}

/// "total available frozen", in yuan.
inline std::string fundsText(const trading::PaperBroker &broker, const std::string &account)
{
    const trading::Funds funds = broker.accounts().at(account).funds();
    return (trading::moneyText(funds.total) + ' ' + trading::moneyText(funds.available) + ' ' +
            trading::moneyText(funds.frozen))
        .toStdString();
}

/// One position a line: "code side old+today basis".
inline std::string positionsText(const trading::PaperBroker &broker, const std::string &account)
{
    std::string text;
    for (const auto &[key, position] : broker.accounts().at(account).positions())
        text += key.first + (key.second == trading::PositionSide::Long ? " long " : " short ") +
                std::to_string(position.old.quantity) + '+' + std::to_string(position.today.quantity) + ' ' +
                trading::moneyText(position.basis()).toStdString() + '\n';
    return text;
}

} // namespace tradingtest
