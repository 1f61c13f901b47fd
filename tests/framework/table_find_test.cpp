#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <functional>
#include <utility>

#include "framework/tablefixture.h"
#include "popups/findbar.h"
#include "popups/gridbadge.h"
#include "popups/markpopup.h"
#include "popups/taskstrip.h"

namespace tabletest {

namespace {

/// Tells when its texts are read.
class ToldRow : public OrderRow
{
public:
    ToldRow(Order read, std::function<void()> whenRead) : OrderRow(std::move(read)), told(std::move(whenRead)) {}

    QString getDisplayQString(int column) override
    {
        told();
        return OrderRow::getDisplayQString(column);
    }

private:
    const std::function<void()> told;
};

class TableFindTest : public TableTest
{
protected:
    ZB::FindBar *bar() const { return table->findChild<ZB::FindBar *>(); }

    /// The current cell as "key column", after the search has come to an end.
    QString hit() const
    {
        QTest::qWait(30);
        const auto row = table->currentData();
        return row ? row->qsKey() + QStringLiteral(" %1").arg(grid()->currentColumn()) : QStringLiteral("-");
    }

    QString state() const { return bar()->findChild<QLabel *>()->text(); }
};

TEST_F(TableFindTest, TypingFindsAndKeysGoOnAroundTheEnd)
{
    QTest::keyClick(grid(), Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(bar()->isVisible());
    auto *field = bar()->findChild<QLineEdit *>();
    EXPECT_TRUE(field->hasFocus());
    QTest::keyClicks(field, QStringLiteral("00"));
    EXPECT_EQ(hit(), "a 0");
    QTest::keyClicks(field, QStringLiteral("0"));
    EXPECT_EQ(hit(), "a 0");
    QStringList hits;
    for (int step = 0; step < 4; ++step) {
        QTest::keyClick(field, Qt::Key_Return);
        hits.append(hit());
        hits.last() += state().isEmpty() ? "" : " wrapped";
    }
    EXPECT_EQ(hits, QStringList({"b 0", "b 4", "d 0", "a 0 wrapped"}));
    QTest::keyClick(field, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(hit(), "d 0");
    EXPECT_EQ(state(), QStringLiteral("已从另一端继续"));
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_FALSE(bar()->isVisible());
    QTest::keyClick(grid(), Qt::Key_F3);
    EXPECT_EQ(hit(), "a 0");
}

TEST_F(TableFindTest, RowsAreSearchedCellByCellInTheOrderOnTheScreen)
{
    table->setColumnVisible(Name, false);
    grid()->setColumnOrder({Quantity, Price, Side, Code, Name});
    QStringList hits;
    for (int step = 0; step < 6; ++step) {
        table->find(QStringLiteral("7"), true);
        hits.append(hit());
    }
    EXPECT_EQ(hits, QStringList({"d 4", "e 3", "d 4", "e 3", "d 4", "e 3"}));
    table->find(QStringLiteral("平安"), true);
    EXPECT_EQ(hit(), "e 3");
}

TEST_F(TableFindTest, AMissSaysSoAndKeepsTheCurrentCell)
{
    clickCell(2, Name);
    table->openFind();
    QTest::keyClicks(bar()->findChild<QLineEdit *>(), QStringLiteral("nowhere"));
    EXPECT_EQ(hit(), "c 1");
    EXPECT_EQ(state(), QStringLiteral("没有找到"));
    model->clear();
    settle();
    table->find(QStringLiteral("x"), false);
    EXPECT_EQ(hit(), "-");
}

TEST_F(TableFindTest, ALongSearchRunsInSlicesAndMayLoseItsTable)
{
    for (int row = 0; row < 30000; ++row)
        model->put({std::to_string(row), QString::number(row), QStringLiteral("n"), 0, 1.5, row});
    settle();
    QElapsedTimer clock;
    clock.start();
    table->find(QStringLiteral("29999"), true);
    EXPECT_LT(clock.elapsed(), 50);
    EXPECT_TRUE(QTest::qWaitFor([this] { return table->currentData() && table->currentData()->key() == "29999"; }));
    table->find(QStringLiteral("none"), true);
    QCoreApplication::processEvents();
    rebuild(boost::make_shared<OrderModel>());
}

TEST_F(TableFindTest, ARowThatMovesWhileItIsLookedForIsFound)
{
    for (int row = 0; row < 1000; ++row)
        model->put({std::to_string(row), QString::number(row), QStringLiteral("n"), 0, 1.5, row});
    table->setSortColumns({{Quantity, 1}});
    const auto putLast = [this](qint64 quantity) {
        model->put({"last", QStringLiteral("only"), QStringLiteral("n"), 0, 1.5, quantity});
    };
    putLast(-5);
    bool searching = false;
    // Half way down, and not on the screen: from in front of the search to behind it.
    model->updateData(boost::make_shared<ToldRow>(Order{"500", "500", "n", 0, 1.5, 500}, [&] {
        if (std::exchange(searching, false))
            putLast(900);
    }));
    settle();
    grid()->scrollToRow(0);
    settle();
    clickCell(3, Code);
    searching = true;
    table->find(QStringLiteral("only"), true);
    EXPECT_TRUE(QTest::qWaitFor([this] { return table->currentData() && table->currentData()->key() == "last"; }));
    EXPECT_FALSE(searching);
    EXPECT_EQ(table->currentData()->getLongLong(Quantity), 900);
}

TEST_F(TableFindTest, EscapeStopsOneWorkAtATime)
{
    QStringList stopped;
    for (auto *strip : grid()->findChildren<ZB::TaskStrip *>()) {
        QObject::connect(strip, &ZB::TaskStrip::cancelRequested, table, [&stopped, strip] {
            stopped.append(strip == strip->parent()->findChildren<ZB::TaskStrip *>().first() ? "sort" : "export");
            strip->hide();
        });
        strip->show();
    }
    QTest::keyClick(grid(), Qt::Key_Escape);
    EXPECT_EQ(stopped, QStringList({"sort"}));
    QTest::keyClick(grid(), Qt::Key_Escape);
    EXPECT_EQ(stopped, QStringList({"sort", "export"}));
}

class TablePauseTest : public TableTest
{
protected:
    QString badge() const
    {
        for (const auto *each : grid()->findChildren<ZB::GridBadge *>())
            if (each->isVisible())
                return each->text();
        return QString();
    }

    QStringList sourceCodes() const
    {
        std::vector<ZB::GridRowId> ids;
        grid()->source()->rowIds(0, grid()->source()->rowCount(), ids);
        QStringList places;
        for (const ZB::GridRowId id : ids)
            places.append(QString::number(grid()->source()->rowOf(id)));
        return places;
    }
};

TEST_F(TablePauseTest, ThePauseKeyHoldsTheRowsAndCountsNewOnes)
{
    QTest::keyClick(grid(), Qt::Key_Pause);
    EXPECT_TRUE(table->isPaused());
    model->put({"x", "000002", "万科A", 0, 1.0, 1});
    model->put({"y", "000003", "万科B", 0, 1.0, 1});
    model->removeDataByKey("a");
    EXPECT_TRUE(QTest::qWaitFor([this] { return badge().contains(QStringLiteral("新增 2 条")); }));
    EXPECT_EQ(grid()->source()->rowCount(), 5);
    EXPECT_EQ(sourceCodes(), QStringList({"0", "1", "2", "3", "4"}));
    clickCell(0, Code);
    ASSERT_TRUE(table->currentData());
    EXPECT_EQ(table->currentData()->key(), "a");
    QTest::keyClick(grid(), Qt::Key_Pause);
    EXPECT_EQ(badge(), QString());
    EXPECT_EQ(grid()->source()->rowCount(), 6);
}

TEST_F(TablePauseTest, SortsAndFiltersEndThePause)
{
    table->setPaused(true);
    clickHeader(Price);
    EXPECT_FALSE(table->isPaused());
    table->setPaused(true);
    table->clearFilter();
    EXPECT_FALSE(table->isPaused());
    table->setPaused(true);
    rebuild(model);
    EXPECT_FALSE(table->isPaused());
}

TEST_F(TablePauseTest, NewRowsBelowTheScreenAreCounted)
{
    for (int row = 0; row < 60; ++row)
        model->put({std::to_string(row), QString::number(row), QString(), 0, 1.0, 1});
    settle();
    grid()->scrollToRow(0);
    settle();
    for (int row = 100; row < 107; ++row)
        model->put({std::to_string(row), QString::number(row), QString(), 0, 1.0, 1});
    EXPECT_TRUE(QTest::qWaitFor([this] { return badge() == QStringLiteral("↓ 7 条新记录"); }));
    Q_EMIT grid()->findChildren<ZB::GridBadge *>().last()->clicked();
    EXPECT_TRUE(grid()->isAtFollowedEdge());
    EXPECT_TRUE(QTest::qWaitFor([this] { return badge().isEmpty(); }));
}

class TableMarksTest : public TableTest
{
protected:
    /// The rows with a background of their own.
    QStringList marked() const
    {
        settle();
        QStringList rows;
        ZB::GridWindow fetched;
        grid()->source()->fetch(0, 100, fetched);
        for (int row = 0; row < int(fetched.rows.size()); ++row) {
            ZB::GridContent content;
            grid()->source()->content(row, Code, content);
            if (content.background)
                rows.append(model->getData(row)->qsKey() + content.background->name());
        }
        return rows;
    }
};

TEST_F(TableMarksTest, RowsThatReachAThresholdAreTinted)
{
    table->setRowMarks(
        {{Quantity, 700, QStringLiteral("clr_global_rise")}, {Price, 15, QStringLiteral("clr_global_fall")}});
    const QStringList rows = marked();
    ASSERT_EQ(rows.size(), 4);
    EXPECT_EQ(QStringList({rows[0].left(1), rows[1].left(1), rows[2].left(1), rows[3].left(1)}),
              QStringList({"b", "c", "d", "e"}));
    EXPECT_EQ(rows[0].mid(1), rows[2].mid(1));
    EXPECT_EQ(rows[1].mid(1), rows[3].mid(1));
    EXPECT_NE(rows[0].mid(1), rows[1].mid(1));
    model->put({"b", "000001", "平安银行", 1, 1.0, 10});
    EXPECT_EQ(marked().size(), 3);
    table->setRowMarks({{99, 1, QString()}, {Name, 1, QString()}});
    EXPECT_TRUE(marked().isEmpty());
}

TEST_F(TableMarksTest, TheBoxWritesRulesAsTheyAreTyped)
{
    model->setColumnStatEnable(Quantity, true); // what is summed is offered first
    settle();
    QTest::keyClick(grid(), Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    auto *box = popup<ZB::MarkPopup>();
    ASSERT_TRUE(box);
    auto *column = box->findChild<QComboBox *>();
    EXPECT_EQ(column->count(), 3);
    EXPECT_EQ(column->currentData().toInt(), int(Quantity));
    box->findChild<QLineEdit *>()->setText(QStringLiteral("120万"));
    ASSERT_EQ(table->rowMarks().size(), 1);
    EXPECT_EQ(table->rowMarks()[0].column, Quantity);
    EXPECT_EQ(table->rowMarks()[0].threshold, 1200000);
    EXPECT_EQ(marked().size(), 1);
    QTest::keyClick(box->findChild<QLineEdit *>(), Qt::Key_Backspace);
    box->findChild<QLineEdit *>()->setText(QStringLiteral("abc"));
    EXPECT_TRUE(table->rowMarks().isEmpty());
}

TEST_F(TableMarksTest, ThresholdsReadAsPeopleWriteThem)
{
    const std::vector<std::pair<const char *, double>> cases = {
        {"500000", 500000}, {"500,000", 500000}, {"50万", 500000}, {" 0.5 亿 ", 5e7}, {"1.5", 1.5}, {"", 0},
        {"万", 0},          {"-3", -3},          {"nan", 0},       {"1e400", 0}};
    for (const auto &[text, value] : cases)
        EXPECT_EQ(ZB::thresholdOf(QString::fromUtf8(text)), value) << text;
    for (const double value : {1.0, 9999.0, 10000.0, 123456.0, 5e8})
        EXPECT_EQ(ZB::thresholdOf(ZB::thresholdText(value)), value);
}

} // namespace

} // namespace tabletest
