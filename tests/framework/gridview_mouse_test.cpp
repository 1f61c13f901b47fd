#include <QtCore/QPointer>
#include <QtGui/QContextMenuEvent>
#include <boost/make_shared.hpp>

#include "framework/gridviewfixture.h"
#include "zb/cbasetablecolumnwidgetdelegate.h"

using namespace ZB;

namespace {

class ButtonDelegate : public CBaseTableColumnWidgetDelegate
{
public:
    ButtonDelegate() : CBaseTableColumnWidgetDelegate(2, nullptr) {}
    bool paintCell(const CTableCell &cell, QPainter *) override
    {
        hovered = cell.hovered ? cell.row : hovered;
        return true;
    }
    bool clickCell(const CTableCell &cell, const QPoint &position) override
    {
        clicks.append(QStringLiteral("%1.%2 %3 %4")
                          .arg(cell.row)
                          .arg(cell.column)
                          .arg(cell.text)
                          .arg(QLatin1String(cell.rect.contains(position) ? "inside" : "outside")));
        return true;
    }
    QStringList clicks;
    int hovered = -1;
};

} // namespace

TEST_F(GridViewTest, AClickSelectsTheRowAndMakesTheCellCurrent)
{
    click(cell(3, 2));
    EXPECT_EQ(takeSaid(), "current 4.2; clicked 4.2");
    EXPECT_EQ(selected(), "4");
    click(cell(5, 1), Qt::ShiftModifier);
    EXPECT_EQ(selected(), "4 5 6");
    click(cell(8, 1), Qt::ControlModifier);
    click(cell(4, 1), Qt::ControlModifier);
    EXPECT_EQ(selected(), "4 6 9");
    EXPECT_EQ(current(), "5.1");
    click(cell(7, 1), Qt::ControlModifier);
    click(cell(9, 1), Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(selected(), "4 6 8 9 10");
    takeSaid();
    press(cell(1, 0));
    drag(cell(1, 0) + QPoint(3, 3)); // a hand is never quite still
    release(cell(1, 0) + QPoint(3, 3));
    EXPECT_EQ(takeSaid(), "current 2.0; clicked 2.0");
    click(QPoint(390, 100)); // right of the last cell
    EXPECT_EQ(selected(), "4");
}

TEST_F(GridViewTest, ADragSelectsCellsAndOneOverRowNumbersSelectsRows)
{
    view.setColumnOrder({3, 1, 4, 0, 2});
    view.refreshNow();
    press(cell(2, 1));
    drag(cell(4, 0));
    EXPECT_EQ(selectedCells(), "3 4 5 x 1 4 0");
    drag(cell(1, 3));
    EXPECT_EQ(selectedCells(), "2 3 x 3 1");
    release(cell(1, 3));
    press(cell(6, 4), Qt::ControlModifier);
    drag(cell(7, 4));
    release(cell(7, 4));
    EXPECT_EQ(selectedCells(), "2 3 x 3 1; 7 8 x 4") << "a further block";
    press(cell(8, 4), Qt::ControlModifier);
    release(cell(8, 4));
    EXPECT_EQ(selected(), "9");
    press(QPoint(10, cell(2, 0).y()));
    drag(QPoint(10, cell(5, 0).y()));
    release(QPoint(10, cell(5, 0).y()));
    EXPECT_EQ(selectedCells(), "3 4 5 6 x 3 1 4 0 2");
    click(QPoint(10, 10)); // the corner
    EXPECT_EQ(view.selectedRows().size(), 100u);
}

TEST_F(GridViewTest, ADragChangesTheSelectionOncePerCell)
{
    press(cell(2, 1));
    int changes = 0;
    QObject::connect(&view, &GridView::selectionChanged, &view, [&changes] { ++changes; });
    for (int pixel = 0; pixel < 5; ++pixel)
        drag(cell(4, 2) + QPoint(pixel, 0));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(selectedCells(), "3 4 5 x 1 2");
    drag(cell(2, 1)); // back to where it began
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(selectedCells(), "3 x 1");
    release(cell(2, 1));
}

TEST_F(GridViewTest, RowsDoNotMoveUnderAPressedButton)
{
    press(cell(3, 2));
    const std::string before = rowsOnScreen();
    source.reorder([](auto &rows) { std::reverse(rows.begin(), rows.end()); });
    source.insert(0);
    view.refreshNow();
    EXPECT_EQ(rowsOnScreen(), before);
    const QImage picture = view.grab().toImage();
    source.setText(source.rowOf(6), 2, QStringLiteral("changed"));
    view.refreshNow();
    EXPECT_NE(view.grab().toImage(), picture) << "contents go on";
    takeSaid();
    release(QPoint(150, 28 + 3 * 24 + 5));
    EXPECT_EQ(takeSaid(), "clicked 4.2");
    view.refreshNow();
    EXPECT_EQ(rowsOnScreen(), before) << "a second click may follow";
    QTRY_VERIFY_WITH_TIMEOUT(rowsOnScreen() != before, 5000);
    EXPECT_EQ(view.currentRow(), 4u);
}

TEST_F(GridViewTest, ADoubleClickGoesToTheRecordOfItsFirstPress)
{
    const QPoint at = cell(3, 2);
    click(at);
    source.reorder([](auto &rows) { std::reverse(rows.begin(), rows.end()); });
    view.refreshNow();
    takeSaid();
    send(QEvent::MouseButtonDblClick, at, Qt::LeftButton, Qt::LeftButton, {});
    release(at);
    EXPECT_EQ(takeSaid(), "activated 4.2");
    view.refreshNow();
    EXPECT_NE(rowsOnScreen().substr(0, 8), "1 2 3 4 ") << "now the rows may go where they belong";
    takeSaid();
    click(QPoint(150, 40));
    send(QEvent::MouseButtonDblClick, QPoint(150, 100), Qt::LeftButton, Qt::LeftButton, {});
    release(QPoint(150, 100));
    EXPECT_EQ(takeSaid().find("activated"), std::string::npos) << "two records, two clicks";
}

TEST_F(GridViewTest, AMenuIsForTheRecordAtThePressAndHoldsTheRows)
{
    click(cell(6, 0));
    takeSaid();
    const QPoint at = cell(3, 1);
    GridHold hold;
    QObject::connect(&view, &GridView::contextMenuRequested, [&] { hold = GridHold(&view); });
    press(at, {}, Qt::RightButton);
    source.reorder([](auto &rows) { std::reverse(rows.begin(), rows.end()); });
    view.refreshNow();
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, view.mapToGlobal(at));
    QApplication::sendEvent(&view, &event);
    EXPECT_EQ(takeSaid(), "current 4.1; menu 4.1");
    EXPECT_EQ(selected(), "4");
    const std::string before = rowsOnScreen();
    view.refreshNow();
    EXPECT_EQ(rowsOnScreen(), before);
    hold = GridHold();
    view.refreshNow();
    EXPECT_NE(rowsOnScreen(), before);

    click(cell(source.rowOf(3), 1));
    click(cell(source.rowOf(5), 1), Qt::ShiftModifier);
    ASSERT_EQ(selected(), "5 4 3");
    press(cell(source.rowOf(4), 2), {}, Qt::RightButton);
    release(cell(source.rowOf(4), 2), {}, Qt::RightButton);
    EXPECT_EQ(selected(), "5 4 3") << "a menu for several rows";
}

