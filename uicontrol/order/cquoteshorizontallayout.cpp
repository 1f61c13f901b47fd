#include "order/cquoteshorizontallayout.h"

#include "order/quoteslevel2.h"
#include "zb/cuiresource.h"

namespace KV {

using quoteslevel2::margin;
using ZB::scaled;

namespace {

/// Lengths at 100 %, from the middle outwards: prices are near it, then volumes, captions at the edges.
constexpr int bidPriceRight = 13;
constexpr int priceRoom = 58;
constexpr int askPriceRight = 66;
constexpr int volumeRoom = 66;
constexpr int bidVolumeRight = 79;
constexpr int askVolumeRight = 148;
constexpr int barGap = 4;
constexpr int summaryGap = 16; ///< wider than from a caption to its value

int captionWidth(const QuotesMetrics &metrics)
{
    return metrics.captionWidth + scaled(4) + metrics.digit.width();
}

QuoteColumns bidColumns(int width, bool showCancel)
{
    const int middle = width / 2;
    QuoteColumns columns;
    columns.left = 1;
    columns.width = middle - 1;
    columns.cancelLeft = 1;
    columns.cancelWidth = showCancel ? scaled(quoteslevel2::cancelMark) : 0;
    columns.caption = scaled(margin) + (showCancel ? scaled(quoteslevel2::cancelMark) - scaled(margin) / 2 : 0);
    columns.priceRight = middle - scaled(bidPriceRight);
    columns.priceRoom = scaled(priceRoom);
    columns.volumeRight = middle - scaled(bidVolumeRight);
    columns.volumeRoom = scaled(volumeRoom);
    columns.barEnd = columns.volumeRight + scaled(barGap);
    return columns;
}

QuoteColumns askColumns(int width, const QuotesMetrics &metrics, bool showCancel)
{
    const int middle = width / 2;
    QuoteColumns columns;
    columns.left = middle + 1;
    columns.width = width - 1 - columns.left;
    columns.cancelWidth = showCancel ? scaled(quoteslevel2::cancelMark) : 0;
    columns.cancelLeft = width - 1 - columns.cancelWidth;
    columns.caption =
        width - captionWidth(metrics) - (showCancel ? columns.cancelWidth + scaled(margin) / 2 : scaled(margin));
    columns.priceRight = middle + scaled(askPriceRight);
    columns.priceRoom = scaled(priceRoom);
    columns.volumeRight = middle + scaled(askVolumeRight);
    columns.volumeRoom = scaled(volumeRoom);
    columns.barEnd = columns.volumeRight + scaled(barGap) - scaled(QuotesLayout::longestBar);
    columns.barGrowsRight = true;
    return columns;
}

} // namespace

CQuotesHorizontalLayout::CQuotesHorizontalLayout(const QSize &size, const QuotesMetrics &metrics, bool showCancel)
{
    const int line = metrics.lineHeight;
    const int button = quoteslevel2::buttonHeight(metrics);
    const int left = scaled(margin);
    const int width = size.width() - 2 * left;
    const int middle = size.width() / 2;
    const int bandHeight = line + scaled(12);
    const int buttonsHeight = 2 * button + scaled(4) + 2 * scaled(5);
    const int pitch = quoteslevel2::fittingPitch(size.height() - 5 - bandHeight - buttonsHeight, levels + 1, metrics);
    const auto addLine = [&](int y) {
        lines.emplace_back(0, y, size.width() - 1, y);
        return y + 1;
    };

    frame = QRect(QPoint(0, 0), size);
    middleBand = QRect(1, 1, size.width() - 2, bandHeight);
    const int middleTop = 1 + (bandHeight - metrics.pitch()) / 2 - scaled(rowLead);
    const int baseline = middleTop + line + scaled(3);
    latestCaption = QPoint(left, baseline);
    const int latestRoom = scaled(103 - margin - 4) - 2 * metrics.captionWidth;
    latest = {scaled(103), latestRoom, middleTop, baseline, metrics.pitch(), scaled(5)};
    change = {scaled(160), scaled(50), middleTop, baseline, metrics.pitch(), 0};
    percent = {scaled(222), scaled(56), middleTop, baseline, metrics.pitch(), 0};
    const int balanceLeft = scaled(240);
    balanceText = QRect(balanceLeft, 1 + scaled(2), size.width() - left - balanceLeft, line + scaled(3));
    balanceBar = QRect(balanceLeft, balanceText.bottom() + 1, balanceText.width(), quoteslevel2::barHeight());
    age = balanceText | balanceBar;

    int y = addLine(middleBand.bottom() + 1);
    bidArea = QRect(1, y, middle - 1, levels * pitch);
    askArea = QRect(middle + 1, y, size.width() - middle - 2, levels * pitch);
    lines.emplace_back(middle, y, middle, y + levels * pitch - 1);
    const QuoteColumns bid = bidColumns(size.width(), showCancel);
    const QuoteColumns ask = askColumns(size.width(), metrics, showCancel);
    for (int i = 0; i < levels; ++i) {
        bids[static_cast<std::size_t>(i)] = bid.row(y + i * pitch - scaled(rowLead), pitch, metrics);
        asks[static_cast<std::size_t>(i)] = ask.row(y + i * pitch - scaled(rowLead), pitch, metrics);
    }

    y = addLine(bidArea.bottom() + 1) + scaled(5);
    priceTypes = quoteslevel2::priceTypes({left, y, width, button});
    y += button + scaled(4);
    const std::vector<QRect> buttons = quoteslevel2::split({left, y, width, button}, 2);
    cancelBuy = buttons[0];
    cancelSell = buttons[1];

    y = addLine(y + button + scaled(5));
    const int gap = scaled(summaryGap);
    for (int i = 0; i < 4; ++i) {
        const int cell = left + (width + gap) * i / 4;
        summary[static_cast<std::size_t>(i)] =
            QuoteSummaryPlace::at(cell, cell + (width + gap) / 4 - gap, y - scaled(rowLead), pitch, metrics);
    }
}

} // namespace KV
