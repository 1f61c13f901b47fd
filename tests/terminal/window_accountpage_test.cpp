#include <gtest/gtest.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include "account/caccountcolumnlist.h"
#include "account/caccountlistcolumnsettingwidget.h"
#include "dealrecount.h"
#include "feed/instrumentrules.h"
#include "loggedin.h"
#include "recordedday.h"
#include "records/fieldids.h"
#include "table/cdatatable.h"
#include "trading_support.h"
#include "window/accountpage.h"
#include "window/columnsbutton.h"
#include "window/fundspanel.h"
#include "window/marketrecords.h"
#include "window/positionspanel.h"
#include "zb/cuiresource.h"

namespace {

using namespace refhost;
using terminal::AccountPage;

class AccountPageTest : public testing::Test
{
protected:
    AccountPageTest()
    {
        page = std::make_unique<AccountPage>();
        page->resize(1200, 700);
        feed::Instrument instrument = tradingtest::stock(0, "600000.SH");
        instrument.name = "浦发银行";
        market.takeInstrument(instrument);
        page->takeInstrument(instrument);
    }

    void deal(int entry, feed::DealKind kind, double price, qint64 quantity)
    {
        feed::Deal made = tradingtest::deal(0, 0, price, quantity, kind);
        made.entry = entry;
        page->takeDeal(made);
    }

    /// Visible cells, a row a line.
    static std::string shown(KV::CDataTable &table)
    {
        std::string lines;
        for (const int row : table.rows()) {
            QStringList texts;
            for (int column = 0; column < table.columnCount(); ++column)
                if (table.columnVisible(column))
                    texts << table.cellText(row, column);
            lines += texts.join('|').toStdString() + '\n';
        }
        return lines;
    }

    static const QColor *profitColor(KV::CDataTable &table)
    {
        return table.cellColor(table.rows().first(), table.fieldID2columnID(PositionProfit));
    }

    const LoggedIn user;
    terminal::MarketRecords market;
    std::unique_ptr<AccountPage> page;
};

/// One account with so many positions that adding them up takes its time.
class ManyPositions : public trading::AccountSource
{
public:
    static constexpr int count = 20'000;

    ManyPositions()
    {
        trading::Account account;
        account.id = "MANY";
        trading::AccountBook &book = accounts.emplace("MANY", trading::AccountBook(account, rules)).first->second;
        trading::Position position;
        position.account = account.id;
        position.old = {100, 1000 * trading::yuan, 0};
        position.openCost = position.old.basis;
        for (int i = 0; i < count; ++i) {
            position.code = std::to_string(600000 + i) + ".SH";
            book.restore(position);
            book.setLastPrice(position.code, feed::priceUnits(10));
            changes.positions.insert({"MANY", {position.code, trading::PositionSide::Long}});
        }
    }

    void setLastPrice(const std::string &code, double price)
    {
        accounts.at("MANY").setLastPrice(code, feed::priceUnits(price));
        changes.positions.insert({"MANY", {code, trading::PositionSide::Long}});
    }
    const std::map<std::string, trading::AccountBook> &books() const override { return accounts; }
    trading::AccountChanges takeChanges() override { return std::exchange(changes, {}); }

private:
    const trading::TradingRules rules;
    std::map<std::string, trading::AccountBook> accounts;
    trading::AccountChanges changes;
};

} // namespace

TEST_F(AccountPageTest, PositionsAndFundsFollowDealsAndQuotes)
{
    KV::CDataTable &positions = page->positions().table();
    deal(0, feed::DealKind::BuyerInitiated, 10.00, 1000);
    page->showNow();
    EXPECT_EQ(shown(positions), "DEMO01|600000.SH|浦发银行|1 000|1 000|1 000|10.000|10.00|10 000.00|0.00|0.00%\n");
    EXPECT_EQ(page->positions().summary().toStdString(), "1 条");

    feed::QuoteSnapshot quote;
    quote.last = 10.25;
    page->takeQuote(quote);
    page->showNow();
    EXPECT_EQ(shown(positions), "DEMO01|600000.SH|浦发银行|1 000|1 000|1 000|10.000|10.25|10 250.00|+250.00|+2.50%\n");
    EXPECT_EQ(profitColor(positions), ZB::CUiResource::instance()->getColor("clr_global_rise"));
    quote.last = 9.90;
    page->takeQuote(quote);
    page->showNow();
    EXPECT_EQ(profitColor(positions), ZB::CUiResource::instance()->getColor("clr_global_fall"));
    EXPECT_EQ(positions.statText(positions.fieldID2columnID(PositionProfit)), "-100.00");

    KV::CDataTable &funds = page->funds().table();
    EXPECT_EQ(shown(funds).substr(0, shown(funds).find('\n')),
              "DEMO01|演示账户01|49 999 900.00|49 990 000.00|0.00|49 990 000.00|9 900.00|-100.00");
    EXPECT_EQ(funds.statText(funds.fieldID2columnID(FundsTotal)), "249 999 900.00");
}

TEST_F(AccountPageTest, APositionThatIsClosedBehindAFilterDoesNotComeBack)
{
    KV::CDataTable &positions = page->positions().table();
    deal(0, feed::DealKind::BuyerInitiated, 10, 100);
    deal(1, feed::DealKind::BuyerInitiated, 10, 100);
    page->showNow();
    QSet<QString> other{"DEMO02"};
    const int account = positions.fieldID2columnID(PositionAccount);
    positions.onFilterTrigger(account, 0, other);
    EXPECT_EQ(positions.rowCount(), 1);
    deal(5, feed::DealKind::SellerInitiated, 10, 100);
    page->showNow();
    QSet<QString> none;
    positions.onFilterTrigger(account, 0, none);
    EXPECT_EQ(positions.rowCount(), 1);
    page->showNow();
    EXPECT_EQ(page->positions().summary().toStdString(), "1 条") << "nor does it count";
    deal(10, feed::DealKind::BuyerInitiated, 10, 300);
    page->showNow();
    EXPECT_EQ(positions.rowCount(), 2) << "it can be opened again";
}

