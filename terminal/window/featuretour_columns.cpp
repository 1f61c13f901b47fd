#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>

#include "grid/gridview.h"
#include "records/fieldids.h"
#include "table/chpfdatatable.h"
#include "window/featuretour.h"
#include "window/mainwindow.h"
#include "window/touredtable.h"
#include "window/userhand.h"
#include "zb/cuiresource.h"

namespace terminal {

using namespace refhost;

namespace {

const Qt::KeyboardModifiers controlShift = Qt::ControlModifier | Qt::ShiftModifier;

} // namespace

/// The button is still down: the header goes with the mouse.
void FeatureTour::columnDragged()
{
    const QPoint from = orders->header(OrderStatus);
    const QPoint to = orders->header(OrderQuantity) - QPoint(ZB::scaled(20), 0);
    UserHand::drag(&orders->grid(), from, to);
    take();
    UserHand::release(&orders->grid(), to);
}

/// By a double-click on the edge of its header.
void FeatureTour::columnFitted()
{
    const QPoint edge = orders->edge(InstrumentName);
    UserHand::drag(&orders->grid(), edge, edge + QPoint(ZB::scaled(90), 0));
    UserHand::release(&orders->grid(), edge + QPoint(ZB::scaled(90), 0));
    UserHand::doubleClick(&deals->grid(), deals->edge(DealAmount));
}

/// A number that does not fit, and the tool tip that shows all of it.
void FeatureTour::numberTooNarrow()
{
    const QPoint edge = deals->edge(DealBuyOrder);
    UserHand::drag(&deals->grid(), edge, edge - QPoint(ZB::scaled(40), 0));
    UserHand::release(&deals->grid(), edge - QPoint(ZB::scaled(40), 0));
    bring(*deals, DealBuyOrder);
    deals->grid().refreshNow();
    UserHand::rest(&deals->grid(), deals->cell(2, DealBuyOrder));
}

void FeatureTour::columnHidden()
{
    headerMenuOf(*orders, OrderCancelled);
    UserHand::choose(QStringLiteral("隐藏此列"));
}

void FeatureTour::columnBox()
{
    bringRightEdge(*orders);
    focusCell(*orders, 0, OrderPrice);
    UserHand::key(Qt::Key_O, controlShift);
}

/// Saved under two names; the list of names is open.
void FeatureTour::columnSets()
{
    columnBox();
    QWidget *const box = QApplication::activePopupWidget();
    auto *sets = box ? box->findChild<QComboBox *>() : nullptr;
    if (!sets)
        return;
    for (const QString &saved : {QStringLiteral("盯盘"), QStringLiteral("成交核对")}) {
        sets->setFocus(Qt::MouseFocusReason);
        sets->lineEdit()->selectAll();
        UserHand::type(saved);
        UserHand::pushButton(box, QStringLiteral("保存"));
    }
    UserHand::click(sets, QPoint(sets->width() - ZB::scaled(8), sets->height() / 2));
}

/// Every column is shown, the first three stay in place, and the last one is in sight.
void FeatureTour::columnsFrozen()
{
    columnBox();
    UserHand::pushButton(QApplication::activePopupWidget(), QStringLiteral("全部显示"));
    UserHand::pushButton(QApplication::activePopupWidget(), QStringLiteral("关闭"));
    headerMenuOf(*orders, OrderCode);
    UserHand::choose(QStringLiteral("冻结到此列"));
    focusCell(*orders, 1, OrderCode);
    UserHand::key(Qt::Key_End);
}

/// Without row numbers and statistics row.
void FeatureTour::rowsOnly()
{
    columnBox();
    for (const QString &part : {QStringLiteral("行号"), QStringLiteral("统计行")})
        UserHand::pushButton(QApplication::activePopupWidget(), part);
}

} // namespace terminal
