#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>

#include "popups/gridbadge.h"
#include "popups/pagingbar.h"
#include "tablefixture.h"
#include "zb/etableflag.h"

using namespace tabletest;

namespace {

/// A paged table that shows the rows 1 to 100 of a list; the test plays the host that brings the rows.
class TablePaging : public TableTest
{
protected:
    TablePaging()
    {
        table->addTableFlag(ZB::TablePaged);
        table->setPagingQueryType(ZB::PagingByIndex);
        bar = table->findChild<ZB::PagingBar *>();
        for (int number = 0; number < 100; ++number)
            model->put({"more" + std::to_string(number), QStringLiteral("600000"), QString(), 0, 1.0, 1});
        window->resize(600, 400);
        settle();
        window->takeEvents();
    }

    void press(const QString &text)
    {
        for (QPushButton *button : bar->findChildren<QPushButton *>())
            if (button->text() == text)
                QTest::mouseClick(button, Qt::LeftButton);
    }

    /// Page number, number of pages and total as the bar says them, and which of its buttons lead nowhere.
    QString said() const
    {
        QStringList parts{QString::number(bar->findChild<QSpinBox *>()->value())};
        for (const QLabel *label : bar->findChildren<QLabel *>())
            if (label->text() != QStringLiteral("第"))
                parts << label->text();
        for (const QPushButton *button : bar->findChildren<QPushButton *>())
            if (!button->isEnabled())
                parts << QStringLiteral("-") + button->text();
        return parts.join(QLatin1Char(' '));
    }

    /// One step of the table's timer, as it comes while the table is shown.
    void tick() const { QTest::qWait(120); }

    ZB::PagingBar *bar = nullptr;
};

} // namespace

TEST_F(TablePaging, TheBarAsksForPagesAndSaysWhereItIs)
{
    ASSERT_TRUE(bar->isVisible());
    table->setTotalCount(250);
    EXPECT_EQ(said(), QStringLiteral("1 / 3 页 共 250 条 -首页 -上一页"));
    press(QStringLiteral("下一页"));
    press(QStringLiteral("末页"));
    EXPECT_EQ(said(), QStringLiteral("3 / 3 页 共 250 条 -下一页 -末页"));
    press(QStringLiteral("上一页"));
    press(QStringLiteral("首页"));
    auto *number = bar->findChild<QSpinBox *>();
    number->selectAll();
    QTest::keyClicks(number, QStringLiteral("2"));
    QTest::keyClick(number, Qt::Key_Return);
    EXPECT_EQ(window->takeEvents(), QStringList({"277(0, 100, 100)", "277(0, 200, 100)", "277(0, 100, 100)",
                                                 "277(0, 0, 100)", "277(0, 100, 100)"}));
    // Other page sizes keep the first row on the page.
    auto *size = bar->findChild<QComboBox *>();
    size->setCurrentIndex(size->findData(50));
    Q_EMIT size->activated(size->currentIndex());
    EXPECT_EQ(said(), QStringLiteral("3 / 5 页 共 250 条"));
    EXPECT_EQ(window->takeEvents(), QStringList({"277(0, 100, 50)"}));
    // A page that is no longer there becomes the last one.
    table->setTotalCount(70);
    EXPECT_EQ(said(), QStringLiteral("2 / 2 页 共 70 条 -下一页 -末页"));
    table->setTotalCount(0);
    EXPECT_EQ(said(), QStringLiteral("1 / 1 页 共 0 条 -首页 -上一页 -下一页 -末页"));
    EXPECT_EQ(window->takeEvents(), QStringList({"277(0, 50, 50)", "277(0, 0, 50)"}));
}

TEST_F(TablePaging, GrowthLeavesThePageAloneUnlessTheTableFollows)
{
    table->setTotalCount(100);
    table->setTotalCount(101);
    tick();
    EXPECT_EQ(window->takeEvents(), QStringList());
    EXPECT_EQ(said(), QStringLiteral("1 / 2 页 共 101 条 -首页 -上一页"));
}

TEST_F(TablePaging, TheLastPageIsFullAndGoesAlongWithNewRows)
{
    table->setFollowsLastPage(true);
    table->setTotalCount(80);
    EXPECT_EQ(window->takeEvents(), QStringList()) << "all rows are on the one page";
    table->setTotalCount(130);
    table->setTotalCount(131);
    EXPECT_EQ(window->takeEvents(), QStringList({"277(0, 30, 100)", "277(0, 31, 100)"}));
    EXPECT_EQ(said(), QStringLiteral("2 / 2 页 共 131 条 -下一页 -末页"));
    // Elsewhere the page stays.
    press(QStringLiteral("首页"));
    table->setTotalCount(400);
    EXPECT_EQ(window->takeEvents(), QStringList({"277(0, 0, 100)"}));
    press(QStringLiteral("末页"));
    table->setTotalCount(450);
    EXPECT_EQ(window->takeEvents(), QStringList({"277(0, 300, 100)", "277(0, 350, 100)"}));
}

TEST_F(TablePaging, WhoHasScrolledUpOnTheLastPageStaysAndIsToldOfNewRows)
{
    table->setFollowsLastPage(true);
    table->setTotalCount(205);
    window->takeEvents();
    grid()->scrollToRow(0);
    table->setTotalCount(230);
    tick();
    EXPECT_EQ(window->takeEvents(), QStringList());
    EXPECT_EQ(said(), QStringLiteral("2 / 3 页 共 230 条")) << "what is shown is no longer the last page";
    const auto badges = table->findChildren<ZB::GridBadge *>();
    const auto shownBadge = std::find_if(badges.begin(), badges.end(), [](auto *badge) { return badge->isVisible(); });
    ASSERT_NE(shownBadge, badges.end());
    QTest::mouseClick(*shownBadge, Qt::LeftButton);
    EXPECT_EQ(window->takeEvents(), QStringList({"277(0, 130, 100)"}));
    EXPECT_TRUE(grid()->isAtFollowedEdge());
    // The same for a table whose rows are held.
    table->setPaused(true);
    table->setTotalCount(260);
    tick();
    EXPECT_EQ(window->takeEvents(), QStringList());
    const auto says = [](const ZB::GridBadge *badge) { return badge->text().contains(QStringLiteral("新增 30 条")); };
    EXPECT_TRUE(std::any_of(badges.begin(), badges.end(), says)) << "rows that are behind the page count as new ones";
    table->setPaused(false);
    tick();
    EXPECT_EQ(window->takeEvents(), QStringList({"277(0, 160, 100)"}));
}

TEST_F(TablePaging, ASortBeginsAtTheFirstPageAndEndsAtTheNewest)
{
    table->setFollowsLastPage(true);
    table->setTotalCount(500);
    window->takeEvents();
    clickHeader(Price);
    EXPECT_EQ(window->takeEvents(), QStringList({"33(1, 3, )", "277(0, 0, 100)"}));
    table->setTotalCount(600);
    EXPECT_EQ(window->takeEvents(), QStringList()) << "new rows come in anywhere now";
    press(QStringLiteral("末页"));
    clickHeader(Price);
    EXPECT_EQ(window->takeEvents(), QStringList({"277(0, 500, 100)", "33(0, 3, )", "277(0, 0, 100)"}));
}
