#include <QtGui/QAccessible>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <gtest/gtest.h>

#include "accessibleevents.h"
#include "uicontrol/logwindow.h"

namespace {

/// A log of five rows, with the keyboard.
class AccessibleLog : public testing::Test
{
protected:
    AccessibleLog() : window(300, 100), list(QAccessible::queryAccessibleInterface(window.log))
    {
        QApplication::setActiveWindow(&window);
        window.log->setFocus();
        EXPECT_TRUE(QTest::qWaitFor([this] { return window.log->hasFocus(); }));
    }
    QAccessibleTableInterface &rows() const { return *list->tableInterface(); }
    std::string name(int row) const { return list->child(row)->text(QAccessible::Name).toStdString(); }

    LogWindow window;
    QAccessibleInterface *list;
};

} // namespace

TEST_F(AccessibleLog, IsAListOfAllRowsWhereverTheViewIs)
{
    EXPECT_EQ(list->role(), QAccessible::List);
    EXPECT_EQ(list->childCount(), 0);
    EXPECT_EQ(list->child(0), nullptr);
    EXPECT_EQ(list->text(QAccessible::Name).toStdString(), "日志");
    window.add(numbered(0, 3));
    EXPECT_EQ(namesOf(list, 0, 3), "line 0, line 1, line 2");
    window.add(numbered(3, 50000));
    EXPECT_EQ(list->childCount(), 50000);
    EXPECT_EQ(rows().rowCount(), 50000);
    EXPECT_EQ(rows().columnCount(), 1);
    EXPECT_EQ(namesOf(list, 20000, 2), "line 20000, line 20001");
    EXPECT_EQ(list->text(QAccessible::Description).toStdString(), "共 50000 行，跟随最新");
    window.press(Qt::Key_PageUp);
    EXPECT_EQ(list->text(QAccessible::Description).toStdString(), "共 50000 行");
    EXPECT_EQ(list->child(50000), nullptr);
    EXPECT_EQ(list->child(-1), nullptr);
    EXPECT_EQ(rows().cellAt(7, 0), list->child(7));
    EXPECT_EQ(rows().cellAt(7, 1), nullptr);
    EXPECT_EQ(list->child(7)->role(), QAccessible::ListItem);
    EXPECT_EQ(list->indexOfChild(list->child(7)), 7);
    EXPECT_TRUE(list->child(7)->state().offscreen && list->child(7)->rect().isEmpty());
    window.log->setAccessibleName(QStringLiteral("系统日志"));
    EXPECT_EQ(list->text(QAccessible::Name).toStdString(), "系统日志") << "the host knows better";
}

TEST_F(AccessibleLog, RowsAreWhereTheyArePainted)
{
    window.add(numbered(0, 40));
    for (int row = 35; row < 40; ++row) {
        const QRect rect = list->child(row)->rect();
        EXPECT_EQ(rect.topLeft(), window.log->mapToGlobal(QPoint(0, (row - 35) * 20)));
        EXPECT_EQ(rect.size(), QSize(300, 20));
        EXPECT_EQ(list->childAt(rect.center().x(), rect.center().y()), list->child(row));
        EXPECT_FALSE(list->child(row)->state().offscreen);
    }
    EXPECT_EQ(list->childAt(-5000, -5000), nullptr);
    EXPECT_TRUE(list->child(34)->state().offscreen);
}

TEST_F(AccessibleLog, ARowIsTheSameObjectWhileOlderOnesLeave)
{
    window.add(numbered(0, 50001));
    QAccessibleInterface *kept = list->child(1000);
    QAccessibleInterface *leaving = list->child(300);
    window.add(numbered(50001, 50501));
    EXPECT_EQ(kept->text(QAccessible::Name).toStdString(), "line 1000");
    EXPECT_EQ(kept->tableCellInterface()->rowIndex(), 500);
    EXPECT_EQ(list->child(500), kept);
    EXPECT_FALSE(leaving->isValid());
    EXPECT_EQ(leaving->text(QAccessible::Name).toStdString(), "");
    EXPECT_TRUE(leaving->state().invalid);
    EXPECT_EQ(leaving->tableCellInterface(), nullptr);

    window.log->dataCallBack(numbered(50501, 50701).join(QLatin1Char('\n')), 0);
    window.settleLists();
    EXPECT_EQ(kept->text(QAccessible::Name).toStdString(), "line 1000") << "the log has not looked at its list since";
}

TEST_F(AccessibleLog, ReadingEveryRowKeepsAFewThousandObjects)
{
    window.add(numbered(0, 9000));
    const QAccessible::Id first = QAccessible::uniqueId(list->child(0));
    ASSERT_NE(QAccessible::accessibleInterface(first), nullptr);
    for (int i = 1; i < 9000; ++i)
        ASSERT_EQ(name(i), "line " + std::to_string(i));
    EXPECT_EQ(QAccessible::accessibleInterface(first), nullptr);
    EXPECT_EQ(name(0), "line 0") << "made anew";
}

