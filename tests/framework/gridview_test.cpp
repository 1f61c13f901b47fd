#include <QtCore/QElapsedTimer>
#include <QtGui/QAccessible>
#include <QtGui/QHelpEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QShortcut>
#include <QtWidgets/QToolTip>

#include "framework/gridviewfixture.h"
#include "grid/gridviewprivate.h"

using namespace ZB;

TEST_F(GridViewTest, KeysMoveTheCurrentCell)
{
    key(Qt::Key_Down);
    EXPECT_EQ(current(), "1.0") << "from nowhere to the first row";
    key(Qt::Key_Down);
    key(Qt::Key_Right);
    EXPECT_EQ(current(), "2.1");
    EXPECT_EQ(selected(), "2");
    key(Qt::Key_PageDown);
    EXPECT_EQ(current(), "11.1");
    key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(current(), "100.1");
    EXPECT_FALSE(view.cellRect(100, 1).isEmpty());
    key(Qt::Key_End);
    EXPECT_EQ(current(), "100.4");
    key(Qt::Key_Home);
    key(Qt::Key_Up);
    EXPECT_EQ(current(), "99.0");
    key(Qt::Key_Home, Qt::ControlModifier);
    key(Qt::Key_Left);
    key(Qt::Key_Up);
    EXPECT_EQ(current(), "1.0");
    view.setColumnVisible(1, false);
    key(Qt::Key_Right);
    EXPECT_EQ(current(), "1.2") << "past the hidden column";
}