TEST_F(GridViewTest, AReleaseThatIsLostLeavesNothingHeld)
{
    press(cell(3, 2));
    source.insert(0);
    drag(cell(3, 2), Qt::NoButton); // the release went to another window
    view.refreshNow();
    EXPECT_EQ(view.cellRect(4, 2).top(), 28 + 3 * 24) << "the view is on its rows";
    source.reorder([](auto &rows) { std::reverse(rows.begin(), rows.end()); });
    const std::string before = rowsOnScreen();
    view.refreshNow();
    EXPECT_NE(rowsOnScreen(), before);
}

TEST_F(GridViewTest, HeadersSortMoveResizeAndFilter)
{
    click(header(1));
    click(header(2), Qt::ControlModifier);
    EXPECT_EQ(takeSaid(), "sort 1; sort 2+");

    press(edge(1));
    drag(edge(1) + QPoint(25, 0));
    EXPECT_EQ(view.column(1).width, 85) << "while it is dragged";
    release(edge(1) + QPoint(25, 0));
    EXPECT_EQ(takeSaid(), "resized 1 to 85");
    view.refreshNow();

    press(header(0));
    drag(header(2) + QPoint(20, 0));
    release(header(2) + QPoint(20, 0));
    EXPECT_EQ(takeSaid(), "moved 0 to 2");
    EXPECT_EQ(joined(view.visibleColumns()), "1 2 0 3 4");
    view.refreshNow();

    press(header(3));
    drag(header(1));
    QTest::keyClick(&view, Qt::Key_Escape);
    release(header(1));
    EXPECT_EQ(takeSaid(), "") << "given up";

    press(header(3));
    drag(header(3) + QPoint(0, 100));
    release(header(3) + QPoint(0, 100));
    EXPECT_EQ(takeSaid(), "") << "pulled away from the header";

    GridColumn look = view.column(3);
    look.filterable = true;
    view.setColumn(3, look);
    view.refreshNow();
    click(view.headerRect(3).topRight() + QPoint(-12, 10));
    EXPECT_EQ(takeSaid(), "filter 3");
}

