#include "order/cquotesnormallayout.h"

#include "zb/cuiresource.h"

namespace KV {

using ZB::scaled;

namespace {

constexpr int captionLeft = 8;
constexpr int priceRight = 103;
constexpr int volumeRight = 183;
constexpr int cancelHeight = 15;

QuoteColumns columnsOf(int width, const QuotesMetrics &metrics)
{
    QuoteColumns columns;
    columns.width = width;
    columns.caption = scaled(captionLeft);
    columns.priceRight = scaled(priceRight);
    columns.priceRoom = scaled(priceRight) - scaled(12) - metrics.captionWidth - metrics.digit.width() - scaled(4);
    columns.volumeRight = scaled(volumeRight);
    columns.volumeRoom = scaled(volumeRight - priceRight - 6);
    columns.barEnd = scaled(186);
    return columns;
}

} // namespace

CQuotesNormalLayout::CQuotesNormalLayout(const QSize &size, const QuotesMetrics &metrics, bool showCancel)
{
    const int line = metrics.lineHeight;
    const int pitch = metrics.pitch();
    const int block = (line + levels * pitch) * 2 + scaled(28);
    const int top = (size.height() - (showCancel ? scaled(cancelHeight) : 0) - block) / 2;
    const int askEnd = top + levels * pitch;
    const int askLine = askEnd + scaled(4);
    const int bidLine = askEnd + scaled(12) + line;
    const int lastLine = bidLine + levels * pitch + scaled(8);
    const int width = size.width() - 2;

    frame = QRect(QPoint(0, 0), size);
    for (const int y : {0, askLine, bidLine, lastLine})
        lines.emplace_back(0, y, size.width() - 1, y);
    askArea = QRect(1, 1, width, askLine - 1);
    middleBand = QRect(1, askLine + 1, width, line + scaled(6));
    bidArea = QRect(1, bidLine + 1, width, lastLine - bidLine - 1);

    const int middleBaseline = askEnd + line + scaled(7);
    const int middleTop = askEnd + scaled(2);
    latestCaption = QPoint(scaled(captionLeft), middleBaseline);
    const int captionEnd = scaled(captionLeft) + 2 * metrics.captionWidth + scaled(4);
    latest = {scaled(priceRight), scaled(priceRight) - captionEnd, middleTop, middleBaseline, pitch, scaled(5)};
    change = {scaled(volumeRight), scaled(volumeRight - priceRight - 6), middleTop, middleBaseline, pitch, 0};

    const QuoteColumns columns = columnsOf(width, metrics);
    for (int i = 0; i < levels; ++i) {
        asks[static_cast<std::size_t>(i)] = columns.row(askEnd - (i + 1) * pitch, pitch, metrics);
        bids[static_cast<std::size_t>(i)] = columns.row(bidLine + 1 - scaled(rowLead) + i * pitch, pitch, metrics);
    }
    for (int i = 0; i < 4; ++i) {
        const int left = i % 2 == 0 ? scaled(captionLeft) : scaled(priceRight + captionLeft);
        const int right = i % 2 == 0 ? scaled(priceRight) : scaled(volumeRight);
        const int rowTop = lastLine + 1 - scaled(rowLead) + i / 2 * pitch;
        summary[static_cast<std::size_t>(i)] = QuoteSummaryPlace::at(left, right, rowTop, pitch, metrics);
    }
    if (top + scaled(rowLead) - 1 >= line)
        age = QRect(1, 1, width, top + scaled(rowLead) - 1);
}

} // namespace KV
