#include "order/quoteslevel2.h"

#include <algorithm>

#include "zb/cuiresource.h"

namespace KV {
namespace quoteslevel2 {

using ZB::scaled;

int barHeight()
{
    return scaled(3);
}

int buttonHeight(const QuotesMetrics &metrics)
{
    return metrics.lineHeight + scaled(4);
}

int fittingPitch(int room, int rows, const QuotesMetrics &metrics)
{
    return std::clamp(room / rows, metrics.lineHeight, metrics.pitch() + scaled(8));
}

std::vector<QRect> split(const QRect &rect, int count)
{
    const int gap = scaled(4);
    std::vector<QRect> parts;
    for (int i = 0; i < count; ++i) {
        const int left = rect.left() + (rect.width() + gap) * i / count;
        const int next = rect.left() + (rect.width() + gap) * (i + 1) / count;
        parts.emplace_back(left, rect.top(), next - gap - left, rect.height());
    }
    return parts;
}

std::vector<QuotePriceTypePlace> priceTypes(const QRect &rect)
{
    const std::vector<QRect> parts = split(rect, 3);
    return {{parts[0], PriceOpposite}, {parts[1], PriceBestFive}, {parts[2], PriceOwnBest}};
}

QString captionOf(EPriceType type)
{
    return type == PriceOpposite  ? QStringLiteral("对手价")
           : type == PriceOwnBest ? QStringLiteral("本方最优")
                                  : QStringLiteral("最优五档");
}

QString cancelCaption(bool sell)
{
    return sell ? QStringLiteral("撤卖") : QStringLiteral("撤买");
}

QString cancelText(bool sell, qint64 orders)
{
    return QStringLiteral("%1 %2").arg(cancelCaption(sell)).arg(orders);
}

} // namespace quoteslevel2
} // namespace KV