TEST_F(GridViewTest, AHeadersTextMakesRoomForTheFunnelUnderTheMouse)
{
    constexpr int width = 64; // the text and the funnel, side by side
    constexpr int funnel = 17;
    const auto inked = [this](const QRect &rect) {
        const QImage image = view.grab(rect).toImage();
        int count = 0;
        for (int y = 1; y < image.height() - 1; ++y)
            for (int x = 0; x < image.width(); ++x)
                count += image.pixel(x, y) != image.pixel(0, 0);
        return count;
    };
    for (const Qt::AlignmentFlag alignment : {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight}) {
        GridColumn look;
        look.width = width;
        look.filterable = true;
        look.alignment = alignment | Qt::AlignVCenter;
        view.setColumn(1, look);
        drag(cell(2, 2), Qt::NoButton);
        view.refreshNow();
        const QRect whole = view.headerRect(1).adjusted(0, 0, -1, 0);
        const int before = inked(whole);
        drag(header(1), Qt::NoButton);
        view.refreshNow();
        const QRect beside =
            alignment == Qt::AlignRight ? whole.adjusted(funnel, 0, 0, 0) : whole.adjusted(0, 0, -funnel, 0);
        EXPECT_GT(before, 0);
        EXPECT_EQ(inked(beside), before) << int(alignment);
    }
}

TEST_F(GridViewTest, ADoubleClickOnAnEdgeFitsTheColumn)
{
    source.setText(4, 1, QStringLiteral("a text that is much longer than its column"));
    source.setText(50, 1, QString(500, QLatin1Char('w'))); // not on the screen
    view.refreshNow();
    doubleClick(edge(1));
    const int fitted = view.column(1).width;
    EXPECT_GT(fitted, 200);
    EXPECT_LT(fitted, 400);
    EXPECT_NE(takeSaid().find("resized 1 to " + std::to_string(fitted)), std::string::npos);
    source.setText(4, 1, QStringLiteral("i"));
    view.fitColumn(1);
    EXPECT_LT(view.column(1).width, 100);
    EXPECT_GE(view.column(1).width, 40) << "its header needs that";
    source.setText(4, 1, QString(500, QLatin1Char('w')));
    view.fitColumn(1, 150);
    EXPECT_EQ(view.column(1).width, 150);
}

