#include <QtCore/QPointer>
#include <QtGui/QCursor>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>
#include <fmt/format.h>
#include <log4cxx/logger.h>

#include "order/cquotesgraphwidget.h"
#include "utils/clogcenter.h"

namespace KV {

namespace {

constexpr int eventPriceType = 1127;
constexpr int eventPrice = 1128;
constexpr int eventVolume = 1129;
constexpr int eventCancel = 1243;
constexpr int userActionMark = 3535;

void logUserAction(const char *handler, const std::string &text)
{
    const log4cxx::LoggerPtr logger = utils::getStdLogger();
    if (logger->isInfoEnabled())
        LOG4CXX_INFO(logger, fmt::format("[{0}] [KV::CQuotesGraphWidget::{1}] {2}", userActionMark, handler, text));
}

} // namespace

bool CQuotesGraphWidget::deliverVolume(double volume)
{
    const QPointer<CQuotesGraphWidget> self(this);
    deliverEvent(eventVolume, 0, 0, quotevalue::clickedText(volume), nullptr);
    return !self.isNull();
}

bool CQuotesGraphWidget::deliverPrice(double price, const char *handler)
{
    logUserAction(handler, fmt::format("User click price {0} in tradeType {1}", price, tradeType));
    const QPointer<CQuotesGraphWidget> self(this);
    deliverEvent(eventPrice, 0, 0, quotevalue::clickedText(price), nullptr);
    return !self.isNull();
}

bool CQuotesGraphWidget::deliverPriceType(int type, const char *handler)
{
    logUserAction(handler, fmt::format("User click priceType {0} in tradeType {1}", type, tradeType));
    const QPointer<CQuotesGraphWidget> self(this);
    deliverEvent(eventPriceType, 0, type, QString(), nullptr);
    return !self.isNull();
}

bool CQuotesGraphWidget::deliverCancel(const QuoteClickAreas::Cancel &cancel)
{
    const QPointer<CQuotesGraphWidget> self(this);
    deliverEvent(eventCancel, cancel.level, cancel.side, stockCode, nullptr);
    return !self.isNull();
}

/// What lies under the pointer is settled before anybody hears of it: a handler may repaint the ladder, or destroy it.
void CQuotesGraphWidget::mouseReleaseEvent(QMouseEvent *event)
{
    CBaseWidget::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton)
        return;
    keyboardFocus = false;
    setFramed(false);
    event->accept(); // what nobody accepts goes on to the parent, and is looked at again after a handler destroyed this
    const QuoteClickAreas::Hit hit = areas.at(event->pos());
    if (hit.volume && !deliverVolume(*hit.volume))
        return;
    doubleClick = false;
    if (hit.price && !deliverPrice(*hit.price, "mouseReleaseEvent"))
        return;
    if (hit.priceType && !deliverPriceType(*hit.priceType, "mouseReleaseEvent"))
        return;
    for (const QuoteClickAreas::Cancel &cancel : hit.cancels)
        if (!deliverCancel(cancel))
            return;
}

void CQuotesGraphWidget::mouseDoubleClickEvent(QMouseEvent *event)
{
    CBaseWidget::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton)
        doubleClick = true;
}

void CQuotesGraphWidget::mouseMoveEvent(QMouseEvent *event)
{
    CBaseWidget::mouseMoveEvent(event);
    if (areas.contains(event->pos()))
        setCursor(Qt::PointingHandCursor);
    else if (cursor().shape() != Qt::ArrowCursor)
        setCursor(Qt::ArrowCursor);
    else
        return;
    update();
}

void CQuotesGraphWidget::leaveEvent(QEvent *event)
{
    CBaseWidget::leaveEvent(event);
    update();
}

/// Where the pointer rests on the ladder. Asked with each picture: the ladder may appear, move or change its layout
/// under a pointer that does not move.
std::optional<QPoint> CQuotesGraphWidget::pointer() const
{
    const QPoint onScreen = QCursor::pos();
    const QPoint point = mapFromGlobal(onScreen);
    const bool isHere = isEnabled() && rect().contains(point) && QApplication::widgetAt(onScreen) == this;
    return isHere ? std::optional<QPoint>(point) : std::nullopt;
}

/// The hand comes and goes with what was painted below the pointer.
void CQuotesGraphWidget::updateHand()
{
    const bool isHand = view.mouse && areas.contains(*view.mouse);
    if (isHand != (cursor().shape() == Qt::PointingHandCursor))
        setCursor(isHand ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

} // namespace KV
