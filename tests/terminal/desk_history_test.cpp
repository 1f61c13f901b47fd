#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <gtest/gtest.h>

#include "desk/historypanel.h"
#include "desk/historytable.h"
#include "deskrows.h"
#include "grid/gridsource.h"
#include "grid/gridview.h"
#include "loggedin.h"
#include "model/chpfdatamodel.h"
#include "popups/pagingbar.h"
#include "records/fieldids.h"
#include "trading/deskstore.h"

using namespace terminal;
using namespace refhost;

namespace {

constexpr int orderCount = 1234;

trading::PaperOrder order(int id)
{
    trading::PaperOrder order;
    order.id = id;
    order.account = "S1";
    order.code = id % 10 == 0 ? "300001.SZ" : "600001.SH";
    order.name = "旧名";
    order.exchange = id % 10 == 0 ? "SZ" : "SH";
    order.day = 20240318 + id / 500;
    order.side = id % 2 ? feed::Side::Buy : feed::Side::Sell;
    order.price = 10'000'000 + id * 10'000;
    order.quantity = order.cancelled = 100;
    order.status = id % 3 ? feed::OrderStatus::Cancelled : feed::OrderStatus::Rejected;
    return order;
}

class DeskHistory : public ::testing::Test
{
protected:
    void SetUp() override
    {
        trading::DeskStore store;
        ASSERT_EQ(store.open(path).toStdString(), "");
        trading::DeskChange change;
        for (int id = 1; id <= orderCount; ++id)
            change.orders.push_back(order(id));
        ASSERT_EQ(store.apply({change}).toStdString(), "");
        panel = std::make_unique<HistoryPanel>(trading::HistoryQuery::Kind::Orders);
        table = &panel->history();
        panel->open(path);
        panel->resize(1200, 400);
        panel->show();
        settle();
    }
    void settle()
    {
        ASSERT_TRUE(QTest::qWaitFor([this] { return table->isSettled(); }));
    }
    int columnOf(int field) const { return table->getColumnIdByFileId(field); }
    /// First, last and number of the rows on the page: "1234..1135 100".
    std::string pageText() const
    {
        QList<KV::CHpfDataTable::RowPtr> rows;
        table->getDataModel()->getDatas(rows);
        if (rows.isEmpty())
            return "none";
        return rows.first()->key() + ".." + rows.last()->key() + ' ' + std::to_string(rows.size());
    }
    void filter(int field, const QString &text, int type = ZB::FilterExact)
    {
        QSet<QString> values{text};
        table->onFilterTrigger(columnOf(field), type, values);
        settle();
    }

    const LoggedIn user;
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("desk.db"));
    std::unique_ptr<HistoryPanel> panel;
    HistoryTable *table = nullptr;
};

} // namespace

TEST_F(DeskHistory, ShowsTheNewestPageFirstAndEveryOtherWhenAsked)
{
    EXPECT_EQ(pageText(), "1234..1135 100");
    EXPECT_EQ(panel->summary().toStdString(), "1,234 笔");
    EXPECT_EQ(
        deskRows(*panel, {OrderDay, OrderCode, InstrumentName, OrderDirection, OrderPrice, OrderStatus}).substr(0, 55),
        "20240320 600001.SH 旧名 卖出 22.34 已撤 \n20240320")
        << "as it was on its day";
    auto *bar = table->findChild<ZB::PagingBar *>();
    ASSERT_EQ(bar->totalCount(), orderCount);
    bar->goTo(5);
    settle();
    EXPECT_EQ(pageText(), "734..635 100");
    bar->goToLast();
    settle();
    EXPECT_EQ(pageText(), "34..1 34");
}

TEST_F(DeskHistory, FiltersAndSortsOverAllPages)
{
    table->setSortColumns({{columnOf(OrderNumber), 0}});
    settle();
    EXPECT_EQ(pageText(), "1..100 100");
    table->setSortColumns({{columnOf(OrderPrice), 1}});
    settle();
    EXPECT_EQ(pageText(), "1234..1135 100");
    table->setSortColumns({});

    EXPECT_EQ(table->getMenuItems(columnOf(OrderCode)), (QStringList{"300001.SZ", "600001.SH"}));
    EXPECT_EQ(table->getMenuItems(columnOf(OrderDay)), (QStringList{"20240318", "20240319", "20240320"}));
    filter(OrderCode, QStringLiteral("300001.SZ"), ZB::FilterExcept);
    EXPECT_EQ(panel->summary().toStdString(), "1,111 笔");
    filter(OrderCode, QStringLiteral("300001.SZ"));
    EXPECT_EQ(panel->summary().toStdString(), "123 笔");
    EXPECT_EQ(pageText(), "1230..240 100");
    filter(OrderStatus, QStringLiteral("废单"));
    EXPECT_EQ(panel->summary().toStdString(), "41 笔");
    filter(OrderDay, QStringLiteral("0319"), ZB::FilterContains);
    EXPECT_EQ(pageText(), "990..510 17");
    filter(OrderCode, QStringLiteral("nothing"), ZB::FilterContains);
    EXPECT_EQ(pageText(), "none");
    EXPECT_EQ(table->columnFilters().size(), 3);
    table->clearFilter();
    settle();
    EXPECT_EQ(pageText(), "1234..1135 100");
    EXPECT_TRUE(table->columnFilters().isEmpty());
}

TEST_F(DeskHistory, AFilterThatWasSavedFindsItsRowsAgain)
{
    filter(OrderCode, QStringLiteral("300001.SZ"), ZB::FilterExcept);
    filter(OrderDay, QStringLiteral("20240319"));
    const std::string found = panel->summary().toStdString();
    EXPECT_EQ(found, "450 笔");
    panel.reset();
    panel = std::make_unique<HistoryPanel>(trading::HistoryQuery::Kind::Orders);
    table = &panel->history();
    table->updateTable(); // before the file says what it has
    EXPECT_EQ(table->columnFilters().size(), 2);
    panel->open(path);
    panel->show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return table->isSettled() && panel->summary().toStdString() == found; }))
        << panel->summary().toStdString();
}

TEST_F(DeskHistory, TheStatisticsRowAddsUpEveryPage)
{
    const auto sum = [&](int field) {
        return table->getDataModel()->getStatDispalyQString(columnOf(field)).toStdString();
    };
    EXPECT_EQ(sum(OrderQuantity), "123400");
    EXPECT_EQ(sum(OrderFilled), "0");
    EXPECT_EQ(sum(OrderPrice), "");
    auto *grid = table->findChild<ZB::GridView *>();
    EXPECT_TRUE(grid->statisticsVisible());
    EXPECT_EQ(grid->source()->statisticsText(columnOf(OrderQuantity)).toStdString(), "123,400");
    filter(OrderCode, QStringLiteral("300001.SZ"));
    EXPECT_EQ(sum(OrderQuantity), "12300");
    EXPECT_EQ(grid->source()->statisticsText(columnOf(OrderCancelled)).toStdString(), "12,300");
    filter(OrderCode, QStringLiteral("nothing"), ZB::FilterContains);
    EXPECT_EQ(sum(OrderQuantity), "0");
}

TEST(DeskHistoryPanel, SaysThatThereIsNoFile)
{
    const LoggedIn user;
    HistoryPanel panel(trading::HistoryQuery::Kind::Deals);
    panel.show();
    EXPECT_EQ(panel.summary().toStdString(), "没有交易桌面文件");
}
