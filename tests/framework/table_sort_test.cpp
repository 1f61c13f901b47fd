#include <QtGui/QImage>
#include <QtTest/QTest>

#include "framework/tablefixture.h"

namespace tabletest {

namespace {

TEST_F(TableTest, ClickedHeadersSortDescendingFirstAndTellTheirOrder)
{
    clickHeader(Price);
    EXPECT_EQ(shown(), QStringLiteral("代码 名称 方向 价格↓ 数量\n"
                                      "688293 =奥浦迈 买入 98.70 50\n"
                                      "300918 南山智尚 买入 15.93 100\n"
                                      "000001 平安银行 卖出 12.50 1,200,000\n"
                                      "600000 浦发银行 买入 10.25 300\n"
                                      "600000 浦发银行 卖出 - 700"));
    clickHeader(Price);
    EXPECT_EQ(shown(), QStringLiteral("代码 名称 方向 价格↑ 数量\n"
                                      "600000 浦发银行 买入 10.25 300\n"
                                      "000001 平安银行 卖出 12.50 1,200,000\n"
                                      "300918 南山智尚 买入 15.93 100\n"
                                      "688293 =奥浦迈 买入 98.70 50\n"
                                      "600000 浦发银行 卖出 - 700"));
    clickHeader(Quantity);
    EXPECT_EQ(window->takeEvents(), QStringList({"33(1, 3, )", "33(0, 3, )", "33(1, 4, )"}));
    EXPECT_EQ(shown().section(QLatin1Char('\n'), 0, 1), QStringLiteral("代码 名称 方向 价格 数量↓\n"
                                                                       "000001 平安银行 卖出 12.50 1,200,000"));
}

TEST_F(TableTest, ControlAddsAFurtherSortColumn)
{
    clickHeader(Code);
    clickHeader(Quantity, Qt::ControlModifier);
    clickHeader(Quantity, Qt::ControlModifier);
    EXPECT_EQ(shown(), QStringLiteral("代码↓ 名称 方向 价格 数量↑\n"
                                      "688293 =奥浦迈 买入 98.70 50\n"
                                      "600000 浦发银行 买入 10.25 300\n"
                                      "600000 浦发银行 卖出 - 700\n"
                                      "300918 南山智尚 买入 15.93 100\n"
                                      "000001 平安银行 卖出 12.50 1,200,000"));
    EXPECT_EQ(model->sortColumns(), (QVector<QPair<int, int>>{{Code, 1}, {Quantity, 0}}));
    table->setSortColumns({{Name, 0}, {99, 1}, {-1, 0}});
    EXPECT_EQ(model->sortColumns(), (QVector<QPair<int, int>>{{Name, 0}}));
}

TEST_F(TableTest, APagedTableOnlyAsksForItsOrder)
{
    table->addTableFlag(ZB::TablePaged);
    clickHeader(Price);
    EXPECT_EQ(window->takeEvents(), QStringList({"33(1, 3, )"}));
    EXPECT_TRUE(model->sortColumns().isEmpty());
    EXPECT_EQ(shown().section(QLatin1Char('\n'), 0, 1), QStringLiteral("代码 名称 方向 价格↓ 数量\n"
                                                                       "600000 浦发银行 买入 10.25 300"));
}

TEST_F(TableTest, AClickOnAHeaderShowsWhatIsFirstUnlessTheCurrentRowIsInSight)
{
    for (int row = 0; row < 300; ++row)
        model->put({std::to_string(row), QStringLiteral("c"), QStringLiteral("n"), 0, 20.0 + row, row});
    settle();
    grid()->scrollToRow(200);
    clickHeader(Price);
    settle();
    EXPECT_EQ(grid()->firstVisibleRow(), 0);
    grid()->scrollToRow(200);
    const qint64 first = grid()->firstVisibleRow();
    ASSERT_GT(first, 0);
    clickCell(int(first) + 2, Name);
    const ZB::GridRowId current = grid()->currentRow();
    clickHeader(Price);
    settle();
    EXPECT_EQ(grid()->source()->rowOf(current), grid()->firstVisibleRow() + 2);
}

TEST_F(TableTest, EventsNameTheRowThatIsCurrentAndTheOneThatIsOpened)
{
    clickCell(0, Code);
    clickCell(0, Price);
    clickCell(2, Price);
    const QPoint place = grid()->cellRect(grid()->currentRow(), Price).center();
    QTest::mouseDClick(grid(), Qt::LeftButton, {}, place);
    QTest::mouseRelease(grid(), Qt::LeftButton, {}, place);
    QTest::keyClick(grid(), Qt::Key_Up);
    QTest::keyClick(grid(), Qt::Key_Return);
    EXPECT_EQ(window->takeEvents(),
              QStringList({"70(0, 0, a)", "70(3, 2, c)", "69(3, 2, c)", "70(3, 1, b)", "69(3, 1, b)"}));
    // Not while a third click could still come to the row that was opened.
    model->clear();
    QStringList events;
    EXPECT_TRUE(QTest::qWaitFor([this, &events] { return !(events = window->takeEvents()).isEmpty(); }));
    EXPECT_EQ(events, QStringList({"70(3, -1, )"}));
}

TEST_F(TableTest, ANameThatComesLateIsSeenWithoutItsRowBeingHandedIn)
{
    struct NamedRow : OrderRow
    {
        NamedRow(const Order &shownOrder, const QString &sharedName) : OrderRow(shownOrder), name(sharedName) {}
        QString getDisplayQString(int column) override
        {
            return column == Name ? name : OrderRow::getDisplayQString(column);
        }
        const QString &name;
    };
    QString name = QStringLiteral("-");
    model->clear();
    model->addData(boost::make_shared<NamedRow>(Order{"n", "600000", "", 0, 1.0, 100}, name));
    settle();
    const QImage before = grid()->grab().toImage();
    name = QStringLiteral("浦发银行");
    EXPECT_TRUE(QTest::qWaitFor([&] { return grid()->grab().toImage() != before; }));
    table->clear(); // the row refers to what ends here
}

TEST_F(TableTest, TheTableFollowsTheUpdatedMark)
{
    EXPECT_FALSE(model->updated());
    model->put({"f", "000002", "万科A", 0, 7.5, 10});
    EXPECT_TRUE(model->updated());
    table->updateTable();
    EXPECT_FALSE(model->updated());
    EXPECT_TRUE(shown().endsWith(QStringLiteral("000002 万科A 买入 7.50 10")));

    model->put({"g", "000002", "万科A", 0, 7.6, 10});
    EXPECT_TRUE(QTest::qWaitFor([this] { return grid()->source()->rowCount() == 7 && !model->updated(); }));
    EXPECT_TRUE(QTest::qWaitFor([this] { return model->timerCalls > 2; }));
}

} // namespace

} // namespace tabletest
