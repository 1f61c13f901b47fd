#include <QtGui/QKeyEvent>
#include <algorithm>

#include "order/cquotesaccessible.h"
#include "order/cquotesgraphwidget.h"

namespace KV {

/// The focus is framed when it came by keyboard, also after another window or a menu had it: the cursor alone shows it
/// only once it stands somewhere.
void CQuotesGraphWidget::focusInEvent(QFocusEvent *event)
{
    CBaseWidget::focusInEvent(event);
    const Qt::FocusReason reason = event->reason();
    if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
        keyboardFocus =
            reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
    setFramed(keyboardFocus);
    update();
    CQuotesAccessible::focusCame(this);
}

void CQuotesGraphWidget::focusOutEvent(QFocusEvent *event)
{
    CBaseWidget::focusOutEvent(event);
    setFramed(false);
    update();
}

void CQuotesGraphWidget::setFramed(bool framed)
{
    if (view.framed == framed)
        return;
    view.framed = framed;
    update();
}

void CQuotesGraphWidget::setCursorLevel(const std::optional<QuoteCursor> &level)
{
    if (cursorLevel == level)
        return;
    cursorLevel = level;
    update();
    CQuotesAccessible::cursorMoved(this);
}

int CQuotesGraphWidget::buttonCount() const
{
    const QuotesLayout layout = places();
    return layout.priceTypes.empty() ? 0 : static_cast<int>(layout.priceTypes.size() + areas.cancelButtons.size());
}

/// The levels with a price, from the highest ask to the lowest bid.
std::vector<QuoteCursor> CQuotesGraphWidget::levelsWithPrice() const
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

/// One step up (-1) or down (1) on the screen: through both sides where they stand one below the other, within one side
/// where they stand side by side, and on through the buttons below them. Starts at the best level of the side to which
/// the arrow points.
std::optional<QuoteCursor> CQuotesGraphWidget::stepped(int direction) const
{
    std::vector<QuoteCursor> stops = levelsWithPrice();
    if (painterKind() == Painter::Horizontal) {
        const bool ask = cursorLevel && cursorLevel->ask;
        stops.erase(std::remove_if(stops.begin(), stops.end(), [&](const QuoteCursor &at) { return at.ask != ask; }),
                    stops.end());
        std::sort(stops.begin(), stops.end(),
                  [](const QuoteCursor &a, const QuoteCursor &b) { return a.level < b.level; });
    }
    for (int button = 1; button <= buttonCount(); ++button)
        stops.push_back({cursorLevel && cursorLevel->ask, 0, button});
    if (stops.empty())
        return std::nullopt;
    const auto at = cursorLevel ? std::find(stops.begin(), stops.end(), *cursorLevel) : stops.end();
    if (at == stops.end()) {
        const QuoteCursor wanted{direction < 0, 0};
        const auto best = std::find(stops.begin(), stops.end(), wanted);
        return best == stops.end() ? stops.front() : *best;
    }
    const auto last = static_cast<std::ptrdiff_t>(stops.size()) - 1;
    return stops[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(at - stops.begin() + direction, 0, last))];
}

/// To the left (-1) or right (1): the next button, or the same level of the other side.
std::optional<QuoteCursor> CQuotesGraphWidget::beside(int direction) const
{
    if (cursorLevel && cursorLevel->button > 0) {
        QuoteCursor next = *cursorLevel;
        next.button = std::clamp(next.button + direction, 1, std::max(buttonCount(), 1));
        return next;
    }
    const QuoteCursor wanted{direction > 0, cursorLevel ? cursorLevel->level : 0};
    const CQuoteData *quote = view.level(wanted);
    return quote && quotevalue::isPrice(quote->price) ? wanted : cursorLevel;
}

/// False for a key that moves nothing here.
bool CQuotesGraphWidget::moveCursor(int key)
{
    const std::vector<QuoteCursor> levels = levelsWithPrice();
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down:
        setCursorLevel(stepped(key == Qt::Key_Up ? -1 : 1));
        return true;
    case Qt::Key_Home:
    case Qt::Key_End:
        if (!levels.empty())
            setCursorLevel(key == Qt::Key_Home ? levels.front() : levels.back());
        return true;
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (painterKind() != Painter::Horizontal && !(cursorLevel && cursorLevel->button > 0))
            return false;
        setCursorLevel(beside(key == Qt::Key_Left ? -1 : 1));
        return true;
    case Qt::Key_Escape:
        if (!cursorLevel)
            return false;
        setCursorLevel(std::nullopt);
        return true;
    default:
        return false;
    }
}

/// Does what a click on the button under the cursor does.
void CQuotesGraphWidget::pressButton(int button)
{
    const auto types = places().priceTypes;
    const auto place = static_cast<std::size_t>(button - 1);
    if (place < types.size())
        deliverPriceType(types[place].type, "keyPressEvent");
    else
        deliverCancel(areas.cancelButtons[place - types.size()]);
}

/// False for a key that takes nothing from where the cursor stands.
bool CQuotesGraphWidget::takeAtCursor(int key)
{
    if (!cursorLevel)
        return false;
    const bool isReturn = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (cursorLevel->button > 0) {
        if ((!isReturn && key != Qt::Key_Space) || cursorLevel->button > buttonCount())
            return false;
        pressButton(cursorLevel->button);
        return true;
    }
    const CQuoteData *quote = view.level(*cursorLevel);
    if (quote && isReturn && quotevalue::isPrice(quote->price)) {
        deliverPrice(quote->price, "keyPressEvent");
        return true;
    }
    if (quote && key == Qt::Key_Space && quote->volume != quotevalue::noVolume) {
        deliverVolume(quote->volume);
        return true;
    }
    const int side = cursorLevel->ask ? QuoteClickAreas::Cancel::selling : QuoteClickAreas::Cancel::buying;
    const auto mark = std::find_if(areas.cancels.begin(), areas.cancels.end(), [&](const auto &cancel) {
        return cancel.side == side && cancel.level == cursorLevel->level + 1;
    });
    if (key != Qt::Key_Delete || mark == areas.cancels.end())
        return false;
    deliverCancel(QuoteClickAreas::Cancel(*mark));
    return true;
}

void CQuotesGraphWidget::keyPressEvent(QKeyEvent *event)
{
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const bool isForUs = plain && painterKind() != Painter::None;
    // Nothing of this is touched behind a taken key: its event may have destroyed the ladder.
    if (!isForUs || (!moveCursor(event->key()) && !takeAtCursor(event->key())))
        CBaseWidget::keyPressEvent(event);
}

} // namespace KV