TEST_F(AccessibleLog, RowsOfAListThatIsGoneAreGone)
{
    window.add(numbered(0, 10), 0);
    window.add({QStringLiteral("bad")}, 2);
    QAccessibleInterface *row = list->child(3);
    window.log->setFilterLevel(2);
    EXPECT_FALSE(row->isValid());
    EXPECT_EQ(list->childCount(), 1);
    EXPECT_EQ(name(0), "bad");
    row = list->child(0);
    window.log->clear();
    window.add(numbered(0, 10), 2);
    EXPECT_FALSE(row->isValid());
    EXPECT_EQ(name(9), "line 9");
    row = list->child(9);
    window.log->slotAutoLine(true);
    EXPECT_FALSE(row->isValid());
}

TEST_F(AccessibleLog, SelectsRowsAsMouseAndKeysDo)
{
    window.add(numbered(0, 40));
    EXPECT_EQ(rows().selectedRowCount(), 0);
    EXPECT_EQ(list->focusChild(), nullptr);
    window.click(1);
    EXPECT_EQ(rows().selectedRows(), QList<int>{36});
    EXPECT_EQ(list->focusChild(), list->child(36));
    EXPECT_TRUE(list->child(36)->state().selected && list->child(36)->state().focused);
    EXPECT_FALSE(list->child(35)->state().selected || list->child(35)->state().focused);

    EXPECT_TRUE(rows().selectRow(2));
    EXPECT_EQ(window.copied(), QStringLiteral("line 2"));
    EXPECT_FALSE(list->child(2)->state().offscreen) << "scrolled to it";
    EXPECT_TRUE(rows().selectRow(20));
    EXPECT_FALSE(list->child(20)->state().offscreen);
    EXPECT_FALSE(rows().selectRow(40) || rows().selectRow(-1));
    EXPECT_EQ(rows().selectedCells(), QList<QAccessibleInterface *>{list->child(20)});
    EXPECT_FALSE(rows().unselectRow(19));
    EXPECT_TRUE(rows().unselectRow(20));
    EXPECT_EQ(rows().selectedCellCount(), 0);

    window.press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(rows().selectedRowCount(), 40);
    EXPECT_EQ(rows().selectedRows().size(), 40);
    EXPECT_TRUE(rows().isRowSelected(39) && list->child(0)->state().selected);
    EXPECT_FALSE(rows().isRowSelected(40));
    EXPECT_EQ(rows().selectedCells().size(), 5) << "those on the screen";
}

TEST_F(AccessibleLog, TellsRowsThatComeAndGoAndAnotherSelection)
{
    if (!AccessibleEvents::areHeard())
        GTEST_SKIP() << "built without Qt's inner headers: nobody can listen";
    AccessibleEvents events(window.log);
    window.add(numbered(0, 3));
    EXPECT_EQ(events.take(), "rows inserted 0-2");
    window.add(numbered(3, 50001));
    EXPECT_EQ(events.take(), "rows inserted 3-50000");
    window.add(numbered(50001, 50101));
    EXPECT_EQ(events.take(), "rows removed 0-99; rows inserted 49901-50000");
    window.click(0);
    EXPECT_EQ(events.take(), "selection; focus 49996");
    window.press(Qt::Key_Down);
    EXPECT_EQ(events.take(), "selection; focus 49997");
    window.press(Qt::Key_PageUp);
    EXPECT_EQ(events.take(), "") << "scrolling is no news";
    window.press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(events.take(), "selection; focus 49997");
    window.log->clearFocus();
    window.log->findText(QStringLiteral("line 200"));
    window.log->findNext();
    EXPECT_EQ(events.take(), "selection") << "the keyboard is elsewhere, in a search field";
    window.log->setFocus();
    EXPECT_EQ(events.take(), "focus " + std::to_string(rows().selectedRows().front()));
    window.log->setFilterLevel(2);
    EXPECT_EQ(events.take(), "rows reset; selection");
    window.log->clear();
    EXPECT_EQ(events.take(), "rows reset");
}

TEST_F(AccessibleLog, OfFiftyThousandLinesAnswersEveryReadWithinAMillisecond)
{
    window.add(numbered(0, 50001));
    window.click(2);
    EXPECT_LT(millisecondsOf([&] { list->child(25000)->text(QAccessible::Name); }), readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { list->child(25000)->state(); }), readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { list->child(50000)->rect(); }), readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { list->childCount(); }), readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { rows().selectedRows(); }), readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { list->focusChild(); }), readMilliseconds);
    window.press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_LT(millisecondsOf([&] { rows().selectedRows(); }), readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { rows().selectedCells(); }), readMilliseconds);
}
