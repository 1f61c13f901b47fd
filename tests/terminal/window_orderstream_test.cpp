#include <QtGui/QAccessible>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLineEdit>
#include <gtest/gtest.h>
#include <set>

#include "feedplayer.h"
#include "grid/gridview.h"
#include "loggedin.h"
#include "model/chpfdatamodel.h"
#include "pagemodel/chpfpagedatamodel.h"
#include "popups/checklist.h"
#include "popups/filterpopup.h"
#include "popups/pagingbar.h"
#include "recordedday.h"
#include "records/fieldids.h"
#include "records/record.h"
#include "window/feedpump.h"
#include "window/orderstreampanel.h"
#include "window/pagedrows.h"
#include "window/pagedstreamtable.h"

using namespace terminal;
using namespace refhost;

namespace {

constexpr int pageEvent = 277;

/// The panel in a window of its own.
class OrderStreamTest : public ::testing::Test
{
protected:
    OrderStreamTest()
    {
        panel = std::make_unique<OrderStreamPanel>();
        panel->resize(1000, 500);
        panel->show();
        table = &panel->stream();
        pages = &table->pages();
        grid = table->findChild<ZB::GridView *>();
        bar = table->findChild<ZB::PagingBar *>();
    }
    /// Orders with the numbers as keys and quantities: every second one sells, every fifth is filled, the two codes
    /// take turns after each ten.
    void takeOrders(int first, int last)
    {
        QVector<PagedRows::Record> records;
        for (int number = first; number <= last; ++number) {
            auto record = makeOrder(MetaMarketOrder, std::to_string(number));
            record->setData(OrderCode, std::string(number / 10 % 2 ? "600000.SH" : "000001.SZ"));
            record->setData(OrderQuantity, qint64(number));
            record->setData(OrderDirection, int(number % 2 ? '0' : '1'));
            record->setData(OrderStatus, int(number % 5 ? '2' : '8'));
            records.append(record);
        }
        panel->take(records);
    }

    int columnOf(int field) const { return table->getColumnIdByFileId(field); }

    /// What stands in the place of the rows; nothing while there are any.
    std::string emptyText() const
    {
        grid->refreshNow();
        return QAccessible::queryAccessibleInterface(grid)->text(QAccessible::Description).toStdString();
    }

    std::vector<std::string> shownKeys() const
    {
        QList<KV::CHpfDataTable::RowPtr> list;
        table->getDataModel()->getDatas(list);
        std::vector<std::string> keys;
        for (const auto &row : qAsConst(list))
            keys.push_back(row->key());
        return keys;
    }
    std::vector<std::string> pageKeys() const
    {
        std::vector<std::string> keys;
        for (const auto &page : pages->getPageDatas())
            keys.push_back(page->getIData()->getKey());
        return keys;
    }
    /// "first..last x count" of the rows that are shown.
    std::string shown() const
    {
        const auto keys = shownKeys();
        return keys.empty() ? "none" : keys.front() + ".." + keys.back() + " x " + std::to_string(keys.size());
    }

    void clickHeader(int column) const
    {
        grid->refreshNow();
        QTest::mouseClick(grid, Qt::LeftButton, {}, grid->headerRect(column).center());
    }
    /// "column order" of the paged model, and what the arrow says.
    std::string order() const
    {
        std::string text = std::to_string(pages->sortColumn()) + ' ' + std::to_string(pages->sortOrder());
        for (const ZB::GridSortMark &mark : grid->sortMarks())
            text += ", " + std::to_string(mark.column) + (mark.descending ? " 1" : " 0");
        return text;
    }
    QAbstractButton *button(const char *text) const
    {
        for (auto *each : panel->findChildren<QAbstractButton *>())
            if (each->text() == QString::fromUtf8(text))
                return each;
        return nullptr;
    }
    QLineEdit *searchField() const
    {
        for (auto *each : panel->findChildren<QLineEdit *>())
            if (each->accessibleName() == QStringLiteral("搜索代码"))
                return each;
        return nullptr;
    }

    void showPage(int first, int count) const
    {
        table->handleEvent(pageEvent, 0, first, QString::number(count), nullptr);
    }
    /// Goes through all pages: keys that were met, and how often one was met again.
    std::pair<std::set<std::string>, int> walk(int rowsPerPage) const
    {
        std::set<std::string> met;
        int again = 0;
        for (int first = 0; first < pages->size(); first += rowsPerPage) {
            showPage(first, rowsPerPage);
            for (const std::string &key : shownKeys())
                again += !met.insert(key).second;
        }
        return {met, again};
    }

