#include <QtCore/QElapsedTimer>
#include <QtGui/QAccessible>
#include <QtGui/QMouseEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <gtest/gtest.h>
#include <numeric>

#include "accessibleevents.h"
#include "popups/filterpopup.h"
#include "table/cdatatable.h"
#include "uicontrol/tablewindow.h"

using namespace testrecords;

namespace {

/// A million rows that are worked out when they are asked for: the reads are the grid's own.
class MillionRows : public ZB::GridSource
{
public:
    static constexpr qint64 million = 1'000'000;

    quint64 revision() const override { return 1; }
    quint64 epoch() const override { return 1; }
    qint64 rowCount() const override { return million; }
    void fetch(qint64 first, int count, ZB::GridWindow &window) override
    {
        window.rowCount = million;
        window.first = firstFetched = first;
        window.rows.clear();
        for (qint64 row = first; row < std::min(first + count, million); ++row)
            window.rows.push_back({idAt(row), 0});
    }
    void refetch(ZB::GridWindow &) override {}
    qint64 rowOf(ZB::GridRowId id) const override { return id > million ? -1 : static_cast<qint64>(id) - 1; }
    void rowIds(qint64 first, qint64 count, std::vector<ZB::GridRowId> &ids) const override
    {
        for (qint64 row = first; row < std::min(first + count, million); ++row)
            ids.push_back(idAt(row));
    }
    void content(int windowRow, int column, ZB::GridContent &content) override
    {
        content.text = cellText(firstFetched + windowRow, column);
    }
    QString cellText(qint64 row, int column) const override { return QStringLiteral("%1.%2").arg(row).arg(column); }
    int columnCount() const override { return 20; }
    QString headerText(int column) const override { return QStringLiteral("Head %1").arg(column); }

private:
    static ZB::GridRowId idAt(qint64 row) { return static_cast<ZB::GridRowId>(row + 1); }

    qint64 firstFetched = 0;
};

/// Adds the range between two cells to what is selected; a cell is (row, column).
void drag(ZB::GridView &view, QPoint from, QPoint to)
{
    const auto middleOf = [&view](QPoint cell) {
        return view.cellRect(static_cast<ZB::GridRowId>(cell.x() + 1), cell.y()).center();
    };
    const auto send = [&view](QEvent::Type type, const QPoint &at, Qt::MouseButton button, Qt::MouseButtons buttons) {
        QMouseEvent event(type, at, view.mapToGlobal(at), button, buttons, Qt::ControlModifier);
        QApplication::sendEvent(&view, &event);
    };
    send(QEvent::MouseButtonPress, middleOf(from), Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseMove, middleOf(to), Qt::NoButton, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, middleOf(to), Qt::LeftButton, Qt::NoButton);
    view.refreshNow();
}

using AccessibleTable = TableWindow;

} // namespace

TEST_F(AccessibleTable, TellsRowsThatComeTheCurrentCellAndTheSelection)
{
    if (!AccessibleEvents::areHeard())
        GTEST_SKIP() << "built without Qt's inner headers: nobody can listen";
    QApplication::setActiveWindow(window.get());
    grid()->setFocus();
    AccessibleEvents events(grid());
    table->updateDatas(std::vector<RecordPtr>{fullTicket("a", 1), fullTicket("b", 2)}, true);
    settle();
    EXPECT_EQ(events.take(), "rows reset") << "once for both";
    table->updateData(fullTicket("a", 3), true);
    settle();
    EXPECT_EQ(events.take(), "") << "as many rows as before";
    QTest::keyClick(grid(), Qt::Key_Down);
    grid()->refreshNow();
    EXPECT_EQ(events.take(), "focus 0; selection");
    QTest::keyClick(grid(), Qt::Key_Down);
    grid()->refreshNow();
    EXPECT_EQ(events.take(), "focus 8; selection");
    QTest::keyClick(grid(), Qt::Key_Right);
    grid()->refreshNow();
    EXPECT_EQ(events.take(), "focus 9");
    table->updateData(fullTicket("c", 1), true);
    settle();
    EXPECT_EQ(events.take(), "rows reset");
    QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(grid());
    EXPECT_EQ(seen->tableInterface()->rowCount(), 3);
    EXPECT_EQ(seen->focusChild()->tableCellInterface()->columnIndex(), 1);
    grid()->setColumnVisible(ColumnLots, false);
    grid()->refreshNow();
    EXPECT_EQ(events.take(), "rows reset") << "other columns";
}

