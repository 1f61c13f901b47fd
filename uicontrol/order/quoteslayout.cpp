#include "order/quoteslayout.h"

#include <algorithm>
#include <cmath>

#include "zb/cuiresource.h"

namespace KV {

int QuotesMetrics::pitch() const
{
    return lineHeight + ZB::scaled(5);
}

QRect QuoteValuePlace::area(int textWidth) const
{
    return {right - lead - textWidth, rowTop + ZB::scaled(3), textWidth + ZB::scaled(11), pitch};
}

QRect QuoteRowPlace::bar(int ofVolume, int largest) const
{
    if (largest <= 0 || ofVolume <= 0)
        return {};
    const int length = static_cast<int>(qint64(std::min(ofVolume, largest)) * barMost / largest);
    return {barGrowsRight ? barEnd : barEnd - length, band.top(), length, band.height() - 1};
}

namespace {

/// The baseline that puts a line of text in the middle of a row.
int baselineOf(int rowTop, int pitch, const QuotesMetrics &metrics)
{
    return rowTop + metrics.lineHeight + ZB::scaled(3) + (pitch - metrics.pitch()) / 2;
}

} // namespace

QuoteRowPlace QuoteColumns::row(int rowTop, int pitch, const QuotesMetrics &metrics) const
{
    const int baseline = baselineOf(rowTop, pitch, metrics);
    QuoteRowPlace place;
    place.band = QRect(left, rowTop + ZB::scaled(QuotesLayout::rowLead), width, pitch);
    place.caption = QPoint(caption, baseline);
    place.digit = QPoint(caption + metrics.captionWidth + ZB::scaled(4), // 8 + 4 = 12 in a caption at the left edge
                         baseline - metrics.digit.height() + ZB::scaled(2));
    place.price = {priceRight, priceRoom, rowTop, baseline, pitch, 0};
    place.volume = {volumeRight, volumeRoom, rowTop, baseline, pitch, 0};
    place.barEnd = barEnd;
    place.barMost = ZB::scaled(QuotesLayout::longestBar);
    place.barGrowsRight = barGrowsRight;
    if (cancelWidth > 0)
        place.cancel = QRect(cancelLeft, place.band.top(), cancelWidth, pitch);
    return place;
}

QuoteSummaryPlace QuoteSummaryPlace::at(int left, int right, int rowTop, int pitch, const QuotesMetrics &metrics)
{
    const int baseline = baselineOf(rowTop, pitch, metrics);
    const int room = right - left - 2 * metrics.captionWidth - ZB::scaled(3);
    return {QPoint(left, baseline), {right, room, rowTop, baseline, pitch, ZB::scaled(5)}};
}

QRect QuotesLayout::balancePart(double share) const
{
    return {balanceBar.topLeft(),
            QSize(static_cast<int>(std::lround(balanceBar.width() * share)), balanceBar.height())};
}

} // namespace KV