    const LoggedIn user;
    std::unique_ptr<OrderStreamPanel> panel;
    PagedStreamTable *table = nullptr;
    KV::CHpfPageDataModel *pages = nullptr;
    ZB::GridView *grid = nullptr;
    ZB::PagingBar *bar = nullptr;
};

/// A recorded day of three shares, at full speed, into the panel.
class OrderStreamReplay : public OrderStreamTest
{
protected:
    void SetUp() override
    {
        const QStringList paths = recordedDay();
        if (paths.isEmpty())
            GTEST_SKIP() << "no recorded data in " << SHARED_DATA_DIR;
        pump = std::make_unique<FeedPump>(
            std::make_unique<feed::MarketFeed>(std::make_unique<feed::ReplayFeed>(paths), feed::MarketFeed::maxSpeed));
        pump->setOrderSink([this](const FeedPump::Records &records) {
            panel->take(records);
            if (++batches % 64 == 0 && shownKeys() != pageKeys())
                ++wrongPages;
        });
    }

    /// Turns pages for as long as records come; false when they do not end.
    bool playAndTurnPages()
    {
        pump->start();
        return QTest::qWaitFor(
            [this] {
                bar->goTo(turned++ % 4 == 3 ? bar->pageCount() - 1 : turned * 37 % bar->pageCount());
                if (shownKeys() != pageKeys())
                    ++wrongPages;
                return pump->isFinished();
            },
            120000);
    }

    /// All visible records and no other are on the pages, each once.
    void expectWholeList() const
    {
        const auto [met, again] = walk(1000);
        EXPECT_EQ(again, 0);
        std::set<std::string> wanted;
        for (const auto &page : pages->getShowDatas())
            wanted.insert(page->getIData()->getKey());
        EXPECT_EQ(met.size(), wanted.size());
        EXPECT_TRUE(met == wanted);
        EXPECT_GT(turned, 10);
        EXPECT_EQ(wrongPages, 0);
    }

    std::unique_ptr<FeedPump> pump;
    int turned = 0;
    int batches = 0;
    int wrongPages = 0;
};

} // namespace

TEST_F(OrderStreamTest, TheNewestOrdersAreShownUntilTheUserGoesElsewhere)
{
    takeOrders(1, 70);
    panel->showNow();
    EXPECT_EQ(shown(), "1..70 x 70");
    takeOrders(71, 250);
    panel->showNow();
    EXPECT_EQ(shown(), "151..250 x 100");
    EXPECT_TRUE(grid->isAtFollowedEdge());
    EXPECT_EQ(panel->shownCount(), 250);
    bar->goTo(1);
    takeOrders(251, 400);
    panel->showNow();
    EXPECT_EQ(shown(), "101..200 x 100");
    EXPECT_EQ(bar->page(), 1);
    EXPECT_EQ(bar->pageCount(), 4);
    takeOrders(200, 200);
    EXPECT_EQ(shownKeys().size(), 100U) << "an order that changes is still one row";
    bar->goToLast();
    EXPECT_EQ(shown(), "301..400 x 100");
}

TEST_F(OrderStreamTest, APageThatIsAskedForFromElsewhereStandsThoughTheLastOneWasFollowed)
{
    takeOrders(1, 250);
    panel->showNow();
    EXPECT_TRUE(bar->isAtEnd());
    takeOrders(251, 300); // the bar has not heard of these yet
    showPage(0, 120);
    EXPECT_EQ(shown(), "1..120 x 120");
    EXPECT_EQ(bar->page(), 0);
    EXPECT_EQ(bar->rowsPerPage(), 120);
    takeOrders(301, 400);
    panel->showNow();
    EXPECT_EQ(shown(), "1..120 x 120");
    showPage(290, 120);
    EXPECT_EQ(shown(), "291..400 x 110") << "not a full last page, so it is not followed";
    takeOrders(401, 405);
    panel->showNow();
    EXPECT_EQ(shown(), "291..405 x 115");
    showPage(305, 100);
    EXPECT_EQ(shown(), "306..405 x 100");
    takeOrders(406, 410);
    panel->showNow();
    EXPECT_EQ(shown(), "311..410 x 100") << "the last page as it is followed";
    showPage(0, 0);
    EXPECT_EQ(shown(), "none");
    EXPECT_EQ(bar->rowsPerPage(), 100);
    bar->goTo(1);
    EXPECT_EQ(shown(), "101..200 x 100");
}

