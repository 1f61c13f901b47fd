#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>

#include "grid/gridview.h"
#include "popups/filterpopup.h"
#include "records/fieldids.h"
#include "table/chpfdatatable.h"
#include "window/featuretour.h"
#include "window/mainwindow.h"
#include "window/orderstreampanel.h"
#include "window/touredtable.h"
#include "window/tourwait.h"
#include "window/userhand.h"

namespace terminal {

using namespace refhost;

namespace {

constexpr int gatheringTime = 10000; ///< milliseconds, far more than it takes
const Qt::KeyboardModifiers controlShift = Qt::ControlModifier | Qt::ShiftModifier;

ZB::FilterPopup *openBox()
{
    return qobject_cast<ZB::FilterPopup *>(QApplication::activePopupWidget());
}

} // namespace

void FeatureTour::sorted()
{
    UserHand::click(&deals->grid(), deals->header(DealAmount));
    settle();
    deals->grid().scrollToRow(0);
}

void FeatureTour::sortedBySeveral()
{
    UserHand::click(&deals->grid(), deals->header(DealCode));
    UserHand::click(&deals->grid(), deals->header(DealCode)); // turned over: from the first code on
    UserHand::click(&deals->grid(), deals->header(DealDirection), Qt::ControlModifier);
    focusCell(*deals, 0, DealAmount);
    UserHand::key(Qt::Key_D, controlShift);
    deals->grid().scrollToRow(0);
}

/// The progress of a sort that takes longer than a blink, and the way to stop it.
void FeatureTour::sorting()
{
    takeWhileBusy(
        *orders, [this] { UserHand::click(&orders->grid(), orders->header(InstrumentName)); },
        [this] { return orders->table().workProgress() >= 1000; });
    settle();
    if (!taken)
        take();
    // Pages keep an order when its sort is taken off: back to that of arrival.
    orders->table().setSortColumns({{orders->column(OrderEntryTime), 0}});
    settle();
}

void FeatureTour::headerMenu()
{
    UserHand::click(&deals->grid(), deals->header(DealCode));
    settle();
    headerMenuOf(*deals, DealCode);
}

void FeatureTour::openFilter(TouredTable &table, int field)
{
    bring(table, field);
    UserHand::hover(&table.grid(), table.funnel(field));
    UserHand::click(&table.grid(), table.funnel(field));
    waitFor([] { return !openBox() || openBox()->isGathered(); }, gatheringTime);
}

void FeatureTour::filterBox()
{
    openFilter(*deals, DealCode);
}

void FeatureTour::filterSearch()
{
    bring(*orders, OrderStatus);
    focusCell(*orders, 0, OrderStatus);
    UserHand::key(Qt::Key_Down, Qt::AltModifier);
    waitFor([] { return !openBox() || openBox()->isGathered(); }, gatheringTime);
    UserHand::type(QStringLiteral("成"));
}

void FeatureTour::filtered()
{
    openFilter(*deals, DealDirection);
    UserHand::type(QStringLiteral("买"));
    UserHand::key(Qt::Key_Return);
}

void FeatureTour::filterContains()
{
    openFilter(*orders, OrderCode);
    QWidget *const box = openBox();
    const auto fields = box ? box->findChildren<QLineEdit *>() : QList<QLineEdit *>();
    if (fields.isEmpty())
        return;
    UserHand::click(fields.back(), fields.back()->rect().center());
    fields.back()->setFocus(Qt::MouseFocusReason);
    UserHand::type(QStringLiteral("600 605"));
}

void FeatureTour::onlyThisValue()
{
    menuOf(*deals, 2, DealCode);
    UserHand::choose(QStringLiteral("只看"));
}

void FeatureTour::nothingLeft()
{
    auto *search = orders->panel().findChild<QLineEdit *>();
    search->setFocus(Qt::MouseFocusReason);
    UserHand::type(QStringLiteral("BTC"));
    UserHand::key(Qt::Key_Return);
    settle();
    take();
    UserHand::key(Qt::Key_Escape);
}

void FeatureTour::byStatus()
{
    UserHand::pushButton(&orders->panel(), QStringLiteral("未完成"));
}

} // namespace terminal
