#include <QtCore/QPointer>
#include <QtGui/QCursor>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>
#include <algorithm>
#include <fmt/format.h>
#include <log4cxx/logger.h>

#include "order/cquotesaccessible.h"
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

void CQuotesGraphWidget::focusInEvent(QFocusEvent *event)
{
    CBaseWidget::focusInEvent(event);
    update();
    CQuotesAccessible::focusCame(this);
}

void CQuotesGraphWidget::focusOutEvent(QFocusEvent *event)
{
    CBaseWidget::focusOutEvent(event);
    update();
}

/// The levels with a price, from the highest ask to the lowest bid.
std::vector<QuoteCursor> CQuotesGraphWidget::reachable() const
{
    std::vector<QuoteCursor> levels;
    const auto add = [&](bool ask, int level) {
        const CQuoteData *quote = view.level({ask, level});
        if (quote && quotevalue::isPrice(quote->price))
            levels.push_back({ask, level});
    };
    for (int i = QuotesLayout::levels - 1; i >= 0; --i)
        add(true, i);
    for (int i = 0; i < QuotesLayout::levels; ++i)
        add(false, i);
    return levels;
}

void CQuotesGraphWidget::setCursorLevel(const std::optional<QuoteCursor> &level)
{
    if (cursorLevel == level)
        return;
    cursorLevel = level;
    update();
    CQuotesAccessible::cursorMoved(this);
}

/// One level up (-1) or down (1) on the screen: through both sides where they stand one below the other, within one
/// side where they stand side by side. Starts at the best level of the side to which the arrow points.
std::optional<QuoteCursor> CQuotesGraphWidget::stepped(int direction) const
{
    std::vector<QuoteCursor> levels = reachable();
    const bool sideBySide = painterKind() == Painter::Horizontal;
    if (sideBySide) {
        const bool ask = cursorLevel && cursorLevel->ask;
        levels.erase(std::remove_if(levels.begin(), levels.end(), [&](const QuoteCursor &at) { return at.ask != ask; }),
                     levels.end());
        std::sort(levels.begin(), levels.end(),
                  [](const QuoteCursor &a, const QuoteCursor &b) { return a.level < b.level; });
    }
    if (levels.empty())
        return std::nullopt;
    const auto at = cursorLevel ? std::find(levels.begin(), levels.end(), *cursorLevel) : levels.end();
    if (at == levels.end()) {
        const bool ask = direction < 0;
        const auto best = std::find_if(levels.begin(), levels.end(),
                                       [&](const QuoteCursor &level) { return level.ask == ask && level.level == 0; });
        return best == levels.end() ? levels.front() : *best;
    }
    const auto last = static_cast<std::ptrdiff_t>(levels.size()) - 1;
    return levels[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(at - levels.begin() + direction, 0, last))];
}

std::optional<QuoteCursor> CQuotesGraphWidget::onOtherSide(bool ask) const
{
    const QuoteCursor wanted{ask, cursorLevel ? cursorLevel->level : 0};
    const CQuoteData *quote = view.level(wanted);
    return quote && quotevalue::isPrice(quote->price) ? wanted : cursorLevel;
}

void CQuotesGraphWidget::keyPressEvent(QKeyEvent *event)
{
    const std::vector<QuoteCursor> levels = reachable();
    const bool sideBySide = painterKind() == Painter::Horizontal;
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (!plain || painterKind() == Painter::None) {
        CBaseWidget::keyPressEvent(event);
        return;
    }
    switch (event->key()) {
    case Qt::Key_Up:
        setCursorLevel(stepped(-1));
        return;
    case Qt::Key_Down:
        setCursorLevel(stepped(1));
        return;
    case Qt::Key_Home:
        if (!levels.empty())
            setCursorLevel(levels.front());
        return;
    case Qt::Key_End:
        if (!levels.empty())
            setCursorLevel(levels.back());
        return;
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (!sideBySide)
            break;
        setCursorLevel(onOtherSide(event->key() == Qt::Key_Right));
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter: {
        const CQuoteData *quote = cursorLevel ? view.level(*cursorLevel) : nullptr;
        if (!quote || !quotevalue::isPrice(quote->price))
            break;
        deliverPrice(quote->price, "keyPressEvent");
        return;
    }
    case Qt::Key_Escape:
        if (!cursorLevel)
            break;
        setCursorLevel(std::nullopt);
        return;
    default:
        break;
    }
    CBaseWidget::keyPressEvent(event);
}

} // namespace KV