TEST_F(OrderStreamTest, AClickOnAHeaderDescendsFirstAndArrowAndPageAgree)
{
    takeOrders(1, 250);
    panel->showNow();
    const int quantity = columnOf(OrderQuantity);
    const std::string column = std::to_string(quantity);
    clickHeader(quantity);
    EXPECT_EQ(order(), column + " 1, " + column + " 1");
    EXPECT_EQ(shown(), "250..151 x 100");
    EXPECT_EQ(shownKeys(), pageKeys());
    OrderStreamPanel next;
    next.table().setTableSetting(table->getTableSetting());
    EXPECT_EQ(next.stream().pages().sortColumn(), quantity) << "saved, it comes back";
    EXPECT_EQ(next.stream().pages().sortOrder(), 1);
    takeOrders(251, 251);
    EXPECT_EQ(shown(), "251..152 x 100");
    clickHeader(quantity);
    EXPECT_EQ(order(), column + " 0, " + column + " 0");
    EXPECT_EQ(shown(), "1..100 x 100");
    bar->goTo(2);
    EXPECT_EQ(shown(), "201..251 x 51");
    table->setSortColumns({});
    EXPECT_EQ(order(), "-1 0");
    takeOrders(252, 252);
    bar->goToLast();
    EXPECT_EQ(shown(), "153..252 x 100");
}

TEST_F(OrderStreamTest, TheFilterBoxOffersAllRecordsAndFiltersAllPages)
{
    takeOrders(1, 250);
    panel->showNow();
    showPage(10, 5); // all of one code
    const int code = columnOf(OrderCode);
    grid->filterRequested(code, grid->headerRect(code));
    auto *box = table->findChild<ZB::FilterPopup *>();
    ASSERT_TRUE(box);
    ASSERT_TRUE(QTest::qWaitFor([box] { return box->isGathered(); }));
    QStringList offered;
    for (const ZB::CheckItem &item : box->findChild<ZB::CheckList *>()->items())
        offered << item.text + QLatin1Char('/') + item.note;
    EXPECT_EQ(offered.join(QLatin1Char(' ')).toStdString(), "000001.SZ/ 600000.SH/");
    QTest::keyClicks(box->findChild<QLineEdit *>(), QStringLiteral("600"));
    QTest::keyClick(box->findChild<QLineEdit *>(), Qt::Key_Return);

    EXPECT_EQ(pages->columnFilters().value(code).second, QSet<QString>{QStringLiteral("600000.SH")});
    EXPECT_EQ(pages->size(), 121);
    EXPECT_EQ(table->totalCount(), 121);
    EXPECT_TRUE(grid->column(code).filtered);
    EXPECT_TRUE(table->getDataModel()->columnFilters().isEmpty()) << "rows of the page pass as the paged model says";
    panel->refresh();
    EXPECT_EQ(panel->summary().toStdString(), "筛选 121 / 250 笔");
    showPage(100, 100);
    EXPECT_EQ(shownKeys(), pageKeys());
    EXPECT_EQ(shownKeys().size(), 21U);

    QSet<QString> buys{QStringLiteral("买入")};
    table->onFilterTrigger(columnOf(OrderDirection), ZB::FilterExact, buys);
    EXPECT_EQ(pages->size(), 60) << "both filters count";
    QSet<QString> none;
    table->onFilterTrigger(code, ZB::FilterExact, none);
    EXPECT_EQ(pages->columnFilters().keys(), QList<int>{columnOf(OrderDirection)});
}

TEST_F(OrderStreamTest, StatusAndCodeAreChosenByMouseAndKey)
{
    takeOrders(1, 100);
    panel->showNow();
    const auto counts = [this] {
        panel->refresh();
        return panel->summary().toStdString() + ", " + std::to_string(table->totalCount()) + ", " +
               std::to_string(shownKeys().size());
    };
    EXPECT_EQ(counts(), "100 笔, 100, 100");
    QTest::mouseClick(button("未完成"), Qt::LeftButton);
    EXPECT_EQ(counts(), "筛选 80 / 100 笔, 80, 80");
    takeOrders(101, 105);
    panel->showNow();
    EXPECT_EQ(counts(), "筛选 84 / 105 笔, 84, 84");
    panel->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(panel.get()));
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Backtab);
    EXPECT_TRUE(searchField()->hasFocus()) << "the title is reached from the rows";
    QTest::keyClick(searchField(), Qt::Key_Backtab);
    EXPECT_TRUE(button("已成")->hasFocus());
    QTest::keyClick(button("已成"), Qt::Key_Left);
    QTest::keyClick(button("已撤/废单"), Qt::Key_Space);
    EXPECT_TRUE(button("已撤/废单")->isChecked());
    EXPECT_EQ(counts(), "筛选 0 / 105 笔, 0, 0");
    QTest::mouseClick(button("已成"), Qt::LeftButton);
    EXPECT_EQ(counts(), "筛选 21 / 105 笔, 21, 21");

    QLineEdit *search = searchField();
    ASSERT_TRUE(search);
    QTest::keyClicks(search, QStringLiteral(" 600 "));
    EXPECT_EQ(pages->size(), 21) << "not before the word is complete";
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_EQ(counts(), "筛选 10 / 105 笔, 10, 10");
    QTest::keyClicks(search, QStringLiteral("X"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return pages->size() == 0; }));
    search->clear();
    EXPECT_EQ(pages->size(), 21);
}