/// On its timer a table adds up the less often the longer that takes.
TEST_F(AccountPageTest, WhatIsToBeShownNowIsAddedUpNowHoweverLongItTakes)
{
    ManyPositions source;
    terminal::PositionsPanel panel(1);
    const auto profit = [&] {
        panel.take(source, source.takeChanges());
        panel.showNow();
        return panel.table().statText(panel.table().fieldID2columnID(PositionProfit)).toStdString();
    };
    EXPECT_EQ(profit(), "0.00");
    source.setLastPrice("600007.SH", 10.5);
    EXPECT_EQ(profit(), "50.00");
    source.setLastPrice("600008.SH", 9);
    EXPECT_EQ(profit(), "-50.00");
}

TEST_F(AccountPageTest, ItFollowsByItselfWhileItIsShown)
{
    page->show();
    deal(0, feed::DealKind::BuyerInitiated, 10, 100);
    EXPECT_TRUE(QTest::qWaitFor([this] { return page->positions().table().rowCount() == 1; }));
}

/// What stands in the table after a recorded day of three stocks, to the last cent.
TEST_F(AccountPageTest, PositionsOfARecordedDayReadAsTheRecountDoes)
{
    const QStringList paths = recordedDay();
    if (paths.isEmpty())
        GTEST_SKIP() << "no recorded data in " << SHARED_DATA_DIR;
    feed::ReplayFeed replay(paths);
    const PlayedFeed played = playFeed(replay);
    for (const feed::Instrument &one : played.instruments)
        page->takeInstrument(one);
    for (const feed::Deal &one : played.deals)
        page->takeDeal(one);
    page->showNow();

    const auto cents = [](qint64 money) {
        return QString::number(std::round(double(money) / 100) / 100, 'f', 2).toStdString();
    };
    const auto shownText = [](KV::CDataTable &table, int row, int field) {
        return table.cellText(row, table.fieldID2columnID(field)).remove(QRegularExpression("[ ,+]")).toStdString();
    };
    const DealRecount recount(played, 5, 50'000'000 * trading::yuan);
    KV::CDataTable &positions = page->positions().table();
    qint64 profitOfAll = 0;
    std::map<std::string, qint64> valueOf;
    int rows = 0;
    for (const auto &[place, held] : recount.held) {
        const int row = positions.keyToRowID(place.first + '/' + place.second + "/0");
        ASSERT_EQ(row >= 0, held.quantity > 0) << place.first << ' ' << place.second;
        if (row < 0)
            continue;
        ++rows;
        const qint64 value = held.quantity * recount.lastPrice.at(place.second);
        profitOfAll += value - held.cost;
        EXPECT_EQ(shownText(positions, row, PositionQuantity), std::to_string(held.quantity));
        EXPECT_EQ(shownText(positions, row, PositionValue), cents(value));
        EXPECT_EQ(shownText(positions, row, PositionProfit), cents(value - held.cost));
        EXPECT_EQ(shownText(positions, row, PositionCostPrice),
                  QString::number(double(held.cost) / 10'000 / double(held.quantity), 'f', 3).toStdString());
        valueOf[place.first] += value;
    }
    EXPECT_EQ(positions.rowCount(), rows);
    EXPECT_GT(rows, 10);
    EXPECT_EQ(positions.statText(positions.fieldID2columnID(PositionProfit)).remove(' ').toStdString(),
              cents(profitOfAll));

    KV::CDataTable &funds = page->funds().table();
    EXPECT_EQ(funds.rowCount(), 5);
    for (const auto &[account, value] : valueOf) {
        const int row = funds.keyToRowID(account);
        const qint64 cash = recount.cash.at(account);
        EXPECT_EQ(shownText(funds, row, FundsAvailable), cents(cash)) << account;
        EXPECT_EQ(shownText(funds, row, FundsPositionValue), cents(value)) << account;
        EXPECT_EQ(shownText(funds, row, FundsTotal), cents(cash + value)) << account;
        EXPECT_EQ(shownText(funds, row, FundsProfitToday), cents(cash + value - 50'000'000 * trading::yuan)) << account;
    }
}

TEST_F(AccountPageTest, TheColumnsOfTheFundsAreArrangedInAPopupAndComeBack)
{
    page->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(page.get()));
    const auto now = [this] { return KV::accountListColumns(page->funds().table().getTableSetting()); };
    auto *button = page->funds().findChild<terminal::ColumnsButton *>();
    ASSERT_NE(button, nullptr);
    button->click();
    auto *popup = button->findChild<KV::CAccountListColumnSettingWidget *>();
    ASSERT_TRUE(popup->isVisible());
    auto *list = popup->findChild<KV::CAccountColumnList *>();
    list->setCurrentItem(list->findItems(QStringLiteral("账户名称"), Qt::MatchExactly).value(0));
    QTest::keyClick(list, Qt::Key_Space);
    EXPECT_EQ(now().at(1).fieldId, int(FundsName));
    EXPECT_FALSE(now().at(1).visible);
    EXPECT_EQ(popup->columns(), now());
    popup->close();
    const QVector<KV::CAccountListColumn> arranged = now();
    page.reset();
    page = std::make_unique<AccountPage>(); // the next time
    EXPECT_EQ(now(), arranged);
}
