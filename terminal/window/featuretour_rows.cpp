#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>

#include "grid/gridview.h"
#include "records/fieldids.h"
#include "table/chpfdatatable.h"
#include "window/featuretour.h"
#include "window/mainwindow.h"
#include "window/touredtable.h"
#include "window/tourwait.h"
#include "window/tradepage.h"
#include "window/userhand.h"

namespace terminal {

using namespace refhost;

namespace {

constexpr int findingTime = 10000; ///< milliseconds, far more than it takes
constexpr int answering = 150;     ///< milliseconds in which a table has an answer on the screen
constexpr int arrivals = 12;
const Qt::KeyboardModifiers controlShift = Qt::ControlModifier | Qt::ShiftModifier;

} // namespace

void FeatureTour::rowMenu()
{
    focusCell(*orders, 2, OrderDirection);
    menuOf(*orders, 2, OrderDirection);
}

/// A stretch of rows and a single one.
void FeatureTour::rowsSelected()
{
    focusCell(*orders, 3, OrderPrice);
    UserHand::click(&orders->grid(), orders->cell(8, OrderPrice), Qt::ShiftModifier);
    UserHand::click(&orders->grid(), orders->cell(11, OrderPrice), Qt::ControlModifier);
}

/// Two blocks of cells.
void FeatureTour::cellsSelected()
{
    deals->grid().setFocus();
    UserHand::drag(&deals->grid(), deals->cell(3, DealPrice), deals->cell(9, DealAmount));
    UserHand::release(&deals->grid(), deals->cell(9, DealAmount));
    UserHand::drag(&deals->grid(), deals->cell(12, DealCode), deals->cell(14, DealCode), Qt::ControlModifier);
    UserHand::release(&deals->grid(), deals->cell(14, DealCode), Qt::ControlModifier);
    UserHand::key(Qt::Key_C, controlShift);
}

void FeatureTour::found()
{
    focusCell(*orders, 0, OrderCode);
    UserHand::key(Qt::Key_F, Qt::ControlModifier);
    QApplication::processEvents(); // the bar takes its room
    UserHand::type(QStringLiteral("00"));
    waitFor([this] { return orders->grid().currentColumn() >= 0; }, findingTime);
    UserHand::key(Qt::Key_F3);
    waitFor([] { return false; }, answering);
    take();
    UserHand::key(Qt::Key_Escape);
}

void FeatureTour::notFound()
{
    focusCell(*orders, 0, OrderCode);
    UserHand::key(Qt::Key_F, Qt::ControlModifier);
    UserHand::type(QStringLiteral("没有这样的字"));
    waitFor([] { return false; }, answering);
    take();
    UserHand::key(Qt::Key_Escape);
}

void FeatureTour::markBox()
{
    bringRightEdge(*deals);
    focusCell(*deals, 0, DealQuantity);
    UserHand::key(Qt::Key_M, controlShift);
    UserHand::pushButton(QApplication::activePopupWidget(), QStringLiteral("添加规则"));
    QWidget *const box = QApplication::activePopupWidget();
    if (!box)
        return;
    const char *const thresholds[] = {"1000", "3万"};
    int line = 0;
    for (QLineEdit *field : box->findChildren<QLineEdit *>()) {
        field->setFocus(Qt::MouseFocusReason);
        UserHand::type(QString::fromUtf8(thresholds[line++ % 2]));
    }
    const auto choices = box->findChildren<QComboBox *>();
    if (choices.size() >= 3) {
        choices[2]->setFocus(Qt::MouseFocusReason); // what the second rule is about: the next number
        UserHand::key(Qt::Key_Down);
    }
}

void FeatureTour::rowsMarked()
{
    markBox();
    UserHand::pushButton(QApplication::activePopupWidget(), QStringLiteral("关闭"));
    deals->grid().setCurrent(0, -1);
}

void FeatureTour::paused()
{
    for (TouredTable *table : {orders.get(), deals.get()}) {
        table->grid().setFocus();
        UserHand::key(Qt::Key_Pause);
        table->bringNew(arrivals);
    }
    waitFor([] { return false; }, answering); // the sign follows with the table's clock
}

/// Rows that have come while the view was elsewhere.
void FeatureTour::newRows()
{
    deals->grid().setFocus();
    UserHand::key(Qt::Key_Home, Qt::ControlModifier);
    deals->grid().refreshNow();
    deals->bringNew(arrivals);
    waitFor([] { return false; }, answering); // the sign follows with the next frame
}

void FeatureTour::changedCells()
{
    orders->fillOrder();
}

void FeatureTour::otherPage()
{
    UserHand::pushButton(&orders->table(), QStringLiteral("首页"));
    UserHand::pushButton(&orders->table(), QStringLiteral("下一页"));
}

void FeatureTour::emptyTable()
{
    window.showPage(window.tradePage());
}

} // namespace terminal