TEST_F(OrderStreamTest, AnEmptyListSaysWhetherThereAreNoOrdersOrNoneIsAskedFor)
{
    EXPECT_EQ(emptyText(), "没有委托");
    QTest::mouseClick(button("未完成"), Qt::LeftButton);
    EXPECT_EQ(emptyText(), "没有委托");
    takeOrders(5, 5); // filled
    panel->showNow();
    EXPECT_EQ(emptyText(), "没有符合条件的委托");
    QTest::mouseClick(button("已成"), Qt::LeftButton);
    EXPECT_EQ(emptyText(), "");
    QSet<QString> sells{QStringLiteral("卖出")};
    table->onFilterTrigger(columnOf(OrderDirection), ZB::FilterExact, sells);
    EXPECT_EQ(emptyText(), "没有符合条件的委托\n（筛选中，Ctrl+Shift+L 清除）");
    pages->clear();
    panel->showNow();
    panel->refresh();
    EXPECT_EQ(emptyText(), "没有委托\n（筛选中，Ctrl+Shift+L 清除）");
}

TEST_F(OrderStreamTest, ClearingTheFiltersResetsStatusAndSearch)
{
    takeOrders(1, 100);
    QTest::mouseClick(button("已成"), Qt::LeftButton);
    QTest::keyClicks(searchField(), QStringLiteral("000001"));
    QTest::keyClick(searchField(), Qt::Key_Return);
    QSet<QString> sells{QStringLiteral("卖出")};
    table->onFilterTrigger(columnOf(OrderDirection), ZB::FilterExact, sells);
    ASSERT_EQ(pages->size(), 5);
    QTest::keyClick(grid, Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(pages->size(), 100);
    EXPECT_EQ(shownKeys().size(), 100U);
    EXPECT_TRUE(button("全部")->isChecked());
    EXPECT_FALSE(button("已成")->isChecked());
    EXPECT_EQ(searchField()->text(), QString());
    EXPECT_EQ(panel->summary().toStdString(), "100 笔");
    takeOrders(101, 110);
    EXPECT_EQ(pages->size(), 110) << "later orders pass too";
}

TEST_F(OrderStreamTest, OrdersComeInWhileTheListIsSortedAndFiltered)
{
    takeOrders(1, 5000);
    panel->showNow();
    pages->setWorkPerCall(0);
    clickHeader(columnOf(OrderQuantity));
    QTest::mouseClick(button("已成"), Qt::LeftButton);
    ASSERT_TRUE(pages->isPending());
    takeOrders(5001, 5005);
    panel->refresh();
    EXPECT_EQ(panel->summary().toStdString(), "5,005 笔") << "as it is shown";
    panel->showNow();
    EXPECT_TRUE(pages->isPending()) << "showing it does not wait for the new list";
    takeOrders(1, 3);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !pages->isPending(); }));
    EXPECT_EQ(shown(), "5005..4510 x 100");
    EXPECT_EQ(shownKeys(), pageKeys());
    panel->refresh();
    EXPECT_EQ(panel->summary().toStdString(), "筛选 1,001 / 5,005 笔");

    QTest::mouseClick(button("未完成"), Qt::LeftButton);
    ASSERT_TRUE(pages->isPending());
    table->cancelWork();
    EXPECT_TRUE(button("已成")->isChecked());
    EXPECT_EQ(shown(), "5005..4510 x 100");
    EXPECT_EQ(pages->size(), 1001);
}

TEST_F(OrderStreamReplay, TurningPagesLosesAndRepeatsNoRow)
{
    ASSERT_TRUE(playAndTurnPages());
    EXPECT_EQ(pages->size(), 121840);
    expectWholeList();
}

TEST_F(OrderStreamReplay, TurningPagesOfASortedStatusLosesAndRepeatsNoRow)
{
    QTest::mouseClick(button("未完成"), Qt::LeftButton);
    clickHeader(columnOf(OrderQuantity));
    ASSERT_TRUE(playAndTurnPages());
    EXPECT_EQ(pages->originalSize(), 121840);
    EXPECT_EQ(pages->size(), panel->shownCount());
    for (const auto &page : pages->getShowDatas()) {
        const std::string status = page->getIData()->getString(OrderStatus);
        ASSERT_TRUE(status == "2" || status == "7") << status;
    }
    expectWholeList();
}