TEST_F(AccessibleTable, TellsAtMostOnceASecondThatTheTextOfTheCurrentCellIsAnotherOne)
{
    if (!AccessibleEvents::areHeard())
        GTEST_SKIP() << "built without Qt's inner headers: nobody can listen";
    QApplication::setActiveWindow(window.get());
    grid()->setFocus();
    table->updateDatas(std::vector<RecordPtr>{fullTicket("a", 1), fullTicket("b", 2)}, true);
    settle();
    const auto change = [this](const char *key, int number) {
        table->updateData(fullTicket(key, number), true);
        settle();
    };
    QTest::keyClick(grid(), Qt::Key_Down);
    grid()->refreshNow();
    change("a", 3); // nobody listens
    AccessibleEvents events(grid());
    QElapsedTimer clock;
    clock.start();
    QTest::keyClick(grid(), Qt::Key_Right);
    QTest::keyClick(grid(), Qt::Key_Right);
    grid()->refreshNow();
    EXPECT_EQ(events.take(), "focus 1; focus 2");
    change("a", 4);
    change("a", 5);
    change("b", 7);
    if (clock.elapsed() > 900)
        GTEST_SKIP() << "the machine is too busy for three changes in a second";
    QTest::qWait(1300);
    EXPECT_EQ(events.take(), "name 2") << "once, after the cell could be read, and without another change";
    QTest::qWait(1100);
    change("b", 8);
    EXPECT_EQ(events.take(), "") << "another cell";
    change("a", 10);
    EXPECT_EQ(events.take(), "name 2") << "at once after a rest";
    grid()->clearFocus();
    QTest::qWait(1100);
    change("a", 11);
    EXPECT_EQ(events.take(), "") << "the keyboard is elsewhere";
}

TEST_F(AccessibleTable, HasTheNameOfTheTableThatTheHostNamed)
{
    QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(grid());
    EXPECT_EQ(seen->text(QAccessible::Name).toStdString(), "表格");
    window->setAccessibleName(QStringLiteral("交易"));
    EXPECT_EQ(seen->text(QAccessible::Name).toStdString(), "交易");
    table->setAccessibleName(QStringLiteral("当日委托"));
    EXPECT_EQ(seen->text(QAccessible::Name).toStdString(), "当日委托");
    grid()->setAccessibleName(QStringLiteral("委托明细"));
    EXPECT_EQ(seen->text(QAccessible::Name).toStdString(), "委托明细");
}

TEST_F(AccessibleTable, NothingIsLeftForReadersOfTablesAndBoxesThatAreGone)
{
    const auto idOf = [](QObject *object) {
        return QAccessible::uniqueId(QAccessible::queryAccessibleInterface(object));
    };
    std::vector<QAccessible::Id> ids;
    {
        KV::CHpfDataTable model(911, MetaTicket, nullptr, kdservice::TraderStock, false);
        KV::CDataTable stored(912, MetaTicket, nullptr);
        model.updateData(fullTicket("a", 1), true);
        model.show();
        stored.show();
        auto *inner = model.findChild<ZB::GridView *>();
        inner->refreshNow();
        for (const int column : inner->visibleColumns()) // until one of them can be filtered
            Q_EMIT inner->filterRequested(column, QRect());
        auto *box = model.findChild<ZB::FilterPopup *>();
        ASSERT_NE(box, nullptr);
        for (QObject *object : std::initializer_list<QObject *>{inner, stored.findChild<ZB::GridView *>(), box})
            ids.push_back(idOf(object));
        for (const QAccessible::Id id : ids)
            ASSERT_NE(QAccessible::accessibleInterface(id), nullptr);
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    for (const QAccessible::Id id : ids)
        EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr);
}

TEST_F(AccessibleTable, TheCellThatWasReadIsTheOneThatIsActedOn)
{
    std::vector<RecordPtr> records;
    for (int lots = 1; lots <= 3; ++lots)
        records.push_back(fullTicket(std::to_string(lots), lots));
    table->updateDatas(records, true);
    table->setSortColumns({{ColumnLots, 0}});
    settle();
    grid()->setFocus();
    QTest::keyClick(grid(), Qt::Key_Down);
    grid()->refreshNow();
    QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(grid());
    QAccessibleInterface *focus = seen->focusChild();
    ASSERT_NE(focus, nullptr);
    const QString read = seen->tableInterface()->cellAt(0, ColumnLots)->text(QAccessible::Name);
    QAccessibleInterface *lots = seen->tableInterface()->cellAt(0, ColumnLots);
    table->setSortColumns({{ColumnLots, 1}});
    settle();
    grid()->refreshNow();
    EXPECT_EQ(lots->text(QAccessible::Name), read);
    EXPECT_EQ(lots->tableCellInterface()->rowIndex(), 2);
    EXPECT_EQ(seen->focusChild(), focus) << "it went along with its record";
    ASSERT_EQ(lots->tableCellInterface()->columnHeaderCells().size(), 1);
    EXPECT_EQ(lots->tableCellInterface()->columnHeaderCells().front()->text(QAccessible::Description).toStdString(),
              "降序，合计 6");
}

