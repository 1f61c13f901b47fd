#include <gtest/gtest.h>

#include <QFileInfo>

#include "dealrecount.h"
#include "trading/demonstrationaccounts.h"

namespace {

using trading::AccountBook;
using trading::DemonstrationAccounts;
using trading::Money;
using trading::PositionSide;
using trading::yuan;

constexpr int accountCount = 5;
constexpr Money initial = 50'000'000 * yuan;

feed::Instrument stock(int index, const std::string &code)
{
    feed::Instrument instrument;
    instrument.index = index;
    instrument.code = code;
    instrument.exchange = "SH";
    return instrument;
}

feed::Deal deal(int entry, feed::DealKind kind, double price, qint64 quantity, int instrument = 0)
{
    feed::Deal made;
    made.entry = entry;
    made.instrument = instrument;
    made.kind = kind;
    made.price = price;
    made.quantity = quantity;
    return made;
}

/// "account code quantity cost value", one position a line, in yuan.
std::string positionsOf(const DemonstrationAccounts &accounts)
{
    std::string lines;
    for (const auto &[id, book] : accounts.books())
        for (const auto &[key, position] : book.positions())
            lines += id + ' ' + key.first + ' ' + std::to_string(position.quantity()) + ' ' +
                     trading::moneyText(position.openCost).toStdString() + ' ' +
                     trading::moneyText(book.funds().positionValue).toStdString() + '\n';
    return lines;
}

constexpr auto Buyer = feed::DealKind::BuyerInitiated;
constexpr auto Seller = feed::DealKind::SellerInitiated;

} // namespace

TEST(DemonstrationAccounts, DealsGoRoundAndTheSideThatCameLastDecides)
{
    DemonstrationAccounts accounts(2, 10'000 * yuan);
    accounts.takeInstrument(stock(0, "600000.SH"));
    accounts.takeDeal(deal(0, Buyer, 10.00, 300));
    accounts.takeDeal(deal(1, feed::DealKind::Auction, 10.02, 100));
    accounts.takeDeal(deal(2, Seller, 10.10, 100));
    EXPECT_EQ(positionsOf(accounts), "DEMO01 600000.SH 200 2000.00 2020.00\n"
                                     "DEMO02 600000.SH 100 1002.00 1010.00\n");
    EXPECT_EQ(accounts.books().at("DEMO01").account().balance, (10'000 - 3000 + 1010) * yuan);
    accounts.takeDeal(deal(3, Seller, 10.10, 900));
    EXPECT_EQ(positionsOf(accounts), "DEMO01 600000.SH 200 2000.00 2020.00\n") << "no more is sold than is held";
    accounts.takeDeal(deal(5, Seller, 10.10, 900));
    accounts.takeDeal(deal(7, Buyer, 10.10, 1000));
    EXPECT_EQ(positionsOf(accounts), "DEMO01 600000.SH 200 2000.00 2020.00\n") << "nor bought than is paid for";
}

TEST(DemonstrationAccounts, WhatMakesNoSenseIsPassedOver)
{
    DemonstrationAccounts accounts(0, 10'000 * yuan);
    EXPECT_EQ(accounts.books().size(), 1u);
    feed::Instrument future = stock(1, "AP010");
    future.kind = feed::InstrumentKind::Future;
    accounts.takeInstrument(future);
    accounts.takeInstrument(stock(-1, "600001.SH"));
    accounts.takeDeal(deal(0, Buyer, 10, 100, 1));
    accounts.takeDeal(deal(1, Buyer, 10, 100, 7));
    accounts.takeDeal(deal(2, Buyer, 10, 100, -1));
    accounts.takeInstrument(stock(0, "600000.SH"));
    accounts.takeDeal(deal(-3, Buyer, 10, 100));
    accounts.takeDeal(deal(3, Buyer, 10, 0));
    EXPECT_EQ(positionsOf(accounts), "");
}

TEST(DemonstrationAccounts, AQuoteChangesWhoHoldsTheStock)
{
    DemonstrationAccounts accounts(3, 10'000 * yuan);
    accounts.takeInstrument(stock(0, "600000.SH"));
    EXPECT_EQ(accounts.takeChanges().accounts.size(), 3u) << "they are new";
    accounts.takeDeal(deal(1, Buyer, 10, 100));
    auto changes = accounts.takeChanges();
    EXPECT_EQ(changes.accounts, std::set<std::string>{"DEMO02"});
    EXPECT_EQ(changes.positions.size(), 1u);
    feed::QuoteSnapshot quote;
    quote.last = 10;
    accounts.takeQuote(quote);
    EXPECT_TRUE(accounts.takeChanges().positions.empty()) << "the price that it was already";
    quote.last = 10.5;
    accounts.takeQuote(quote);
    EXPECT_EQ(accounts.takeChanges().accounts, std::set<std::string>{"DEMO02"});
    EXPECT_EQ(accounts.books().at("DEMO02").funds().profitToday, 50 * yuan);
    quote.last = feed::absent<double>;
    accounts.takeQuote(quote);
    quote.last = 0;
    accounts.takeQuote(quote);
    EXPECT_TRUE(accounts.takeChanges().accounts.empty());
}

TEST(DemonstrationAccounts, PositionsAndFundsOfARecordedDayEqualARecount)
{
    const QString folder = QStringLiteral(SHARED_DATA_DIR "/orders_trades/");
    const QStringList paths{folder + "sse_orders_2023-07-11_3stocks.csv.gz",
                            folder + "sse_trades_2023-07-11_3stocks.csv.gz"};
    if (!QFileInfo::exists(paths[0]) || !QFileInfo::exists(paths[1]))
        GTEST_SKIP() << "no recorded data at " << folder.toStdString();
    feed::ReplayFeed replay(paths);
    const PlayedFeed played = playFeed(replay);
    ASSERT_GT(played.deals.size(), 70'000u);

    DemonstrationAccounts accounts(accountCount, initial);
    for (const feed::Instrument &instrument : played.instruments)
        accounts.takeInstrument(instrument);
    for (const feed::Deal &one : played.deals)
        accounts.takeDeal(one);

    const DealRecount recount(played, accountCount, initial);
    size_t compared = 0;
    for (const auto &[id, book] : accounts.books()) {
        Money value = 0;
        for (const auto &[code, price] : recount.lastPrice) {
            const auto expected = recount.held.find({id, code});
            ASSERT_NE(expected, recount.held.end());
            const trading::Position *position = book.position({code, PositionSide::Long});
            ASSERT_EQ(position ? position->quantity() : 0, expected->second.quantity) << id << ' ' << code;
            EXPECT_EQ(position ? position->openCost : 0, expected->second.cost) << id << ' ' << code;
            value += expected->second.quantity * price;
            ++compared;
        }
        EXPECT_EQ(book.account().balance, recount.cash.at(id)) << id;
        EXPECT_EQ(book.funds().positionValue, value) << id;
        EXPECT_EQ(book.funds().total, recount.cash.at(id) + value) << id;
    }
    EXPECT_EQ(compared, 15u);
}
