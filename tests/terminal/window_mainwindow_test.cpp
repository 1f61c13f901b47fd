#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets/QSplitter>
#include <gtest/gtest.h>
#include <numeric>

#include "feed/simulation/simulatedfeed.h"
#include "feedplayer.h"
#include "kdservice/idata.h"
#include "model/chpfdata.h"
#include "model/chpfdatamodel.h"
#include "pagemodel/chpfpagedatamodel.h"
#include "recordedday.h"
#include "records/fieldids.h"
#include "services/userconfig.h"
#include "table/chpfdatatable.h"
#include "theme/themeservice.h"
#include "window/dealstreampanel.h"
#include "window/feedpump.h"
#include "window/mainwindow.h"
#include "window/marketpage.h"
#include "window/options.h"
#include "window/orderstreampanel.h"
#include "window/pagedstreamtable.h"
#include "window/topbar.h"
#include "window/viewsettings.h"

using namespace terminal;

namespace {

std::unique_ptr<FeedPump> simulatedPump(double speed)
{
    return std::make_unique<FeedPump>(
        std::make_unique<feed::MarketFeed>(std::make_unique<feed::SimulatedFeed>(1), speed));
}

/// The shown columns from left to right, frozen ones in front of a bar.
std::string columnsOf(const TablePanel &panel)
{
    const ZB::CBaseTableSettingParam setting = panel.table().getTableSetting();
    QStringList names;
    for (const ZB::CBaseTableColumnSetting &column : setting.columns)
        if (column.visible)
            names << panel.table().getDataModel()->columnHeader(column.column);
    names.insert(setting.frame.frozenColumns, QStringLiteral("|"));
    return names.join(QLatin1Char(' ')).toStdString();
}

using Records = std::vector<MarketRecords::Record>;

qint64 sumOf(const Records &records, int field)
{
    return std::accumulate(records.begin(), records.end(), qint64(0),
                           [field](qint64 sum, const auto &record) { return sum + record->getLong(field); });
}

/// On every page.
Records shownRecords(const OrderStreamPanel &panel)
{
    Records records;
    for (const auto &page : panel.stream().pages().getShowDatas())
        records.push_back(page->getIData());
    return records;
}

Records shownRecords(const DealStreamPanel &panel)
{
    QList<KV::CHpfDataTable::RowPtr> rows;
    panel.table().getDataModel()->getDatas(rows);
    Records records;
    for (const auto &row : qAsConst(rows))
        records.push_back(static_cast<KV::CHpfData &>(*row).getIData());
    return records;
}

/// What the statistics row says under the columns of these fields must be the sums over the shown rows.
template <typename Stream>
void expectSums(const Stream &panel, const std::vector<int> &fields)
{
    const Records records = shownRecords(panel);
    for (const int field : fields) {
        const int column = panel.table().getColumnIdByFileId(field);
        EXPECT_EQ(panel.table().getDataModel()->getStatDispalyQString(column).toStdString(),
                  std::to_string(sumOf(records, field)))
            << field << " over " << records.size() << " rows";
    }
}

/// Gives the look back to what other tests expect, and takes the configuration away.
class WindowTest : public ::testing::Test
{
protected:
    void SetUp() override { refhost::setUserConfig(std::make_unique<refhost::UserConfig>()); }
    void TearDown() override
    {
        refhost::setUserConfig(nullptr);
        refhost::ThemeService::instance().setTheme(QStringLiteral("dark"));
        refhost::ThemeService::instance().setRiseFall(refhost::RiseFall::RedUp);
        refhost::ThemeService::instance().setScale(1);
    }
};

} // namespace

TEST_F(WindowTest, TheTablesStartWithTheColumnsOfATickDesk)
{
    const auto pump = simulatedPump(1);
    MainWindow window(*pump);
    EXPECT_EQ(columnsOf(window.marketPage().orderStream()),
              "委托时间 证券代码 证券名称 | 方向 委托价格 委托数量 成交数量 撤单数量 状态 成交均价 成交金额");
    EXPECT_EQ(columnsOf(window.marketPage().dealStream()),
              "成交时间 证券代码 证券名称 | 方向 成交价格 成交数量 成交金额 买方委托 卖方委托");
    EXPECT_EQ(window.marketPage().orderStream().summary().toStdString(), "0 笔");
}

