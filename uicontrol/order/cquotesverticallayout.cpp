#include "order/cquotesverticallayout.h"

#include "order/quoteslevel2.h"
#include "zb/cuiresource.h"

namespace KV {

using quoteslevel2::margin;
using ZB::scaled;

namespace {

constexpr int priceRight = 103;
constexpr int volumeRight = 183;
constexpr int cancelShift = 7;

QuoteColumns columnsOf(int width, const QuotesMetrics &metrics, bool showCancel)
{
    QuoteColumns columns;
    columns.width = width - 2;
    columns.caption = scaled(margin);
    // A volume's area reaches 11 pixels beyond its right edge: the marks stand clear of it.
    const int shift = showCancel ? scaled(cancelShift) : 0;
    columns.priceRight = scaled(priceRight) - shift;
    columns.priceRoom = columns.priceRight - columns.caption - metrics.captionWidth - metrics.digit.width() - scaled(8);
    columns.volumeRight = scaled(volumeRight) - shift;
    columns.volumeRoom = scaled(volumeRight - priceRight - 6);
    columns.barEnd = columns.volumeRight + scaled(3);
    columns.cancelWidth = showCancel ? scaled(quoteslevel2::cancelMark) : 0;
    columns.cancelLeft = width - 1 - columns.cancelWidth;
    return columns;
}

} // namespace

CQuotesVerticalLayout::CQuotesVerticalLayout(const QSize &size, const QuotesMetrics &metrics, bool showCancel)
{
    const int line = metrics.lineHeight;
    const int button = quoteslevel2::buttonHeight(metrics);
    const int left = scaled(margin);
    const int width = size.width() - 2 * left;
    const int stripHeight = line + scaled(2) + quoteslevel2::barHeight() + scaled(4);
    const int bandHeight = line + scaled(10);
    const int buttonsHeight = 2 * button + scaled(4) + 2 * scaled(5);
    const int rest = size.height() - 6 - stripHeight - bandHeight - buttonsHeight;
    const int pitch = quoteslevel2::fittingPitch(rest, 2 * levels + 2, metrics);
    const auto addLine = [&](int y) {
        lines.emplace_back(0, y, size.width() - 1, y);
        return y + 1;
    };

    frame = QRect(QPoint(0, 0), size);
    balanceText = QRect(left, 1 + scaled(1), width, line);
    balanceBar = QRect(left, balanceText.bottom() + 1 + scaled(1), width, quoteslevel2::barHeight());
    age = balanceText | balanceBar;

    const QuoteColumns columns = columnsOf(size.width(), metrics, showCancel);
    int y = addLine(1 + stripHeight);
    askArea = QRect(1, y, size.width() - 2, levels * pitch);
    for (int i = 0; i < levels; ++i)
        asks[static_cast<std::size_t>(i)] = columns.row(y + (levels - 1 - i) * pitch - scaled(rowLead), pitch, metrics);

    y = addLine(askArea.bottom() + 1);
    middleBand = QRect(1, y, size.width() - 2, bandHeight);
    const int middleTop = y + (bandHeight - metrics.pitch()) / 2 - scaled(rowLead);
    const int baseline = middleTop + line + scaled(3);
    latestCaption = QPoint(left, baseline);
    const int latestRoom = columns.priceRight - scaled(margin + 3) - 2 * metrics.captionWidth;
    latest = {columns.priceRight, latestRoom, middleTop, baseline, metrics.pitch(), scaled(5)};
    change = {scaled(142), scaled(142 - 3) - columns.priceRight, middleTop, baseline, metrics.pitch(), 0};
    percent = {scaled(192), scaled(48), middleTop, baseline, metrics.pitch(), 0};

    y = addLine(middleBand.bottom() + 1);
    bidArea = QRect(1, y, size.width() - 2, levels * pitch);
    for (int i = 0; i < levels; ++i)
        bids[static_cast<std::size_t>(i)] = columns.row(y + i * pitch - scaled(rowLead), pitch, metrics);

    y = addLine(bidArea.bottom() + 1) + scaled(5);
    priceTypes = quoteslevel2::priceTypes({left, y, width, button});
    y += button + scaled(4);
    const std::vector<QRect> buttons = quoteslevel2::split({left, y, width, button}, 2);
    cancelBuy = buttons[0];
    cancelSell = buttons[1];

    y = addLine(y + button + scaled(5));
    for (int i = 0; i < 4; ++i) {
        const int valueLeft = i % 2 == 0 ? left : scaled(priceRight + margin);
        const int right = i % 2 == 0 ? scaled(priceRight) : scaled(volumeRight + 6);
        const int rowTop = y - scaled(rowLead) + i / 2 * pitch;
        summary[static_cast<std::size_t>(i)] = QuoteSummaryPlace::at(valueLeft, right, rowTop, pitch, metrics);
    }
}

} // namespace KV