TEST_F(GridViewTest, TheWheelScrollsRowsAndWithShiftColumns)
{
    const int lines = QApplication::wheelScrollLines();
    turnWheel(QPoint(0, -120));
    EXPECT_EQ(view.firstVisibleRow(), lines);
    for (int i = 0; i < 8; ++i)
        turnWheel(QPoint(0, -15)); // a slow wheel
    EXPECT_EQ(view.firstVisibleRow(), 2 * lines);
    turnWheel(QPoint(0, 100000));
    EXPECT_EQ(view.firstVisibleRow(), 0);
    for (int column = 0; column < 5; ++column)
        view.setColumnWidth(column, 150);
    view.refreshNow();
    const int before = view.cellRect(1, 1).left();
    turnWheel(QPoint(0, -120), Qt::ShiftModifier);
    const int after = view.cellRect(1, 1).left();
    EXPECT_LT(after, before);
    turnWheel(QPoint(120, 0));
    EXPECT_EQ(view.cellRect(1, 1).left(), before);
}

TEST_F(GridViewTest, DraggingBeyondTheEdgeScrollsAndSelectsOn)
{
    press(cell(5, 1));
    drag(QPoint(150, view.height() + 60));
    QTRY_VERIFY_WITH_TIMEOUT(view.firstVisibleRow() > 20, 5000);
    release(QPoint(150, view.height() + 60));
    const std::vector<GridCells> blocks = view.selectedCells();
    ASSERT_EQ(blocks.size(), 1u);
    ASSERT_GT(blocks[0].rows.size(), 20u);
    EXPECT_EQ(blocks[0].rows.front(), 6u);
    for (size_t i = 0; i < blocks[0].rows.size(); ++i)
        ASSERT_EQ(blocks[0].rows[i], 6 + i);
}

TEST_F(GridViewTest, ADelegateHearsClicksAndHovering)
{
    auto delegate = boost::make_shared<ButtonDelegate>();
    view.setColumnDelegate(2, delegate);
    view.refreshNow();
    click(cell(4, 2));
    EXPECT_EQ(delegate->clicks.join(QLatin1Char(';')), "4.2 5.2 inside");
    EXPECT_EQ(takeSaid(), "current 5.2") << "used up";
    press(cell(4, 2));
    drag(cell(6, 2));
    release(cell(6, 2));
    EXPECT_EQ(delegate->clicks.size(), 1);
    drag(cell(7, 2), Qt::NoButton);
    view.refreshNow();
    EXPECT_EQ(delegate->hovered, 7);
}

TEST_F(GridViewTest, TheViewMayBeDeletedByWhatItSays)
{
    const auto make = [this] {
        auto *made = new GridView;
        made->setSource(&source);
        made->resize(400, 268);
        made->show();
        made->refreshNow();
        return QPointer<GridView>(made);
    };
    const auto sendTo = [](GridView *target, QEvent::Type type, const QPoint &at) {
        QMouseEvent event(type, at, target->mapToGlobal(at), Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, {});
        QApplication::sendEvent(target, &event);
    };
    const QPoint inCell(150, 100);
    QPointer<GridView> doomed = make();
    QObject::connect(doomed.data(), &GridView::clicked, [&] { delete doomed.data(); });
    sendTo(doomed, QEvent::MouseButtonPress, inCell);
    sendTo(doomed, QEvent::MouseButtonRelease, inCell);
    EXPECT_TRUE(doomed.isNull());

    doomed = make();
    QObject::connect(doomed.data(), &GridView::currentChanged, [&] { delete doomed.data(); });
    sendTo(doomed, QEvent::MouseButtonPress, inCell);
    EXPECT_TRUE(doomed.isNull());

    doomed = make();
    QObject::connect(doomed.data(), &GridView::headerClicked, [&] { delete doomed.data(); });
    sendTo(doomed, QEvent::MouseButtonPress, QPoint(150, 10));
    sendTo(doomed, QEvent::MouseButtonRelease, QPoint(150, 10));
    EXPECT_TRUE(doomed.isNull());

    doomed = make();
    QObject::connect(doomed.data(), &GridView::visibleRowsChanged, [&] { delete doomed.data(); });
    doomed->scrollToRow(50);
    EXPECT_TRUE(doomed.isNull());
}
