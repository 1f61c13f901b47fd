#include <algorithm>

#include "order/cquotesaccessible.h"
#include "order/cquotesgraphwidget.h"
#include "order/quoteslevel2.h"
#include "zb/cuiresource.h"

namespace KV {

using namespace quotevalue;

namespace {

/// Keys of buttons lie above those of cells.
constexpr int buttonKindBit = 32;
constexpr int buttonSideBit = 16;

/// What a value has of its row.
QRect roomOf(const QuoteValuePlace &place)
{
    return {place.right - place.room, place.rowTop + ZB::scaled(QuotesLayout::rowLead), place.room, place.pitch};
}

QString captionOf(const QuoteCursor &level)
{
    return (level.ask ? QStringLiteral("卖%1") : QStringLiteral("买%1")).arg(level.level + 1);
}

} // namespace

/// From the highest ask to the lowest bid, then the summary; the current price stands in the middle only.
std::vector<CQuotesAccessible::Row> CQuotesAccessible::rows() const
{
    if (ladder().painterKind() == CQuotesGraphWidget::Painter::None)
        return {};
    const auto shown = [](const std::vector<CQuoteData> &side) {
        return std::clamp(static_cast<int>(side.size()), 1, QuotesLayout::levels);
    };
    std::vector<Row> all;
    for (int i = shown(view().asks) - 1; i >= 0; --i)
        all.push_back({Row::Level, {true, i}});
    all.push_back({Row::Latest, {}});
    for (int i = 0; i < shown(view().bids); ++i)
        all.push_back({Row::Level, {false, i}});
    for (const Row::Kind kind : {Row::PreviousClose, Row::UpperLimit, Row::LowerLimit})
        all.push_back({kind, {}});
    return all;
}

std::vector<CQuotesAccessible::Button> CQuotesAccessible::buttons() const
{
    std::vector<Button> all;
    for (const QuoteClickAreas::PriceType &type : ladder().areas.priceTypes)
        all.push_back({Button::PriceType, type, {}});
    for (const QuoteClickAreas::Cancel &cancel : ladder().areas.cancelButtons)
        if (!cancel.rect.isEmpty())
            all.push_back({Button::CancelAll, {}, cancel});
    for (const QuoteClickAreas::Cancel &cancel : ladder().areas.cancels)
        all.push_back({Button::CancelLevel, {}, cancel});
    return all;
}

int CQuotesAccessible::rowCount() const
{
    return static_cast<int>(rows().size());
}

int CQuotesAccessible::childCount() const
{
    return rowCount() * columnCount() + static_cast<int>(buttons().size());
}

quint64 CQuotesAccessible::keyOf(const Button &button)
{
    const int number = button.kind == Button::PriceType ? button.type.type : button.cancel.level;
    return quint64(button.kind) << buttonKindBit | static_cast<quint64>(button.cancel.side) << buttonSideBit |
           static_cast<quint64>(number);
}

quint64 CQuotesAccessible::keyOf(int index) const
{
    return isCell(index) ? static_cast<quint64>(index)
                         : keyOf(buttons()[static_cast<std::size_t>(index - rowCount() * columnCount())]);
}

int CQuotesAccessible::indexOf(quint64 key) const
{
    const int cells = rowCount() * columnCount();
    if (key >> buttonKindBit == 0)
        return key < static_cast<quint64>(cells) ? static_cast<int>(key) : -1;
    const std::vector<Button> all = buttons();
    const auto found = std::find_if(all.begin(), all.end(), [&](const Button &each) { return keyOf(each) == key; });
    return found == all.end() ? -1 : cells + static_cast<int>(found - all.begin());
}

QString CQuotesAccessible::textOf(int index) const
{
    if (!isCell(index))
        return buttonText(buttons()[static_cast<std::size_t>(index - rowCount() * columnCount())]);
    return cellText(rows()[static_cast<std::size_t>(index / columnCount())], index % columnCount());
}

QString CQuotesAccessible::buttonText(const Button &button) const
{
    if (button.kind == Button::PriceType)
        return quoteslevel2::captionOf(static_cast<EPriceType>(button.type.type));
    const bool isSell = button.cancel.side == QuoteClickAreas::Cancel::selling;
    if (button.kind == Button::CancelLevel)
        return QStringLiteral("撤单 %1").arg(captionOf({isSell, button.cancel.level - 1}));
    return isSell ? quoteslevel2::cancelText(true, view().sellOrders)
                  : quoteslevel2::cancelText(false, view().buyOrders);
}

double CQuotesAccessible::priceOf(const Row &row) const
{
    switch (row.kind) {
    case Row::Level: {
        const CQuoteData *quote = view().level(row.level);
        return quote ? quote->price : noPrice;
    }
    case Row::Latest:
        return view().latest;
    case Row::PreviousClose:
        return view().previousClose;
    case Row::UpperLimit:
        return view().upperLimit;
    case Row::LowerLimit:
        break;
    }
    return view().lowerLimit;
}

QString CQuotesAccessible::cellText(const Row &row, int column) const
{
    static const QString captions[] = {QString(), QStringLiteral("最新"), QStringLiteral("前收"),
                                       QStringLiteral("涨停"), QStringLiteral("跌停")};
    const int decimals = decimalsOf(view().tick);
    if (column == Caption)
        return row.kind == Row::Level ? captionOf(row.level) : captions[row.kind];
    if (column == Price)
        return priceText(priceOf(row), decimals);
    if (row.kind == Row::Latest) {
        const QString percent = percentText(view().change, view().previousClose);
        return QStringLiteral("涨跌 %1 %2").arg(changeText(view().change, decimals), percent);
    }
    const CQuoteData *quote = view().level(row.level);
    return row.kind == Row::Level ? volumeText(quote ? quote->volume : noVolume) : QString();
}

QRect CQuotesAccessible::cellRect(const Row &row, int column) const
{
    const QuotesLayout places = ladder().places();
    const auto captionRect = [&](const QPoint &at, const QRect &beside, int width) {
        return QRect(at.x(), beside.top(), width, beside.height());
    };
    const int letter = ladder().metrics.captionWidth;
    if (row.kind == Row::Level) {
        const QuoteRowPlace &place = (row.level.ask ? places.asks : places.bids)[std::size_t(row.level.level)];
        const int digitEnd = place.digit.x() + ladder().metrics.digit.width();
        return column == Caption ? captionRect(place.caption, place.band, digitEnd - place.caption.x())
                                 : roomOf(column == Price ? place.price : place.volume);
    }
    if (row.kind == Row::Latest)
        return column == Caption ? captionRect(places.latestCaption, roomOf(places.latest), 2 * letter)
                                 : roomOf(column == Price ? places.latest : places.change);
    const QuoteSummaryPlace &place = places.summary[std::size_t(row.kind - Row::PreviousClose + 1)];
    return column == Caption ? captionRect(place.caption, roomOf(place.value), 2 * letter)
           : column == Price ? roomOf(place.value)
                             : QRect();
}

QRect CQuotesAccessible::rectOf(int index) const
{
    if (isCell(index))
        return cellRect(rows()[static_cast<std::size_t>(index / columnCount())], index % columnCount());
    const Button button = buttons()[static_cast<std::size_t>(index - rowCount() * columnCount())];
    return button.kind == Button::PriceType ? button.type.rect : button.cancel.rect;
}

QAccessible::Role CQuotesAccessible::roleOf(int index) const
{
    return !isCell(index)                     ? QAccessible::Button
           : index % columnCount() == Caption ? QAccessible::RowHeader
                                              : QAccessible::Cell;
}

double CQuotesAccessible::pressedValue(const Row &row, int column) const
{
    if (column == Price)
        return priceOf(row);
    const CQuoteData *quote = row.kind == Row::Level && column == Volume ? view().level(row.level) : nullptr;
    return quote && quote->volume != noVolume ? quote->volume : noPrice;
}

bool CQuotesAccessible::canPress(int index) const
{
    return !isCell(index) ||
           isKnown(pressedValue(rows()[static_cast<std::size_t>(index / columnCount())], index % columnCount()));
}

void CQuotesAccessible::press(int index)
{
    static const char *const handler = "press";
    if (isCell(index)) {
        const double value =
            pressedValue(rows()[static_cast<std::size_t>(index / columnCount())], index % columnCount());
        if (index % columnCount() == Price)
            ladder().deliverPrice(value, handler);
        else
            ladder().deliverVolume(value);
        return;
    }
    const Button button = buttons()[static_cast<std::size_t>(index - rowCount() * columnCount())];
    if (button.kind == Button::PriceType)
        ladder().deliverPriceType(button.type.type, handler);
    else
        ladder().deliverCancel(button.cancel);
}

} // namespace KV