TEST_F(AccessibleTable, OfAMillionRecordsAnswersEveryReadWithinAMillisecond)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    constexpr int count = 50'000;
#else
    constexpr int count = 1'000'000;
#endif
    std::vector<RecordPtr> records;
    for (int number = 0; number < count; ++number)
        records.push_back(fullTicket(std::to_string(number), number % 1000));
    table->updateDatas(records, true);
    settle();
    QTest::keyClick(grid(), Qt::Key_End, Qt::ControlModifier);
    grid()->refreshNow();
    QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(grid());
    QAccessibleTableInterface *cells = seen->tableInterface();
    ASSERT_EQ(cells->rowCount(), count);
    ASSERT_EQ(cells->selectedRowCount(), 1);
    int row = 0;
    EXPECT_LT(millisecondsOf([&] { cells->cellAt(row += count / 60, ColumnValue)->text(QAccessible::Name); }),
              readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { cells->cellAt(count / 2, 1)->tableCellInterface()->columnHeaderCells(); }),
              readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { cells->cellAt(count / 2, 1)->state(); }), readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { cells->rowCount(); }), readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { cells->selectedRows(); }), readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { seen->focusChild()->text(QAccessible::Name); }), readMilliseconds);
}

TEST(AccessibleGrid, OfAMillionRowsAnswersEveryReadWithinAMillisecond)
{
    MillionRows source;
    ZB::GridView view;
    view.setSource(&source);
    view.resize(600, 400);
    view.show();
    view.refreshNow();
    view.setCurrent(700'000, 3);
    view.refreshNow();
    QAccessibleInterface *grid = QAccessible::queryAccessibleInterface(&view);
    QAccessibleTableInterface *table = grid->tableInterface();
    ASSERT_EQ(table->rowCount(), MillionRows::million);
    ASSERT_EQ(table->cellAt(999'999, 19)->text(QAccessible::Name), QStringLiteral("999999.19"));
    ASSERT_EQ(table->selectedRows(), QList<int>{699'999});
    int row = 0;
    EXPECT_LT(millisecondsOf([&] { table->cellAt(row += 19'000, 7)->text(QAccessible::Name); }), readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { table->cellAt(699'999, 3)->state(); }), readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { table->cellAt(699'999, 3)->rect(); }), readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { table->columnDescription(19); }), readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { table->rowCount(); }), readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { grid->childCount(); }), readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { table->selectedRows(); }), readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { table->selectedCells(); }), readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { grid->focusChild(); }), readMilliseconds);
    view.selectAll();
    view.refreshNow();
    EXPECT_LT(millisecondsOf([&] { table->selectedRowCount(); }), readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { table->isRowSelected(123'456); }), readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { table->cellAt(123'456, 0)->state(); }), readMilliseconds);
    EXPECT_LT(millisecondsOf([&] { table->selectedCells(); }), 1) << "those on the screen";
    EXPECT_LT(millisecondsOf([&] { table->selectedRows(); }), readMilliseconds);
    const int first = static_cast<int>(view.firstVisibleRow());
    ASSERT_LT(table->selectedRows().size(), 40) << "those on the screen";
    EXPECT_EQ(table->selectedRows().front(), first);
    EXPECT_EQ(table->selectedRowCount(), MillionRows::million);
    std::vector<ZB::GridRowId> most(4096);
    std::iota(most.begin(), most.end(), ZB::GridRowId(1));
    view.selectRows(most);
    EXPECT_EQ(table->selectedRows().size(), 4096) << "out of sight, but few";
    EXPECT_LT(millisecondsOf([&] { table->selectedRows(); }), readMilliseconds);
    QTest::keyClick(&view, Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(&view, Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(&view, Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
    view.scrollToRow(0);
    view.refreshNow();
    EXPECT_EQ(table->selectedCellCount(), 2 * MillionRows::million);
    EXPECT_LT(millisecondsOf([&] { table->selectedCellCount(); }), readMilliseconds);
    drag(view, {3, 2}, {5, 3}); // a further range, which shares nothing
    ASSERT_EQ(view.selectedCells().size(), 2u);
    EXPECT_EQ(table->selectedCellCount(), 2 * MillionRows::million + 6);
    EXPECT_LT(millisecondsOf([&] { table->selectedCellCount(); }), readMilliseconds);
}
