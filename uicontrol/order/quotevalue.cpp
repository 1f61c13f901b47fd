#include "order/quotevalue.h"

#include <cmath>

#include "zb/numberformat.h"

namespace KV {
namespace quotevalue {

namespace {

constexpr int decimalsWithoutTick = 2;
constexpr int mostDecimals = 6;
constexpr int clickedDecimals = 4;

QString invalidText()
{
    return QStringLiteral("非法值");
}

/// Rounding leaves noise behind that is no change: it gets no sign.
QString withSign(QString text, double value)
{
    return value > sameWithin ? QLatin1Char('+') + text : text;
}

} // namespace

bool isKnown(double value)
{
    return std::isfinite(value) && std::fabs(value) < noPrice;
}

bool isPrice(double value)
{
    return isKnown(value) && std::fabs(value) > sameWithin;
}

bool isVolume(int volume)
{
    return volume != 0 && volume != noVolume;
}

int volumeOf(qint64 volume)
{
    if (volume == std::numeric_limits<qint64>::max())
        return noVolume;
    return static_cast<int>(static_cast<quint32>(static_cast<quint64>(volume) & 0xffffffffU));
}

double change(double latest, double previousClose)
{
    if (!isPrice(latest) || !isPrice(previousClose))
        return noPrice;
    const double difference = latest - previousClose;
    return isKnown(difference) ? difference : noPrice;
}

int decimalsOf(double tick)
{
    if (!isKnown(tick) || tick <= 0)
        return decimalsWithoutTick;
    double steps = tick;
    for (int decimals = 0; decimals < mostDecimals; ++decimals, steps *= 10)
        if (std::round(steps) >= 1 && std::fabs(steps - std::round(steps)) < 1e-6)
            return decimals;
    return mostDecimals;
}

QString priceText(double price, int decimals)
{
    return ZB::formatPriceDoubleNumber(isPrice(price) ? price : noPrice, decimals, utils::FormatNone);
}

QString changeText(double change, int decimals)
{
    if (!isKnown(change))
        return QStringLiteral("-");
    return withSign(ZB::formatDoubleNumber(change, decimals, utils::FormatNone, false, invalidText()), change);
}

QString percentText(double change, double previousClose)
{
    if (!isKnown(change) || !isPrice(previousClose))
        return QStringLiteral("-");
    const double share = change / std::fabs(previousClose);
    return withSign(ZB::formatDoubleNumber(share, 2, utils::FormatPercent, false, invalidText()), change);
}

QString volumeText(int volume)
{
    return isVolume(volume) ? QString::asprintf("%d", volume) : QStringLiteral("-");
}

QString clickedText(double value)
{
    return ZB::formatDoubleNumber(value, clickedDecimals, utils::FormatNone, false, invalidText());
}

QString ageText(qint64 seconds)
{
    if (seconds < 60)
        return QStringLiteral("%1秒").arg(seconds);
    const auto two = [](qint64 number) { return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0')); };
    if (seconds < 3600)
        return QStringLiteral("%1分%2秒").arg(seconds / 60).arg(two(seconds % 60));
    return QStringLiteral("%1小时%2分").arg(seconds / 3600).arg(two(seconds / 60 % 60));
}

} // namespace quotevalue
} // namespace KV