TEST_F(GridViewTest, KeysSelectRowsAndBlocks)
{
    key(Qt::Key_Down);
    key(Qt::Key_Down, Qt::ShiftModifier);
    key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "1 2 3");
    key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "1 2");
    key(Qt::Key_Down, Qt::ControlModifier);
    key(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(selected(), "1 2");
    key(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(selected(), "1 2 4");
    key(Qt::Key_Space);
    EXPECT_EQ(selected(), "4");
    key(Qt::Key_Right);
    key(Qt::Key_Right, Qt::ShiftModifier);
    key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selectedCells(), "4 5 x 1 2");
    key(Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(selectedCells(), "4 5 x 1 2 3 4");
    key(Qt::Key_Down);
    EXPECT_EQ(selected(), "6") << "and back to rows";
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(view.selectedRows().size(), 100u);
}

TEST_F(GridViewTest, KeysReachWhatTheHeadersDo)
{
    click(cell(2, 1));
    takeSaid();
    key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    key(Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
    key(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    key(Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
    key(Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
    key(Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier); // at the edge
    key(Qt::Key_Right, Qt::AltModifier | Qt::ShiftModifier);
    key(Qt::Key_Down, Qt::AltModifier); // not filterable
    GridColumn look = view.column(1);
    look.filterable = true;
    view.setColumn(1, look);
    key(Qt::Key_Down, Qt::AltModifier);
    key(Qt::Key_Up, Qt::AltModifier);
    key(Qt::Key_C, Qt::ControlModifier);
    key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    key(Qt::Key_Return);
    EXPECT_EQ(takeSaid(), "sort 1; sort 1+; moved 1 to 2; moved 1 to 1; moved 1 to 0; resized 1 to 68; filter 1; "
                          "header menu 1; copy; copy+; activated 3.1");
    QKeyEvent letter(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
    QApplication::sendEvent(&view, &letter);
    EXPECT_FALSE(letter.isAccepted()) << "for the table's search";
}

TEST_F(GridViewTest, NumbersThatDoNotFitAreToldOfNotMoreThanOnceASecond)
{
    QObject::connect(&view, &GridView::numbersCut, [this](const QSet<int> &columns) {
        QList<int> sorted = columns.values();
        std::sort(sorted.begin(), sorted.end());
        said.append(QStringLiteral("cut ") + joined(std::vector<int>(sorted.begin(), sorted.end())));
    });
    for (const int column : {2, 4}) {
        GridColumn look = view.column(column);
        look.numeric = true;
        view.setColumn(column, look);
    }
    view.setStatisticsVisible(true);
    const QString number = QStringLiteral("123456789012");
    source.setText(1, 1, number); // as a text
    source.setText(99, 2, number);
    source.setText(1, 4, QStringLiteral("12"));
    view.refreshNow();
    EXPECT_EQ(takeSaid(), "") << "no number on the screen is cut";
    source.setText(1, 2, number);
    view.refreshNow();
    EXPECT_EQ(takeSaid(), "cut 2");
    view.refreshNow();
    source.setText(2, 4, number);
    {
        const GridHold hold(&view);
        view.refreshNow();
        EXPECT_EQ(takeSaid(), "") << "it has just been told of another";
        QTest::qWait(GridViewPrivate::cutNumbersMilliseconds);
        EXPECT_EQ(takeSaid(), "") << "while rows are held";
    }
    EXPECT_TRUE(QTest::qWaitFor([this] { return !said.isEmpty(); }));
    EXPECT_EQ(takeSaid(), "cut 4") << "and not of those that it has told of";

    source.statistics = number;
    source.renew();
    view.refreshNow();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !said.isEmpty(); }));
    EXPECT_EQ(takeSaid(), "cut 2 4") << "sums are numbers too";
    const int before = view.column(3).width;
    view.setColumnWidth(3, 5 * before);
    view.widenColumns({2, 3, 4});
    view.refreshNow();
    QTest::qWait(GridViewPrivate::cutNumbersMilliseconds);
    EXPECT_EQ(takeSaid(), "");
    EXPECT_EQ(view.column(3).width, 5 * before) << "never narrower";
    EXPECT_EQ(view.column(2).width, view.column(4).width);
    EXPECT_LT(view.column(2).width, 2 * before);
}

TEST_F(GridViewTest, KeysOfTheHeadersComeBeforeTheShortcutsOfTheWindow)
{
    QShortcut sort(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), &view);
    QShortcut other(QKeySequence(Qt::CTRL | Qt::Key_S), &view);
    QObject::connect(&sort, &QShortcut::activated, [this] { said.append("shortcut"); });
    QObject::connect(&other, &QShortcut::activated, [this] { said.append("other shortcut"); });
    click(cell(2, 1));
    key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(takeSaid(), "current 3.1; clicked 3.1; sort 1; other shortcut");
}

TEST_F(GridViewTest, KeysReachTheHeadersOfAnEmptyTable)
{
    source.reorder([](auto &rows) { rows.clear(); });
    view.refreshNow();
    takeSaid();
    key(Qt::Key_Up, Qt::AltModifier);
    const QImage first = view.grab(view.headerRect(2)).toImage();
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    key(Qt::Key_Down);
    key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    key(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(takeSaid(), "header menu 0; current 0.1; current 0.2; sort 2; header menu 2");
    EXPECT_NE(view.grab(view.headerRect(2)).toImage(), first) << "where the keyboard is can be seen";
    source.insert(0);
    view.refreshNow();
    key(Qt::Key_Down);
    EXPECT_EQ(current(), "101.2");
}

TEST_F(GridViewTest, TheKeyboardGoesOnWhereTheCurrentRowWas)
{
    click(cell(4, 0));
    takeSaid();
    source.remove(4);
    view.refreshNow();
    QTRY_VERIFY_WITH_TIMEOUT((view.refreshNow(), view.currentRow() == NoGridRow), 5000);
    EXPECT_EQ(takeSaid(), "current 0.0");
    key(Qt::Key_Return);
    key(Qt::Key_Space);
    EXPECT_EQ(takeSaid(), "") << "nothing happens to a record that nobody chose";
    key(Qt::Key_Down);
    EXPECT_EQ(current(), "6.0") << "the row that took its place";
}

TEST_F(GridViewTest, SelectionAndViewStayOnTheirRecords)
{
    view.scrollToRow(40);
    view.setCurrent(37, 1);
    key(Qt::Key_Down, Qt::ShiftModifier);
    key(Qt::Key_Down, Qt::ShiftModifier);
    const std::string before = rowsOnScreen();
    for (int i = 0; i < 7; ++i)
        source.insert(0);
    view.refreshNow();
    EXPECT_EQ(rowsOnScreen(), before);
    source.reorder([](auto &rows) { std::reverse(rows.begin(), rows.end()); });
    view.setSortMarks({{1, true}});
    view.refreshNow();
    EXPECT_EQ(selected(), "39 38 37");
    EXPECT_EQ(view.currentRow(), 39u);
    EXPECT_FALSE(view.cellRect(39, 1).isEmpty()) << "still in sight";
}

TEST_F(GridViewTest, CountsTheRowsThatCameWhileTheViewWasElsewhere)
{
    view.setFollow(GridFollow::Bottom);
    view.scrollToFollowedEdge();
    source.insert(source.rowCount());
    view.refreshNow();
    EXPECT_FALSE(view.cellRect(101, 0).isEmpty());
    turnWheel(QPoint(0, 120));
    takeSaid();
    source.insert(source.rowCount());
    source.insert(source.rowCount());
    view.refreshNow();
    EXPECT_EQ(takeSaid(), "unseen 2");
    EXPECT_EQ(view.unseenRows(), 2);
    view.scrollToFollowedEdge();
    EXPECT_EQ(takeSaid(), "unseen 0");
}

TEST_F(GridViewTest, FramesAreKeptApartAndNothingIsPaintedWithoutAReason)
{
    QApplication::processEvents();
    const quint64 frames = view.frameCount();
    for (int i = 0; i < 1000; ++i)
        view.refresh();
    source.asked = 0;
    QTest::qWait(50);
    EXPECT_EQ(view.frameCount(), frames);
    EXPECT_EQ(source.asked, 0);

    QElapsedTimer clock;
    clock.start();
    int changes = 0;
    while (clock.elapsed() < 300) {
        source.setText(2, 1, QString::number(++changes));
        view.refresh();
        QApplication::processEvents();
    }
    const auto shown = view.frameCount() - frames;
    EXPECT_GE(shown, 2u);
    EXPECT_LE(shown, static_cast<quint64>(clock.elapsed() / 16 + 2)) << changes << " changes";
}

TEST_F(GridViewTest, WhatIsShownIsTheSameWhicheverWayItCameAbout)
{
    QString title;
    const auto fresh = [&] {
        GridView other;
        other.setLook(view.look());
        other.setSource(&source);
        other.setColumnOrder(view.columnOrder());
        for (int column = 0; column < source.columns; ++column)
            other.setColumn(column, view.column(column));
        other.setFrozenColumns(view.frozenColumns());
        other.setStatisticsVisible(view.statisticsVisible());
        other.setStatisticsTitle(title);
        other.setRowNumbersVisible(view.rowNumbersVisible());
        other.setSortMarks(view.sortMarks());
        other.resize(view.size());
        other.scrollToRow(source.rowCount() - 1);
        other.scrollToRow(view.firstVisibleRow());
        return other.grab().toImage();
    };
    view.clearFocus();
    view.setStatisticsVisible(true);
    source.statistics = QStringLiteral("77");
    view.setFrozenColumns(1);
    view.setSortMarks({{2, false}, {0, true}});
    source.setText(5, 3, QStringLiteral("a text that does not fit"));
    view.refreshNow();
    EXPECT_EQ(view.grab().toImage(), fresh());
    view.scrollToRow(99);
    view.scrollToRow(60);
    source.insert(3);
    view.resize(300, 320);
    view.setColumnWidth(2, 90);
    view.refreshNow();
    EXPECT_EQ(view.grab().toImage(), fresh());
    QCoreApplication::processEvents();
    source.statistics = QStringLiteral("8"); // narrower, and nothing else but one cell is put on the screen
    source.setText(60, 1, QStringLiteral("x"));
    view.refreshNow();
    QCoreApplication::processEvents();
    const QPixmap onScreen = view.screen()->grabWindow(view.winId());
    EXPECT_EQ(onScreen.toImage().convertToFormat(QImage::Format_RGB32), fresh().convertToFormat(QImage::Format_RGB32));
    GridLook larger = plainLook();
    larger.rowHeight = 36;
    larger.headerHeight = 42;
    larger.textFont.setPixelSize(18);
    larger.scale = 1.5;
    view.setLook(larger);
    view.setRowNumbersVisible(false);
    source.renew();
    view.refreshNow();
    EXPECT_EQ(view.grab().toImage(), fresh());
    view.setStatisticsTitle(title = QStringLiteral("合计"));
    view.refreshNow();
    source.statistics = QStringLiteral("a sum under the title");
    source.setText(60, 1, QStringLiteral("y"));
    view.refreshNow();
    EXPECT_EQ(view.grab().toImage(), fresh()) << "the title stays in front";
    GridColumn column = view.column(1);
    const auto expectFresh = [&](const char *changed) {
        view.setColumn(1, column);
        view.refreshNow();
        const QImage shown = view.grab().toImage();
        EXPECT_EQ(shown, fresh()) << changed;
    };
    column.alignment = Qt::AlignHCenter | Qt::AlignVCenter;
    expectFresh("alignment");
    column.numeric = !column.numeric;
    expectFresh("numeric");
    column.bold = !column.bold;
    expectFresh("bold");
    column.unitSample = QStringLiteral("万");
    expectFresh("unit");
    column.filtered = column.filterable = true;
    expectFresh("funnel");
}

TEST_F(GridViewTest, ColumnsDoNotMoveForOneDigitFewerInTheRowNumbers)
{
    const auto leftWith = [&](qint64 lastNumber) {
        view.setFirstRowNumber(lastNumber - source.rowCount() + 1);
        view.refreshNow();
        return view.headerRect(0).left();
    };
    const int fourDigits = leftWith(1000);
    const int sixDigits = leftWith(100000);
    EXPECT_GT(sixDigits, fourDigits);
    EXPECT_EQ(leftWith(99999), sixDigits) << "a filter takes a digit, and its removal gives it back";
    EXPECT_EQ(leftWith(100000), sixDigits);
    EXPECT_EQ(leftWith(9999), fourDigits);
}

TEST_F(GridViewTest, BadInputChangesNothing)
{
    view.setColumnWidth(-1, 10);
    view.setColumnWidth(99, 10);
    view.setColumnVisible(99, false);
    view.setColumnOrder({99, -5, 4, 4});
    EXPECT_EQ(joined(view.columnOrder()), "4 0 1 2 3");
    view.setColumnDelegate(-1, nullptr);
    view.scrollTo(12345);
    view.scrollToRow(-1);
    view.scrollToRow(100);
    view.scrollToColumn(77);
    view.setFrozenColumns(-3);
    EXPECT_EQ(view.frozenColumns(), 0);
    EXPECT_EQ(view.firstVisibleRow(), 0);
    view.setCurrent(12345, 2);
    EXPECT_EQ(view.currentRow(), NoGridRow);
    view.selectRows({5, 12345, 3});
    EXPECT_EQ(selected(), "3 5");
    view.resize(1, 1);
    view.refreshNow();
    view.grab();
    for (int column = 0; column < 5; ++column)
        view.setColumnVisible(column, false);
    view.resize(400, 268);
    view.refreshNow();
    key(Qt::Key_Right);
    key(Qt::Key_Down);
    click(QPoint(200, 100));
    view.grab();
    view.setSource(nullptr);
    view.refreshNow();
    key(Qt::Key_Down);
    click(QPoint(200, 100));
    turnWheel(QPoint(0, -120));
    view.selectAll();
    view.grab();
    EXPECT_EQ(view.column(0).width, GridColumn().width);
}

TEST_F(GridViewTest, ColumnsThatTheSourceAddsKeepTheOthersAsTheyAre)
{
    view.setColumnOrder({2, 0, 1, 3, 4});
    view.setColumnWidth(3, 77);
    source.columns = 7;
    source.renew();
    view.setColumnWidth(6, 99); // before any frame has shown it
    view.refreshNow();
    EXPECT_EQ(joined(view.columnOrder()), "2 0 1 3 4 5 6");
    EXPECT_EQ(view.column(3).width, 77);
    EXPECT_EQ(view.column(6).width, 99);
    source.columns = 3;
    source.renew();
    view.refreshNow();
    EXPECT_EQ(joined(view.visibleColumns()), "2 0 1");
}

TEST_F(GridViewTest, AToolTipShowsWhatIsCutOff)
{
    source.setText(2, 1, QStringLiteral("a text that does not fit into its column"));
    GridColumn look = view.column(2);
    look.numeric = true;
    view.setColumn(2, look);
    source.setText(2, 2, QStringLiteral("123456789012"));
    view.refreshNow();
    const auto tipAt = [this](const QPoint &at) {
        QHelpEvent event(QEvent::ToolTip, at, view.mapToGlobal(at));
        QApplication::sendEvent(&view, &event);
        return QToolTip::text().toStdString();
    };
    EXPECT_EQ(tipAt(cell(2, 1)), "a text that does not fit into its column");
    EXPECT_EQ(tipAt(cell(2, 2)), "123456789012");
    tipAt(cell(2, 0)); // fits
    QTRY_VERIFY_WITH_TIMEOUT(!QToolTip::isVisible(), 5000);
    view.setColumnWidth(3, 25);
    view.refreshNow();
    EXPECT_EQ(tipAt(header(3)), "Head 3");
}

TEST_F(GridViewTest, AccessibleToolsSeeEveryRowWhereverTheViewIs)
{
    view.setColumnOrder({1, 0, 2, 3, 4});
    view.setColumnVisible(2, false);
    view.scrollToRow(99);
    click(cell(95, 0));
    view.refreshNow();
    QAccessibleInterface *table = QAccessible::queryAccessibleInterface(&view);
    ASSERT_NE(table, nullptr);
    QAccessibleTableInterface *cells = table->tableInterface();
    ASSERT_NE(cells, nullptr);
    EXPECT_EQ(cells->rowCount(), 100);
    EXPECT_EQ(cells->columnCount(), 4);
    EXPECT_EQ(table->childCount(), 404);
    EXPECT_EQ(cells->columnDescription(1), "Head 0");
    EXPECT_EQ(cells->rowDescription(99), "100");
    EXPECT_EQ(cells->rowDescription(100), "");

    QAccessibleInterface *chosen = cells->cellAt(95, 1);
    EXPECT_EQ(chosen->text(QAccessible::Name), "96.0");
    EXPECT_EQ(chosen->rect(), QRect(view.mapToGlobal(view.cellRect(96, 0).topLeft()), view.cellRect(96, 0).size()));
    EXPECT_TRUE(chosen->state().selected && chosen->state().focused);
    EXPECT_EQ(table->focusChild(), chosen);
    EXPECT_EQ(table->childAt(chosen->rect().center().x(), chosen->rect().center().y()), chosen);
    EXPECT_EQ(table->indexOfChild(chosen), 381);
    EXPECT_EQ(cells->cellAt(100, 0), nullptr);

    QAccessibleInterface *above = cells->cellAt(2, 1); // far from the screen
    EXPECT_EQ(above->text(QAccessible::Name), "3.0");
    EXPECT_TRUE(above->rect().isEmpty() && above->state().offscreen);
    EXPECT_FALSE(above->state().selected);
    EXPECT_TRUE(cells->selectRow(2));
    EXPECT_EQ(selected(), "3");
    EXPECT_TRUE(above->state().selected);
    EXPECT_EQ(cells->selectedRows(), QList<int>{2});
    EXPECT_EQ(cells->selectedRowCount(), 1);
    EXPECT_EQ(cells->selectedCellCount(), 4);
    EXPECT_TRUE(cells->unselectRow(2));
    EXPECT_TRUE(cells->selectedRows().isEmpty());

    source.insert(0); // rows move once a second click can no longer follow
    QTRY_VERIFY_WITH_TIMEOUT((view.refreshNow(), chosen->tableCellInterface()->rowIndex() == 96), 5000);
    EXPECT_EQ(chosen->text(QAccessible::Name), "96.0") << "the record that was read, wherever it has gone";
    EXPECT_EQ(cells->cellAt(96, 1), chosen);
    view.setColumnOrder({0, 1, 2, 3, 4});
    view.refreshNow();
    EXPECT_EQ(chosen->tableCellInterface()->columnIndex(), 0);
    EXPECT_EQ(table->indexOfChild(chosen), 384);

    source.reorder([](auto &rows) { rows.resize(3); });
    QTRY_VERIFY_WITH_TIMEOUT((view.refreshNow(), cells->rowCount() == 3), 5000);
    EXPECT_FALSE(chosen->isValid());
    EXPECT_EQ(table->indexOfChild(chosen), -1);
    EXPECT_EQ(chosen->text(QAccessible::Name), "");
}

TEST_F(GridViewTest, AccessibleToolsReadHeadersAndSortByThem)
{
    view.setColumnOrder({1, 0, 2, 3, 4});
    view.setColumnVisible(2, false);
    view.setSortMarks({{3, true}});
    view.refreshNow();
    QAccessibleInterface *table = QAccessible::queryAccessibleInterface(&view);
    QAccessibleTableCellInterface *cell = table->tableInterface()->cellAt(7, 2)->tableCellInterface();
    ASSERT_EQ(cell->columnHeaderCells().size(), 1);
    QAccessibleInterface *third = cell->columnHeaderCells().front();
    EXPECT_EQ(third->role(), QAccessible::ColumnHeader);
    EXPECT_EQ(third->text(QAccessible::Name), "Head 3");
    EXPECT_EQ(third->text(QAccessible::Description).toStdString(), "降序");
    EXPECT_EQ(third->parent(), table);
    EXPECT_EQ(table->indexOfChild(third), 402);
    EXPECT_EQ(table->child(402), third);
    EXPECT_EQ(table->child(404), nullptr);
    EXPECT_EQ(third->rect().topLeft(), view.mapToGlobal(view.headerRect(3).topLeft()));
    EXPECT_EQ(table->childAt(third->rect().center().x(), third->rect().center().y()), third);
    EXPECT_EQ(table->child(400)->text(QAccessible::Description), "");

    QList<int> sorted;
    QObject::connect(&view, &GridView::headerClicked, [&sorted](int column) { sorted << column; });
    third->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(sorted, QList<int>{3});
    view.setEnabled(false);
    third->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(sorted, QList<int>{3});
    view.setColumnVisible(3, false);
    view.refreshNow();
    EXPECT_FALSE(third->isValid());
    EXPECT_EQ(third->text(QAccessible::Name), "");
    EXPECT_EQ(table->indexOfChild(third), -1);
}

TEST_F(GridViewTest, ReadingEveryCellKeepsAFewThousandObjects)
{
    for (int i = 0; i < 9000; ++i)
        source.insert(0);
    view.refreshNow();
    QAccessibleInterface *table = QAccessible::queryAccessibleInterface(&view);
    const QAccessible::Id first = QAccessible::uniqueId(table->tableInterface()->cellAt(0, 0));
    ASSERT_NE(QAccessible::accessibleInterface(first), nullptr);
    for (int i = 1; i < table->childCount(); ++i)
        ASSERT_TRUE(table->child(i)->isValid());
    EXPECT_EQ(QAccessible::accessibleInterface(first), nullptr);
    EXPECT_EQ(table->tableInterface()->cellAt(9099, 4)->text(QAccessible::Name), "100.4");
}