TEST_F(WindowTest, EveryControlOfTheBarHasAKey)
{
    const auto pump = simulatedPump(1);
    MainWindow window(*pump);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const auto press = [&](Qt::Key key) { QTest::keyClick(&window, key, Qt::ControlModifier); };
    const auto *splitter = window.findChild<QSplitter *>();

    press(Qt::Key_P);
    EXPECT_TRUE(pump->isPaused());
    press(Qt::Key_P);
    EXPECT_FALSE(pump->isPaused());
    press(Qt::Key_BracketRight);
    EXPECT_EQ(pump->speed(), 2);
    press(Qt::Key_BracketLeft);
    press(Qt::Key_BracketLeft);
    press(Qt::Key_BracketLeft);
    EXPECT_EQ(pump->speed(), 0.5) << "the slowest speed stays";
    press(Qt::Key_T);
    EXPECT_FALSE(viewsettings::isDark());
    press(Qt::Key_L);
    EXPECT_EQ(splitter->orientation(), Qt::Vertical);
    press(Qt::Key_Equal);
    EXPECT_EQ(viewsettings::scalePercent(), 125);
    press(Qt::Key_Minus);
    press(Qt::Key_Minus);
    EXPECT_EQ(viewsettings::scalePercent(), 100) << "nothing below 100 %";

    QWidget *const orders = QApplication::focusWidget();
    EXPECT_TRUE(window.marketPage().orderStream().isAncestorOf(orders));
    QTest::keyClick(&window, Qt::Key_F6);
    EXPECT_TRUE(window.marketPage().dealStream().isAncestorOf(QApplication::focusWidget()));
    QTest::keyClick(&window, Qt::Key_F6);
    EXPECT_EQ(QApplication::focusWidget(), orders);
}

TEST_F(WindowTest, WhatTheUserArrangedComesBackWithTheNextStart)
{
    QTemporaryDir folder;
    const QString path = folder.filePath("user.ini");
    const auto pump = simulatedPump(1);
    refhost::setUserConfig(std::make_unique<refhost::UserConfig>(path));
    std::string arranged;
    {
        MainWindow window(*pump);
        window.resize(900, 500);
        window.show();
        window.marketPage().toggleLayout();
        viewsettings::setDark(false);
        viewsettings::setRiseFall(refhost::RiseFall::OrangeBlue);
        viewsettings::setScalePercent(125);
        KV::CHpfDataTable &table = window.marketPage().orderStream().table();
        ZB::CBaseTableSettingParam setting = table.getTableSetting();
        setting.columns.swapItemsAt(0, 5);
        setting.columns[1].visible = false;
        setting.frame.frozenColumns = 1;
        table.setTableSetting(setting);
        table.setFrozenColumns(2);
        arranged = columnsOf(window.marketPage().orderStream());
        window.saveState();
    }
    refhost::ThemeService::instance().setTheme(QStringLiteral("dark"));
    refhost::ThemeService::instance().setRiseFall(refhost::RiseFall::RedUp);
    refhost::ThemeService::instance().setScale(1);

    refhost::setUserConfig(std::make_unique<refhost::UserConfig>(path));
    viewsettings::load(Options());
    MainWindow window(*pump);
    window.loadState();
    window.show();
    EXPECT_FALSE(viewsettings::isDark());
    EXPECT_EQ(refhost::ThemeService::instance().riseFall(), refhost::RiseFall::OrangeBlue);
    EXPECT_EQ(viewsettings::scalePercent(), 125);
    EXPECT_EQ(window.findChild<QSplitter *>()->orientation(), Qt::Vertical);
    EXPECT_EQ(window.size(), QSize(900, 500));
    EXPECT_EQ(columnsOf(window.marketPage().orderStream()), arranged);

    Options asked;
    asked.dark = true;
    asked.scale = 150;
    viewsettings::load(asked);
    EXPECT_TRUE(viewsettings::isDark()) << "the command line wins";
    EXPECT_EQ(viewsettings::scalePercent(), 150);
    EXPECT_EQ(refhost::ThemeService::instance().riseFall(), refhost::RiseFall::OrangeBlue);
}

TEST_F(WindowTest, ARecordedDayAddsUpInTheTables)
{
    const QStringList paths = recordedDay();
    if (paths.isEmpty())
        GTEST_SKIP() << "no recorded data in " << SHARED_DATA_DIR;
    FeedPump pump(
        std::make_unique<feed::MarketFeed>(std::make_unique<feed::ReplayFeed>(paths), feed::MarketFeed::maxSpeed));
    MainWindow window(pump);
    window.show();
    pump.start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return pump.isFinished() && window.marketPage().isSettled(); }, 120000));

    const OrderStreamPanel &orders = window.marketPage().orderStream();
    const DealStreamPanel &deals = window.marketPage().dealStream();
    const Records allOrders = shownRecords(orders);
    EXPECT_EQ(orders.shownCount(), 121840);
    EXPECT_EQ(deals.shownCount(), 79486);
    EXPECT_EQ(allOrders.size(), 121840U);
    EXPECT_EQ(sumOf(allOrders, refhost::OrderFilled), 115836344);
    EXPECT_EQ(pump.sharesFilled(), 115836344);
    EXPECT_EQ(2 * sumOf(shownRecords(deals), refhost::DealQuantity), 115836344);
    expectSums(orders, {refhost::OrderQuantity, refhost::OrderFilled, refhost::OrderCancelled, refhost::OrderUnfilled});
    expectSums(deals, {refhost::DealQuantity});
    const int orderAmount = orders.table().getColumnIdByFileId(refhost::OrderAmount);
    const int dealAmount = deals.table().getColumnIdByFileId(refhost::DealAmount);
    EXPECT_NEAR(orders.stream().pages().getStatColumnDouble(orderAmount),
                2 * deals.table().getDataModel()->getStatColumnDouble(dealAmount), 0.01)
        << "both sides of every deal";
}
