#include <gtest/gtest.h>

#include "trading/demonstrationaccounts.h"
#include "trading_support.h"

namespace {

using trading::DemonstrationAccounts;
using trading::yuan;
using tradingtest::stock;

feed::Deal deal(int entry, feed::DealKind kind, double price, qint64 quantity, int instrument = 0)
{
    feed::Deal made = tradingtest::deal(instrument, 0, price, quantity, kind);
    made.entry = entry;
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
    accounts.takeInstrument(tradingtest::future(1, "AP010"));
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
