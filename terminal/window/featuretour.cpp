#include "window/featuretour.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>
#include <algorithm>

#include "grid/gridview.h"
#include "popups/popupframe.h"
#include "table/chpfdatatable.h"
#include "window/dealstreampanel.h"
#include "window/mainwindow.h"
#include "window/marketpage.h"
#include "window/orderstreampanel.h"
#include "window/pagedstreamtable.h"
#include "window/touredtable.h"
#include "window/tourwait.h"
#include "window/userhand.h"
#include "zb/cuiresource.h"

namespace terminal {

namespace {

constexpr int rowsOfPages = 250;   ///< so that there are pages to turn
constexpr int rowsOfWork = 20000;  ///< take long enough to copy that its progress can be seen
constexpr int longestWork = 30000; ///< milliseconds, far more than it takes
constexpr int savingTime = 700;    ///< milliseconds after which the tables have saved their settings
constexpr int besidePopup = 40;    ///< pixels at 100 %

/// As a table of this kind starts out: nothing is known of it in the tour's own configuration.
template <typename Panel>
ZB::CBaseTableSettingParam plainSetting()
{
    Panel fresh;
    return fresh.table().getTableSetting();
}

} // namespace

FeatureTour::FeatureTour(MainWindow &toured)
    : window(toured),
      orders(std::make_unique<TouredTable>(toured.marketPage().orderStream(), plainSetting<OrderStreamPanel>())),
      deals(std::make_unique<TouredTable>(toured.marketPage().dealStream(), plainSetting<DealStreamPanel>()))
{
    orders->bringNew(rowsOfPages - orders->panel().allCount());
    deals->bringNew(rowsOfWork - deals->panel().allCount());
}

/// The tables save what they are given back a moment later: into the tour's configuration still.
FeatureTour::~FeatureTour()
{
    tidy();
    orders.reset();
    deals.reset();
    waitFor([] { return false; }, savingTime);
}

const std::vector<FeatureTour::Stop> &FeatureTour::stops()
{
    using T = FeatureTour;
    static const std::vector<Stop> all = {
        {"sorted", &T::sorted},
        {"sorted-by-several", &T::sortedBySeveral},
        {"sorting", &T::sorting},
        {"header-menu", &T::headerMenu},
        {"filter-box", &T::filterBox},
        {"filter-search", &T::filterSearch},
        {"filtered", &T::filtered},
        {"filter-contains", &T::filterContains},
        {"only-this-value", &T::onlyThisValue},
        {"nothing-left", &T::nothingLeft},
        {"by-status", &T::byStatus},
        {"column-dragged", &T::columnDragged},
        {"column-fitted", &T::columnFitted},
        {"number-too-narrow", &T::numberTooNarrow},
        {"column-hidden", &T::columnHidden},
        {"column-box", &T::columnBox},
        {"column-sets", &T::columnSets},
        {"columns-frozen", &T::columnsFrozen},
        {"rows-only", &T::rowsOnly},
        {"row-menu", &T::rowMenu},
        {"rows-selected", &T::rowsSelected},
        {"cells-selected", &T::cellsSelected},
        {"found", &T::found},
        {"not-found", &T::notFound},
        {"mark-box", &T::markBox},
        {"rows-marked", &T::rowsMarked},
        {"paused", &T::paused},
        {"new-rows", &T::newRows},
        {"changed-cells", &T::changedCells},
        {"other-page", &T::otherPage},
        {"empty-table", &T::emptyTable},
        {"copying", &T::copying},
        {"export-box", &T::exportBox},
        {"exported", &T::exported},
        {"exporting", &T::exporting},
    };
    return all;
}

QStringList FeatureTour::names()
{
    QStringList all;
    for (const Stop &stop : stops())
        all.append(QStringLiteral("%1-%2").arg(all.size() + 1, 2, 10, QLatin1Char('0')).arg(QLatin1String(stop.name)));
    return all;
}

bool FeatureTour::run(const Picture &takePicture)
{
    picture = takePicture;
    const QStringList all = names();
    for (int number = 0; number < all.size() && fine; ++number) {
        name = all[number];
        visit(stops()[static_cast<size_t>(number)]);
    }
    tidy();
    return fine;
}

void FeatureTour::visit(const Stop &stop)
{
    window.showPage(window.marketPage());
    tidy();
    taken = false;
    (this->*stop.show)();
    if (taken)
        return;
    settle();
    take();
}

/// Closes what is open and takes off what a feature has put on.
void FeatureTour::tidy()
{
    QToolTip::hideText();
    while (QWidget *popup = QApplication::activePopupWidget())
        popup->close();
    for (QWidget *each : QApplication::topLevelWidgets())
        if (each != &window && each->isVisible())
            each->close();
    // A menu holds the rows below it until it is gone, which would be after the tour.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    window.activateWindow();
    for (TouredTable *table : {orders.get(), deals.get()}) {
        UserHand::leave(&table->grid());
        table->tidy();
    }
    orders->grid().setFocus();
    settle();
    for (TouredTable *table : {orders.get(), deals.get()})
        table->showNewest();
}

/// No table is sorting or filtering any more.
void FeatureTour::settle()
{
    const auto isSettled = [this] {
        return orders->table().workProgress() >= 1000 && deals->table().workProgress() >= 1000;
    };
    waitFor(isSettled, longestWork);
    QApplication::processEvents();
}

/// A box that is higher than the screen that there is off screen has been pushed over the header that it is about: to
/// where there would have been room for it, with the list that may be open in it.
void FeatureTour::lowerBox() const
{
    int missing = 0;
    std::vector<QWidget *> popups;
    for (QWidget *each : QApplication::topLevelWidgets()) {
        if (!each->isVisible() || each->windowType() != Qt::Popup)
            continue;
        popups.push_back(each);
        if (qobject_cast<ZB::PopupFrame *>(each))
            missing = boxTop - each->y();
    }
    for (QWidget *popup : popups)
        popup->move(popup->x(), popup->y() + std::max(0, missing));
}

/// Everything that is on its way to the screen is on it.
void FeatureTour::take()
{
    lowerBox();
    window.showNow();
    QApplication::processEvents();
    for (TouredTable *table : {orders.get(), deals.get()})
        table->grid().refreshNow();
    taken = true;
    fine = fine && picture(name);
}

/// Moves the window so that there is room on the screen for what opens below a header: off screen there is not always
/// room for the whole window.
void FeatureTour::bring(const TouredTable &table, int field)
{
    const QPoint header = table.grid().mapTo(&window, table.header(field));
    window.move(ZB::scaled(2 * besidePopup) - header.x(), ZB::scaled(besidePopup) - header.y());
    boxTop = table.grid().mapToGlobal(QPoint(0, table.grid().look().headerHeight)).y();
}

/// The same for what opens at the right edge of a table.
void FeatureTour::bringRightEdge(const TouredTable &table)
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const QPoint corner = table.grid().mapTo(&window, table.grid().rect().topRight());
    window.move(screen.right() - corner.x(), -corner.y());
    boxTop = table.grid().mapToGlobal(QPoint(0, table.grid().look().headerHeight)).y();
}

/// The same for what opens over the middle of the window.
void FeatureTour::bringMiddle()
{
    window.move(QGuiApplication::primaryScreen()->availableGeometry().center() - window.rect().center());
}

void FeatureTour::menuOf(TouredTable &table, int line, int field)
{
    bring(table, field);
    UserHand::click(&table.grid(), table.cell(line, field), Qt::NoModifier, Qt::RightButton);
}

void FeatureTour::headerMenuOf(TouredTable &table, int field)
{
    bring(table, field);
    UserHand::click(&table.grid(), table.header(field), Qt::NoModifier, Qt::RightButton);
}

/// The keyboard is in the table, and this is its current cell.
void FeatureTour::focusCell(TouredTable &table, int line, int field)
{
    window.activateWindow(); // off screen nobody gives the keyboard back when a menu has closed
    QApplication::processEvents();
    UserHand::click(&table.grid(), table.cell(line, field));
    table.grid().setFocus();
}

} // namespace terminal
