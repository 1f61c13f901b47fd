#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QMouseEvent>
#include <QtTest/QTest>
#include <QtWidgets/QMenu>

#include "framework/tablefixture.h"
#include "popups/taskstrip.h"

namespace tabletest {

namespace {

class TableCopyTest : public TableTest
{
protected:
    TableCopyTest() { QGuiApplication::clipboard()->clear(); }

    static QString copied() { return QGuiApplication::clipboard()->text(); }
};

TEST_F(TableCopyTest, SelectedRowsGoAsTabSeparatedText)
{
    clickCell(1, Name);
    clickCell(3, Name, Qt::ControlModifier);
    QTest::keyClick(grid(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(copied(), QStringLiteral("000001\t平安银行\t卖出\t12.5\t1200000\n600000\t浦发银行\t卖出\t\t700\n"));
    QTest::keyClick(grid(), Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(copied().section(QLatin1Char('\n'), 0, 0), QStringLiteral("代码\t名称\t方向\t价格\t数量"));
}

TEST_F(TableCopyTest, BlocksOfCellsGoAsOneTableWithNothingBetweenThem)
{
    const auto drag = [this](int row, int column, int toRow, int toColumn, Qt::KeyboardModifiers modifiers) {
        const auto at = [this](int place, int of) {
            std::vector<ZB::GridRowId> ids;
            grid()->source()->rowIds(place, 1, ids);
            return grid()->cellRect(ids.at(0), of).center();
        };
        QTest::mousePress(grid(), Qt::LeftButton, modifiers, at(row, column));
        QMouseEvent move(QEvent::MouseMove, at(toRow, toColumn), Qt::NoButton, Qt::LeftButton, modifiers);
        QCoreApplication::sendEvent(grid(), &move);
        QTest::mouseRelease(grid(), Qt::LeftButton, modifiers, at(toRow, toColumn));
    };
    drag(3, Quantity, 4, Price, Qt::NoModifier);
    drag(0, Code, 1, Name, Qt::ControlModifier);
    table->copySelection(true);
    EXPECT_EQ(copied(), QStringLiteral("代码\t名称\t价格\t数量\n"
                                       "600000\t浦发银行\t\t\n"
                                       "000001\t平安银行\t\t\n"
                                       "\t\t\t700\n"
                                       "\t\t98.7\t50\n"));
    drag(1, Name, 3, Name, Qt::ControlModifier);
    table->copySelection(false);
    EXPECT_EQ(copied(), QStringLiteral("600000\t浦发银行\t\t\n"
                                       "000001\t平安银行\t\t\n"
                                       "\t南山智尚\t\t\n"
                                       "\t浦发银行\t\t700\n"
                                       "\t\t98.7\t50\n"));
    table->setColumnVisible(Price, false);
    table->setColumnVisible(Quantity, false);
    table->copySelection(false);
    EXPECT_EQ(copied(), QStringLiteral("600000\t浦发银行\n000001\t平安银行\n\t南山智尚\n\t浦发银行\n"));
}

TEST_F(TableCopyTest, HiddenColumnsStayAndTheOrderOnTheScreenCounts)
{
    table->setColumnVisible(Code, false);
    table->setColumnVisible(Side, false);
    grid()->setColumnOrder({Price, Name, Quantity, Code, Side});
    clickCell(2, Name);
    table->copySelection(true);
    EXPECT_EQ(copied(), QStringLiteral("价格\t名称\t数量\n15.93\t南山智尚\t100\n"));
}

TEST_F(TableCopyTest, TextsWithTabsQuotesAndLinesStandInQuotes)
{
    model->put({"a", "tab\there", "two\nlines \"q\"", 0, 1.5, 1});
    clickCell(0, Name);
    table->copySelection(false);
    EXPECT_EQ(copied(), QStringLiteral("\"tab\there\"\t\"two\nlines \"\"q\"\"\"\t买入\t1.5\t1\n"));
}

TEST_F(TableCopyTest, NothingSelectedLeavesTheClipboardAlone)
{
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    grid()->clearSelection();
    table->copySelection(true);
    EXPECT_EQ(copied(), QStringLiteral("before"));
}

TEST_F(TableCopyTest, ManyRowsAreGatheredInTheBackgroundAndCanBeStopped)
{
    for (int row = 0; row < 20000; ++row)
        model->put({std::to_string(row), QString::number(row), QStringLiteral("x"), 0, 1.0, row});
    settle();
    QTest::keyClick(grid(), Qt::Key_A, Qt::ControlModifier);
    table->copySelection(false);
    EXPECT_TRUE(copied().isEmpty());
    EXPECT_TRUE(QTest::qWaitFor([] { return copied().count(QLatin1Char('\n')) == 20005; }));
    EXPECT_TRUE(copied().endsWith(QStringLiteral("19999\tx\t买入\t1\t19999\n")));

    QGuiApplication::clipboard()->clear();
    table->copySelection(false);
    grid()->findChildren<ZB::TaskStrip *>().last()->show(); // as it does after a moment
    QTest::keyClick(grid(), Qt::Key_Escape);
    table->copySelection(false);
    rebuild(model);
    QTest::qWait(50);
    EXPECT_TRUE(copied().isEmpty());
}

TEST_F(TableCopyTest, TheMenuHasTheNineEntriesThatItsFlagsAllow)
{
    const auto entries = [this](int flags) {
        window = std::make_unique<EventWindow>();
        table = new ZB::CBaseHighPerformanceTable(tableId, window.get(), flags);
        table->installDataModel(model);
        window->show();
        settle();
        grid()->setCurrent(grid()->source() ? 1 : 0, 0);
        Q_EMIT grid()->contextMenuRequested(ZB::NoGridRow, -1, QPoint());
        QStringList texts;
        for (const QAction *action : popup<QMenu>()->actions())
            if (!action->isSeparator())
                texts.append(action->text().replace(QLatin1Char('\t'), QLatin1String(" | ")));
        return texts.join(QLatin1Char('\n'));
    };
    EXPECT_EQ(entries(ZB::MenuAll), QStringLiteral("复制 | Ctrl+C\n"
                                                   "复制(含表头) | Ctrl+Shift+C\n"
                                                   "全选 | Ctrl+A\n"
                                                   "查找… | Ctrl+F\n"
                                                   "清除筛选 | Ctrl+Shift+L\n"
                                                   "列设置… | Ctrl+Shift+O\n"
                                                   "最适合的列宽 | Ctrl+Shift+W\n"
                                                   "冻结列… | Ctrl+Shift+R\n"
                                                   "大单标记… | Ctrl+Shift+M\n"
                                                   "暂停刷新 | Pause\n"
                                                   "导出数据… | Ctrl+Shift+E"));
    EXPECT_EQ(entries(ZB::MenuCopy | ZB::MenuExport), QStringLiteral("复制 | Ctrl+C\n"
                                                                     "大单标记… | Ctrl+Shift+M\n"
                                                                     "暂停刷新 | Pause\n"
                                                                     "导出数据… | Ctrl+Shift+E"));
}

} // namespace

} // namespace tabletest
